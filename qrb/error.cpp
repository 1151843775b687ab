#include "qrb/error.h"

#include "qrb/loader.h"

#include <utility>

namespace tarvo::qrb {

const char* Error::what() const noexcept {
    return nullptr;
}

std::int32_t Error::code() const noexcept {
    return m_code;
}

const char* Error::details() const noexcept {
    return nullptr;
}

ErrorImpl::ErrorImpl(std::int32_t code, std::string text, std::string details)
    : Error(code), m_text(std::move(text)), m_details(std::move(details)) {}

const char* ErrorImpl::what() const noexcept {
    return m_text.c_str();
}

const char* ErrorImpl::details() const noexcept {
    return m_details.c_str();
}

namespace {

// Drops the result of a call that cleans up or reads an error. It is not read itself: a library
// that fails to tell its errors would be asked for ever.
void dropResult(qrb_result* result) {
    if (result != nullptr) {
        functions().qrb_result_delete_cf(result);
    }
}

}  // namespace

void checkStatus(qrb_context* context, std::int32_t status, bool silent) {
    if (status == QRB_SUCCESS || silent) {
        return;
    }
    std::int32_t code = 0;
    const char* text = nullptr;
    const char* details = nullptr;
    if (context != nullptr) {
        functions().qrb_context_get_last_error(context, &code, &text, &details);
    }
    throw ErrorImpl(code, text ? text : "unknown", copyText(details));
}

void checkResult(qrb_result* result, bool silent) {
    if (result == nullptr) {
        return;
    }
    const FunctionTable& f = functions();
    std::int32_t code = 0;
    StringHolder text;
    StringHolder details;
    dropResult(f.qrb_result_get_error_code_cf(result, &code));
    dropResult(f.qrb_result_get_error_text_cf(result, text.slot()));
    dropResult(f.qrb_result_get_error_details_cf(result, details.slot()));
    dropResult(f.qrb_result_delete_cf(result));
    if (!silent) {
        throw ErrorImpl(code, *text.slot() ? text.str() : "unknown", details.str());
    }
}

StringHolder::~StringHolder() {
    if (m_text != nullptr) {
        dropResult(functions().qrb_string_delete_cf(m_text));
    }
}

}  // namespace tarvo::qrb
