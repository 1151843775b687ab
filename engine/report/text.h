// How reports write numbers and texts. Texts of a file are foreign: each form of a report cleans
// and escapes them with these before they become part of it.
#pragma once

#include "engine/schema/attribute.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tarvo::engine::report {

// Control characters and line ends of any kind become blanks, bytes that are no UTF-8 U+FFFD.
std::string oneLine(std::string_view text);
// oneLine for HTML: what markup would take for its own is escaped, in attribute values too.
std::string escaped(std::string_view text);
// oneLine as a cell of comma-separated values, quoted where it has to be (RFC 4180).
std::string csvCell(std::string_view text);

// The value of a code; whole numbers exactly, beyond 2^53 too.
std::string valueText(const schema::Grid& grid, std::uint64_t code);
// Of the texts of numbers: the most digits behind the mark, up to 15. One with an exponent has
// none.
std::size_t mostPlaces(const std::vector<std::string>& numbers);
// With zeros behind the mark, so that it has this many digits there. What has more, or an exponent,
// or is no number, stays.
std::string withPlaces(std::string number, std::size_t places);
// "12.5 %"; part of a whole of 0 is "0.0 %".
std::string percentText(std::uint64_t part, std::uint64_t whole);

// "NAME", or "NAME[I]" of an attribute with several elements.
std::string elementName(const schema::AttributeRecord& record, std::uint32_t element);
// As people know it: "UINT16".
std::string_view typeName(const schema::AttributeRecord& record);
std::string_view storageName(const schema::AttributeRecord& record);

}  // namespace tarvo::engine::report
