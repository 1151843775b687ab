// How fast compressed points are decoded and encoded, in memory.
//   bench_laz FILE.laz [POINTS]
// Repeats the points of the file until there are about so many (2,000,000), in chunks of 50,000.
// Prints the millions of points a second: of one core, and of all cores with the reading and
// writing of files.
//   bench_laz FILE TARGET.las|TARGET.laz POINTS
// Writes the points of a LAS or LAZ file, repeated until there are so many, to a file of either
// kind.
#include "benchmarks/measurement.h"
#include "exchange/las/compressedpoints.h"
#include "exchange/las/recordwriter.h"
#include "exchange/laz/chunkdecoder.h"
#include "exchange/laz/chunkencoder.h"
#include "exchange/rawfile.h"
#include "exchange/table/pointsource.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using namespace tarvo::exchange;

struct Cloud {
    las::Header header;
    std::vector<las::Record> records;
    std::vector<std::uint8_t> points;
};

Cloud read(const std::string& fileName) {
    Cloud cloud;
    RawFile file(fileName, "LAZ");
    cloud.header = las::readHeader(file);
    cloud.records = las::readRecords(file, cloud.header);
    cloud.points.resize(cloud.header.pointCount * cloud.header.recordLength);
    if (cloud.header.isCompressed) {
        las::CompressedPoints points(file, cloud.header, cloud.records);
        const std::uint8_t* const all =
            points.next(static_cast<std::uint32_t>(cloud.header.pointCount));
        std::copy(all, all + cloud.points.size(), cloud.points.begin());
        std::erase_if(cloud.records, las::isOfCompression);
    } else {
        file.read(cloud.header.pointOffset, cloud.points.data(), cloud.points.size(), "points");
    }
    return cloud;
}

void write(const Cloud& cloud, std::uint64_t count, const std::string& fileName) {
    las::FileDescription description;
    description.pointFormat = cloud.header.pointFormat;
    description.recordLength = cloud.header.recordLength;
    description.scale = cloud.header.scale;
    description.offset = cloud.header.offset;
    description.records = cloud.records;
    description.globalEncoding = cloud.header.globalEncoding;
    description.compress = std::filesystem::path(fileName).extension() == ".laz";
    const std::unique_ptr<std::FILE, CloseFile> file(std::fopen(fileName.c_str(), "wb"));
    if (!file)
        throw std::runtime_error("can't write " + fileName);
    las::RecordWriter writer(file.get(), description);
    for (std::uint64_t left = count; left != 0;) {
        const std::uint64_t some = std::min(left, cloud.header.pointCount);
        writer.add(cloud.points.data(), some);
        left -= some;
    }
    writer.finish();
}

void measure(const char* name, std::uint64_t points, const std::function<void()>& work) {
    const bench::Measurement best = bench::repeated([&] {
        work();
        return points;
    });
    const double millions = static_cast<double>(points) / 1e6;
    std::printf("%-20s %8.2f %8.2f\n", name, millions / best.wall, millions / best.cpu);
}

void measureAll(const std::string& fileName, std::uint64_t wanted) {
    const Cloud cloud = read(fileName);
    const std::size_t length = cloud.header.recordLength;
    const laz::Layout layout(cloud.header.pointFormat, cloud.header.recordLength);
    laz::ChunkEncoder encoder(layout);
    laz::ChunkDecoder decoder(layout);
    const std::uint64_t rounds = std::max<std::uint64_t>(1, wanted / cloud.header.pointCount);
    const std::uint64_t total = rounds * cloud.header.pointCount;
    std::vector<std::vector<std::uint8_t>> chunks;
    std::vector<std::uint8_t> decoded(laz::usualChunkSize * length);
    const auto eachChunk = [&](const std::function<void(std::size_t, std::uint32_t)>& work) {
        for (std::uint64_t round = 0; round < rounds; ++round)
            for (std::uint64_t first = 0; first < cloud.header.pointCount;
                 first += laz::usualChunkSize)
                work(first, static_cast<std::uint32_t>(std::min<std::uint64_t>(
                                laz::usualChunkSize, cloud.header.pointCount - first)));
    };
    std::printf("%-20s %8s %8s\n", "M points/s", "wall", "CPU");
    measure("encode, one core", total, [&] {
        chunks.clear();
        eachChunk([&](std::size_t first, std::uint32_t count) {
            chunks.push_back(encoder.encode(cloud.points.data() + first * length, count));
        });
    });
    measure("decode, one core", total, [&] {
        std::size_t i = 0;
        eachChunk([&](std::size_t, std::uint32_t count) {
            decoder.decode(chunks[i++], count, decoded.data());
        });
    });
    const std::string file = (std::filesystem::temp_directory_path() / "bench_laz.laz").string();
    measure("encode, all cores", total, [&] { write(cloud, total, file); });
    RawFile reader(file, "LAZ");
    const las::Header header = las::readHeader(reader);
    las::CompressedPoints points(reader, header, las::readRecords(reader, header), 0);
    measure("decode, all cores", total, [&] {
        points.rewind();
        for (std::uint64_t left = total; left != 0;) {
            const auto count = static_cast<std::uint32_t>(std::min<std::uint64_t>(left, batchSize));
            points.next(count);
            left -= count;
        }
    });
    std::printf("%-20s %8.2f of %zu\n", "bytes a point",
                static_cast<double>(std::filesystem::file_size(file)) / static_cast<double>(total),
                length);
    std::filesystem::remove(file);
}

}  // namespace

int main(int count, char** arguments) {
    try {
        if (count == 4) {
            write(read(arguments[1]), std::strtoull(arguments[3], nullptr, 10), arguments[2]);
        } else if (count == 2 || count == 3) {
            measureAll(arguments[1],
                       count == 3 ? std::strtoull(arguments[2], nullptr, 10) : 2000000);
        } else {
            std::fprintf(stderr, "bench_laz FILE.laz [POINTS] | FILE TARGET POINTS\n");
            return 2;
        }
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
    return 0;
}
