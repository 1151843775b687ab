#include "mainwindow/attributegroups.h"

#include "qrb/defaults/catalogue.h"
#include "qrb/error.h"

namespace {

namespace defaults = tarvo::qrb::defaults;

// The rank is the place in the catalogue; attributes that it lacks come after its own.
tarvo::qrb::pointcloud::PointAttributes::Group catalogueGroup(const std::string& name) {
    const auto entries = defaults::attributes();
    if (const auto* entry = defaults::findAttribute(name))
        return {entry->group, static_cast<std::uint32_t>(entry - entries.data())};
    return {defaults::groups().back(), static_cast<std::uint32_t>(entries.size())};
}

}  // namespace

tarvo::qrb::pointcloud::PointAttributes::Group attributeGroup(
    const tarvo::qrb::pointcloud::PointAttributes& attributes, const std::string& name) {
    try {
        return attributes.group(name);
    } catch (const tarvo::qrb::Error& error) {
        if (error.code() != QRB_ERROR_NOT_AVAILABLE)
            throw;
        return catalogueGroup(name);
    }
}
