// What queries refuse and when, what they leave alone, and what is left of them: in the points, the
// index, the attributes with one value, the changelog.
#include "tests/engine/store.h"

#include "engine/query/commit.h"
#include "engine/query/fill.h"
#include "engine/query/redefine.h"
#include "engine/query/remove.h"
#include "engine/query/stat.h"
#include "engine/query/update.h"
#include "engine/report/check.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>
#include <set>
#include <tuple>

namespace tarvo::engine {
namespace {

using namespace testing;
using query::FillQuery;
using query::InsertQuery;
using query::RemoveQuery;
using query::SelectQuery;
using query::UpdateQuery;
using schema::AttributeRecord;
using Values = std::vector<double>;
using Ids = std::vector<std::uint64_t>;

AttributeRecord constantRecord(const char* name, double minimum, double maximum, double value,
                               std::uint32_t length = 1) {
    AttributeRecord result = record(name, minimum, maximum, 1, length);
    result.storageClass = 1;
    result.defaultValue = value;
    return result;
}

class QueryRules : public ::testing::Test {
protected:
    void create(const std::vector<AttributeRecord>& extra, std::uint32_t chunkSize = 100,
                const std::function<void(session::CreateSettings&)>& change = {}) {
        session.reset();
        std::filesystem::remove(file);
        session::CreateSettings created = settings(1, chunkSize);
        if (change)
            change(created);
        session::Session::create(file, created, "test", extra);
        open();
        begin();
    }
    void open() {
        session = std::make_unique<session::Session>(file, session::OpenSettings{0}, "test");
    }
    void begin() { session->begin("t", "test", "", ""); }
    void commit() { query::commit(*session); }
    // In a row along x, with the values of one attribute where there are any.
    void add(std::size_t count, const char* attribute = nullptr, const Values& values = {},
             const Ids& ids = {}) {
        Values xyz(count * 3);
        for (std::size_t i = 0; i < count; ++i)
            xyz[i * 3] = static_cast<double>(m_places++ % 1000);
        InsertQuery query(*session);
        if (!ids.empty())
            query.bind("tarvo.id", QRB_DATA_TYPE_UINT64, ids.data(), 8);
        query.bind("xyz", QRB_DATA_TYPE_DOUBLE, xyz.data(), 24);
        if (attribute)
            query.bind(attribute, QRB_DATA_TYPE_DOUBLE, values.data(), 8);
        EXPECT_EQ(query.next(static_cast<std::uint32_t>(count)), count);
    }
    // By id.
    Values read(const char* attribute) {
        SelectQuery query(*session, {}, {});
        std::uint64_t id = 0;
        double value = 0;
        query.bind("tarvo.id", QRB_DATA_TYPE_UINT64, &id, 8);
        query.bind(attribute, QRB_DATA_TYPE_DOUBLE, &value, 8);
        std::map<std::uint64_t, double> found;
        while (query.next(1))
            found[id] = value;
        Values result;
        for (const auto& [_, each] : found)
            result.push_back(each);
        return result;
    }
    std::uint32_t fill(const char* attribute, double value, query::Scope scope = {},
                       const char* filter = "") {
        FillQuery query(*session, std::move(scope), filter);
        query.bind(attribute, QRB_DATA_TYPE_DOUBLE, &value);
        std::uint32_t sum = 0;
        while (const std::uint32_t count = query.next(1000))
            sum += count;
        return sum;
    }
    std::uint32_t update(const char* attribute, const Values& values, const Ids& ids) {
        UpdateQuery query(*session);
        query.bind("tarvo.id", QRB_DATA_TYPE_UINT64, ids.data(), 8);
        query.bind(attribute, QRB_DATA_TYPE_DOUBLE, values.data(), 8);
        return query.next(static_cast<std::uint32_t>(ids.size()));
    }
    std::uint32_t remove(const Ids& ids) {
        RemoveQuery query(*session);
        query.bind(QRB_DATA_TYPE_UINT64, ids.data(), 8);
        return query.next(static_cast<std::uint32_t>(ids.size()));
    }
    // All nodes of the index but for the root, in key order.
    std::vector<index::Node> nodes() {
        std::vector<index::Node> result;
        const auto state = session->state();
        const index::Node root = session->rootNode(*state);
        for (index::TreeCursor at(root, session->pageReader()); at.node(); at.enter())
            if (at.node()->id != root.id)
                result.push_back(*at.node());
        return result;
    }
    std::string lastEntry() {
        const std::string text = session->changelog();
        return text.substr(text.rfind("[#"));
    }
    void expectSound() {
        for (const report::Fault& fault : report::check(*session).faults)
            ADD_FAILURE() << fault.text << " " << fault.name;
    }
    static ErrorCode codeOf(const std::function<void()>& function) {
        const Outcome outcome = outcomeOf(function);
        EXPECT_FALSE(outcome.text.empty()) << "nothing was refused";
        return outcome.code;
    }

    TemporaryFolder folder;
    const std::string file = folder.file("a.qrbx");
    std::unique_ptr<session::Session> session;

private:
    std::size_t m_places = 0;
};

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
    EXPECT_EQ(
        readAs("small == 255", "small", QRB_DATA_TYPE_INT8),
        "The value 255.000000 of the point attribute \"small\" does not fit the data type that "
        "it is to be read as.");
    EXPECT_EQ(
        readAs("half == 127.5", "half", QRB_DATA_TYPE_INT8),
        "The value 128.000000 of the point attribute \"half\" does not fit the data type that "
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
    // One element of what the leaves knew nothing of.
    begin();
    session->addAttribute([] {
        AttributeRecord late = record("late", 0, 9, 1, 3);
        late.defaultValue = 2;
        return late;
    }());
    EXPECT_EQ(fill("late[1]", 5), 39u);
    EXPECT_EQ(fill("pair[0]", 6), 39u);
    commit();
    EXPECT_EQ(countOf(*session,
                      "late[0] == 2 && late[1] == 5 && late[2] == 2 && pair[0] == 6 && "
                      "pair[1] == 0 && n == 3"),
              39u);
    expectSound();
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
    // So do points that say nothing of it: what they have holds from now on.
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
    // Behind all others, but the same one twice.
    EXPECT_EQ(codeOf([&] {
                  add(3, nullptr, {}, {last - 5, last - 4, last - 4});
              }),
              ErrorCode::Exists);
    add(2, "n", {1, 2}, five);
    EXPECT_EQ(codeOf([&] { add(5); }), ErrorCode::Range);
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

TEST_F(QueryRules, AFindIsTheNodeThatItsNameTells) {
    for (const std::uint32_t seed : {1u, 2u, 3u}) {
        create(amplitudeOnly(), 10, [](auto& created) { created.chunkSizeLod = 30; });
        std::vector<Point> points = somePoints(500, seed);
        std::mt19937 random(seed);
        for (Point& point : points)
            point.y = (random() % 3 == 0 ? 1 : 100) * (double(random() % 20) - 10);
        insert(*session, points);
        commit();
        using Rank = std::tuple<int, std::uint64_t>;
        struct Find {
            const char* text;
            bool leaf;
            std::function<Rank(const index::Node&)> rank;
        };
        const auto largest = [](const index::Node& node) {
            return Rank{-node.level, node.totalCount};
        };
        const auto fullest = [](const index::Node& node) { return Rank{0, node.totalCount}; };
        for (const Find& find : {Find{"\tfind largest leaf", true, largest},
                                 Find{"Find Largest Node\r\n", false, largest},
                                 Find{"\nfind fullest leaf", true, fullest},
                                 Find{"\r find fullest node \t", false, fullest}}) {
            SCOPED_TRACE(find.text);
            const index::Node* best = nullptr;
            const std::vector<index::Node> all = nodes();
            for (const index::Node& node : all)
                if (node.isLeaf() == find.leaf && (!best || find.rank(node) > find.rank(*best)))
                    best = &node;
            ASSERT_NE(best, nullptr);
            EXPECT_EQ(countOf(*session, find.text), best->totalCount);
            query::IndexEntry entry = query::readIndex(*session, find.text);
            while (!entry.children.empty()) {
                EXPECT_EQ(entry.children.size(), 1u);
                entry = query::IndexEntry(entry.children[0]);
            }
            EXPECT_EQ(entry.id, best->id);
            EXPECT_EQ(entry.totalCount, best->totalCount);
            EXPECT_EQ(entry.ownCount, best->ownCount);
            EXPECT_EQ(entry.revision, best->revision);
        }
    }
    create(amplitudeOnly());
    for (const char* text : {"find largest leaf", "find largest node"}) {
        EXPECT_EQ(countOf(*session, text), 0u);
        EXPECT_EQ(query::readIndex(*session, text).id, 1u);
    }
}

TEST_F(QueryRules, ListedNodesAreTheirOwnPointsAndNoMore) {
    create(amplitudeOnly(), 20, [](auto& created) { created.chunkSizeLod = 25; });
    insert(*session, somePoints(2000, 4));
    commit();
    const std::vector<index::Node> all = nodes();
    query::Scope scope;
    scope.nodes.emplace();
    std::uint64_t expected = 0;
    // An inner node, one below it, and every third leaf.
    std::size_t inner = 0;
    std::size_t leaves = 0;
    for (const index::Node& node : all)
        if (node.isLeaf() ? leaves++ % 3 == 0 : inner++ < 3) {
            scope.nodes->insert(node.id);
            expected += node.ownCount;
        }
    ASSERT_GT(inner, 3u);
    for (const char* filter : {"", "amplitude >= 0"}) {
        SelectQuery count(*session, scope, filter);
        std::uint64_t counted = 0;
        std::uint32_t before = 0;
        while (const std::uint32_t some = count.next(10)) {
            counted += some;
            EXPECT_GE(count.progress(), before);
            before = count.progress();
            if (counted < expected) {
                EXPECT_LE(before, 99u);
            }
            // One leaf at a time is read ahead here at most.
            EXPECT_NEAR(before, 100.0 * static_cast<double>(counted) / double(expected), 12);
        }
        EXPECT_EQ(counted, expected);
        EXPECT_EQ(count.progress(), 100u);
    }
    scope.nodes->insert(123456);
    EXPECT_EQ(codeOf([&] { SelectQuery(*session, scope, ""); }), ErrorCode::NotFound);
    query::Scope nowhere;
    nowhere.subtree = 123456;
    EXPECT_EQ(codeOf([&] { SelectQuery(*session, nowhere, ""); }), ErrorCode::NotFound);
}

TEST_F(QueryRules, ProgressOfASelectPassesWhatItSkips) {
    create(amplitudeOnly(), 20);
    std::vector<Point> points = somePoints(2000, 4);
    for (std::size_t i = 0; i < points.size(); ++i)
        points[i].x = i < 1000 ? -500 + double(i) / 100 : 500 + double(i) / 100;
    insert(*session, points);
    commit();
    // The first half has no hits, the second every other point.
    SelectQuery query(*session, {}, "xyz[0] > 0 && tarvo.id % 2 == 1");
    std::uint64_t read = 0;
    while (query.next(1) == 1) {
        ++read;
        EXPECT_NEAR(query.progress(), 50 + double(read) / 10, 6) << read;
        EXPECT_LE(query.progress(), 99u);
    }
    EXPECT_EQ(read, 500u);
    EXPECT_EQ(query.progress(), 100u);
}

TEST_F(QueryRules, ProgressOfACommitNeverGoesBackAndStopsIt) {
    const auto make = [this] {
        create(amplitudeOnly(), 20, [](auto& created) { created.chunkSizeLod = 25; });
        insert(*session, somePoints(3000, 4));
        commit();
        begin();
        insert(*session, somePoints(3000, 5));
    };
    make();
    std::vector<int> told;
    query::commit(*session, [&](int percent) {
        told.push_back(percent);
        return true;
    });
    EXPECT_TRUE(std::is_sorted(told.begin(), told.end()));
    EXPECT_GE(told.front(), 0);
    EXPECT_EQ(told.back(), 100);
    // While points are inserted, while levels of detail are made.
    for (const auto& [from, to] : {std::pair(1, 59), std::pair(61, 94)}) {
        EXPECT_TRUE(std::any_of(told.begin(), told.end(), [&, low = from, high = to](int percent) {
            return percent >= low && percent <= high;
        })) << from;
        make();
        EXPECT_EQ(codeOf([&, low = from] {
                      query::commit(*session, [&](int percent) { return percent < low; });
                  }),
                  ErrorCode::Cancelled);
        EXPECT_TRUE(session->pending());
        query::commit(*session);
        EXPECT_EQ(session->state()->pointCount, 6000u);
        expectSound();
    }
    // While points change.
    begin();
    FillQuery filling(*session, {}, "");
    const double value = 9;
    filling.bind("amplitude", QRB_DATA_TYPE_DOUBLE, &value);
    EXPECT_EQ(filling.next(6000), 6000u);
    EXPECT_EQ(codeOf([&] { query::commit(*session, [](int percent) { return percent < 1; }); }),
              ErrorCode::Cancelled);
    query::commit(*session);
    EXPECT_EQ(countOf(*session, "amplitude == 9"), 6000u);
}

TEST_F(QueryRules, AnIndexWithoutHitsIsItsRoot) {
    create(amplitudeOnly(), 20, [](auto& created) { created.chunkSizeLod = 25; });
    insert(*session, somePoints(300, 4));
    commit();
    const query::IndexEntry root = query::readIndex(*session, "amplitude > 60000");
    EXPECT_EQ(root.id, 1u);
    EXPECT_EQ(root.revision, 2u);
    EXPECT_EQ(root.totalCount, 300u);
    EXPECT_EQ(root.ownCount, session->rootNode(*session->state()).ownCount);
    EXPECT_TRUE(root.children.empty());
}

TEST_F(QueryRules, ExtremesAreThoseOfTheElementsNamedAndOfPointsThatAreThere) {
    AttributeRecord above = record("above", 0, 100);
    above.invalidValue = 200;
    AttributeRecord below = record("below", 0, 100);
    below.invalidValue = -1;
    create({above, below});
    double value[3] = {};
    using query::Extreme;
    const auto extreme = [&](const char* name, Extreme which, bool cleaned) {
        query::readExtreme(*session, 1, name, which, cleaned, QRB_DATA_TYPE_DOUBLE, value);
        return value[0];
    };
    for (const bool cleaned : {false, true})
        EXPECT_EQ(codeOf([&] { extreme("above", Extreme::Maximum, cleaned); }),
                  ErrorCode::NotFound);
    InsertQuery inserting(*session);
    const Values xyz{4, 20, 600, -3, 50, -600};
    inserting.bind("xyz", QRB_DATA_TYPE_DOUBLE, xyz.data(), 24);
    inserting.next(2);
    commit();
    EXPECT_EQ(extreme("above", Extreme::Maximum, false), 0);
    EXPECT_EQ(extreme("below", Extreme::Minimum, false), 0);
    EXPECT_EQ(extreme("xyz[1]", Extreme::Minimum, true), 20);
    EXPECT_EQ(extreme("xyz", Extreme::Maximum, true), 4);
    EXPECT_EQ((Values{value[1], value[2]}), (Values{50, 600}));
}

}  // namespace
}  // namespace tarvo::engine
