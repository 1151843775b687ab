// The groups in which point attributes are shown.
#pragma once

#include "qrb/pointattributes.h"

#include <string>

// The attribute's group and rank as the library tells; from the default catalogue where the
// library can't. Throws tarvo::qrb::Error.
tarvo::qrb::pointcloud::PointAttributes::Group attributeGroup(
    const tarvo::qrb::pointcloud::PointAttributes& attributes, const std::string& name);
