// Queries and index nodes.
#include "engine/capi/handles.h"
#include "engine/query/stat.h"

using namespace tarvo::engine;
using namespace tarvo::engine::capi;

namespace {

// On an exception the node holds what was made so far and can be deleted.
void fillNode(qrb_graph_node& node, const query::IndexEntry& entry) {
    node.id = entry.id;
    node.revision = entry.revision;
    node.point_count_total = static_cast<int64_t>(entry.totalCount);
    node.point_count_node = static_cast<int64_t>(entry.ownCount);
    if (entry.children.empty())
        return;
    node.children = new qrb_graph_node*[entry.children.size()];
    for (const query::IndexEntry& child : entry.children) {
        auto* made = new qrb_graph_node{};
        node.children[node.child_count++] = made;
        fillNode(*made, child);
    }
}

qrb_status readIndexInto(qrb_context* context, qrb_query_stat* query, qrb_graph_node* node,
                         const char* filter) {
    return call(context, [&] {
        const std::shared_ptr<GraphNode> out = given(node, "node");
        GraphNode made;
        fillNode(made.root, query::readIndex(queryOf(query)->session, textOf(filter)));
        std::swap(out->root, made.root);
    });
}

}  // namespace

extern "C" {

qrb_status qrb_pointcloud_query_select_new(qrb_context* context, qrb_pointcloud* pointcloud,
                                           uint32_t node, const char* filter,
                                           qrb_query_select** query) {
    return call(context, [&] {
        makeQuery(context, pointcloud, query, query::Scope{node, {}}, textOf(filter));
    });
}

qrb_status qrb_pointcloud_query_select_nodes_new(qrb_context* context, qrb_pointcloud* pointcloud,
                                                 const uint32_t* nodes, uint32_t count,
                                                 const char* filter, qrb_query_select** query) {
    return call(context, [&] {
        makeQuery(context, pointcloud, query, scopeOf(nodes, count), textOf(filter));
    });
}

qrb_status qrb_pointcloud_query_select_bind(qrb_context* context, qrb_query_select* query,
                                            const char* attribute, uint32_t data_type, void* buffer,
                                            int32_t stride) {
    return call(context,
                [&] { queryOf(query)->bind(textOf(attribute), data_type, buffer, stride); });
}

qrb_status qrb_pointcloud_query_select_next(qrb_context* context, qrb_query_select* query,
                                            uint32_t count, uint32_t* processed) {
    return call(context, [&] {
        auto& out = given(processed, "processed");
        out = queryOf(query)->next(count);
    });
}

qrb_status qrb_pointcloud_query_select_progress(qrb_context* context, qrb_query_select* query,
                                                uint32_t* progress) {
    return call(context, [&] {
        auto& out = given(progress, "progress");
        out = queryOf(query)->progress();
    });
}

qrb_status qrb_pointcloud_query_select_nodes_passed(qrb_context* context, qrb_query_select* query,
                                                    uint64_t* skipped, uint64_t* whole,
                                                    uint64_t* read) {
    return call(context, [&] {
        auto& outSkipped = given(skipped, "skipped");
        auto& outWhole = given(whole, "whole");
        auto& outRead = given(read, "read");
        const query::NodeTally nodes = queryOf(query)->nodes();
        outSkipped = nodes.skipped;
        outWhole = nodes.whole;
        outRead = nodes.read;
    });
}

qrb_status qrb_pointcloud_query_select_delete(qrb_context* context, qrb_query_select* query) {
    return call(context, [&] { deleteQuery(query); });
}

qrb_status qrb_pointcloud_query_insert_new(qrb_context* context, qrb_pointcloud* pointcloud,
                                           qrb_query_insert** query) {
    return call(context, [&] { makeQuery(context, pointcloud, query); });
}

qrb_status qrb_pointcloud_query_insert_bind(qrb_context* context, qrb_query_insert* query,
                                            const char* attribute, uint32_t data_type,
                                            const void* buffer, int32_t stride) {
    return call(context,
                [&] { queryOf(query)->bind(textOf(attribute), data_type, buffer, stride); });
}

qrb_status qrb_pointcloud_query_insert_bind_id(qrb_context* context, qrb_query_insert* query,
                                               uint32_t data_type, void* buffer, int32_t stride) {
    return call(context, [&] { queryOf(query)->bindId(data_type, buffer, stride); });
}

qrb_status qrb_pointcloud_query_insert_next(qrb_context* context, qrb_query_insert* query,
                                            uint32_t count, uint32_t* processed) {
    return call(context, [&] {
        auto& out = given(processed, "processed");
        out = queryOf(query)->next(count);
    });
}

qrb_status qrb_pointcloud_query_insert_delete(qrb_context* context, qrb_query_insert* query) {
    return call(context, [&] { deleteQuery(query); });
}

qrb_status qrb_pointcloud_query_stat_new(qrb_context* context, qrb_pointcloud* pointcloud,
                                         qrb_query_stat** query) {
    return call(context, [&] { makeQuery(context, pointcloud, query); });
}

qrb_status qrb_pointcloud_query_stat_delete(qrb_context* context, qrb_query_stat* query) {
    return call(context, [&] { deleteQuery(query); });
}

qrb_status qrb_pointcloud_query_stat_index(qrb_context* context, qrb_query_stat* query,
                                           qrb_graph_node* node) {
    return readIndexInto(context, query, node, nullptr);
}

qrb_status qrb_pointcloud_query_stat_index_filter(qrb_context* context, qrb_query_stat* query,
                                                  qrb_graph_node* node, const char* filter) {
    return readIndexInto(context, query, node, filter);
}

#define EXTREME(name, extreme, cleaned)                                                            \
    qrb_status qrb_pointcloud_query_stat_##name(qrb_context* context, qrb_query_stat* query,       \
                                                uint32_t node, const char* attribute,              \
                                                uint32_t data_type, void* buffer) {                \
        return call(context, [&] {                                                                 \
            query::readExtreme(queryOf(query)->session, node, textOf(attribute), extreme, cleaned, \
                               data_type, buffer);                                                 \
        });                                                                                        \
    }
EXTREME(minimum, query::Extreme::Minimum, false)
EXTREME(minimum_cleaned, query::Extreme::Minimum, true)
EXTREME(maximum, query::Extreme::Maximum, false)
EXTREME(maximum_cleaned, query::Extreme::Maximum, true)

qrb_status qrb_pointcloud_query_stat_revision(qrb_context* context, qrb_query_stat* query,
                                              uint32_t node, const char* attribute,
                                              uint32_t* revision) {
    return call(context, [&] {
        auto& out = given(revision, "revision");
        out = query::readRevision(queryOf(query)->session, node, textOf(attribute));
    });
}

qrb_status qrb_pointcloud_graph_node_new(qrb_context* context, qrb_graph_node** node) {
    return call(context, [&] {
        if (!node)
            throwMissing("node");
        *node = HandleTable::instance().addNode(std::make_shared<GraphNode>(), context);
    });
}

qrb_status qrb_pointcloud_graph_node_delete(qrb_context* context, qrb_graph_node* node) {
    return call(context, [&] {
        if (node) {
            given(node, "node");
            HandleTable::instance().removeNode(node);
        }
    });
}

}  // extern "C"
