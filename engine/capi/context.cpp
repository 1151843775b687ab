// Contexts, the library about itself, results, texts and object locks.
#include "engine/base/utf8.h"
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
        make(context, "context", nullptr, Log(textOf(level), textOf(path)), validUtf8(textOf(api)));
        return QRB_SUCCESS;
    } catch (...) {
        return QRB_FAILURE;
    }
}

bool isCallingBack(const Object& object) {
    const auto* pointcloud = dynamic_cast<const Pointcloud*>(&object);
    return pointcloud && pointcloud->database && pointcloud->database->callingBack > 0;
}

// Throws Failure(State) within a callback of a call on the context.
void requireIdle(const Context& bound, const qrb_context* context) {
    if (bound.callingBack > 0 || HandleTable::instance().anyOwnedBy(context, isCallingBack))
        throw Failure(ErrorCode::State,
                      "The context is at work: a callback can't call this function on it.",
                      "Call it when the call that called back has returned.");
}

// The error of a result, which is kept meanwhile.
std::shared_ptr<const CallError> errorOf(const qrb_result* result) {
    static const CallError outOfMemory = CallError::outOfMemory();
    if (result == outOfMemoryResult())
        return {std::shared_ptr<void>(), &outOfMemory};
    const auto object = given(result, "result");
    return {object, &object->error};
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
    "Uses SQLite (public domain), Zstandard, xxHash and RE2 (BSD), RapidJSON (MIT), OpenSSL "
    "(Apache 2.0) and libpng (libpng licence).";

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
    if (!context)
        return QRB_SUCCESS;
    return call(context, [&](Context& bound) {
        requireIdle(bound, context);
        HandleTable& table = HandleTable::instance();
        table.removeOwnedBy(context);
        table.remove(context);
    });
}

qrb_status qrb_context_get_last_error(qrb_context* context, int32_t* code, const char** text,
                                      const char** details) {
    const std::shared_ptr<Context> bound = findObject(context);
    if (!bound || !code || !text || !details)
        return QRB_FAILURE;
    *code = bound->error.code();
    *text = bound->error.text();
    *details = bound->error.details();
    return QRB_SUCCESS;
}

qrb_status qrb_context_set_interrupt_function(qrb_context* context, qrb_interrupt_function function,
                                              void* data) {
    return call(context, [&](Context& bound) {
        requireIdle(bound, context);
        bound.goOn = nullptr;
        if (function)
            bound.goOn = [function, data] { return function(data) != 0; };
    });
}

qrb_status qrb_database_file_type_check(qrb_context* context, const char* file_name,
                                        uint8_t* is_database) {
    return call(context, [&] {
        auto& out = given(is_database, "is_database");
        out = store::Container::recognises(textOf(file_name));
    });
}

qrb_status qrb_database_file_type_suffix(qrb_context* context, const char** suffix) {
    return call(context, [&](Context& bound) { giveText(bound, "qrbx", suffix); });
}

qrb_status qrb_database_file_type_title(qrb_context* context, const char** title) {
    return call(context, [&](Context& bound) { giveText(bound, "Point cloud database", title); });
}

qrb_status qrb_factory_set_authentication_function(qrb_context* context,
                                                   qrb_authentication_function function,
                                                   void* data) {
    return call(context, [&](Context& bound) {
        bound.authentication = function;
        bound.authenticationData = data;
    });
}

qrb_status qrb_library_filename(qrb_context* context, const char** text) {
    return call(context, [&](Context& bound) { giveText(bound, ownFileName(), text); });
}

qrb_status qrb_library_license(qrb_context* context, const char** text) {
    return call(context, [&](Context& bound) { giveText(bound, license, text); });
}

qrb_status qrb_library_name(qrb_context* context, const char** text) {
    return call(context, [&](Context& bound) { giveText(bound, "QRB Library", text); });
}

qrb_status qrb_library_version(qrb_context* context, const char** text) {
    return call(context, [&](Context& bound) {
        giveText(bound,
                 session::libraryVersion() + " (" + store::containerVersion() + ", Zstandard " +
                     ZSTD_versionString() + ")",
                 text);
    });
}

qrb_result* qrb_object_lock_cf(qrb_object* object) {
    return callFree([&] { ++given(object, "object")->locks; });
}

qrb_result* qrb_object_unlock_cf(qrb_object* object) {
    return callFree([&] {
        const auto record = given(object, "object");
        std::atomic<int>& locks = record->locks;
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
        out = errorOf(result)->code();
    });
}

qrb_result* qrb_result_get_error_text_cf(const qrb_result* result, char** text) {
    return callFree([&] { giveOwnText(errorOf(result)->text(), text); });
}

qrb_result* qrb_result_get_error_details_cf(const qrb_result* result, char** details) {
    return callFree([&] { giveOwnText(errorOf(result)->details(), details); });
}

qrb_result* qrb_result_delete_cf(qrb_result* result) {
    return callFree([&] {
        if (result != outOfMemoryResult())
            deleteObject(result, "result");
    });
}

qrb_result* qrb_string_delete_cf(char* string) {
    std::free(string);
    return nullptr;
}

}  // extern "C"
