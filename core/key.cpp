#include "core/key.h"

#include "core/error.h"

#include <string>

namespace tarvo::core {

namespace {

int hexadecimalValue(char c) {
    if (c >= '0' && c <= '9')
        return c - '0';
    const char lower = static_cast<char>(c | 0x20);
    return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

bool isSeparator(char c) {
    return std::string_view(" \t\r\n,:-").find(c) != std::string_view::npos;
}

// Returns where the text is wrong; its size where it is a key.
std::size_t decode(std::string_view text, std::vector<std::uint8_t>& key) {
    for (std::size_t i = 0; i < text.size();) {
        if (isSeparator(text[i])) {
            ++i;
            continue;
        }
        const int high = hexadecimalValue(text[i]);
        const int low = i + 1 < text.size() ? hexadecimalValue(text[i + 1]) : -1;
        if (high < 0 || low < 0)
            return i;
        key.push_back(static_cast<std::uint8_t>(high << 4 | low));
        i += 2;
    }
    return text.size();
}

}  // namespace

std::vector<std::uint8_t> keyOfText(std::string_view text) {
    std::vector<std::uint8_t> key;
    const std::size_t wrong = decode(text, key);
    if (wrong < text.size())
        throw Failure("The key is no text of hexadecimal digits in pairs.",
                      hexadecimalValue(text[wrong]) < 0
                          ? "The character at place " + std::to_string(wrong + 1) + " is none."
                          : "The digit at place " + std::to_string(wrong + 1) + " has no partner.");
    return key;
}

std::vector<std::uint8_t> keyOfFile(std::string_view contents) {
    std::vector<std::uint8_t> key;
    if (decode(contents, key) == contents.size())
        return key;
    return {contents.begin(), contents.end()};
}

}  // namespace tarvo::core
