// Checks that an index is a tree: ranges nested and apart, counts that add up, statistics that hold
// for everything below.
#pragma once

#include "engine/session/session.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <memory>
#include <set>
#include <span>

namespace tarvo::engine::testing {

class TreeCheck {
public:
    TreeCheck(session::Session& session, std::uint64_t points)
        : m_session(session), m_state(session.state()), m_points(points) {}

    void run() {
        const index::Node root = m_session.blobs().rootNode(*m_state);
        EXPECT_EQ(root.id, 1u);
        EXPECT_EQ(visit(root), m_points);
    }
    std::size_t largestLeaf = 0;

private:
    std::uint64_t visit(const index::Node& node) {
        EXPECT_TRUE(m_ids.insert(node.id).second) << "node " << node.id << " is there twice";
        for (std::size_t a = 0; a < m_state->attributes.size(); ++a)
            if (const index::AttributeData* data = node.find(m_state->attributes[a].uid)) {
                EXPECT_LE(data->revision, node.revision);
            }
        if (node.isLeaf()) {
            largestLeaf = std::max<std::size_t>(largestLeaf, node.ownCount);
            return node.totalCount;
        }
        std::shared_ptr<const index::Page> page;
        std::span<const index::Node> children = node.children;
        if (node.childPage) {
            page = m_session.blobs().pageReader()(node.childPage);
            children = *page;
        }
        std::uint64_t sum = 0;
        for (std::size_t i = 0; i < children.size(); ++i) {
            const index::Node& child = children[i];
            EXPECT_GE(child.first, node.first);
            EXPECT_LE(child.last, node.last);
            EXPECT_LE(child.revision, node.revision);
            if (i > 0 && children[i - 1].first != child.first) {
                EXPECT_GT(child.first, children[i - 1].last);
            }
            for (const schema::Attribute& attribute : m_state->attributes.all())
                for (std::uint32_t e = 0; e < attribute.record.length; ++e)
                    compare(index::statisticsOf(node, attribute, e),
                            index::statisticsOf(child, attribute, e));
            sum += visit(child);
        }
        EXPECT_EQ(node.totalCount, sum);
        return sum;
    }

    static void compare(const schema::ElementStatistics& outer,
                        const schema::ElementStatistics& inner) {
        EXPECT_TRUE(outer.hasInvalid || !inner.hasInvalid);
        EXPECT_TRUE(outer.hasValid || !inner.hasValid);
        if (inner.hasValid) {
            EXPECT_LE(outer.minimum, inner.minimum);
            EXPECT_GE(outer.maximum, inner.maximum);
        }
    }

    session::Session& m_session;
    std::shared_ptr<const session::State> m_state;
    std::uint64_t m_points;
    std::set<std::uint32_t> m_ids;
};

}  // namespace tarvo::engine::testing
