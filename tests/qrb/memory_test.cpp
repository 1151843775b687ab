// The library without threads, and its results without memory; what else may run out of memory is
// tried by tests/reliability/memory.cpp.
#include "qrb/loader.h"
#include "tests/qrb/allocations.h"

#include <gtest/gtest.h>

#include <unistd.h>

#include <filesystem>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;
using namespace tarvo;

constexpr std::uint32_t points = 3000;

class OutOfMemory : public testing::Test {
protected:
    OutOfMemory() {
        qrb::loadLibrary(QRBLIB_FILE);
        folder = fs::temp_directory_path() / ("qrb_memory-" + std::to_string(getpid()));
        fs::create_directories(folder);
        for (std::uint32_t i = 0; i < points * 3; ++i)
            xyz.push_back((i * 7919) % 199 - 99.0);
        start();
        createFile();
        must(t.qrb_context_delete(c));
        start();
        open();
        insert();
        step(t.qrb_pointcloud_transaction_commit(c, cloud));
        EXPECT_FALSE(failed) << text;
        must(t.qrb_context_delete(c));
        fs::rename(file, prepared);
    }
    ~OutOfMemory() override {
        qrb::freeLibrary();
        fs::remove_all(folder);
    }

    // Work in steps: each ends it when it fails.
    void step(qrb_status status) {
        if (failed || status == QRB_SUCCESS)
            return;
        failed = true;
        const char* details = nullptr;
        // Needs no memory itself.
        if (t.qrb_context_get_last_error(c, &code, &text, &details) != QRB_SUCCESS)
            text = nullptr;
    }
    static void must(qrb_status status) { ASSERT_EQ(status, QRB_SUCCESS); }

    void start() {
        must(t.qrb_context_new(&c, nullptr, nullptr));
        must(t.qrb_pointcloud_new(c, &cloud));
        failed = false;
    }
    void createFile() {
        qrb_create_settings* settings = nullptr;
        qrb_point_attribute* attribute = nullptr;
        step(t.qrb_pointcloud_create_settings_new(c, &settings));
        step(failed ? 1 : t.qrb_pointcloud_point_attribute_new(c, &attribute));
        step(failed ? 1 : t.qrb_pointcloud_point_attribute_json_load(c, attribute, definition));
        step(failed
                 ? 1
                 : t.qrb_pointcloud_create_settings_set_primary_attribute(c, settings, attribute));
        step(failed ? 1 : t.qrb_pointcloud_create_settings_set_chunk_size(c, settings, 200));
        step(failed ? 1 : t.qrb_pointcloud_create(c, cloud, file.c_str(), settings));
        t.qrb_pointcloud_create_settings_delete(c, settings);
        t.qrb_pointcloud_point_attribute_delete(c, attribute);
    }
    void open() { step(t.qrb_pointcloud_open(c, cloud, file.c_str(), nullptr)); }
    void begin() {
        std::uint32_t id = 0;
        step(t.qrb_pointcloud_transaction_begin(c, cloud, "t", "a", "", "", &id));
    }
    void insert() {
        qrb_query_insert* query = nullptr;
        std::uint32_t done = 0;
        begin();
        step(failed ? 1 : t.qrb_pointcloud_query_insert_new(c, cloud, &query));
        step(failed ? 1
                    : t.qrb_pointcloud_query_insert_bind(c, query, "xyz", QRB_DATA_TYPE_DOUBLE,
                                                         xyz.data(), 24));
        step(failed ? 1 : t.qrb_pointcloud_query_insert_next(c, query, points, &done));
    }
    void select() {
        qrb_query_select* query = nullptr;
        std::uint32_t done = 1;
        step(t.qrb_pointcloud_query_select_new(c, cloud, 0, "xyz[0] > 3 && xyz[1] < 50", &query));
        std::vector<double>& out = xyz;
        step(failed ? 1
                    : t.qrb_pointcloud_query_select_bind(c, query, "xyz", QRB_DATA_TYPE_DOUBLE,
                                                         out.data(), 24));
        while (!failed && done > 0)
            step(t.qrb_pointcloud_query_select_next(c, query, points, &done));
    }
    void inspect(std::uint8_t format) {
        const char* report = nullptr;
        step(t.qrb_pointcloud_inspect(c, cloud, format, &report));
    }

    std::int64_t count() {
        qrb_query_stat* stat = nullptr;
        qrb_graph_node* node = nullptr;
        must(t.qrb_pointcloud_query_stat_new(c, cloud, &stat));
        must(t.qrb_pointcloud_graph_node_new(c, &node));
        must(t.qrb_pointcloud_query_stat_index(c, stat, node));
        return node->point_count_total;
    }

    const qrb::FunctionTable& t = qrb::functions();
    fs::path folder;
    const char* const definition =
        R"({"name":"xyz","title":"xyz","length":3,"minimum_value":-100,"maximum_value":100,)"
        R"("resolution":0.01,"default_value":0,"storage_class":1})";
    const std::string file =
        (fs::temp_directory_path() / ("qrb_memory-" + std::to_string(getpid())) / "file.qrbx")
            .string();
    const std::string prepared = file + ".prepared";
    std::vector<double> xyz;
    qrb_context* c = nullptr;
    qrb_pointcloud* cloud = nullptr;
    bool failed = false;
    std::int32_t code = 0;
    const char* text = "";
};

// With fewer threads than cores, or none, the work is done all the same.
TEST_F(OutOfMemory, Threads) {
    for (const int threads : {0, 1}) {
        SCOPED_TRACE(threads);
        fs::copy_file(prepared, file, fs::copy_options::overwrite_existing);
        allocations::limitThreads(threads);
        start();
        open();
        insert();
        step(t.qrb_pointcloud_transaction_commit(c, cloud));
        select();
        inspect(4);
        EXPECT_FALSE(failed) << text;
        EXPECT_EQ(allocations::threadsStarted(), threads);
        EXPECT_EQ(count(), 2 * points);
        EXPECT_EQ(t.qrb_context_delete(c), QRB_SUCCESS);
        allocations::limitThreads(-1);
    }
}

// The next error is told by its own words again.
TEST_F(OutOfMemory, IsForgottenByTheNextError) {
    start();
    allocations::fail(1, true);
    open();
    allocations::stop();
    EXPECT_TRUE(failed);
    EXPECT_EQ(code, QRB_ERROR_MEMORY);
    failed = false;
    open();
    EXPECT_EQ(code, QRB_ERROR_NOT_FOUND);
    EXPECT_EQ(std::string(text), "The file \"" + file + "\" does not exist.");
    must(t.qrb_context_delete(c));
}

// Results carry the error, too, though there is no memory for them.
TEST_F(OutOfMemory, Results) {
    for (const bool forGood : {false, true})
        for (long failing = 1; failing < 8; ++failing) {
            qrb_point_attribute* attribute = nullptr;
            allocations::fail(failing, forGood);
            qrb_result* result = t.qrb_pointcloud_point_attribute_new_cf(&attribute);
            if (!result)
                result = t.qrb_pointcloud_point_attribute_json_load_cf(attribute, definition);
            allocations::stop();
            char* message = nullptr;
            if (result) {
                EXPECT_EQ(t.qrb_result_get_error_code_cf(result, &code), nullptr);
                EXPECT_EQ(code, QRB_ERROR_MEMORY);
                EXPECT_EQ(t.qrb_result_get_error_text_cf(result, &message), nullptr);
                EXPECT_STREQ(message, "Out of memory.");
                EXPECT_EQ(t.qrb_string_delete_cf(message), nullptr);
                EXPECT_EQ(t.qrb_result_delete_cf(result), nullptr);
            }
            EXPECT_TRUE(result || !forGood);
            EXPECT_EQ(t.qrb_pointcloud_point_attribute_delete_cf(attribute), nullptr);
        }
}

}  // namespace
