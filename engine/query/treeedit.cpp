#include "engine/query/treeedit.h"

#include "engine/base/interruption.h"
#include "engine/index/builder.h"
#include "engine/index/shape.h"

#include <algorithm>
#include <deque>

namespace tarvo::engine::query {

namespace {

class TreeEditor {
public:
    TreeEditor(session::Session& session, const session::State& state, const TreeEdit& edit,
               const session::Progress& progress)
        : m_session(session),
          m_state(state),
          m_cells(session::cellsOf(session.identity().settings, state.primary())),
          m_edit(edit),
          m_progress(progress) {}

    // Whether something changed; nodes without points are gone.
    bool editNodes(std::vector<index::Node>& nodes) {
        LeafQueue queue(m_session, m_edit);
        collectLeaves(nodes, queue);
        return editInPage(nodes, queue);
    }

private:
    // The concerned leaves of one page, edited a few ahead.
    class LeafQueue {
    public:
        LeafQueue(session::Session& session, const TreeEdit& edit)
            : m_session(session), m_edit(edit) {}
        void add(const index::Node& leaf) { m_leaves.push_back(&leaf); }
        EditedLeaf next() {
            const std::size_t window = m_session.pool().threads() * 3;
            while (m_started < m_leaves.size() && m_results.size() < window) {
                // A copy: the page is being changed.
                m_results.push_back(m_session.pool().run(
                    [&edit = m_edit, leaf = *m_leaves[m_started]] { return edit.leaf(leaf); }));
                ++m_started;
            }
            Task<EditedLeaf> oldest = std::move(m_results.front());
            m_results.pop_front();
            return oldest.get();
        }

    private:
        session::Session& m_session;
        const TreeEdit& m_edit;
        std::vector<const index::Node*> m_leaves;
        std::size_t m_started = 0;
        std::deque<Task<EditedLeaf>> m_results;
    };

    void collectLeaves(const std::vector<index::Node>& nodes, LeafQueue& queue) const {
        for (const index::Node& node : nodes) {
            if (!m_edit.touches(node))
                continue;
            if (node.isLeaf())
                queue.add(node);
            else
                collectLeaves(node.children, queue);
        }
    }

    bool editInPage(std::vector<index::Node>& nodes, LeafQueue& queue) {
        bool changed = false;
        for (index::Node& node : nodes) {
            if (!m_edit.touches(node)) {
                pass(node.totalCount);
                continue;
            }
            changed = (node.isLeaf() ? editLeaf(node, queue) : editInner(node, queue)) || changed;
        }
        if (changed)
            std::erase_if(nodes, [](const index::Node& node) { return node.totalCount == 0; });
        return changed;
    }

    bool editLeaf(index::Node& leaf, LeafQueue& queue) {
        EditedLeaf edited = queue.next();
        pass(leaf.totalCount);
        if (!edited.changed)
            return false;
        if (edited.count > 0)
            edited.blocks.store(m_session.blobs(), edited.attributes);
        if (m_edit.taken)
            m_edit.taken(edited);
        leaf.totalCount = leaf.ownCount = edited.count;
        leaf.attributes = std::move(edited.attributes);
        leaf.revision = m_state.transaction.id;
        return true;
    }

    bool editInner(index::Node& node, LeafQueue& queue) {
        const bool paged = static_cast<bool>(node.childPage);
        bool changed = false;
        std::vector<index::Node> children;
        if (paged) {
            children = m_session.blobs().readPage(node.childPage);
            index::requireCells(node, children, m_cells);
            changed = editNodes(children);
        } else {
            index::requireCells(node, node.children, m_cells);
            changed = editInPage(node.children, queue);
        }
        if (!changed)
            return false;
        std::vector<index::Node>& now = paged ? children : node.children;
        index::dropOwnPoints(node);
        node.revision = m_state.transaction.id;
        index::summarise(node, now, m_state.attributes);
        if (paged)
            node.childPage =
                children.empty() ? BlobRef() : m_session.blobs().add(index::encodePage(children));
        return true;
    }

    void pass(std::uint64_t points) {
        Interruption::check();
        m_passed += points;
        const auto percent = std::min<std::uint64_t>(
            99, m_passed * 100 / std::max<std::uint64_t>(1, m_state.pointCount));
        if (m_progress && !m_progress(static_cast<int>(percent)))
            throw Failure(ErrorCode::Cancelled, "Changing points was cancelled.",
                          "The transaction is still pending.");
    }

    session::Session& m_session;
    const session::State& m_state;
    const index::Cells m_cells;
    const TreeEdit& m_edit;
    const session::Progress& m_progress;
    std::uint64_t m_passed = 0;
};

}  // namespace

void editTree(session::Session& session, session::State& state, const TreeEdit& edit,
              const session::Progress& progress) {
    if (!state.rootPage)
        return;
    const session::Blobs::Scope scope(session.blobs());
    std::vector<index::Node> root{session.blobs().rootNode(state)};
    if (!TreeEditor(session, state, edit, progress).editNodes(root))
        return;
    if (state.pointCount != (root.empty() ? 0 : root[0].totalCount))
        ++state.shape;
    state.pointCount = root.empty() ? 0 : root[0].totalCount;
    state.rootPage = root.empty() ? BlobRef() : session.blobs().add(index::encodePage({root[0]}));
}

void putAttribute(std::vector<index::AttributeData>& attributes, index::AttributeData data) {
    const auto at = std::lower_bound(
        attributes.begin(), attributes.end(), data.uid,
        [](const index::AttributeData& a, std::uint32_t uid) { return a.uid < uid; });
    if (at != attributes.end() && at->uid == data.uid)
        *at = std::move(data);
    else
        attributes.insert(at, std::move(data));
}

}  // namespace tarvo::engine::query
