#include "engine/query/update.h"

#include "engine/query/columns.h"
#include "engine/query/leafedit.h"
#include "engine/query/pointids.h"
#include "engine/query/pointmatch.h"
#include "engine/query/pointwriter.h"

#include <algorithm>
#include <cstring>
#include <numeric>

namespace tarvo::engine::query {

// Rows of an id and the new codes of some elements, waiting to be put into the tree.
class UpdateQuery::Change final : public session::PendingChange {
public:
    struct Field {
        std::size_t attribute;
        std::uint32_t element;
        std::size_t offset;
    };

    Change(session::Session& session, const std::vector<Binding>& bindings) : m_session(session) {
        for (const Binding& binding : bindings)
            for (std::uint32_t e = 0; e < binding.elements.count; ++e) {
                const std::size_t attribute = binding.elements.attribute;
                m_fields.push_back({attribute, binding.elements.first + e, m_stride});
                m_stride += 8;
                m_movesPoints = m_movesPoints || attribute == 0;
            }
    }

    std::size_t stride() const { return m_stride; }
    const std::vector<Field>& fields() const { return m_fields; }
    void add(const std::vector<std::uint8_t>& rows) {
        m_rows.insert(m_rows.end(), rows.begin(), rows.end());
    }
    std::size_t bytes() const { return m_rows.size(); }
    // Throws Failure(Range) where rows give points values of their own that they can't have.
    void checkConstants(const std::vector<std::uint8_t>& rows) const {
        for (const Field& field : m_fields) {
            const schema::Attribute& attribute = m_session.change().attributes[field.attribute];
            if (!attribute.is(schema::StorageClass::Constant))
                continue;
            const std::uint64_t code = attribute.absentCode(field.element);
            for (std::size_t at = field.offset; at < rows.size(); at += m_stride)
                if (std::memcmp(rows.data() + at, &code, sizeof code) != 0)
                    throw constantFailure(attribute);
        }
    }

    void apply(const session::Progress& progress) override {
        if (m_rows.empty())
            return;
        sortRows();
        session::State& pending = m_session.change();
        session::State changed = pending;
        const index::RowLayout layout(changed.attributes);
        PointWriter moved(m_session, PointWriter::Ids::Given);
        TreeEdit edit;
        edit.touches = [&](const index::Node& node) {
            return mayHold(node, pending.pointId(), m_ids);
        };
        edit.leaf = [&](const index::Node& leaf) { return editLeaf(leaf, pending, layout); };
        edit.taken = [&](EditedLeaf& edited) {
            if (edited.rows.empty())
                return;
            moved.points().append(layout, edited.rows);
            moved.finish();
        };
        editTree(m_session, changed, edit, progress);
        if (!moved.isEmpty())
            moved.applyTo(changed, progress);
        pending = std::move(changed);
        m_rows.clear();
        m_ids.clear();
        m_order.clear();
    }

private:
    std::uint64_t codeAt(std::size_t row, std::size_t offset) const {
        std::uint64_t code = 0;
        std::memcpy(&code, m_rows.data() + row * m_stride + offset, sizeof code);
        return code;
    }

    // The ids in ascending order with the last row of each.
    void sortRows() {
        m_order.resize(m_rows.size() / m_stride);
        std::iota(m_order.begin(), m_order.end(), std::size_t(0));
        std::stable_sort(m_order.begin(), m_order.end(), [this](std::size_t a, std::size_t b) {
            return codeAt(a, 0) < codeAt(b, 0);
        });
        std::size_t kept = 0;
        for (std::size_t i = 0; i < m_order.size(); ++i)
            if (i + 1 == m_order.size() || codeAt(m_order[i], 0) != codeAt(m_order[i + 1], 0))
                m_order[kept++] = m_order[i];
        m_order.resize(kept);
        m_ids.clear();
        for (const std::size_t row : m_order)
            m_ids.push_back(codeAt(row, 0));
    }

    EditedLeaf editLeaf(const index::Node& leaf, const session::State& state,
                        const index::RowLayout& layout) const {
        EditedLeaf edited(m_session.identity().settings.compressionLevel);
        const auto ids = blockOf(m_session, leaf, state.pointId(), 0);
        const std::vector<PointMatch> matches = matchIds(*ids, m_ids);
        if (matches.empty())
            return edited;
        if (m_movesPoints)
            takeOut(leaf, state, layout, matches, edited);
        else
            setCodes(leaf, state, matches, edited);
        return edited;
    }

    // Values of other attributes than the primary one change where they are.
    void setCodes(const index::Node& leaf, const session::State& state,
                  const std::vector<PointMatch>& matches, EditedLeaf& edited) const {
        edited.count = leaf.ownCount;
        edited.attributes = leaf.attributes;
        for (const Field& field : m_fields) {
            const schema::Attribute& attribute = state.attributes[field.attribute];
            if (!index::RowLayout::has(attribute))
                continue;
            schema::Column column = *readColumn(m_session, leaf, attribute, field.element);
            bool differs = false;
            for (const PointMatch& match : matches) {
                const std::uint64_t code = codeAt(m_order[match.id], field.offset);
                differs = differs || column[match.point] != code;
                column.set(match.point, code);
            }
            if (!differs)
                continue;
            edited.changed = true;
            setElement(edited, leaf, attribute, field.element, edited.blocks.add(attribute, column),
                       state.transaction.id);
        }
    }

    // Points that get a new position leave their leaf as whole rows.
    void takeOut(const index::Node& leaf, const session::State& state,
                 const index::RowLayout& layout, const std::vector<PointMatch>& matches,
                 EditedLeaf& edited) const {
        std::vector<std::uint32_t> points;
        for (const PointMatch& match : matches)
            points.push_back(match.point);
        edited.rows = readRows(m_session, leaf, state.attributes, layout, points);
        for (std::size_t i = 0; i < matches.size(); ++i)
            for (const Field& field : m_fields) {
                if (!index::RowLayout::has(state.attributes[field.attribute]))
                    continue;
                const std::uint64_t code = codeAt(m_order[matches[i].id], field.offset);
                const index::RowLayout::Field& target =
                    layout.fields()[layout.fieldOf(field.attribute) + field.element];
                std::memcpy(edited.rows.data() + i * layout.stride() + target.offset, &code,
                            target.width);
            }
        removePoints(m_session, state, leaf, points, edited);
    }

    session::Session& m_session;
    std::vector<Field> m_fields;
    std::size_t m_stride = 8;  // the id comes first; every code takes eight bytes
    bool m_movesPoints = false;
    std::vector<std::uint8_t> m_rows;
    std::vector<std::size_t> m_order;
    std::vector<std::uint64_t> m_ids;
};

UpdateQuery::UpdateQuery(session::Session& session) : m_session(session), m_guard(session) {}

void UpdateQuery::bind(std::string_view attribute, std::uint32_t type, const void* buffer,
                       std::int32_t stride) {
    if (m_change)
        throw Failure(ErrorCode::State, "The query has begun: buffers must be bound before.");
    const session::State& state = m_session.change();
    const Binding binding =
        makeBinding(state.attributes, attribute, type, const_cast<void*>(buffer), stride);
    if (binding.elements.attribute == state.pointIdIndex())
        m_id = binding;
    else
        m_bindings.push_back(binding);
}

std::uint32_t UpdateQuery::next(std::uint32_t count) {
    m_guard.check();
    const session::State& state = m_session.change();
    if (!m_id)
        throw Failure(ErrorCode::State, "An update needs to know which points: \"" +
                                            std::string(schema::pointIdName) + "\" is not bound.");
    if (!m_change)
        m_change = std::make_shared<Change>(m_session, m_bindings);
    // Before anything is taken: a call that fails has changed nothing.
    if (m_change->bytes() > std::max<std::uint64_t>(m_session.cacheSize() / 8, 1u << 20))
        m_session.settle();
    PointIds& known = PointIds::of(m_session);
    const auto ids = readIds(state.pointId(), *m_id, count);
    known.look(ids);
    const std::size_t stride = m_change->stride();
    std::vector<std::uint8_t> rows(count * stride);
    auto field = m_change->fields().begin();
    for (const Binding& binding : m_bindings) {
        const schema::Attribute& attribute = state.attributes[binding.elements.attribute];
        for (std::uint32_t e = 0; e < binding.elements.count; ++e, ++field)
            readCodes(attribute, binding.type, binding.buffer + e * sizeOfType(binding.type),
                      binding.stride, count, rows.data() + field->offset, stride);
    }
    // Only what is there goes on.
    std::uint32_t there = 0;
    for (std::uint32_t i = 0; i < count; ++i) {
        if (!ids[i] || !known.contains(*ids[i]))
            continue;
        std::uint8_t* row = rows.data() + there++ * stride;
        std::memmove(row, rows.data() + i * stride, stride);
        std::memcpy(row, &*ids[i], sizeof *ids[i]);
    }
    rows.resize(there * stride);
    m_change->checkConstants(rows);
    if (m_session.pendingChange() != m_change)
        m_session.setPendingChange(m_change);
    m_change->add(rows);
    m_session.changelog().notes().updated += there;
    return there;
}

}  // namespace tarvo::engine::query
