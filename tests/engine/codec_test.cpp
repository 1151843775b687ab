#include "engine/codec/codec.h"
#include "engine/base/instructions.h"

#include <gtest/gtest.h>

#include <sys/resource.h>
#include <zstd.h>
#include <array>
#include <cmath>
#include <optional>
#include <random>
#include <set>

using namespace tarvo::engine;
using namespace tarvo::engine::codec;
using schema::Column;

namespace {

enum Shape { Constant, Noise, Ramp, Walk, Rare, Runs, shapes };

Column makeColumn(unsigned width, std::size_t count, int shape, std::mt19937_64& random) {
    Column column(width, count);
    const std::uint64_t mask = width == 8 ? ~0ull : (1ull << (8 * width)) - 1;
    std::uint64_t walk = random();
    const std::uint64_t start = random();
    for (std::size_t i = 0; i < count; ++i) {
        walk += random() % 41 - 20;
        std::uint64_t code = 0;
        switch (shape) {
            case Constant:
                code = start;
                break;
            case Noise:
                code = random();
                break;
            case Ramp:
                code = start + i * 3;
                break;
            case Walk:
                code = walk;
                break;
            case Rare:
                code = random() % 50 == 0 ? random() : start;
                break;
            case Runs:
                code = (i / 300) * 77 + random() % (1 + i / 256 % 64);
                break;
        }
        column.set(i, code & mask);
    }
    return column;
}

bool sameCodes(const Column& a, const Column& b) {
    if (a.width() != b.width() || a.size() != b.size())
        return false;
    for (std::size_t i = 0; i < a.size(); ++i)
        if (a[i] != b[i])
            return false;
    return true;
}

Bytes encoded(const Column& column, const Options& options = {}) {
    Encoder encoder;
    Bytes block;
    encoder.encode(column, options, block);
    return block;
}

// The column, or none where the block was refused; anything but Failure(Damaged) is a fault.
std::optional<Column> decodeDamaged(Decoder& decoder, ByteSpan block, unsigned width,
                                    std::size_t count) {
    // A copy of exactly this size: reading past it is seen by the address sanitizer.
    const Bytes copy(block.begin(), block.end());
    try {
        return decoder.decode(copy, width, count, "the block").column();
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.code(), ErrorCode::Damaged) << failure.what();
        return std::nullopt;
    }
}

}  // namespace

TEST(Codec, GivesBackEveryColumnUnderEveryOption) {
    std::mt19937_64 random(11);
    Encoder encoder;
    Decoder decoder;
    for (const unsigned width : {1u, 2u, 4u, 8u})
        for (const std::size_t count : {0, 1, 7, 255, 256, 257, 1000, 10007})
            for (int shape = 0; shape < shapes; ++shape) {
                const Column column = makeColumn(width, count, shape, random);
                for (const int level : {0, 1, 100})
                    for (const int option : {0, 1, 2, 3, 9}) {
                        Bytes block{42};  // what was there stays
                        encoder.encode(column, {std::uint8_t(level), std::uint8_t(option)}, block);
                        ASSERT_EQ(block[0], 42);
                        const ByteSpan own = ByteSpan(block).subspan(1);
                        ASSERT_LE(own.size(), count * width + 80);
                        ASSERT_TRUE(sameCodes(
                            decoder.decode(Bytes(own.begin(), own.end()), width, count, "the block")
                                .column(),
                            column))
                            << width << " bytes, " << count << " codes, shape " << shape
                            << ", level " << level << ", option " << option;
                        if (level == 0) {
                            ASSERT_LE(own[0], std::uint8_t(Codec::BitPacked));
                        }
                    }
            }
}

// However a block is looked at and by whatever instructions, it has the codes of its column.
TEST(Block, GivesTheSameCodesInEveryWayOfReadingThem) {
    std::mt19937_64 random(12);
    const bool machine = machineHasWideInstructions();
    Decoder decoder;
    for (const unsigned width : {1u, 2u, 4u, 8u})
        for (unsigned bits = 0; bits <= 8 * width; ++bits)
            for (const std::size_t count : {1, 255, 256, 1100}) {
                Column column(width, count);
                const std::uint64_t most = bits == 64 ? ~0ull : (1ull << bits) - 1;
                const std::uint64_t limit = width == 8 ? ~0ull : (1ull << (8 * width)) - 1;
                const std::uint64_t base = limit == most ? 0 : random() % (limit - most);
                for (std::size_t i = 0; i < count; ++i)
                    column.set(i, base + (random() & most));
                const Options packed{0, 0}, squeezed{100, std::uint8_t(random() % 4)};
                for (const Options& options : {packed, squeezed})
                    for (const bool wide : {false, machine}) {
                        wideInstructions() = wide;
                        const Block block =
                            decoder.decode(encoded(column, options), width, count, "the block");
                        ASSERT_TRUE(sameCodes(block.column(), column)) << width << " " << bits;
                        block.visit([&]<typename T>(T) {
                            std::vector<std::uint32_t> points;
                            for (std::uint32_t i = random() % 9; i < count;
                                 i += 1 + random() % (i / 256 % 2 ? 40 : 2))
                                points.push_back(i);
                            std::vector<T> codes(count);
                            block.gather(points, codes.data());
                            for (std::size_t i = 0; i < points.size(); ++i)
                                ASSERT_EQ(codes[i], column[points[i]]) << width << " " << bits;
                            const std::size_t first = random() % count;
                            block.read(first, count - first, codes.data());
                            for (std::size_t i = first; i < count; ++i) {
                                ASSERT_EQ(codes[i - first], column[i]) << width << " " << bits;
                                ASSERT_GE(column[i], block.bounds(i / runLength).low);
                                ASSERT_LE(column[i], block.bounds(i / runLength).high);
                            }
                        });
                    }
            }
    wideInstructions() = machine;
    const Block same(4, 600, 77);
    EXPECT_TRUE(sameCodes(same.column(), [] {
        Column column(4, 600);
        for (std::size_t i = 0; i < 600; ++i)
            column.set(i, 77);
        return column;
    }()));
    EXPECT_EQ(same.bounds(2).low, 77u);
    EXPECT_EQ(same.bounds(2).high, 77u);

    // A base near the largest code and offsets that lead past it.
    const Block around(1, runLength, {{250, 3, 0}}, Bytes(runLength * 3 / 8, 0xff), 0);
    EXPECT_EQ(around.code<std::uint8_t>(0), 1);
    EXPECT_LE(around.bounds(0).low, 1u);
}

// Many blocks of a frame, each of which says no more than that it is like the one before.
TEST(Codec, GivesBackLongColumnsOfNothingNew) {
    Decoder decoder;
    for (const unsigned width : {1u, 8u})
        for (const int option : {1, 2, 3}) {
            const Column column(width, 1'000'000);
            const Bytes block = encoded(column, {100, std::uint8_t(option)});
            EXPECT_LT(block.size(), 5000u);
            EXPECT_TRUE(sameCodes(decoder.decode(block, width, column.size(), "the block").column(),
                                  column))
                << width << " " << option;
        }
}

TEST(Codec, PacksEveryBitWidth) {
    std::mt19937_64 random(12);
    Decoder decoder;
    for (const unsigned width : {1u, 2u, 4u, 8u})
        for (unsigned bits = 0; bits <= width * 8; ++bits)
            for (const std::size_t count : {9, 256, 700}) {
                Column column(width, count);
                const std::uint64_t mask = bits == 64 ? ~0ull : (1ull << bits) - 1;
                const std::uint64_t top = width == 8 ? ~0ull : (1ull << (8 * width)) - 1;
                const std::uint64_t base = random() % (top - mask + 1 == 0 ? 1 : top - mask + 1);
                for (std::size_t i = 0; i < count; ++i)
                    column.set(i, base + (random() & mask));
                const Bytes block = encoded(column, {0, 0});
                const Bytes copy(block);
                ASSERT_TRUE(
                    sameCodes(decoder.decode(copy, width, count, "the block").column(), column))
                    << width << " bytes, " << bits << " bits, " << count;
                if (bits + 4 < width * 8 && count == 700) {
                    ASSERT_LE(block.size(), 1 + 3 * 11 + (count * bits + 7) / 8 + 3);
                }
            }
}

// Files written by earlier versions hold these bytes: they must stay readable.
TEST(Codec, ReadsTheWrittenFormat) {
    Decoder decoder;
    const Bytes raw{0, 0x34, 0x12, 0x78, 0x56};
    Column column = decoder.decode(raw, 2, 2, "the block").column();
    EXPECT_EQ(column[0], 0x1234u);
    EXPECT_EQ(column[1], 0x5678u);

    // Base 100 (zigzag 200), 3 bits: offsets 1, 5, 7.
    const Bytes packed{1, 3, 0xc8, 0x01, 0b11101001, 0b1};
    column = decoder.decode(packed, 4, 3, "the block").column();
    EXPECT_EQ(column[0], 101u);
    EXPECT_EQ(column[1], 105u);
    EXPECT_EQ(column[2], 107u);
    Column same(4, 3);
    for (const int i : {0, 1, 2})
        same.set(i, column[i]);
    EXPECT_EQ(encoded(same, {0, 0}).size(), packed.size());

    // Frames of stored blocks: differences 1, -1, 2 as zigzag in two planes.
    const Bytes frame{5, 0x28, 0xb5, 0x2f, 0xfd, 0x20, 6, 0x31, 0, 0, 2, 0, 1, 0, 4, 0};
    column = decoder.decode(frame, 2, 3, "the block").column();
    EXPECT_EQ(column[0], 1u);
    EXPECT_EQ(column[1], 0u);
    EXPECT_EQ(column[2], 2u);
    Bytes planes{3, 0x28, 0xb5, 0x2f, 0xfd, 0x20, 6, 0x31, 0, 0, 2, 1, 4, 0, 0, 0};
    EXPECT_TRUE(sameCodes(decoder.decode(planes, 2, 3, "the block").column(), column));
}

TEST(Codec, ChoosesByTheContents) {
    std::mt19937_64 random(13);
    const auto codecOf = [](const Column& column, const Options& options = {}) {
        return static_cast<Codec>(encoded(column, options)[0]);
    };
    Column uniform(4, 10000);
    for (std::size_t i = 0; i < uniform.size(); ++i)
        uniform.set(i, 5000000 + random() % 1024);
    EXPECT_EQ(codecOf(uniform), Codec::BitPacked);
    EXPECT_LT(encoded(uniform).size(), 10000 * 10 / 8 + 300u);
    EXPECT_EQ(codecOf(makeColumn(4, 10000, Walk, random)), Codec::DeltaShuffled);
    EXPECT_LT(encoded(makeColumn(8, 10000, Ramp, random)).size(), 200u);
    EXPECT_EQ(codecOf(makeColumn(4, 10000, Noise, random)), Codec::Raw);
    EXPECT_EQ(codecOf(uniform, {100, 1}), Codec::Delta);
    EXPECT_EQ(codecOf(uniform, {100, 2}), Codec::Shuffled);
    EXPECT_EQ(codecOf(uniform, {100, 3}), Codec::DeltaShuffled);
    EXPECT_EQ(codecOf(uniform, {0, 3}), Codec::BitPacked);

    // What is as small either way stays as it is; few codes are compressed only where that is
    // asked for; single bytes have no planes.
    Column few(2, 1);
    few.set(0, 5);
    EXPECT_EQ(codecOf(few), Codec::Raw);
    EXPECT_EQ(encoded(few).size(), 3u);
    EXPECT_EQ(codecOf(Column(2, 20), {100, 3}), Codec::DeltaShuffled);
    EXPECT_EQ(codecOf(Column(8, 5)), Codec::BitPacked);
    const Column bytes = makeColumn(1, 3000, Rare, random);
    EXPECT_EQ(codecOf(bytes, {100, 1}), Codec::Delta);
    EXPECT_EQ(codecOf(bytes, {100, 2}), Codec::Zstd);
    EXPECT_EQ(codecOf(bytes, {100, 3}), Codec::Delta);

    // Packed codes may be a tenth larger, no more.
    const auto skewed = [&](unsigned zeros) {
        Column column(2, 10000);
        for (std::size_t i = 0; i < column.size(); ++i)
            column.set(i, random() % 256 + (random() % 100 < zeros ? 0 : random() % 4 * 256));
        return column;
    };
    const Column little = skewed(60);
    EXPECT_EQ(codecOf(little), Codec::BitPacked);
    EXPECT_LT(encoded(little, {100, 2}).size(), encoded(little).size());
    EXPECT_EQ(codecOf(skewed(95)), Codec::Shuffled);
}

TEST(Codec, TellsWhatIsWrongWithABlock) {
    Decoder decoder;
    const auto refusal = [&](const Bytes& block, unsigned width, std::size_t count) {
        try {
            (void)decoder.decode(block, width, count, "the block");
        } catch (const Failure& failure) {
            EXPECT_EQ(failure.code(), ErrorCode::Damaged);
            EXPECT_STREQ(failure.what(), "The file is damaged: the block is not readable.");
            return failure.details();
        }
        return std::string();
    };
    const Bytes frame{4, 0x28, 0xb5, 0x2f, 0xfd, 0x20, 6, 0x31, 0, 0, 2, 0, 1, 0, 4, 0};
    EXPECT_EQ(refusal(frame, 2, 3), "");
    Bytes longer = frame;
    longer.push_back(0);
    Bytes reserved = frame;
    reserved[7] = 0x37;
    const struct {
        Bytes block;
        unsigned width;
        std::size_t count;
        const char* found;
    } cases[] = {
        {{}, 1, 1, "its end too early"},
        {{77}, 1, 1, "the codec 77, which is not known"},
        {{6}, 1, 1, "the codec 6, which is not known"},
        {{0, 1, 2, 3}, 3, 1, "a column of 1 values of 3 bytes"},
        {{0}, 0, 1, "a column of 1 values of 0 bytes"},
        {{0, 1, 2, 3}, 2, 2, "3 bytes where there should be 4"},
        {{0, 1, 2, 3, 4, 5}, 2, 2, "5 bytes where there should be 4"},
        {{1, 0, 0, 0}, 1, 257, "fewer runs than 257 values take"},
        {{1, 9, 0, 0}, 1, 1, "a run of 9 bits in codes of 1 bytes"},
        {{1, 0, 0x80, 0x04}, 1, 1, "a base that codes of 1 bytes can't hold"},
        {{1, 1, 0}, 1, 1, "0 packed bytes where there should be 1"},
        {{1, 1, 0, 1, 0}, 1, 1, "2 packed bytes where there should be 1"},
        {frame, 2, 4, "a compressed block that does not hold 8 bytes"},
        {frame, 2, 2, "a compressed block that does not hold 4 bytes"},
        {longer, 2, 3, "a compressed block that does not end with its frame"},
    };
    for (const auto& one : cases)
        EXPECT_EQ(refusal(one.block, one.width, one.count),
                  "Found " + std::string(one.found) + ".");
    EXPECT_EQ(refusal(reserved, 2, 3).find("Found "), 0u);
}

TEST(Codec, ComesInThreeLevelsWhereACodeIsMoreThanAByte) {
    std::mt19937_64 random(15);
    const auto blocksOf = [&](const Column& column) {
        std::vector<Bytes> blocks;
        for (const int level : {1, 33, 34, 66, 67, 100})
            blocks.push_back(encoded(column, {std::uint8_t(level), 2}));
        return blocks;
    };
    const std::vector<Bytes> wide = blocksOf(makeColumn(2, 20000, Rare, random));
    for (const std::size_t first : {0, 2, 4})
        EXPECT_TRUE(wide[first] == wide[first + 1]) << first;
    EXPECT_EQ(std::set<Bytes>(wide.begin(), wide.end()).size(), 3u);
    const std::vector<Bytes> narrow = blocksOf(makeColumn(1, 20000, Rare, random));
    EXPECT_EQ(std::set<Bytes>(narrow.begin(), narrow.end()).size(), 1u);
}

TEST(Codec, DamageGivesAnErrorAndNeverACrash) {
    std::mt19937_64 random(14);
    Decoder decoder;
    const Options options[] = {{0, 0}, {100, 0}, {100, 1}, {100, 2}, {100, 3}};
    std::size_t refused = 0;
    for (const unsigned width : {1u, 2u, 4u, 8u})
        for (int shape = 0; shape < shapes; ++shape)
            for (const Options& option : options) {
                const std::size_t count = 600;
                const Column column = makeColumn(width, count, shape, random);
                const Bytes block = encoded(column, option);
                const bool checked = block[0] > std::uint8_t(Codec::BitPacked);
                for (std::size_t size = 0; size < block.size(); size += 1 + size / 16)
                    ASSERT_FALSE(decodeDamaged(decoder, ByteSpan(block).first(size), width, count));
                Bytes longer = block;
                longer.push_back(0);
                ASSERT_FALSE(decodeDamaged(decoder, longer, width, count));
                // A frame that decoders pass over.
                longer.pop_back();
                longer.insert(longer.end(), {0x50, 0x2a, 0x4d, 0x18, 0, 0, 0, 0});
                ASSERT_FALSE(decodeDamaged(decoder, longer, width, count));
                ASSERT_FALSE(decodeDamaged(decoder, block, width, count + 256));
                ASSERT_FALSE(decodeDamaged(decoder, block, width, std::size_t(1) << 40));
                ASSERT_FALSE(decodeDamaged(decoder, block, width, SIZE_MAX));
                for (int flip = 0; flip < 300; ++flip) {
                    Bytes damaged = block;
                    const std::size_t at =
                        flip < 64 ? flip % block.size() : random() % block.size();
                    damaged[at] ^= static_cast<std::uint8_t>(1u << random() % 8);
                    const auto result = decodeDamaged(decoder, damaged, width, count);
                    refused += !result;
                    // A frame's checksum finds what its decoder does not; the codec's number and
                    // unused header bits are the reference's to guard.
                    if (result && checked && at >= 6) {
                        ASSERT_TRUE(sameCodes(*result, column)) << "byte " << at;
                    }
                }
            }
    EXPECT_GT(refused, 1000u);
}

// The most memory that the process ever had.
std::size_t residentBytes() {
    rusage usage{};
    ::getrusage(RUSAGE_SELF, &usage);
    return static_cast<std::size_t>(usage.ru_maxrss) * 1024;
}

TEST(Codec, TakesNoMemoryForWhatAHeaderClaims) {
    Decoder decoder;
    // A frame that claims 2^40 bytes.
    Bytes frame{4, 0x28, 0xb5, 0x2f, 0xfd, 0xe0, 0, 0, 0, 0, 0, 1, 0, 0, 0x01, 0, 0};
    EXPECT_FALSE(decodeDamaged(decoder, frame, 8, std::size_t(1) << 37));
    // And one that claims four gigabytes, which could be had.
    Bytes large{4, 0x28, 0xb5, 0x2f, 0xfd, 0xe0, 0, 0, 0, 0, 1, 0, 0, 0, 0x01, 0, 0};
    const std::size_t before = residentBytes();
    EXPECT_FALSE(decodeDamaged(decoder, large, 8, std::size_t(1) << 29));
    EXPECT_LT(residentBytes(), before + (std::size_t(64) << 20));
    EXPECT_FALSE(decodeDamaged(decoder, Bytes{1, 0, 0, 0, 0}, 8, std::size_t(1) << 37));
    EXPECT_FALSE(decodeDamaged(decoder, Bytes{}, 8, 0));
    EXPECT_FALSE(decodeDamaged(decoder, Bytes{77, 0}, 1, 1));
    EXPECT_FALSE(decodeDamaged(decoder, Bytes{1, 9, 0, 0xff, 0xff}, 1, 1));
    EXPECT_FALSE(decodeDamaged(decoder, Bytes{1, 0, 0x80, 0x04}, 1, 1));
}
