// What is different between two databases, rule by rule.
#include "core/difftext.h"
#include "core/error.h"
#include "core/leafpairs.h"
#include "tests/core/difftest.h"

#include <algorithm>
#include <cmath>
#include <filesystem>

namespace {

using namespace tarvo;
using namespace tarvo::core::testing;

// Copies of a file that went different ways have leaves of the same number and revision.
TEST_F(Diff, OfTwoFilesPassesNothingOver) {
    create("a.qrbx");
    change([&] {
        m_cloud.pointAttributes().add(attribute("v", 0, 100, 1));
        insert({1, 2, 3}, "v", {5, 6, 7});
    });
    m_cloud.close();
    std::filesystem::copy_file(file("a.qrbx"), file("b.qrbx"));
    std::filesystem::create_hard_link(file("a.qrbx"), file("c.qrbx"));
    for (const auto& [name, value] : {std::pair{"a.qrbx", 8.0}, {"b.qrbx", 9.0}}) {
        m_cloud.open(file(name), OpenSettings(m_context));
        change([&, id = value] { update({2}, "v", {id}); });
        m_cloud.close();
    }
    const core::ComparedStates linked(m_context, {file("a.qrbx"), 2}, {file("c.qrbx")});
    EXPECT_TRUE(linked.areOfOneFile());
    EXPECT_EQ(linked.nameAfter().transaction, 3u);
    const core::ComparedStates copied(m_context, {file("a.qrbx")}, {file("b.qrbx")});
    EXPECT_FALSE(copied.areOfOneFile());
    const auto diff =
        core::compareDatabases(copied.before(), copied.after(), copied.areOfOneFile());
    ASSERT_EQ(diff.points->changed, 1u);
    EXPECT_EQ(core::diffText(diff),
              "Points (3 -> 3)\n"
              "  * 1 point changed\n"
              "    v: 1 point\n"
              "      id 2: 8 -> 9\n");
}

TEST_F(Diff, OfTransactionsPassesOverWhatBothHave) {
    create("a.qrbx");
    change([&] {
        m_cloud.pointAttributes().add(attribute("v", 0, 100, 1));
        auto late = attribute("c", 0, 9, 1);
        late.storageClass = PointAttribute::CONSTANT;
        m_cloud.pointAttributes().add(late);
        std::vector<std::uint64_t> ids(400);
        for (std::size_t i = 0; i < ids.size(); ++i)
            ids[i] = i + 1;
        insert(ids, "v", std::vector<double>(ids.size(), 5));
    });
    change([&] { update({7}, "v", {6}); });
    change([&] { fill("c", 3); });
    m_cloud.close();
    const core::ComparedStates states(m_context, {file("a.qrbx"), 2}, {file("a.qrbx"), 4});
    const core::LeafPairs leaves = core::pairLeaves(states.before(), states.after());
    EXPECT_GT(leaves.common.size(), 5u);
    EXPECT_EQ(leaves.before.size(), 1u);
    EXPECT_EQ(leaves.after, leaves.before);
    EXPECT_EQ(leaves.pointsCommon + leaves.pointsBefore, 400u);
    EXPECT_TRUE(core::sameInCommonLeaves(states.before(), states.after(), "v"));
    // The value for the whole file stands in no leaf.
    EXPECT_FALSE(core::sameInCommonLeaves(states.before(), states.after(), "c"));
    const auto diff = compareDatabases(states.before(), states.after(), true, core::DiffOptions());
    EXPECT_EQ(diff.points->changed, 400u);
}

TEST_F(Diff, TellsDefinitionsAndItemsFieldByField) {
    create("a.qrbx");
    change([&] {
        for (const char* name : {"same", "longer", "gone"})
            m_cloud.pointAttributes().add(attribute(name, 0, 100, 1));
        insert({1, 2}, "same", {1, 2});
        for (const char* item : {"kept", "changed", "signed", "dropped"})
            m_cloud.metaData().set(item, "1");
    });
    change([&] {
        PointAttribute other = m_cloud.pointAttributes().get("longer");
        other.length = 2;
        other.title = "two\nlines";
        m_cloud.pointAttributes().put(other);
        m_cloud.pointAttributes().remove("gone");
        m_cloud.pointAttributes().add(attribute("new", 0, 1, 1));
        m_cloud.metaData().set("changed", "2");
        m_cloud.metaData().createSignature("signed", 1, {1, 2, 3});
        m_cloud.metaData().remove("dropped");
        m_cloud.metaData().set("made", "1");
        m_cloud.management().setChunkSizeLOD(20);
    });
    m_cloud.close();
    EXPECT_EQ(core::diffText(compare({file("a.qrbx"), 2}, {file("a.qrbx"), 3})),
              "Settings\n"
              "  * chunk_size_lod: 0 -> 20\n"
              "Point attributes\n"
              "  + new\n"
              "  - gone\n"
              "  * longer\n"
              "      title: longer -> two lines\n"
              "      length: 1 -> 2\n"
              "Metadata items\n"
              "  + made\n"
              "  - dropped\n"
              "  * changed: another value\n"
              "  * signed: now signed\n"
              "Points (2 -> 2)\n"
              "    longer: not compared, because the lengths differ\n");
    core::DiffOptions options;
    options.attributes = {"none"};
    EXPECT_THROW(compare({file("a.qrbx")}, {file("a.qrbx")}, options), core::Failure);
}

// The last value of a batch is as wide as the others.
TEST_F(Diff, ReadsValuesOfEveryWidth) {
    struct Range {
        double least, most;
    };
    std::vector<PointAttribute> definitions;
    for (const auto& [least, most] :
         {Range{0, 200}, Range{-100, 100}, Range{0, 60000}, Range{-30000, 30000}, Range{0, 4e9},
          Range{-2e9, 2e9}, Range{0, 9e18}, Range{-9e18, 9e18}})
        definitions.push_back(
            attribute(("v" + std::to_string(definitions.size())).c_str(), least, most, 1));
    create("a.qrbx");
    change([&] {
        for (const PointAttribute& definition : definitions)
            m_cloud.pointAttributes().add(definition);
        insert({1, 2, 3}, "", {});
    });
    change([&] {
        for (const PointAttribute& definition : definitions)
            update({1, 3}, definition.name, {definition.minimumValue, definition.maximumValue});
    });
    m_cloud.close();
    const auto diff = compare({file("a.qrbx"), 2}, {file("a.qrbx"), 3});
    for (const PointAttribute& definition : definitions) {
        SCOPED_TRACE(definition.name);
        const auto values = std::ranges::find(diff.points->values, definition.name,
                                              [](const auto& each) { return each.attribute; });
        ASSERT_NE(values, diff.points->values.end());
        ASSERT_EQ(idsOf(values->first), std::vector<std::uint64_t>{3});
        EXPECT_EQ(std::stod(values->first[0].before[0]), definition.minimumValue);
        EXPECT_EQ(std::stod(values->first[0].after[0]), definition.maximumValue);
    }
}

// Whole numbers of 64 bits, values that lie on no grid, and those that are none.
TEST_F(Diff, ComparesValuesByTheirDefinitions) {
    const auto make = [&](const char* name, const PointAttribute& definition,
                          const std::vector<double>& values) {
        create(name);
        change([&] {
            m_cloud.pointAttributes().add(definition);
            std::vector<std::uint64_t> ids;
            for (std::size_t i = 0; i < values.size(); ++i)
                ids.push_back(i + 1);
            insert(ids, "v", values);
        });
        m_cloud.close();
    };
    struct Case {
        const char* what;
        PointAttribute before, after;
        std::vector<double> old, now;
        std::vector<std::uint64_t> different;
    };
    const double nan = std::nan("");
    const auto with = [](PointAttribute definition, double invalid) {
        definition.invalidValue = invalid;
        return definition;
    };
    const double large = 4611686018427387904.0;  // 2^62
    const Case cases[] = {
        {"any double",
         attribute("v", -1e300, 1e300, 0),
         attribute("v", -1e300, 1e300, 0),
         {1, 0.1, 5},
         {1, 0.1, std::nextafter(5.0, 6)},
         {3}},
        {"not a number",
         with(attribute("v", 0, 10, 0), nan),
         with(attribute("v", 0, 10, 0), nan),
         {1, 2},
         {1, 3},
         {2}},
        {"finer grid",
         attribute("v", -10, 10, 0.1),
         attribute("v", -10, 10, 0.01),
         {1.2, 1.2, -3},
         {1.2, 1.21, -3},
         {2}},
        {"none of either",
         with(attribute("v", 0, 10, 1), 0),
         with(attribute("v", 0, 20, 0.5), 20),
         {0, 0, 5, 4},
         {20, 4, 20, 4},
         {2, 3}},
        {"whole and real",
         attribute("v", 0, 9e18, 1),
         attribute("v", 0, 9e18, 0),
         {large, large, 3},
         {large, large + 1024, 3.25},
         {2, 3}},
    };
    for (const Case& one : cases) {
        SCOPED_TRACE(one.what);
        for (const char* name : {"x.qrbx", "y.qrbx"})
            std::filesystem::remove(file(name));
        make("x.qrbx", one.before, one.old);
        make("y.qrbx", one.after, one.now);
        core::DiffOptions options;
        options.attributes = {"v"};
        const auto diff = compare({file("x.qrbx")}, {file("y.qrbx")}, options);
        ASSERT_EQ(diff.points->values.size(), 1u);
        EXPECT_EQ(idsOf(diff.points->values[0].first), one.different);
        if (one.what == std::string_view("none of either")) {
            EXPECT_EQ(diff.points->values[0].first[0].before[0], "no value");
            EXPECT_EQ(diff.points->values[0].first[1].after[0], "no value");
        }
    }
}

}  // namespace
