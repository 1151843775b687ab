// Changes by id: what they read to learn which ids there are, and that they know them through a
// transaction.
#include "tests/engine/queryfixture.h"
#include "tests/engine/seed.h"

#include <set>

namespace tarvo::engine {
namespace {

using namespace testing;
using namespace query;

class PointIdsTest : public QueryFixture {
protected:
    // Points in the order of their ids along x, ten to a leaf at most.
    void makeRow(std::size_t count) {
        create({record("n", 0, 100)}, 10);
        add(count);
        commit();
    }
    std::uint32_t update(const Ids& ids) {
        const Values values(ids.size(), 5);
        UpdateQuery query(*session);
        query.bind("tarvo.id", QRB_DATA_TYPE_UINT64, ids.data(), 8);
        query.bind("n", QRB_DATA_TYPE_DOUBLE, values.data(), 8);
        return query.next(static_cast<std::uint32_t>(ids.size()));
    }
    std::uint32_t remove(const Ids& ids) {
        RemoveQuery query(*session);
        query.bind(QRB_DATA_TYPE_UINT64, ids.data(), 8);
        return query.next(static_cast<std::uint32_t>(ids.size()));
    }
    // How many leaves the ids of were read, of how many: what was read stands in the cache.
    std::pair<int, int> leavesRead() {
        int read = 0, all = 0;
        const index::Node root = session->blobs().rootNode(session->base());
        index::TreeCursor cursor(root, session->blobs().pageReader());
        for (; cursor.node(); cursor.enter()) {
            if (!cursor.node()->isLeaf())
                continue;
            const auto* ids = cursor.node()->find(session->base().pointId().uid);
            ++all;
            read += session->blobs().blocks().get(ids->elements[0].block) != nullptr;
        }
        return {read, all};
    }
};

// A handful of ids in a large file used to read the ids of all points.
TEST_F(PointIdsTest, AFewAreLookedUpInAFewLeaves) {
    makeRow(1000);
    const struct {
        std::function<std::uint32_t()> change;
        std::uint32_t found;
        int leaves;
    } changes[] = {
        {[&] {
             return update({500, 501, 500});
         },
         3, 2},
        {[&] {
             return update({0, 1001, 5000, 1ull << 40});
         },
         0, 0},
        {[&] {
             return remove({10, 1000, 2000});
         },
         2, 2},
        {[&] {
             return add(2, nullptr, {}, {5001, 5000}), 0;
         },
         0, 0},
        {[&] {
             EXPECT_EQ(codeOf([&] { add(2, nullptr, {}, {2000, 700}); }), ErrorCode::Exists);
             return 0;
         },
         0, 1}};
    for (const auto& [change, found, leaves] : changes) {
        open();
        begin();
        EXPECT_EQ(change(), found);
        const auto [read, all] = leavesRead();
        EXPECT_LE(read, leaves) << "of " << all;
        EXPECT_GT(all, 100);
        session->rollback();
    }
}

// Ids come, go and come again within one transaction, with refused batches between, while some of
// their leaves were not read, or read for other ids.
TEST_F(PointIdsTest, AreKnownThroughATransaction) {
    std::mt19937_64 random(seedOfRun());
    makeRow(500);
    std::set<std::uint64_t> there;
    for (std::uint64_t id = 1; id <= 500; ++id)
        there.insert(id);
    for (int transaction = 0; transaction < 6; ++transaction) {
        const std::set<std::uint64_t> before = there;
        begin();
        for (int i = 0; i < 150; ++i) {
            Ids ids(1 + random() % 12);
            for (std::uint64_t& id : ids)
                id = random() % 700;
            const std::set<std::uint64_t> once(ids.begin(), ids.end());
            const auto known = [&](std::uint64_t id) { return there.contains(id); };
            const auto found = std::count_if(once.begin(), once.end(), known);
            switch (random() % 4) {
                case 0:
                    EXPECT_EQ(update(ids), std::count_if(ids.begin(), ids.end(), known));
                    break;
                case 1:
                    EXPECT_EQ(remove(ids), found);
                    for (const std::uint64_t id : once)
                        there.erase(id);
                    break;
                case 2:
                    session->settle();
                    break;
                default:
                    if (found > 0 || once.size() < ids.size() || once.contains(0)) {
                        EXPECT_THROW(add(ids.size(), nullptr, {}, ids), Failure);
                        break;
                    }
                    add(ids.size(), nullptr, {}, ids);
                    there.insert(ids.begin(), ids.end());
            }
        }
        if (random() % 3 == 0) {
            session->rollback();
            there = before;
        } else {
            commit();
        }
        Values expected(there.begin(), there.end());
        ASSERT_EQ(read("tarvo.id"), expected) << "after transaction " << transaction;
    }
    expectSound();
}

}  // namespace
}  // namespace tarvo::engine
