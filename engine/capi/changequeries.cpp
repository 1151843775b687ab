// Queries that change points: update, remove, fill and invert.
#include "engine/capi/handles.h"

using namespace tarvo::engine;
using namespace tarvo::engine::capi;

// Deletion, and reading or writing the next points, are the same for all.
#define CHANGE_QUERY(kind)                                                                       \
    qrb_status qrb_pointcloud_query_##kind##_delete(qrb_context* context,                        \
                                                    qrb_query_##kind* query) {                   \
        return call(context, [&] { deleteQuery(query); });                                       \
    }                                                                                            \
    qrb_status qrb_pointcloud_query_##kind##_next(qrb_context* context, qrb_query_##kind* query, \
                                                  uint32_t count, uint32_t* processed) {         \
        return call(context, [&] {                                                               \
            auto& out = given(processed, "processed");                                           \
            out = queryOf(query)->next(count);                                                   \
        });                                                                                      \
    }

// Queries on points named by their ids.
#define QUERY_BY_ID(kind)                                                                          \
    CHANGE_QUERY(kind)                                                                             \
    qrb_status qrb_pointcloud_query_##kind##_new(qrb_context* context, qrb_pointcloud* pointcloud, \
                                                 qrb_query_##kind** query) {                       \
        return call(context, [&] { makeQuery(context, pointcloud, query); });                      \
    }

// Queries on points that nodes and a filter select.
#define QUERY_BY_FILTER(kind)                                                                      \
    CHANGE_QUERY(kind)                                                                             \
    qrb_status qrb_pointcloud_query_##kind##_new(qrb_context* context, qrb_pointcloud* pointcloud, \
                                                 uint32_t node, const char* filter,                \
                                                 qrb_query_##kind** query) {                       \
        return call(context, [&] {                                                                 \
            makeQuery(context, pointcloud, query, query::Scope{node, {}}, textOf(filter));         \
        });                                                                                        \
    }                                                                                              \
    qrb_status qrb_pointcloud_query_##kind##_nodes_new(                                            \
        qrb_context* context, qrb_pointcloud* pointcloud, const uint32_t* nodes, uint32_t count,   \
        const char* filter, qrb_query_##kind** query) {                                            \
        return call(context, [&] {                                                                 \
            makeQuery(context, pointcloud, query, scopeOf(nodes, count), textOf(filter));          \
        });                                                                                        \
    }                                                                                              \
    qrb_status qrb_pointcloud_query_##kind##_progress(                                             \
        qrb_context* context, qrb_query_##kind* query, uint32_t* progress) {                       \
        return call(context, [&] {                                                                 \
            auto& out = given(progress, "progress");                                               \
            out = queryOf(query)->progress();                                                      \
        });                                                                                        \
    }

extern "C" {

QUERY_BY_ID(update)
QUERY_BY_ID(remove)
QUERY_BY_FILTER(fill)
QUERY_BY_FILTER(invert)

qrb_status qrb_pointcloud_query_update_bind(qrb_context* context, qrb_query_update* query,
                                            const char* attribute, uint32_t data_type,
                                            const void* buffer, int32_t stride) {
    return call(context,
                [&] { queryOf(query)->bind(textOf(attribute), data_type, buffer, stride); });
}

qrb_status qrb_pointcloud_query_remove_bind(qrb_context* context, qrb_query_remove* query,
                                            uint32_t data_type, const void* buffer,
                                            int32_t stride) {
    return call(context, [&] { queryOf(query)->bind(data_type, buffer, stride); });
}

qrb_status qrb_pointcloud_query_fill_bind(qrb_context* context, qrb_query_fill* query,
                                          const char* attribute, uint32_t data_type,
                                          const void* buffer, int32_t) {
    return call(context, [&] { queryOf(query)->bind(textOf(attribute), data_type, buffer); });
}

qrb_status qrb_pointcloud_query_invert_attribute(qrb_context* context, qrb_query_invert* query,
                                                 const char* attribute) {
    return call(context, [&] { queryOf(query)->invert(textOf(attribute)); });
}

}  // extern "C"
