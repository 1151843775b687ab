// Functions whose turn comes with a later release: each fails and names itself.
#include "engine/capi/handles.h"

using namespace tarvo::engine;
using namespace tarvo::engine::capi;

namespace {

[[noreturn]] void refuse(const char* function) {
    throw Failure(ErrorCode::NotAvailable, std::string(function) + " is not available yet.",
                  "This version of the library does not do it; a later one will.");
}

}  // namespace

extern "C" {

qrb_status qrb_pointcloud_create_with_schema(qrb_context* context, qrb_pointcloud*, const char*,
                                             const qrb_create_settings*, const char*, uint8_t) {
    return call(context, [] { refuse("qrb_pointcloud_create_with_schema"); });
}

qrb_status qrb_pointcloud_management_validate(qrb_context* context, qrb_pointcloud*, const char*,
                                              uint8_t) {
    return call(context, [] { refuse("qrb_pointcloud_management_validate"); });
}

qrb_status qrb_pointcloud_meta_data_validate(qrb_context* context, qrb_pointcloud*, const char*,
                                             const char*) {
    return call(context, [] { refuse("qrb_pointcloud_meta_data_validate"); });
}

qrb_status qrb_pointcloud_meta_data_validate_json(qrb_context* context, qrb_pointcloud*,
                                                  const char*, const char*) {
    return call(context, [] { refuse("qrb_pointcloud_meta_data_validate_json"); });
}

qrb_status qrb_pointcloud_point_attributes_get_merged(qrb_context* context, qrb_pointcloud*,
                                                      qrb_pointcloud* const*, uint32_t, const char*,
                                                      qrb_point_attribute*) {
    return call(context, [] { refuse("qrb_pointcloud_point_attributes_get_merged"); });
}

qrb_status qrb_pointcloud_point_attributes_get_merged_all(qrb_context* context, qrb_pointcloud*,
                                                          qrb_pointcloud* const*, uint32_t,
                                                          uint32_t*, const char**) {
    return call(context, [] { refuse("qrb_pointcloud_point_attributes_get_merged_all"); });
}

qrb_status qrb_pointcloud_point_attributes_group(qrb_context* context, qrb_pointcloud*, const char*,
                                                 const char**, uint32_t*) {
    return call(context, [] { refuse("qrb_pointcloud_point_attributes_group"); });
}

qrb_status qrb_pointcloud_point_attributes_group_default(qrb_context* context, qrb_pointcloud*,
                                                         const char*, const char**, uint32_t*) {
    return call(context, [] { refuse("qrb_pointcloud_point_attributes_group_default"); });
}

qrb_status qrb_pointcloud_point_attributes_list_filtered(qrb_context* context, qrb_pointcloud*,
                                                         const char*, uint32_t*, const char**) {
    return call(context, [] { refuse("qrb_pointcloud_point_attributes_list_filtered"); });
}

}  // extern "C"
