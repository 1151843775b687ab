#include "engine/query/insert.h"

#include "engine/query/pointids.h"

#include <algorithm>
#include <cstring>

namespace tarvo::engine::query {

namespace {

// Takes the ids of new points; gives them back unless they are kept.
class ClaimedIds {
public:
    ClaimedIds(session::Session& session, const std::vector<std::uint64_t>& ids, bool own) {
        const session::State& state = session.change();
        // A copy: reading the ids that are there may replace the state's attributes.
        const schema::Grid grid = state.pointId().grid;
        // Ids behind all others, each behind the one before, are free for sure.
        schema::Grid::Wide next = state.nextPointId;
        bool free = true;
        for (const std::uint64_t id : ids) {
            free = free && !grid.isInvalid(id) && grid.integerValue(id) >= next;
            next = grid.integerValue(id) + 1;
        }
        m_known = !own || free ? PointIds::ifKnown(session) : &PointIds::of(session);
        if (!m_known)
            return;
        try {
            for (const std::uint64_t id : ids) {
                if (grid.isInvalid(id))
                    throw Failure(ErrorCode::Range, "A point without an id can't be inserted.");
                if (!m_known->ids.insert(id))
                    throw Failure(
                        ErrorCode::Exists,
                        "The database has a point with the id " +
                            std::to_string(static_cast<std::uint64_t>(grid.integerValue(id))) +
                            " already.",
                        "Ids are unique: update the point, or give the new one another id.");
                m_claimed.push_back(id);
            }
        } catch (...) {
            giveBack();
            throw;
        }
    }
    ~ClaimedIds() { giveBack(); }
    ClaimedIds(const ClaimedIds&) = delete;
    ClaimedIds& operator=(const ClaimedIds&) = delete;
    void keep() { m_claimed.clear(); }

private:
    void giveBack() {
        for (const std::uint64_t id : m_claimed)
            m_known->ids.erase(id);
    }
    PointIds* m_known = nullptr;
    std::vector<std::uint64_t> m_claimed;
};

}  // namespace

InsertQuery::InsertQuery(session::Session& session) : m_session(session), m_guard(session) {}

void InsertQuery::bind(std::string_view attribute, std::uint32_t type, const void* buffer,
                       std::int32_t stride) {
    const session::State& state = m_session.change();
    const Binding binding =
        makeBinding(state.attributes, attribute, type, const_cast<void*>(buffer), stride);
    m_ownIds = m_ownIds || binding.elements.attribute == state.pointIdIndex();
    m_bindings.push_back(binding);
}

void InsertQuery::bindId(std::uint32_t type, void* buffer, std::int32_t stride) {
    if (m_session.identity().settings.optimizePointId)
        throw Failure(ErrorCode::State,
                      "The ids of new points are not known before they are in the index: this "
                      "database gives ids in the order of its index.",
                      "Read the ids with a select, or create the database without optimized ids.");
    m_id = makeBinding(m_session.change().attributes, schema::pointIdName, type, buffer, stride);
}

// The codes of the ids of the new points: own ones, else the next ones.
std::vector<std::uint64_t> InsertQuery::readIds(std::uint32_t count) const {
    const session::State& state = m_session.change();
    const schema::Attribute& id = state.pointId();
    std::vector<std::uint64_t> ids(count);
    if (m_ownIds) {
        for (const Binding& binding : m_bindings)
            if (binding.elements.attribute == state.pointIdIndex())
                readCodes(id, binding.type, binding.buffer, binding.stride, count,
                          reinterpret_cast<std::uint8_t*>(ids.data()), sizeof ids[0]);
        return ids;
    }
    const auto first = static_cast<schema::Grid::Wide>(state.nextPointId);
    const std::uint64_t firstCode = id.grid.code(first);
    (void)id.grid.code(first + count - 1);  // the last one must have a place too
    for (std::uint32_t i = 0; i < count; ++i)
        ids[i] = firstCode + i;
    return ids;
}

// The attributes with one value for the whole file, with that of these points; throws where the
// file has another one.
std::vector<schema::Attribute> InsertQuery::readConstants(std::uint32_t count) const {
    std::vector<schema::Attribute> result;
    const session::State& state = m_session.change();
    for (std::size_t a = 0; a < state.attributes.size(); ++a) {
        const schema::Attribute& attribute = state.attributes[a];
        if (!attribute.is(schema::StorageClass::Constant))
            continue;
        const std::uint32_t length = attribute.record.length;
        std::vector<std::uint64_t> codes(length);
        for (std::uint32_t e = 0; e < length; ++e)
            codes[e] = attribute.absentCode(e);
        std::vector<std::uint64_t> read(count);
        for (const Binding& binding : m_bindings) {
            if (binding.elements.attribute != a)
                continue;
            for (std::uint32_t e = 0; e < binding.elements.count; ++e) {
                std::fill(read.begin(), read.end(), 0);
                readCodes(attribute, binding.type, binding.buffer + e * sizeOfType(binding.type),
                          binding.stride, count, reinterpret_cast<std::uint8_t*>(read.data()),
                          sizeof read[0]);
                std::uint64_t& code = codes[binding.elements.first + e];
                if (attribute.constant.empty())
                    code = read[0];
                if (std::any_of(read.begin(), read.end(),
                                [&](std::uint64_t other) { return other != code; }))
                    throw constantFailure(attribute);
            }
        }
        if (attribute.constant.empty()) {
            result.push_back(attribute);
            result.back().constant = std::move(codes);
        }
    }
    return result;
}

void InsertQuery::fillRows(std::uint8_t* rows, const index::RowLayout& layout,
                           const std::vector<std::uint64_t>& ids) const {
    const session::State& state = m_session.change();
    const std::size_t stride = layout.stride();
    const auto count = static_cast<std::uint32_t>(ids.size());
    std::vector<bool> bound(layout.fields().size());
    const auto fill = [&](const index::RowLayout::Field& field, auto codeOf) {
        std::uint8_t* row = rows + field.offset;
        for (std::uint32_t i = 0; i < count; ++i, row += stride) {
            const std::uint64_t code = codeOf(i);
            std::memcpy(row, &code, field.width);
        }
    };
    for (const Binding& binding : m_bindings) {
        const schema::Attribute& attribute = state.attributes[binding.elements.attribute];
        if (!index::RowLayout::has(attribute))
            continue;
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
        if (!index::RowLayout::has(attribute) || a == state.pointIdIndex())
            continue;
        for (std::uint32_t e = 0; e < attribute.record.length; ++e)
            if (const std::size_t field = layout.fieldOf(a) + e; !bound[field])
                fill(layout.fields()[field],
                     [code = attribute.defaultCode()](std::uint32_t) { return code; });
    }
    fill(layout.idField(), [&ids](std::uint32_t i) { return ids[i]; });
}

std::uint32_t InsertQuery::next(std::uint32_t count) {
    m_guard.check();
    session::State& state = m_session.change();
    if (count == 0)
        return 0;
    const std::vector<std::uint64_t> ids = readIds(count);
    std::vector<schema::Attribute> constants = readConstants(count);
    ClaimedIds claimed(m_session, ids, m_ownIds);
    const auto writer = PointWriter::of(
        m_session, m_ownIds ? PointWriter::Ids::Given : PointWriter::Ids::Automatic);
    std::uint8_t* const rows = writer->addRows(count);
    try {
        fillRows(rows, writer->layout(), ids);
        if (m_id)
            for (std::uint32_t i = 0; i < count; ++i)
                writeValue(state.pointId(), ids[i], m_id->type, m_id->buffer + i * m_id->stride);
    } catch (...) {
        writer->dropRows(count);
        throw;
    }
    claimed.keep();
    const schema::Grid& grid = state.pointId().grid;
    const std::uint64_t largest = *std::max_element(ids.begin(), ids.end());
    state.nextPointId =
        std::max(state.nextPointId, static_cast<std::uint64_t>(grid.integerValue(largest) + 1));
    for (schema::Attribute& attribute : constants) {
        const int index = state.attributes.findUid(attribute.uid);
        state.attributes.all()[static_cast<std::size_t>(index)] = std::move(attribute);
        state.attributesBlob = {};
    }
    m_session.changelog().notes().inserted += count;
    writer->finishRows(rows, count);
    return count;
}

}  // namespace tarvo::engine::query
