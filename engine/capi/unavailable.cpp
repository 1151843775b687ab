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

qrb_status qrb_factory_set_authentication_function(qrb_context* context,
                                                   qrb_authentication_function, void*) {
    return call(context, [] { refuse("qrb_factory_set_authentication_function"); });
}

qrb_status qrb_pointcloud_changelog_append_log_message(qrb_context* context, qrb_pointcloud*,
                                                       const char*) {
    return call(context, [] { refuse("qrb_pointcloud_changelog_append_log_message"); });
}

qrb_status qrb_pointcloud_changelog_export_to_textfile(qrb_context* context, qrb_pointcloud*,
                                                       const char*) {
    return call(context, [] { refuse("qrb_pointcloud_changelog_export_to_textfile"); });
}

qrb_status qrb_pointcloud_changelog_import_from_database(qrb_context* context, qrb_pointcloud*,
                                                         const char*) {
    return call(context, [] { refuse("qrb_pointcloud_changelog_import_from_database"); });
}

qrb_result* qrb_pointcloud_changelog_verify_log_entry_cf(const char*, uint32_t, uint32_t,
                                                         const uint8_t*, uint8_t*) {
    return callFree([] { refuse("qrb_pointcloud_changelog_verify_log_entry_cf"); });
}

qrb_status qrb_pointcloud_create_with_schema(qrb_context* context, qrb_pointcloud*, const char*,
                                             const qrb_create_settings*, const char*, uint8_t) {
    return call(context, [] { refuse("qrb_pointcloud_create_with_schema"); });
}

qrb_status qrb_pointcloud_management_finalize(qrb_context* context, qrb_pointcloud*) {
    return call(context, [] { refuse("qrb_pointcloud_management_finalize"); });
}

qrb_status qrb_pointcloud_management_set_chunk_size_lod(qrb_context* context, qrb_pointcloud*,
                                                        uint32_t) {
    return call(context, [] { refuse("qrb_pointcloud_management_set_chunk_size_lod"); });
}

qrb_status qrb_pointcloud_management_set_lod_mode(qrb_context* context, qrb_pointcloud*, uint32_t) {
    return call(context, [] { refuse("qrb_pointcloud_management_set_lod_mode"); });
}

qrb_status qrb_pointcloud_management_vacuum(qrb_context* context, qrb_pointcloud*,
                                            qrb_progress_function, void*) {
    return call(context, [] { refuse("qrb_pointcloud_management_vacuum"); });
}

qrb_status qrb_pointcloud_management_validate(qrb_context* context, qrb_pointcloud*, const char*,
                                              uint8_t) {
    return call(context, [] { refuse("qrb_pointcloud_management_validate"); });
}

qrb_status qrb_pointcloud_meta_data_create_signature(qrb_context* context, qrb_pointcloud*,
                                                     const char*, uint32_t, uint32_t,
                                                     const uint8_t*) {
    return call(context, [] { refuse("qrb_pointcloud_meta_data_create_signature"); });
}

qrb_status qrb_pointcloud_meta_data_validate(qrb_context* context, qrb_pointcloud*, const char*,
                                             const char*) {
    return call(context, [] { refuse("qrb_pointcloud_meta_data_validate"); });
}

qrb_status qrb_pointcloud_meta_data_validate_json(qrb_context* context, qrb_pointcloud*,
                                                  const char*, const char*) {
    return call(context, [] { refuse("qrb_pointcloud_meta_data_validate_json"); });
}

qrb_status qrb_pointcloud_meta_data_verify_signature(qrb_context* context, qrb_pointcloud*,
                                                     const char*, uint32_t, uint32_t,
                                                     const uint8_t*, uint8_t*) {
    return call(context, [] { refuse("qrb_pointcloud_meta_data_verify_signature"); });
}

qrb_status qrb_pointcloud_point_attributes_discard(qrb_context* context, qrb_pointcloud*,
                                                   const char*) {
    return call(context, [] { refuse("qrb_pointcloud_point_attributes_discard"); });
}

qrb_status qrb_pointcloud_point_attributes_duplicate(qrb_context* context, qrb_pointcloud*,
                                                     const char*, const char*) {
    return call(context, [] { refuse("qrb_pointcloud_point_attributes_duplicate"); });
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

qrb_status qrb_pointcloud_point_attributes_put(qrb_context* context, qrb_pointcloud*,
                                               const qrb_point_attribute*) {
    return call(context, [] { refuse("qrb_pointcloud_point_attributes_put"); });
}

qrb_status qrb_pointcloud_query_fill_bind(qrb_context* context, qrb_query_fill*, const char*,
                                          uint32_t, const void*, int32_t) {
    return call(context, [] { refuse("qrb_pointcloud_query_fill_bind"); });
}

qrb_status qrb_pointcloud_query_fill_delete(qrb_context* context, qrb_query_fill*) {
    return call(context, [] { refuse("qrb_pointcloud_query_fill_delete"); });
}

qrb_status qrb_pointcloud_query_fill_new(qrb_context* context, qrb_pointcloud*, uint32_t,
                                         const char*, qrb_query_fill**) {
    return call(context, [] { refuse("qrb_pointcloud_query_fill_new"); });
}

qrb_status qrb_pointcloud_query_fill_next(qrb_context* context, qrb_query_fill*, uint32_t,
                                          uint32_t*) {
    return call(context, [] { refuse("qrb_pointcloud_query_fill_next"); });
}

qrb_status qrb_pointcloud_query_fill_nodes_new(qrb_context* context, qrb_pointcloud*,
                                               const uint32_t*, uint32_t, const char*,
                                               qrb_query_fill**) {
    return call(context, [] { refuse("qrb_pointcloud_query_fill_nodes_new"); });
}

qrb_status qrb_pointcloud_query_fill_progress(qrb_context* context, qrb_query_fill*, uint32_t*) {
    return call(context, [] { refuse("qrb_pointcloud_query_fill_progress"); });
}

qrb_status qrb_pointcloud_query_invert_attribute(qrb_context* context, qrb_query_invert*,
                                                 const char*) {
    return call(context, [] { refuse("qrb_pointcloud_query_invert_attribute"); });
}

qrb_status qrb_pointcloud_query_invert_delete(qrb_context* context, qrb_query_invert*) {
    return call(context, [] { refuse("qrb_pointcloud_query_invert_delete"); });
}

qrb_status qrb_pointcloud_query_invert_new(qrb_context* context, qrb_pointcloud*, uint32_t,
                                           const char*, qrb_query_invert**) {
    return call(context, [] { refuse("qrb_pointcloud_query_invert_new"); });
}

qrb_status qrb_pointcloud_query_invert_next(qrb_context* context, qrb_query_invert*, uint32_t,
                                            uint32_t*) {
    return call(context, [] { refuse("qrb_pointcloud_query_invert_next"); });
}

qrb_status qrb_pointcloud_query_invert_nodes_new(qrb_context* context, qrb_pointcloud*,
                                                 const uint32_t*, uint32_t, const char*,
                                                 qrb_query_invert**) {
    return call(context, [] { refuse("qrb_pointcloud_query_invert_nodes_new"); });
}

qrb_status qrb_pointcloud_query_invert_progress(qrb_context* context, qrb_query_invert*,
                                                uint32_t*) {
    return call(context, [] { refuse("qrb_pointcloud_query_invert_progress"); });
}

qrb_status qrb_pointcloud_query_remove_bind(qrb_context* context, qrb_query_remove*, uint32_t,
                                            const void*, int32_t) {
    return call(context, [] { refuse("qrb_pointcloud_query_remove_bind"); });
}

qrb_status qrb_pointcloud_query_remove_delete(qrb_context* context, qrb_query_remove*) {
    return call(context, [] { refuse("qrb_pointcloud_query_remove_delete"); });
}

qrb_status qrb_pointcloud_query_remove_new(qrb_context* context, qrb_pointcloud*,
                                           qrb_query_remove**) {
    return call(context, [] { refuse("qrb_pointcloud_query_remove_new"); });
}

qrb_status qrb_pointcloud_query_remove_next(qrb_context* context, qrb_query_remove*, uint32_t,
                                            uint32_t*) {
    return call(context, [] { refuse("qrb_pointcloud_query_remove_next"); });
}

qrb_status qrb_pointcloud_query_update_bind(qrb_context* context, qrb_query_update*, const char*,
                                            uint32_t, const void*, int32_t) {
    return call(context, [] { refuse("qrb_pointcloud_query_update_bind"); });
}

qrb_status qrb_pointcloud_query_update_delete(qrb_context* context, qrb_query_update*) {
    return call(context, [] { refuse("qrb_pointcloud_query_update_delete"); });
}

qrb_status qrb_pointcloud_query_update_new(qrb_context* context, qrb_pointcloud*,
                                           qrb_query_update**) {
    return call(context, [] { refuse("qrb_pointcloud_query_update_new"); });
}

qrb_status qrb_pointcloud_query_update_next(qrb_context* context, qrb_query_update*, uint32_t,
                                            uint32_t*) {
    return call(context, [] { refuse("qrb_pointcloud_query_update_next"); });
}

qrb_status qrb_pointcloud_transaction_discard(qrb_context* context, qrb_pointcloud*, uint32_t,
                                              const uint32_t*) {
    return call(context, [] { refuse("qrb_pointcloud_transaction_discard"); });
}

qrb_status qrb_pointcloud_transaction_size(qrb_context* context, qrb_pointcloud*, uint32_t,
                                           const uint32_t*, uint64_t*) {
    return call(context, [] { refuse("qrb_pointcloud_transaction_size"); });
}

}  // extern "C"
