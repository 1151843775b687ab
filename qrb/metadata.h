// The metadata items (named JSON texts) of one open database.
#pragma once

#include "qrb/findings.h"
#include "qrb/pointclouddata.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace tarvo::qrb::pointcloud {

class MetaData {
public:
    explicit MetaData(std::shared_ptr<PointcloudData> data);

    std::vector<std::string> list() const;
    bool exists(const std::string& name) const;
    // The value, or defaultValue where there is no such item.
    std::string get(const std::string& name, const std::string& defaultValue = {}) const;
    void set(const std::string& name, const std::string& value);
    void remove(const std::string& name);

    // Checks an item, or a JSON text, against a JSON schema (an item with an empty one: against that
    // of the default catalogue); throws Error whose details hold a line per fault.
    void validate(const std::string& name, const std::string& schema) const;
    void validateJson(const std::string& value, const std::string& schema) const;
    // The same; what is wrong with the value is no failure.
    Findings findings(const std::string& name, const std::string& schema) const;
    Findings findingsOfJson(const std::string& value, const std::string& schema) const;

    // Method 0 with an empty key removes the signature.
    void createSignature(const std::string& name, std::uint32_t method,
                         const std::vector<std::uint8_t>& key);
    // Method 0 with an empty key asks whether the item is signed.
    bool verifySignature(const std::string& name, std::uint32_t method,
                         const std::vector<std::uint8_t>& key) const;

private:
    std::shared_ptr<PointcloudData> m_data;
};

}  // namespace tarvo::qrb::pointcloud
