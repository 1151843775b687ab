// The points of nodes, with what a view wants to know of them.
#pragma once

#include "qrb/pointcloud.h"
#include "view/colouring.h"
#include "view/nodetree.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace tarvo::view {

// Points of one node, as many as the arrays are long; good until the call returns.
struct PointBatch {
    std::vector<drawing::Vector> places;
    std::vector<drawing::Shade> shades;
    std::vector<std::uint64_t> ids;
};

class NodeReader {
public:
    // All must outlive the reader.
    NodeReader(const qrb::Pointcloud& database, const NodeTree& tree, const Colouring& colouring)
        : m_database(database), m_tree(tree), m_colouring(colouring) {}

    // Calls take with those of the points of a node, of that place in the tree, that pass the
    // filter (empty: all) and have a place, in the order in which they are stored. What take throws
    // ends it. Throws qrb::Error.
    void read(std::uint32_t place, const std::string& filter,
              const std::function<void(const PointBatch&)>& take) const;

private:
    const qrb::Pointcloud& m_database;
    const NodeTree& m_tree;
    const Colouring& m_colouring;
};

}  // namespace tarvo::view
