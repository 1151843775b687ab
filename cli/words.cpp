#include "cli/words.h"

#include "cli/errors.h"

namespace tarvo::cli {

std::vector<std::string> splitWords(std::string_view line) {
    std::vector<std::string> words;
    bool inWord = false;
    char quote = '\0';
    for (std::size_t i = 0; i < line.size(); ++i) {
        const char c = line[i];
        const bool isBlank = c == ' ' || c == '\t' || c == '\n' || c == '\r';
        if (quote == '\0' && isBlank) {
            inWord = false;
            continue;
        }
        if (!inWord) {
            words.emplace_back();
            inWord = true;
        }
        const char next = i + 1 < line.size() ? line[i + 1] : '\0';
        const bool escapes =
            c == '\\' &&
            (quote == '\0' ? next != '\0' : quote == '"' && (next == '"' || next == '\\'));
        if (escapes) {
            words.back() += next;
            ++i;
        } else if (quote == '\0' && (c == '\'' || c == '"')) {
            quote = c;
        } else if (c == quote) {
            quote = '\0';
        } else {
            words.back() += c;
        }
    }
    if (quote != '\0') {
        throw UsageError("A quote in \"" + std::string(line) + "\" is not closed.");
    }
    return words;
}

}  // namespace tarvo::cli
