// Options that choose points by where they lie and by how many there are.
#pragma once

#include "cli/database.h"
#include "cli/json.h"
#include "core/pointpages.h"
#include "core/shape.h"
#include "exchange/opensource.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace tarvo::cli {

struct ShapeOptions {
    std::string bounds;
    std::string polygon;  // text, or the name of a file
    double thin = 0;
    std::uint64_t every = 0;

    // Adds --bounds, --polygon, --every and --thin to a command.
    void add(CLI::App& command);
    // Reads the file of --polygon. Throws Failure, UsageError for texts that are wrong.
    core::Shape shape() const;
    // Members for the settings of a transaction, of what was given.
    void describe(JsonText& json) const;
};

// For the help of commands that have them.
extern const char* const shapeFooter;

// Null where all points stay.
std::shared_ptr<core::Shaper> shaperOf(const core::Shape& shape);

// The sources as they are left by a shape that looks at all of them together. Throws Failure.
exchange::PointSources shaped(exchange::PointSources sources, const core::Shape& shape);

// Points of a database for a writer of other formats.
struct ShapedPoints {
    std::unique_ptr<exchange::PointSource> source;
    std::vector<core::PointColumn> formats;  // of its columns
};

// The database must outlive the source. Throws Failure and Error.
ShapedPoints shapedPoints(const Database& database, core::PointSelection selection,
                          std::vector<std::string> attributes, const core::Shape& shape);

}  // namespace tarvo::cli
