#include "engine/base/utf8.h"

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

}  // namespace tarvo::engine
