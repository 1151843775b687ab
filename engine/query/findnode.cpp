#include "engine/query/findnode.h"

#include <cctype>
#include <tuple>
#include <utility>

namespace tarvo::engine::query {

std::optional<FindCommand> findCommand(std::string_view text) {
    static constexpr std::pair<std::string_view, FindCommand> commands[] = {
        {"find largest leaf", FindCommand::LargestLeaf},
        {"find largest node", FindCommand::LargestNode},
        {"find fullest leaf", FindCommand::FullestLeaf},
        {"find fullest node", FindCommand::FullestNode}};
    const std::size_t begin = text.find_first_not_of(" \t\r\n");
    if (begin == std::string_view::npos)
        return std::nullopt;
    std::string lower;
    for (const char c : text.substr(begin, text.find_last_not_of(" \t\r\n") - begin + 1))
        lower += static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    for (const auto& [name, command] : commands)
        if (lower == name)
            return command;
    return std::nullopt;
}

std::uint32_t findNode(session::Session& session, const session::State& state,
                       FindCommand command) {
    const bool leafWanted =
        command == FindCommand::LargestLeaf || command == FindCommand::FullestLeaf;
    const bool largest = command == FindCommand::LargestLeaf || command == FindCommand::LargestNode;
    const index::Node root = session.blobs().rootNode(state);
    std::uint32_t best = 0;
    std::tuple<int, std::uint64_t> bestRank;
    for (index::TreeCursor cursor(root, session.blobs().pageReader()); cursor.node();
         cursor.enter()) {
        const index::Node& node = *cursor.node();
        if (node.isLeaf() != leafWanted || &node == &root)
            continue;
        const std::tuple<int, std::uint64_t> rank{largest ? -node.level : 0, node.totalCount};
        if (best == 0 || rank > bestRank) {
            best = node.id;
            bestRank = rank;
        }
    }
    return best == 0 && root.isLeaf() == leafWanted ? root.id : best;
}

}  // namespace tarvo::engine::query
