// The trees that points are put into, node by node, without a file.
#include "engine/index/builder.h"
#include "tests/engine/hostile.h"

#include <map>
#include <utility>

namespace tarvo::engine::index {
namespace {

using namespace testing;

// Keys from 0 to 255; every point has its key as the value of two attributes, whose numbers are not
// in the order of the table. From the second transaction on leaves have a third one, 50, and nobody
// has the fourth.
class Trees : public ::testing::Test, private BuilderBackend {
protected:
    Trees() {
        m_table.all().emplace_back(record("x", 0, 255), 5);
        m_table.all().emplace_back(record("other", 0, 255), 2);
        schema::AttributeRecord later = record("later", 0, 255);
        later.defaultValue = 9;
        m_table.all().emplace_back(later, 7);
        m_table.all().emplace_back(record("absent", 0, 255), 3);
        m_root.id = 1;
    }

    // Adds points as a transaction of its own.
    void insert(const std::vector<int>& keys) {
        std::vector<std::unique_ptr<RunReader>> runs;
        runs.push_back(readRun(runOf({keys.begin(), keys.end()})));
        PointMerger points(std::move(runs));
        ++m_settings.revision;
        TreeBuilder(m_space, m_table, m_settings, *this).insert(m_root, points);
        EXPECT_TRUE(points.atEnd());
        m_root = decodePage(encodePage({m_root})).at(0);
    }

    // A line a node: number, keys, points, revision and those of the attributes, values, page.
    std::string tree() { return textOf(m_root, 0); }

    std::string textOf(const Node& node, std::size_t depth) {
        std::string text(depth, ' ');
        const auto number = [](auto value) { return std::to_string(static_cast<int>(value)); };
        text += number(node.id) + ": " + number(node.first) + "-" + number(node.last) + " *" +
                number(node.totalCount) + " r" + number(node.revision);
        std::uint32_t before = 0;
        for (const AttributeData& data : node.attributes) {
            EXPECT_GT(data.uid, before);
            before = data.uid;
            const schema::ElementStatistics& known = data.elements.at(0).statistics;
            EXPECT_NE(data.uid, 3u);
            text += data.uid == 2 ? " " : "/";
            text +=
                number(data.revision) + ":" + number(known.minimum) + "-" + number(known.maximum);
        }
        if (!node.isLeaf())
            text += node.childPage ? " page" : " +";
        if (!node.isLeaf() && node.ownCount > 0)
            text += " own";
        text += "\n";
        const Page page = node.childPage ? m_pages.at(node.childPage.blob) : node.children;
        for (const Node& child : page)
            text += textOf(child, depth + 1);
        return text;
    }

    // Gives every inner node a point of its own.
    static void giveOwn(Node& node) {
        if (node.isLeaf())
            return;
        node.ownCount = 1;
        for (AttributeData& data : node.attributes)
            data.elements[0].block = {99, 0, 1, 0};
        for (Node& child : node.children)
            giveOwn(child);
    }
    static bool hasOwnBlocks(const Node& node) {
        return std::any_of(node.attributes.begin(), node.attributes.end(),
                           [](const AttributeData& data) { return bool(data.elements[0].block); });
    }

    Page& pageOf(const Node& node) { return m_pages.at(node.childPage.blob); }

    schema::AttributeTable m_table;
    const schema::Attribute m_primary{record("x", 0, 255), 5};
    const KeySpace m_space{m_primary};
    BuilderSettings m_settings{2, 0, 0, 100};
    Node m_root;

private:
    std::shared_ptr<SortedRun> runOf(const std::vector<std::uint8_t>& keys) const {
        PointColumns points;
        points.columns.emplace_back(1);
        points.columns[0].append(std::span(keys));
        points.count = keys.size();
        return std::make_shared<SortedRun>(std::move(points), m_space, 0);
    }
    std::shared_ptr<LeafContent> writeLeaf(RunParts points, std::size_t count) override {
        auto content = std::make_shared<LeafContent>();
        std::vector<std::uint8_t>& keys = m_waiting[content.get()];
        for (const RunPart& part : points)
            for (const std::uint32_t point : part.points)
                keys.push_back(static_cast<std::uint8_t>(part.run->key(point)));
        EXPECT_EQ(keys.size(), count);
        std::sort(keys.begin(), keys.end());
        return content;
    }
    void complete(LeafContent& content) override {
        const std::vector<std::uint8_t> keys = m_waiting.at(&content);
        m_waiting.erase(&content);
        m_leaves[++m_blobs] = keys;
        const std::uint64_t first = keys.front();
        const std::uint64_t last = keys.back();
        for (const std::uint32_t uid : {2u, 5u})
            content.attributes.push_back(
                {uid, m_settings.revision, {{{first, last, true, false}, {m_blobs, 0, 1, 0}}}});
        if (m_settings.revision > 1)
            content.attributes.push_back({7, m_settings.revision, {{{50, 50, true, false}, {}}}});
    }
    std::shared_ptr<SortedRun> readLeaf(const Node& leaf) override {
        return runOf(m_leaves.at(leaf.attributes.at(0).elements.at(0).block.blob));
    }
    Page readPage(const BlobRef& reference) override { return m_pages.at(reference.blob); }
    BlobRef writePage(const Page& page) override {
        m_pages[++m_blobs] = page;
        return {m_blobs, 0, 1, 0};
    }
    std::uint32_t newNodeId() override { return ++m_lastId; }

    std::map<LeafContent*, std::vector<std::uint8_t>> m_waiting;
    std::map<std::uint64_t, std::vector<std::uint8_t>> m_leaves;
    std::map<std::uint64_t, Page> m_pages;
    std::uint64_t m_blobs = 0;
    std::uint32_t m_lastId = 1;
};

TEST_F(Trees, ShareALeafAmongNeighboursAndDivideWhatIsTooFull) {
    insert({1, 2, 3, 64, 65, 200});
    EXPECT_EQ(tree(), R"(1: 0-255 *6 r1 1:1-200/1:1-200 +
 2: 0-127 *5 r1 1:1-65/1:1-65 +
  7: 0-3 *3 r1 1:1-3/1:1-3 +
   8: 0-1 *1 r1 1:1-1/1:1-1
   9: 2-3 *2 r1 1:2-3/1:2-3
  10: 64-127 *2 r1 1:64-65/1:64-65
 11: 128-255 *1 r1 1:200-200/1:200-200
)");
    insert({66, 90, 91, 201, 202});
    EXPECT_EQ(tree(), R"(1: 0-255 *11 r2 2:1-202/2:1-202/2:9-50 +
 2: 0-127 *8 r2 2:1-91/2:1-91/2:9-50 +
  7: 0-3 *3 r1 1:1-3/1:1-3 +
   8: 0-1 *1 r1 1:1-1/1:1-1
   9: 2-3 *2 r1 1:2-3/1:2-3
  13: 64-95 *5 r2 2:64-91/2:64-91/2:50-50 +
   16: 64-67 *3 r2 2:64-66/2:64-66/2:50-50 +
    17: 64-65 *2 r2 2:64-65/2:64-65/2:50-50
    18: 66-67 *1 r2 2:66-66/2:66-66/2:50-50
   19: 80-95 *2 r2 2:90-91/2:90-91/2:50-50
 25: 200-203 *3 r2 2:200-202/2:200-202/2:50-50 +
  26: 200-201 *2 r2 2:200-201/2:200-201/2:50-50
  27: 202-203 *1 r2 2:202-202/2:202-202/2:50-50
)");
}

TEST_F(Trees, HaveNoNodesWithOneInnerChildAndGetThemWhereAPointComesBeside) {
    const std::string untouched = R"( 16: 250-251 *3 r1 1:250-250/1:250-250 +
  17: 250-250 *2 r1 1:250-250/1:250-250
  18: 250-251 *1 r1 1:250-250/1:250-250
)";
    insert({1, 2, 3, 250, 250, 250});
    EXPECT_EQ(tree(), R"(1: 0-255 *6 r1 1:1-250/1:1-250 +
 7: 0-3 *3 r1 1:1-3/1:1-3 +
  8: 0-1 *1 r1 1:1-1/1:1-1
  9: 2-3 *2 r1 1:2-3/1:2-3
)" + untouched);
    insert({20});
    EXPECT_EQ(tree(), R"(1: 0-255 *7 r2 2:1-250/2:1-250/2:9-50 +
 21: 0-31 *4 r2 2:1-20/2:1-20/2:9-50 +
  7: 0-3 *3 r1 1:1-3/1:1-3 +
   8: 0-1 *1 r1 1:1-1/1:1-1
   9: 2-3 *2 r1 1:2-3/1:2-3
  22: 16-31 *1 r2 2:20-20/2:20-20/2:50-50
)" + untouched);
    insert({0, 1});
    EXPECT_EQ(tree(), R"(1: 0-255 *9 r3 3:0-250/3:0-250/3:9-50 +
 21: 0-31 *6 r3 3:0-20/3:0-20/3:9-50 +
  7: 0-3 *5 r3 3:0-3/3:0-3/3:9-50 +
   27: 0-1 *3 r3 3:0-1/3:0-1/3:50-50 +
    28: 0-0 *1 r3 3:0-0/3:0-0/3:50-50
    29: 1-1 *2 r3 3:1-1/3:1-1/3:50-50
   9: 2-3 *2 r1 1:2-3/1:2-3
  22: 16-31 *1 r2 2:20-20/2:20-20/2:50-50
)" + untouched);
}

TEST_F(Trees, OfALeafOverSeveralCellsAreDividedWhereItIsTooFull) {
    insert({1, 200});
    EXPECT_EQ(tree(), R"(1: 0-255 *2 r1 1:1-200/1:1-200 +
 2: 0-255 *2 r1 1:1-200/1:1-200
)");
    insert({130});
    EXPECT_EQ(tree(), R"(1: 0-255 *3 r2 2:1-200/2:1-200/2:50-50 +
 3: 0-127 *1 r2 2:1-1/2:1-1/2:50-50
 4: 128-255 *2 r2 2:130-200/2:130-200/2:50-50
)");
}

TEST_F(Trees, OfCellsOfOneSizeAreDividedDownToThem) {
    m_settings.leafLevel = 3;
    insert({1, 2, 3, 4, 5, 40, 70, 250});
    EXPECT_EQ(tree(), R"(1: 0-255 *8 r1 1:1-250/1:1-250 +
 2: 0-127 *7 r1 1:1-70/1:1-70 +
  3: 0-63 *6 r1 1:1-40/1:1-40 +
   4: 0-31 *2 r1 1:1-2/1:1-2
   5: 0-31 *2 r1 1:3-4/1:3-4
   6: 0-31 *1 r1 1:5-5/1:5-5
   7: 32-63 *1 r1 1:40-40/1:40-40
  8: 64-127 *1 r1 1:70-70/1:70-70 +
   9: 64-95 *1 r1 1:70-70/1:70-70
 11: 192-255 *1 r1 1:250-250/1:250-250 +
  12: 224-255 *1 r1 1:250-250/1:250-250
)");
    insert({6, 41, 42, 100});
    EXPECT_EQ(tree(), R"(1: 0-255 *12 r2 2:1-250/2:1-250/2:9-50 +
 2: 0-127 *11 r2 2:1-100/2:1-100/2:9-50 +
  3: 0-63 *9 r2 2:1-42/2:1-42/2:9-50 +
   4: 0-31 *2 r1 1:1-2/1:1-2
   5: 0-31 *2 r1 1:3-4/1:3-4
   6: 0-31 *2 r2 2:5-6/2:5-6/2:50-50
   14: 32-63 *2 r2 2:40-41/2:40-41/2:50-50
   15: 32-63 *1 r2 2:42-42/2:42-42/2:50-50
  8: 64-127 *2 r2 2:70-100/2:70-100/2:9-50 +
   9: 64-95 *1 r1 1:70-70/1:70-70
   16: 96-127 *1 r2 2:100-100/2:100-100/2:50-50
 11: 192-255 *1 r1 1:250-250/1:250-250 +
  12: 224-255 *1 r1 1:250-250/1:250-250
)");
}

TEST_F(Trees, ForgetTheirOwnPointsWhereSomethingChangedBelow) {
    insert({1, 2, 3, 64, 65, 66, 129, 130, 200, 201});
    giveOwn(m_root);
    insert({67});
    EXPECT_EQ(tree(), R"(1: 0-255 *11 r2 2:1-201/2:1-201/2:9-50 +
 2: 0-127 *7 r2 2:1-67/2:1-67/2:9-50 +
  7: 0-3 *3 r1 1:1-3/1:1-3 + own
   8: 0-1 *1 r1 1:1-1/1:1-1
   9: 2-3 *2 r1 1:2-3/1:2-3
  14: 64-67 *4 r2 2:64-67/2:64-67/2:9-50 +
   15: 64-65 *2 r1 1:64-65/1:64-65
   16: 66-67 *2 r2 2:66-67/2:66-67/2:50-50
 17: 128-255 *4 r1 1:129-201/1:129-201 + own
  18: 128-191 *2 r1 1:129-130/1:129-130
  19: 192-255 *2 r1 1:200-201/1:200-201
)");
    const auto look = [](auto&& self, const Node& node) -> void {
        if (!node.isLeaf()) {
            EXPECT_EQ(hasOwnBlocks(node), node.ownCount > 0) << node.id;
        }
        for (const Node& child : node.children)
            self(self, child);
    };
    look(look, m_root);
    EXPECT_FALSE(hasOwnBlocks(m_root));
}

TEST_F(Trees, AreWrittenInPagesOnceTheyHaveManyNodes) {
    m_settings.pageNodes = 3;
    insert({1, 130, 131});
    EXPECT_EQ(tree(), R"(1: 0-255 *3 r1 1:1-131/1:1-131 +
 2: 0-127 *1 r1 1:1-1/1:1-1
 3: 128-255 *2 r1 1:130-131/1:130-131
)");
    const std::string untouched = R"(  6: 64-127 *3 r2 2:64-100/2:64-100/2:50-50 +
   7: 64-95 *2 r2 2:64-65/2:64-65/2:50-50
   8: 96-127 *1 r2 2:100-100/2:100-100/2:50-50
 9: 128-255 *5 r2 2:130-202/2:130-202/2:50-50 page
  10: 128-191 *2 r2 2:130-131/2:130-131/2:50-50
  15: 200-203 *3 r2 2:200-202/2:200-202/2:50-50 +
   16: 200-201 *2 r2 2:200-201/2:200-201/2:50-50
   17: 202-203 *1 r2 2:202-202/2:202-202/2:50-50
)";
    insert({40, 64, 65, 100, 200, 201, 202});
    EXPECT_EQ(tree(), R"(1: 0-255 *10 r2 2:1-202/2:1-202/2:50-50 +
 4: 0-127 *5 r2 2:1-100/2:1-100/2:50-50 page
  5: 0-63 *2 r2 2:1-40/2:1-40/2:50-50
)" + untouched);
    insert({0});
    EXPECT_EQ(tree(), R"(1: 0-255 *11 r3 3:0-202/3:0-202/3:50-50 +
 4: 0-127 *6 r3 3:0-100/3:0-100/3:50-50 page
  18: 0-63 *3 r3 3:0-40/3:0-40/3:50-50 +
   19: 0-31 *2 r3 3:0-1/3:0-1/3:50-50
   20: 32-63 *1 r3 3:40-40/3:40-40/3:50-50
)" + untouched);
}

TEST_F(Trees, AreNotChangedWhereTheyAreNone) {
    m_settings.pageNodes = 3;
    insert({1, 40, 64, 65, 100, 130, 131, 200, 201, 202});
    const Node sound = m_root;
    const std::function<void(Page&)> changes[] = {
        [](Page& page) { page[0].last -= 1; },           [](Page& page) { page[0].level += 1; },
        [](Page& page) { page[0].totalCount += 1; },     [](Page& page) { page.pop_back(); },
        [](Page& page) { std::swap(page[0], page[1]); },
    };
    for (const auto& change : changes) {
        // Of the root, and of a page below it.
        m_root = sound;
        change(m_root.children);
        EXPECT_EQ(outcomeOf([&] { insert({3}); }).code, ErrorCode::Damaged);
        m_root = sound;
        Page& page = pageOf(m_root.children[0]);
        const Page before = page;
        change(page);
        EXPECT_EQ(outcomeOf([&] { insert({3}); }).code, ErrorCode::Damaged);
        page = before;
    }
    m_root = sound;
    insert({3});
    EXPECT_EQ(m_root.totalCount, 11u);
}

TEST_F(Trees, TellOfANodeTheLatestChangeBelowIt) {
    Node children[2];
    children[0].revision = 3;
    children[0].totalCount = 4;
    children[0].attributes = {{2, 3, {{{1, 2, true, false}, {}}}}};
    children[1].revision = 6;
    children[1].totalCount = 5;
    children[1].attributes = {{2, 5, {{{0, 1, true, true}, {}}}},
                              {7, 6, {{{8, 8, true, false}, {}}}}};
    // Whichever of the two comes last.
    for (const std::uint32_t revision : {1u, 9u, 9u, 1u}) {
        std::swap(children[0], children[1]);
        Node node;
        node.id = 1;
        node.revision = revision;
        node.totalCount = 77;
        node.children = {children[0], children[1]};
        summarise(node, children, m_table);
        node.children.clear();
        EXPECT_EQ(textOf(node, 0),
                  "1: 0-0 *9 r" + std::to_string(std::max(revision, 6u)) + " 5:0-2/6:8-9\n");
        EXPECT_TRUE(node.attributes[0].elements[0].statistics.hasInvalid);
        EXPECT_FALSE(node.attributes[1].elements[0].statistics.hasInvalid);
    }
}

// A node over half of the keys and the nodes below it: what a builder could have made, and what
// not.
class Shapes : public ::testing::Test {
protected:
    Shapes() {
        m_above.id = 4;
        m_above.level = 1;
        m_above.last = 127;
        m_children = {leaf(2, 0, 31), leaf(2, 32, 63), inner(2, 64, 127)};
    }
    static Node leaf(unsigned level, Key first, Key last) {
        Node node;
        node.id = 9;
        node.level = static_cast<std::uint8_t>(level);
        node.first = first;
        node.last = last;
        node.totalCount = node.ownCount = 5;
        return node;
    }
    static Node inner(unsigned level, Key first, Key last) {
        Node node = leaf(level, first, last);
        node.ownCount = 0;
        node.childPage = {1, 0, 1, 0};
        return node;
    }
    // Whether the nodes could stand below the other: 't' as a tree, 'c' as one of cells.
    std::string passing(const Node& above, const std::vector<Node>& children,
                        unsigned leafLevel = 8) const {
        Node counted = above;
        counted.totalCount = static_cast<std::uint64_t>(sumOfPoints(children));
        const Cells cells{m_space, leafLevel};
        const std::string tree = outcomeOf([&] { requireTree(counted, children); }).text;
        const std::string cell = outcomeOf([&] { requireCells(counted, children, cells); }).text;
        return std::string(tree.empty() ? "t" : "") + (cell.empty() ? "c" : "");
    }
    std::string with(const std::function<void(std::vector<Node>&)>& change,
                     unsigned leafLevel = 8) const {
        std::vector<Node> children = m_children;
        change(children);
        return passing(m_above, children, leafLevel);
    }

    const schema::Attribute m_primary{record("x", 0, 255), 5};
    const KeySpace m_space{m_primary};
    Node m_above;
    std::vector<Node> m_children;
};

TEST_F(Shapes, OfWhatABuilderMakesAreTakenAndNoOthers) {
    using Nodes = std::vector<Node>;
    // 64 keys a cell at level 2, 32 at level 3, one at level 8.
    EXPECT_EQ(with([](Nodes& n) { n[0].last = n[1].last, n.erase(n.begin() + 1); }), "tc");
    EXPECT_EQ(with([](Nodes& n) { n.erase(n.begin()), n[0].first = 0; }), "tc");
    EXPECT_EQ(with([](Nodes& n) { n = {leaf(2, 0, 127)}; }), "tc");
    EXPECT_EQ(with([](Nodes& n) { n = {inner(4, 16, 31), leaf(2, 64, 127)}; }), "tc");
    EXPECT_EQ(with([](Nodes& n) { n = {inner(2, 0, 63), inner(7, 126, 127)}; }), "tc");
    // Leaves of half a cell, of another level, inner nodes of more than a cell or of none.
    EXPECT_EQ(with([](Nodes&) {}), "t");
    EXPECT_EQ(with([](Nodes& n) { n = {leaf(2, 0, 63), leaf(2, 64, 126)}; }), "t");
    EXPECT_EQ(with([](Nodes& n) { n = {leaf(2, 1, 63), leaf(2, 64, 127)}; }), "t");
    EXPECT_EQ(with([](Nodes& n) { n = {leaf(3, 0, 31)}; }), "t");
    EXPECT_EQ(with([](Nodes& n) { n = {inner(2, 0, 127)}; }), "t");
    EXPECT_EQ(with([](Nodes& n) { n = {inner(3, 0, 63)}; }), "t");
    EXPECT_EQ(with([](Nodes& n) { n = {inner(8, 5, 5)}; }), "t");
    EXPECT_EQ(with([](Nodes& n) { n = {inner(9, 5, 5)}; }), "t");
    // Leaves of one cell only where cells are not divided, one behind the other.
    const Nodes twice{leaf(2, 0, 63), leaf(2, 0, 63), leaf(2, 0, 127)};
    EXPECT_EQ(passing(m_above, twice, 2), "tc");
    EXPECT_EQ(passing(m_above, twice, 3), "t");
    EXPECT_EQ(passing(m_above, {twice[2], twice[0]}, 2), "");
    EXPECT_EQ(passing(m_above, {leaf(2, 0, 127), leaf(2, 0, 127)}, 2), "t");
    EXPECT_EQ(passing(m_above, {twice[0], inner(2, 0, 63)}, 3), "");
    EXPECT_EQ(passing(m_above, {inner(2, 0, 63), inner(2, 64, 127)}, 2), "t");
    EXPECT_EQ(passing(m_above, {leaf(2, 0, 63), leaf(2, 63, 127)}, 2), "");
    // Outside of the node, of its level, of no keys, without points.
    EXPECT_EQ(with([](Nodes& n) { n = {leaf(2, 64, 128)}; }), "");
    EXPECT_EQ(with([](Nodes& n) { n = {leaf(1, 0, 127)}; }), "");
    EXPECT_EQ(with([](Nodes& n) { n = {leaf(2, 63, 0)}; }), "");
    EXPECT_EQ(with([](Nodes& n) { n = {leaf(2, 64, 127), leaf(2, 0, 63)}; }), "");
    EXPECT_EQ(with([](Nodes& n) { n[1].totalCount = 0; }), "");
    Node later = m_above;
    later.first = 1;
    EXPECT_EQ(passing(later, {leaf(2, 0, 63)}), "");
    Node empty = m_above;
    empty.childPage = {1, 0, 1, 0};
    EXPECT_EQ(passing(empty, {}), "");
    try {
        requireTree(m_above, m_children);
        ADD_FAILURE() << "another number of points was taken";
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.code(), ErrorCode::Damaged);
        EXPECT_STREQ(failure.what(), "The file is damaged: its index is not a tree.");
        EXPECT_EQ(failure.details(),
                  "The nodes below node 4 are not what it says. Restore the file from a backup.");
    }

    Node root = inner(0, 0, 255);
    root.id = 1;
    EXPECT_TRUE(isRoot(root, m_space));
    for (const std::function<void(Node&)>& change : std::vector<std::function<void(Node&)>>{
             [](Node& n) { n.id = 2; }, [](Node& n) { n.level = 1; }, [](Node& n) { n.first = 1; },
             [](Node& n) { n.last = 254; }, [](Node& n) { n.childPage = {}; },
             [](Node& n) { n.totalCount = 0; }}) {
        Node other = root;
        change(other);
        EXPECT_FALSE(isRoot(other, m_space));
    }
}

}  // namespace
}  // namespace tarvo::engine::index
