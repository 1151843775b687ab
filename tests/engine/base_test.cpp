// What the rooms of the engine share: numbers in bytes, JSON texts, the cache, threads.
#include "engine/base/bytes.h"
#include "engine/base/json.h"
#include "engine/base/lrucache.h"
#include "engine/base/slabs.h"
#include "engine/base/spares.h"
#include "engine/base/threadpool.h"
#include "engine/base/zstd.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cmath>
#include <functional>
#include <random>
#include <set>
#include <stdexcept>
#include <thread>
#include <vector>

namespace tarvo::engine {
namespace {

// The code, text and details of what a function throws, a line each.
std::string failureOf(const std::function<void()>& function) {
    try {
        function();
    } catch (const Failure& failure) {
        return std::to_string(static_cast<int>(failure.code())) + "\n" + failure.what() + "\n" +
               failure.details();
    }
    return {};
}

std::string damage(const std::string& found) {
    return std::to_string(QRB_ERROR_DAMAGED) +
           "\nThe file is damaged: the thing is not readable.\nFound " + found + ".";
}

TEST(BytesOfNumbers, AreReadBackAndOthersNamed) {
    for (const std::uint64_t number : std::initializer_list<std::uint64_t>{
             0, 127, 128, 16383, 16384, UINT64_MAX >> 1, std::uint64_t(1) << 63, UINT64_MAX}) {
        Bytes bytes;
        ByteWriter writer(bytes);
        writer.varint(number);
        writer.number(number);
        writer.varint(number);
        ByteReader reader(bytes, "the thing");
        EXPECT_EQ(reader.varint(), number);
        EXPECT_EQ(reader.number<std::uint64_t>(), number);
        EXPECT_EQ(reader.varint(number), number);  // at its limit
        EXPECT_EQ(failureOf([&] { reader.finish(); }), "");
        EXPECT_EQ(failureOf([&] { reader.take(1); }), damage("its end too early"));
    }
    const Bytes bytes{9, 3, 4};
    ByteReader reader(bytes, "the thing");
    EXPECT_EQ(failureOf([&] { reader.varint(8); }),
              damage("the number 9 where at most 8 is possible"));
    EXPECT_EQ(failureOf([&] { reader.take(SIZE_MAX); }), damage("its end too early"));
    EXPECT_EQ(reader.left(), 2u);
    EXPECT_EQ(failureOf([&] { reader.finish(); }), damage("bytes behind its end"));
    const Bytes endless(12, 0x80);
    EXPECT_EQ(failureOf([&] { ByteReader(endless, "the thing").varint(); }),
              damage("an unending number"));
}

TEST(Json, TextsAreTakenUpToTheirLimitsAndRefusedWithTheReason) {
    const auto parsing = [](const std::string& text) {
        return failureOf([&] { (void)parseJson(text, "The text", ErrorCode::Format); });
    };
    const auto nested = [](std::size_t depth) {
        return std::string(depth, '[') + std::string(depth, ']');
    };
    const std::string refused = std::to_string(QRB_ERROR_FORMAT) + "\nThe text ";
    EXPECT_EQ(parsing(nested(100)), "");
    EXPECT_EQ(parsing("[" + nested(99) + "," + nested(99) + "]"), "");
    EXPECT_EQ(parsing(nested(101)), refused + "nests more than 100 levels.\n");
    EXPECT_EQ(parsing("[1, 2"), refused +
                                    "is not valid JSON.\nMissing a comma or ']' after an array "
                                    "element. At byte 6.");
    EXPECT_EQ(parsing(std::string(maximumJsonSize, ' ') + "1"), refused + "is too large.\n");
    // As the compiler reads them.
    for (const char* number : {"0.1", "636001.76", "9007199254740993.5", "2.2250738585072014e-308",
                               "123456.789012345678", "1.7976931348623157e308"})
        EXPECT_EQ(parseJson(number, "The text").GetDouble(), std::strtod(number, nullptr))
            << number;
}

TEST(Json, MembersAreReadWholeOrNamedWithWhatWasExpected) {
    const rapidjson::Document document = parseJson(
        R"({"text": "a\u0000b", "eight": 255, "nine": 256, "word": 4294967295, "wide": 4294967296,
            "huge": 18446744073709551615, "minus": -1, "half": 0.5, "none": null, "yes": true,
            "part": {"list": [1]}})",
        "The record");
    const JsonObject object(document, "The record", ErrorCode::Argument);
    EXPECT_EQ(object.text("text"), std::string("a\0b", 3));
    std::uint8_t eight = 0;
    std::uint32_t word = 0;
    std::uint64_t huge = 0;
    double real = 7;
    bool yes = false;
    std::string text = "kept";
    object.read("eight", eight);
    object.read("word", word);
    object.read("huge", huge);
    object.read("yes", yes);
    object.read("gone", text);
    object.read("gone", real);
    EXPECT_EQ(real, 7);
    object.read("half", real);
    EXPECT_EQ(real, 0.5);
    object.read("none", real);
    EXPECT_TRUE(std::isnan(real));
    EXPECT_EQ(eight, 255);
    EXPECT_EQ(word, 4294967295u);
    EXPECT_EQ(huge, ~0ull);
    EXPECT_TRUE(yes);
    EXPECT_EQ(text, "kept");

    const struct {
        std::function<void()> read;
        const char* member;
        const char* expected;
    } cases[] = {
        {[&] { object.read("nine", eight); }, "nine", "a whole number of at most 255"},
        {[&] { object.read("wide", word); }, "wide", "a whole number of at most 4294967295"},
        {[&] { object.read("minus", huge); }, "minus",
         "a whole number of at most 18446744073709551615"},
        {[&] { object.read("half", huge); }, "half",
         "a whole number of at most 18446744073709551615"},
        {[&] { object.read("yes", real); }, "yes", "a number or null"},
        {[&] { object.read("text", yes); }, "text", "true or false"},
        {[&] { object.read("none", text); }, "none", "a text"},
        {[&] { (void)object.text("gone"); }, "gone", "a value"},
        {[&] { (void)object.array("part"); }, "part", "an array"},
        {[&] { (void)object.object("text"); }, "text", "an object"},
    };
    const std::string argument = std::to_string(QRB_ERROR_ARGUMENT) + "\n";
    for (const auto& one : cases)
        EXPECT_EQ(failureOf(one.read), argument + "The record has no valid member \"" + one.member +
                                           "\".\nExpected " + one.expected + ".");
    EXPECT_EQ(
        failureOf([&] { (void)object.object("part").text("list"); }),
        argument + "The record, member \"part\" has no valid member \"list\".\nExpected a text.");
    EXPECT_EQ(failureOf([&] { JsonObject(document["half"], "It", ErrorCode::Damaged); }),
              std::to_string(QRB_ERROR_DAMAGED) + "\nIt is not a JSON object.\n");
    // Of what a caller gets back nothing has changed.
    EXPECT_EQ(eight, 255);
    EXPECT_EQ(word, 4294967295u);
}

TEST(LruCache, KeepsWhatWasUsedLastWithinItsBudget) {
    LruCache<char, char> cache(6);
    const auto put = [&](char key, std::size_t cost) {
        cache.put(key, std::make_shared<const char>(key), cost);
    };
    // Without using them.
    std::string used;
    const auto kept = [&] {
        std::string result;
        for (const char key : used)
            if (cache.get(key))
                result += key;
        // As they were: the first one was used last.
        for (auto key = result.rbegin(); key != result.rend(); ++key)
            (void)cache.get(*key);
        return result;
    };
    for (int round = 0; round < 3; ++round) {
        put('a', 2);
        put('b', 2);
        put('c', 2);
        used = "cba";
        EXPECT_EQ(kept(), "cba");  // just full
        EXPECT_TRUE(cache.get('a'));
        put('d', 1);
        used = "dacb";
        EXPECT_EQ(kept(), "dac");
        put('e', 3);
        used = "edac";
        EXPECT_EQ(kept(), "eda");
        // Larger than all of it: the others stay.
        put('f', 7);
        used = "fedacb";
        EXPECT_EQ(kept(), "eda");
        // One that is there stays what it is, and what it takes.
        const std::shared_ptr<const char> before = cache.get('a');
        put('a', 6);
        EXPECT_EQ(cache.get('a'), before);
        used = "aed";
        EXPECT_EQ(kept(), "aed");
        cache.clear();
        EXPECT_EQ(kept(), "");
        EXPECT_EQ(*before, 'a');
    }
}

TEST(Zstd, MissingMemoryIsNoDamage) {
    const auto result = [](ZSTD_ErrorCode code) { return std::size_t(0) - std::size_t(code); };
    EXPECT_THROW(requireMemory(result(ZSTD_error_memory_allocation)), std::bad_alloc);
    EXPECT_THROW(requireCompressed(result(ZSTD_error_memory_allocation)), std::bad_alloc);
    requireMemory(result(ZSTD_error_corruption_detected));
    requireMemory(7);
    requireCompressed(7);
    EXPECT_EQ(failureOf([&] { requireCompressed(result(ZSTD_error_stage_wrong)); }),
              std::to_string(QRB_ERROR_INTERNAL) +
                  "\nCompressing failed.\nOperation not authorized at current processing stage");
}

TEST(Spares, AreUsedAgainButNeverByTwo) {
    Spares<int> spares;
    int* first = nullptr;
    int* second = nullptr;
    {
        const Spares<int>::Loan one(spares), two(spares);
        first = &*one;
        second = &*two;
        EXPECT_NE(first, second);
    }
    const Spares<int>::Loan one(spares), two(spares);
    EXPECT_EQ(std::set<int*>({&*one, &*two}), std::set<int*>({first, second}));
}

TEST(ThreadPool, FinishesWhatItWasGivenAndHandsItsFailuresOver) {
    std::vector<Task<int>> tasks;
    std::thread::id worker;
    {
        ThreadPool pool(0);
        EXPECT_EQ(pool.threads(), 1u);
        for (int i = 0; i < 50; ++i)
            tasks.push_back(pool.run([&worker, i] {
                std::this_thread::sleep_for(std::chrono::milliseconds(1));
                worker = std::this_thread::get_id();
                if (i == 49)
                    throw std::runtime_error("the last");
                return i;
            }));
        // The pool ends with most of it still to be done.
    }
    for (int i = 0; i < 49; ++i)
        EXPECT_EQ(tasks[static_cast<std::size_t>(i)].get(), i);
    EXPECT_THROW(tasks.back().get(), std::runtime_error);
    EXPECT_NE(worker, std::this_thread::get_id());

    EXPECT_EQ(ThreadPool(3).threads(), 3u);
    ThreadPool pool(1);
    std::atomic<bool> done = false;
    {
        const auto task = pool.run([&done] {
            std::this_thread::sleep_for(std::chrono::milliseconds(30));
            done = true;
        });
    }
    EXPECT_TRUE(done);  // its end waited
}

// Pieces that overlapped, or were given out twice, would lose what was written into them.
TEST(Slabs, KeepWhatEachPieceHoldsUntilItIsGivenBack) {
    std::vector<std::thread> threads;
    for (std::uint64_t thread = 1; thread <= 3; ++thread)
        threads.emplace_back([thread] {
            std::mt19937_64 random(thread);
            std::vector<std::vector<std::uint64_t, SlabAllocator<std::uint64_t>>> held;
            for (std::uint64_t i = 1; i <= 4000; ++i) {
                const std::size_t words = std::size_t(1) << (4 + random() % 14);
                held.emplace_back(words + random() % words, thread << 32 | i);
                if (held.size() > 40 || random() % 3 == 0) {
                    const std::size_t gone = random() % held.size();
                    const std::uint64_t first = held[gone].front();
                    ASSERT_EQ(first >> 32, thread);
                    ASSERT_TRUE(std::all_of(held[gone].begin(), held[gone].end(),
                                            [&](std::uint64_t word) { return word == first; }));
                    std::swap(held[gone], held.back());
                    held.pop_back();
                }
            }
        });
    for (std::thread& thread : threads)
        thread.join();
}

}  // namespace
}  // namespace tarvo::engine
