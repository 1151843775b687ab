// What is written as LAS or LAZ, read again.
#include "exchange/las/recordwriter.h"
#include "core/error.h"
#include "exchange/bytes.h"
#include "exchange/las/compressedpoints.h"
#include "exchange/las/source.h"
#include "tests/cli/folder.h"
#include "tests/engine/seed.h"
#include "tests/exchange/lasbuilder.h"

#include <gtest/gtest.h>

#include <sys/wait.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>

namespace {

using namespace tarvo::exchange;
using namespace tarvo::exchange::las;
using tarvo::core::Failure;
using tarvo::exchange::tests::Bytes;

Bytes bytesOf(const std::string& name) {
    std::ifstream stream(name, std::ios::binary);
    return Bytes(std::istreambuf_iterator<char>(stream), {});
}

class RecordWriting : public testing::Test {
protected:
    // Writes records in pieces that fit no chunk.
    std::string write(const FileDescription& description, const Bytes& records) {
        const std::string name = folder.file(description.compress ? "a.laz" : "a.las");
        const std::unique_ptr<std::FILE, CloseFile> file(std::fopen(name.c_str(), "wb"));
        RecordWriter writer(file.get(), description);
        const std::size_t count = records.size() / description.recordLength;
        for (std::size_t begin = 0; begin < count;) {
            const std::size_t piece = std::min<std::size_t>(70001, count - begin);
            writer.add(records.data() + begin * description.recordLength, piece);
            begin += piece;
        }
        writer.finish();
        return name;
    }

    // All records of a file; the header and what else it has.
    Bytes read(const std::string& name, Header& header, std::vector<Record>& records) {
        RawFile file(name, "LAS");
        header = readHeader(file);
        records = readRecords(file, header);
        Bytes bytes(header.pointCount * header.recordLength);
        if (!header.isCompressed) {
            file.read(header.pointOffset, bytes.data(), bytes.size(), "points");
            return bytes;
        }
        CompressedPoints points(file, header, records);
        const auto count = static_cast<std::uint32_t>(header.pointCount);
        const std::uint8_t* const all = points.next(count);
        bytes.assign(all, all + bytes.size());
        return bytes;
    }

    tarvo::cli::tests::Folder folder;
};

TEST_F(RecordWriting, KeepsEveryByteOfAllFormats) {
    std::mt19937_64 random(tarvo::engine::testing::seedOfRun());
    for (int format = 0; format <= 10; ++format) {
        for (const std::size_t count : {0, 1, 3000, 49999, 50000, 50001, 100000, 250001}) {
            if (count > 3000 && format != 3 && format != 7) {
                continue;  // chunks are the same for all
            }
            FileDescription description;
            description.pointFormat = format;
            description.recordLength = static_cast<std::uint16_t>(pointSize(format) + random() % 3);
            Bytes records(count * description.recordLength);
            // Some bytes of points that look like the one before.
            for (std::size_t i = 0; i < records.size(); ++i) {
                const bool isNew = i < description.recordLength || random() % 32 == 0;
                records[i] = isNew ? static_cast<std::uint8_t>(random())
                                   : records[i - description.recordLength];
            }
            for (const bool compress : {false, true}) {
                SCOPED_TRACE("format " + std::to_string(format) + ", " + std::to_string(count) +
                             " points");
                description.compress = compress;
                const std::string name = write(description, records);
                Header header;
                std::vector<Record> others;
                ASSERT_TRUE(read(name, header, others) == records);
                EXPECT_EQ(header.isCompressed, compress);
                EXPECT_EQ(header.pointFormat, format);
                EXPECT_NO_THROW(LasSource{name});
            }
        }
    }
}

TEST_F(RecordWriting, TellsWhatThePointsAre) {
    FileDescription description;
    description.scale = {0.01, -0.5, 0.001};
    description.offset = {1000, 0, -7};
    description.systemIdentifier = "a system";
    description.generatingSoftware = std::string(40, 's');
    description.creationDay = 366;
    description.creationYear = 2024;
    description.fileSourceId = 17;
    description.globalEncoding = 0x11;
    description.guid = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16};
    Record small;
    small.userId = "LASF_Projection";
    small.recordId = 2112;
    small.description = "a system's text";
    small.data = {'a', 'b', 'c', 0};
    Record large;
    large.userId = "someone";
    large.recordId = 5;
    large.data = Bytes(65536, 3);
    description.records = {large, small};
    for (const int format : {1, 6}) {
        description.pointFormat = format;
        description.recordLength = pointSize(format);
        Bytes records;
        for (int i = 0; i < 10; ++i) {
            Bytes point(description.recordLength);
            tarvo::exchange::tests::put(point, 0, 100 * i);
            tarvo::exchange::tests::put(point, 4, -i);
            tarvo::exchange::tests::put(point, 8, i * i - 20);
            point[14] = static_cast<std::uint8_t>(i % 4);
            records.insert(records.end(), point.begin(), point.end());
        }
        for (const bool compress : {false, true}) {
            description.compress = compress;
            const std::string name = write(description, records);
            Header header;
            std::vector<Record> read;
            this->read(name, header, read);
            EXPECT_EQ(header.versionMinor, 4);
            EXPECT_EQ(header.systemIdentifier, "a system");
            EXPECT_EQ(header.generatingSoftware, std::string(32, 's'));
            EXPECT_EQ(header.creationDay, 366);
            EXPECT_EQ(header.creationYear, 2024);
            EXPECT_EQ(header.fileSourceId, 17);
            EXPECT_EQ(header.globalEncoding, 0x11);
            EXPECT_EQ(header.guid, "04030201-0605-0807-090a-0b0c0d0e0f10");
            EXPECT_EQ(header.minimum, (std::array<double, 3>{1000, 0, -7.02}));
            EXPECT_EQ(header.maximum, (std::array<double, 3>{1009, 4.5, -7 + 61 * 0.001}));
            std::erase_if(read, isOfCompression);
            ASSERT_EQ(read.size(), 2u);
            EXPECT_EQ(read[0].data, small.data);
            EXPECT_EQ(read[0].description, small.description);
            EXPECT_EQ(read[1].userId, large.userId);
            EXPECT_EQ(read[1].recordId, large.recordId);
            EXPECT_EQ(read[1].data, large.data);
            // The counts by return, of which the wide ones are nowhere read.
            const Bytes bytes = bytesOf(name);
            for (std::size_t i = 0; i < 5; ++i) {
                const std::uint32_t expected = i == 0 ? 3 : i < 3 ? 2 : 0;
                EXPECT_EQ(get<std::uint64_t>(bytes.data() + 255 + 8 * i), expected) << i;
                EXPECT_EQ(get<std::uint32_t>(bytes.data() + 111 + 4 * i),
                          format < 6 ? expected : 0);
            }
            EXPECT_EQ(get<std::uint32_t>(bytes.data() + 107), format < 6 ? 10u : 0u);
        }
    }
}

// The decoder knows neither wave packets nor the layered items' later version.
TEST_F(RecordWriting, IsReadByADecoderThatIsNotOurs) {
    std::mt19937_64 random(tarvo::engine::testing::seedOfRun());
    std::string command = "node '" QRB_LAZ_INDEPENDENT "'";
    for (const int format : {0, 1, 2, 3, 6, 7, 8}) {
        FileDescription description;
        description.pointFormat = format;
        description.recordLength = static_cast<std::uint16_t>(pointSize(format) + format % 3);
        Bytes point(description.recordLength);
        Bytes records;
        for (int i = 0; i < 50100; ++i) {
            for (int change = 0; change < 3; ++change) {
                point[random() % point.size()] += static_cast<std::uint8_t>(random() % 4);
            }
            records.insert(records.end(), point.begin(), point.end());
        }
        for (const bool compress : {false, true}) {
            description.compress = compress;
            const std::string name = folder.file(std::to_string(format) + (compress ? "z" : "s"));
            std::filesystem::rename(write(description, records), name);
            command += " '" + name + "'";
        }
    }
    const int code = std::system(command.c_str());
    if (WIFEXITED(code) && (WEXITSTATUS(code) == 77 || WEXITSTATUS(code) == 127)) {
        GTEST_SKIP() << "node or its package laz-perf is not installed";
    }
    EXPECT_EQ(code, 0) << command;
}

TEST_F(RecordWriting, OnAFullDiskIsAnErrorThatSaysSo) {
    for (const bool compress : {false, true}) {
        const std::unique_ptr<std::FILE, CloseFile> file(std::fopen("/dev/full", "wb"));
        if (!file) {
            GTEST_SKIP() << "there is no /dev/full";
        }
        FileDescription description;
        description.recordLength = 20;
        description.compress = compress;
        try {
            RecordWriter writer(file.get(), description);
            writer.add(Bytes(20).data(), 1);
            writer.finish();
            FAIL() << "it was written";
        } catch (const Failure& failure) {
            EXPECT_NE(std::string(failure.what()).find(std::strerror(ENOSPC)), std::string::npos)
                << failure.what();
        }
    }
}

}  // namespace
