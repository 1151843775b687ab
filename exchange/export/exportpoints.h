// Points of a database into files of other formats.
#pragma once

#include "exchange/database/source.h"
#include "exchange/import/importsteps.h"
#include "files/wholefile.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace tarvo::exchange {

enum class ExportFormat : std::uint8_t { Las, Laz, Ply, Csv, Xyz };

struct ExportOptions {
    ExportFormat format = ExportFormat::Las;
    std::optional<int> pointFormat;  // of LAS and LAZ, 0 to 10; none: the one that suits the points
    std::optional<double> scale;     // of LAS and LAZ, to round to; none: no coordinate changes
    bool asText = false;             // PLY: in digits, not in bytes
};

struct Exported {
    std::uint64_t points = 0;
    std::vector<std::string> notes;  // lines for the user
};

// By name: "las", "laz", "ply", "csv" or "xyz"; nothing for others.
std::optional<ExportFormat> exportFormat(const std::string& name);
// What the extension of a file name promises; nothing: none of these formats.
std::optional<ExportFormat> formatOfFile(const std::string& fileName);
// What qrbtool writes by default: all attributes but the ids of the points, and for XYZ the
// coordinates alone. Throws qrb::Error.
std::vector<std::string> defaultAttributes(const qrb::Pointcloud& database, ExportFormat format);

// Writes the points of the source into the file, which the caller publishes. source: what is left
// of the database after shaping. formats: how the columns of the source are written as text.
// progress may be empty. Throws Failure, files::FileError and qrb::Error.
Exported exportPoints(PointSource& source, const std::vector<core::PointColumn>& formats,
                      const ExportOptions& options, files::WholeFile& file,
                      const ImportProgress& progress);

}  // namespace tarvo::exchange
