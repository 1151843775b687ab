#include "engine/query/fill.h"

#include "engine/index/rows.h"
#include "engine/query/columns.h"
#include "engine/query/leafedit.h"

#include <algorithm>
#include <numeric>

namespace tarvo::engine::query {

// The selected points by leaf, waiting to be changed in the tree.
class FillQuery::Change final : public session::PendingChange {
public:
    struct Leaf {
        index::Key first;
        std::uint32_t id;
        filter::Selection points;
    };

    Change(session::Session& session, std::vector<CodeChange> changes)
        : m_session(session), m_changes(std::move(changes)) {}

    // leaves: in the order in which the scan comes to them.
    void add(std::vector<Leaf> leaves) {
        if (m_leaves.capacity() < m_leaves.size() + leaves.size())
            m_leaves.reserve(2 * m_leaves.size() + leaves.size());
        for (Leaf& leaf : leaves) {
            m_points += leaf.points.size();
            if (m_leaves.empty() || m_leaves.back().id != leaf.id) {
                m_leaves.push_back(std::move(leaf));
            } else {
                filter::Selection& selected = m_leaves.back().points;
                selected.insert(selected.end(), leaf.points.begin(), leaf.points.end());
            }
        }
    }
    std::size_t bytes() const {
        return m_points * sizeof(std::uint32_t) + m_leaves.size() * sizeof(Leaf);
    }

    void apply(const session::Progress& progress) override {
        if (m_leaves.empty())
            return;
        std::sort(m_leaves.begin(), m_leaves.end(), before);
        session::State& pending = m_session.change();
        session::State changed = pending;
        TreeEdit edit;
        edit.touches = [this](const index::Node& node) {
            const auto at =
                std::lower_bound(m_leaves.begin(), m_leaves.end(), Leaf{node.first, 0, {}}, before);
            return at != m_leaves.end() && at->first <= node.last;
        };
        edit.leaf = [&](const index::Node& leaf) { return editLeaf(leaf, pending); };
        editTree(m_session, changed, edit, progress);
        pending = std::move(changed);
        m_leaves.clear();
        m_points = 0;
    }

private:
    static bool before(const Leaf& a, const Leaf& b) {
        return a.first != b.first ? a.first < b.first : a.id < b.id;
    }

    EditedLeaf editLeaf(const index::Node& leaf, const session::State& state) const {
        EditedLeaf edited(m_session.identity().settings.compressionLevel);
        const auto at = std::lower_bound(m_leaves.begin(), m_leaves.end(),
                                         Leaf{leaf.first, leaf.id, {}}, before);
        if (at == m_leaves.end() || at->id != leaf.id)
            return edited;
        edited.count = leaf.ownCount;
        edited.attributes = leaf.attributes;
        for (const CodeChange& change : m_changes) {
            const schema::Attribute& attribute = state.attributes[change.attribute];
            schema::Column column = *readColumn(m_session, leaf, attribute, change.element);
            bool differs = false;
            for (const std::uint32_t point : at->points) {
                const std::uint64_t old = column[point];
                const std::uint64_t code = change.of(old, attribute.grid);
                differs = differs || code != old;
                column.set(point, code);
            }
            if (!differs)
                continue;
            edited.changed = true;
            setElement(edited, leaf, attribute, change.element,
                       edited.blocks.add(attribute, column), state.transaction.id);
        }
        return edited;
    }

    session::Session& m_session;
    std::vector<CodeChange> m_changes;
    std::vector<Leaf> m_leaves;
    std::size_t m_points = 0;
};

FillQuery::FillQuery(session::Session& session, Scope scope, std::string_view filter)
    : m_session(session),
      m_guard(session),
      m_everything(!scope.nodes && scope.subtree == 0 &&
                   filter.find_first_not_of(" \t\r\n") == std::string_view::npos),
      m_scan(session, std::move(scope), filter) {
    m_scan.wantLeaves();
}

void FillQuery::add(const CodeChange& change) {
    const session::State& state = m_session.change();
    const schema::Attribute& attribute = state.attributes[change.attribute];
    if (change.attribute == 0 || change.attribute == state.pointIdIndex())
        throw Failure(ErrorCode::Argument,
                      "The point attribute \"" + attribute.record.name +
                          "\" can't be filled: points are found by it.",
                      "Update the points with positions of their own.");
    if (attribute.is(schema::StorageClass::Constant) && !m_everything &&
        change.of(attribute.absentCode(change.element), attribute.grid) !=
            attribute.absentCode(change.element))
        throw constantFailure(attribute);
    m_changes.push_back(change);
}

void FillQuery::bind(std::string_view attribute, std::uint32_t type, const void* value) {
    m_guard.check();
    if (m_started)
        throw Failure(ErrorCode::State, "The query has begun: values must be bound before.");
    const session::State& state = m_session.change();
    const Binding binding =
        makeBinding(state.attributes, attribute, type, const_cast<void*>(value), 0);
    for (std::uint32_t e = 0; e < binding.elements.count; ++e) {
        CodeChange change{CodeChange::Kind::Set, binding.elements.attribute,
                          binding.elements.first + e, 0};
        readCodes(state.attributes[change.attribute], type, binding.buffer + e * sizeOfType(type),
                  0, 1, reinterpret_cast<std::uint8_t*>(&change.code), sizeof change.code);
        add(change);
    }
}

void FillQuery::invert(std::string_view attribute) {
    m_guard.check();
    if (m_started)
        throw Failure(ErrorCode::State, "The query has begun: attributes must be named before.");
    const session::State& state = m_session.change();
    const schema::ElementRange elements = schema::resolveElements(state.attributes, attribute);
    const schema::Attribute& definition = state.attributes[elements.attribute];
    if (definition.grid.kind() == schema::Grid::Kind::Float || definition.grid.maximumCode() != 1)
        throw Failure(ErrorCode::Argument,
                      "The point attribute \"" + definition.record.name +
                          "\" can't be inverted: it has more than two values, or only one.",
                      "Its range must hold exactly a minimum and a maximum.");
    for (std::uint32_t e = 0; e < elements.count; ++e)
        add({CodeChange::Kind::Invert, elements.attribute, elements.first + e, 0});
}

// The one value for the whole file changes when all points have been passed.
void FillQuery::changeConstants() {
    session::State& state = m_session.change();
    for (const CodeChange& change : m_changes) {
        schema::Attribute& attribute = state.attributes.all()[change.attribute];
        if (!attribute.is(schema::StorageClass::Constant) || !m_everything || state.pointCount == 0)
            continue;
        if (attribute.constant.empty())
            attribute.constant.assign(attribute.record.length, attribute.defaultCode());
        std::uint64_t& code = attribute.constant[change.element];
        code = change.of(code, attribute.grid);
        state.attributesBlob = {};
    }
}

std::uint32_t FillQuery::next(std::uint32_t count) {
    m_guard.check();
    if (m_changes.empty())
        throw Failure(ErrorCode::State, "The query does not know what to change.",
                      "Bind a value or name an attribute first.");
    if (!m_started) {
        m_started = true;
        std::vector<CodeChange> stored;
        for (const CodeChange& change : m_changes)
            if (index::RowLayout::has(m_scan.state().attributes[change.attribute]))
                stored.push_back(change);
        m_change = std::make_shared<Change>(m_session, std::move(stored));
    }
    // Before anything is taken: a call that fails has changed nothing.
    if (m_change->bytes() > std::max<std::uint64_t>(m_session.cacheSize() / 8, 1u << 20))
        m_session.settle();
    if (m_session.pendingChange() != m_change)
        m_session.setPendingChange(m_change);
    if (m_session.change().shape != m_scan.state().shape)
        throw Failure(ErrorCode::State,
                      "Points were added, moved or removed since this query was made.",
                      "Make a new query.");
    const session::Blobs::Scope scope(m_session.blobs());
    std::uint32_t done = 0;
    std::vector<Change::Leaf> leaves;
    while (done < count && !m_reader.ended()) {
        const std::optional<HitReader::Portion> portion = m_reader.next(count - done);
        if (!portion) {
            changeConstants();
            break;
        }
        const NodeHits& hits = *portion->hits;
        leaves.push_back({hits.node->first, hits.node->id, {}});
        filter::Selection& points = leaves.back().points;
        points.resize(portion->count);
        if (hits.all)
            std::iota(points.begin(), points.end(), static_cast<std::uint32_t>(portion->begin));
        else
            std::copy_n(hits.selection.begin() + static_cast<std::ptrdiff_t>(portion->begin),
                        portion->count, points.begin());
        done += portion->count;
    }
    m_change->add(std::move(leaves));
    m_session.changelog().notes().updated += done;
    return done;
}

}  // namespace tarvo::engine::query
