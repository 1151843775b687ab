#include "engine/query/insert.h"

#include "engine/query/pointids.h"

#include <algorithm>

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
        if (own && !free)
            m_known->look(ids);
        try {
            for (const std::uint64_t id : ids) {
                if (grid.isInvalid(id))
                    throw Failure(ErrorCode::Range, "A point without an id can't be inserted.");
                if (!m_known->insert(id))
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
            m_known->giveBack(id);
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

namespace {

// What the codes of an element come from.
struct Source {
    std::uint32_t type;
    const std::uint8_t* values;
    std::ptrdiff_t stride;
};

// An element of an attribute and its column; without sources its points get the default value.
struct Target {
    const schema::Attribute* attribute;
    index::PackedColumn* column;
    std::vector<Source> sources;  // the last one counts
};

void appendCodes(const Target& target, std::size_t count) {
    if (target.sources.empty()) {
        target.column->appendConstant(target.attribute->defaultCode(), count);
        return;
    }
    // In pieces that stay in the processor's cache.
    constexpr std::size_t piece = 4096;
    const unsigned width = target.column->width();
    schema::Column codes;
    for (std::size_t begin = 0; begin < count; begin += piece) {
        if (const std::size_t size = std::min(piece, count - begin); codes.size() != size)
            codes = schema::Column(width, size);
        for (const Source& source : target.sources)
            codes.visit([&](auto typed) {
                readCodes(*target.attribute, source.type,
                          source.values + static_cast<std::ptrdiff_t>(begin) * source.stride,
                          source.stride, typed.size(),
                          reinterpret_cast<std::uint8_t*>(typed.data()), width);
            });
        target.column->append(codes);
    }
}

}  // namespace

void InsertQuery::addPoints(PointWriter& writer, const std::vector<std::uint64_t>& ids) const {
    const session::State& state = m_session.change();
    index::PointColumns& points = writer.points();
    const index::RowLayout& layout = writer.layout();
    // Those that are bound come first, as they were bound: what is wrong with the first is told.
    std::vector<Target> targets;
    std::vector<std::size_t> targetOf(layout.fields().size(), SIZE_MAX);
    const auto targetFor = [&](std::size_t attribute, std::uint32_t element) -> Target& {
        const std::size_t field = layout.fieldOf(attribute) + element;
        if (targetOf[field] == SIZE_MAX) {
            targetOf[field] = targets.size();
            targets.push_back({&state.attributes[attribute], &points.columns[field], {}});
        }
        return targets[targetOf[field]];
    };
    for (const Binding& binding : m_bindings) {
        const std::size_t attribute = binding.elements.attribute;
        if (!index::RowLayout::has(state.attributes[attribute]) ||
            attribute == state.pointIdIndex())
            continue;
        for (std::uint32_t e = 0; e < binding.elements.count; ++e)
            targetFor(attribute, binding.elements.first + e)
                .sources.push_back(
                    {binding.type, binding.buffer + e * sizeOfType(binding.type), binding.stride});
    }
    for (std::size_t a = 0; a < state.attributes.size(); ++a)
        if (index::RowLayout::has(state.attributes[a]) && a != state.pointIdIndex())
            for (std::uint32_t e = 0; e < state.attributes[a].record.length; ++e)
                targetFor(a, e);
    try {
        const auto append = [&](std::size_t i) { appendCodes(targets[i], ids.size()); };
        // So few points are read before another thread knows of them.
        constexpr std::size_t few = 2048;
        if (ids.size() < few)
            for (std::size_t i = 0; i < targets.size(); ++i)
                append(i);
        else
            m_session.pool().forEach(targets.size(), append);
        points.columns[layout.idField()].append(std::span(ids));
        if (m_id)
            for (std::size_t i = 0; i < ids.size(); ++i)
                writeValue(state.pointId(), ids[i], m_id->type,
                           m_id->buffer + static_cast<std::ptrdiff_t>(i) * m_id->stride);
    } catch (...) {
        points.truncate(points.count);
        throw;
    }
    points.count += ids.size();
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
    addPoints(*writer, ids);
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
    writer->finish();
    return count;
}

}  // namespace tarvo::engine::query
