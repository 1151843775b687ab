// A reference system as the records of a LAS file.
#pragma once

#include "core/referencesystem.h"
#include "exchange/las/header.h"

#include <string>
#include <utility>
#include <vector>

namespace tarvo::exchange::las {

struct CrsRecords {
    std::vector<Record> records;
    bool isText = false;  // well-known text is what counts
    std::string leftOut;  // in words, what could not be told; empty: all of it was
};

// By well-known text where there is one; else by the GeoTIFF keys of the item "las.crs.geotiff",
// which an import made, if they mean the same system; else by its code.
// items: of the database, name and JSON text.
CrsRecords crsRecords(const core::ReferenceSystem& system,
                      const std::vector<std::pair<std::string, std::string>>& items);

}  // namespace tarvo::exchange::las
