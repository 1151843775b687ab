// The names of attributes that a command line gives.
#pragma once

#include "qrb/pointattributes.h"

#include <initializer_list>
#include <string>
#include <vector>

namespace tarvo::cli {

// The names with those that their patterns match in place of these, in the order of the file: in a
// pattern * stands for any characters, ? for one. An attribute that has a name as it is given is
// meant by it, whatever its characters. What is behind a "[" stays behind each name. What a pattern
// has brought is not there twice. attributes: of one file, or of several that are looked at
// together. Throws Failure, with names that are near, for a name that none has and for a pattern
// that matches none.
std::vector<std::string> attributesNamed(
    std::initializer_list<const qrb::pointcloud::PointAttributes*> attributes,
    const std::vector<std::string>& names);

}  // namespace tarvo::cli
