#include "cli/shapeoptions.h"

#include "cli/errors.h"
#include "cli/number.h"
#include "cli/terminal.h"
#include "cli/textfile.h"
#include "core/areatext.h"
#include "exchange/database/source.h"
#include "exchange/table/shapedsource.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <filesystem>
#include <limits>
#include <utility>

namespace tarvo::cli {

namespace {

constexpr const char* coordinates = "tarvo.xyz";

core::Area areaOf(const std::string& argument) {
    std::error_code error;
    const bool isFile = argument == "-" || std::filesystem::is_regular_file(argument, error);
    if (!isFile && core::looksLikeArea(argument)) {
        return core::areaFromText(argument, "--polygon");
    }
    if (!isFile && !std::filesystem::exists(argument, error)) {
        throw Failure(
            "\"" + argument + "\" is neither an area nor a file with one.",
            "An area begins with POLYGON or MULTIPOLYGON and has corners, or is GeoJSON.");
    }
    return core::areaFromText(readTextFile(argument), "\"" + argument + "\"");
}

}  // namespace

const char* const shapeFooter =
    "Of the points that are chosen otherwise, --bounds and --polygon leave those within, edges\n"
    "included, in the coordinates tarvo.xyz; then --every counts, then --thin takes each point\n"
    "that lies at least the distance from all that it took before. All go by the order of the\n"
    "points, over all files as one. A polygon is a POLYGON or MULTIPOLYGON in well-known text or\n"
    "GeoJSON; what an odd number of its rings encloses is inside, and open rings are closed.\n";

void ShapeOptions::add(CLI::App& command) {
    command.add_option("--bounds", bounds, "Take the points within a range of coordinates")
        ->type_name("XMIN,YMIN[,ZMIN],XMAX,YMAX[,ZMAX]")
        ->check(notEmpty());
    command
        .add_option("--polygon", polygon,
                    "Take the points within an area: WKT, GeoJSON, or the name of a file with it")
        ->type_name("AREA")
        ->check(notEmpty());
    command.add_option("--every", every, "Take the first of N points, and each N-th after it")
        ->type_name("N")
        ->transform(wholeNumber(1, std::numeric_limits<std::uint64_t>::max()));
    command
        .add_option("--thin", thin,
                    "Take points that are no nearer to each other than a distance, in the unit\n"
                    "of the coordinates")
        ->type_name("DISTANCE")
        ->check(positiveNumber(core::Thinning::leastDistance, core::Thinning::mostDistance));
}

core::Shape ShapeOptions::shape() const {
    core::Shape shape;
    if (!bounds.empty()) {
        try {
            shape.bounds = core::boundsFromText(bounds);
        } catch (const Failure& failure) {
            throw UsageError(failure.what(), failure.details());
        }
    }
    if (!polygon.empty()) {
        shape.area = std::make_shared<const core::Area>(areaOf(polygon));
    }
    shape.every = std::max<std::uint64_t>(every, 1);
    shape.distance = thin;
    return shape;
}

void ShapeOptions::describe(JsonText& json) const {
    for (const auto& [name, text] : {std::pair{"bounds", bounds}, {"polygon", polygon}}) {
        if (!text.empty()) {
            json.member(name, text);
        }
    }
    if (every > 0) {
        json.member("every", every);
    }
    if (thin > 0) {
        json.member("thin", thin);
    }
}

std::shared_ptr<core::Shaper> shaperOf(const core::Shape& shape) {
    return shape.isEmpty() ? nullptr : std::make_shared<core::Shaper>(shape, checkInterrupted);
}

exchange::PointSources shaped(exchange::PointSources sources, const core::Shape& shape) {
    return exchange::shaped(std::move(sources), shape, checkInterrupted);
}

ShapedPoints shapedPoints(const Database& database, core::PointSelection selection,
                          std::vector<std::string> attributes, const core::Shape& shape) {
    const auto& known = database.cloud().pointAttributes();
    const bool isAdded = shape.needsCoordinates() && known.exists(coordinates) &&
                         std::ranges::count(attributes, coordinates) == 0;
    std::size_t shown = 0;
    for (const std::string& name : attributes) {
        shown += known.get(name).length;
    }
    if (isAdded) {
        attributes.emplace_back(coordinates);
    }
    if (known.exists(coordinates) && known.get(coordinates).length >= 3) {
        selection.filter = shape.narrowed(selection.filter, coordinates);
    }
    auto source = std::make_unique<exchange::database::DatabaseSource>(
        database.cloud(), database.fileName(), std::move(selection), attributes);
    ShapedPoints points;
    points.formats.assign(source->formats().begin(),
                          source->formats().begin() + static_cast<std::ptrdiff_t>(shown));
    if (const auto shaper = shaperOf(shape)) {
        points.source = std::make_unique<exchange::ShapedSource>(std::move(source), shaper, true,
                                                                 checkInterrupted, shown);
    } else {
        points.source = std::move(source);
    }
    return points;
}

}  // namespace tarvo::cli
