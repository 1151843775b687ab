// Checks of options and positional arguments, for the parser.
#pragma once

#include <CLI/CLI.hpp>

#include <cstdint>
#include <limits>
#include <string>

namespace tarvo::cli {

// A whole number in decimal digits within the range, which must fit what it is converted to; the
// parser's own conversion takes "-1" for 2^64 - 1 and "010" for 8.
CLI::Validator wholeNumber(std::uint64_t least = 0,
                           std::uint64_t most = std::numeric_limits<std::uint32_t>::max());

// The same, which may also have an exponent, as people write large ones: 1e6, 2.5e6; up to 2^53.
CLI::Validator largeNumber(std::uint64_t least, std::uint64_t most);

// A number in digits within the range, which is above 0; the parser's own check of ranges takes
// "nan".
CLI::Validator positiveNumber(double least, double most);

// A list or expression that is given must not be blank: an unset variable of a script would mean
// everything. advice: what to do about it.
CLI::Validator notEmpty(std::string advice = "Leave the option out for all.");

}  // namespace tarvo::cli
