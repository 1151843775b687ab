#include "engine/query/levelofdetail.h"

#include "engine/index/builder.h"
#include "engine/index/shape.h"
#include "engine/query/blocks.h"
#include "engine/query/columns.h"
#include "engine/query/combiner.h"
#include "engine/query/treeedit.h"
#include "numbers/wide.h"

#include <algorithm>
#include <functional>
#include <optional>

namespace tarvo::engine::query {

namespace {

using numbers::Wide;
using session::LodMode;

// One point of a child that may stand for others.
struct Candidate {
    index::Key key;
    std::uint64_t weight;  // the points that it stands for already
    std::uint32_t child;
    std::uint32_t point;
};

schema::Attribute weightsOfNumber(std::uint32_t uid) {
    schema::AttributeRecord record;
    record.name = "weight";
    record.length = 1;
    record.maximumValue = 9223372036854775808.0;
    record.defaultValue = 1;
    record.storageClass = static_cast<std::uint8_t>(schema::StorageClass::Variable);
    return {record, uid};
}

// How many points each point of an inner node stands for, kept beside its values.
const schema::Attribute& weights() {
    static const schema::Attribute attribute = weightsOfNumber(index::weightUid);
    return attribute;
}

// One element of an attribute over the points that are made.
struct Combined {
    schema::Column codes;
    // The points with a valid value that each stands for, where an average further up needs them.
    std::optional<schema::Column> validWeights;
};

// Points that become one: candidates [begin, end).
struct Group {
    std::size_t begin;
    std::size_t end;
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
          m_thins(state.lodMode == static_cast<std::uint32_t>(LodMode::Thinout)),
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
            page = m_session.blobs().readPage(node.childPage);
        std::vector<index::Node>& children = paged ? page : node.children;
        index::requireCells(node, children, m_cells);
        bool below = false;
        for (index::Node& child : children)
            below = update(child) || below;
        if (paged && below)
            node.childPage = m_session.blobs().add(index::encodePage(children));
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
            const auto weight = weightsOf(children[c]);
            for (std::uint32_t p = 0; p < children[c].ownCount; ++p, ++at) {
                if (share(at, wanted, all) == share(at + 1, wanted, all))
                    continue;
                std::uint64_t codes[index::maximumDimensions] = {};
                for (unsigned d = 0; d < m_space.dimensions(); ++d)
                    codes[d] = (*columns[d])[p];
                result.push_back({m_space.key(codes), weight(p), c, p});
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
        return all == 0 ? 0 : static_cast<std::uint64_t>(Wide(at) * wanted / all);
    }

    // What each point that a node stores stands for, where that is asked.
    std::function<std::uint64_t(std::uint32_t)> weightsOf(const index::Node& node) const {
        if (m_thins)
            return [](auto) { return std::uint64_t(1); };
        if (!node.isLeaf() && !node.find(index::weightUid))
            return [each = node.totalCount / std::max<std::uint64_t>(1, node.ownCount)](auto) {
                return each;
            };
        return [column = readColumn(m_session, node, weights(), 0)](std::uint32_t point) {
            return std::max<std::uint64_t>(1, (*column)[point]);
        };
    }

    // Of the points that a node stores, those with a valid value that each stands for; null where
    // all have one, or none has.
    std::shared_ptr<const schema::Column> validWeightsOf(const index::Node& node,
                                                         const schema::Attribute& attribute,
                                                         std::uint32_t element) const {
        const index::AttributeData* data = node.find(index::validWeightUid(attribute.uid));
        if (!data || element >= data->elements.size() ||
            !data->elements[element].statistics.hasValid)
            return nullptr;
        return readColumn(m_session, node, weightsOfNumber(data->uid), element);
    }

    // Every child gets its share by the points below it, spread evenly over what it stores.
    std::vector<Group> thinOut(const std::vector<index::Node>& children,
                               const std::vector<Candidate>& points) const {
        std::vector<std::uint64_t> firsts;  // of each child, in the count of all points below
        std::uint64_t all = 0;
        for (const index::Node& child : children) {
            firsts.push_back(all);
            all += child.totalCount;
        }
        std::vector<std::uint64_t> stored(children.size());
        for (const Candidate& point : points)
            ++stored[point.child];
        const std::uint64_t wanted =
            std::clamp<std::uint64_t>(share(all, m_state.chunkSizeLod, 100), 1, m_capacity);
        std::vector<std::uint64_t> passed(children.size());
        std::vector<Group> groups;
        for (std::size_t i = 0; i < points.size(); ++i) {
            const std::uint32_t child = points[i].child;
            // How many are chosen up to this point of the child.
            const auto reached = [&](std::uint64_t at) {
                const Wide place =
                    Wide(firsts[child]) * stored[child] + Wide(at) * children[child].totalCount;
                return place * wanted / (Wide(stored[child]) * all);
            };
            const std::uint64_t at = passed[child]++;
            if (reached(at) != reached(at + 1))
                groups.push_back({i, i + 1});
        }
        // Fewer points than a share, and rounding let all of them pass.
        if (groups.empty())
            groups.push_back({0, 1});
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

    // someInvalid: points below have no valid value, and others have one.
    Combined combineColumn(const std::vector<index::Node>& children,
                           const schema::Attribute& attribute, std::uint32_t element,
                           bool someInvalid, const std::vector<Candidate>& points,
                           const std::vector<Group>& groups) const {
        const bool weighsValid = !m_thins && someInvalid &&
                                 schema::lodMethod(attribute.record) == schema::LodMethod::Average;
        std::vector<std::shared_ptr<const schema::Column>> columns;
        std::vector<std::shared_ptr<const schema::Column>> validWeights(children.size());
        for (std::size_t c = 0; c < children.size(); ++c) {
            columns.push_back(readColumn(m_session, children[c], attribute, element));
            if (weighsValid)
                validWeights[c] = validWeightsOf(children[c], attribute, element);
        }
        Combined result{schema::Column(attribute.grid.width(), groups.size()), {}};
        if (weighsValid)
            result.validWeights.emplace(weights().grid.width(), groups.size());
        Combiner combiner(attribute);
        std::vector<WeightedCode> codes;
        for (std::size_t g = 0; g < groups.size(); ++g) {
            codes.clear();
            std::uint64_t valid = 0;
            for (std::size_t i = groups[g].begin; i < groups[g].end; ++i) {
                const Candidate& point = points[i];
                const schema::Column* const own = validWeights[point.child].get();
                codes.push_back(
                    {(*columns[point.child])[point.point],
                     own ? std::max<std::uint64_t>(1, (*own)[point.point]) : point.weight});
                if (weighsValid && !attribute.grid.isInvalid(codes.back().code))
                    valid += codes.back().weight;
            }
            result.codes.set(g, codes.size() == 1 ? codes[0].code : combiner.combine(codes));
            if (weighsValid)
                result.validWeights->set(g, valid);
        }
        return result;
    }

    index::AttributeData weightData(const std::vector<Candidate>& points,
                                    const std::vector<Group>& groups, BlockWriter& blocks) const {
        schema::Column column(weights().grid.width(), groups.size());
        for (std::size_t g = 0; g < groups.size(); ++g) {
            std::uint64_t sum = 0;
            for (std::size_t i = groups[g].begin; i < groups[g].end; ++i)
                sum += points[i].weight;
            column.set(g, sum);
        }
        return {index::weightUid, m_state.transaction.id, {blocks.add(weights(), column)}};
    }

    void makePoints(index::Node& node, const std::vector<index::Node>& children) {
        const std::vector<Candidate> points = candidates(children);
        if (points.empty())
            return;
        const std::vector<Group> groups =
            m_thins ? thinOut(children, points) : combine(node, points);
        struct Work {
            index::AttributeData* data;
            std::uint32_t element;
            const schema::Attribute* attribute;
            Task<Combined> combined;
        };
        std::vector<Work> work;
        for (index::AttributeData& data : node.attributes) {
            const int index = m_state.attributes.findUid(data.uid);
            if (index < 0)
                continue;
            const schema::Attribute& attribute =
                m_state.attributes[static_cast<std::size_t>(index)];
            for (std::uint32_t e = 0; e < data.elements.size(); ++e) {
                const schema::ElementStatistics& statistics = data.elements[e].statistics;
                const bool someInvalid = statistics.hasValid && statistics.hasInvalid;
                // Without a block the statistics stand for all points, also for these.
                if (!isUniform(statistics))
                    work.push_back({&data, e, &attribute, m_session.pool().run([&, e, someInvalid] {
                                        return combineColumn(children, attribute, e, someInvalid,
                                                             points, groups);
                                    })});
            }
        }
        BlockWriter blocks(m_session.identity().settings.compressionLevel);
        std::vector<index::AttributeData> validWeights;
        for (Work& one : work) {
            const Combined combined = one.combined.get();
            one.data->elements[one.element].block = blocks.addBlock(*one.attribute, combined.codes);
            if (!combined.validWeights)
                continue;
            const std::uint32_t uid = index::validWeightUid(one.data->uid);
            if (validWeights.empty() || validWeights.back().uid != uid)
                validWeights.push_back(
                    {uid, m_state.transaction.id,
                     std::vector<index::ElementData>(one.data->elements.size())});
            validWeights.back().elements[one.element] =
                blocks.add(weights(), *combined.validWeights);
        }
        node.ownCount = groups.size();
        if (!m_thins)
            putAttribute(node.attributes, weightData(points, groups, blocks));
        for (index::AttributeData& data : validWeights)
            putAttribute(node.attributes, std::move(data));
        blocks.store(m_session.blobs(), node.attributes);
    }

    session::Session& m_session;
    const session::State& m_state;
    const index::Cells m_cells;
    const index::KeySpace& m_space;
    bool m_everywhere;
    bool m_thins;
    const session::Progress& m_progress;
    std::uint64_t m_capacity;
    std::uint64_t m_candidateLimit;
    std::uint64_t m_passed = 0;
};

}  // namespace

void updateLevelOfDetail(session::Session& session, const session::Progress& progress) {
    session::State& state = session.change();
    const session::State& base = session.base();
    const bool changed = state.detailIsStale || state.lodMode != base.lodMode ||
                         state.chunkSizeLod != base.chunkSizeLod;
    if (state.rootPage && (state.chunkSizeLod != 0 || base.chunkSizeLod != 0)) {
        const session::Blobs::Scope scope(session.blobs());
        index::Node root = session.blobs().rootNode(state);
        if (DetailBuilder(session, state, changed, progress).update(root))
            state.rootPage = session.blobs().add(index::encodePage({root}));
    }
    // Not before: a commit that was cancelled meanwhile has to begin anew.
    state.detailIsStale = false;
}

}  // namespace tarvo::engine::query
