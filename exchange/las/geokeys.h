// Coordinate reference systems as GeoTIFF keys.
#pragma once

#include "core/referencesystem.h"

#include <cstdint>
#include <optional>
#include <span>

namespace tarvo::exchange::las {

// The data of the records 34735 (directory), 34736 (doubles) and 34737 (ascii); the last two may be
// empty. Nothing where no key tells a system; what is told and damaged or unknown is named as
// unread.
std::optional<core::ReferenceSystem> systemOfKeys(std::span<const std::uint8_t> directory,
                                                  std::span<const std::uint8_t> doubles,
                                                  std::span<const std::uint8_t> ascii);

}  // namespace tarvo::exchange::las
