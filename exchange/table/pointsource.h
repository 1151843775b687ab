// What the import reads points from: a file of columns, decoded a batch at a time.
#pragma once

#include "core/error.h"
#include "core/referencesystem.h"
#include "core/timebase.h"
#include "exchange/table/decimal.h"
#include "qrb/pointattribute.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace tarvo::exchange {

using qrb::pointcloud::DataType;

// One element of one attribute in the type in which the file holds it.
struct Column {
    std::string attribute;      // for example "tarvo.xyz"
    std::uint32_t element = 0;  // 0 to length - 1
    std::uint32_t length = 1;   // elements of the attribute
    DataType type = DataType::DOUBLE;
    std::string name = {};  // of the column in the file: "Intensity", "scalar_foo", "column 4"
    // The user said that it is this attribute; the title is no other name of it.
    bool isMapped = false;
    // For attributes that the catalogue doesn't know.
    std::string title;
    std::string description;
    bool hasInvalid = false;  // invalidValue says "no value"
    double invalidValue = 0;
    // The smallest and largest number that the file's format can hold; not told: an empty range.
    double lowest = 0;
    double highest = -1;
    // Where the values are known to lie: gridBegin + n * resolution; 0: on no grid that is told.
    double resolution = 0;
    double gridBegin = 0;
    // Why the values must not be taken, though they can be read; only who leaves the column out
    // goes on.
    std::optional<core::Failure> fault;

    // "NAME", or "NAME[I]" of an attribute with several elements.
    std::string descriptor() const {
        return length == 1 ? attribute : attribute + "[" + std::to_string(element) + "]";
    }
};

// What a file tells of its points as a whole, in the terms of the catalogue's metadata items. What
// it doesn't tell is empty.
struct Origin {
    std::optional<core::ReferenceSystem> system;
    std::string project;   // "tarvo.pointcloud_info"
    std::string comments;  // the same
    std::optional<core::TimeBase> timeBase;
};

// Learns how much was read of a text that has to be seen whole to be opened, 0 to 1. What it throws
// ends the opening. May be empty.
using OpenProgress = std::function<void(double fraction)>;

// Points of one batch.
inline constexpr std::uint32_t batchSize = 65536;

class PointSource {
public:
    virtual ~PointSource() = default;

    virtual const std::string& fileName() const = 0;
    virtual const std::vector<Column>& columns() const = 0;
    // Points read so far per point of the file, 0 to 1.
    virtual double progress() const = 0;

    // Back to the first point.
    virtual void rewind() = 0;
    // The most points of a batch: batchSize, or fewer of very many columns.
    virtual std::uint32_t largestBatch() const { return batchSize; }
    // Reads the next batch into the columns' buffers; the number of points, 0 at the end.
    virtual std::uint32_t next() = 0;
    // The buffer of a column: packed values of its type. The address doesn't change.
    virtual const void* values(std::size_t column) const = 0;

    // How the coordinates are stored (one per element); empty: as plain numbers.
    virtual std::vector<Affine> coordinateAxes() const { return {}; }
    virtual Origin origin() const { return {}; }
    // Metadata items that tell about the file: name and JSON text.
    virtual std::vector<std::pair<std::string, std::string>> metaData() const { return {}; }
    // What a user has to know of what is left out, a line each; complete when all points have been
    // read.
    virtual std::vector<std::string> notes() const { return {}; }
};

}  // namespace tarvo::exchange
