// What queries refuse and when, what they leave alone, and what is left of them: in the points, the
// attributes with one value, the changelog.
#include "tests/engine/queryfixture.h"

#include "engine/query/redefine.h"
#include "engine/query/stat.h"

#include <limits>

namespace tarvo::engine {
namespace {

using namespace testing;
using query::FillQuery;
using query::InsertQuery;
using query::RemoveQuery;
using query::SelectQuery;
using query::UpdateQuery;
using schema::AttributeRecord;

using QueryRules = QueryFixture;

TEST_F(QueryRules, WrongTypesAndMissingBuffersAreToldWhereTheyAreNamed) {
    create(amplitudeOnly());
    std::uint64_t value = 0;
    InsertQuery insert(*session);
    UpdateQuery update(*session);
    FillQuery fill(*session, {}, "");
    RemoveQuery remove(*session);
    SelectQuery select(*session, {}, "");
    for (const std::uint32_t type : {0u, 11u, 12345u}) {
        EXPECT_EQ(codeOf([&] { insert.bind("amplitude", type, &value, 8); }), ErrorCode::Argument);
        EXPECT_EQ(codeOf([&] { select.bind("amplitude", type, &value, 8); }), ErrorCode::Argument);
        EXPECT_EQ(codeOf([&] { fill.bind("amplitude", type, &value); }), ErrorCode::Argument);
        EXPECT_EQ(codeOf([&] { remove.bind(type, &value, 8); }), ErrorCode::Argument);
    }
    EXPECT_EQ(codeOf([&] { select.bind("amplitude", QRB_DATA_TYPE_UINT8, nullptr, 1); }),
              ErrorCode::Argument);
    EXPECT_EQ(codeOf([&] { fill.bind("amplitude", QRB_DATA_TYPE_UINT8, nullptr); }),
              ErrorCode::Argument);
    // What nobody has bound.
    EXPECT_EQ(codeOf([&] { fill.next(1); }), ErrorCode::State);
    EXPECT_EQ(codeOf([&] { remove.next(1); }), ErrorCode::State);
    EXPECT_EQ(codeOf([&] { update.next(1); }), ErrorCode::State);
    EXPECT_EQ(insert.next(0), 0u);
    EXPECT_EQ(select.progress(), 0u);
    EXPECT_EQ(select.next(1), 0u);
    EXPECT_EQ(select.progress(), 100u);
    EXPECT_EQ(codeOf([&] { select.bind("amplitude", QRB_DATA_TYPE_UINT8, &value, 1); }),
              ErrorCode::State);
    const double nothing = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(codeOf([&] { fill.bind("amplitude", QRB_DATA_TYPE_DOUBLE, &nothing); }),
              ErrorCode::Range);
}

TEST_F(QueryRules, WholeNumbersAreReadAndWrittenExactlyToTheEndsOfTheirTypes) {
    create(
        {record("small", -128, 255), record("large", -9e18, 9e18), record("half", -128, 128, 0.5)});
    const std::int64_t large[] = {-9'000'000'000'000'000'000, 8'999'999'999'999'999'999,
                                  (std::int64_t(1) << 53) + 1};
    const std::int16_t small[] = {-128, 255, 127};
    const double half[] = {-128, 127.5, 127};
    const Values xyz(9);
    InsertQuery insert(*session);
    insert.bind("xyz", QRB_DATA_TYPE_DOUBLE, xyz.data(), 24);
    insert.bind("large", QRB_DATA_TYPE_INT64, large, 8);
    insert.bind("small", QRB_DATA_TYPE_INT16, small, 2);
    insert.bind("half", QRB_DATA_TYPE_DOUBLE, half, 8);
    insert.next(3);
    commit();
    SelectQuery exact(*session, {}, "");
    std::int64_t read[3] = {};
    exact.bind("large", QRB_DATA_TYPE_INT64, read, 8);
    ASSERT_EQ(exact.next(3), 3u);
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(read[i], large[i]);
    const auto readAs = [&](const char* filter, const char* name, std::uint32_t type) {
        std::int64_t value = 0;
        const Outcome outcome = outcomeOf([&] {
            SelectQuery select(*session, {}, filter);
            select.bind(name, type, &value, 8);
            EXPECT_EQ(select.next(1), 1u);
        });
        return outcome.text.empty() ? std::to_string(value & 255) : outcome.text;
    };
    EXPECT_EQ(readAs("small == -128", "small", QRB_DATA_TYPE_INT8), "128");
    EXPECT_EQ(readAs("small == 255", "small", QRB_DATA_TYPE_UINT8), "255");
    EXPECT_EQ(readAs("small == 127", "small", QRB_DATA_TYPE_INT8), "127");
    EXPECT_EQ(readAs("half == -128", "half", QRB_DATA_TYPE_INT8), "128");
    EXPECT_EQ(readAs("small == 255", "small", QRB_DATA_TYPE_INT8),
              "The value 255 of the point attribute \"small\" does not fit the data type that "
              "it is to be read as.");
    EXPECT_EQ(readAs("half == 127.5", "half", QRB_DATA_TYPE_INT8),
              "The value 127.5 of the point attribute \"half\" does not fit the data type that "
              "it is to be read as.");
}

// The next transaction after a rollback has the same number.
TEST_F(QueryRules, QueriesOfAnotherTransactionOrOtherAttributesGoOnNowhere) {
    create(amplitudeOnly());
    const Values xyz(3);
    const std::uint64_t id = 1;
    std::uint16_t value = 7;
    for (const bool redefines : {false, true}) {
        add(5);
        InsertQuery insert(*session);
        insert.bind("xyz", QRB_DATA_TYPE_DOUBLE, xyz.data(), 24);
        UpdateQuery update(*session);
        update.bind("tarvo.id", QRB_DATA_TYPE_UINT64, &id, 8);
        update.bind("amplitude", QRB_DATA_TYPE_UINT16, &value, 2);
        FillQuery fill(*session, {}, "");
        fill.bind("amplitude", QRB_DATA_TYPE_UINT16, &value);
        RemoveQuery remove(*session);
        remove.bind(QRB_DATA_TYPE_UINT64, &id, 8);
        if (redefines) {
            query::putAttribute(*session, record("amplitude", 0, 1000));
        } else {
            const std::uint32_t before = session->change().transaction.id;
            session->rollback();
            begin();
            ASSERT_EQ(session->change().transaction.id, before);
            add(5);
        }
        EXPECT_EQ(codeOf([&] { insert.next(1); }), ErrorCode::State);
        EXPECT_EQ(codeOf([&] { update.next(1); }), ErrorCode::State);
        EXPECT_EQ(codeOf([&] { fill.next(1); }), ErrorCode::State);
        EXPECT_EQ(codeOf([&] { fill.bind("amplitude", QRB_DATA_TYPE_UINT16, &value); }),
                  ErrorCode::State);
        EXPECT_EQ(codeOf([&] { remove.next(1); }), ErrorCode::State);
        EXPECT_EQ(countOf(*session, "amplitude == 0"), redefines ? 10u : 5u);
    }
}

TEST_F(QueryRules, ABegunQueryTakesNoMoreBuffers) {
    create({record("n", 0, 9), record("flag", 0, 1)});
    add(3);
    const double value = 1;
    FillQuery filling(*session, {}, "");
    filling.bind("n", QRB_DATA_TYPE_DOUBLE, &value);
    filling.next(1);
    EXPECT_EQ(codeOf([&] { filling.bind("flag", QRB_DATA_TYPE_DOUBLE, &value); }),
              ErrorCode::State);
    EXPECT_EQ(codeOf([&] { filling.invert("flag"); }), ErrorCode::State);
    const std::uint64_t id = 1;
    UpdateQuery updating(*session);
    updating.bind("tarvo.id", QRB_DATA_TYPE_UINT64, &id, 8);
    updating.bind("n", QRB_DATA_TYPE_DOUBLE, &value, 8);
    updating.next(1);
    EXPECT_EQ(codeOf([&] { updating.bind("flag", QRB_DATA_TYPE_DOUBLE, &value, 8); }),
              ErrorCode::State);
}

TEST_F(QueryRules, PositionsAndIdsAreNotFilledAndOnlyTwoValuesAreInverted) {
    AttributeRecord flag = record("flag", 0, 1);
    flag.invalidValue = 7;
    AttributeRecord one = record("one", 5, 5);
    one.defaultValue = 5;
    create({flag, record("three", 0, 2), one, record("real", 0, 1, 0)});
    add(4, "flag", {0, 1, 7, 1});
    const double value = 1;
    for (const char* name : {"xyz", "xyz[1]", "tarvo.id"}) {
        FillQuery query(*session, {}, "");
        EXPECT_EQ(codeOf([&] { query.bind(name, QRB_DATA_TYPE_DOUBLE, &value); }),
                  ErrorCode::Argument)
            << name;
    }
    for (const char* name : {"three", "one", "real"}) {
        FillQuery query(*session, {}, "");
        EXPECT_EQ(codeOf([&] { query.invert(name); }), ErrorCode::Argument) << name;
    }
    // In portions, with a look between them that puts the first into the tree.
    FillQuery invert(*session, {}, "");
    invert.invert("flag");
    EXPECT_EQ(invert.next(3), 3u);
    EXPECT_EQ(read("flag"), (Values{1, 0, 7, 1}));
    EXPECT_EQ(invert.next(3), 1u);
    EXPECT_EQ(read("flag"), (Values{1, 0, 7, 0}));
    EXPECT_EQ(invert.next(3), 0u);
    commit();
    EXPECT_EQ(read("flag"), (Values{1, 0, 7, 0}));
    EXPECT_NE(lastEntry().find("Points: inserted 4; updated 4; now 4\n"), std::string::npos)
        << lastEntry();
}

TEST_F(QueryRules, WhatChangesNothingLeavesRevisionsAsTheyAre) {
    create({record("n", 0, 9), record("pair", 0, 9, 1, 2)}, 4);
    add(40, "n", Values(40, 3));
    commit();
    begin();
    EXPECT_EQ(fill("n", 3), 40u);
    EXPECT_EQ(update("n", Values(40, 3),
                     [] {
                         Ids ids(40);
                         for (std::size_t i = 0; i < 40; ++i)
                             ids[i] = i + 1;
                         return ids;
                     }()),
              40u);
    commit();
    for (const index::Node& node : nodes())
        EXPECT_EQ(node.revision, 2u) << node.id;
    // One leaf and what is above it.
    begin();
    EXPECT_EQ(update("n", {4}, {17}), 1u);
    commit();
    std::size_t changedLeaves = 0;
    for (const index::Node& node : nodes()) {
        changedLeaves += node.isLeaf() && node.revision == 4;
        EXPECT_EQ(query::readRevision(*session, node.id, "n"), node.revision == 4 ? 4u : 2u);
        EXPECT_EQ(query::readRevision(*session, node.id, "xyz"), 2u);
    }
    EXPECT_EQ(changedLeaves, 1u);
    EXPECT_EQ(query::readRevision(*session, 1, "n"), 4u);
    // A removal encodes all of the leaf anew.
    begin();
    session->addAttribute(record("later", 0, 9));
    EXPECT_EQ(remove({17, 1000}), 1u);
    EXPECT_EQ(remove({17}), 0u);
    commit();
    EXPECT_EQ(query::readRevision(*session, 1, "xyz"), 5u);
    EXPECT_EQ(query::readRevision(*session, 1, "later"), 0u);
    EXPECT_EQ(session->state()->pointCount, 39u);
    // Each point by itself, the first and the last of its leaf, too.
    begin();
    for (std::uint64_t id = 1; id <= 40; ++id)
        EXPECT_EQ(update("pair[1]", {8}, {id}), id == 17 ? 0u : 1u);
    EXPECT_EQ(countOf(*session, "pair[1] == 8"), 39u);
    session->rollback();
    // One element of what the leaves knew nothing of.
    begin();
    session->addAttribute([] {
        AttributeRecord late = record("late", 0, 9, 1, 3);
        late.defaultValue = 2;
        return late;
    }());
    session->addAttribute(record("last", 0, 9));
    EXPECT_EQ(fill("last", 7), 39u);
    EXPECT_EQ(fill("late[1]", 5), 39u);
    EXPECT_EQ(fill("pair[0]", 6), 39u);
    commit();
    EXPECT_EQ(
        countOf(*session,
                "last == 7 && late[0] == 2 && late[1] == 5 && late[2] == 2 && pair[0] == 6 && "
                "pair[1] == 0 && n == 3"),
        39u);
    expectSound();
}

// What a query has put into the tree it does not put there again.
TEST_F(QueryRules, QueriesThatGoOnDoNotRepeatThemselves) {
    create({record("n", 0, 100)});
    add(4, "n", {1, 2, 3, 4});
    std::uint64_t id = 2;
    double value = 20;
    UpdateQuery updating(*session);
    updating.bind("tarvo.id", QRB_DATA_TYPE_UINT64, &id, 8);
    updating.bind("n", QRB_DATA_TYPE_DOUBLE, &value, 8);
    EXPECT_EQ(updating.next(1), 1u);
    EXPECT_EQ(read("n"), (Values{1, 20, 3, 4}));
    EXPECT_EQ(fill("n", 50, {}, "n == 20"), 1u);
    id = 3, value = 30;
    EXPECT_EQ(updating.next(1), 1u);
    EXPECT_EQ(read("n"), (Values{1, 50, 30, 4}));
    // The last of several points keeps its value.
    EXPECT_EQ(update("n", {60, 4}, {2, 4}), 2u);
    EXPECT_EQ(read("n"), (Values{1, 60, 30, 4}));
    EXPECT_EQ(update("n", {50, 4}, {2, 4}), 2u);
    FillQuery filling(*session, {}, "");
    filling.bind("n", QRB_DATA_TYPE_DOUBLE, &value);
    std::uint64_t gone = 1;
    RemoveQuery removing(*session);
    removing.bind(QRB_DATA_TYPE_UINT64, &gone, 8);
    EXPECT_EQ(removing.next(1), 1u);
    EXPECT_EQ(read("n"), (Values{50, 30, 4}));
    EXPECT_EQ(codeOf([&] { filling.next(1); }), ErrorCode::State) << "points are gone";
    add(1, "n", {10}, {1});
    gone = 4;
    EXPECT_EQ(removing.next(1), 1u);
    EXPECT_EQ(read("n"), (Values{10, 50, 30}));
    commit();
    EXPECT_EQ(read("n"), (Values{10, 50, 30}));
    EXPECT_NE(lastEntry().find("Points: inserted 5; updated 7; removed 2; now 3\n"),
              std::string::npos)
        << lastEntry();
}

TEST_F(QueryRules, OneValueForAllChangesOnlyWithAllPoints) {
    AttributeRecord flag = constantRecord("flag", 0, 1, 0);
    create({constantRecord("c", 0, 10, 7, 3), flag, record("n", 0, 100)}, 4);
    // Without points nothing settles the value.
    EXPECT_EQ(fill("c", 3), 0u);
    const Values xyz(9), middle{5, 5, 5};
    const auto insertWith = [&](const char* name, const Values& values) {
        InsertQuery query(*session);
        query.bind("xyz", QRB_DATA_TYPE_DOUBLE, xyz.data(), 24);
        query.bind(name, QRB_DATA_TYPE_DOUBLE, values.data(), 8);
        return outcomeOf([&] { query.next(static_cast<std::uint32_t>(values.size())); }).code;
    };
    // A batch that is refused for its last value settles nothing either.
    EXPECT_EQ(insertWith("c[1]", {4, 4, 5}), ErrorCode::Range);
    EXPECT_EQ(insertWith("c[1]", middle), ErrorCode::Internal);
    EXPECT_EQ(countOf(*session, "c[0] == 7 && c[1] == 5 && c[2] == 7"), 3u);
    // Nor does one that is refused for its id.
    session->addAttribute(constantRecord("d", 0, 10, 7));
    EXPECT_EQ(codeOf([&] { add(1, "d", {7}, {2}); }), ErrorCode::Exists);
    EXPECT_TRUE(session->state()->attributes.all().back().constant.empty());
    // Points that say nothing of it do: what they have holds from now on.
    EXPECT_EQ(insertWith("flag", {1, 1, 1}), ErrorCode::Range);
    EXPECT_EQ(insertWith("c[0]", {7, 7, 7}), ErrorCode::Internal);
    EXPECT_EQ(insertWith("c[1]", {7}), ErrorCode::Range);
    commit();
    open();
    EXPECT_EQ(countOf(*session, "c[0] == 7 && c[1] == 5 && c[2] == 7 && flag == 0"), 6u);

    begin();
    query::Scope listed, below;
    listed.nodes.emplace();
    for (const index::Node& node : nodes())
        if (node.isLeaf())
            listed.nodes->insert(node.id);
    below.subtree = 1;
    for (const query::Scope& scope : {listed, below}) {
        FillQuery part(*session, scope, "");
        const double same = 5, other = 6;
        EXPECT_EQ(codeOf([&] { part.bind("c[1]", QRB_DATA_TYPE_DOUBLE, &other); }),
                  ErrorCode::Range);
        part.bind("c[1]", QRB_DATA_TYPE_DOUBLE, &same);
        EXPECT_EQ(part.next(100), 6u);
        FillQuery inverted(*session, scope, "");
        EXPECT_EQ(codeOf([&] { inverted.invert("flag"); }), ErrorCode::Range);
    }
    FillQuery invert(*session, {}, "");
    invert.invert("flag");
    EXPECT_EQ(invert.next(4), 4u);
    EXPECT_EQ(countOf(*session, "flag == 0"), 6u);
    EXPECT_EQ(invert.next(4), 2u);
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(invert.next(4), 0u);
    EXPECT_EQ(fill("c[2]", 1), 6u);
    commit();
    open();
    EXPECT_EQ(countOf(*session, "c[0] == 7 && c[1] == 5 && c[2] == 1 && flag == 1"), 6u);
    // A row for a point that is not there may say what it wants.
    begin();
    EXPECT_EQ(update("flag", {0, 1}, {1000, 1}), 1u);
    EXPECT_EQ(codeOf([&] { update("flag", {0, 1}, {2, 1}); }), ErrorCode::Range);
    commit();
    EXPECT_NE(lastEntry().find("Points: updated 1; now 6\n"), std::string::npos) << lastEntry();
}

TEST_F(QueryRules, AFillOfAConstantThatWasNeverGivenKeepsItsOtherElements) {
    create({});
    add(3);
    commit();
    begin();
    session->addAttribute(constantRecord("late", -5, 10, 7, 3));
    EXPECT_EQ(fill("late[1]", 2), 3u);
    commit();
    open();
    EXPECT_EQ(countOf(*session, "late[0] == 7 && late[1] == 2 && late[2] == 7"), 3u);
}

TEST_F(QueryRules, PortionsFollowOneAnotherWithinALeaf) {
    create({record("n", 0, 100)}, 1000);
    Values values(100);
    for (std::size_t i = 0; i < 100; ++i)
        values[i] = static_cast<double>(i);
    add(100, "n", values);
    commit();
    for (const char* filter : {"", "n >= 20"}) {
        SelectQuery select(*session, {}, filter);
        Values portion(50);
        Values all;
        select.bind("n", QRB_DATA_TYPE_DOUBLE, portion.data(), 8);
        for (const std::uint32_t most : {1u, 7u, 30u, 50u, 50u}) {
            const std::uint32_t count = select.next(most);
            all.insert(all.end(), portion.begin(), portion.begin() + count);
        }
        EXPECT_EQ(all, Values(values.begin() + (*filter ? 20 : 0), values.end()));
    }
    begin();
    FillQuery filling(*session, {}, "");
    const double value = 100;
    filling.bind("n", QRB_DATA_TYPE_DOUBLE, &value);
    std::uint64_t filled = 0;
    for (const std::uint32_t portion : {1u, 7u, 30u, 100u}) {
        filled += filling.next(portion);
        EXPECT_EQ(countOf(*session, "n == 100"), filled);
    }
    EXPECT_EQ(filled, 100u);
    commit();
    EXPECT_NE(lastEntry().find("Points: updated 100; now 100\n"), std::string::npos);
}

TEST_F(QueryRules, IdsOfABatchAreGivenOnceAndToTheEndOfTheirRange) {
    create({record("n", 0, 100)});
    const schema::Grid grid = session->state()->pointId().grid;
    const auto last = static_cast<std::uint64_t>(grid.integerValue(grid.maximumCode()));
    const Ids five{last - 5, last - 4};
    add(2, "n", {1, 2}, five);
    EXPECT_EQ(codeOf([&] { add(5); }), ErrorCode::Range);
    // Behind all others, but the same one twice.
    EXPECT_EQ(codeOf([&] {
                  add(3, nullptr, {}, {last - 3, last - 2, last - 2});
              }),
              ErrorCode::Exists);
    std::uint64_t given[8] = {};
    const Values xyz(12);
    InsertQuery insert(*session);
    insert.bind("xyz", QRB_DATA_TYPE_DOUBLE, xyz.data(), 24);
    insert.bindId(QRB_DATA_TYPE_UINT64, given, 16);
    EXPECT_EQ(insert.next(4), 4u);
    EXPECT_EQ(Ids(given, given + 8), (Ids{last - 3, 0, last - 2, 0, last - 1, 0, last, 0}));
    EXPECT_EQ(codeOf([&] { insert.next(1); }), ErrorCode::Range);
    // Every id is given; points can still be changed and moved.
    const double place[] = {-500, 0, 0};
    UpdateQuery update(*session);
    update.bind("tarvo.id", QRB_DATA_TYPE_UINT64, &five[0], 8);
    update.bind("xyz", QRB_DATA_TYPE_DOUBLE, place, 24);
    EXPECT_EQ(update.next(1), 1u);
    add(1, "n", {3}, {2});
    commit();
    EXPECT_EQ(countOf(*session, "n == 1 && xyz[0] == -500"), 1u);
    EXPECT_NE(lastEntry().find("Points: inserted 7; updated 1; now 7\n"), std::string::npos)
        << lastEntry();
    expectSound();
}

TEST_F(QueryRules, APointWithoutAnIdIsNotInserted) {
    AttributeRecord ids = record("tarvo.id", 0, 1000);
    ids.invalidValue = 0;
    ids.defaultValue = 0;
    create({record("n", 0, 100)}, 100, [&](auto& created) { created.primaryAttribute = ids; });
    const Values wanted{5, 0};
    InsertQuery insert(*session);
    insert.bind("tarvo.id", QRB_DATA_TYPE_DOUBLE, wanted.data(), 8);
    EXPECT_EQ(codeOf([&] { insert.next(2); }), ErrorCode::Range);
    EXPECT_EQ(insert.next(1), 1u);
    EXPECT_EQ(codeOf([&] { insert.next(1); }), ErrorCode::Exists);
    EXPECT_EQ(session->state()->pointCount, 1u);
}

TEST_F(QueryRules, IdsInTheOrderOfTheIndexAreNotToldBeforehand) {
    create(amplitudeOnly(), 4, [](auto& created) { created.optimizePointId = true; });
    InsertQuery insert(*session);
    std::uint64_t id = 0;
    EXPECT_EQ(codeOf([&] { insert.bindId(QRB_DATA_TYPE_UINT64, &id, 8); }), ErrorCode::State);
    const Values xyz{900, 0, 0, -900, 0, 0, 0, 0, 0, 500, 0, 0, -500, 0, 0};
    insert.bind("xyz", QRB_DATA_TYPE_DOUBLE, xyz.data(), 24);
    insert.next(5);
    commit();
    EXPECT_EQ(read("xyz[0]"), (Values{-900, -500, 0, 500, 900}));
    create(amplitudeOnly(), 4);
    InsertQuery plain(*session);
    plain.bind("xyz", QRB_DATA_TYPE_DOUBLE, xyz.data(), 24);
    plain.next(5);
    commit();
    EXPECT_EQ(read("xyz[0]"), (Values{900, -900, 0, 500, -500}));
    // Within a leaf, too, points stand in the order of their ids.
    std::uint64_t last = 0;
    for (const index::Node& node : nodes()) {
        if (!node.isLeaf())
            continue;
        query::Scope scope;
        scope.nodes.emplace().insert(node.id);
        SelectQuery select(*session, scope, "");
        select.bind("tarvo.id", QRB_DATA_TYPE_UINT64, &id, 8);
        for (last = 0; select.next(1); last = id)
            EXPECT_GT(id, last);
    }
}

class FailedQueries : public QueryFixture {
protected:
    // Points whose values say nothing of a leaf; a block of one of the leaves is damaged.
    void make(std::size_t points, std::size_t damagedLeaf) {
        create({record("n", 0, 65535), record("m", 0, 65535), constantRecord("c", 0, 9, 1)}, 20);
        Values values(points);
        for (std::size_t i = 0; i < points; ++i)
            values[i] = static_cast<double>(i % 3);
        add(points, "n", values);
        commit();
        std::vector<index::Node> leaves = nodes();
        std::erase_if(leaves, [](const index::Node& node) { return !node.isLeaf(); });
        ASSERT_GT(leaves.size(), damagedLeaf);
        before = 0;
        for (std::size_t i = 0; i < damagedLeaf; ++i)
            before += leaves[i].ownCount;
        const schema::AttributeTable attributes = session->state()->attributes;
        const schema::Attribute& n = attributes[static_cast<std::size_t>(attributes.find("n"))];
        const BlobRef block = leaves[damagedLeaf].find(n.uid)->elements[0].block;
        session.reset();
        const std::string at = std::to_string(block.offset + 1);
        runSql(file,
               ("UPDATE blob SET data = CAST(substr(data, 1, " + at + " - 1) || " +
                "CASE WHEN substr(data, " + at + ", 1) = x'41' THEN x'42' ELSE x'41' END " +
                "|| substr(data, " + at + " + 1) AS BLOB) WHERE id = " + std::to_string(block.blob))
                   .c_str());
    }
    static void expectFailed(const std::function<void()>& next) {
        for (int i = 0; i < 3; ++i) {
            const Outcome outcome = outcomeOf(next);
            EXPECT_EQ(outcome.code, ErrorCode::State);
            EXPECT_EQ(outcome.text, "The query failed, and can't go on.");
        }
    }

    std::uint64_t before = 0;  // points of the leaves that come before the damaged one
};

// Whether values are only read, only looked at for the filter, or both, by one thread or several,
// near the beginning or while much is read ahead.
TEST_F(FailedQueries, PassNoPointsOver) {
    for (const std::size_t damagedLeaf : {0u, 1u, 2u, 100u}) {
        make(damagedLeaf == 100 ? 5000 : 100, damagedLeaf);
        for (const unsigned threads : {1u, 4u})
            for (const char* filter : {"", "n != 1", "m == 0"})
                for (const bool reads : {true, false})
                    for (const std::uint32_t portion : {1u, 7u, 100'000u}) {
                        if (!reads && std::string_view(filter) != "n != 1")
                            continue;  // no block is read
                        SCOPED_TRACE(std::to_string(damagedLeaf) + " " + filter + " " +
                                     std::to_string(portion));
                        session = std::make_unique<session::Session>(
                            file, session::OpenSettings{0, threads}, "test");
                        SelectQuery select(*session, {}, filter);
                        Values values(portion);
                        if (reads)
                            select.bind("n", QRB_DATA_TYPE_DOUBLE, values.data(), 8);
                        std::uint64_t read = 0;
                        EXPECT_EQ(codeOf([&] {
                                      while (const std::uint32_t count = select.next(portion))
                                          read += count;
                                  }),
                                  ErrorCode::Damaged);
                        EXPECT_LE(read, before);
                        EXPECT_LT(select.progress(), 100u);
                        expectFailed([&] { select.next(portion); });
                    }
    }
}

// A value that the caller's type can't hold is in the midst of what was taken for the buffers.
TEST_F(FailedQueries, HaveLostWhatDidNotFitTheBuffers) {
    create({record("n", 0, 1000)}, 20);
    Values values(100, 7);
    values[30] = 256;
    add(100, "n", values);
    commit();
    for (const std::uint32_t portion : {1u, 7u, 1000u}) {
        SelectQuery select(*session, {}, "");
        std::vector<std::uint8_t> read(portion);
        select.bind("n", QRB_DATA_TYPE_UINT8, read.data(), 1);
        EXPECT_EQ(codeOf([&] {
                      while (select.next(portion)) {
                      }
                  }),
                  ErrorCode::Range);
        expectFailed([&] { select.next(portion); });
        EXPECT_LT(select.progress(), 100u);
    }
}

// What a call took before it failed is neither changed nor told; what earlier ones took is both.
TEST_F(FailedQueries, ChangeNothingWithTheCallThatFails) {
    make(100, 2);
    for (const std::uint32_t portion : {1u, 7u, 1000u}) {
        open();
        begin();
        FillQuery filling(*session, {}, "n != 1");
        const double value = 5;
        filling.bind("m", QRB_DATA_TYPE_DOUBLE, &value);
        std::uint64_t filled = 0;
        EXPECT_EQ(codeOf([&] {
                      while (const std::uint32_t count = filling.next(portion))
                          filled += count;
                  }),
                  ErrorCode::Damaged);
        expectFailed([&] { filling.next(portion); });
        EXPECT_LE(filled, before);
        EXPECT_EQ(filled > 0, portion < 1000);
        EXPECT_EQ(countOf(*session, "m == 5"), filled);
        EXPECT_EQ(countOf(*session, "c == 1"), 100u);
        EXPECT_EQ(session->changelog().notes().updated, filled);
        session->rollback();
    }
}

}  // namespace
}  // namespace tarvo::engine
