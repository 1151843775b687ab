// What a LAS file tells about itself, as metadata items.
#pragma once

#include "exchange/las/header.h"

#include <string>
#include <utility>
#include <vector>

namespace tarvo::exchange::las {

// Names and JSON texts: "las.header"; "las.crs.wkt" and "las.crs.geotiff", the coordinate
// reference system as the file holds it; "las.records", the other variable length records.
std::vector<std::pair<std::string, std::string>> metaDataItems(const std::string& fileName,
                                                               const Header& header,
                                                               const std::vector<Record>& records);

}  // namespace tarvo::exchange::las
