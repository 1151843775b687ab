#include "core/defaultattribute.h"

namespace tarvo::core {

qrb::pointcloud::PointAttribute defaultAttribute(const catalogue::AttributeEntry& entry) {
    qrb::pointcloud::PointAttribute definition;
    definition.name = entry.name;
    definition.title = entry.title;
    definition.tags = entry.tags;
    definition.description = entry.description;
    definition.unitSymbol = entry.unitSymbol;
    definition.length = entry.length;
    definition.resolution = entry.resolution;
    definition.minimumValue = entry.minimumValue;
    definition.maximumValue = entry.maximumValue;
    definition.defaultValue = entry.defaultValue;
    definition.invalidValue = entry.invalidValue;
    definition.namedValues = entry.namedValues;
    definition.storageClass = entry.storageClass;
    definition.compressionOptions = entry.compressionOptions;
    definition.lodSettings = entry.lodSettings;
    definition.scaleFactor = entry.scaleFactor;
    return definition;
}

}  // namespace tarvo::core
