// What the header of a LAS file answers of the catalogue's metadata items.
#pragma once

#include "exchange/las/header.h"
#include "exchange/table/pointsource.h"

#include <vector>

namespace tarvo::exchange::las {

// The bit of the global encoding that says that times count from an epoch, and the epoch.
inline constexpr std::uint16_t standardTime = 1 << 0;
inline constexpr const char* standardEpoch = "2011-09-14T01:46:40Z";

Origin originOf(const Header& header, const std::vector<Record>& records);

}  // namespace tarvo::exchange::las
