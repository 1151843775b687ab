// Texts from files and databases, which may be in any coding.
#pragma once

#include <string>
#include <string_view>

namespace tarvo::core {

bool isUtf8(std::string_view text);

// The text itself, or read as Latin-1 where it is not UTF-8.
std::string validUtf8(std::string_view text);

// Of a long text only the beginning, with "..." behind it: for messages about what stands in a file.
// Other bytes than those of UTF-8 stay as they are.
std::string excerpt(std::string_view text);

// The part without the blanks at its ends.
std::string_view trimmed(std::string_view text);

// Letters of ASCII only.
std::string lowerCase(std::string_view text);

}  // namespace tarvo::core
