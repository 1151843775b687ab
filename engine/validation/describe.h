// JSON values in words, for findings.
#pragma once

#include <string>

namespace valijson::adapters {
class Adapter;
}

namespace tarvo::engine::validation {

using valijson::adapters::Adapter;

std::string quotedText(const std::string& text);
// At most about 60 bytes of a text.
std::string shortened(const std::string& text);

// Whole numbers may be written as 2.0.
bool isWholeNumber(const Adapter& value);
double numberOf(const Adapter& value);

// A text that equal values share: 1 and 1.0 are equal, the order of members does not matter.
std::string canonicalText(const Adapter& value);
// "a string", "an object", ...
std::string typeName(const Adapter& value);
// The value itself where it is short, else its type.
std::string describe(const Adapter& value);

}  // namespace tarvo::engine::validation
