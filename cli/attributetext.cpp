#include "cli/attributetext.h"

#include "cli/texttable.h"
#include "numbers/numbertext.h"

#include <cmath>

namespace tarvo::cli {

using qrb::pointcloud::PointAttribute;

using numbers::numberText;

std::string describeAttribute(const PointAttribute& attribute) {
    const std::string unit = attribute.unitSymbol.empty() ? "" : " " + attribute.unitSymbol;
    return labelled("Name", attribute.name) + labelled("Title", attribute.title) +
           labelled("Description", attribute.description) + labelled("Tags", attribute.tags) +
           labelled("Length", std::to_string(attribute.length)) +
           labelled("Type", dataTypeName(attribute.dataType())) +
           labelled("Range", numberText(attribute.minimumValue) + " to " +
                                 numberText(attribute.maximumValue) + unit) +
           labelled("Resolution", numberText(attribute.resolution) + unit) +
           labelled("Scale factor",
                    attribute.scaleFactor == 1.0 ? "" : numberText(attribute.scaleFactor)) +
           labelled("Default", numberText(attribute.defaultValue)) +
           labelled("Invalid",
                    std::isnan(attribute.invalidValue) ? "" : numberText(attribute.invalidValue)) +
           labelled("Named values", attribute.namedValues) +
           labelled("Storage", PointAttribute::storageClassName(attribute.storageClass)) +
           labelled("Compression",
                    PointAttribute::compressionOptionsName(attribute.compressionOptions)) +
           labelled("LOD", attribute.lodSettings);
}

std::string attributeTable(const std::vector<PointAttribute>& attributes) {
    TextTable table({{"Name"},
                     {"Length", true},
                     {"Type"},
                     {"Minimum", true},
                     {"Maximum", true},
                     {"Resolution", true},
                     {"Unit"},
                     {"Storage"},
                     {"Title"}});
    for (const PointAttribute& one : attributes) {
        table.add({one.name, std::to_string(one.length), dataTypeName(one.dataType()),
                   numberText(one.minimumValue), numberText(one.maximumValue),
                   numberText(one.resolution), one.unitSymbol,
                   PointAttribute::storageClassName(one.storageClass), one.title});
    }
    return table.text();
}

}  // namespace tarvo::cli
