#include "engine/base/interruption.h"
#include "engine/index/shape.h"
#include "engine/query/blocks.h"
#include "engine/query/columns.h"
#include "engine/report/checkreading.h"

#include <algorithm>
#include <array>
#include <deque>

namespace tarvo::engine::report {

namespace {

using index::Node;
using schema::Attribute;
using schema::ElementStatistics;

constexpr std::size_t mostDepth = 256;
constexpr unsigned nodesPerScope = 256;

// A node whose blocks are read on a worker.
struct NodeWork {
    std::shared_ptr<const index::Page> page;  // keeps the node alive
    const Node* node = nullptr;
    std::vector<bool> isNew;  // of each element of each attribute of the node
};
struct NodeResult {
    std::vector<Fault> faults;
    std::shared_ptr<const schema::Column> ids;  // of the points; null: not read
};

// Compares one node with its blocks. On a worker.
class NodeCheck {
public:
    NodeCheck(session::Session& session, const session::State& state, bool hasTable,
              const index::KeySpace* space, const NodeWork& work)
        : m_session(session), m_state(state), m_space(space), m_work(work), m_node(*work.node) {
        m_hasTable = hasTable;
    }

    NodeResult run() {
        std::size_t at = 0;
        for (const index::AttributeData& data : m_node.attributes) {
            const int index = m_hasTable ? m_state.attributes.findUid(data.uid) : -1;
            const Attribute* const attribute =
                index < 0 ? nullptr : &m_state.attributes[static_cast<std::size_t>(index)];
            if (attribute && data.elements.size() != attribute->record.length)
                fault(Fault::Kind::Index, *attribute, {}, "it has another length in the node");
            for (std::uint32_t e = 0; e < data.elements.size(); ++e, ++at)
                if (attribute && e < attribute->record.length)
                    checkElement(*attribute, e, data.elements[e], m_work.isNew[at]);
                else if (m_work.isNew[at])
                    readUnknown(data.elements[e].block, e);
        }
        if (m_node.isLeaf())
            checkKeys();
        return std::move(m_result);
    }

private:
    Fault place(Fault::Kind kind, const std::string& name,
                std::optional<std::uint32_t> element) const {
        Fault fault;
        fault.kind = kind;
        fault.transaction = m_state.transaction.id;
        fault.name = name;
        fault.element = element;
        fault.node = m_node.id;
        return fault;
    }
    void fault(Fault::Kind kind, const Attribute& attribute, std::optional<std::uint32_t> element,
               const std::string& what) {
        Fault found = place(kind, attribute.record.name, element);
        found.text = "The file is damaged: " + what + ".";
        m_result.faults.push_back(std::move(found));
    }

    // A block without definition.
    void readUnknown(const BlobRef& block, std::uint32_t element) {
        try {
            (void)m_session.blobs().read(block, "a block of a point attribute");
        } catch (const Failure& failure) {
            addFailure({}, element, failure);
        }
    }
    void addFailure(const std::string& name, std::uint32_t element, const Failure& failure) {
        m_result.faults.push_back(
            CheckReading::faultOf(place(Fault::Kind::Block, name, element), failure));
    }

    void checkElement(const Attribute& attribute, std::uint32_t e,
                      const index::ElementData& element, bool isNew) {
        const schema::Grid& grid = attribute.grid;
        const ElementStatistics& statistics = element.statistics;
        if (statistics.hasValid && statistics.maximum > grid.maximumCode() &&
            !grid.isInvalid(statistics.maximum))
            fault(Fault::Kind::Index, attribute, e, "the node has values beyond their range");
        if (m_node.ownCount == 0)
            return;
        if (!element.block) {
            if (!query::isUniform(statistics))
                fault(Fault::Kind::Index, attribute, e, "the node lacks its block");
            else if (statistics.hasValid)
                keep(attribute, e,
                     std::make_shared<const schema::Column>(
                         uniform(grid.width(), statistics.minimum)));
            return;
        }
        if (!isNew)
            return;
        std::shared_ptr<const schema::Column> column;
        try {
            column = std::make_shared<const schema::Column>(
                query::readBlock(m_session, m_node, attribute, e).column());
        } catch (const Failure& failure) {
            addFailure(attribute.record.name, e, failure);
            return;
        }
        const ElementStatistics found = schema::statistics(*column, grid);
        if (found.hasValid && found.maximum > grid.maximumCode())
            fault(Fault::Kind::Block, attribute, e, "the block has values beyond their range");
        else if (m_node.isLeaf() && found != statistics)
            fault(Fault::Kind::Block, attribute, e,
                  "the block has other least and greatest values than the node tells");
        keep(attribute, e, std::move(column));
    }

    schema::Column uniform(unsigned width, std::uint64_t code) const {
        schema::Column column(width, m_node.ownCount);
        for (std::size_t i = 0; i < column.size(); ++i)
            column.set(i, code);
        return column;
    }

    // The columns that the points are found by.
    void keep(const Attribute& attribute, std::uint32_t e,
              std::shared_ptr<const schema::Column> column) {
        if (!m_node.isLeaf())
            return;
        if (&attribute == &m_state.pointId() && e == 0) {
            checkIds(attribute, *column);
            m_result.ids = column;
        }
        if (m_space && &attribute == &m_state.primary() && e < m_space->dimensions())
            m_primary[e] = std::move(column);
    }

    void checkIds(const Attribute& attribute, const schema::Column& ids) {
        std::uint64_t largest = 0;
        for (std::size_t i = 0; i < ids.size(); ++i) {
            if (i > 0 && ids[i] <= ids[i - 1]) {
                fault(Fault::Kind::Block, attribute, 0, "the points are not in the order of ids");
                return;
            }
            largest = ids[i];
        }
        if (attribute.grid.kind() == schema::Grid::Kind::Integer &&
            attribute.grid.integerValue(largest) >= schema::Grid::Wide(m_state.nextPointId))
            fault(Fault::Kind::Block, attribute, 0, "a point has an id that was not given yet");
    }

    void checkKeys() {
        if (!m_space)
            return;
        const unsigned dimensions = m_space->dimensions();
        for (unsigned d = 0; d < dimensions; ++d)
            if (!m_primary[d])
                return;
        std::array<std::uint64_t, index::maximumDimensions> codes{};
        for (std::size_t i = 0; i < m_node.ownCount; ++i) {
            for (unsigned d = 0; d < dimensions; ++d)
                codes[d] = (*m_primary[d])[i];
            const index::Key key = m_space->key(codes.data());
            if (key < m_node.first || key > m_node.last) {
                fault(Fault::Kind::Block, m_state.primary(), {},
                      "a point stands in a leaf to which it does not belong");
                return;
            }
        }
    }

    session::Session& m_session;
    const session::State& m_state;
    bool m_hasTable = false;
    const index::KeySpace* m_space;
    const NodeWork& m_work;
    const Node& m_node;
    NodeResult m_result;
    std::array<std::shared_ptr<const schema::Column>, index::maximumDimensions> m_primary;
};

// Walks the index of a state; the blocks are read a few nodes ahead.
class IndexCheck {
public:
    IndexCheck(CheckReading& reading, const session::State& state, bool hasTable, bool whole)
        : m_reading(reading),
          m_state(state),
          m_hasTable(hasTable),
          m_whole(whole),
          m_readPage(reading.session().blobs().pageReader()) {
        const std::uint64_t cache = session().cacheSize();
        // Two columns and one block of each node that is worked on at the same time.
        const std::uint64_t nodeBytes =
            4 * 8 * session::leafCapacity(session().identity().settings);
        m_window = std::clamp<std::size_t>(cache / 4 / nodeBytes, 1,
                                           session().pool().threads() * std::size_t(4));
        if (hasTable)
            m_cells.emplace(session::cellsOf(session().identity().settings, state.primary()));
        // A bit per id, or where they lie far apart some bytes.
        m_comparesIds = whole && std::min(state.nextPointId / 8,
                                          std::min(state.pointCount, cache) * 128) <= cache / 4;
    }

    void run() {
        if (!m_state.rootPage) {
            if (m_state.pointCount != 0)
                fault(0, "the index is missing");
            return;
        }
        m_scope.emplace(session().blobs());
        const Children root = childrenAt(m_state.rootPage, 0);
        if (root.page) {
            if (root.page->size() != 1 || root.page->front().id != 1 ||
                root.page->front().totalCount != m_state.pointCount ||
                (m_cells && !index::isRoot(root.page->front(), m_cells->space)))
                fault(0, "its index has no root");
            if (root.isNew)
                for (const Node& node : *root.page)
                    visit(node, root.page, 0);
        }
        while (!m_work.empty())
            takeResult();
    }

private:
    struct Children {
        std::shared_ptr<const index::Page> page;  // null: can't be read
        bool isNew = false;
    };

    session::Session& session() { return m_reading.session(); }

    Fault place(std::uint32_t node) const {
        Fault fault;
        fault.kind = Fault::Kind::Index;
        fault.transaction = m_state.transaction.id;
        fault.node = node;
        return fault;
    }
    void fault(std::uint32_t node, const std::string& what) {
        Fault found = place(node);
        found.text = "The file is damaged: " + what + ".";
        m_reading.findings().add(std::move(found));
    }

    Children childrenAt(const BlobRef& reference, std::uint32_t parent) {
        Children children;
        children.isNew = m_reading.meet(reference);
        if (!m_pages.insert(reference.blob)) {
            fault(parent, "the nodes below stand at another place, too");
            children.isNew = false;
        }
        try {
            children.page = m_readPage(reference);
            // Nodes that are worked on keep their pages: of very large ones only few at a time.
            if (index::heldBytes(*children.page) > session().cacheSize() / 4 / m_window)
                while (!m_work.empty())
                    takeResult();
        } catch (const Failure& failure) {
            Fault found = CheckReading::faultOf(place(parent), failure);
            // Told already, with the first state that it was met in.
            if (children.isNew)
                m_reading.findings().add(std::move(found));
        }
        return children;
    }

    void visit(const Node& node, const std::shared_ptr<const index::Page>& page,
               std::size_t depth) {
        Interruption::check();
        // A page that stands at two places would make a tree without end of a small file.
        if (m_noTree || ++m_nodes > m_state.nextNodeId || depth > mostDepth) {
            if (!m_noTree)
                fault(node.id, "its index is not a tree");
            m_noTree = true;
            return;
        }
        if (node.id >= m_state.nextNodeId)
            fault(node.id, "the node has a number that was not given yet");
        else if (m_whole && !m_nodeIds.insert(node.id))
            fault(node.id, "there are two nodes of this number");
        if (node.revision > m_state.transaction.id)
            fault(node.id, "the node was changed by a later transaction");
        start(node, page);
        if (node.isLeaf())
            return;
        Children below{page, true};
        std::span<const Node> children = node.children;
        if (node.childPage) {
            below = childrenAt(node.childPage, node.id);
            if (!below.page)
                return;
            children = *below.page;
        }
        compare(node, children);
        if (below.isNew)
            for (const Node& child : children)
                visit(child, below.page, depth + 1);
    }

    void compare(const Node& node, std::span<const Node> children) {
        const bool isOlder = std::all_of(children.begin(), children.end(), [&](const Node& child) {
            return child.revision <= node.revision;
        });
        if (index::sumOfPoints(children) != node.totalCount)
            fault(node.id, "the nodes below do not hold the " + std::to_string(node.totalCount) +
                               " points that it tells");
        if (!isOlder || !index::isNested(node, children))
            fault(node.id, "the nodes below do not lie within the node");
        if (!m_hasTable)
            return;
        for (std::size_t i = 0; i < children.size(); ++i) {
            const Node& child = children[i];
            if (child.totalCount == 0)
                fault(child.id, "the node has no points");
            if (!index::isCell(node, child, *m_cells) ||
                (i > 0 && child.first == children[i - 1].first &&
                 !index::canShareCell(children[i - 1], child, *m_cells)))
                fault(child.id, "the node is no cell of the index");
        }
        for (const Attribute& attribute : m_state.attributes.all()) {
            if (attribute.is(schema::StorageClass::Constant))
                continue;
            for (std::uint32_t e = 0; e < attribute.record.length; ++e) {
                ElementStatistics sum;
                for (const Node& child : children)
                    sum.merge(index::statisticsOf(child, attribute, e));
                if (sum == index::statisticsOf(node, attribute, e))
                    continue;
                Fault found = place(node.id);
                found.name = attribute.record.name;
                found.element = e;
                found.text =
                    "The file is damaged: the nodes below have other least and greatest values "
                    "than the node tells.";
                m_reading.findings().add(std::move(found));
            }
        }
    }

    // Hands a node to the workers.
    void start(const Node& node, const std::shared_ptr<const index::Page>& page) {
        NodeWork work{page, &node, {}};
        bool anyBlock = false;
        bool anyNew = false;
        for (const index::AttributeData& data : node.attributes)
            for (const index::ElementData& element : data.elements) {
                const bool isNew = element.block && m_reading.meet(element.block);
                work.isNew.push_back(isNew);
                anyBlock = anyBlock || element.block;
                anyNew = anyNew || isNew;
            }
        if (node.isLeaf() && (anyNew || !anyBlock))
            m_reading.findings().points += node.ownCount;
        if (m_work.size() >= m_window)
            takeResult();
        m_work.push_back({node.id, session().pool().run([this, work = std::move(work)] {
                              return NodeCheck(session(), m_state, m_hasTable,
                                               m_cells ? &m_cells->space : nullptr, work)
                                  .run();
                          })});
        if (++m_sinceScope == nodesPerScope) {
            // Writers get their turn.
            while (!m_work.empty())
                takeResult();
            m_scope.reset();
            m_scope.emplace(session().blobs());
            m_sinceScope = 0;
        }
    }

    void takeResult() {
        Started oldest = std::move(m_work.front());
        m_work.pop_front();
        const NodeResult result = oldest.task.get();
        for (const Fault& fault : result.faults)
            m_reading.findings().add(fault);
        if (!m_comparesIds || !result.ids)
            return;
        bool twice = false;
        for (std::size_t i = 0; i < result.ids->size(); ++i)
            twice = !m_ids.insert((*result.ids)[i]) || twice;
        if (twice) {
            Fault found = place(oldest.node);
            found.name = m_state.pointId().record.name;
            found.element = 0;
            found.text = "The file is damaged: a point of the node has the id of another one.";
            m_reading.findings().add(std::move(found));
        }
    }

    struct Started {
        std::uint32_t node;
        Task<NodeResult> task;
    };

    CheckReading& m_reading;
    const session::State& m_state;
    bool m_hasTable;
    bool m_whole;
    bool m_comparesIds = false;
    index::PageReader m_readPage;
    std::optional<index::Cells> m_cells;
    std::uint64_t m_nodes = 0;
    bool m_noTree = false;
    IdSet m_pages;  // the blobs of this state's
    IdSet m_nodeIds;
    IdSet m_ids;
    std::optional<session::Blobs::Scope> m_scope;
    unsigned m_sinceScope = 0;
    std::size_t m_window = 1;
    std::deque<Started> m_work;  // last: its tasks end first
};

}  // namespace

void checkIndex(CheckReading& reading, const session::State& state, bool hasTable, bool whole) {
    IndexCheck(reading, state, hasTable, whole).run();
}

}  // namespace tarvo::engine::report
