#include "cli/text.h"

#include "cli/errors.h"
#include "core/nodelist.h"

namespace tarvo::cli {

std::vector<std::uint32_t> parseNodes(std::string_view text) {
    try {
        return core::parseNodeList(text);
    } catch (const Failure& failure) {
        throw UsageError(failure.what(), "The list of --nodes is written as \"1,3-5\".");
    }
}

std::string printable(std::string_view text) {
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto c = static_cast<unsigned char>(text[i]);
        // U+0080 to U+009F, which some terminals obey too.
        const bool isSecondSet =
            c == 0xc2 && i + 1 < text.size() && static_cast<unsigned char>(text[i + 1]) < 0xa0;
        if (c == '\t') {
            result += ' ';
        } else if ((c < 0x20 && c != '\n') || c == 0x7f || isSecondSet) {
            result += '?';
            i += isSecondSet ? 1 : 0;
        } else {
            result += text[i];
        }
    }
    return result;
}

}  // namespace tarvo::cli
