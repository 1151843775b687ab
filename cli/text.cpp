#include "cli/text.h"

#include "cli/errors.h"
#include "core/nodelist.h"
#include "core/utf8.h"

#include <algorithm>

namespace tarvo::cli {

namespace {

// Bytes of a character that a terminal may obey instead of showing it; 0: it shows it.
std::size_t unsafeLength(std::string_view text) {
    const auto byte = [text](std::size_t i) {
        return i < text.size() ? static_cast<unsigned char>(text[i]) : 0u;
    };
    if (byte(0) < 0x20 || byte(0) == 0x7f) {
        return 1;
    }
    const bool isSecondSet = byte(0) == 0xc2 && byte(1) >= 0x80 && byte(1) < 0xa0;
    if (isSecondSet || (byte(0) == 0xd8 && byte(1) == 0x9c)) {  // U+061C
        return 2;
    }
    // Marks, line separators, embeddings and overrides; isolates.
    const bool isDirection = byte(0) == 0xe2 && byte(1) == 0x80 &&
                             (byte(2) == 0x8e || byte(2) == 0x8f ||   // U+200E, U+200F
                              (byte(2) >= 0xa8 && byte(2) <= 0xae));  // U+2028 to U+202E
    const bool isIsolate = byte(0) == 0xe2 && byte(1) == 0x81 && byte(2) >= 0xa6 && byte(2) <= 0xa9;
    return isDirection || isIsolate ? 3 : 0;
}

// Bytes of the character that the text begins with; 0: it begins with none.
std::size_t characterLength(std::string_view text) {
    const auto lead = static_cast<unsigned char>(text.front());
    const std::size_t length = lead < 0x80 ? 1 : lead < 0xe0 ? 2 : lead < 0xf0 ? 3 : 4;
    return core::isUtf8(text.substr(0, length)) ? std::min(length, text.size()) : 0;
}

}  // namespace

std::vector<std::uint32_t> parseNodes(std::string_view text) {
    try {
        return core::parseNodeList(text);
    } catch (const Failure& failure) {
        throw UsageError(failure.what(), "The list of --nodes is written as \"1,3-5\".");
    }
}

std::string printable(std::string_view text) {
    std::string result;
    while (!text.empty()) {
        const std::size_t length = characterLength(text);
        const char c = text.front();
        if (c == '\t') {
            result += ' ';
        } else if (length == 0 || (unsafeLength(text) > 0 && c != '\n')) {
            result += '?';
        } else {
            result += text.substr(0, length);
        }
        text.remove_prefix(std::max<std::size_t>(length, 1));
    }
    return result;
}

std::string oneLine(std::string_view text) {
    std::string result = printable(text);
    std::replace(result.begin(), result.end(), '\n', ' ');
    return result;
}

}  // namespace tarvo::cli
