// New values of attributes on the command line.
#pragma once

#include "qrb/pointcloud.h"

#include <cstdint>
#include <string>
#include <vector>

namespace tarvo::cli {

// A value is a number, or a name that the attribute gives to one: "NAME=VALUE",
// "NAME=VALUE,VALUE,..." for all elements of an attribute, or "NAME[I]=VALUE".
struct Assignment {
    std::string target;  // "NAME" or "NAME[I]"
    qrb::pointcloud::DataType type = qrb::pointcloud::DataType::NONE;
    std::vector<std::uint64_t> values;  // 8 bytes each, of the type
};

// round: values that the attribute can't hold become the nearest ones. Throws UsageError for a text
// that is no assignment or has a value that is none of the attribute's type, Failure if the
// database lacks the attribute or it can't hold a value.
Assignment parseAssignment(const qrb::Pointcloud& cloud, const std::string& text, bool round);

}  // namespace tarvo::cli
