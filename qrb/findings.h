// What validations find.
#pragma once

#include "qrb/pointclouddata.h"

#include <cstdint>
#include <string>
#include <vector>

namespace tarvo::qrb::pointcloud {

struct Finding {
    std::string attribute;  // that it is about; empty: none
    std::string item;       // the same of metadata items
    std::string pointer;    // JSON pointer of the place in the value; empty: the whole
    std::string keyword;    // of the JSON schema; empty: none
    std::string expected;   // in words; empty where the text says more
    std::string found;
    std::string text;  // what is wrong at the place
    std::string line;  // all of it in one line
};

struct Findings {
    std::vector<Finding> list;
    std::vector<std::string> notes;  // about what is no violation, a line each
};

// What a call found that validated and gave this status; throws Error where it failed otherwise.
Findings findingsOf(const PointcloudData& data, std::int32_t status);

}  // namespace tarvo::qrb::pointcloud
