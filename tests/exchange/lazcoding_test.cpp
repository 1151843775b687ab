// The coding of single streams and chunks, by bytes that other writers make of the same values, and
// by what comes back.
#include "exchange/laz/chunkdecoder.h"
#include "exchange/laz/chunkencoder.h"
#include "exchange/laz/chunktable.h"
#include "exchange/laz/encoder.h"
#include "exchange/laz/gpstime.h"
#include "exchange/laz/integermodel.h"
#include "exchange/laz/median.h"
#include "tests/engine/seed.h"
#include "tests/exchange/lasbuilder.h"

#include <gtest/gtest.h>

#include <functional>
#include <random>

namespace {

using namespace tarvo::exchange::laz;
using tarvo::exchange::tests::Bytes;
using tarvo::exchange::tests::put;

std::string hex(std::span<const std::uint8_t> bytes) {
    std::string text;
    for (const std::uint8_t byte : bytes) {
        constexpr char digits[] = "0123456789abcdef";
        text += {digits[byte >> 4], digits[byte & 15]};
    }
    return text;
}

// Has values coded with fresh models, and decoded again.
template <typename Code>
std::string coded(Code&& code) {
    Encoder encoder;
    encoder.begin();
    code(encoder, true);
    const Bytes bytes = encoder.finish();
    Decoder decoder;
    decoder.begin(bytes);
    code(decoder, false);
    EXPECT_TRUE(decoder.isSound());
    EXPECT_EQ(decoder.position(), bytes.size());
    return hex(bytes);
}

TEST(LazCoding, StreamsHaveTheBytesThatAllWriteForThem) {
    EXPECT_EQ(coded([](auto&, bool) {}), "01000000");
    EXPECT_EQ(coded([](auto& coder, bool) {
                  BitModel model;
                  for (unsigned i = 0; i < 40; ++i)
                      EXPECT_EQ(coder.bit(model, i % 5 == 3), i % 5 == 3);
              }),
              "12577bec000000");
    EXPECT_EQ(coded([](auto& coder, bool) {
                  SymbolModel<16> model;
                  model.begin();
                  for (unsigned i = 0; i < 40; ++i)
                      EXPECT_EQ(coder.symbol(model, i * i % 16), i * i % 16);
              }),
              "0148fef8b742d02a7e2506487df0d9e2000000");
    EXPECT_EQ(coded([](auto& coder, bool) {
                  SymbolModel<2> model;
                  model.begin();
                  for (unsigned i = 0; i < 2000; ++i)
                      EXPECT_EQ(coder.symbol(model, 1), 1u);
              }),
              "fffc000000");
    const std::string many = coded([](auto& coder, bool) {
        SymbolModel<256> model;
        model.begin();
        for (unsigned i = 0; i < 300; ++i)
            EXPECT_EQ(coder.symbol(model, i * 7 % 256), i * 7 % 256);
    });
    std::uint32_t hash = 0;
    for (std::size_t i = 0; i < many.size(); i += 2)
        hash = hash * 31 + static_cast<std::uint32_t>(std::stoul(many.substr(i, 2), nullptr, 16));
    EXPECT_EQ(many.size(), 2 * 311u);
    EXPECT_EQ(hash, 0x79c892e5u);
    EXPECT_EQ(
        coded([](auto& coder, bool) {
            for (const auto& [count, value] :
                 {std::pair{1u, 1u}, {8, 0xa5}, {19, 0x7ffff}, {20, 0xfffff}, {32, 0xdeadbeef}})
                EXPECT_EQ(coder.bits(count, value), value);
            EXPECT_EQ(coder.bits64(0x0123456789abcdef), 0x0123456789abcdefu);
        }),
        "d2fff759ffffbef3efafe312aab2aab2aab2ee000000");
}

TEST(LazCoding, NumbersHaveTheBytesThatAllWriteForThem) {
    const auto numbers = [](auto& coder, auto& model, unsigned contexts,
                            std::initializer_list<std::int32_t> values) {
        std::int32_t last = 0;
        unsigned i = 0;
        for (const std::int32_t value : values) {
            EXPECT_EQ(model.code(coder, last, value, i++ % contexts), value);
            last = value;
        }
    };
    EXPECT_EQ(coded([&](auto& coder, bool) {
                  IntegerModel<32, 2> model;
                  numbers(coder, model, 2,
                          {0, 1, -1, 2, 5, -7, 100, -300, 70000, -8000000, 2147483647,
                           -2147483647 - 1, 0});
              }),
              "00100a20fa4281eff6e5d2184bbd03229c646c3f03000000");
    EXPECT_EQ(coded([&](auto& coder, bool) {
                  IntegerModel<16, 4> model;
                  numbers(coder, model, 4, {0, 65535, 1, 40000, 300, 299, 300});
              }),
              "0077c8a9353bc167aa0000");
    EXPECT_EQ(coded([](auto& coder, bool encodes) {
                  GpsTime<true> model;
                  model.begin(0);
                  const std::int64_t large = std::int64_t{1} << 40;
                  for (const std::int64_t time :
                       {std::int64_t{0}, std::int64_t{10}, std::int64_t{20}, std::int64_t{30},
                        std::int64_t{30}, std::int64_t{45}, large, large + 7, std::int64_t{40},
                        large + 14, std::int64_t{-5}})
                      EXPECT_EQ(model.code(coder, encodes ? static_cast<std::uint64_t>(time) : 0),
                                static_cast<std::uint64_t>(time));
              }),
              "0817b9d91f55b3e9d5b423f7f9800002449c4c45da883fd31610650000");
    Median median;
    std::vector<std::int32_t> medians;
    for (const std::int32_t value : {5, 5, 1, -3, 9, 9, 2, 2, 2, 100, -100, 4, 4, 4}) {
        median.add(value);
        medians.push_back(median.get());
    }
    EXPECT_EQ(medians, (std::vector<std::int32_t>{0, 0, 1, 1, 1, 5, 5, 2, 2, 2, 2, 2, 4, 4}));
}

// Points of the formats 3 and 7 (with an extra byte) whose chunks are known.
Bytes knownRecords(int format) {
    Bytes records;
    for (int i = 0; i < (format == 3 ? 6 : 8); ++i) {
        Bytes p;
        put(p, 0, 100 + 13 * i);
        put(p, 4, -200 + 7 * i);
        put(p, 8, 50 - i * i);
        put(p, 12, static_cast<std::uint16_t>(300 + i % 3));
        const int number = 1 + i % 2;
        const double time = 1000 + i / 2 * 0.5;
        const std::size_t colour = format == 3 ? 28 : 30;
        if (format == 3) {
            put(p, 14, static_cast<std::uint8_t>(number | 2 << 3));
            put(p, 15, static_cast<std::uint8_t>(2 + i / 4));
            put(p, 16, static_cast<std::int8_t>(-5 + i / 3));
            put(p, 17, std::uint8_t{7});
            put(p, 18, std::uint16_t{42});
            put(p, 20, time);
        } else {
            put(p, 14, static_cast<std::uint8_t>(number | 2 << 4));
            put(p, 15, static_cast<std::uint8_t>(i / 2 % 2 << 4));
            put(p, 16, static_cast<std::uint8_t>(2 + i / 4));
            put(p, 17, std::uint8_t{7});
            put(p, 18, static_cast<std::int16_t>(-500 + i / 3));
            put(p, 20, std::uint16_t{42});
            put(p, 22, time);
        }
        put(p, colour, static_cast<std::uint16_t>(format == 3 ? 1000 * i : 100 * i));
        put(p, colour + 2, static_cast<std::uint16_t>(format == 3 ? 1000 * i : 200 * i));
        put(p, colour + 4,
            static_cast<std::uint16_t>(format == 3 ? 1000 * i + (i == 3 ? 1 : 0) : 300));
        if (format == 7) {
            p.push_back(static_cast<std::uint8_t>(i % 4));
        }
        records.insert(records.end(), p.begin(), p.end());
    }
    return records;
}

std::string tableOf(const Bytes& chunk) {
    const ChunkSize size{0, static_cast<std::uint32_t>(chunk.size())};
    return hex(writeChunkTable({&size, 1}, false));
}

TEST(LazCoding, ChunksHaveTheBytesThatAllWriteForThem) {
    const Bytes pointwise = ChunkEncoder(Layout(3, 34)).encode(knownRecords(3).data(), 6);
    EXPECT_EQ(
        hex(pointwise),
        "6400000038ffffff320000002c011102fb072a000000000000408f40000000000000"
        "c049d82163f3dbbd520a5cdf62efe3b6d1406b7a2d00002a45a31f1da1e6cf57d96400ef0c01830153072797"
        "d60ba122bd18a00001b6db50a070fa1df0ab3fc3b0000000");
    EXPECT_EQ(tableOf(pointwise), "00000000010000003c6b000000");

    const std::string head =
        "6400000038ffffff320000002c01210002070cfe2a000000000000408f40000000002c010008000000"
        "1a0000000c0000000b00000000000000080000000500000000000000000000001600000021000000"
        "0b000000";
    const std::string point =
        "0249b8439ed4efceb12350a21b5bca0bd9724d064b1687000000"
        "07fd1ef7fe866849d8000000"
        "020201020201817f000000"
        "07c2fb2589000000"
        "07c1c30000"
        "44425c2b40001eb6c89b800005f87ed0b00001000000";
    Layout layout(7, 37);
    const Bytes layered = ChunkEncoder(layout).encode(knownRecords(7).data(), 8);
    EXPECT_EQ(hex(layered), head + point +
                                "8ac8520344df75798142bd54f18362bb78a26170b40a18e9e7be0ec7cf00000000"
                                "0101017e80017f80000000");
    EXPECT_EQ(tableOf(layered), "0000000001000000447b000000");
    // The other way to tell scanner channels apart.
    layout.itemVersion = 4;
    const Bytes later = ChunkEncoder(layout).encode(knownRecords(7).data(), 8);
    EXPECT_EQ(hex(later).substr(82 + 88 + point.size()),
              "8ac8520344df75798142bd54f18362bb78a26170a60d8aeda6988ff160000000"
              "0101017e80ff8001000000");
    EXPECT_EQ(tableOf(later), "00000000010000004473000000");
}

// Chunk after chunk with the same models, of points that change their fields in all ways: a little,
// wildly, or not at all for a while.
TEST(LazCoding, AllPointsComeBackBitByBit) {
    std::mt19937_64 random(tarvo::engine::testing::seedOfRun());
    const auto below = [&](std::uint64_t n) { return random() % n; };
    for (int format = 0; format <= 10; ++format) {
        static constexpr unsigned lengths[] = {20, 28, 26, 34, 57, 63, 30, 36, 38, 59, 67};
        for (const unsigned extra : {0u, 5u}) {
            Layout layout(format, lengths[format] + extra);
            layout.itemVersion = format < 6 ? 2 : 3 + static_cast<unsigned>(below(2));
            ChunkEncoder encoder(layout);
            ChunkDecoder decoder(layout);
            for (const std::uint32_t count : {1u, 2u, 3000u, 17u, 1u}) {
                SCOPED_TRACE("format " + std::to_string(format) + ", " + std::to_string(extra) +
                             " extra bytes, " + std::to_string(count) + " points");
                Bytes records;
                Bytes point(layout.recordLength);
                unsigned changing = 0;  // bytes of a point
                for (std::uint32_t i = 0; i < count; ++i) {
                    if (i % 100 == 0) {
                        changing = static_cast<unsigned>(below(layout.recordLength + 1));
                    }
                    for (unsigned change = 0; change < changing; ++change) {
                        std::uint8_t& byte = point[below(point.size())];
                        byte = static_cast<std::uint8_t>(below(2) ? byte + below(3) : random());
                    }
                    records.insert(records.end(), point.begin(), point.end());
                }
                const Bytes chunk = encoder.encode(records.data(), count);
                Bytes again(records.size());
                decoder.decode(chunk, count, again.data());
                ASSERT_TRUE(again == records);
            }
        }
    }
}

// Of variable chunks; as many as a large file has, with sizes up to the largest.
TEST(LazCoding, ChunkTablesComeBack) {
    std::mt19937_64 random(tarvo::engine::testing::seedOfRun());
    for (const std::size_t count : {0, 1, 5000}) {
        std::vector<ChunkSize> chunks(count);
        for (ChunkSize& chunk : chunks) {
            chunk = {static_cast<std::uint32_t>(random()), static_cast<std::uint32_t>(random())};
        }
        for (const bool isVariable : {false, true}) {
            const Bytes table = writeChunkTable(chunks, isVariable);
            EXPECT_LE(table.size(), largestChunkTable(count));
            const auto again = readChunkTable(std::span(table).subspan(chunkTableHead),
                                              static_cast<std::uint32_t>(count), isVariable);
            ASSERT_EQ(again.size(), count);
            for (std::size_t i = 0; i < count; ++i) {
                ASSERT_EQ(again[i].bytes, chunks[i].bytes);
                ASSERT_EQ(again[i].points, isVariable ? chunks[i].points : 0);
            }
        }
    }
}

}  // namespace
