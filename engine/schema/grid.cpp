#include "engine/schema/grid.h"

#include "engine/base/error.h"
#include "engine/schema/attribute.h"
#include "numbers/numbertext.h"

#include <cmath>

namespace tarvo::engine::schema {

namespace {

using numbers::numberText;
using numbers::wholeText;

numbers::Grid gridOf(const AttributeRecord& record) {
    try {
        return numbers::Grid(
            {record.minimumValue, record.maximumValue, record.resolution, record.invalidValue});
    } catch (const numbers::Grid::Fault& fault) {
        throw Failure(ErrorCode::Argument, "The attribute \"" + record.name + "\" " + fault.what(),
                      fault.details());
    }
}

}  // namespace

Grid::Grid(const AttributeRecord& record) : numbers::Grid(gridOf(record)), m_name(record.name) {}

std::uint64_t Grid::code(double value) const {
    if (const auto code = find(value))
        return *code;
    if (std::isnan(value))
        throw Failure(ErrorCode::Range,
                      "The attribute \"" + m_name + "\" can't hold NaN (not a number).",
                      hasInvalid() ? "Its invalid value is " + numberText(invalidValue()) + "."
                                   : "Its definition has no invalid value.");
    failRange(numberText(value));
}

std::uint64_t Grid::code(Wide value) const {
    if (const auto code = find(value))
        return *code;
    failRange(wholeText(value));
}

void Grid::failRange(const std::string& value) const {
    const bool whole = kind() == Kind::Integer;
    std::string details = "The range is " +
                          (whole ? wholeText(integerValue(0)) : numberText(minimum())) + " to " +
                          (whole ? wholeText(integerValue(maximumCode())) : numberText(maximum()));
    if (hasInvalid() && !std::isnan(invalidValue()))
        details += ", the invalid value is " + numberText(invalidValue());
    throw Failure(
        ErrorCode::Range,
        "The value " + value + " is out of the range of the attribute \"" + m_name + "\".",
        details + ".");
}

}  // namespace tarvo::engine::schema
