#include "engine/schema/merge.h"

#include "engine/base/error.h"
#include "numbers/decimal.h"
#include "numbers/numbertext.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <numeric>
#include <optional>
#include <set>

namespace tarvo::engine::schema {

namespace {

constexpr double twoTo53 = 9007199254740992.0;
using numbers::Decimal;
using numbers::numberText;
using numbers::Wide;

[[noreturn]] void refuseMerge(const std::string& name, const std::string& reason) {
    throw Failure(
        ErrorCode::Argument,
        "The definitions of the point attribute \"" + name + "\" can't be merged: " + reason,
        "Give one of them another name.");
}

// The number in units of 10^exponent; none where it doesn't fit.
std::optional<Wide> inUnits(const Decimal& number, int exponent) {
    constexpr Wide most = Wide(1) << 120;
    Wide units = number.digits;
    for (int e = number.exponent; e > exponent; --e) {
        if (units > most / 10 || units < -most / 10)
            return std::nullopt;
        units *= 10;
    }
    return units;
}

// The resolution of a grid that begins at `minimum` and holds all the grids; 0 where none does.
double commonResolution(const std::vector<AttributeRecord>& records, double minimum) {
    std::vector<Decimal> numbers{numbers::shortestDecimal(minimum)};
    for (const AttributeRecord& record : records) {
        if (record.resolution == 0)
            return 0;
        numbers.push_back(numbers::shortestDecimal(record.resolution));
        numbers.push_back(numbers::shortestDecimal(record.minimumValue));
    }
    int exponent = 0;
    for (const Decimal& number : numbers)
        if (number.digits != 0)
            exponent = std::min(exponent, number.exponent);
    std::vector<Wide> units;
    for (const Decimal& number : numbers) {
        const std::optional<Wide> inUnit = inUnits(number, exponent);
        if (!inUnit)
            return 0;
        units.push_back(*inUnit);
    }
    const auto divisor = [](Wide a, Wide b) {
        if (b < 0)
            b = -b;
        while (b != 0) {
            const Wide rest = a % b;
            a = b;
            b = rest;
        }
        return a;
    };
    Wide common = 0;
    for (std::size_t i = 1; i < units.size(); i += 2) {
        common = divisor(common, units[i]);
        common = divisor(common, units[i + 1] - units[0]);
    }
    // By way of a decimal text: multiplying by a power of ten would not give the nearest double.
    std::string text;
    for (Wide rest = common; rest != 0; rest /= 10)
        text.insert(text.begin(), static_cast<char>('0' + static_cast<int>(rest % 10)));
    text += "e" + std::to_string(exponent);
    double result = 0;
    std::from_chars(text.data(), text.data() + text.size(), result);
    return result;
}

bool isIntegerGrid(const AttributeRecord& record) {
    return Grid(record).kind() == Grid::Kind::Integer;
}

void mergeInvalid(const std::vector<AttributeRecord>& records, AttributeRecord& result) {
    for (const AttributeRecord& record : records) {
        if (std::isnan(record.invalidValue))
            continue;
        if (std::isnan(result.invalidValue))
            result.invalidValue = record.invalidValue;
        else if (result.invalidValue != record.invalidValue)
            refuseMerge(result.name, "their invalid values are " + numberText(result.invalidValue) +
                                         " and " + numberText(record.invalidValue) + ".");
    }
    for (const AttributeRecord& record : records)
        if (std::isnan(record.invalidValue) && result.invalidValue >= record.minimumValue &&
            result.invalidValue <= record.maximumValue)
            refuseMerge(result.name, "the invalid value " + numberText(result.invalidValue) +
                                         " of one is a value of another.");
}

void mergeGrid(const std::vector<AttributeRecord>& records, AttributeRecord& result) {
    for (const AttributeRecord& record : records) {
        result.minimumValue = std::min(result.minimumValue, record.minimumValue);
        result.maximumValue = std::max(result.maximumValue, record.maximumValue);
    }
    result.resolution = commonResolution(records, result.minimumValue);
    const bool whole = std::all_of(records.begin(), records.end(), isIntegerGrid);
    if (whole) {
        result.resolution = 1;
        // The limits are doubles: those beyond 2^53 stand for the whole numbers beside them.
        if (result.maximumValue - result.minimumValue > 18446744073709551616.0)
            refuseMerge(result.name, "their range is wider than 64 bits.");
        return;
    }
    const double steps = (result.maximumValue - result.minimumValue) / result.resolution;
    if (result.resolution == 0 || !(steps < twoTo53)) {
        result.resolution = 0;
        for (const AttributeRecord& record : records)
            if (isIntegerGrid(record) &&
                std::max(std::abs(record.minimumValue), std::abs(record.maximumValue)) > twoTo53)
                refuseMerge(result.name, "one holds whole numbers above 2^53, another fractions.");
    }
}

void mergeNamedValues(const std::vector<AttributeRecord>& records, AttributeRecord& result) {
    std::set<std::string> values;
    result.namedValues.clear();
    for (const AttributeRecord& record : records) {
        const std::string& text = record.namedValues;
        for (std::size_t begin = 0; begin < text.size();) {
            const std::size_t end = std::min(text.find('\n', begin), text.size());
            const std::string line = text.substr(begin, end - begin);
            if (!line.empty() && values.insert(line.substr(0, line.find('='))).second)
                result.namedValues += (result.namedValues.empty() ? "" : "\n") + line;
            begin = end + 1;
        }
    }
}

}  // namespace

AttributeRecord merged(const std::vector<AttributeRecord>& records) {
    AttributeRecord result = records.front();
    if (records.size() == 1)
        return result;
    for (const AttributeRecord& record : records) {
        if (record.length != result.length)
            refuseMerge(result.name, "their lengths are " + std::to_string(result.length) +
                                         " and " + std::to_string(record.length) + ".");
        if (record.unitSymbol != result.unitSymbol)
            refuseMerge(result.name, "their units are \"" + result.unitSymbol + "\" and \"" +
                                         record.unitSymbol + "\".");
        if (record.scaleFactor != result.scaleFactor)
            refuseMerge(result.name, "their scale factors are " + numberText(result.scaleFactor) +
                                         " and " + numberText(record.scaleFactor) + ".");
        result.storageClass = std::max(result.storageClass, record.storageClass);
    }
    // Each file has its own constant.
    result.storageClass =
        std::max(result.storageClass, static_cast<std::uint8_t>(StorageClass::Variable));
    mergeInvalid(records, result);
    mergeGrid(records, result);
    mergeNamedValues(records, result);
    validate(result);
    return result;
}

}  // namespace tarvo::engine::schema
