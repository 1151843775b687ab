// The conditions that a filter is made of.
#pragma once

#include "qrb/pointattributes.h"

#include <optional>
#include <string>
#include <vector>

namespace tarvo::cli {

// What stands between the "&&", "||" and "!" of a filter: a comparison, most often.
struct FilterCondition {
    std::string expression;  // tidy
    std::string written;     // as it stands in the filter
    // Where it compares an attribute with a number and nothing else, what can be told of that one.
    std::vector<std::string> notes;
};

// The filter with one blank beside each operator and none elsewhere. filter: one that the library
// takes.
std::string tidyFilter(const std::string& filter);

// In the order of the filter.
std::vector<FilterCondition> conditionsOf(const std::string& filter,
                                          const qrb::pointcloud::PointAttributes& attributes);

// The names of the attributes in it, each once.
std::vector<std::string> attributesIn(const std::string& filter,
                                      const qrb::pointcloud::PointAttributes& attributes);

}  // namespace tarvo::cli
