// The catalogue's attributes as records.
#pragma once

#include "catalogue/catalogue.h"
#include "qrb/pointattribute.h"

namespace tarvo::core {

qrb::pointcloud::PointAttribute defaultAttribute(const catalogue::AttributeEntry& entry);

}  // namespace tarvo::core
