#include "core/utf8.h"

namespace tarvo::core {

bool isUtf8(std::string_view text) {
    for (std::size_t i = 0; i < text.size();) {
        const auto lead = static_cast<unsigned char>(text[i]);
        std::size_t more = 0;
        char32_t code = lead;
        if (lead >= 0xf0 && lead < 0xf5) {
            more = 3;
            code = lead & 0x07;
        } else if (lead >= 0xe0 && lead < 0xf0) {
            more = 2;
            code = lead & 0x0f;
        } else if (lead >= 0xc2 && lead < 0xe0) {
            more = 1;
            code = lead & 0x1f;
        } else if (lead >= 0x80) {
            return false;
        }
        if (i + more >= text.size()) {
            return false;
        }
        for (std::size_t k = 1; k <= more; ++k) {
            const auto next = static_cast<unsigned char>(text[i + k]);
            if ((next & 0xc0) != 0x80) {
                return false;
            }
            code = (code << 6) | (next & 0x3f);
        }
        const bool overlong = (more == 2 && code < 0x800) || (more == 3 && code < 0x10000);
        if (overlong || (code >= 0xd800 && code < 0xe000) || code > 0x10ffff) {
            return false;
        }
        i += more + 1;
    }
    return true;
}

std::string validUtf8(std::string_view text) {
    if (isUtf8(text)) {
        return std::string(text);
    }
    std::string result;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < 0x80) {
            result += c;
        } else {
            result += static_cast<char>(0xc0 | (byte >> 6));
            result += static_cast<char>(0x80 | (byte & 0x3f));
        }
    }
    return result;
}

std::string excerpt(std::string_view text) {
    constexpr std::size_t most = 120;
    if (text.size() <= most) {
        return std::string(text);
    }
    // Not in the middle of a character.
    std::size_t end = most;
    while (end > most - 4 && (static_cast<unsigned char>(text[end]) & 0xc0) == 0x80) {
        --end;
    }
    return std::string(text.substr(0, end)) + "...";
}

std::string_view trimmed(std::string_view text) {
    constexpr std::string_view blanks = " \t\r\n";
    const std::size_t begin = text.find_first_not_of(blanks);
    return begin == std::string_view::npos
               ? std::string_view()
               : text.substr(begin, text.find_last_not_of(blanks) - begin + 1);
}

std::string lowerCase(std::string_view text) {
    std::string result(text);
    for (char& c : result) {
        c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    }
    return result;
}

}  // namespace tarvo::core
