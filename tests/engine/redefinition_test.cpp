// What points have after their attribute's definition was replaced: those with values of their
// own, and those from before the attribute existed.
#include "tests/engine/store.h"

#include "engine/query/commit.h"
#include "engine/query/fill.h"
#include "engine/query/redefine.h"
#include "engine/query/remove.h"
#include "engine/query/update.h"
#include "engine/report/check.h"

#include <cmath>
#include <functional>
#include <limits>

namespace tarvo::engine {
namespace {

using namespace testing;
using Values = std::vector<double>;

class Redefinition : public ::testing::Test {
protected:
    // Three points from before the attribute "q", and one for each of the values.
    void create(const schema::AttributeRecord& q, const Values& values) {
        session::Session::create(m_file, settings(1, 2), "test");
        m_session = std::make_unique<session::Session>(m_file, session::OpenSettings{}, "test");
        m_session->begin("old", "test", "", "");
        add(3, {});
        query::commit(*m_session);
        m_session->begin("new", "test", "", "");
        m_session->addAttribute(q);
        add(values.size(), values);
        query::commit(*m_session);
    }
    void add(std::size_t count, const Values& values) {
        Values xyz(count * 3);
        for (double& each : xyz)
            each = m_next++;
        query::InsertQuery query(*m_session);
        query.bind("xyz", QRB_DATA_TYPE_DOUBLE, xyz.data(), 24);
        if (!values.empty())
            query.bind("q", QRB_DATA_TYPE_DOUBLE, values.data(), 8);
        query.next(static_cast<std::uint32_t>(count));
    }
    // By id, the old points first.
    Values read() {
        query::SelectQuery query(*m_session, {}, {});
        std::uint64_t id = 0;
        double value = 0;
        query.bind("tarvo.id", QRB_DATA_TYPE_UINT64, &id, 8);
        query.bind("q", QRB_DATA_TYPE_DOUBLE, &value, 8);
        std::map<std::uint64_t, double> found;
        while (query.next(1))
            found[id] = value;
        Values result;
        for (const auto& [_, each] : found)
            result.push_back(each);
        return result;
    }
    void put(const schema::AttributeRecord& q) {
        m_session->begin("put", "test", "", "");
        query::putAttribute(*m_session, q);
        query::commit(*m_session);
    }
    // In this session and in one that is opened anew.
    void expectValues(const Values& expected, const char* what) {
        EXPECT_EQ(read(), expected) << what;
        m_session = std::make_unique<session::Session>(m_file, session::OpenSettings{}, "test");
        EXPECT_EQ(read(), expected) << what << ", reopened";
    }

    TemporaryFolder m_folder;
    const std::string m_file = m_folder.file("a.qrbx");
    std::unique_ptr<session::Session> m_session;
    double m_next = 0;
};

schema::AttributeRecord quality() {
    schema::AttributeRecord q = record("q", 0, 100);
    q.defaultValue = 7;
    return q;
}

TEST_F(Redefinition, OfTheDefaultChangesNoPointThatIsThere) {
    schema::AttributeRecord q = quality();
    create(q, {0, 5, 7, 9, 100});
    q.defaultValue = 9;
    put(q);
    expectValues({7, 7, 7, 0, 5, 7, 9, 100}, "the default alone");
    q.defaultValue = 0;
    put(q);
    expectValues({7, 7, 7, 0, 5, 7, 9, 100}, "the default again");
    // Points without a value take the one that holds now.
    m_session->begin("more", "test", "", "");
    add(1, {});
    query::commit(*m_session);
    expectValues({7, 7, 7, 0, 5, 7, 9, 100, 0}, "a new point");
    q.defaultValue = 3;
    q.minimumValue = -10;
    put(q);
    expectValues({7, 7, 7, 0, 5, 7, 9, 100, 0}, "the default with the range");
    // Values of the same transaction, too, which are not yet in the tree.
    const double value = 50;
    const std::uint64_t id = 1;
    const std::function<void()> changes[] = {
        [&] { add(1, {value}); },
        [&] {
            query::UpdateQuery update(*m_session);
            update.bind("tarvo.id", QRB_DATA_TYPE_UINT64, &id, 8);
            update.bind("q", QRB_DATA_TYPE_DOUBLE, &value, 8);
            EXPECT_EQ(update.next(1), 1u);
        },
        [&] {
            query::FillQuery fill(*m_session, {}, "");
            fill.bind("q", QRB_DATA_TYPE_DOUBLE, &value);
            EXPECT_EQ(fill.next(100), 10u);
        },
    };
    for (const auto& change : changes) {
        m_session->begin("discard", "test", "", "");
        change();
        query::discardAttribute(*m_session, "q");
        query::commit(*m_session);
        expectValues(Values(10, 3), "discarded");
    }
    q.defaultValue = 4;
    put(q);
    expectValues(Values(10, 3), "the default after values were discarded");
}

TEST_F(Redefinition, OfADefaultThatWasNoneOfThePointsIsUndoneByARollback) {
    schema::AttributeRecord q = quality();
    create(q, {1});
    q.defaultValue = 9;
    m_session->begin("put", "test", "", "");
    query::putAttribute(*m_session, q);
    EXPECT_EQ(read(), (Values{7, 7, 7, 1})) << "pending";
    m_session->rollback();
    m_session->begin("more", "test", "", "");
    add(1, {});
    query::commit(*m_session);
    expectValues({7, 7, 7, 1, 7}, "rolled back");
}

TEST_F(Redefinition, OfTheInvalidValueKeepsInvalidPointsInvalid) {
    schema::AttributeRecord q = quality();
    q.invalidValue = 200;
    create(q, {0, 200, 50, 100});
    q.invalidValue = 50;
    put(q);
    // Who had 50 is invalid now, too: the value means that.
    expectValues({7, 7, 7, 0, 50, 50, 100}, "another one, within the range");
    q.invalidValue = -1;
    put(q);
    expectValues({7, 7, 7, 0, -1, -1, 100}, "another one, below the range");
    q.invalidValue = std::numeric_limits<double>::quiet_NaN();
    q.defaultValue = 8;
    put(q);
    expectValues({7, 7, 7, 0, 8, 8, 100}, "none: the new default takes the place");
    q.invalidValue = 7;
    put(q);
    EXPECT_EQ(countOf(*m_session, "q == 7"), 3u);
    expectValues({7, 7, 7, 0, 8, 8, 100}, "the value of the old points");
}

TEST_F(Redefinition, OfTheRangeLosesOnlyWhatItDoesNotHold) {
    schema::AttributeRecord q = quality();
    create(q, {0, 20, 50, 99, 100});
    q.maximumValue = 1000;
    put(q);
    expectValues({7, 7, 7, 0, 20, 50, 99, 100}, "a higher end");
    q.minimumValue = -1000;
    put(q);
    expectValues({7, 7, 7, 0, 20, 50, 99, 100}, "a lower end");
    q.minimumValue = 20;
    q.maximumValue = 99;
    q.defaultValue = 30;
    put(q);
    expectValues({30, 30, 30, 30, 20, 50, 99, 30}, "narrower: the default outside of it");
    q.minimumValue = 0;
    q.maximumValue = 50;
    q.invalidValue = 77;
    put(q);
    expectValues({30, 30, 30, 30, 20, 50, 77, 30}, "narrower: invalid outside of it");
}

// A default at the least value has the same place in each of these ranges.
TEST_F(Redefinition, OfTheRangeWithItsDefaultMovesNoValue) {
    schema::AttributeRecord q = record("q", 0, 100);
    create(q, {5, 50});
    q.minimumValue = q.defaultValue = -10;
    put(q);
    expectValues({0, 0, 0, 5, 50}, "a lower end");
    q.minimumValue = q.defaultValue = 0;
    put(q);
    q.resolution = 0.5;
    put(q);
    expectValues({0, 0, 0, 5, 50}, "finer");
    q.maximumValue = 40;
    q.invalidValue = 77;
    put(q);
    expectValues({0, 0, 0, 5, 77}, "narrower");
    q.invalidValue = 5;
    put(q);
    EXPECT_EQ(countOf(*m_session, "q == 0"), 3u);
    expectValues({0, 0, 0, 5, 5}, "another invalid value");
    q.title = "the same";
    put(q);
    expectValues({0, 0, 0, 5, 5}, "texts");
}

// What is refused, and what is told of a copy and of attributes that go, also after reopening.
TEST_F(Redefinition, OfKeysAndNamesIsRefusedAndOfOthersKept) {
    schema::AttributeRecord q = quality();
    create(q, {1, 2});
    m_session->begin("t", "test", "", "");
    const auto refused = [&](const std::function<void()>& change) {
        const Outcome outcome = outcomeOf(change);
        EXPECT_FALSE(outcome.text.empty());
        return outcome.code;
    };
    for (const char* key : {"xyz", "tarvo.id"}) {
        const schema::AttributeTable attributes = m_session->state()->attributes;
        schema::AttributeRecord changed =
            attributes[static_cast<std::size_t>(attributes.find(key))].record;
        changed.title = "another title";
        query::putAttribute(*m_session, changed);
        changed.storageClass = 1;
        EXPECT_EQ(refused([&] { query::putAttribute(*m_session, changed); }), ErrorCode::Argument);
        changed.storageClass = 2;
        changed.maximumValue /= 2;
        EXPECT_EQ(refused([&] { query::putAttribute(*m_session, changed); }), ErrorCode::Argument);
        EXPECT_EQ(refused([&] { query::discardAttribute(*m_session, key); }), ErrorCode::Argument);
        EXPECT_EQ(refused([&] { query::removeAttribute(*m_session, key); }), ErrorCode::Argument);
    }
    q.lodSettings = "guess";
    EXPECT_EQ(refused([&] { query::putAttribute(*m_session, q); }), ErrorCode::Argument);
    q = record("none", 0, 1);
    EXPECT_EQ(refused([&] { query::putAttribute(*m_session, q); }), ErrorCode::NotFound);
    for (const char* name : {"q", "xyz"})
        EXPECT_EQ(refused([&] { query::duplicateAttribute(*m_session, "q", name); }),
                  ErrorCode::Exists);
    for (const char* name : {"", "a[1]"})
        EXPECT_EQ(refused([&] { query::duplicateAttribute(*m_session, "q", name); }),
                  ErrorCode::Argument);
    add(1, {42});  // not yet in the tree when it is copied
    query::duplicateAttribute(*m_session, "q", "copy");
    query::commit(*m_session);
    expectValues({7, 7, 7, 1, 2, 42}, "copied");
    EXPECT_EQ(countOf(*m_session, "copy == 42 || copy == 7 || copy == 1 || copy == 2"), 6u);
    EXPECT_EQ(m_session->state()->attributes[0].record.title, "another title");

    // A constant, its copy, and both again after they were given up.
    m_session->begin("t", "test", "", "");
    query::FillQuery fill(*m_session, {}, "");
    const double five = 5;
    fill.bind("q", QRB_DATA_TYPE_DOUBLE, &five);
    EXPECT_EQ(fill.next(100), 6u);
    q = quality();
    q.storageClass = 1;
    query::putAttribute(*m_session, q);
    query::duplicateAttribute(*m_session, "q", "constant.copy");
    query::removeAttribute(*m_session, "copy");
    query::commit(*m_session);
    expectValues({5, 5, 5, 5, 5, 5}, "constant");
    q.storageClass = 2;
    put(q);
    expectValues({5, 5, 5, 5, 5, 5}, "variable again");
    // Each by itself is in the file.
    m_session->begin("t", "test", "", "");
    query::duplicateAttribute(*m_session, "q", "alone");
    query::commit(*m_session);
    expectValues({5, 5, 5, 5, 5, 5}, "copied");
    EXPECT_EQ(countOf(*m_session, "alone == 5"), 6u);
    m_session->begin("t", "test", "", "");
    add(1, {6});
    query::removeAttribute(*m_session, "alone");
    query::commit(*m_session);
    expectValues({5, 5, 5, 5, 5, 5, 6}, "removed");
    EXPECT_LT(m_session->state()->attributes.find("alone"), 0);
    EXPECT_EQ(countOf(*m_session, "constant.copy == 5"), 7u);
    EXPECT_LT(m_session->state()->attributes.find("copy"), 0);
}

TEST_F(Redefinition, OfLargeWholeNumbersIsExact) {
    schema::AttributeRecord q = record("q", 0, 9e18);
    const double beyond = 9007199254740994;  // and one less has no double of its own
    create(q, {beyond});
    m_session->begin("odd", "test", "", "");
    const std::uint64_t odd = 9007199254740993, id = 4;
    query::UpdateQuery update(*m_session);
    update.bind("tarvo.id", QRB_DATA_TYPE_UINT64, &id, 8);
    update.bind("q", QRB_DATA_TYPE_UINT64, &odd, 8);
    ASSERT_EQ(update.next(1), 1u);
    query::commit(*m_session);
    q.minimumValue = -100;
    put(q);
    query::SelectQuery select(*m_session, {}, "q > 0");
    std::uint64_t value = 0;
    select.bind("q", QRB_DATA_TYPE_UINT64, &value, 8);
    ASSERT_EQ(select.next(1), 1u);
    EXPECT_EQ(value, odd);
}

TEST_F(Redefinition, OfTheResolutionRoundsOntoTheNewSteps) {
    schema::AttributeRecord q = record("q", 0, 10, 0.25);
    q.defaultValue = 1.75;
    create(q, {0, 0.25, 4.75, 10});
    q.resolution = 0.125;
    put(q);
    expectValues({1.75, 1.75, 1.75, 0, 0.25, 4.75, 10}, "finer");
    q.resolution = 0;
    put(q);
    expectValues({1.75, 1.75, 1.75, 0, 0.25, 4.75, 10}, "any number");
    q.resolution = 1;
    q.defaultValue = 5;
    put(q);
    expectValues({2, 2, 2, 0, 0, 5, 10}, "coarser");
}

TEST_F(Redefinition, OfTheLengthFillsNewElementsWithTheDefault) {
    create(quality(), {1, 2, 3});
    for (const std::uint32_t length : {3u, 2u}) {
        schema::AttributeRecord longer = quality();
        longer.length = length;
        put(longer);
        EXPECT_EQ(countOf(*m_session, "q[0] == 7"), 3u);
        EXPECT_EQ(countOf(*m_session, "q[0] == 2"), 1u);
        EXPECT_EQ(countOf(*m_session, "q[" + std::to_string(length - 1) + "] == 7"), 6u);
        EXPECT_EQ(report::check(*m_session).faultCount, 0u);
    }
}

TEST_F(Redefinition, ElementsThatAreNotGivenGetTheDefault) {
    create(quality(), {1});
    schema::AttributeRecord triple = quality();
    triple.length = 3;
    put(triple);
    m_session->begin("more", "test", "", "");
    const double xyz[] = {1, 2, 3}, value = 50;
    query::InsertQuery query(*m_session);
    query.bind("xyz", QRB_DATA_TYPE_DOUBLE, xyz, 24);
    query.bind("q[1]", QRB_DATA_TYPE_DOUBLE, &value, 8);
    query.next(1);
    query::commit(*m_session);
    EXPECT_EQ(countOf(*m_session, "q[0] == 7 && q[1] == 50 && q[2] == 7"), 1u);
}

TEST_F(Redefinition, OfTheStorageKeepsTheValues) {
    schema::AttributeRecord q = quality();
    create(q, {0, 5, 100});
    q.storageClass = 3;
    put(q);
    expectValues({7, 7, 7, 0, 5, 100}, "dynamic");
    q.defaultValue = 9;
    put(q);
    expectValues({7, 7, 7, 0, 5, 100}, "dynamic, with another default");
    q.storageClass = 2;
    q.defaultValue = 11;
    put(q);
    expectValues({7, 7, 7, 0, 5, 100}, "variable, with another default");
    q.storageClass = 1;
    EXPECT_EQ(outcomeOf([&] { put(q); }).code, ErrorCode::Range);
    m_session->rollback();
    expectValues({7, 7, 7, 0, 5, 100}, "refused as constant");
}

TEST_F(Redefinition, OfAConstantKeepsTheValueThatAllHave) {
    schema::AttributeRecord q = quality();
    create(q, {7, 7});
    q.storageClass = 1;
    q.defaultValue = 9;
    put(q);
    expectValues({7, 7, 7, 7, 7}, "constant, with another default");
    q.defaultValue = 10;
    put(q);
    expectValues({7, 7, 7, 7, 7}, "the default of a constant");
    q.storageClass = 2;
    q.defaultValue = 11;
    put(q);
    expectValues({7, 7, 7, 7, 7}, "variable again");
}

TEST_F(Redefinition, AConstantTakesEachValueItIsFilledWithUntilItIsDiscarded) {
    schema::AttributeRecord q = quality();
    create(q, {7, 7});
    q.storageClass = 1;
    put(q);
    // A filter of blanks is none.
    for (const auto& [value, filter] : {std::pair(9.0, ""), std::pair(11.0, " \t")}) {
        m_session->begin("fill", "test", "", "");
        query::FillQuery fill(*m_session, {}, filter);
        const double one = value;
        fill.bind("q", QRB_DATA_TYPE_DOUBLE, &one);
        while (fill.next(2) > 0) {
        }
        query::commit(*m_session);
        expectValues({value, value, value, value, value}, "filled");
    }
    m_session->begin("discard", "test", "", "");
    query::discardAttribute(*m_session, "q");
    query::commit(*m_session);
    expectValues({7, 7, 7, 7, 7}, "discarded");
}

TEST_F(Redefinition, OfTextsCopiesNothingAndKeepsEveryValue) {
    schema::AttributeRecord q = quality();
    create(q, {0, 5, 100});
    const auto uid = [&] {
        const auto& attributes = m_session->state()->attributes;
        return attributes[static_cast<std::size_t>(attributes.find("q"))].uid;
    };
    const std::uint32_t before = uid();
    q.title = "Quality";
    q.description = "of a point";
    q.unitSymbol = "%";
    q.tags = "own";
    q.namedValues = "0=bad";
    q.scaleFactor = 2;
    put(q);
    EXPECT_EQ(uid(), before);
    expectValues({7, 7, 7, 0, 5, 100}, "texts");
}

TEST_F(Redefinition, OfInvalidPointsAloneMakesAConstantThatIsInvalid) {
    for (const double invalid : {200.0, 50.0}) {
        schema::AttributeRecord q = quality();
        q.invalidValue = q.defaultValue = invalid;
        create(q, {invalid, invalid});
        q.storageClass = 1;
        put(q);
        expectValues(Values(5, invalid), "constant");
        m_session.reset();
        std::filesystem::remove(m_file);
    }
}

TEST_F(Redefinition, AConstantIsRefusedOtherValuesAndFreeWithoutPoints) {
    schema::AttributeRecord q = quality();
    create(q, {7, 7});
    q.storageClass = 1;
    put(q);
    m_session->begin("update", "test", "", "");
    std::vector<std::uint64_t> ids{1, 2, 3, 4, 5};
    const Values other{7, 7, 9, 7, 7};
    query::UpdateQuery update(*m_session);
    update.bind("tarvo.id", QRB_DATA_TYPE_UINT64, ids.data(), 8);
    update.bind("q", QRB_DATA_TYPE_DOUBLE, other.data(), 8);
    EXPECT_EQ(outcomeOf([&] { update.next(5); }).code, ErrorCode::Range);
    query::RemoveQuery remove(*m_session);
    remove.bind(QRB_DATA_TYPE_UINT64, ids.data(), 8);
    EXPECT_EQ(remove.next(5), 5u);
    query::commit(*m_session);
    expectValues({}, "removed");
    m_session->begin("anew", "test", "", "");
    add(2, {9, 9});
    query::commit(*m_session);
    expectValues({9, 9}, "inserted anew");
}

}  // namespace
}  // namespace tarvo::engine
