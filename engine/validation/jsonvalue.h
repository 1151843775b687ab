// JSON values compared exactly and put in words.
#pragma once

#include "engine/base/json.h"

#include <string>

namespace tarvo::engine::validation {

using Value = rapidjson::Value;

std::string textOf(const Value& text);
std::string quotedText(const std::string& text);
// At most about 60 bytes of a text.
std::string shortened(const std::string& text);

// Whole numbers may be written as 2.0.
bool isWholeNumber(const Value& value);
// Below 0, 0 or above 0 as the first number is less than the second, equal or greater. Exact:
// whole numbers of 64 bits are never rounded to doubles.
int compareNumbers(const Value& one, const Value& other);
// As the numbers are written in decimal: 0.3 is a multiple of 0.1. divisor: above 0.
bool isMultiple(const Value& value, const Value& divisor);

// A text that equal values share: 1 and 1.0 are equal, the order of members does not matter.
std::string canonicalText(const Value& value);
// "a string", "an object", ...
std::string typeName(const Value& value);
// The value itself where it is short, else its type.
std::string describe(const Value& value);

// A JSON pointer (RFC 6901) extended by one member or element.
std::string childPointer(const std::string& parent, std::string_view name);

}  // namespace tarvo::engine::validation
