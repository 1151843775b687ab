// Runs of points on their way into the tree: packed, sorted, in files, and merged.
#include "engine/index/pointmerger.h"
#include "engine/index/runfile.h"
#include "tests/engine/hostile.h"

#include <sys/resource.h>
#include <csignal>

namespace tarvo::engine::index {
namespace {

using namespace testing;

std::uint64_t announcedSeed() {
    const char* const given = std::getenv("QRB_SEED");
    const std::uint64_t seed = given ? std::strtoull(given, nullptr, 10) : std::random_device{}();
    std::printf("QRB_SEED=%llu replays this run\n", static_cast<unsigned long long>(seed));
    return seed;
}

TEST(PackedColumns, GiveBackWhatWasAppendedWhateverItWas) {
    std::mt19937_64 random(announcedSeed());
    for (int round = 0; round < 300; ++round) {
        PackedColumn column(8);
        std::vector<std::uint64_t> expected;
        for (int step = 0; step < 12; ++step) {
            const std::size_t count = random() % 20;
            const std::uint64_t first = random() >> (random() % 64);
            std::vector<std::uint64_t> codes(count);
            switch (random() % 5) {
                case 0:
                    std::fill(codes.begin(), codes.end(), first);
                    column.appendConstant(first, count);
                    break;
                case 1: {
                    const std::uint64_t begin = random() % 2 && !expected.empty()
                                                    ? expected.back() + 1
                                                    : std::min<std::uint64_t>(first, 1ull << 63);
                    std::iota(codes.begin(), codes.end(), begin);
                    if (random() % 2)
                        column.appendCounting(begin, count);
                    else
                        column.append(std::span<const std::uint64_t>(codes));
                    break;
                }
                case 2: {
                    const std::size_t left = expected.empty() ? 0 : random() % expected.size();
                    expected.resize(left);
                    column.truncate(left);
                    codes.clear();
                    break;
                }
                default: {
                    const unsigned bits = random() % 64;
                    for (std::uint64_t& code : codes)
                        code = first + ((random() >> bits) & (~0ull - first));
                    column.append(std::span<const std::uint64_t>(codes));
                }
            }
            expected.insert(expected.end(), codes.begin(), codes.end());
            ASSERT_EQ(column.size(), expected.size());
        }
        if (expected.empty())
            continue;
        std::vector<std::uint8_t> file;
        column.write(file);
        file.push_back(1);
        PackedColumn copy(8);
        ASSERT_EQ(copy.read(file).size(), 1u);
        const auto [least, greatest] = std::minmax_element(expected.begin(), expected.end());
        EXPECT_LE(column.minimum(), *least);
        EXPECT_GE(column.maximum(), *greatest);
        EXPECT_TRUE(!column.isConstant() || *least == *greatest);
        std::vector<std::uint32_t> rows;
        for (int i = 0; i < 30; ++i)
            rows.push_back(static_cast<std::uint32_t>(random() % expected.size()));
        for (const PackedColumn* one : {&column, &copy}) {
            schema::Column gathered(8, rows.size() + 1);
            one->gather(rows, gathered, 1);
            std::vector<std::uint64_t> unpacked(expected.size());
            one->unpack(0, unpacked);
            ASSERT_EQ(unpacked, expected);
            for (std::size_t i = 0; i < rows.size(); ++i) {
                ASSERT_EQ(gathered[i + 1], expected[rows[i]]);
                ASSERT_EQ((*one)[rows[i]], expected[rows[i]]);
            }
        }
    }
}

TEST(PackedColumns, OfOneCodeOrOfCountingOnesCostNothingUntilTheyEnd) {
    constexpr std::size_t many = 100'000;
    PackedColumn constant(4);
    constant.appendConstant(7'000'000, many);
    EXPECT_TRUE(constant.isConstant());
    PackedColumn counting(8);
    counting.appendCounting(1ull << 40, many);
    counting.appendCounting((1ull << 40) + many, many);
    EXPECT_FALSE(counting.isConstant());
    EXPECT_LT(constant.bytes() + counting.bytes(), 100u);
    constant.appendConstant(7'000'200, 1);
    counting.appendCounting(1ull << 40, 1);
    EXPECT_FALSE(constant.isConstant());
    EXPECT_EQ(constant[0], 7'000'000u);
    EXPECT_EQ(constant[many], 7'000'200u);
    EXPECT_EQ(counting[2 * many - 1], (1ull << 40) + 2 * many - 1);
    EXPECT_EQ(counting[2 * many], 1ull << 40);
    EXPECT_GT(constant.bytes(), many);
    EXPECT_LT(constant.bytes(), 3 * many);
}

TEST(PackedColumns, TakeNoMoreBytesThanTheRangeNeedsWhileCodesDrift) {
    PackedColumn column(4);
    for (std::uint32_t i = 0; i < 1000; ++i) {
        const std::uint32_t codes[] = {1'000'000 - 10 * i, 1'000'003 + 7 * i};
        column.append(std::span<const std::uint32_t>(codes));
    }
    EXPECT_LE(column.bytes(), 2 * (2 * 1000 * 2 + 8));
    EXPECT_EQ(column[0], 1'000'000u);
    EXPECT_EQ(column[1999], 1'000'003u + 7 * 999);
}

// Points of a primary attribute and a number of their own, as they come out of a merger.
class Merging : public ::testing::Test {
protected:
    struct Point {
        Key key;
        std::size_t source;
        std::uint32_t number;
        bool isStored;
    };

    void define(std::uint32_t dimensions, unsigned bits) {
        schema::AttributeTable table;
        table.all().emplace_back(
            record("p", 0, bits == 64 ? 1.8e19 : std::ldexp(1.0, static_cast<int>(bits)) - 1, 1,
                   dimensions),
            1);
        table.all().emplace_back(record("tarvo.id", 0, 4e9), 2);
        m_space.emplace(table[0]);
        m_layout.emplace(table);
        m_expected.clear();
        m_numbers = 0;
    }
    // The codes of each point, one dimension behind the other.
    std::shared_ptr<SortedRun> runOf(const std::vector<std::vector<std::uint64_t>>& codes,
                                     std::size_t source, bool isStored = false) {
        PointColumns points(*m_layout);
        for (const std::vector<std::uint64_t>& one : codes) {
            for (std::size_t d = 0; d < one.size(); ++d)
                points.columns[d].appendConstant(one[d], 1);
            points.columns[one.size()].appendConstant(m_numbers, 1);
            ++points.count;
            m_expected.push_back({m_space->key(one.data()), source, m_numbers++, isStored});
        }
        return std::make_shared<SortedRun>(std::move(points), *m_space, 0);
    }
    void sortExpected() {
        std::sort(m_expected.begin(), m_expected.end(), [](const Point& a, const Point& b) {
            return std::tie(a.key, a.source, a.number) < std::tie(b.key, b.source, b.number);
        });
    }
    // Takes points, which must be the first of those that are expected.
    void take(PointMerger& merger, Key last, std::size_t count) {
        const RunParts parts = merger.take(last, count);
        std::vector<std::uint32_t> taken;
        std::vector<std::uint32_t> expected;
        for (const RunPart& part : parts)
            for (const std::uint32_t point : part.points)
                taken.push_back(static_cast<std::uint32_t>(part.run->columns().back()[point]) * 2 +
                                part.isStored);
        for (std::size_t i = 0; i < count; ++i)
            expected.push_back(m_expected[i].number * 2 + m_expected[i].isStored);
        std::sort(taken.begin(), taken.end());
        std::sort(expected.begin(), expected.end());
        ASSERT_EQ(taken, expected);
        m_expected.erase(m_expected.begin(), m_expected.begin() + static_cast<long>(count));
    }
    std::size_t expectedUpTo(Key last, std::size_t limit) const {
        std::size_t count = 0;
        while (count < std::min(limit, m_expected.size()) && m_expected[count].key <= last)
            ++count;
        return count;
    }

    std::optional<KeySpace> m_space;
    std::optional<RowLayout> m_layout;
    std::vector<Point> m_expected;
    std::uint32_t m_numbers = 0;
};

// Keys of all sizes, many of them equal or close together with some far off, in memory and in the
// file, and leaves that are opened again on the way.
TEST_F(Merging, CountsAndGivesThePointsOfACellWhateverTheyAre) {
    std::mt19937_64 random(announcedSeed());
    TemporaryFolder folder;
    for (int round = 0; round < 60; ++round) {
        SCOPED_TRACE("round " + std::to_string(round));
        const auto dimensions = static_cast<std::uint32_t>(1 + random() % 4);
        const unsigned bits = random() % 3 == 0 ? 64 : 1 + random() % 40;
        define(dimensions, bits);
        const std::uint64_t mask = bits == 64 ? ~0ull : (1ull << bits) - 1;
        const unsigned spread = random() % (bits + 1);
        std::vector<std::uint64_t> centre(dimensions);
        for (std::uint64_t& code : centre)
            code = random() & mask;
        const auto pointsOf = [&](std::size_t count) {
            std::vector<std::vector<std::uint64_t>> codes(count, centre);
            for (auto& one : codes)
                for (std::uint64_t& code : one)
                    code = (random() % 200 == 0
                                ? random()
                                : code ^ (spread == 0 ? 0 : random() >> (64 - spread))) &
                           mask;
            return codes;
        };
        RunFile file(folder.file("."));
        std::vector<std::unique_ptr<RunReader>> readers;
        const std::size_t runs = random() % 5;
        for (std::size_t r = 0; r < runs; ++r) {
            const std::size_t count = 1 + random() % (random() % 8 == 0 ? 6000 : 300);
            const auto run = runOf(pointsOf(count), r);
            readers.push_back(random() % 2 ? readRun(run)
                                           : file.read(file.add(*run), *m_layout, *m_space, 0));
        }
        sortExpected();
        PointMerger merger(std::move(readers));
        for (std::size_t inserted = 0; !merger.atEnd();) {
            ASSERT_TRUE(merger.nextKey() == m_expected[0].key);
            if (inserted < 3 && random() % 4 == 0) {
                // Those that are left in the cell of a point that is next.
                auto codes = pointsOf(1 + random() % 40);
                std::erase_if(codes, [&](const auto& one) {
                    return m_space->key(one.data()) < m_expected[0].key;
                });
                if (!codes.empty()) {
                    for (Point& point : m_expected)
                        ++point.source;
                    merger.insert(runOf(codes, 0, true));
                    sortExpected();
                    ++inserted;
                }
            }
            const unsigned level = random() % (m_space->depth() + 1);
            const Key last = random() % 3 == 0 ? m_expected[random() % m_expected.size()].key
                                               : m_space->last(m_expected[0].key, level);
            const std::size_t limit = 1 + random() % 500;
            const std::size_t count = merger.countUpTo(last, limit);
            ASSERT_EQ(count, expectedUpTo(last, limit));
            if (random() % 4 != 0)
                take(merger, last, random() % 3 == 0 ? std::min<std::size_t>(count, 1) : count);
            if (HasFatalFailure())
                return;
        }
        EXPECT_TRUE(m_expected.empty());
    }
}

// Points at one place, more of them than are sorted at once.
TEST_F(Merging, OfEqualKeysTakesThemInTheOrderOfTheirRuns) {
    define(3, 32);
    std::vector<std::vector<std::uint64_t>> here(3000, {5, 6, 7});
    here[7] = {4'000'000'000, 0, 0};
    std::vector<std::unique_ptr<RunReader>> readers;
    for (std::size_t r = 0; r < 2; ++r)
        readers.push_back(readRun(runOf(here, r)));
    sortExpected();
    PointMerger merger(std::move(readers));
    const Key last = m_space->key(here[0].data());
    EXPECT_EQ(merger.countUpTo(last, 10'000), 5998u);
    for (const std::size_t count : {1u, 2'000u, 998u, 1u, 2'998u})
        take(merger, last, count);
    EXPECT_EQ(merger.countUpTo(last, 10'000), 0u);
    EXPECT_EQ(merger.countUpTo(~Key(0), 10'000), 2u);
}

// What the process has open within a folder.
std::vector<std::string> openWithin(const std::string& folder) {
    std::vector<std::string> result;
    for (const auto& entry : std::filesystem::directory_iterator("/proc/self/fd")) {
        std::error_code error;
        const std::string target = std::filesystem::read_symlink(entry.path(), error).string();
        if (target.starts_with(folder))
            result.push_back(target);
    }
    return result;
}

TEST_F(Merging, LeavesNoFileBehindAndTellsOfADiskThatTakesNothing) {
    define(2, 20);
    TemporaryFolder folder;
    const std::string path = std::filesystem::path(folder.file("x")).parent_path().string();
    std::mt19937_64 random(7);
    const auto pointsOf = [&](std::size_t count) {
        std::vector<std::vector<std::uint64_t>> codes(count);
        for (auto& one : codes)
            one = {random() & 0xfffff, random() & 0xfffff};
        return codes;
    };
    {
        RunFile file(path);
        EXPECT_TRUE(openWithin(path).empty()) << "a file that nobody needed";
        const auto first = runOf(pointsOf(5000), 0);
        const RunFile::Place place = file.add(*first);
        const std::vector<std::string> open = openWithin(path);
        ASSERT_EQ(open.size(), 1u);
        EXPECT_NE(open[0].find("(deleted)"), std::string::npos) << open[0];
        EXPECT_EQ(folder.entries(), 0u);

        // No room for all of the second one, then for it: the first is whole.
        const auto second = runOf(pointsOf(20'000), 1);
        rlimit before{};
        ::getrlimit(RLIMIT_FSIZE, &before);
        const auto handler = std::signal(SIGXFSZ, SIG_IGN);
        for (const rlim_t more : {0u, 1000u, 60'000u}) {
            const rlimit small{place.end + more, before.rlim_max};
            ::setrlimit(RLIMIT_FSIZE, &small);
            const Outcome outcome = outcomeOf([&] { file.add(*second); });
            ::setrlimit(RLIMIT_FSIZE, &before);
            EXPECT_EQ(outcome.code, ErrorCode::File) << more;
        }
        std::signal(SIGXFSZ, handler);
        const RunFile::Place other = file.add(*second);
        EXPECT_LT(other.end - other.begin, 20'000 * (3 + 3 + 4)) << "packed";
        sortExpected();
        std::vector<std::unique_ptr<RunReader>> readers;
        readers.push_back(file.read(place, *m_layout, *m_space, 0));
        readers.push_back(file.read(other, *m_layout, *m_space, 0));
        PointMerger merger(std::move(readers));
        while (!merger.atEnd())
            take(merger, ~Key(0), merger.countUpTo(~Key(0), 900));
        EXPECT_TRUE(m_expected.empty());
        RunFile::Place beyond = other;
        beyond.end += 8;
        const auto reader = file.read(beyond, *m_layout, *m_space, 0);
        EXPECT_EQ(outcomeOf([&] {
                      while (reader->next()) {
                      }
                  }).code,
                  ErrorCode::File);
    }
    EXPECT_TRUE(openWithin(path).empty());

    const std::string gone = folder.file("gone");
    const auto run = runOf(pointsOf(3), 2);
    try {
        RunFile(gone).add(*run);
        ADD_FAILURE() << "made a file where there is no folder";
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.code(), ErrorCode::File);
        EXPECT_EQ(failure.what(),
                  std::string("Points can't be sorted: writing a temporary file failed. Free some "
                              "space and try again; nothing that was committed is lost."));
        EXPECT_EQ(failure.details(), "Folder: " + gone + "\nNo such file or directory");
    }
}

}  // namespace
}  // namespace tarvo::engine::index
