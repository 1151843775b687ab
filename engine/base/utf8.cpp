#include "engine/base/utf8.h"

#include "engine/base/error.h"

#include <cstdio>

namespace tarvo::engine {

std::size_t characterLength(std::string_view text) {
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const unsigned lead = byte(0);
    const std::size_t length = lead < 0x80   ? 1
                               : lead < 0xc2 ? 0
                               : lead < 0xe0 ? 2
                               : lead < 0xf0 ? 3
                               : lead < 0xf5 ? 4
                                             : 0;
    if (length > text.size())
        return 0;
    for (std::size_t i = 1; i < length; ++i)
        if ((byte(i) & 0xc0) != 0x80)
            return 0;
    // Longer than needed, halves of a pair, beyond the last character.
    if ((lead == 0xe0 && byte(1) < 0xa0) || (lead == 0xed && byte(1) > 0x9f) ||
        (lead == 0xf0 && byte(1) < 0x90) || (lead == 0xf4 && byte(1) > 0x8f))
        return 0;
    return length;
}

std::string validUtf8(std::string_view text) {
    std::string out;
    out.reserve(text.size());
    forEachCharacter(text, [&](std::string_view character) { out += character; });
    return out;
}

void requireUtf8(std::string_view what, std::string_view text) {
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t length = characterLength(text.substr(at));
        if (length == 0) {
            char byte[3];
            std::snprintf(byte, sizeof byte, "%02X", static_cast<unsigned char>(text[at]));
            throw Failure(ErrorCode::Argument, std::string(what) + " is not a UTF-8 text.",
                          "Its byte number " + std::to_string(at + 1) + ", 0x" + byte +
                              ", is part of no character.");
        }
        at += length;
    }
}

}  // namespace tarvo::engine
