// The database handle.
#include "engine/capi/handles.h"
#include "engine/report/report.h"

using namespace tarvo::engine;
using namespace tarvo::engine::capi;

extern "C" {

qrb_status qrb_pointcloud_new(qrb_context* context, qrb_pointcloud** pointcloud) {
    return call(context, [&] {
        auto& out = given(pointcloud, "pointcloud");
        out = new qrb_pointcloud;
    });
}

qrb_status qrb_pointcloud_delete(qrb_context* context, qrb_pointcloud* pointcloud) {
    return call(context, [&] { delete pointcloud; });
}

qrb_status qrb_pointcloud_open(qrb_context* context, qrb_pointcloud* pointcloud,
                               const char* file_name, const qrb_open_settings* settings) {
    return call(context, [&] {
        auto& slot = given(pointcloud, "pointcloud").session;
        if (slot)
            throw Failure(ErrorCode::State, "A database is open already.", "Close it first.");
        slot = std::make_unique<session::Session>(
            textOf(file_name), settings ? settings->value : session::OpenSettings(), context->api);
    });
}

qrb_status qrb_pointcloud_create(qrb_context* context, qrb_pointcloud* pointcloud,
                                 const char* file_name, const qrb_create_settings* settings) {
    return call(context, [&] {
        auto& slot = given(pointcloud, "pointcloud").session;
        if (slot)
            throw Failure(ErrorCode::State, "A database is open already.", "Close it first.");
        const session::CreateSettings values =
            settings ? settings->value : session::CreateSettings();
        session::Session::create(textOf(file_name), values, context->api);
        slot = std::make_unique<session::Session>(
            textOf(file_name), session::OpenSettings{values.cacheSize}, context->api);
    });
}

qrb_status qrb_pointcloud_close(qrb_context* context, qrb_pointcloud* pointcloud) {
    return call(context, [&] { given(pointcloud, "pointcloud").session.reset(); });
}

qrb_status qrb_pointcloud_is_open(qrb_context* context, qrb_pointcloud* pointcloud,
                                  uint8_t* is_open) {
    return call(context, [&] {
        auto& out = given(is_open, "is_open");
        out = given(pointcloud, "pointcloud").session != nullptr;
    });
}

qrb_status qrb_pointcloud_is_empty(qrb_context* context, qrb_pointcloud* pointcloud,
                                   uint8_t* is_empty) {
    return call(context, [&] {
        auto& out = given(is_empty, "is_empty");
        out = sessionOf(pointcloud).state()->pointCount == 0;
    });
}

qrb_status qrb_pointcloud_get_uuid(qrb_context* context, qrb_pointcloud* pointcloud,
                                   const char** uuid) {
    return call(context, [&] { giveText(*context, sessionOf(pointcloud).identity().uuid, uuid); });
}

qrb_status qrb_pointcloud_inspect(qrb_context* context, qrb_pointcloud* pointcloud, uint8_t format,
                                  const char** report) {
    return call(context, [&] {
        giveText(*context, report::inspect(sessionOf(pointcloud), format), report);
    });
}

qrb_status qrb_pointcloud_clear_cache(qrb_context* context, qrb_pointcloud* pointcloud) {
    return call(context, [&] { sessionOf(pointcloud).clearCache(); });
}

}  // extern "C"
