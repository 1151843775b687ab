// The changelog.
#include "engine/capi/handles.h"

#include <cerrno>
#include <cstdio>
#include <cstring>

using namespace tarvo::engine;
using namespace tarvo::engine::capi;

namespace {

// Writes beside the place first: an older file stays whole until the new one is.
void writeTextFile(const std::string& fileName, const std::string& text) {
    const std::string temporary = fileName + ".part";
    std::FILE* file = fileName.empty() ? nullptr : std::fopen(temporary.c_str(), "wb");
    bool written = file && std::fwrite(text.data(), 1, text.size(), file) == text.size();
    int error = errno;
    if (file && std::fclose(file) != 0) {
        written = false;
        error = errno;
    }
    if (written && std::rename(temporary.c_str(), fileName.c_str()) != 0) {
        written = false;
        error = errno;
    }
    if (!written) {
        if (file)
            std::remove(temporary.c_str());
        throw Failure(ErrorCode::File, "The file \"" + fileName + "\" can't be written.",
                      fileName.empty() ? "Name a file." : std::strerror(error));
    }
}

}  // namespace

extern "C" {

qrb_status qrb_pointcloud_changelog_append_log_message(qrb_context* context,
                                                       qrb_pointcloud* pointcloud,
                                                       const char* message) {
    return call(context, [&] { sessionOf(pointcloud)->appendMessage(textOf(message)); });
}

qrb_status qrb_pointcloud_changelog_export_to_textfile(qrb_context* context,
                                                       qrb_pointcloud* pointcloud,
                                                       const char* file_name) {
    return call(context,
                [&] { writeTextFile(textOf(file_name), sessionOf(pointcloud)->changelog()); });
}

qrb_status qrb_pointcloud_changelog_import_from_database(qrb_context* context,
                                                         qrb_pointcloud* pointcloud,
                                                         const char* file_name) {
    return call(context, [&](Context& bound) {
        const auto session = sessionOf(pointcloud);
        (void)session->change();
        session::Session other(textOf(file_name), session::OpenSettings{0}, bound.api);
        session->importChangelog(other.changelog());
    });
}

qrb_result* qrb_pointcloud_changelog_verify_log_entry_cf(const char* entry, uint32_t method,
                                                         uint32_t key_length, const uint8_t* key,
                                                         uint8_t* valid) {
    return callFree([&] {
        auto& out = given(valid, "valid");
        out = session::verifyEntry(textOf(entry), signerOf(nullptr, method, key_length, key));
    });
}

}  // extern "C"
