// The coordinate reference system that a LAS file tells.
#pragma once

#include "core/referencesystem.h"
#include "exchange/las/header.h"

#include <optional>
#include <string>
#include <vector>

namespace tarvo::exchange::las {

bool isCrs(const Record& record);

// By well-known text where the header says so, else by GeoTIFF keys; by the other one where that is
// missing or nothing of it is understood. Nothing where neither is told.
std::optional<core::ReferenceSystem> referenceSystem(const Header& header,
                                                     const std::vector<Record>& records);

}  // namespace tarvo::exchange::las
