// The coordinate reference system that a LAS file tells.
#pragma once

#include "core/referencesystem.h"
#include "exchange/las/header.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace tarvo::exchange::las {

// Records of the user "LASF_Projection", and the bit of the global encoding that says that the text
// counts.
enum CrsRecordId : std::uint16_t {
    textId = 2112,
    directoryId = 34735,
    doublesId = 34736,
    asciiId = 34737
};
inline constexpr std::uint16_t wktCounts = 1 << 4;

bool isCrs(const Record& record);

// By well-known text where the header says so, else by GeoTIFF keys; by the other one where that is
// missing or nothing of it is understood. Nothing where neither is told.
std::optional<core::ReferenceSystem> referenceSystem(const Header& header,
                                                     const std::vector<Record>& records);

}  // namespace tarvo::exchange::las
