// How reports write numbers and texts. Texts of a file are foreign: each form of a report cleans
// and escapes them with these before they become part of it.
#pragma once

#include "engine/schema/attribute.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace tarvo::engine::report {

// Control characters and line ends of any kind become blanks, bytes that are no UTF-8 U+FFFD.
std::string oneLine(std::string_view text);
// oneLine for HTML: what markup would take for its own is escaped, in attribute values too.
std::string escaped(std::string_view text);
// oneLine as a cell of comma-separated values, quoted where it has to be (RFC 4180).
std::string csvCell(std::string_view text);

// The value of a code; whole numbers exactly, beyond 2^53 too.
std::string valueText(const schema::Grid& grid, std::uint64_t code);
// "12.5 %"; part of a whole of 0 is "0.0 %".
std::string percentText(std::uint64_t part, std::uint64_t whole);

// "NAME", or "NAME[I]" of an attribute with several elements.
std::string elementName(const schema::AttributeRecord& record, std::uint32_t element);
// As people know it: "UINT16".
std::string_view typeName(const schema::AttributeRecord& record);
std::string_view storageName(const schema::AttributeRecord& record);

}  // namespace tarvo::engine::report
