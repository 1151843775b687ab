#include "core/nodelist.h"

#include "core/error.h"
#include "core/utf8.h"

#include <algorithm>
#include <charconv>
#include <string>

namespace tarvo::core {

namespace {

[[noreturn]] void failWith(const std::string& message, std::string_view text) {
    throw Failure(message + ": \"" + std::string(text) + "\"");
}

std::vector<std::string_view> splitNonEmpty(std::string_view text, char separator) {
    std::vector<std::string_view> parts;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find(separator), text.size());
        if (end > 0)
            parts.push_back(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return parts;
}

std::uint32_t parseNode(std::string_view piece) {
    const std::string_view digits = trimmed(piece);
    std::uint32_t node = 0;
    const char* const end = digits.data() + digits.size();
    const auto [next, error] = std::from_chars(digits.data(), end, node);
    if (error != std::errc() || next != end)
        failWith("Failed to parse", piece);
    return node;
}

}  // namespace

std::vector<std::uint32_t> parseNodeList(std::string_view text) {
    std::vector<std::uint32_t> nodes;
    for (const std::string_view part : splitNonEmpty(trimmed(text), ',')) {
        std::vector<std::uint32_t> ends;
        for (const std::string_view piece : splitNonEmpty(part, '-'))
            if (!trimmed(piece).empty())
                ends.push_back(parseNode(piece));
        const auto hyphens = std::count(part.begin(), part.end(), '-');
        if (!(ends.size() == 1 && hyphens == 0) && !(ends.size() == 2 && hyphens > 0))
            failWith("Invalid input", part);
        for (std::uint64_t node = ends.front(); node <= ends.back(); ++node) {
            nodes.push_back(static_cast<std::uint32_t>(node));
            if (nodes.size() > nodeListLimit)
                failWith("The list names too many nodes", part);
        }
    }
    std::sort(nodes.begin(), nodes.end());
    nodes.erase(std::unique(nodes.begin(), nodes.end()), nodes.end());
    return nodes;
}

}  // namespace tarvo::core
