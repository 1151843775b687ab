#include "exchange/las/extrafield.h"

#include "exchange/bytes.h"
#include "exchange/las/extrabytes.h"
#include "exchange/las/texts.h"

#include <array>
#include <cmath>
#include <cstring>
#include <limits>

namespace tarvo::exchange::las {

namespace {

constexpr std::size_t textSize = 32;
constexpr int mostExtraDecimals = 9;

struct Range {
    DataType type;
    double lowest;
    double highest;
};
constexpr std::array<Range, 6> wholeTypes = {{{DataType::UINT8, 0, 255},
                                              {DataType::INT8, -128, 127},
                                              {DataType::UINT16, 0, 65535},
                                              {DataType::INT16, -32768, 32767},
                                              {DataType::UINT32, 0, 4294967295.0},
                                              {DataType::INT32, -2147483648.0, 2147483647.0}}};

// The smallest one that holds both; nothing: none of at most 32 bits.
std::optional<DataType> wholeType(double lowest, double highest) {
    for (const Range& range : wholeTypes) {
        if (lowest >= range.lowest && highest <= range.highest) {
            return range.type;
        }
    }
    return std::nullopt;
}

// Room for the number that says "no value", too.
std::optional<DataType> wholeTypeFor(const Column& column, double lowest, double highest,
                                     double unit) {
    if (column.hasInvalid) {
        const double invalid = column.invalidValue * unit;
        lowest = std::min(lowest, invalid);
        highest = std::max(highest, invalid);
    }
    return wholeType(lowest, highest);
}

// As much of a text as there is room for, not cut within a character.
std::string shortened(const std::string& text) {
    std::size_t size = std::min(text.size(), textSize - 1);
    while (size < text.size() && size > 0 &&
           (static_cast<unsigned char>(text[size]) & 0xc0) == 0x80) {
        --size;
    }
    return text.substr(0, size);
}

// As wide as the widest of its kind.
void putAnyType(std::uint8_t* at, DataType type, double value) {
    switch (type) {
        case DataType::SINGLE:
        case DataType::DOUBLE:
            return put(at, value);
        case DataType::INT8:
        case DataType::INT16:
        case DataType::INT32:
        case DataType::INT64:
            return put(at, static_cast<std::int64_t>(value));
        default:
            return put(at, static_cast<std::uint64_t>(value));
    }
}

}  // namespace

Field extraField(const Column& column, const Survey& survey, std::size_t index,
                 std::uint32_t offset) {
    const ColumnSummary& values = survey.columns[index];
    Field field;
    field.offset = offset;
    field.raw = survey.areSingles[index] ? DataType::SINGLE : DataType::DOUBLE;
    if (values.count() == 0) {
        field.raw = column.type;
        return field;
    }
    if (isWhole(values)) {
        const auto type = wholeTypeFor(column, values.minimum(), values.maximum(), 1);
        field.raw = type ? *type : column.type;
        return field;
    }
    const int decimals = values.decimals();
    if (values.hasNaN() || values.hasInfinity() || decimals < 0 || decimals > mostExtraDecimals) {
        return field;
    }
    const auto unit = static_cast<double>(powerOfTen(decimals));
    if (const auto type = wholeTypeFor(column, std::round(values.minimum() * unit),
                                       std::round(values.maximum() * unit), unit)) {
        field.kind = Field::Kind::Affine;
        field.raw = *type;
        field.affine = Affine(1 / unit, 0);
    }
    return field;
}

void describeExtraField(const Column& column, const Field& field, std::vector<std::uint8_t>& out) {
    std::array<std::uint8_t, descriptorSize> bytes{};
    const bool isScaled = field.kind == Field::Kind::Affine;
    bytes[2] = static_cast<std::uint8_t>(field.raw);
    putText(bytes.data() + 4, textSize, shortened(column.descriptor()));
    putText(bytes.data() + 160, textSize, shortened(column.title));
    const double invalid =
        isScaled ? std::round(column.invalidValue / field.affine.scale()) : column.invalidValue;
    // Beyond that the number in the description would be another one than the point's.
    if (column.hasInvalid && std::abs(invalid) < 9007199254740992.0) {
        bytes[3] |= hasNoData;
        putAnyType(bytes.data() + 40, field.raw, invalid);
    }
    if (isScaled) {
        bytes[3] |= hasScale;
        put(bytes.data() + 112, field.affine.scale());
    }
    out.insert(out.end(), bytes.begin(), bytes.end());
}

}  // namespace tarvo::exchange::las
