// The database handle.
#include "engine/capi/handles.h"
#include "engine/report/report.h"

using namespace tarvo::engine;
using namespace tarvo::engine::capi;

namespace {

// Of qrb_pointcloud_inspect, beside the reports on an open file.
constexpr std::uint8_t findingsFormat = 6;

}  // namespace

extern "C" {

qrb_status qrb_pointcloud_new(qrb_context* context, qrb_pointcloud** pointcloud) {
    return call(context, [&] { make(pointcloud, "pointcloud", context); });
}

qrb_status qrb_pointcloud_delete(qrb_context* context, qrb_pointcloud* pointcloud) {
    return call(context, [&] {
        if (!pointcloud)
            return;
        idle(pointcloud)->close();
        HandleTable::instance().remove(pointcloud);
    });
}

qrb_status qrb_pointcloud_open(qrb_context* context, qrb_pointcloud* pointcloud,
                               const char* file_name, const qrb_open_settings* settings) {
    return call(context, [&](Context& bound) {
        const auto object = closed(pointcloud);
        object->database =
            std::make_shared<Database>(textOf(file_name), valueOr(settings, "settings"), bound.api);
    });
}

qrb_status qrb_pointcloud_create(qrb_context* context, qrb_pointcloud* pointcloud,
                                 const char* file_name, const qrb_create_settings* settings) {
    return call(context, [&](Context& bound) {
        const auto object = closed(pointcloud);
        const session::CreateSettings values = valueOr(settings, "settings");
        const std::string fileName = textOf(file_name);
        object->database = createAndOpen(fileName, values, bound.api, [&] {
            session::Session::create(fileName, values, bound.api);
        });
    });
}

qrb_status qrb_pointcloud_close(qrb_context* context, qrb_pointcloud* pointcloud) {
    return call(context, [&] { idle(pointcloud)->close(); });
}

qrb_status qrb_pointcloud_is_open(qrb_context* context, qrb_pointcloud* pointcloud,
                                  uint8_t* is_open) {
    return call(context, [&] {
        auto& out = given(is_open, "is_open");
        out = given(pointcloud, "pointcloud")->database != nullptr;
    });
}

qrb_status qrb_pointcloud_is_empty(qrb_context* context, qrb_pointcloud* pointcloud,
                                   uint8_t* is_empty) {
    return call(context, [&] {
        auto& out = given(is_empty, "is_empty");
        out = sessionOf(pointcloud)->state()->pointCount == 0;
    });
}

qrb_status qrb_pointcloud_get_uuid(qrb_context* context, qrb_pointcloud* pointcloud,
                                   const char** uuid) {
    return call(context, [&](Context& bound) {
        giveText(bound, sessionAnytime(pointcloud)->identity().uuid, uuid);
    });
}

qrb_status qrb_pointcloud_inspect(qrb_context* context, qrb_pointcloud* pointcloud, uint8_t format,
                                  const char** report) {
    return call(context, [&](Context& bound) {
        if (format == findingsFormat) {
            checkUnused(pointcloud);
            if (bound.findings.empty())
                throw Failure(ErrorCode::State, "There was no validation to report on.");
            return giveText(bound, bound.findings, report);
        }
        giveText(bound, report::inspect(*sessionOf(pointcloud), format), report);
    });
}

qrb_status qrb_pointcloud_clear_cache(qrb_context* context, qrb_pointcloud* pointcloud) {
    return call(context, [&] { sessionOf(pointcloud)->blobs().forget(); });
}

}  // extern "C"
