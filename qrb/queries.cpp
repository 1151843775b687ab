#include "qrb/queries.h"

#include "qrb/error.h"
#include "qrb/loader.h"

#include <utility>

namespace tarvo::qrb::pointcloud {

// The private parts keep the database alive and delete the library's query at the end.
class QuerySelect::Private {
public:
    Private(std::shared_ptr<PointcloudData> data, const std::vector<std::uint32_t>* nodes,
            const std::string& filter)
        : data(std::move(data)) {
        withFilter(this->data, filter, [&](const std::string& read) { make(nodes, read); });
    }
    ~Private() {
        qrb_context* const context = data->context.handle();
        checkStatus(context, functions().qrb_pointcloud_query_select_delete(context, handle), true);
    }
    Private(const Private&) = delete;
    Private& operator=(const Private&) = delete;

    const std::shared_ptr<PointcloudData> data;
    qrb_query_select* handle = nullptr;

private:
    void make(const std::vector<std::uint32_t>* nodes, const std::string& filter) {
        qrb_context* const context = data->context.handle();
        if (nodes == nullptr) {
            data->check(functions().qrb_pointcloud_query_select_new(context, data->handle, 0,
                                                                    filter.c_str(), &handle));
        } else {
            const std::uint32_t none = 0;  // an empty list still has an address
            data->check(functions().qrb_pointcloud_query_select_nodes_new(
                context, data->handle, nodes->empty() ? &none : nodes->data(),
                static_cast<std::uint32_t>(nodes->size()), filter.c_str(), &handle));
        }
    }
};

QuerySelect::QuerySelect(std::shared_ptr<PointcloudData> data,
                         const std::vector<std::uint32_t>* nodes, const std::string& filter)
    : d(std::make_shared<Private>(std::move(data), nodes, filter)) {}

void QuerySelect::bind(const std::string& attribute, DataType type, void* buffer,
                       std::int32_t stride) {
    if (d) {
        d->data->check(functions().qrb_pointcloud_query_select_bind(
            d->data->context.handle(), d->handle, attribute.c_str(),
            static_cast<std::uint32_t>(type), buffer, stride));
    }
}

std::uint32_t QuerySelect::next(std::uint32_t count) {
    std::uint32_t processed = 0;
    if (d) {
        d->data->check(functions().qrb_pointcloud_query_select_next(d->data->context.handle(),
                                                                    d->handle, count, &processed));
    }
    return processed;
}

std::uint32_t QuerySelect::progress() const {
    std::uint32_t percent = 0;
    if (d) {
        d->data->check(functions().qrb_pointcloud_query_select_progress(d->data->context.handle(),
                                                                        d->handle, &percent));
    }
    return percent;
}

std::optional<NodesPassed> QuerySelect::nodesPassed() const {
    const auto ask = optionalFunctions().qrb_pointcloud_query_select_nodes_passed;
    if (!d || ask == nullptr)
        return std::nullopt;
    NodesPassed nodes;
    d->data->check(
        ask(d->data->context.handle(), d->handle, &nodes.skipped, &nodes.whole, &nodes.read));
    return nodes;
}

void QuerySelect::close() {
    d.reset();
}

class QueryInsert::Private {
public:
    explicit Private(std::shared_ptr<PointcloudData> data) : data(std::move(data)) {
        this->data->check(functions().qrb_pointcloud_query_insert_new(this->data->context.handle(),
                                                                      this->data->handle, &handle));
    }
    ~Private() {
        if (handle != nullptr) {
            qrb_context* const context = data->context.handle();
            checkStatus(context, functions().qrb_pointcloud_query_insert_delete(context, handle),
                        true);
        }
    }
    Private(const Private&) = delete;
    Private& operator=(const Private&) = delete;

    const std::shared_ptr<PointcloudData> data;
    qrb_query_insert* handle = nullptr;
};

QueryInsert::QueryInsert(std::shared_ptr<PointcloudData> data)
    : d(std::make_shared<Private>(std::move(data))) {}

void QueryInsert::bind(const std::string& attribute, DataType type, const void* buffer,
                       std::int32_t stride) {
    if (d) {
        d->data->check(functions().qrb_pointcloud_query_insert_bind(
            d->data->context.handle(), d->handle, attribute.c_str(),
            static_cast<std::uint32_t>(type), buffer, stride));
    }
}

void QueryInsert::bindId(DataType type, void* buffer, std::int32_t stride) {
    if (d) {
        d->data->check(functions().qrb_pointcloud_query_insert_bind_id(
            d->data->context.handle(), d->handle, static_cast<std::uint32_t>(type), buffer,
            stride));
    }
}

std::uint32_t QueryInsert::next(std::uint32_t count) {
    std::uint32_t processed = 0;
    if (d) {
        d->data->check(functions().qrb_pointcloud_query_insert_next(d->data->context.handle(),
                                                                    d->handle, count, &processed));
    }
    return processed;
}

void QueryInsert::close() {
    if (!d) {
        return;
    }
    // The library may finish the insertion here, so the last holder reports its failure.
    const std::shared_ptr<Private> last = std::move(d);
    if (last.use_count() == 1) {
        qrb_query_insert* const handle = std::exchange(last->handle, nullptr);
        last->data->check(
            functions().qrb_pointcloud_query_insert_delete(last->data->context.handle(), handle));
    }
}

class QueryStat::Private {
public:
    explicit Private(std::shared_ptr<PointcloudData> data) : data(std::move(data)) {
        this->data->check(functions().qrb_pointcloud_query_stat_new(this->data->context.handle(),
                                                                    this->data->handle, &handle));
    }
    ~Private() {
        qrb_context* const context = data->context.handle();
        checkStatus(context, functions().qrb_pointcloud_query_stat_delete(context, handle), true);
    }
    Private(const Private&) = delete;
    Private& operator=(const Private&) = delete;

    const std::shared_ptr<PointcloudData> data;
    qrb_query_stat* handle = nullptr;
};

namespace {

// Owns the library's tree while it is copied.
class GraphNodeHolder {
public:
    explicit GraphNodeHolder(const PointcloudData& data) : m_data(data) {
        data.check(functions().qrb_pointcloud_graph_node_new(data.context.handle(), &m_node));
    }
    ~GraphNodeHolder() {
        qrb_context* const context = m_data.context.handle();
        checkStatus(context, functions().qrb_pointcloud_graph_node_delete(context, m_node), true);
    }
    GraphNodeHolder(const GraphNodeHolder&) = delete;
    GraphNodeHolder& operator=(const GraphNodeHolder&) = delete;

    qrb_graph_node* get() const { return m_node; }

private:
    const PointcloudData& m_data;
    qrb_graph_node* m_node = nullptr;
};

// The tree is as deep as the index, which bounds the recursion.
IndexNode copyNode(const qrb_graph_node& node) {
    IndexNode copy;
    copy.id = node.id;
    copy.revision = node.revision;
    copy.pointCountTotal = node.point_count_total;
    copy.pointCountNode = node.point_count_node;
    copy.children.reserve(node.child_count);
    for (std::uint32_t i = 0; i < node.child_count; ++i) {
        if (node.children[i] != nullptr) {
            copy.children.push_back(copyNode(*node.children[i]));
        }
    }
    return copy;
}

}  // namespace

QueryStat::QueryStat(std::shared_ptr<PointcloudData> data)
    : d(std::make_shared<Private>(std::move(data))) {}

void QueryStat::index(IndexNode& root, const std::string& filter) const {
    if (d) {
        const GraphNodeHolder node(*d->data);
        withFilter(d->data, filter, [&](const std::string& read) {
            d->data->check(functions().qrb_pointcloud_query_stat_index_filter(
                d->data->context.handle(), d->handle, node.get(), read.c_str()));
        });
        root = copyNode(*node.get());
    }
}

IndexNode QueryStat::root() const {
    // Of an index in which nothing passes the library tells the root, and need not look below it;
    // another library may tell nothing.
    IndexNode root;
    index(root, "0 == 1");
    if (root.id == 0) {
        index(root);
    }
    root.children.clear();
    return root;
}

void QueryStat::minimum(std::uint32_t nodeId, const std::string& attribute, DataType type,
                        void* buffer, bool cleaned) const {
    if (d) {
        const auto function = cleaned ? functions().qrb_pointcloud_query_stat_minimum_cleaned
                                      : functions().qrb_pointcloud_query_stat_minimum;
        d->data->check(function(d->data->context.handle(), d->handle, nodeId, attribute.c_str(),
                                static_cast<std::uint32_t>(type), buffer));
    }
}

void QueryStat::maximum(std::uint32_t nodeId, const std::string& attribute, DataType type,
                        void* buffer, bool cleaned) const {
    if (d) {
        const auto function = cleaned ? functions().qrb_pointcloud_query_stat_maximum_cleaned
                                      : functions().qrb_pointcloud_query_stat_maximum;
        d->data->check(function(d->data->context.handle(), d->handle, nodeId, attribute.c_str(),
                                static_cast<std::uint32_t>(type), buffer));
    }
}

std::uint32_t QueryStat::revision(std::uint32_t nodeId, const std::string& attribute) const {
    std::uint32_t revision = 0;
    if (d) {
        d->data->check(functions().qrb_pointcloud_query_stat_revision(
            d->data->context.handle(), d->handle, nodeId, attribute.c_str(), &revision));
    }
    return revision;
}

void QueryStat::close() {
    d.reset();
}

}  // namespace tarvo::qrb::pointcloud
