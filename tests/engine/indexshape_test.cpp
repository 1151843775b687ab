// The shape of the index: what is divided, what a filter leaves of it, and what nodes show.
#include "tests/engine/store.h"

#include "engine/query/commit.h"
#include "engine/query/stat.h"

#include <filesystem>
#include <functional>

namespace tarvo::engine {
namespace {

using namespace testing;

struct Counts {
    std::size_t inner = 0;
    std::size_t leaves = 0;
};

void count(const query::IndexEntry& entry, Counts& counts) {
    ++(entry.children.empty() ? counts.leaves : counts.inner);
    for (const query::IndexEntry& child : entry.children)
        count(child, counts);
}

class IndexShape : public ::testing::Test {
protected:
    // Points at (x, 0, 0) of these amplitudes.
    void create(const session::CreateSettings& created, const std::vector<double>& x,
                std::vector<std::uint16_t> amplitudes = {}) {
        amplitudes.resize(x.size());
        std::vector<Point> points;
        for (std::size_t i = 0; i < x.size(); ++i)
            points.push_back({x[i], 0, 0, amplitudes[i]});
        std::filesystem::remove(m_file);
        session::Session::create(m_file, created, "test", amplitudeOnly());
        m_session = std::make_unique<session::Session>(m_file, session::OpenSettings{}, "test");
        m_session->begin("insert", "test", "", "");
        insert(*m_session, points);
        query::commit(*m_session);
    }
    Counts counts(const std::string& filter = {}) {
        Counts result;
        count(query::readIndex(*m_session, filter), result);
        return result;
    }

    TemporaryFolder m_folder;
    const std::string m_file = m_folder.file("a.qrbx");
    std::unique_ptr<session::Session> m_session;
};

TEST_F(IndexShape, ALeafHoldsAsManyPointsAsAllowed) {
    for (const std::size_t points : {9u, 10u, 11u}) {
        std::vector<double> x(points);
        for (std::size_t i = 0; i < points; ++i)
            x[i] = 100 + static_cast<double>(i) * 80;
        create(settings(1, 10), x);
        EXPECT_EQ(counts().inner == 1, points <= 10) << points;
    }
}

TEST_F(IndexShape, AFilterLeavesNoInnerNodeWithoutChildren) {
    // Each leaf refuses what their ancestors can't.
    create(settings(1, 2), {1, 2, 100, 101, 400, 401, 900, 901}, {5, 5, 7, 7, 5, 5, 7, 7});
    ASSERT_GT(counts().inner, 2u);
    const query::IndexEntry narrowed = query::readIndex(*m_session, "amplitude == 6");
    EXPECT_EQ(narrowed.id, 1u);
    EXPECT_TRUE(narrowed.children.empty());
    const std::function<void(const query::IndexEntry&)> look = [&](const query::IndexEntry& entry) {
        EXPECT_FALSE(entry.children.empty() && entry.ownCount == 0);
        for (const query::IndexEntry& child : entry.children)
            look(child);
    };
    look(query::readIndex(*m_session, "amplitude == 5 && xyz[0] < 3"));
}

TEST_F(IndexShape, EveryNodeAboveAPointShowsOne) {
    session::CreateSettings created = settings(1, 2);
    created.lodMode = 1;
    created.chunkSizeLod = 1;
    create(created, {1, 2, 3, 200, 500, 900, -3, -400});
    const std::function<void(const query::IndexEntry&)> look = [&](const query::IndexEntry& entry) {
        EXPECT_GT(entry.ownCount, 0u) << entry.id;
        for (const query::IndexEntry& child : entry.children)
            look(child);
    };
    look(query::readIndex(*m_session, ""));
}

// Positions differ from point to point, whatever the definition says of their storage.
TEST_F(IndexShape, PositionsCanNotBeConstant) {
    session::CreateSettings created = settings(1, 10);
    created.primaryAttribute.storageClass = 1;
    create(created, {1, 2, 3});
    EXPECT_EQ(countOf(*m_session, "xyz[0] == 2"), 1u);
}

TEST_F(IndexShape, NamesOfItemsHaveUpTo255Bytes) {
    create(settings(1, 10), {1});
    const std::string longest(255, 'n');
    m_session->begin("item", "test", "", "");
    m_session->metaData().set(longest, "1");
    EXPECT_EQ(outcomeOf([&] { m_session->metaData().set(longest + "n", "1"); }).code,
              ErrorCode::Argument);
    query::commit(*m_session);
    EXPECT_EQ(session::Session(m_file, {}, "test").metaData().get(longest), "1");
}

}  // namespace
}  // namespace tarvo::engine
