// What the times of points count from: where a database keeps it.
#pragma once

#include "qrb/metadata.h"

#include <optional>
#include <string>

namespace tarvo::core {

struct TimeBase {
    std::string epoch;      // of time 0, ISO 8601, or "unknown"
    std::string timescale;  // "GPS", "UTC", "TAI" or "unknown"
};

// For a reader: "GPS time since 2011-09-14T01:46:40Z", "GPS time of an unknown epoch".
std::string describe(const TimeBase& base);
// Both in quotes.
std::string describeBoth(const TimeBase& a, const TimeBase& b);

// Whether equal numbers are the same time, as far as is known.
bool isSame(const TimeBase& a, const TimeBase& b);

// What the item "tarvo.time_base" tells; nothing where it tells neither. Throws qrb::Error.
std::optional<TimeBase> timeBase(const qrb::pointcloud::MetaData& metaData);
// Writes it there; false where the item is signed or tells more: it stays as it is. Throws
// qrb::Error.
bool setTimeBase(qrb::pointcloud::MetaData& metaData, const TimeBase& base);

}  // namespace tarvo::core
