// The texts of the database tab, gathered from an open database.
#pragma once

#include "qrb/pointcloud.h"

#include <QString>

namespace tarvo::window {

struct DatabaseSummary {
    QString uuid;
    QString pointsTotal;
    QString chunkSize;
    QString compressionLevel;
    QString creator;
    QString primaryAttribute;
    QString levelOfDetail;
    QString referenceSystem;  // of the coordinates: name and code, or "unknown"

    // Throws qrb::Error.
    static DatabaseSummary of(const qrb::Pointcloud& database);
};

// The level-of-detail line: mode 1 thinout (size in per cent), mode 2 combine (size is a level
// whose nodes hold up to 2^(dimensions * level) points); size 0 is off.
QString levelOfDetailText(std::uint32_t mode, std::uint32_t size, std::uint32_t dimensions);

// The chunk size line: mode 1 point count, mode 2 edge length (size is a level, the length
// 2^level times the primary attribute's resolution).
QString chunkSizeText(std::uint32_t mode, std::uint32_t size,
                      const qrb::pointcloud::PointAttribute& primaryAttribute);

}  // namespace tarvo::window
