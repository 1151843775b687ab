#include "engine/query/levelofdetail.h"

#include "engine/index/builder.h"
#include "engine/index/shape.h"
#include "engine/query/blocks.h"
#include "engine/query/columns.h"
#include "engine/schema/lodmethod.h"

#include <algorithm>
#include <cmath>
#include <map>

namespace tarvo::engine::query {

namespace {

using session::LodMode;

// One point of a child that may stand for others.
struct Candidate {
    index::Key key;
    std::uint32_t child;
    std::uint32_t point;
};

// Points that become one: candidates [begin, end).
struct Group {
    std::size_t begin;
    std::size_t end;
};

// The value of a group by a method, from the codes of its points in the order of the index.
class Combiner {
public:
    Combiner(const schema::Attribute& attribute)
        : m_grid(attribute.grid), m_method(schema::lodMethod(attribute.record)) {}

    std::uint64_t combine(std::span<const std::uint64_t> codes) {
        if (m_method == schema::LodMethod::First)
            return codes[0];
        if (m_method == schema::LodMethod::Majority)
            return majority(codes);
        m_valid.clear();
        for (const std::uint64_t code : codes)
            if (!m_grid.isInvalid(code))
                m_valid.push_back(code);
        if (m_valid.empty())
            return m_grid.invalidCode();
        switch (m_method) {
            case schema::LodMethod::Minimum:
                return *std::min_element(m_valid.begin(), m_valid.end());
            case schema::LodMethod::Maximum:
                return *std::max_element(m_valid.begin(), m_valid.end());
            default:
                break;
        }
        const std::uint64_t mean = average();
        // An invalid code may lie among the valid ones: the mean must not become it.
        return m_grid.isInvalid(mean) ? m_valid[0] : mean;
    }

private:
    std::uint64_t majority(std::span<const std::uint64_t> codes) {
        m_valid.assign(codes.begin(), codes.end());
        std::sort(m_valid.begin(), m_valid.end());
        std::uint64_t best = m_valid[0];
        std::size_t most = 0;
        for (std::size_t begin = 0; begin < m_valid.size();) {
            std::size_t end = begin;
            while (end < m_valid.size() && m_valid[end] == m_valid[begin])
                ++end;
            if (end - begin > most) {
                most = end - begin;
                best = m_valid[begin];
            }
            begin = end;
        }
        return best;
    }

    std::uint64_t average() const {
        if (m_grid.kind() == schema::Grid::Kind::Float) {
            // Each divided first: the sum of large numbers would be infinite.
            double mean = 0;
            for (const std::uint64_t code : m_valid)
                mean += m_grid.value(code) / static_cast<double>(m_valid.size());
            const auto [least, greatest] = std::minmax_element(m_valid.begin(), m_valid.end());
            return m_grid.code(std::clamp(mean, m_grid.value(*least), m_grid.value(*greatest)));
        }
        schema::Grid::Wide sum = 0;
        for (const std::uint64_t code : m_valid)
            sum += code;
        const auto count = static_cast<schema::Grid::Wide>(m_valid.size());
        return static_cast<std::uint64_t>((sum + count / 2) / count);
    }

    const schema::Grid& m_grid;
    schema::LodMethod m_method;
    std::vector<std::uint64_t> m_valid;
};

class DetailBuilder {
public:
    DetailBuilder(session::Session& session, const session::State& state, bool everywhere,
                  const session::Progress& progress)
        : m_session(session),
          m_state(state),
          m_cells(session::cellsOf(session.identity().settings, state.primary())),
          m_space(m_cells.space),
          m_everywhere(everywhere),
          m_progress(progress),
          m_capacity(session::leafCapacity(session.identity().settings)),
          m_candidateLimit(std::max<std::uint64_t>(m_capacity * 16,
                                                   session.cacheSize() / 8 / sizeof(Candidate))) {}

    // Whether the node or one below changed.
    bool update(index::Node& node) {
        if (node.isLeaf()) {
            pass(node.totalCount);
            return false;
        }
        if (!m_everywhere && node.revision != m_state.transaction.id) {
            pass(node.totalCount);
            return false;
        }
        const bool paged = static_cast<bool>(node.childPage);
        std::vector<index::Node> page;
        if (paged)
            page = m_session.readPage(node.childPage);
        std::vector<index::Node>& children = paged ? page : node.children;
        index::requireCells(node, children, m_cells);
        bool below = false;
        for (index::Node& child : children)
            below = update(child) || below;
        if (paged && below)
            node.childPage = m_session.container().add(index::encodePage(children));
        const std::uint64_t before = node.ownCount;
        index::dropOwnPoints(node);
        if (m_state.chunkSizeLod > 0)
            makePoints(node, children);
        return below || before > 0 || node.ownCount > 0;
    }

private:
    void pass(std::uint64_t points) {
        m_passed += points;
        const auto percent = std::min<std::uint64_t>(
            99, m_passed * 100 / std::max<std::uint64_t>(1, m_state.pointCount));
        if (m_progress && !m_progress(static_cast<int>(percent)))
            throw Failure(ErrorCode::Cancelled, "Building the levels of detail was cancelled.",
                          "The transaction is still pending.");
    }

    // The points stored in the children in the order of their keys; of very many an even share.
    std::vector<Candidate> candidates(const std::vector<index::Node>& children) const {
        std::uint64_t all = 0;
        for (const index::Node& child : children)
            all += child.ownCount;
        std::vector<Candidate> result;
        const std::uint64_t wanted = std::min(all, m_candidateLimit);
        result.reserve(wanted);
        std::uint64_t at = 0;
        for (std::uint32_t c = 0; c < children.size(); ++c) {
            std::vector<std::shared_ptr<const schema::Column>> columns;
            for (unsigned d = 0; d < m_space.dimensions(); ++d)
                columns.push_back(readColumn(m_session, children[c], m_state.primary(), d));
            for (std::uint32_t p = 0; p < children[c].ownCount; ++p, ++at) {
                if (share(at, wanted, all) == share(at + 1, wanted, all))
                    continue;
                std::uint64_t codes[index::maximumDimensions] = {};
                for (unsigned d = 0; d < m_space.dimensions(); ++d)
                    codes[d] = (*columns[d])[p];
                result.push_back({m_space.key(codes), c, p});
            }
        }
        std::sort(result.begin(), result.end(), [](const Candidate& a, const Candidate& b) {
            if (a.key != b.key)
                return a.key < b.key;
            return a.child != b.child ? a.child < b.child : a.point < b.point;
        });
        return result;
    }

    // How many of the first `at` of `all` belong to an even choice of `wanted`.
    static std::uint64_t share(std::uint64_t at, std::uint64_t wanted, std::uint64_t all) {
        __extension__ typedef unsigned __int128 Wide;
        return all == 0 ? 0 : static_cast<std::uint64_t>(Wide(at) * wanted / all);
    }

    std::vector<Group> thinOut(std::size_t count) const {
        const std::uint64_t wanted = std::clamp<std::uint64_t>(count * m_state.chunkSizeLod / 100,
                                                               count > 0 ? 1 : 0, m_capacity);
        std::vector<Group> groups;
        for (std::size_t i = 0; i < count; ++i)
            if (share(i, wanted, count) != share(i + 1, wanted, count))
                groups.push_back({i, i + 1});
        return groups;
    }

    std::vector<Group> cells(const std::vector<Candidate>& points, unsigned level) const {
        std::vector<Group> groups;
        for (std::size_t i = 0; i < points.size(); ++i) {
            if (groups.empty() || m_space.first(points[i].key, level) !=
                                      m_space.first(points[groups.back().begin].key, level))
                groups.push_back({i, i});
            groups.back().end = i + 1;
        }
        return groups;
    }

    std::vector<Group> combine(const index::Node& node,
                               const std::vector<Candidate>& points) const {
        // The grid divides the smallest cell that holds all of them.
        unsigned level = node.level;
        while (level < m_space.depth() && m_space.first(points.front().key, level + 1) ==
                                              m_space.first(points.back().key, level + 1))
            ++level;
        for (std::uint32_t size = m_state.chunkSizeLod;; --size) {
            std::vector<Group> groups =
                cells(points, std::min<unsigned>(level + size, m_space.depth()));
            if (size == 1 || groups.size() <= m_capacity)
                return groups;
        }
    }

    // The column of one element over the groups.
    schema::Column combineColumn(const std::vector<index::Node>& children,
                                 const schema::Attribute& attribute, std::uint32_t element,
                                 const std::vector<Candidate>& points,
                                 const std::vector<Group>& groups) const {
        std::vector<std::shared_ptr<const schema::Column>> columns;
        for (const index::Node& child : children)
            columns.push_back(readColumn(m_session, child, attribute, element));
        schema::Column result(attribute.grid.width(), groups.size());
        Combiner combiner(attribute);
        std::vector<std::uint64_t> codes;
        for (std::size_t g = 0; g < groups.size(); ++g) {
            codes.clear();
            for (std::size_t i = groups[g].begin; i < groups[g].end; ++i)
                codes.push_back((*columns[points[i].child])[points[i].point]);
            result.set(g, codes.size() == 1 ? codes[0] : combiner.combine(codes));
        }
        return result;
    }

    void makePoints(index::Node& node, const std::vector<index::Node>& children) {
        const std::vector<Candidate> points = candidates(children);
        if (points.empty())
            return;
        const bool thins = m_state.lodMode == static_cast<std::uint32_t>(LodMode::Thinout);
        const std::vector<Group> groups = thins ? thinOut(points.size()) : combine(node, points);
        struct Work {
            index::ElementData* element;
            const schema::Attribute* attribute;
            Task<schema::Column> column;
        };
        std::vector<Work> work;
        for (index::AttributeData& data : node.attributes) {
            const int index = m_state.attributes.findUid(data.uid);
            if (index < 0)
                continue;
            const schema::Attribute& attribute =
                m_state.attributes[static_cast<std::size_t>(index)];
            for (std::uint32_t e = 0; e < data.elements.size(); ++e)
                // Without a block the statistics stand for all points, also for these.
                if (!isUniform(data.elements[e].statistics))
                    work.push_back({&data.elements[e], &attribute, m_session.pool().run([&, e] {
                                        return combineColumn(children, attribute, e, points,
                                                             groups);
                                    })});
        }
        BlockWriter blocks(m_session.identity().settings.compressionLevel);
        for (Work& one : work)
            one.element->block = blocks.addBlock(*one.attribute, one.column.get());
        node.ownCount = groups.size();
        blocks.store(m_session.container(), node.attributes);
    }

    session::Session& m_session;
    const session::State& m_state;
    const index::Cells m_cells;
    const index::KeySpace& m_space;
    bool m_everywhere;
    const session::Progress& m_progress;
    std::uint64_t m_capacity;
    std::uint64_t m_candidateLimit;
    std::uint64_t m_passed = 0;
};

}  // namespace

void updateLevelOfDetail(session::Session& session, const session::Progress& progress) {
    session::State& state = session.change();
    const session::State& base = session.base();
    const bool changed = state.lodMode != base.lodMode || state.chunkSizeLod != base.chunkSizeLod;
    if (!state.rootPage || (state.chunkSizeLod == 0 && base.chunkSizeLod == 0))
        return;
    const store::Container::ReadScope scope(session.container());
    index::Node root = session.rootNode(state);
    if (DetailBuilder(session, state, changed, progress).update(root))
        state.rootPage = session.container().add(index::encodePage({root}));
}

}  // namespace tarvo::engine::query
