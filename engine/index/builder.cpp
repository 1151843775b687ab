#include "engine/index/builder.h"

#include <algorithm>
#include <iterator>

namespace tarvo::engine::index {

namespace {

std::size_t nodesInPage(const Node& node) {
    std::size_t count = 1;
    for (const Node& child : node.children)
        count += nodesInPage(child);
    return count;
}

}  // namespace

void dropOwnPoints(Node& node) {
    node.ownCount = 0;
    std::erase_if(node.attributes,
                  [](const AttributeData& attribute) { return isWeightUid(attribute.uid); });
    for (AttributeData& attribute : node.attributes)
        for (ElementData& element : attribute.elements)
            element.block = {};
}

void summarise(Node& node, std::span<const Node> children, const schema::AttributeTable& table) {
    node.totalCount = 0;
    for (const Node& child : children) {
        node.totalCount += child.totalCount;
        node.revision = std::max(node.revision, child.revision);
    }
    std::vector<AttributeData> sums;
    std::copy_if(node.attributes.begin(), node.attributes.end(), std::back_inserter(sums),
                 [](const AttributeData& attribute) { return isWeightUid(attribute.uid); });
    for (const schema::Attribute& attribute : table.all()) {
        AttributeData sum;
        sum.uid = attribute.uid;
        sum.elements.resize(attribute.record.length);
        bool present = false;
        for (const Node& child : children) {
            const AttributeData* data = child.find(attribute.uid);
            present = present || data;
            if (data)
                sum.revision = std::max(sum.revision, data->revision);
            for (std::uint32_t e = 0; e < attribute.record.length; ++e)
                sum.elements[e].statistics.merge(statisticsOf(child, attribute, e));
        }
        if (!present)
            continue;
        if (const AttributeData* own = node.find(attribute.uid))
            for (std::size_t e = 0; e < own->elements.size() && e < sum.elements.size(); ++e)
                sum.elements[e].block = own->elements[e].block;
        sums.push_back(std::move(sum));
    }
    std::sort(sums.begin(), sums.end(),
              [](const AttributeData& a, const AttributeData& b) { return a.uid < b.uid; });
    node.attributes = std::move(sums);
}

TreeBuilder::TreeBuilder(const KeySpace& space, const schema::AttributeTable& table,
                         const BuilderSettings& settings, BuilderBackend& backend)
    : m_cells{space, settings.leafLevel ? settings.leafLevel : space.depth()},
      m_space(m_cells.space),
      m_table(table),
      m_settings(settings),
      m_backend(backend) {}

void TreeBuilder::insert(Node& root, PointMerger& points) {
    root.level = 0;
    root.first = 0;
    root.last = m_space.last(0, 0);
    open(root);
    insertBelow(root, points);
    finish(root);
}

Node TreeBuilder::buildLeaf(Key first, Key last, unsigned level, std::size_t count,
                            PointMerger& points) {
    Node leaf;
    leaf.id = m_backend.newNodeId();
    leaf.level = static_cast<std::uint8_t>(level);
    leaf.revision = m_settings.revision;
    leaf.first = first;
    leaf.last = last;
    leaf.totalCount = leaf.ownCount = count;
    leaf.content = m_backend.writeLeaf(points.take(last, count), count);
    return leaf;
}

// Builds nodes for the next points that lie in the cells before `end` of those that the cell at
// `level` - 1 that begins at parentFirst is divided into. Neighbouring cells share a leaf while it
// has room.
std::vector<Node> TreeBuilder::buildCells(Key parentFirst, unsigned level, unsigned end,
                                          PointMerger& points) {
    const std::size_t capacity = m_settings.capacity;
    const bool divideAlways = m_settings.leafLevel != 0 && level < m_cells.leafLevel;
    const auto lastOf = [&](unsigned cell) {
        return m_space.last(m_space.childFirst(parentFirst, level - 1, cell), level);
    };
    std::vector<Node> nodes;
    const Key last = lastOf(end - 1);
    while (!points.atEnd() && points.nextKey() <= last) {
        const unsigned cell = m_space.child(points.nextKey(), level);
        const Key first = m_space.childFirst(parentFirst, level - 1, cell);
        std::size_t count = points.countUpTo(lastOf(cell), capacity + 1);
        if (level < m_cells.leafLevel && (count > capacity || divideAlways)) {
            Node inner;
            inner.id = m_backend.newNodeId();
            inner.level = static_cast<std::uint8_t>(level);
            inner.revision = m_settings.revision;
            inner.first = first;
            inner.last = lastOf(cell);
            inner.children = buildCells(first, level + 1, m_space.fanout(), points);
            // A chain of only children says nothing: the lowest stands for all.
            if (inner.children.size() == 1 && !inner.children[0].isLeaf()) {
                nodes.push_back(std::move(inner.children[0]));
            } else {
                finish(inner);
                nodes.push_back(std::move(inner));
            }
        } else if (count > capacity) {
            nodes.push_back(buildLeaf(first, lastOf(cell), level, capacity, points));
        } else {
            unsigned lastCell = cell;
            if (m_settings.leafLevel == 0)
                while (lastCell + 1 < end) {
                    const std::size_t more = points.countUpTo(lastOf(lastCell + 1), capacity + 1);
                    if (more > capacity)
                        break;
                    count = more;
                    ++lastCell;
                }
            nodes.push_back(buildLeaf(first, lastOf(lastCell), level, count, points));
        }
    }
    return nodes;
}

// Adds the points of one cell to the nodes that stand in it.
std::vector<Node> TreeBuilder::insertIntoCell(Key parentFirst, unsigned level, unsigned child,
                                              std::vector<Node> existing, PointMerger& points) {
    const Key first = m_space.childFirst(parentFirst, level - 1, child);
    const Key last = m_space.last(first, level);
    if (existing.size() == 1 && !existing[0].isLeaf() && existing[0].first == first &&
        existing[0].last == last) {
        open(existing[0]);
        insertBelow(existing[0], points);
        finish(existing[0]);
        return existing;
    }
    // A node that stands for a chain of only children: the cell gets a node of its own.
    Node inner;
    inner.id = m_backend.newNodeId();
    inner.level = static_cast<std::uint8_t>(level);
    inner.first = first;
    inner.last = last;
    inner.children = std::move(existing);
    insertBelow(inner, points);
    if (inner.children.size() == 1 && !inner.children[0].isLeaf())
        return std::move(inner.children);
    finish(inner);
    std::vector<Node> result;
    result.push_back(std::move(inner));
    return result;
}

// Fetches the nodes below a stored node.
void TreeBuilder::open(Node& node) {
    if (node.childPage) {
        node.children = m_backend.readPage(node.childPage);
        node.childPage = {};
    }
    requireCells(node, node.children, m_cells);
}

void TreeBuilder::insertBelow(Node& node, PointMerger& points) {
    node.revision = m_settings.revision;
    dropOwnPoints(node);
    const unsigned level = node.level + 1u;
    std::vector<Node> old = std::move(node.children);
    std::vector<Node> result;
    const auto append = [&](std::vector<Node> nodes) {
        for (Node& n : nodes)
            result.push_back(std::move(n));
    };
    std::size_t at = 0;
    unsigned cell = 0;
    while (cell < m_space.fanout()) {
        const Key cellFirst = m_space.childFirst(node.first, node.level, cell);
        if (at == old.size() || old[at].first > m_space.last(cellFirst, level)) {
            // Cells without a node, up to the next node.
            const unsigned end =
                at == old.size() ? m_space.fanout() : m_space.child(old[at].first, level);
            append(buildCells(node.first, level, end, points));
            cell = end;
            continue;
        }
        // The nodes of this cell: several only where a leaf can't be divided.
        std::vector<Node> existing;
        Key last = m_space.last(cellFirst, level);
        while (at < old.size() && old[at].first <= last) {
            last = std::max(last, old[at].last);
            existing.push_back(std::move(old[at++]));
        }
        const unsigned lastCell = m_space.child(last, level);
        if (points.countUpTo(last, 1) == 0) {
            append(std::move(existing));
        } else if (existing.back().isLeaf() && existing.back().level == level) {
            Node leaf = std::move(existing.back());
            existing.pop_back();
            append(std::move(existing));
            points.insert(m_backend.readLeaf(leaf));
            std::vector<Node> built = buildCells(node.first, level, lastCell + 1, points);
            if (built.size() == 1 && built[0].isLeaf())
                built[0].id = leaf.id;
            append(std::move(built));
        } else {
            append(insertIntoCell(node.first, level, cell, std::move(existing), points));
        }
        cell = lastCell + 1;
    }
    node.children = std::move(result);
}

void TreeBuilder::complete(Node& leaf) {
    if (leaf.content) {
        m_backend.complete(*leaf.content);
        leaf.attributes = std::move(leaf.content->attributes);
        leaf.content.reset();
    }
}

// Sums the children up and moves them into a page of their own once they are many. Leaves that
// are still being encoded are left to a later call, so that encoding runs beside building.
void TreeBuilder::finish(Node& node) {
    if (node.childPage)
        return;
    if (node.level != 0 && nodesInPage(node) <= m_settings.pageNodes)
        return;
    const auto settle = [this](auto&& self, Node& n) -> void {
        complete(n);
        if (n.children.empty())
            return;
        for (Node& child : n.children)
            self(self, child);
        summarise(n, n.children, m_table);
    };
    settle(settle, node);
    if (nodesInPage(node) > m_settings.pageNodes) {
        node.childPage = m_backend.writePage(node.children);
        node.children.clear();
    }
}

}  // namespace tarvo::engine::index
