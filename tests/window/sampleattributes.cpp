#include "tests/window/sampleattributes.h"

#include <algorithm>
#include <map>

namespace pointcloud = tarvo::qrb::pointcloud;

int decimalsOf(const std::string& name) {
    // Those of none are left out.
    static const std::map<std::string, int> decimals = {
        {"tarvo.xyz", 5}, {"tarvo.reflectance", 2}, {"tarvo.timestamp", 8}, {"own.vector", 2}};
    const auto found = decimals.find(name);
    return found == decimals.end() ? 0 : found->second;
}

QStringList elementsOf(const pointcloud::PointAttribute& attribute, std::uint32_t most) {
    if (attribute.length == 1)
        return {QString::fromStdString(attribute.name)};
    QStringList names;
    for (std::uint32_t i = 0; i < std::min(attribute.length, most); ++i)
        names += QString("%0[%1]").arg(QString::fromStdString(attribute.name)).arg(i);
    return names;
}

std::vector<pointcloud::PointAttribute> attributesOf(const tarvo::qrb::Pointcloud& database) {
    std::vector<pointcloud::PointAttribute> result;
    for (const std::string& name : database.pointAttributes().list())
        result.push_back(database.pointAttributes().get(name));
    return result;
}
