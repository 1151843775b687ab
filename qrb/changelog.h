// The changelog of one open database.
#pragma once

#include "qrb/pointclouddata.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace tarvo::qrb::pointcloud {

class Changelog {
public:
    explicit Changelog(std::shared_ptr<PointcloudData> data);

    // Adds a message to the entry of the pending transaction.
    void appendMessage(const std::string& text);
    void exportToTextfile(const std::string& fileName) const;
    void importFromDatabase(const std::string& fileName);

    // Whether the signature at the end of an entry's text is valid. Needs no database.
    static bool verifyLogEntry(const std::string& entry, std::uint32_t method,
                               const std::vector<std::uint8_t>& key);

private:
    std::shared_ptr<PointcloudData> m_data;
};

}  // namespace tarvo::qrb::pointcloud
