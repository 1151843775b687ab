#include "qrb/pointattributes.h"

#include "qrb/error.h"
#include "qrb/loader.h"
#include "qrb/namelist.h"

#include <utility>

namespace tarvo::qrb::pointcloud {

PointAttributes::PointAttributes(std::shared_ptr<PointcloudData> data) : m_data(std::move(data)) {}

std::vector<std::string> PointAttributes::list() const {
    std::uint32_t count = 0;
    const char* names = nullptr;
    m_data->check(functions().qrb_pointcloud_point_attributes_list(m_data->context.handle(),
                                                                   m_data->handle, &count, &names));
    return unpackNames(count, names);
}

std::vector<std::string> PointAttributes::listDefault() const {
    std::uint32_t count = 0;
    const char* names = nullptr;
    m_data->check(functions().qrb_pointcloud_point_attributes_list_default(
        m_data->context.handle(), m_data->handle, &count, &names));
    return unpackNames(count, names);
}

std::vector<std::string> PointAttributes::listFiltered(const std::string& filter) const {
    std::uint32_t count = 0;
    const char* names = nullptr;
    m_data->check(functions().qrb_pointcloud_point_attributes_list_filtered(
        m_data->context.handle(), m_data->handle, filter.c_str(), &count, &names));
    return unpackNames(count, names);
}

bool PointAttributes::exists(const std::string& name) const {
    std::uint8_t exists = 0;
    m_data->check(functions().qrb_pointcloud_point_attributes_exists(
        m_data->context.handle(), m_data->handle, name.c_str(), &exists));
    return exists != 0;
}

PointAttribute PointAttributes::get(const std::string& name) const {
    const AttributeHandle attribute(PointAttribute{});
    m_data->check(functions().qrb_pointcloud_point_attributes_get(
        m_data->context.handle(), m_data->handle, name.c_str(), attribute.get()));
    return attribute.read();
}

PointAttribute PointAttributes::getDefault(const std::string& name) const {
    const AttributeHandle attribute(PointAttribute{});
    m_data->check(functions().qrb_pointcloud_point_attributes_get_default(
        m_data->context.handle(), m_data->handle, name.c_str(), attribute.get()));
    return attribute.read();
}

void PointAttributes::add(const PointAttribute& attribute) {
    const AttributeHandle handle(attribute);
    m_data->check(functions().qrb_pointcloud_point_attributes_add(m_data->context.handle(),
                                                                  m_data->handle, handle.get()));
}

void PointAttributes::addDefault(const std::string& name) {
    m_data->check(functions().qrb_pointcloud_point_attributes_add_default(
        m_data->context.handle(), m_data->handle, name.c_str()));
}

void PointAttributes::put(const PointAttribute& attribute) {
    const AttributeHandle handle(attribute);
    m_data->check(functions().qrb_pointcloud_point_attributes_put(m_data->context.handle(),
                                                                  m_data->handle, handle.get()));
}

void PointAttributes::remove(const std::string& name) {
    m_data->check(functions().qrb_pointcloud_point_attributes_remove(m_data->context.handle(),
                                                                     m_data->handle, name.c_str()));
}

void PointAttributes::duplicate(const std::string& name, const std::string& newName) {
    m_data->check(functions().qrb_pointcloud_point_attributes_duplicate(
        m_data->context.handle(), m_data->handle, name.c_str(), newName.c_str()));
}

void PointAttributes::discard(const std::string& name) {
    m_data->check(functions().qrb_pointcloud_point_attributes_discard(
        m_data->context.handle(), m_data->handle, name.c_str()));
}

std::string PointAttributes::primaryAttributeName() const {
    const char* name = nullptr;
    m_data->check(functions().qrb_pointcloud_point_attributes_primary_attribute_name(
        m_data->context.handle(), m_data->handle, &name));
    return copyText(name);
}

std::string PointAttributes::pointIdName() const {
    const char* name = nullptr;
    m_data->check(functions().qrb_pointcloud_point_attributes_point_id_name(
        m_data->context.handle(), m_data->handle, &name));
    return copyText(name);
}

DataType PointAttributes::pointIdType() const {
    std::uint32_t type = 0;
    m_data->check(functions().qrb_pointcloud_point_attributes_point_id_type(
        m_data->context.handle(), m_data->handle, &type));
    return static_cast<DataType>(type);
}

std::string PointAttributes::pointIdUnit() const {
    const char* unit = nullptr;
    m_data->check(functions().qrb_pointcloud_point_attributes_point_id_unit(
        m_data->context.handle(), m_data->handle, &unit));
    return copyText(unit);
}

std::vector<qrb_pointcloud*> PointAttributes::handlesOf(const Others& others) {
    std::vector<qrb_pointcloud*> handles;
    for (const PointAttributes* other : others) {
        handles.push_back(other ? other->m_data->handle : nullptr);
    }
    return handles;
}

PointAttribute PointAttributes::getMerged(const Others& others, const std::string& name) const {
    const AttributeHandle attribute(PointAttribute{});
    const std::vector<qrb_pointcloud*> handles = handlesOf(others);
    m_data->check(functions().qrb_pointcloud_point_attributes_get_merged(
        m_data->context.handle(), m_data->handle, handles.data(),
        static_cast<std::uint32_t>(handles.size()), name.c_str(), attribute.get()));
    return attribute.read();
}

std::vector<std::string> PointAttributes::listMerged(const Others& others) const {
    std::uint32_t count = 0;
    const char* names = nullptr;
    const std::vector<qrb_pointcloud*> handles = handlesOf(others);
    m_data->check(functions().qrb_pointcloud_point_attributes_get_merged_all(
        m_data->context.handle(), m_data->handle, handles.data(),
        static_cast<std::uint32_t>(handles.size()), &count, &names));
    return unpackNames(count, names);
}

PointAttributes::Group PointAttributes::group(const std::string& name) const {
    const char* groupName = nullptr;
    Group group;
    m_data->check(functions().qrb_pointcloud_point_attributes_group(
        m_data->context.handle(), m_data->handle, name.c_str(), &groupName, &group.rank));
    group.name = copyText(groupName);
    return group;
}

PointAttributes::Group PointAttributes::groupDefault(const std::string& name) const {
    const char* groupName = nullptr;
    Group group;
    m_data->check(functions().qrb_pointcloud_point_attributes_group_default(
        m_data->context.handle(), m_data->handle, name.c_str(), &groupName, &group.rank));
    group.name = copyText(groupName);
    return group;
}

}  // namespace tarvo::qrb::pointcloud
