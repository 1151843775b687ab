// Foreign texts as UTF-8.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace tarvo::engine {

// Bytes of the character that the text, which is not empty, begins with; 0 where it is none.
std::size_t characterLength(std::string_view text);
// Bytes that are no UTF-8 become U+FFFD, each.
std::string validUtf8(std::string_view text);
// Throws Failure(Argument) that names `what` ("The title") and the byte where a text is no UTF-8.
void requireUtf8(std::string_view what, std::string_view text);

// Calls the function with each character, U+FFFD for each byte that is none.
template <typename Function>
void forEachCharacter(std::string_view text, Function function) {
    while (!text.empty()) {
        const std::size_t length = characterLength(text);
        function(length ? text.substr(0, length) : std::string_view("\xef\xbf\xbd"));
        text.remove_prefix(length ? length : 1);
    }
}

}  // namespace tarvo::engine
