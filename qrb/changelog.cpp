#include "qrb/changelog.h"

#include "qrb/error.h"
#include "qrb/loader.h"

#include <utility>

namespace tarvo::qrb::pointcloud {

Changelog::Changelog(std::shared_ptr<PointcloudData> data) : m_data(std::move(data)) {}

void Changelog::appendMessage(const std::string& text) {
    m_data->check(functions().qrb_pointcloud_changelog_append_log_message(
        m_data->context.handle(), m_data->handle, text.c_str()));
}

void Changelog::exportToTextfile(const std::string& fileName) const {
    m_data->check(functions().qrb_pointcloud_changelog_export_to_textfile(
        m_data->context.handle(), m_data->handle, fileName.c_str()));
}

void Changelog::importFromDatabase(const std::string& fileName) {
    m_data->check(functions().qrb_pointcloud_changelog_import_from_database(
        m_data->context.handle(), m_data->handle, fileName.c_str()));
}

bool Changelog::verifyLogEntry(const std::string& entry, std::uint32_t method,
                               const std::vector<std::uint8_t>& key) {
    std::uint8_t valid = 0;
    checkResult(functions().qrb_pointcloud_changelog_verify_log_entry_cf(
        entry.c_str(), method, static_cast<std::uint32_t>(key.size()), key.data(), &valid));
    return valid != 0;
}

}  // namespace tarvo::qrb::pointcloud
