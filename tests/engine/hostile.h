// Databases whose checksums are right, but whose contents lie.
#pragma once

#include "engine/store/history.h"
#include "tests/engine/store.h"

#include <algorithm>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace tarvo::engine::testing {

struct Forger {
    static void publish(session::Session& session) { session.publish({}, {}); }
};

// Commits an index that was changed as a whole: the root has everything below it.
inline void commitIndex(
    const std::string& file,
    const std::function<void(session::Session&, session::State&, index::Node& root)>& change) {
    session::Session session(file, {}, "test");
    session.begin("wrong", "test", "", "");
    session::State& state = session.change();
    index::Node root = session.blobs().rootNode(state);
    const auto unfold = [&](auto&& self, index::Node& node) -> void {
        if (node.childPage)
            node.children = *session.blobs().pageReader()(node.childPage);
        node.childPage = {};
        for (index::Node& child : node.children)
            self(self, child);
    };
    unfold(unfold, root);
    change(session, state, root);
    state.rootPage = session.blobs().add(index::encodePage({root}));
    Forger::publish(session);
}

// Commits an index of which one leaf was changed.
inline void commitChanged(const std::string& file,
                          const std::function<void(session::State&, index::Node& leaf)>& change) {
    commitIndex(file, [&](session::Session&, session::State& state, index::Node& root) {
        index::Node* leaf = &root;
        while (!leaf->isLeaf())
            leaf = &leaf->children[leaf->children.size() / 2];
        change(state, *leaf);
    });
}

// Changes the root text of a transaction behind the library's back.
inline void rewriteSnapshot(const std::string& file, std::uint32_t id,
                            const std::function<void(std::string& root)>& change) {
    store::Connection connection(file, SQLITE_OPEN_READWRITE);
    std::string root = store::readRoot(connection, id);
    const std::int64_t lastBlob = store::readLastBlob(connection, id);
    change(root);
    store::removeSnapshot(connection, id);
    store::putSnapshot(connection, id, lastBlob, root);
}

inline void replace(std::string& text, std::string_view what, std::string_view by) {
    const std::size_t at = text.find(what);
    ASSERT_NE(at, std::string::npos) << what;
    text.replace(at, what.size(), by);
}

}  // namespace tarvo::engine::testing
