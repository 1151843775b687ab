#include "qrb/context.h"

#include "qrb/error.h"
#include "qrb/loader.h"

#include <utility>

namespace tarvo::qrb {

class Context::Private {
public:
    Private(const std::string& logLevel, const std::string& logPath) {
        const std::string api = interfaceName() + " " + interfaceVersion();
        const std::int32_t status = functions().qrb_context_new_with_api(
            &handle, api.c_str(), logLevel.c_str(), logPath.c_str());
        try {
            checkStatus(handle, status);
        } catch (...) {
            release();
            throw;
        }
    }
    ~Private() { release(); }
    Private(const Private&) = delete;
    Private& operator=(const Private&) = delete;

    std::string text(qrb_status (*get)(qrb_context*, const char**)) const {
        const char* result = nullptr;
        checkStatus(handle, get(handle, &result));
        return copyText(result);
    }

    qrb_context* handle = nullptr;

private:
    void release() {
        if (handle != nullptr) {
            functions().qrb_context_delete(handle);
            handle = nullptr;
        }
    }
};

Context::Context(const std::string& logLevel, const std::string& logPath)
    : d(std::make_shared<Private>(logLevel, logPath)) {}

std::string Context::libraryName() const {
    return d->text(functions().qrb_library_name);
}

std::string Context::libraryFilename() const {
    return d->text(functions().qrb_library_filename);
}

std::string Context::libraryVersion() const {
    return d->text(functions().qrb_library_version);
}

std::string Context::libraryLicense() const {
    return d->text(functions().qrb_library_license);
}

std::string Context::interfaceName() {
    return "QRB Interface";
}

std::string Context::interfaceVersion() {
    return "2.5.2-473fcd2e (C++, Jan 30 2025, 11:58:06)";
}

std::string Context::databaseFileTypeSuffix() const {
    return d->text(functions().qrb_database_file_type_suffix);
}

bool Context::databaseFileTypeCheck(const std::string& fileName) const {
    std::uint8_t isDatabase = 0;
    checkStatus(d->handle,
                functions().qrb_database_file_type_check(d->handle, fileName.c_str(), &isDatabase));
    return isDatabase != 0;
}

qrb_context* Context::handle() const {
    return d->handle;
}

InterruptGuard::InterruptGuard(const Context& context, std::function<bool()> goOn)
    : m_context(context), m_goOn(std::move(goOn)) {
    const auto set = optionalFunctions().qrb_context_set_interrupt_function;
    if (set == nullptr) {
        return;
    }
    const auto ask = [](void* data) -> std::uint8_t {
        return static_cast<const InterruptGuard*>(data)->m_goOn() ? 1 : 0;
    };
    checkStatus(m_context.handle(), set(m_context.handle(), ask, this));
}

InterruptGuard::~InterruptGuard() {
    if (const auto set = optionalFunctions().qrb_context_set_interrupt_function) {
        set(m_context.handle(), nullptr, nullptr);
    }
}

}  // namespace tarvo::qrb
