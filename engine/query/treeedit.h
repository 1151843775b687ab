// Changes stored points: walks the tree, has the leaves that are concerned rewritten on the worker
// threads, and makes new pages of what changed. Nothing but the state given is changed, and that
// only at the end.
#pragma once

#include "engine/query/blocks.h"
#include "engine/session/session.h"

#include <functional>
#include <vector>

namespace tarvo::engine::query {

// What an edit leaves of a leaf.
struct EditedLeaf {
    bool changed = false;
    std::uint64_t count = 0;  // points left; 0: the leaf goes
    BlockWriter blocks;       // what the attributes refer to besides stored blocks
    std::vector<index::AttributeData> attributes;  // all of the leaf, ascending uid
    std::vector<std::uint8_t> rows;                // points that leave it, for the edit's own use

    explicit EditedLeaf(std::uint8_t compressionLevel) : blocks(compressionLevel) {}
};

struct TreeEdit {
    // Whether something in the node or below it is concerned; any thread.
    std::function<bool(const index::Node& node)> touches;
    // Rewrites a leaf; called on worker threads.
    std::function<EditedLeaf(const index::Node& leaf)> leaf;
    // Gets each result in key order on the calling thread; may be empty.
    std::function<void(EditedLeaf& edited)> taken;
};

// Nodes that change have the revision of the state's transaction, and lose their level-of-detail
// points. Points may only leave.
void editTree(session::Session& session, session::State& state, const TreeEdit& edit,
              const session::Progress& progress);

// Puts attribute data into a sorted list, in place of what is there of the same number.
void putAttribute(std::vector<index::AttributeData>& attributes, index::AttributeData data);

}  // namespace tarvo::engine::query
