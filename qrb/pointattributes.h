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
    // The names of this database that a filter picks: a pattern for the whole name with * and ?,
    // or "#TAG"; empty: all.
    std::vector<std::string> listFiltered(const std::string& filter) const;
    bool exists(const std::string& name) const;
    PointAttribute get(const std::string& name) const;
    // From the default catalogue.
    PointAttribute getDefault(const std::string& name) const;
    void add(const PointAttribute& attribute);
    void addDefault(const std::string& name);
    void put(const PointAttribute& attribute);
    void remove(const std::string& name);
    // Adds a copy of the definition and of all values.
    void duplicate(const std::string& name, const std::string& newName);
    // Forgets the stored values: every point has the default value again.
    void discard(const std::string& name);
    std::string primaryAttributeName() const;
    std::string pointIdName() const;
    DataType pointIdType() const;
    std::string pointIdUnit() const;

    // Other open databases; not null, of any context.
    using Others = std::vector<const PointAttributes*>;
    // A definition that holds every value of the attribute in this and the other databases; those
    // without the attribute don't matter.
    PointAttribute getMerged(const Others& others, const std::string& name) const;
    // The names that this or any of the others has, this one's first.
    std::vector<std::string> listMerged(const Others& others) const;

    struct Group {
        std::string name;
        std::uint32_t rank = 0;
    };
    // The group in which the attribute is shown, and its place there.
    Group group(const std::string& name) const;
    // The same within the default catalogue.
    Group groupDefault(const std::string& name) const;

private:
    // Null stays null: the library refuses it.
    static std::vector<qrb_pointcloud*> handlesOf(const Others& others);

    std::shared_ptr<PointcloudData> m_data;
};

}  // namespace tarvo::qrb::pointcloud
