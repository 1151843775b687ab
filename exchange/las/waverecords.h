// What LAS files say of waveforms besides the fields of the points, kept by imports.
#pragma once

#include "exchange/las/header.h"

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace tarvo::exchange::las {

struct WaveRecords {
    std::vector<Record> records;       // the descriptors that the points refer to
    std::uint16_t globalEncoding = 0;  // whether the packets stand in a file of their own
    std::vector<std::string> notes;    // lines for the user
};

// Out of the items "las.records" and "las.header" of a database, name and JSON text. What is no
// such record is passed over; of two descriptors with one number the first is taken, with a note.
WaveRecords waveRecords(const std::vector<std::pair<std::string, std::string>>& items);

}  // namespace tarvo::exchange::las
