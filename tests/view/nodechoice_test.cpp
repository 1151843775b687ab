#include "view/nodechoice.h"
#include "tests/engine/seed.h"
#include "tests/view/cloud.h"

#include <map>
#include <random>

namespace {

using namespace tarvo::view;
using tarvo::drawing::Camera;
using tarvo::drawing::Side;

class NodeChoice : public tarvo::view::testing::CloudTest {
protected:
    // Each leaf that may be seen is stood for once, by itself or a node above it; nothing else is.
    static void expectWhole(NodeTree& tree, const Camera& camera,
                            const std::vector<ChosenNode>& chosen) {
        std::map<std::uint32_t, int> times;
        for (const ChosenNode& one : chosen)
            ++times[one.node];
        std::vector<std::pair<std::uint32_t, int>> open{{0, 0}};
        while (!open.empty()) {
            const auto [node, above] = open.back();
            open.pop_back();
            const int here = above + times[node];
            const ViewNode& view = tree.nodes()[node];
            if (view.children == 0) {
                EXPECT_LE(here, 1);
                if (camera.mayShow(tree.box(node)))
                    EXPECT_EQ(here, 1) << "node " << view.id;
            }
            for (std::uint32_t i = 0; i < view.children; ++i)
                open.emplace_back(view.firstChild + i, here);
        }
    }
    static std::uint64_t pointsOf(const NodeTree& tree, const std::vector<ChosenNode>& chosen) {
        std::uint64_t points = 0;
        for (const ChosenNode& one : chosen)
            points += (tree.nodes()[one.node].points + one.every - 1) / one.every;
        return points;
    }
};

TEST_F(NodeChoice, CoversWhatIsSeenOnceWithinItsLimit) {
    create(160, 3);
    NodeTree tree(*m_cloud);
    ASSERT_TRUE(tree.hasLevelOfDetail());
    ASSERT_EQ(tree.points(), m_points.size());
    std::mt19937_64 random(tarvo::engine::testing::seedOfRun());
    for (int i = 0; i < 200; ++i) {
        Camera camera;
        camera.setScreen(100 + random() % 900, 100 + random() % 700);
        camera.setPerspective(random() % 2 == 0);
        camera.orbit(static_cast<double>(random() % 360), -static_cast<double>(random() % 90));
        camera.show(tree.space().extent);
        camera.zoom(static_cast<double>(1 + random() % 40) / 4,
                    static_cast<double>(random() % camera.width()),
                    static_cast<double>(random() % camera.height()));
        const std::uint64_t limit = 500 + random() % 30'000;
        const auto chosen = chooseNodes(tree, camera, {limit, 0.7});
        expectWhole(tree, camera, chosen);
        // The root alone may have more.
        EXPECT_LE(pointsOf(tree, chosen), std::max(limit, tree.nodes()[0].points));
        for (const ChosenNode& one : chosen)
            EXPECT_EQ(one.every, 1U);
    }
}

TEST_F(NodeChoice, TakesWhatIsAsFineAsTheScreen) {
    create(160, 3);
    NodeTree tree(*m_cloud);
    Camera camera;
    camera.setScreen(40, 30);
    camera.show(tree.space().extent);
    const auto coarse = chooseNodes(tree, camera, {});
    camera.setScreen(2000, 1500);
    camera.show(tree.space().extent);
    const auto fine = chooseNodes(tree, camera, {});
    EXPECT_LT(pointsOf(tree, coarse), m_points.size() / 2);
    EXPECT_EQ(pointsOf(tree, fine), m_points.size());
    // What is near comes before what is far.
    camera.look(Side::Front);
    camera.setPerspective(true);
    camera.show(tree.space().extent);
    const auto ordered = chooseNodes(tree, camera, {});
    ASSERT_GT(ordered.size(), 4U);
    EXPECT_LT(tree.box(ordered.front().node).centre()[1],
              tree.box(ordered.back().node).centre()[1]);
}

TEST_F(NodeChoice, TakesAnEvenPartOfLeavesWithoutALevelOfDetail) {
    create(160, 0);
    NodeTree tree(*m_cloud);
    EXPECT_FALSE(tree.hasLevelOfDetail());
    Camera camera;
    camera.setScreen(800, 600);
    camera.show(tree.space().extent);
    const auto chosen = chooseNodes(tree, camera, {5'000, 0.7});
    expectWhole(tree, camera, chosen);
    EXPECT_LE(pointsOf(tree, chosen), 5'000 + chosen.size());
    EXPECT_GT(pointsOf(tree, chosen), 2'500U);
    for (const ChosenNode& one : chosen)
        EXPECT_EQ(one.every, chosen.front().every);
    const auto all = chooseNodes(tree, camera, {m_points.size(), 0.7});
    EXPECT_EQ(pointsOf(tree, all), m_points.size());
}

}  // namespace
