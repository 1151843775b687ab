#include "qrb/changequeries.h"

#include "qrb/error.h"
#include "qrb/loader.h"

#include <utility>

namespace tarvo::qrb::pointcloud {

// Keeps the database alive and deletes the library's query at the end.
template <typename Handle>
class ChangeQuery {
public:
    using Delete = qrb_status (*)(qrb_context*, Handle*);
    using Next = qrb_status (*)(qrb_context*, Handle*, std::uint32_t, std::uint32_t*);
    using Progress = qrb_status (*)(qrb_context*, Handle*, std::uint32_t*);

    ChangeQuery(std::shared_ptr<PointcloudData> data, Delete deleteQuery)
        : m_data(std::move(data)), m_delete(deleteQuery) {}
    ~ChangeQuery() {
        if (m_handle != nullptr) {
            checkStatus(context(), m_delete(context(), m_handle), true);
        }
    }
    ChangeQuery(const ChangeQuery&) = delete;
    ChangeQuery& operator=(const ChangeQuery&) = delete;

    const std::shared_ptr<PointcloudData>& data() const { return m_data; }
    qrb_context* context() const { return m_data->context.handle(); }
    qrb_pointcloud* database() const { return m_data->handle; }
    Handle* handle() const { return m_handle; }
    Handle** slot() { return &m_handle; }
    void check(std::int32_t status) const { m_data->check(status); }

    std::uint32_t next(Next function, std::uint32_t count) const {
        std::uint32_t processed = 0;
        check(function(context(), m_handle, count, &processed));
        return processed;
    }
    std::uint32_t progress(Progress function) const {
        std::uint32_t percent = 0;
        check(function(context(), m_handle, &percent));
        return percent;
    }
    // The library may finish the change here.
    void end() { check(m_delete(context(), std::exchange(m_handle, nullptr))); }

private:
    const std::shared_ptr<PointcloudData> m_data;
    const Delete m_delete;
    Handle* m_handle = nullptr;
};

namespace {

// Makes the query of a selection with the one or the other function.
template <typename Handle, typename New, typename NodesNew>
void makeSelection(ChangeQuery<Handle>& query, New newQuery, NodesNew newNodesQuery,
                   const std::vector<std::uint32_t>* nodes, const std::string& filter) {
    withFilter(query.data(), filter, [&](const std::string& read) {
        if (nodes == nullptr) {
            query.check(newQuery(query.context(), query.database(), 0, read.c_str(), query.slot()));
            return;
        }
        const std::uint32_t none = 0;  // an empty list still has an address
        query.check(
            newNodesQuery(query.context(), query.database(), nodes->empty() ? &none : nodes->data(),
                          static_cast<std::uint32_t>(nodes->size()), read.c_str(), query.slot()));
    });
}

// The last holder reports what fails at the end.
template <typename Part>
void closeQuery(std::shared_ptr<Part>& d) {
    const std::shared_ptr<Part> last = std::move(d);
    if (last && last.use_count() == 1) {
        last->end();
    }
}

}  // namespace

class QueryUpdate::Private : public ChangeQuery<qrb_query_update> {
public:
    explicit Private(std::shared_ptr<PointcloudData> data)
        : ChangeQuery(std::move(data), functions().qrb_pointcloud_query_update_delete) {
        check(functions().qrb_pointcloud_query_update_new(context(), database(), slot()));
    }
};

QueryUpdate::QueryUpdate(std::shared_ptr<PointcloudData> data)
    : d(std::make_shared<Private>(std::move(data))) {}

void QueryUpdate::bind(const std::string& attribute, DataType type, const void* buffer,
                       std::int32_t stride) {
    if (d) {
        d->check(functions().qrb_pointcloud_query_update_bind(
            d->context(), d->handle(), attribute.c_str(), static_cast<std::uint32_t>(type), buffer,
            stride));
    }
}

std::uint32_t QueryUpdate::next(std::uint32_t count) {
    return d ? d->next(functions().qrb_pointcloud_query_update_next, count) : 0;
}

void QueryUpdate::close() {
    closeQuery(d);
}

class QueryRemove::Private : public ChangeQuery<qrb_query_remove> {
public:
    explicit Private(std::shared_ptr<PointcloudData> data)
        : ChangeQuery(std::move(data), functions().qrb_pointcloud_query_remove_delete) {
        check(functions().qrb_pointcloud_query_remove_new(context(), database(), slot()));
    }
};

QueryRemove::QueryRemove(std::shared_ptr<PointcloudData> data)
    : d(std::make_shared<Private>(std::move(data))) {}

void QueryRemove::bind(DataType type, const void* ids, std::int32_t stride) {
    if (d) {
        d->check(functions().qrb_pointcloud_query_remove_bind(
            d->context(), d->handle(), static_cast<std::uint32_t>(type), ids, stride));
    }
}

std::uint32_t QueryRemove::next(std::uint32_t count) {
    return d ? d->next(functions().qrb_pointcloud_query_remove_next, count) : 0;
}

void QueryRemove::close() {
    closeQuery(d);
}

class QueryFill::Private : public ChangeQuery<qrb_query_fill> {
public:
    Private(std::shared_ptr<PointcloudData> data, const std::vector<std::uint32_t>* nodes,
            const std::string& filter)
        : ChangeQuery(std::move(data), functions().qrb_pointcloud_query_fill_delete) {
        makeSelection(*this, functions().qrb_pointcloud_query_fill_new,
                      functions().qrb_pointcloud_query_fill_nodes_new, nodes, filter);
    }
};

QueryFill::QueryFill(std::shared_ptr<PointcloudData> data, const std::vector<std::uint32_t>* nodes,
                     const std::string& filter)
    : d(std::make_shared<Private>(std::move(data), nodes, filter)) {}

void QueryFill::bind(const std::string& attribute, DataType type, const void* value) {
    if (d) {
        d->check(
            functions().qrb_pointcloud_query_fill_bind(d->context(), d->handle(), attribute.c_str(),
                                                       static_cast<std::uint32_t>(type), value, 0));
    }
}

std::uint32_t QueryFill::next(std::uint32_t count) {
    return d ? d->next(functions().qrb_pointcloud_query_fill_next, count) : 0;
}

std::uint32_t QueryFill::progress() const {
    return d ? d->progress(functions().qrb_pointcloud_query_fill_progress) : 0;
}

void QueryFill::close() {
    closeQuery(d);
}

class QueryInvert::Private : public ChangeQuery<qrb_query_invert> {
public:
    Private(std::shared_ptr<PointcloudData> data, const std::vector<std::uint32_t>* nodes,
            const std::string& filter)
        : ChangeQuery(std::move(data), functions().qrb_pointcloud_query_invert_delete) {
        makeSelection(*this, functions().qrb_pointcloud_query_invert_new,
                      functions().qrb_pointcloud_query_invert_nodes_new, nodes, filter);
    }
};

QueryInvert::QueryInvert(std::shared_ptr<PointcloudData> data,
                         const std::vector<std::uint32_t>* nodes, const std::string& filter)
    : d(std::make_shared<Private>(std::move(data), nodes, filter)) {}

void QueryInvert::attribute(const std::string& name) {
    if (d) {
        d->check(functions().qrb_pointcloud_query_invert_attribute(d->context(), d->handle(),
                                                                   name.c_str()));
    }
}

std::uint32_t QueryInvert::next(std::uint32_t count) {
    return d ? d->next(functions().qrb_pointcloud_query_invert_next, count) : 0;
}

std::uint32_t QueryInvert::progress() const {
    return d ? d->progress(functions().qrb_pointcloud_query_invert_progress) : 0;
}

void QueryInvert::close() {
    closeQuery(d);
}

}  // namespace tarvo::qrb::pointcloud
