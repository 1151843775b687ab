#include "qrb/loader.h"

#include <filesystem>
#include <stdexcept>
#include <string>
#include <system_error>
#include <vector>

#if defined(_WIN32)
#include <windows.h>
#else
#include <dlfcn.h>
#if defined(__APPLE__)
#include <mach-o/dyld.h>
#endif
#endif

namespace tarvo::qrb {

#if defined(_WIN32)
const char* const defaultLibraryName = "qrblib.dll";
const char* const libraryFilePattern = "*.dll";
#elif defined(__APPLE__)
const char* const defaultLibraryName = "qrblib.dylib";
const char* const libraryFilePattern = "*.dylib";
#else
const char* const defaultLibraryName = "qrblib.so";
const char* const libraryFilePattern = "*.so";
#endif

namespace {

// Each platform gives four functions: open, look-up, close, and the path of the default library
// that lies with the program (empty: the platform's own search finds it, or starts there anyway).
#if defined(_WIN32)

using Module = HMODULE;

Module openModule(const char* fileName) {
    wchar_t wide[1024] = {};
    if (MultiByteToWideChar(CP_UTF8, 0, fileName, -1, wide, 1024) == 0) {
        return nullptr;
    }
    return LoadLibraryW(wide);
}

void* findSymbol(Module module, const char* name) {
    return reinterpret_cast<void*>(GetProcAddress(module, name));
}

bool closeModule(Module module) {
    return FreeLibrary(module) != 0;
}

std::string libraryOfProgram() {
    return {};
}

#else

using Module = void*;

Module openModule(const char* fileName) {
    return dlopen(fileName, RTLD_NOW | RTLD_LOCAL);
}

void* findSymbol(Module module, const char* name) {
    return dlsym(module, name);
}

bool closeModule(Module module) {
    return dlclose(module) == 0;
}

std::string libraryOfProgram() {
    namespace fs = std::filesystem;
    std::error_code error;
#if defined(__APPLE__)
    std::uint32_t size = 0;
    _NSGetExecutablePath(nullptr, &size);
    std::vector<char> path(size + 1, '\0');
    _NSGetExecutablePath(path.data(), &size);
    const fs::path program = fs::canonical(path.data(), error);
#else
    const fs::path program = fs::read_symlink("/proc/self/exe", error);
#endif
    if (error) {
        return {};
    }
    for (const char* folder : {"", QRB_LIBRARY_FOLDER}) {
        const fs::path library = program.parent_path() / folder / defaultLibraryName;
        if (fs::exists(library, error))
            return library.lexically_normal().string();
    }
    return {};
}

#endif

Module s_module = nullptr;
FunctionTable s_functions = {};
OptionalFunctionTable s_optional = {};
std::string s_message;

// False: the name is missing, and s_message says so.
template <typename Function>
bool resolve(Function*& slot, const char* name) {
    slot = reinterpret_cast<Function*>(findSymbol(s_module, name));
    if (slot == nullptr) {
        s_message = std::string("Failed to load QRB function \"") + name + "()\".";
    }
    return slot != nullptr;
}

}  // namespace

const FunctionTable& functions() {
    return s_functions;
}

const OptionalFunctionTable& optionalFunctions() {
    return s_optional;
}

const char* load(const char* fileName) {
    if (s_module != nullptr) {
        return nullptr;
    }
    if (fileName == nullptr || *fileName == '\0') {
        const std::string own = libraryOfProgram();
        s_module = openModule(own.empty() ? defaultLibraryName : own.c_str());
    } else {
        s_module = openModule(fileName);
    }
    if (s_module == nullptr) {
        return "Failed to load QRB library.";
    }
#define QRB_FUNCTION(result, name, parameters) \
    if (!resolve(s_functions.name, #name)) {   \
        return s_message.c_str();              \
    }
#include "qrb/functions.def"
#define QRB_OPTIONAL_FUNCTION(result, name, parameters) \
    s_optional.name = reinterpret_cast<decltype(s_optional.name)>(findSymbol(s_module, #name));
#include "qrb/optional.def"
    return nullptr;
}

const char* free() {
    if (s_module == nullptr) {
        return nullptr;
    }
    if (!closeModule(s_module)) {
        return "Failed to free QRB library.";
    }
    s_functions = {};
    s_optional = {};
    s_module = nullptr;
    return nullptr;
}

void loadLibrary(const std::string& fileName) {
    if (const char* message = load(fileName.c_str())) {
        throw std::runtime_error(message);
    }
}

void freeLibrary() {
    if (const char* message = free()) {
        throw std::runtime_error(message);
    }
}

}  // namespace tarvo::qrb
