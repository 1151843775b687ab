#include "qrb/pointcloud.h"

#include "qrb/error.h"
#include "qrb/loader.h"

#include <utility>

namespace tarvo::qrb {

PointcloudData::PointcloudData(const Context& c) : context(c) {
    check(functions().qrb_pointcloud_new(context.handle(), &handle));
}

PointcloudData::~PointcloudData() {
    checkStatus(context.handle(), functions().qrb_pointcloud_delete(context.handle(), handle),
                true);
}

void PointcloudData::check(std::int32_t status) const {
    checkStatus(context.handle(), status);
}

void withFilter(const std::shared_ptr<PointcloudData>& data, const std::string& filter,
                const FilterCall& call) {
    if (data->filterReader && !filter.empty()) {
        data->filterReader(pointcloud::PointAttributes(data), filter, call);
    } else {
        call(filter);
    }
}

Pointcloud::Pointcloud(const Context& context)
    : m_data(std::make_shared<PointcloudData>(context)),
      m_changelog(std::make_shared<pointcloud::Changelog>(m_data)),
      m_management(std::make_shared<pointcloud::Management>(m_data)),
      m_metaData(std::make_shared<pointcloud::MetaData>(m_data)),
      m_pointAttributes(std::make_shared<pointcloud::PointAttributes>(m_data)),
      m_transactions(std::make_shared<pointcloud::Transactions>(m_data)) {}

void Pointcloud::open(const std::string& fileName, const pointcloud::OpenSettings& settings) {
    m_data->check(functions().qrb_pointcloud_open(m_data->context.handle(), m_data->handle,
                                                  fileName.c_str(), settings.transfer()));
    if (settings.transaction == 0)
        return;
    std::uint32_t opened = 0;
    try {
        opened = m_transactions->current();
    } catch (...) {
        close();
        throw;
    }
    if (opened == settings.transaction)
        return;
    close();
    const std::string asked = std::to_string(settings.transaction);
    throw ErrorImpl(QRB_ERROR_NOT_AVAILABLE,
                    "The library can't open transaction " + asked + " to be read.",
                    "It opened transaction " + std::to_string(opened) +
                        " instead. Load a library that can, or make transaction " + asked +
                        " the current one.");
}

void Pointcloud::create(const std::string& fileName, const pointcloud::CreateSettings& settings) {
    m_data->check(functions().qrb_pointcloud_create(m_data->context.handle(), m_data->handle,
                                                    fileName.c_str(), settings.transfer()));
}

void Pointcloud::create(const std::string& fileName, const pointcloud::CreateSettings& settings,
                        const std::string& schema, bool optionals) {
    m_data->check(functions().qrb_pointcloud_create_with_schema(
        m_data->context.handle(), m_data->handle, fileName.c_str(), settings.transfer(),
        schema.c_str(), optionals ? 1 : 0));
}

void Pointcloud::close() {
    m_data->check(functions().qrb_pointcloud_close(m_data->context.handle(), m_data->handle));
}

void Pointcloud::readFilters(FilterReader reader) {
    m_data->filterReader = std::move(reader);
}

bool Pointcloud::isOpen() const {
    std::uint8_t open = 0;
    m_data->check(
        functions().qrb_pointcloud_is_open(m_data->context.handle(), m_data->handle, &open));
    return open != 0;
}

std::string Pointcloud::getUuid() const {
    const char* uuid = nullptr;
    m_data->check(
        functions().qrb_pointcloud_get_uuid(m_data->context.handle(), m_data->handle, &uuid));
    return copyText(uuid);
}

std::string Pointcloud::inspect(std::uint8_t format) const {
    const char* report = nullptr;
    m_data->check(functions().qrb_pointcloud_inspect(m_data->context.handle(), m_data->handle,
                                                     format, &report));
    return copyText(report);
}

pointcloud::QuerySelect Pointcloud::select(const std::string& filter) const {
    return pointcloud::QuerySelect(m_data, nullptr, filter);
}

pointcloud::QuerySelect Pointcloud::select(const std::vector<std::uint32_t>& nodes,
                                           const std::string& filter) const {
    return pointcloud::QuerySelect(m_data, &nodes, filter);
}

pointcloud::QueryInsert Pointcloud::insert() const {
    return pointcloud::QueryInsert(m_data);
}

pointcloud::QueryStat Pointcloud::stat() const {
    return pointcloud::QueryStat(m_data);
}

pointcloud::QueryUpdate Pointcloud::update() const {
    return pointcloud::QueryUpdate(m_data);
}

pointcloud::QueryRemove Pointcloud::remove() const {
    return pointcloud::QueryRemove(m_data);
}

pointcloud::QueryFill Pointcloud::fill(const std::string& filter) const {
    return pointcloud::QueryFill(m_data, nullptr, filter);
}

pointcloud::QueryFill Pointcloud::fill(const std::vector<std::uint32_t>& nodes,
                                       const std::string& filter) const {
    return pointcloud::QueryFill(m_data, &nodes, filter);
}

pointcloud::QueryInvert Pointcloud::invert(const std::string& filter) const {
    return pointcloud::QueryInvert(m_data, nullptr, filter);
}

pointcloud::QueryInvert Pointcloud::invert(const std::vector<std::uint32_t>& nodes,
                                           const std::string& filter) const {
    return pointcloud::QueryInvert(m_data, &nodes, filter);
}

const Context& Pointcloud::context() const {
    return m_data->context;
}

}  // namespace tarvo::qrb
