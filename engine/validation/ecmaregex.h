// Regular expressions of JSON schemas, which are written as ECMA 262 has them, in the words of the
// engine that searches them.
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

namespace tarvo::engine::validation {

// what(): goes on after the expression in a sentence, "can't be understood: ..."
class RegexFault : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// The RE2 expression that matches in the same texts; of characters, not of halves of pairs. Groups
// are not told apart, and greed does not count. Throws RegexFault for faults, for what can't be
// searched in linear time (looking around, back references) and for very many repetitions.
std::string translatedRegex(std::string_view expression);

// Whether it is an expression of ECMA 262, also one that can't be searched here.
bool isRegex(std::string_view expression);

}  // namespace tarvo::engine::validation
