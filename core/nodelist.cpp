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

struct Range {
    std::uint32_t first = 0;
    std::uint32_t last = 0;
    bool isSingle = false;
};

// Each part, with the words it was read from.
template <typename Take>
void readParts(std::string_view text, const Take& take) {
    for (const std::string_view part : splitNonEmpty(trimmed(text), ',')) {
        std::vector<std::uint32_t> ends;
        for (const std::string_view piece : splitNonEmpty(part, '-'))
            if (!trimmed(piece).empty())
                ends.push_back(parseNode(piece));
        const auto hyphens = std::count(part.begin(), part.end(), '-');
        if (!(ends.size() == 1 && hyphens == 0) && !(ends.size() == 2 && hyphens > 0))
            failWith("Invalid input", part);
        take(Range{ends.front(), ends.back(), hyphens == 0}, part);
    }
}

void makeSet(std::vector<std::uint32_t>& nodes) {
    std::sort(nodes.begin(), nodes.end());
    nodes.erase(std::unique(nodes.begin(), nodes.end()), nodes.end());
}

// No deeper than the tree, whose depth the library bounds.
void collectIds(const qrb::pointcloud::IndexNode& node, std::vector<std::uint32_t>& ids) {
    // A root without a number only holds the nodes together.
    if (node.id != 0)
        ids.push_back(node.id);
    for (const auto& child : node.children)
        collectIds(child, ids);
}

}  // namespace

std::vector<std::uint32_t> parseNodeList(std::string_view text) {
    std::vector<std::uint32_t> nodes;
    readParts(text, [&](const Range& range, std::string_view part) {
        for (std::uint64_t node = range.first; node <= range.last; ++node) {
            nodes.push_back(static_cast<std::uint32_t>(node));
            if (nodes.size() > nodeListLimit)
                failWith("The list names too many nodes", part);
        }
    });
    makeSet(nodes);
    return nodes;
}

std::vector<std::uint32_t> parseSingleNodes(std::string_view text) {
    std::vector<std::uint32_t> nodes;
    readParts(text, [&](const Range& range, std::string_view) {
        if (range.isSingle)
            nodes.push_back(range.first);
    });
    makeSet(nodes);
    return nodes;
}

std::vector<std::uint32_t> existingNodes(std::string_view text,
                                         const qrb::pointcloud::IndexNode& root) {
    std::vector<std::uint32_t> ids;
    collectIds(root, ids);
    makeSet(ids);
    const std::vector<std::uint32_t> single = parseSingleNodes(text);
    std::vector<std::uint32_t> nodes;
    for (const std::uint32_t node : parseNodeList(text))
        if (std::binary_search(ids.begin(), ids.end(), node) ||
            std::binary_search(single.begin(), single.end(), node))
            nodes.push_back(node);
    return nodes;
}

}  // namespace tarvo::core
