#include "qrb/metadata.h"

#include "qrb/error.h"
#include "qrb/loader.h"
#include "qrb/namelist.h"

#include <utility>

namespace tarvo::qrb::pointcloud {

MetaData::MetaData(std::shared_ptr<PointcloudData> data) : m_data(std::move(data)) {}

std::vector<std::string> MetaData::list() const {
    std::uint32_t count = 0;
    const char* names = nullptr;
    m_data->check(functions().qrb_pointcloud_meta_data_list(m_data->context.handle(),
                                                            m_data->handle, &count, &names));
    return unpackNames(count, names);
}

bool MetaData::exists(const std::string& name) const {
    std::uint8_t exists = 0;
    m_data->check(functions().qrb_pointcloud_meta_data_exists(
        m_data->context.handle(), m_data->handle, name.c_str(), &exists));
    return exists != 0;
}

std::string MetaData::get(const std::string& name, const std::string& defaultValue) const {
    const char* value = nullptr;
    m_data->check(functions().qrb_pointcloud_meta_data_get(
        m_data->context.handle(), m_data->handle, name.c_str(), &value, defaultValue.c_str()));
    return copyText(value);
}

void MetaData::set(const std::string& name, const std::string& value) {
    m_data->check(functions().qrb_pointcloud_meta_data_set(m_data->context.handle(), m_data->handle,
                                                           name.c_str(), value.c_str()));
}

void MetaData::remove(const std::string& name) {
    m_data->check(functions().qrb_pointcloud_meta_data_remove(m_data->context.handle(),
                                                              m_data->handle, name.c_str()));
}

void MetaData::validate(const std::string& name, const std::string& schema) const {
    m_data->check(functions().qrb_pointcloud_meta_data_validate(
        m_data->context.handle(), m_data->handle, name.c_str(), schema.c_str()));
}

void MetaData::validateJson(const std::string& value, const std::string& schema) const {
    m_data->check(functions().qrb_pointcloud_meta_data_validate_json(
        m_data->context.handle(), m_data->handle, value.c_str(), schema.c_str()));
}

Findings MetaData::findings(const std::string& name, const std::string& schema) const {
    return findingsOf(*m_data,
                      functions().qrb_pointcloud_meta_data_validate(
                          m_data->context.handle(), m_data->handle, name.c_str(), schema.c_str()));
}

Findings MetaData::findingsOfJson(const std::string& value, const std::string& schema) const {
    return findingsOf(*m_data,
                      functions().qrb_pointcloud_meta_data_validate_json(
                          m_data->context.handle(), m_data->handle, value.c_str(), schema.c_str()));
}

void MetaData::createSignature(const std::string& name, std::uint32_t method,
                               const std::vector<std::uint8_t>& key) {
    m_data->check(functions().qrb_pointcloud_meta_data_create_signature(
        m_data->context.handle(), m_data->handle, name.c_str(), method,
        static_cast<std::uint32_t>(key.size()), key.data()));
}

bool MetaData::verifySignature(const std::string& name, std::uint32_t method,
                               const std::vector<std::uint8_t>& key) const {
    std::uint8_t valid = 0;
    m_data->check(functions().qrb_pointcloud_meta_data_verify_signature(
        m_data->context.handle(), m_data->handle, name.c_str(), method,
        static_cast<std::uint32_t>(key.size()), key.data(), &valid));
    return valid != 0;
}

}  // namespace tarvo::qrb::pointcloud
