// The point attribute definitions of one open database.
#pragma once

#include "qrb/pointattribute.h"
#include "qrb/pointclouddata.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace tarvo::qrb::pointcloud {

class PointAttributes {
public:
    explicit PointAttributes(std::shared_ptr<PointcloudData> data);

    // The names, the primary attribute first, the point id second.
    std::vector<std::string> list() const;
    // The names of the default catalogue.
    std::vector<std::string> listDefault() const;
    bool exists(const std::string& name) const;
    PointAttribute get(const std::string& name) const;
    void add(const PointAttribute& attribute);
    void put(const PointAttribute& attribute);
    void remove(const std::string& name);
    std::string primaryAttributeName() const;
    std::string pointIdName() const;

    struct Group {
        std::string name;
        std::uint32_t rank = 0;
    };
    // The group in which the attribute is shown.
    Group group(const std::string& name) const;

private:
    std::shared_ptr<PointcloudData> m_data;
};

}  // namespace tarvo::qrb::pointcloud
