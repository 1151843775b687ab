// Calls that give lists: how many there are, whatever room the caller has for them.
#include "tests/qrb/library.h"

#include <algorithm>
#include <functional>
#include <set>
#include <vector>

namespace {

using namespace tarvo;
using namespace tarvo::qrb::pointcloud;

class Lists : public LibraryTest {
protected:
    Lists() {
        const auto& f = qrb::functions();
        {
            const qrb::Context context("OFF", "");
            qrb::Pointcloud cloud(context);
            CreateSettings settings(context);
            settings.primaryAttribute = attribute("p", -10, 10, 1);
            cloud.create(file("a.qrbx"), settings);
            for (const char* name : {"one", "two", "three", "four"}) {
                TransactionGuard transaction(cloud.transactions(), name, "tests");
                cloud.metaData().set(name, "1");
                transaction.commit();
            }
        }
        EXPECT_EQ(f.qrb_context_new(&m_context, "OFF", ""), QRB_SUCCESS);
        EXPECT_EQ(f.qrb_pointcloud_new(m_context, &m_cloud), QRB_SUCCESS);
        EXPECT_EQ(f.qrb_pointcloud_open(m_context, m_cloud, file("a.qrbx").c_str(), nullptr),
                  QRB_SUCCESS);
    }
    ~Lists() override {
        const auto& f = qrb::functions();
        EXPECT_EQ(f.qrb_pointcloud_delete(m_context, m_cloud), QRB_SUCCESS);
        EXPECT_EQ(f.qrb_context_delete(m_context), QRB_SUCCESS);
    }

    qrb_context* m_context = nullptr;
    qrb_pointcloud* m_cloud = nullptr;
};

TEST_F(Lists, OfTransactionsTellHowManyThereAreAndWriteNoMoreThanFit) {
    const auto list = qrb::functions().qrb_pointcloud_transaction_list;
    constexpr std::uint32_t untouched = 0xabcdabcd;
    for (const std::uint32_t room : {0u, 1u, 4u, 5u, 6u, 8u}) {
        std::vector<std::uint32_t> ids(8, untouched);
        std::uint32_t count = room;
        ASSERT_EQ(list(m_context, m_cloud, &count, ids.data()), QRB_SUCCESS);
        EXPECT_EQ(count, 5u) << "with room for " << room;
        for (std::uint32_t i = 0; i < ids.size(); ++i)
            EXPECT_EQ(ids[i], i < std::min(room, 5u) ? i + 1 : untouched) << "room for " << room;
    }
    for (const std::uint32_t room : {0u, 3u, 99u}) {
        std::uint32_t count = room;
        ASSERT_EQ(list(m_context, m_cloud, &count, nullptr), QRB_SUCCESS);
        EXPECT_EQ(count, 5u) << "without room, asked with " << room;
    }
    std::uint32_t id = untouched;
    EXPECT_NE(list(m_context, m_cloud, nullptr, &id), QRB_SUCCESS);
    EXPECT_EQ(id, untouched);
    EXPECT_NE(list(m_context, m_cloud, nullptr, nullptr), QRB_SUCCESS);
    // Fewer by now: what is left of the room stays as it was.
    const std::uint32_t discarded[] = {2, 4};
    ASSERT_EQ(qrb::functions().qrb_pointcloud_transaction_discard(m_context, m_cloud, 2, discarded),
              QRB_SUCCESS);
    std::uint32_t ids[] = {0, 0, 0, untouched, untouched};
    std::uint32_t count = 5;
    ASSERT_EQ(list(m_context, m_cloud, &count, ids), QRB_SUCCESS);
    EXPECT_EQ(count, 3u);
    EXPECT_EQ((std::vector<std::uint32_t>(ids, ids + 5)),
              (std::vector<std::uint32_t>{1, 3, 5, untouched, untouched}));
}

TEST_F(Lists, OfNamesHoldAsManyTextsAsTheyTell) {
    const auto& f = qrb::functions();
    using Call = std::function<qrb_status(std::uint32_t*, const char**)>;
    const struct {
        const char* what;
        Call call;
        std::vector<std::string> expected;  // the first ones
        std::size_t size;
    } lists[] = {
        {"metadata",
         [&](auto* count, auto* names) {
             return f.qrb_pointcloud_meta_data_list(m_context, m_cloud, count, names);
         },
         {"four", "one", "three", "two"},
         4},
        {"attributes",
         [&](auto* count, auto* names) {
             return f.qrb_pointcloud_point_attributes_list(m_context, m_cloud, count, names);
         },
         {"p", "tarvo.id"},
         2},
        {"filtered",
         [&](auto* count, auto* names) {
             return f.qrb_pointcloud_point_attributes_list_filtered(m_context, m_cloud, "t*", count,
                                                                    names);
         },
         {"tarvo.id"},
         1},
        {"filtered by what none has",
         [&](auto* count, auto* names) {
             return f.qrb_pointcloud_point_attributes_list_filtered(m_context, m_cloud, "no*",
                                                                    count, names);
         },
         {},
         0},
        {"merged",
         [&](auto* count, auto* names) {
             return f.qrb_pointcloud_point_attributes_get_merged_all(m_context, m_cloud, &m_cloud,
                                                                     1, count, names);
         },
         {"p", "tarvo.id"},
         2},
        {"merged with none",
         [&](auto* count, auto* names) {
             return f.qrb_pointcloud_point_attributes_get_merged_all(m_context, m_cloud, nullptr, 0,
                                                                     count, names);
         },
         {"p", "tarvo.id"},
         2},
    };
    for (const auto& list : lists) {
        SCOPED_TRACE(list.what);
        // What the count holds before is no room: names come in a block of the library's own.
        for (const std::uint32_t before : {0u, 1u, 99u}) {
            std::uint32_t count = before;
            const char* names = nullptr;
            ASSERT_EQ(list.call(&count, &names), QRB_SUCCESS);
            ASSERT_EQ(count, list.size);
            std::vector<std::string> found;
            for (std::uint32_t i = 0; i < count; ++i) {
                found.emplace_back(names);
                names += found.back().size() + 1;
            }
            EXPECT_EQ(found, list.expected);
        }
        std::uint32_t count = 77;
        const char* names = nullptr;
        EXPECT_NE(list.call(nullptr, &names), QRB_SUCCESS);
        EXPECT_NE(list.call(&count, nullptr), QRB_SUCCESS);
        EXPECT_EQ(count, 77u) << "a refused call tells no count";
    }
    // All names of the catalogue, none twice.
    std::uint32_t count = 0;
    const char* names = nullptr;
    ASSERT_EQ(f.qrb_pointcloud_point_attributes_list_default(m_context, m_cloud, &count, &names),
              QRB_SUCCESS);
    std::set<std::string> found;
    for (std::uint32_t i = 0; i < count; ++i) {
        const std::string name = names;
        EXPECT_FALSE(name.empty());
        found.insert(name);
        names += name.size() + 1;
    }
    EXPECT_EQ(found.size(), count);
    EXPECT_TRUE(found.contains("tarvo.xyz"));
}

// One node takes one index after another.
TEST_F(Lists, OfNodesAreThoseOfTheLastReading) {
    const auto& f = qrb::functions();
    std::uint32_t id = 0, done = 0;
    std::vector<double> places(5000);
    for (std::size_t i = 0; i < places.size(); ++i)
        places[i] = static_cast<double>(i % 21) - 10;
    qrb_query_insert* insert = nullptr;
    f.qrb_pointcloud_transaction_begin(m_context, m_cloud, "t", "", "", "", &id);
    f.qrb_pointcloud_query_insert_new(m_context, m_cloud, &insert);
    f.qrb_pointcloud_query_insert_bind(m_context, insert, "p", QRB_DATA_TYPE_DOUBLE, places.data(),
                                       8);
    f.qrb_pointcloud_query_insert_next(m_context, insert, 5000, &done);
    f.qrb_pointcloud_query_insert_delete(m_context, insert);
    ASSERT_EQ(f.qrb_pointcloud_transaction_commit(m_context, m_cloud), QRB_SUCCESS);
    qrb_query_stat* stat = nullptr;
    qrb_graph_node* node = nullptr;
    ASSERT_EQ(f.qrb_pointcloud_query_stat_new(m_context, m_cloud, &stat), QRB_SUCCESS);
    ASSERT_EQ(f.qrb_pointcloud_graph_node_new(m_context, &node), QRB_SUCCESS);
    for (const char* filter : {"", "p > 99", "p > 3", ""}) {
        ASSERT_EQ(f.qrb_pointcloud_query_stat_index_filter(m_context, stat, node, filter),
                  QRB_SUCCESS);
        EXPECT_EQ(node->point_count_total, 5000);
        EXPECT_EQ(node->child_count > 0, std::string(filter) != "p > 99") << filter;
    }
    f.qrb_pointcloud_graph_node_delete(m_context, node);
    f.qrb_pointcloud_query_stat_delete(m_context, stat);
}

}  // namespace
