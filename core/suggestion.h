// What somebody may have meant by a name that is none.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tarvo::core {

// The names near a word, the nearest first, three at most: a few letters are missing, too many,
// other ones or swapped, whatever their case, or the name only begins with the word. None for words
// of more than 64 bytes.
std::vector<std::string> nearest(std::string_view word, const std::vector<std::string>& names);

// "Did you mean "a", "b" or "c"?"; empty where there are none.
std::string didYouMean(const std::vector<std::string>& names);

// The same for the names near a word, with a line break behind it: for what comes before other
// advice.
std::string suggestion(std::string_view word, const std::vector<std::string>& names);

}  // namespace tarvo::core
