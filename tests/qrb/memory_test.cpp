// The library without memory: each allocation of a piece of work fails in its turn, alone or with
// all that follow. No call may crash; each tells an error with code and text, and the file opens
// with the state before or after.
#include "qrb/loader.h"

#include <gtest/gtest.h>

#include <dlfcn.h>
#include <pthread.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <iostream>
#include <random>
#include <string>
#include <vector>

// The allocator of the whole process, the library's included.
extern "C" {
void* __libc_malloc(std::size_t);
void* __libc_calloc(std::size_t, std::size_t);
void* __libc_realloc(void*, std::size_t);
}

namespace {

std::atomic<bool> s_armed{false};
std::atomic<bool> s_forGood{false};
std::atomic<long> s_made{0};
std::atomic<long> s_failing{0};
std::atomic<int> s_threadsLeft{-1};  // -1: as many as are wanted
std::atomic<int> s_threadsMade{0};

bool fails() {
    if (!s_armed)
        return false;
    const long number = ++s_made;
    if (number < s_failing || (number > s_failing && !s_forGood))
        return false;
    errno = ENOMEM;
    return true;
}

}  // namespace

extern "C" {
void* malloc(std::size_t size) {
    return fails() ? nullptr : __libc_malloc(size);
}
void* calloc(std::size_t count, std::size_t size) {
    return fails() ? nullptr : __libc_calloc(count, size);
}
void* realloc(void* memory, std::size_t size) {
    return fails() ? nullptr : __libc_realloc(memory, size);
}
int pthread_create(pthread_t* thread, const pthread_attr_t* attributes, void* (*start)(void*),
                   void* argument) noexcept {
    using Create = int(pthread_t*, const pthread_attr_t*, void* (*)(void*), void*);
    static auto* const original = reinterpret_cast<Create*>(dlsym(RTLD_NEXT, "pthread_create"));
    if (s_threadsLeft == 0)
        return EAGAIN;
    if (s_threadsLeft > 0)
        --s_threadsLeft;
    ++s_threadsMade;
    return original(thread, attributes, start, argument);
}
}

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
        s_armed = false;
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

    // What the file holds: its transaction, and its points; 0 without a file.
    std::uint32_t current(std::int64_t* count) {
        if (!fs::exists(file))
            return 0;
        start();
        std::uint32_t id = 0;
        qrb_query_stat* stat = nullptr;
        qrb_graph_node* node = nullptr;
        open();
        EXPECT_FALSE(failed) << text;
        must(t.qrb_pointcloud_transaction_current(c, cloud, &id));
        begin();  // nobody holds the lock any more
        EXPECT_FALSE(failed) << text;
        must(t.qrb_pointcloud_transaction_rollback(c, cloud));
        must(t.qrb_pointcloud_query_stat_new(c, cloud, &stat));
        must(t.qrb_pointcloud_graph_node_new(c, &node));
        must(t.qrb_pointcloud_query_stat_index(c, stat, node));
        *count = node->point_count_total;
        must(t.qrb_context_delete(c));
        return id;
    }

    // Runs the work once with all memory and then many times without some.
    void failEach(bool withFile, const std::function<void()>& prepare,
                  const std::function<void()>& work) {
        std::uint64_t seed = std::random_device()();
        if (const char* given = std::getenv("QRB_TEST_SEED"))
            seed = std::strtoull(given, nullptr, 10);
        SCOPED_TRACE("QRB_TEST_SEED=" + std::to_string(seed));
        std::cout << "QRB_TEST_SEED=" << seed << std::endl;
        std::mt19937_64 random(seed);
        const auto run = [&](long failing, bool forGood) {
            fs::remove(file);
            if (withFile)
                fs::copy_file(prepared, file);
            std::int64_t pointsBefore = 0;
            const std::uint32_t before = current(&pointsBefore);
            start();
            if (withFile)
                open();
            prepare();
            ASSERT_FALSE(failed) << text;
            workFailed = false;
            s_made = 0;
            s_failing = failing;
            s_forGood = forGood;
            s_armed = true;
            work();
            s_armed = false;
            workFailed = failed;
            if (workFailed) {
                ASSERT_NE(text, nullptr);
                EXPECT_NE(code, 0);
                EXPECT_STRNE(text, "");
            }
            EXPECT_EQ(t.qrb_context_delete(c), QRB_SUCCESS);
            std::int64_t pointsAfter = 0;
            const std::uint32_t after = current(&pointsAfter);
            EXPECT_TRUE(after == before || after == before + 1) << after << " of " << before;
            EXPECT_TRUE(pointsAfter == pointsBefore ||
                        (after == before + 1 && pointsAfter == pointsBefore + points));
            EXPECT_TRUE(withFile || !workFailed || after == 0) << "a failed creation left a file";
        };
        run(-1, false);
        ASSERT_FALSE(workFailed || HasFatalFailure()) << text;
        const long all = s_made;
        const long stride = std::max(1L, all / 70);
        for (const bool forGood : {false, true}) {
            long number = 1;
            while (number <= all && !HasFatalFailure()) {
                SCOPED_TRACE("allocation " + std::to_string(number) + " of " + std::to_string(all) +
                             (forGood ? " and all behind it" : ""));
                if (std::getenv("QRB_TEST_TRACE"))
                    std::cerr << number << (forGood ? "+" : "") << " of " << all << std::endl;
                run(number, forGood);
                // Every one at first, where most calls begin, then random ones.
                number +=
                    number < 20
                        ? 1
                        : 1 + static_cast<long>(random() % static_cast<unsigned long>(2 * stride));
            }
        }
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
    bool workFailed = false;
    std::int32_t code = 0;
    const char* text = "";
};

const auto nothing = [] {};

TEST_F(OutOfMemory, Create) {
    failEach(false, nothing, [&] { createFile(); });
}

TEST_F(OutOfMemory, Open) {
    failEach(
        true, [&] { step(t.qrb_pointcloud_close(c, cloud)); }, [&] { open(); });
}

TEST_F(OutOfMemory, Insert) {
    failEach(true, nothing, [&] { insert(); });
}

TEST_F(OutOfMemory, Commit) {
    failEach(
        true,
        [&] {
            begin();
            step(t.qrb_pointcloud_management_set_lod_mode(c, cloud, 2));
            step(t.qrb_pointcloud_management_set_chunk_size_lod(c, cloud, 2));
            step(t.qrb_pointcloud_transaction_rollback(c, cloud));
            insert();
            step(t.qrb_pointcloud_management_set_lod_mode(c, cloud, 2));
            step(t.qrb_pointcloud_management_set_chunk_size_lod(c, cloud, 2));
        },
        [&] { step(t.qrb_pointcloud_transaction_commit(c, cloud)); });
}

TEST_F(OutOfMemory, Select) {
    failEach(true, nothing, [&] { select(); });
}

TEST_F(OutOfMemory, MetaData) {
    failEach(true, nothing, [&] {
        begin();
        step(failed ? 1 : t.qrb_pointcloud_meta_data_set(c, cloud, "item", "{\"a\": [1, 2]}"));
        step(failed ? 1 : t.qrb_pointcloud_transaction_commit(c, cloud));
    });
}

TEST_F(OutOfMemory, Validation) {
    failEach(true, nothing, [&] {
        step(t.qrb_pointcloud_meta_data_validate_json(
            c, nullptr, R"({"a": [1, 2], "b": "text"})",
            R"({"type": "object", "properties": {"a": {"type": "array", "items": {"type": "number",
            "enum": [1, 2]}}, "b": {"type": "string", "pattern": "^t.*t$"}}, "required": ["a"]})"));
    });
}

TEST_F(OutOfMemory, Inspect) {
    for (const std::uint8_t format : {1, 2, 3, 4}) {
        SCOPED_TRACE(int(format));
        failEach(true, nothing, [&] { inspect(format); });
    }
}

TEST_F(OutOfMemory, Vacuum) {
    failEach(true, nothing,
             [&] { step(t.qrb_pointcloud_management_vacuum(c, cloud, nullptr, nullptr)); });
}

// With fewer threads than cores, or none, the work is done all the same.
TEST_F(OutOfMemory, Threads) {
    for (const int threads : {0, 1}) {
        SCOPED_TRACE(threads);
        fs::copy_file(prepared, file, fs::copy_options::overwrite_existing);
        s_threadsMade = 0;
        s_threadsLeft = threads;
        start();
        open();
        insert();
        step(t.qrb_pointcloud_transaction_commit(c, cloud));
        select();
        inspect(4);
        EXPECT_FALSE(failed) << text;
        EXPECT_EQ(t.qrb_context_delete(c), QRB_SUCCESS);
        EXPECT_EQ(s_threadsMade, threads);
        s_threadsLeft = -1;
        std::int64_t count = 0;
        EXPECT_EQ(current(&count), 3u);
        EXPECT_EQ(count, 2 * points);
    }
}

// Results carry the error, too, though there is no memory for them.
TEST_F(OutOfMemory, Results) {
    for (const bool forGood : {false, true})
        for (long failing = 1; failing < 8; ++failing) {
            qrb_point_attribute* attribute = nullptr;
            s_made = 0;
            s_failing = failing;
            s_forGood = forGood;
            s_armed = true;
            qrb_result* result = t.qrb_pointcloud_point_attribute_new_cf(&attribute);
            if (!result)
                result = t.qrb_pointcloud_point_attribute_json_load_cf(attribute, definition);
            s_armed = false;
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
