// The words of a command line that is given as one text.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tarvo::cli {

// Splits at blanks, as a shell does: what stands in single quotes is taken as it is, in double
// quotes but for \" and \\, elsewhere a backslash takes the next character as it is. Throws
// UsageError for a quote that is not closed.
std::vector<std::string> splitWords(std::string_view line);

}  // namespace tarvo::cli
