// The nodes of the index and their pages. A page holds the children of one node, and below them
// what fits; deeper nodes stand in pages of their own, referred to by their parent and read when
// they are needed. Pages are immutable.
#pragma once

#include "engine/base/blobref.h"
#include "engine/base/bytes.h"
#include "engine/index/key.h"
#include "engine/schema/attribute.h"
#include "engine/schema/column.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

namespace tarvo::engine::index {

// One element of an attribute in a node: what all points below look like, and the block with the
// values of the points stored in the node itself. Without a block they all have the same code:
// the minimum or, where there is no valid one, the invalid code.
struct ElementData {
    schema::ElementStatistics statistics;
    BlobRef block;
};

// The numbers in place of an attribute's for the points that each point of an inner node stands
// for, and for those of them that have a valid value of an attribute. Real ones are 1 to 2^31 - 1.
inline constexpr std::uint32_t weightUid = 0;
constexpr std::uint32_t validWeightUid(std::uint32_t attributeUid) {
    return attributeUid | 0x80000000u;
}
constexpr bool isWeightUid(std::uint32_t uid) {
    return uid == weightUid || uid >= 0x80000000u;
}

struct AttributeData {
    std::uint32_t uid = 0;
    std::uint32_t revision = 0;  // the transaction that last changed it here or below
    std::vector<ElementData> elements;
};

struct Node;

// The outcome of encoding a leaf; filled later than the node is made while a tree is built.
struct LeafContent {
    std::vector<AttributeData> attributes;
};

struct Node {
    std::uint32_t id = 0;
    std::uint8_t level = 0;
    std::uint32_t revision = 0;
    Key first = 0;  // the keys that belong here
    Key last = 0;
    std::uint64_t totalCount = 0;  // points in the leaves here and below
    std::uint64_t ownCount = 0;    // points stored in the node itself
    // Ascending uid; an absent one has the same code in every point.
    std::vector<AttributeData> attributes;
    std::vector<Node> children;  // in key order, when they stand in the same page
    BlobRef childPage;           // else where they stand

    std::shared_ptr<LeafContent> content;  // while a tree is built

    bool isLeaf() const { return children.empty() && !childPage; }
    // Null when absent.
    const AttributeData* find(std::uint32_t uid) const;
};

// The statistics of one element of a node; those of Attribute::absentCode where it is absent.
schema::ElementStatistics statisticsOf(const Node& node, const schema::Attribute& attribute,
                                       std::uint32_t element);

using Page = std::vector<Node>;

// Page <-> bytes (a zstd frame). encodePage throws Failure(State) for a page that would be too
// large to be read again; decodePage checks every number against what is possible and throws
// Failure(Damaged).
Bytes encodePage(const Page& page);
// Outline leaves the attributes out: they take most of the time and the memory.
enum class PageContents { All, Outline };
Page decodePage(ByteSpan bytes, PageContents contents = PageContents::All);

// The bytes that a page takes in memory.
std::size_t heldBytes(const Page& page);

// Reads a page, from memory where it was read before. What it returns stays valid as long as it
// is held.
using PageReader = std::function<std::shared_ptr<const Page>(const BlobRef&)>;

// Walks the tree depth-first in key order without recursion; holds the pages on its way.
class TreeCursor {
public:
    // root: must live as long as the cursor.
    TreeCursor(const Node& root, PageReader reader);

    // The node at which the walk stands; null at the end.
    const Node* node() const { return m_stack.empty() ? nullptr : m_stack.back().node; }
    // The page that holds the node: share it to keep the node alive.
    std::shared_ptr<const Page> page() const { return m_stack.back().page; }
    std::size_t depth() const { return m_stack.size() - 1; }

    // To the first child, or on when there is none. Throws Failure(Damaged) where the nodes below
    // are no part of a tree.
    void enter();
    void skip();  // to the next node that is not below this one

private:
    struct Place {
        const Node* node;
        const Node* end;  // of the siblings
        std::shared_ptr<const Page> page;
    };
    PageReader m_reader;
    std::vector<Place> m_stack;
};

}  // namespace tarvo::engine::index
