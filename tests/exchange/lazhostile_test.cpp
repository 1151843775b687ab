// Compressed files as a source of points: the same as uncompressed ones, and what damage does to
// them.
#include "core/error.h"
#include "exchange/bytes.h"
#include "exchange/las/recordwriter.h"
#include "exchange/las/source.h"
#include "tests/cli/folder.h"
#include "tests/engine/seed.h"

#include <gtest/gtest.h>

#include <fstream>
#include <functional>
#include <iterator>
#include <optional>
#include <random>

namespace {

using namespace tarvo::exchange;
using namespace tarvo::exchange::las;
using tarvo::core::Failure;
using Bytes = std::vector<std::uint8_t>;

class LazSource : public testing::Test {
protected:
    // Points of a walk, in two chunks.
    static Bytes walk(const FileDescription& description, std::size_t count, unsigned seed) {
        std::mt19937 random(seed);
        Bytes point(description.recordLength);
        Bytes records;
        for (std::size_t i = 0; i < count; ++i) {
            if (i % 16 == 0) {
                point[random() % point.size()] += static_cast<std::uint8_t>(random() % 5);
            }
            records.insert(records.end(), point.begin(), point.end());
        }
        return records;
    }
    Bytes fileOf(const FileDescription& description, const Bytes& records) {
        const std::string name = folder.file("written");
        {
            const std::unique_ptr<std::FILE, CloseFile> file(std::fopen(name.c_str(), "wb"));
            RecordWriter writer(file.get(), description);
            writer.add(records.data(), records.size() / description.recordLength);
            writer.finish();
        }
        std::ifstream stream(name, std::ios::binary);
        return Bytes(std::istreambuf_iterator<char>(stream), {});
    }
    // The values of all columns, batch after batch; nothing if the file is refused.
    std::optional<Bytes> valuesOf(const Bytes& file) {
        try {
            LasSource source(folder.write("a.laz", file));
            Bytes values;
            std::uint64_t total = 0;
            while (const std::uint32_t count = source.next()) {
                for (std::size_t i = 0; i < source.columns().size(); ++i) {
                    const auto* const begin = static_cast<const std::uint8_t*>(source.values(i));
                    values.insert(values.end(), begin,
                                  begin + count * dataTypeSize(source.columns()[i].type));
                }
                total += count;
            }
            EXPECT_EQ(total, source.header().pointCount);
            return values;
        } catch (const Failure& failure) {
            error = failure.what();
            return {};
        }
    }
    void expectFailure(const Bytes& file, const std::string& words) {
        EXPECT_FALSE(valuesOf(file)) << "without: " << words;
        EXPECT_NE(error.find(words), std::string::npos) << error;
    }
    static std::uint32_t points(const Bytes& file) { return get<std::uint32_t>(file.data() + 96); }
    static std::uint64_t table(const Bytes& file) {
        return get<std::uint64_t>(file.data() + points(file));
    }
    // The data of the record that tells of the compression, which is the only one.
    static constexpr std::size_t description = 375 + 54;

    static FileDescription format(int pointFormat, unsigned extra = 0) {
        FileDescription description;
        description.pointFormat = pointFormat;
        description.recordLength = static_cast<std::uint16_t>(pointSize(pointFormat) + extra);
        description.compress = true;
        return description;
    }

    tarvo::cli::tests::Folder folder;
    std::string error;
};

TEST_F(LazSource, HasTheValuesAndBatchesOfTheUncompressedFile) {
    for (const int pointFormat : {5, 10}) {
        FileDescription description = format(pointFormat, 3);
        const Bytes records = walk(description, 140000, 1);
        const std::optional<Bytes> compressed = valuesOf(fileOf(description, records));
        description.compress = false;
        const std::optional<Bytes> plain = valuesOf(fileOf(description, records));
        ASSERT_TRUE(plain && compressed);
        EXPECT_TRUE(*plain == *compressed);
    }
}

// Writers that could not go back, or did not come to the end.
TEST_F(LazSource, NeedsNoTableOfChunksOfOneSize) {
    for (const int pointFormat : {3, 7}) {
        const FileDescription of = format(pointFormat);
        const Bytes file = fileOf(of, walk(of, 120000, 2));
        const std::optional<Bytes> expected = valuesOf(file);
        ASSERT_TRUE(expected);
        Bytes late = file;
        put(late.data() + points(file), std::int64_t{-1});
        late.resize(late.size() + 8);
        put(late.data() + file.size(), table(file));
        EXPECT_TRUE(valuesOf(late) == expected);
        Bytes none(file.begin(), file.begin() + static_cast<std::ptrdiff_t>(table(file)));
        EXPECT_TRUE(valuesOf(none) == expected) << "a table behind the end";
        put(none.data() + points(file), std::uint64_t{points(file)});
        EXPECT_TRUE(valuesOf(none) == expected) << "a table nowhere";
        Bytes variable = none;
        put(variable.data() + description + 12, 0xffffffffu);
        expectFailure(variable, "no chunk table");
        none.pop_back();
        EXPECT_FALSE(valuesOf(none));
    }
}

TEST_F(LazSource, RefusesWhatContradictsItself) {
    for (const int pointFormat : {1, 6}) {
        const FileDescription of = format(pointFormat, 1);
        const Bytes file = fileOf(of, walk(of, 50001, 3));
        ASSERT_TRUE(valuesOf(file));
        const auto broken = [&](std::size_t at, auto value) {
            Bytes bytes = file;
            put(bytes.data() + at, value);
            return bytes;
        };
        const std::size_t counts = 247;
        expectFailure(broken(counts, std::uint64_t{50002}), "the chunk at byte");
        expectFailure(broken(counts, std::uint64_t{49999}), "49999");
        expectFailure(broken(counts, std::uint64_t{100001}), "100001");
        expectFailure(broken(counts, ~std::uint64_t{0}), "18446744073709551615");
        expectFailure(broken(375 + 2, std::uint8_t{'x'}), "no record that tells");
        expectFailure(broken(105, std::uint16_t(of.recordLength + 1)), "items");
        expectFailure(broken(description, std::uint16_t{0}), "compressor 0");
        expectFailure(broken(description, std::uint16_t{4}), "compressor 4");
        expectFailure(broken(description + 2, std::uint16_t{1}), "coder 1");
        expectFailure(broken(description + 12, 1000u), "chunk");
        expectFailure(broken(description + 32, std::uint16_t{9999}), "9999 items");
        expectFailure(broken(description + 34, std::uint16_t{1}), "items");
        expectFailure(broken(description + 38, std::uint16_t{9}), "version 9");
        expectFailure(broken(points(file), std::uint64_t{5}), "before the points");
        expectFailure(broken(table(file), 1u), "version 1");
        expectFailure(broken(table(file) + 4, 3u), "chunk");
        expectFailure(broken(table(file) + 4, 0xffffffffu), "4294967295 chunks");
    }
}

// One stream of which its header tells more than anybody could store. A byte may hold many points
// that are all the same, but not without end.
TEST_F(LazSource, EndsWhereTheBytesEnd) {
    const FileDescription of = format(0);
    Bytes file = fileOf(of, walk(of, 5, 4));
    file.resize(points(file));
    put(file.data() + description, std::uint16_t{1});
    put(file.data() + description + 12, 0u);
    put(file.data() + 107, 0u);
    put(file.data() + 247, std::uint64_t{1} << 50);
    file.resize(file.size() + 400);
    LasSource source(folder.write("a.laz", file));
    std::uint64_t count = 0;
    EXPECT_THROW(
        while (count < 100000000) { count += source.next(); }, Failure);
    EXPECT_GT(count, 0u);
}

TEST_F(LazSource, CutOffIsAnErrorOrWhole) {
    for (const int pointFormat : {5, 10}) {
        const FileDescription of = format(pointFormat, 2);
        const Bytes file = fileOf(of, walk(of, 300, 5));
        const std::optional<Bytes> expected = valuesOf(file);
        for (std::size_t size = 0; size < file.size(); ++size) {
            const auto values =
                valuesOf(Bytes(file.begin(), file.begin() + static_cast<std::ptrdiff_t>(size)));
            // What tells the sizes of chunks is not needed.
            EXPECT_TRUE(!values || (size >= table(file) && values == expected)) << size;
        }
    }
}

TEST_F(LazSource, DamagedEndsInAnErrorOrInAsManyPoints) {
    std::mt19937 random(static_cast<unsigned>(tarvo::engine::testing::seedOfRun()));
    for (const int pointFormat : {0, 3, 4, 7, 9, 10}) {
        const FileDescription of = format(pointFormat, 2);
        const Bytes file = fileOf(of, walk(of, 300, 6));
        int refused = 0;
        constexpr int tries = 400;
        for (int i = 0; i < tries; ++i) {
            Bytes bytes = file;
            const std::size_t begin = i % 4 == 0 ? description : points(file);
            for (unsigned flips = 1 + random() % 3; flips != 0; --flips) {
                bytes[begin + random() % (bytes.size() - begin)] ^=
                    static_cast<std::uint8_t>(1 + random() % 255);
            }
            refused += valuesOf(bytes) ? 0 : 1;
        }
        EXPECT_GT(refused, tries / 2) << "of format " << pointFormat;
    }
}

}  // namespace
