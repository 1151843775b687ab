#include "mainwindow/indexsearch.h"

#include <QRegularExpression>
#include <tuple>

namespace {

using tarvo::qrb::pointcloud::IndexNode;

struct BestNode {
    std::uint32_t id = 0;
    std::tuple<std::int64_t, std::int64_t> rank;
};

void lookFor(const IndexNode& node, IndexSearch search, int level, BestNode& best) {
    const bool leaf = node.children.empty();
    const bool leafWanted =
        search == IndexSearch::LARGEST_LEAF || search == IndexSearch::FULLEST_LEAF;
    const bool largest = search == IndexSearch::LARGEST_LEAF || search == IndexSearch::LARGEST_NODE;
    if (node.id != 0 && leaf == leafWanted) {
        const std::tuple<std::int64_t, std::int64_t> rank{largest ? -level : node.pointCountNode,
                                                          node.pointCountTotal};
        if (best.id == 0 || rank > best.rank)
            best = {node.id, rank};
    }
    for (const IndexNode& child : node.children)
        lookFor(child, search, level + 1, best);
}

}  // namespace

std::optional<IndexSearch> indexSearchCommand(const QString& text) {
    static constexpr std::pair<const char*, IndexSearch> commands[] = {
        {"find largest leaf", IndexSearch::LARGEST_LEAF},
        {"find largest node", IndexSearch::LARGEST_NODE},
        {"find fullest leaf", IndexSearch::FULLEST_LEAF},
        {"find fullest node", IndexSearch::FULLEST_NODE}};
    for (const auto& [command, search] : commands) {
        if (text.trimmed().compare(QLatin1String(command), Qt::CaseInsensitive) == 0)
            return search;
    }
    return std::nullopt;
}

std::uint32_t findIndexNode(const IndexNode& root, IndexSearch search) {
    BestNode best;
    lookFor(root, search, 0, best);
    return best.id;
}

bool isNodeList(const QString& text) {
    static const QRegularExpression list(R"(\A[\d\s,\-]*\d[\d\s,\-]*\z)");
    return list.match(text).hasMatch();
}

std::set<std::uint32_t> leavesOf(const IndexNode& root) {
    std::set<std::uint32_t> leaves;
    if (root.children.empty() && root.id != 0)
        leaves.insert(root.id);
    for (const IndexNode& child : root.children)
        leaves.merge(leavesOf(child));
    return leaves;
}
