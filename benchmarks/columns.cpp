#include "benchmarks/columns.h"

#include "exchange/opensource.h"
#include "qrb/visitvalues.h"
#include "numbers/decimal.h"
#include "qrb/pointcloud.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <numeric>
#include <stdexcept>

namespace bench {

using namespace tarvo;

namespace {

struct Range {
    double low = std::numeric_limits<double>::infinity();
    double high = -std::numeric_limits<double>::infinity();

    void add(double value) {
        low = std::min(low, value);
        high = std::max(high, value);
    }
};

// The numbers of a column, in its steps, and the largest step that has them all.
struct Found {
    Range range;
    std::int64_t divisor = 0;
};

ColumnType typeFor(const Range& range) {
    struct Candidate {
        ColumnType type;
        double low, high;
    };
    for (const Candidate& candidate : {Candidate{ColumnType::Unsigned8, 0, 255},
                                       {ColumnType::Signed8, -128, 127},
                                       {ColumnType::Unsigned16, 0, 65535},
                                       {ColumnType::Signed16, -32768, 32767},
                                       {ColumnType::Unsigned32, 0, 4294967295.0},
                                       {ColumnType::Signed32, -2147483648.0, 2147483647.0}})
        if (range.low >= candidate.low && range.high <= candidate.high)
            return candidate.type;
    return ColumnType::Signed64;
}

template <typename T>
void append(std::vector<std::uint8_t>& bytes, T value) {
    const std::size_t at = bytes.size();
    bytes.resize(at + sizeof value);
    std::memcpy(bytes.data() + at, &value, sizeof value);
}

void appendValue(StoredColumn& column, double value) {
    if (column.type == ColumnType::Double)
        return append(column.bytes, value);
    const std::int64_t steps = column.stepsOf(value);
    switch (column.type) {
        case ColumnType::Unsigned8:
        case ColumnType::Signed8:
            return append(column.bytes, static_cast<std::uint8_t>(steps));
        case ColumnType::Unsigned16:
        case ColumnType::Signed16:
            return append(column.bytes, static_cast<std::uint16_t>(steps));
        case ColumnType::Unsigned32:
        case ColumnType::Signed32:
            return append(column.bytes, static_cast<std::uint32_t>(steps));
        default:
            return append(column.bytes, steps);
    }
}

double numberAt(const StoredColumn& column, std::size_t row) {
    const std::uint8_t* const at = column.bytes.data() + row * column.width();
    const auto as = [&](auto value) {
        std::memcpy(&value, at, sizeof value);
        return static_cast<double>(value);
    };
    switch (column.type) {
        case ColumnType::Unsigned8:
            return as(std::uint8_t{});
        case ColumnType::Unsigned16:
            return as(std::uint16_t{});
        case ColumnType::Unsigned32:
            return as(std::uint32_t{});
        case ColumnType::Signed8:
            return as(std::int8_t{});
        case ColumnType::Signed16:
            return as(std::int16_t{});
        case ColumnType::Signed32:
            return as(std::int32_t{});
        case ColumnType::Signed64:
            return as(std::int64_t{});
        case ColumnType::Double:
            return as(double{});
    }
    return 0;
}

// Calls use(column, value) for all values of the next batches.
template <typename Use>
void forEachValue(exchange::PointSource& source, Use&& use) {
    source.rewind();
    while (const std::uint32_t count = source.next())
        for (std::size_t i = 0; i < source.columns().size(); ++i)
            visitValues(source.columns()[i].type, source.values(i),
                                  [&](const auto* values) {
                                      for (std::uint32_t row = 0; row < count; ++row)
                                          use(i, static_cast<double>(values[row]));
                                  });
}

StoredColumn columnFor(const exchange::Column& column, const qrb::Pointcloud& database) {
    StoredColumn result;
    result.name = column.descriptor();
    result.resolution = database.pointAttributes().get(column.attribute).resolution;
    result.places = numbers::shortestDecimal(result.resolution).places();
    return result;
}

// The smallest type for what was found, which may need coarser steps only.
void chooseType(StoredColumn& column, Found found) {
    if (column.resolution == 0)
        return;
    if (found.divisor > 1) {
        const auto divisor = static_cast<double>(found.divisor);
        column.resolution = divisor * column.resolution;
        if (column.places > 0)
            column.resolution = std::stod(column.text(found.divisor));
        found.range = {found.range.low / divisor, found.range.high / divisor};
    }
    const numbers::Decimal step = numbers::shortestDecimal(column.resolution);
    column.places = step.digits == 1 ? step.places() : 0;
    column.type = typeFor(found.range);
    // Decimal numbers have 9 or 18 digits and a sign.
    if (column.places > 0)
        column.type = std::max(-found.range.low, found.range.high) < 1e9 ? ColumnType::Signed32
                                                                         : ColumnType::Signed64;
}

// The distance along a Hilbert curve through a square of 2^16 cells a side.
std::uint32_t hilbert(std::uint32_t x, std::uint32_t y) {
    std::uint32_t distance = 0;
    for (std::uint32_t side = 1u << 15; side > 0; side /= 2) {
        const bool right = (x & side) != 0;
        const bool upper = (y & side) != 0;
        distance += side * side * ((3u * (right ? 1u : 0u)) ^ (upper ? 1u : 0u));
        if (!upper) {
            if (right) {
                x = 0xffff - x;
                y = 0xffff - y;
            }
            std::swap(x, y);
        }
    }
    return distance;
}

}  // namespace

std::size_t StoredColumn::width() const {
    switch (type) {
        case ColumnType::Unsigned8:
        case ColumnType::Signed8:
            return 1;
        case ColumnType::Unsigned16:
        case ColumnType::Signed16:
            return 2;
        case ColumnType::Unsigned32:
        case ColumnType::Signed32:
            return 4;
        default:
            return 8;
    }
}

std::int64_t StoredColumn::stepsOf(double value) const {
    return std::llround(value / resolution);
}

std::string StoredColumn::text(std::int64_t steps) const {
    std::string digits = std::to_string(std::abs(steps));
    if (places > 0) {
        const auto fraction = static_cast<std::size_t>(places);
        digits.insert(0, std::max(digits.size(), fraction + 1) - digits.size(), '0');
        digits.insert(digits.size() - fraction, ".");
    }
    return (steps < 0 ? "-" : "") + digits;
}

const StoredColumn& StoredPoints::column(const std::string& name) const {
    for (const StoredColumn& column : columns)
        if (column.name == name)
            return column;
    throw std::runtime_error("the file lacks " + name);
}

std::vector<double> StoredPoints::sample(const std::string& name, std::size_t size) const {
    const StoredColumn& from = column(name);
    const std::uint64_t taken = std::min<std::uint64_t>(size, count);
    const std::uint64_t stride = count / std::max<std::uint64_t>(1, taken);
    std::vector<double> values;
    // Somewhere within each stride: points may repeat in a rhythm of their own.
    for (std::uint64_t i = 0; i < taken; ++i)
        values.push_back(numberAt(from, i * stride + (i * 0x9e3779b97f4a7c15u >> 32) % stride));
    return values;
}

StoredPoints readPoints(const std::string& lasFile, const std::string& database) {
    const qrb::Context context("OFF", "");
    qrb::Pointcloud cloud(context);
    cloud.open(database, qrb::pointcloud::OpenSettings(context));
    const auto source = exchange::openSource(lasFile, "las");
    StoredPoints points;
    for (const exchange::Column& column : source->columns())
        points.columns.push_back(columnFor(column, cloud));
    std::vector<Found> found(points.columns.size());
    forEachValue(*source, [&](std::size_t i, double value) {
        points.count += i == 0 ? 1 : 0;
        if (points.columns[i].resolution == 0)
            return;
        const std::int64_t steps = points.columns[i].stepsOf(value);
        found[i].range.add(static_cast<double>(steps));
        if (found[i].divisor != 1)
            found[i].divisor = std::gcd(found[i].divisor, steps);
    });
    for (std::size_t i = 0; i < found.size(); ++i) {
        chooseType(points.columns[i], found[i]);
        points.columns[i].bytes.reserve(points.count * points.columns[i].width());
    }
    forEachValue(*source,
                 [&](std::size_t i, double value) { appendValue(points.columns[i], value); });
    return points;
}

std::vector<std::uint32_t> hilbertKeys(const StoredPoints& points) {
    const StoredColumn& x = points.column("tarvo.xyz[0]");
    const StoredColumn& y = points.column("tarvo.xyz[1]");
    Range ranges[2];
    for (std::size_t i = 0; i < points.count; ++i) {
        ranges[0].add(numberAt(x, i));
        ranges[1].add(numberAt(y, i));
    }
    const double side =
        std::max({1.0, ranges[0].high - ranges[0].low, ranges[1].high - ranges[1].low});
    std::vector<std::uint32_t> keys;
    keys.reserve(points.count);
    for (std::size_t i = 0; i < points.count; ++i)
        keys.push_back(
            hilbert(static_cast<std::uint32_t>((numberAt(x, i) - ranges[0].low) / side * 65535),
                    static_cast<std::uint32_t>((numberAt(y, i) - ranges[1].low) / side * 65535)));
    return keys;
}

}  // namespace bench
