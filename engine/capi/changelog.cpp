// The changelog.
#include "engine/capi/handles.h"
#include "engine/store/container.h"
#include "files/wholefile.h"

using namespace tarvo::engine;
using namespace tarvo::engine::capi;

namespace {

void writeTextFile(const std::string& fileName, const std::string& text) {
    if (fileName.empty())
        throw Failure(ErrorCode::File, "The file \"\" can't be written.", "Name a file.");
    if (store::Container::recognises(fileName))
        throw Failure(ErrorCode::File,
                      "The changelog can't be written to \"" + fileName + "\": it is a database.",
                      "Give it another name.");
    tarvo::files::WholeFile file(fileName);
    file.write(text);
    file.publish();
}

}  // namespace

extern "C" {

qrb_status qrb_pointcloud_changelog_append_log_message(qrb_context* context,
                                                       qrb_pointcloud* pointcloud,
                                                       const char* message) {
    return call(context, [&] { sessionOf(pointcloud)->changelog().append(textOf(message)); });
}

qrb_status qrb_pointcloud_changelog_export_to_textfile(qrb_context* context,
                                                       qrb_pointcloud* pointcloud,
                                                       const char* file_name) {
    return call(context, [&] {
        writeTextFile(textOf(file_name), sessionOf(pointcloud)->changelog().text());
    });
}

qrb_status qrb_pointcloud_changelog_import_from_database(qrb_context* context,
                                                         qrb_pointcloud* pointcloud,
                                                         const char* file_name) {
    return call(context, [&](Context& bound) {
        const auto session = sessionOf(pointcloud);
        (void)session->change();
        session::Session other(textOf(file_name), session::OpenSettings{0}, bound.api);
        session->changelog().import(other.changelog().text());
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
