// What the header of a LAS file answers of the catalogue's metadata items.
#pragma once

#include "exchange/las/header.h"
#include "exchange/table/pointsource.h"

#include <vector>

namespace tarvo::exchange::las {

Origin originOf(const Header& header, const std::vector<Record>& records);

}  // namespace tarvo::exchange::las
