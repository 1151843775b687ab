// Metadata items.
#include "engine/capi/handles.h"

using namespace tarvo::engine;
using namespace tarvo::engine::capi;

extern "C" {

qrb_status qrb_pointcloud_meta_data_list(qrb_context* context, qrb_pointcloud* pointcloud,
                                         uint32_t* count, const char** names) {
    return call(context, [&](Context& bound) {
        std::vector<std::string> list;
        const auto state = sessionOf(pointcloud)->state();
        for (const auto& [name, value] : state->metaData)
            list.push_back(name);
        giveNames(bound, list, count, names);
    });
}

qrb_status qrb_pointcloud_meta_data_exists(qrb_context* context, qrb_pointcloud* pointcloud,
                                           const char* name, uint8_t* exists) {
    return call(context, [&] {
        auto& out = given(exists, "exists");
        out = sessionOf(pointcloud)->state()->metaData.count(textOf(name)) > 0;
    });
}

qrb_status qrb_pointcloud_meta_data_get(qrb_context* context, qrb_pointcloud* pointcloud,
                                        const char* name, const char** value,
                                        const char* default_value) {
    return call(context, [&](Context& bound) {
        const auto session = sessionOf(pointcloud);
        const std::string item = textOf(name);
        giveText(bound,
                 session->state()->metaData.count(item) ? session->metaData().get(item)
                                                        : textOf(default_value),
                 value);
    });
}

qrb_status qrb_pointcloud_meta_data_set(qrb_context* context, qrb_pointcloud* pointcloud,
                                        const char* name, const char* value) {
    return call(context,
                [&] { sessionOf(pointcloud)->metaData().set(textOf(name), textOf(value)); });
}

qrb_status qrb_pointcloud_meta_data_remove(qrb_context* context, qrb_pointcloud* pointcloud,
                                           const char* name) {
    return call(context, [&] { sessionOf(pointcloud)->metaData().remove(textOf(name)); });
}

qrb_status qrb_pointcloud_meta_data_create_signature(qrb_context* context,
                                                     qrb_pointcloud* pointcloud, const char* name,
                                                     uint32_t method, uint32_t key_length,
                                                     const uint8_t* key) {
    return call(context, [&](Context& bound) {
        const CallingBack calling(bound, pointcloud);
        calling.session().metaData().sign(textOf(name), signerOf(&bound, method, key_length, key));
    });
}

qrb_status qrb_pointcloud_meta_data_verify_signature(qrb_context* context,
                                                     qrb_pointcloud* pointcloud, const char* name,
                                                     uint32_t method, uint32_t key_length,
                                                     const uint8_t* key, uint8_t* valid) {
    return call(context, [&](Context& bound) {
        auto& out = given(valid, "valid");
        const CallingBack calling(bound, pointcloud);
        out = calling.session().metaData().verify(textOf(name),
                                                  signerOf(&bound, method, key_length, key));
    });
}

}  // extern "C"
