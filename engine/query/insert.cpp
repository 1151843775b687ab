#include "engine/query/insert.h"

#include <cstring>

namespace tarvo::engine::query {

InsertQuery::InsertQuery(session::Session& session)
    : m_session(session),
      m_writer(PointWriter::of(session)),
      m_transaction(session.change().transaction.id) {}

void InsertQuery::bind(std::string_view attribute, std::uint32_t type, const void* buffer,
                       std::int32_t stride) {
    const schema::AttributeTable& table = m_session.change().attributes;
    Binding binding = makeBinding(table, attribute, type, const_cast<void*>(buffer), stride);
    if (table[binding.elements.attribute].record.name == schema::pointIdName)
        throw Failure(ErrorCode::NotAvailable,
                      "Inserting points with ids of their own is not available yet.",
                      "Leave \"" + std::string(schema::pointIdName) +
                          "\" unbound: every point gets the next free id.");
    m_bindings.push_back(binding);
}

void InsertQuery::bindId(std::uint32_t type, void* buffer, std::int32_t stride) {
    m_id = makeBinding(m_session.change().attributes, schema::pointIdName, type, buffer, stride);
}

std::uint32_t InsertQuery::next(std::uint32_t count) {
    session::State& state = m_session.change();
    if (state.transaction.id != m_transaction)
        throw Failure(ErrorCode::State, "The transaction of this insert query has ended.",
                      "Make a new query in the new transaction.");
    if (!m_writer->fits(state))
        throw Failure(ErrorCode::State,
                      "The point attributes changed since this insert query was made.",
                      "Make a new query.");
    if (count == 0)
        return 0;
    const index::RowLayout& layout = m_writer->layout();
    const std::size_t stride = layout.stride();
    std::uint8_t* const rows = m_writer->addRows(count);
    try {
        std::vector<bool> bound(layout.fields().size());
        for (const Binding& binding : m_bindings) {
            const schema::Attribute& attribute = state.attributes[binding.elements.attribute];
            const std::size_t size = sizeOfType(binding.type);
            for (std::uint32_t e = 0; e < binding.elements.count; ++e) {
                const std::size_t field =
                    layout.fieldOf(binding.elements.attribute) + binding.elements.first + e;
                readCodes(attribute, binding.type, binding.buffer + e * size, binding.stride, count,
                          rows + layout.fields()[field].offset, stride);
                bound[field] = true;
            }
        }
        for (std::size_t a = 0; a < state.attributes.size(); ++a) {
            const schema::Attribute& attribute = state.attributes[a];
            const bool isId = a == state.pointIdIndex();
            for (std::uint32_t e = 0; e < attribute.record.length; ++e) {
                const index::RowLayout::Field& field = layout.fields()[layout.fieldOf(a) + e];
                if (!isId && bound[layout.fieldOf(a) + e])
                    continue;
                std::uint64_t code =
                    isId ? attribute.grid.code(static_cast<schema::Grid::Wide>(state.nextPointId))
                         : attribute.defaultCode();
                if (isId)  // the last one must have a place too
                    (void)attribute.grid.code(static_cast<schema::Grid::Wide>(state.nextPointId) +
                                              count - 1);
                std::uint8_t* row = rows + field.offset;
                for (std::uint32_t i = 0; i < count; ++i, row += stride, code += isId ? 1 : 0)
                    std::memcpy(row, &code, field.width);
            }
        }
        if (m_id) {
            const schema::Attribute& id = state.pointId();
            const std::uint64_t first =
                id.grid.code(static_cast<schema::Grid::Wide>(state.nextPointId));
            for (std::uint32_t i = 0; i < count; ++i)
                writeValue(id, first + i, m_id->type, m_id->buffer + i * m_id->stride);
        }
    } catch (...) {
        m_writer->dropRows(count);
        throw;
    }
    state.nextPointId += count;
    m_writer->finishRows(rows, count);
    return count;
}

}  // namespace tarvo::engine::query
