// The catalogue's attributes as records.
#pragma once

#include "qrb/defaults/catalogue.h"
#include "qrb/pointattribute.h"

namespace tarvo::core {

qrb::pointcloud::PointAttribute defaultAttribute(const qrb::defaults::AttributeEntry& entry);

}  // namespace tarvo::core
