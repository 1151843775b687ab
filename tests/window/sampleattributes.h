// How the window shows the attributes of the sample.
#pragma once

#include "qrb/pointcloud.h"

#include <QStringList>
#include <string>
#include <vector>

// How many decimals a value has.
int decimalsOf(const std::string& name);
// The elements that lists show, at most so many.
QStringList elementsOf(const tarvo::qrb::pointcloud::PointAttribute& attribute, std::uint32_t most);
std::vector<tarvo::qrb::pointcloud::PointAttribute> attributesOf(
    const tarvo::qrb::Pointcloud& database);
