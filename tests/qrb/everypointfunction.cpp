// The functions that insert points, find, change and count them.
#include "tests/qrb/everyfunction.h"

#include <string>
#include <vector>

void EveryFunction::walkPoints(qrb_pointcloud* p) {
    std::vector<double> xyz;
    std::vector<std::uint8_t> classes;
    for (int i = 0; i < 1000; ++i) {
        xyz.insert(xyz.end(), {i % 10 * 1.0, i / 10 % 10 * 1.0, i / 100 * 1.0});
        classes.push_back(static_cast<std::uint8_t>(i % 7));
    }
    std::vector<std::uint64_t> ids(1000);
    qrb_query_insert* insert = nullptr;
    no(t.qrb_pointcloud_query_insert_new(c, p, &insert), QRB_ERROR_STATE);
    begin(p);
    ok(t.qrb_pointcloud_query_insert_new(c, p, &insert));
    ok(t.qrb_pointcloud_query_insert_bind(c, insert, "tarvo.xyz", QRB_DATA_TYPE_DOUBLE, xyz.data(),
                                          24));
    ok(t.qrb_pointcloud_query_insert_bind(c, insert, "tarvo.class", QRB_DATA_TYPE_UINT8,
                                          classes.data(), 1));
    ok(t.qrb_pointcloud_query_insert_bind_id(c, insert, QRB_DATA_TYPE_UINT64, ids.data(), 8));
    std::uint32_t count = 0;
    ok(t.qrb_pointcloud_query_insert_next(c, insert, 1000, &count));
    EXPECT_EQ(count, 1000u);
    EXPECT_EQ(ids[999], 1000u);
    xyz[5] = 1e9;
    no(t.qrb_pointcloud_query_insert_next(c, insert, 1000, &count), QRB_ERROR_RANGE);
    ok(t.qrb_pointcloud_query_insert_delete(c, insert));
    int last = -1;
    ok(t.qrb_pointcloud_transaction_commit_with_progress(
        c, p,
        [](std::uint8_t percent, void* data) -> std::uint8_t {
            *static_cast<int*>(data) = percent;
            return 1;
        },
        &last));
    EXPECT_EQ(last, 100);

    qrb_query_select* select = nullptr;
    no(t.qrb_pointcloud_query_select_new(c, p, 0, "tarvo.class ==", &select), QRB_ERROR_FILTER);
    ok(t.qrb_pointcloud_query_select_new(c, p, 0, "tarvo.class == 3", &select));
    ok(t.qrb_pointcloud_query_select_bind(c, select, "tarvo.class", QRB_DATA_TYPE_UINT8,
                                          classes.data(), 1));
    ok(t.qrb_pointcloud_query_select_next(c, select, 1000, &count));
    EXPECT_EQ(count, 143u);
    ok(t.qrb_pointcloud_query_select_next(c, select, 1000, &count));
    EXPECT_EQ(count, 0u);
    std::uint32_t percent = 0;
    ok(t.qrb_pointcloud_query_select_progress(c, select, &percent));
    EXPECT_EQ(percent, 100u);
    std::uint64_t skipped = 0, whole = 0, read = 0;
    ok(optional.qrb_pointcloud_query_select_nodes_passed(c, select, &skipped, &whole, &read));
    EXPECT_EQ(skipped + whole + read, 1u);
    no(optional.qrb_pointcloud_query_select_nodes_passed(c, select, &skipped, nullptr, &read),
       QRB_ERROR_ARGUMENT);
    ok(t.qrb_pointcloud_query_select_delete(c, select));
    ok(t.qrb_pointcloud_query_select_nodes_new(c, p, nullptr, 0, "", &select));
    ok(t.qrb_pointcloud_query_select_next(c, select, 1000, &count));
    EXPECT_EQ(count, 0u);
    ok(t.qrb_pointcloud_query_select_delete(c, select));
    std::uint8_t empty = 1;
    ok(t.qrb_pointcloud_is_empty(c, p, &empty));
    EXPECT_EQ(empty, 0);
    ok(t.qrb_pointcloud_clear_cache(c, p));
    for (const std::uint8_t format : {1, 2, 3, 4}) {
        const char* report = nullptr;
        ok(t.qrb_pointcloud_inspect(c, p, format, &report));
        EXPECT_NE(std::string(report).find("tarvo.class"), std::string::npos) << int(format);
    }
    const char* report = nullptr;
    ok(t.qrb_pointcloud_inspect(c, p, 5, &report));
    EXPECT_EQ(std::string(report).find("{\"fault_count\":0,\"faults\":[],"), 0u) << report;
    no(t.qrb_pointcloud_inspect(c, p, 9, &report), QRB_ERROR_ARGUMENT);
}

void EveryFunction::walkChanges(qrb_pointcloud* p) {
    const std::uint64_t ids[] = {1, 2, 5000};
    const std::uint8_t classes[] = {20, 21, 22};
    const std::uint8_t nine = 9;
    std::uint32_t count = 0;
    std::uint32_t percent = 0;
    const auto counted = [&](const char* filter) {
        qrb_query_select* select = nullptr;
        std::uint32_t hits = 0;
        ok(t.qrb_pointcloud_query_select_new(c, p, 0, filter, &select));
        ok(t.qrb_pointcloud_query_select_next(c, select, 100000, &hits));
        ok(t.qrb_pointcloud_query_select_delete(c, select));
        return hits;
    };
    begin(p);
    qrb_query_update* update = nullptr;
    ok(t.qrb_pointcloud_query_update_new(c, p, &update));
    ok(t.qrb_pointcloud_query_update_bind(c, update, "tarvo.class", QRB_DATA_TYPE_UINT8, classes,
                                          1));
    no(t.qrb_pointcloud_query_update_next(c, update, 3, &count), QRB_ERROR_STATE);
    ok(t.qrb_pointcloud_query_update_delete(c, update));
    ok(t.qrb_pointcloud_query_update_new(c, p, &update));
    ok(t.qrb_pointcloud_query_update_bind(c, update, "tarvo.id", QRB_DATA_TYPE_UINT64, ids, 8));
    ok(t.qrb_pointcloud_query_update_bind(c, update, "tarvo.class", QRB_DATA_TYPE_UINT8, classes,
                                          1));
    ok(t.qrb_pointcloud_query_update_next(c, update, 3, &count));
    EXPECT_EQ(count, 2u);
    ok(t.qrb_pointcloud_query_update_delete(c, update));
    EXPECT_EQ(counted("tarvo.class >= 20"), 2u);

    qrb_query_fill* fill = nullptr;
    ok(t.qrb_pointcloud_query_fill_new(c, p, 0, "tarvo.class == 3", &fill));
    ok(t.qrb_pointcloud_query_fill_bind(c, fill, "tarvo.class", QRB_DATA_TYPE_UINT8, &nine, 0));
    ok(t.qrb_pointcloud_query_fill_next(c, fill, 100, &count));
    EXPECT_EQ(count, 100u);
    ok(t.qrb_pointcloud_query_fill_progress(c, fill, &percent));
    ok(t.qrb_pointcloud_query_fill_next(c, fill, 100, &count));
    EXPECT_EQ(count, 43u);
    ok(t.qrb_pointcloud_query_fill_delete(c, fill));
    EXPECT_EQ(counted("tarvo.class == 9"), 143u);
    const std::uint32_t absent = 4000000;
    no(t.qrb_pointcloud_query_fill_nodes_new(c, p, &absent, 1, "", &fill), QRB_ERROR_NOT_FOUND);
    ok(t.qrb_pointcloud_query_fill_nodes_new(c, p, nullptr, 0, "", &fill));
    ok(t.qrb_pointcloud_query_fill_delete(c, fill));

    qrb_query_invert* invert = nullptr;
    ok(t.qrb_pointcloud_query_invert_new(c, p, 0, "tarvo.class == 9", &invert));
    no(t.qrb_pointcloud_query_invert_attribute(c, invert, "tarvo.class"), QRB_ERROR_ARGUMENT);
    ok(t.qrb_pointcloud_query_invert_attribute(c, invert, "tarvo.selected"));
    ok(t.qrb_pointcloud_query_invert_next(c, invert, 1000, &count));
    EXPECT_EQ(count, 143u);
    ok(t.qrb_pointcloud_query_invert_progress(c, invert, &percent));
    ok(t.qrb_pointcloud_query_invert_delete(c, invert));
    ok(t.qrb_pointcloud_query_invert_nodes_new(c, p, nullptr, 0, "", &invert));
    ok(t.qrb_pointcloud_query_invert_delete(c, invert));
    EXPECT_EQ(counted("tarvo.selected == 1 && tarvo.class == 9"), 143u);

    qrb_query_remove* remove = nullptr;
    ok(t.qrb_pointcloud_query_remove_new(c, p, &remove));
    ok(t.qrb_pointcloud_query_remove_bind(c, remove, QRB_DATA_TYPE_UINT64, ids, 8));
    ok(t.qrb_pointcloud_query_remove_next(c, remove, 3, &count));
    EXPECT_EQ(count, 2u);
    ok(t.qrb_pointcloud_query_remove_next(c, remove, 3, &count));
    EXPECT_EQ(count, 0u);
    ok(t.qrb_pointcloud_query_remove_delete(c, remove));
    EXPECT_EQ(counted(""), 998u);
    ok(t.qrb_pointcloud_transaction_rollback(c, p));
    EXPECT_EQ(counted(""), 1000u);
}

void EveryFunction::walkIndex(qrb_pointcloud* p) {
    qrb_query_stat* stat = nullptr;
    qrb_graph_node* node = nullptr;
    ok(t.qrb_pointcloud_query_stat_new(c, p, &stat));
    ok(t.qrb_pointcloud_graph_node_new(c, &node));
    ok(t.qrb_pointcloud_query_stat_index(c, stat, node));
    EXPECT_EQ(node->point_count_total, 1000);
    ok(t.qrb_pointcloud_query_stat_index_filter(c, stat, node, "find fullest leaf"));
    no(t.qrb_pointcloud_query_stat_index_filter(c, stat, node, "nonsense ==="), QRB_ERROR_FILTER);
    ok(t.qrb_pointcloud_graph_node_delete(c, node));
    double least[3];
    double most[3];
    for (const auto minimum :
         {t.qrb_pointcloud_query_stat_minimum, t.qrb_pointcloud_query_stat_minimum_cleaned})
        ok(minimum(c, stat, 1, "tarvo.xyz", QRB_DATA_TYPE_DOUBLE, least));
    for (const auto maximum :
         {t.qrb_pointcloud_query_stat_maximum, t.qrb_pointcloud_query_stat_maximum_cleaned})
        ok(maximum(c, stat, 1, "tarvo.xyz", QRB_DATA_TYPE_DOUBLE, most));
    EXPECT_EQ(least[2], 0);
    EXPECT_EQ(most[2], 9);
    std::uint32_t revision = 0;
    std::uint32_t current = 0;
    ok(t.qrb_pointcloud_query_stat_revision(c, stat, 1, "tarvo.xyz", &revision));
    ok(t.qrb_pointcloud_transaction_current(c, p, &current));
    EXPECT_EQ(revision, current);
    no(t.qrb_pointcloud_query_stat_revision(c, stat, 77777, "tarvo.xyz", &revision),
       QRB_ERROR_NOT_FOUND);
    ok(t.qrb_pointcloud_query_stat_delete(c, stat));
}
