// A record of our own in the LAS files that we write: which attributes the extra bytes are, and
// which fields of the point format say nothing because the database has no such attribute. With it
// an import makes the same attributes again.
#pragma once

#include "exchange/las/dimensions.h"
#include "exchange/las/header.h"

#include <cstdint>
#include <string>
#include <vector>

namespace tarvo::exchange::las {

inline constexpr const char* ownUserId = "qrbtool";
inline constexpr std::uint16_t ownRecordId = 1;

bool isOwnRecord(const Record& record);

// As JSON:
// {"extra_bytes": [{"attribute", "element", "length", "title", "description"}...],
//  "absent": ["tarvo.intensity"...]}
// extra: one for each of the extra dimensions, in their order.
std::string ownRecord(const std::vector<Column>& extra, const std::vector<std::string>& absent);

// Gives the dimensions their attributes, and drops those that say nothing, if a record tells and
// all of it fits the file; else nothing happens. extraCount: how many of them, at the end, are
// extra bytes. False: there is a record, and it does not fit.
bool applyOwnRecord(const std::vector<Record>& records, std::size_t extraCount,
                    std::vector<Dimension>& dimensions);

}  // namespace tarvo::exchange::las
