// Contexts, the library about itself, results, texts and object locks.
#include "engine/capi/handles.h"
#include "engine/store/container.h"

#include <zstd.h>

#include <cstdlib>

#ifdef _WIN32
#include <windows.h>
#else
#include <dlfcn.h>
#endif

using namespace tarvo::engine;
using namespace tarvo::engine::capi;

namespace {

// There is no context yet to tell an error: a wrong level or log file gives only the status.
qrb_status newContext(qrb_context** context, const char* api, const char* level,
                      const char* path) noexcept {
    if (!context)
        return QRB_FAILURE;
    try {
        *context = new qrb_context{
            Log(textOf(level), textOf(path)), textOf(api), {}, {}, nullptr, nullptr};
        return QRB_SUCCESS;
    } catch (...) {
        return QRB_FAILURE;
    }
}

std::string ownFileName() {
#ifdef _WIN32
    HMODULE module = nullptr;
    wchar_t wide[32768];
    char name[65536];
    GetModuleHandleExW(
        GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
        reinterpret_cast<LPCWSTR>(&newContext), &module);
    GetModuleFileNameW(module, wide, 32768);
    WideCharToMultiByte(CP_UTF8, 0, wide, -1, name, sizeof name, nullptr, nullptr);
    return name;
#else
    Dl_info info{};
    if (dladdr(reinterpret_cast<const void*>(&newContext), &info) == 0 || !info.dli_fname)
        return {};
    return info.dli_fname;
#endif
}

constexpr const char* license =
    "MIT License\n\n"
    "Copyright (c) 2026 The qrbadmin authors\n\n"
    "Permission is hereby granted, free of charge, to any person obtaining a copy of this "
    "software and associated documentation files (the \"Software\"), to deal in the Software "
    "without restriction, including without limitation the rights to use, copy, modify, merge, "
    "publish, distribute, sublicense, and/or sell copies of the Software, and to permit persons "
    "to whom the Software is furnished to do so, subject to the following conditions:\n\n"
    "The above copyright notice and this permission notice shall be included in all copies or "
    "substantial portions of the Software.\n\n"
    "THE SOFTWARE IS PROVIDED \"AS IS\", WITHOUT WARRANTY OF ANY KIND, EXPRESS OR IMPLIED, "
    "INCLUDING BUT NOT LIMITED TO THE WARRANTIES OF MERCHANTABILITY, FITNESS FOR A PARTICULAR "
    "PURPOSE AND NONINFRINGEMENT. IN NO EVENT SHALL THE AUTHORS OR COPYRIGHT HOLDERS BE LIABLE "
    "FOR ANY CLAIM, DAMAGES OR OTHER LIABILITY, WHETHER IN AN ACTION OF CONTRACT, TORT OR "
    "OTHERWISE, ARISING FROM, OUT OF OR IN CONNECTION WITH THE SOFTWARE OR THE USE OR OTHER "
    "DEALINGS IN THE SOFTWARE.\n\n"
    "Uses SQLite (public domain), Zstandard, xxHash and Valijson (BSD), RapidJSON (MIT), CRoaring "
    "and OpenSSL (Apache 2.0) and libpng (libpng licence).";

}  // namespace

extern "C" {

qrb_status qrb_context_new(qrb_context** context, const char* log_level, const char* log_path) {
    return newContext(context, nullptr, log_level, log_path);
}

qrb_status qrb_context_new_with_api(qrb_context** context, const char* api, const char* log_level,
                                    const char* log_path) {
    return newContext(context, api, log_level, log_path);
}

qrb_status qrb_context_delete(qrb_context* context) {
    delete context;
    return QRB_SUCCESS;
}

qrb_status qrb_context_get_last_error(qrb_context* context, int32_t* code, const char** text,
                                      const char** details) {
    if (!context || !code || !text || !details)
        return QRB_FAILURE;
    *code = context->error.code;
    *text = context->error.text.c_str();
    *details = context->error.details.c_str();
    return QRB_SUCCESS;
}

qrb_status qrb_database_file_type_check(qrb_context* context, const char* file_name,
                                        uint8_t* is_database) {
    return call(context, [&] {
        auto& out = given(is_database, "is_database");
        out = store::Container::recognises(textOf(file_name));
    });
}

qrb_status qrb_database_file_type_suffix(qrb_context* context, const char** suffix) {
    return call(context, [&] { giveText(*context, "qrbx", suffix); });
}

qrb_status qrb_database_file_type_title(qrb_context* context, const char** title) {
    return call(context, [&] { giveText(*context, "Point cloud database", title); });
}

qrb_status qrb_factory_set_authentication_function(qrb_context* context,
                                                   qrb_authentication_function function,
                                                   void* data) {
    return call(context, [&] {
        context->authentication = function;
        context->authenticationData = data;
    });
}

qrb_status qrb_library_filename(qrb_context* context, const char** text) {
    return call(context, [&] { giveText(*context, ownFileName(), text); });
}

qrb_status qrb_library_license(qrb_context* context, const char** text) {
    return call(context, [&] { giveText(*context, license, text); });
}

qrb_status qrb_library_name(qrb_context* context, const char** text) {
    return call(context, [&] { giveText(*context, "QRB Library", text); });
}

qrb_status qrb_library_version(qrb_context* context, const char** text) {
    return call(context, [&] {
        giveText(*context,
                 session::libraryVersion() + " (" + store::containerVersion() + ", Zstandard " +
                     ZSTD_versionString() + ")",
                 text);
    });
}

qrb_result* qrb_object_lock_cf(qrb_object* object) {
    return callFree([&] { ++given(object, "object").locks; });
}

qrb_result* qrb_object_unlock_cf(qrb_object* object) {
    return callFree([&] {
        std::atomic<int>& locks = given(object, "object").locks;
        int count = locks.load();
        do {
            if (count == 0)
                throw Failure(ErrorCode::State, "The object has no lock to take away.");
        } while (!locks.compare_exchange_weak(count, count - 1));
    });
}

qrb_result* qrb_result_get_error_code_cf(const qrb_result* result, int32_t* code) {
    return callFree([&] {
        auto& out = given(code, "code");
        out = given(result, "result").code;
    });
}

qrb_result* qrb_result_get_error_text_cf(const qrb_result* result, char** text) {
    return callFree([&] { giveOwnText(given(result, "result").text, text); });
}

qrb_result* qrb_result_get_error_details_cf(const qrb_result* result, char** details) {
    return callFree([&] { giveOwnText(given(result, "result").details, details); });
}

qrb_result* qrb_result_delete_cf(qrb_result* result) {
    delete result;
    return nullptr;
}

qrb_result* qrb_string_delete_cf(char* string) {
    std::free(string);
    return nullptr;
}

}  // extern "C"
