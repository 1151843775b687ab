// Compressed files of all kinds, by the records that they hold.
#include "core/error.h"
#include "exchange/las/compressedpoints.h"
#include "exchange/las/source.h"
#include "exchange/laz/chunkencoder.h"
#include "tests/cli/folder.h"
#include "tests/exchange/lasbuilder.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace {

using namespace tarvo::exchange;
using namespace tarvo::exchange::tests;
using tarvo::core::Failure;

std::uint32_t crc32(std::uint32_t crc, const std::uint8_t* bytes, std::size_t size) {
    crc = ~crc;
    for (std::size_t i = 0; i < size; ++i) {
        crc ^= bytes[i];
        for (int bit = 0; bit < 8; ++bit) {
            crc = crc >> 1 ^ (crc & 1 ? 0xedb88320 : 0);
        }
    }
    return ~crc;
}

// Of all records one behind the other, read so many at a time, while the given share of them may
// stay decoded.
std::uint32_t crcOfRecords(const std::string& fileName, std::uint32_t batch, double kept) {
    RawFile file(fileName, "LAS");
    const las::Header header = las::readHeader(file);
    const auto bytes = static_cast<double>(header.pointCount * header.recordLength);
    las::CompressedPoints points(file, header, las::readRecords(file, header),
                                 static_cast<std::uint64_t>(kept * bytes));
    if (header.pointCount != 0) {  // as whoever begins again
        points.next(static_cast<std::uint32_t>(header.pointCount / 2));
    }
    std::uint32_t crcs[3] = {};
    for (std::uint32_t& crc : crcs) {
        points.rewind();
        for (std::uint64_t left = header.pointCount; left != 0;) {
            const auto count = static_cast<std::uint32_t>(std::min<std::uint64_t>(left, batch));
            crc = crc32(crc, points.next(count), std::size_t{count} * header.recordLength);
            left -= count;
        }
    }
    EXPECT_EQ(crcs[0], crcs[1]);
    EXPECT_EQ(crcs[0], crcs[2]);
    return crcs[0];
}

class LazFiles : public testing::Test {
protected:
    void SetUp() override {
        const char* const data = std::getenv("QRB_TEST_DATA");
        if (!data || !*data) {
            GTEST_SKIP() << "QRB_TEST_DATA names no folder of real clouds";
        }
        folder = std::string(data) + "/laz/";
    }
    std::string folder;
};

TEST_F(LazFiles, OfOtherWritersHoldTheSameRecords) {
    for (const auto& [name, crc] : std::initializer_list<std::pair<const char*, std::uint32_t>>{
             {"simple-pf3", 0xeb3290f6},
             {"autzen-pf3", 0x7c110e93},
             {"lonestar-pf1", 0x2afcc772},
             {"lonestar-pf1-extra4", 0xa7ddebb7},
             {"padding-pf3", 0xeb3290f6},
             {"copc-pf7", 0x0550430e},
             {"pf0", 0x0c07b5d6},
             {"pf2", 0x93c8b4a1},
             {"pf6-evlr", 0xaa8e9c22},
             {"pf8-extra3", 0x144d7aac},
             {"pf10", 0xfd750f21},
             {"synthetic/pf7-channels-v3", 0xdd62b65c},
             {"synthetic/pf7-channels-v4", 0xdd62b65c},
             {"synthetic/pf8-channels-v3", 0xc6d284d0},
             {"synthetic/pf7-channel2-only", 0x60d0c58e},
             {"synthetic/pf6-frozen-layers", 0xfa893f0a},
             {"synthetic/pf1-tail-offset", 0xff9122de},
             {"synthetic/pf3-variable-chunks", 0x7934439a},
             {"synthetic/pf3-compressor1", 0x63e6c300},
             {"synthetic/pf0-wild", 0x6a2207b3},
             {"synthetic/pf5-wave", 0x652cee74},
             {"synthetic/pf9-wave-v3", 0x9f1fca8a},
             {"synthetic/pf1-one-point", 0x4aa21468},
             {"synthetic/pf6-one-point", 0xfccc3f5e},
             {"synthetic/pf7-no-points", 0}}) {
        SCOPED_TRACE(name);
        const std::string file = folder + name + ".laz";
        EXPECT_EQ(crcOfRecords(file, 65536, 0), crc);
        for (const double kept : {0.3, 0.7, 1.0}) {
            EXPECT_EQ(crcOfRecords(file, 777, kept), crc) << kept;
        }
    }
}

// The same chunks come of the same points, whoever writes them; only of times that are equal as
// numbers and not as bits others write one for the other.
TEST_F(LazFiles, AreWrittenByteByByteAsOthersWriteThem) {
    for (const char* const name :
         {"autzen-pf3", "lonestar-pf1-extra4", "copc-pf7", "pf0", "pf2", "pf6-evlr", "pf8-extra3",
          "pf10", "synthetic/pf7-channels-v3", "synthetic/pf7-channels-v4",
          "synthetic/pf6-frozen-layers", "synthetic/pf5-wave"}) {
        SCOPED_TRACE(name);
        RawFile file(folder + name + ".laz", "LAZ");
        const las::Header header = las::readHeader(file);
        const std::vector<las::Record> records = las::readRecords(file, header);
        const auto found = std::find_if(
            records.begin(), records.end(),
            [](const las::Record& record) { return record.userId == "laszip encoded"; });
        ASSERT_NE(found, records.end());
        const auto description =
            laz::Description::read(found->data, header.pointFormat, header.recordLength);
        const las::ChunkList list = las::ChunkList::read(file, header, description);
        las::CompressedPoints points(file, header, records);
        laz::ChunkEncoder encoder(description.layout);
        for (const las::Chunk& chunk : list.chunks) {
            Bytes theirs(chunk.size);
            file.read(chunk.begin, theirs.data(), theirs.size(), "chunk");
            ASSERT_TRUE(encoder.encode(points.next(chunk.points), chunk.points) == theirs)
                << chunk.begin;
        }
    }
}

TEST_F(LazFiles, OfOldWritersAreRefusedByName) {
    try {
        const las::LasSource source(folder + "v1-must-be-refused.laz");
        FAIL() << "it was read";
    } catch (const Failure& failure) {
        EXPECT_NE(std::string(failure.what()).find("before version 2.0"), std::string::npos)
            << failure.what();
    }
}

}  // namespace
