// Puts sorted points into a tree: new leaves where there were none, full leaves split, everything
// that gets no point left as it is. Memory is bounded by the page size and the capacity of a leaf,
// whatever the number of points.
#pragma once

#include "engine/index/node.h"
#include "engine/index/pointmerger.h"
#include "engine/index/shape.h"

#include <cstdint>
#include <functional>
#include <memory>

namespace tarvo::engine::index {

// What the builder needs from the world around it.
class BuilderBackend {
public:
    virtual ~BuilderBackend() = default;

    // Encodes and stores a leaf of these points; what comes back may be filled later.
    virtual std::shared_ptr<LeafContent> writeLeaf(RunParts points, std::size_t count) = 0;
    // Waits until the content is filled.
    virtual void complete(LeafContent& content) = 0;
    // The points of a stored leaf.
    virtual std::shared_ptr<SortedRun> readLeaf(const Node& leaf) = 0;
    virtual Page readPage(const BlobRef& reference) = 0;
    virtual BlobRef writePage(const Page& page) = 0;
    virtual std::uint32_t newNodeId() = 0;
};

struct BuilderSettings {
    std::size_t capacity = 10000;   // points of a leaf
    unsigned leafLevel = 0;         // 0: leaves are limited by capacity; else leaves are the cells
                                    // of this level, as many leaves to a cell as capacity needs
    std::uint32_t revision = 0;     // of the nodes that change
    std::uint32_t pageNodes = 128;  // a page is written when a subtree has more nodes than this
};

class TreeBuilder {
public:
    TreeBuilder(const KeySpace& space, const schema::AttributeTable& table,
                const BuilderSettings& settings, BuilderBackend& backend);

    // Adds all points to the tree below root, which keeps its id and covers every key. Throws
    // Failure(Damaged) where what is there is not what a builder makes.
    void insert(Node& root, PointMerger& points);

private:
    std::vector<Node> buildCells(Key parentFirst, unsigned level, unsigned end,
                                 PointMerger& points);
    Node buildLeaf(Key first, Key last, unsigned level, std::size_t count, PointMerger& points);
    void open(Node& node);
    void insertBelow(Node& node, PointMerger& points);
    std::vector<Node> insertIntoCell(Key parentFirst, unsigned level, unsigned child,
                                     std::vector<Node> existing, PointMerger& points);
    void finish(Node& node);
    void complete(Node& leaf);

    const Cells m_cells;
    const KeySpace& m_space;
    const schema::AttributeTable& m_table;
    BuilderSettings m_settings;
    BuilderBackend& m_backend;
};

// Forgets the level-of-detail points of an inner node: what they stand for changed.
void dropOwnPoints(Node& node);

// Sums counts, statistics and revisions of the children into an inner node.
void summarise(Node& node, std::span<const Node> children, const schema::AttributeTable& table);

}  // namespace tarvo::engine::index
