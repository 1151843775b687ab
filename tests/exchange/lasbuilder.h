// Makes LAS files for tests, written from the format's tables and not with the reader's code.
#pragma once

#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

namespace tarvo::exchange::tests {

using Bytes = std::vector<std::uint8_t>;

template <typename T>
void put(Bytes& bytes, std::size_t at, T value) {
    if (bytes.size() < at + sizeof value) {
        bytes.resize(at + sizeof value);
    }
    std::memcpy(bytes.data() + at, &value, sizeof value);
}

inline void putText(Bytes& bytes, std::size_t at, const std::string& text) {
    std::memcpy(bytes.data() + at, text.data(), text.size());
}

struct LasBuilder {
    int versionMinor = 2;
    int pointFormat = 0;
    double scale[3] = {0.01, 0.01, 0.01};
    double offset[3] = {0, 0, 0};
    Bytes records;  // variable length records
    std::uint32_t recordCount = 0;
    Bytes extended;  // extended ones
    std::uint32_t extendedCount = 0;
    std::uint16_t recordLength = 0;
    std::vector<Bytes> points;

    explicit LasBuilder(int minor = 2, int format = 0) : versionMinor(minor), pointFormat(format) {
        static const std::uint16_t lengths[] = {20, 28, 26, 34, 57, 63, 30, 36, 38, 59, 67};
        recordLength = lengths[format];
    }

    Bytes& addPoint(std::int32_t x, std::int32_t y, std::int32_t z) {
        points.emplace_back(recordLength);
        put(points.back(), 0, x);
        put(points.back(), 4, y);
        put(points.back(), 8, z);
        return points.back();
    }

    void addRecord(const std::string& user, std::uint16_t id, const Bytes& data) {
        Bytes header(54);
        putText(header, 2, user);
        put(header, 18, id);
        put(header, 20, static_cast<std::uint16_t>(data.size()));
        records.insert(records.end(), header.begin(), header.end());
        records.insert(records.end(), data.begin(), data.end());
        ++recordCount;
    }

    void addExtendedRecord(const std::string& user, std::uint16_t id, const Bytes& data) {
        Bytes header(60);
        putText(header, 2, user);
        put(header, 18, id);
        put(header, 20, static_cast<std::uint64_t>(data.size()));
        extended.insert(extended.end(), header.begin(), header.end());
        extended.insert(extended.end(), data.begin(), data.end());
        ++extendedCount;
    }

    // The description of one extra dimension; options: 1 no data, 8 scale, 16 offset.
    static Bytes extraBytes(std::uint8_t type, std::uint8_t options, const std::string& name,
                            double scale = 1, double shift = 0, std::int64_t noData = 0) {
        Bytes bytes(192);
        bytes[2] = type;
        bytes[3] = options;
        putText(bytes, 4, name);
        put(bytes, 40, noData);
        for (std::size_t i = 0; i < 3; ++i) {
            put(bytes, 112 + 8 * i, scale);
            put(bytes, 136 + 8 * i, shift);
        }
        return bytes;
    }

    Bytes build() const {
        const std::size_t headerSize = versionMinor == 4 ? 375 : versionMinor == 3 ? 235 : 227;
        Bytes file(headerSize);
        putText(file, 0, "LASF");
        file[24] = 1;
        file[25] = static_cast<std::uint8_t>(versionMinor);
        putText(file, 26, "test");
        put(file, 94, static_cast<std::uint16_t>(headerSize));
        put(file, 96, static_cast<std::uint32_t>(headerSize + records.size()));
        put(file, 100, recordCount);
        file[104] = static_cast<std::uint8_t>(pointFormat);
        put(file, 105, recordLength);
        put(file, 107, static_cast<std::uint32_t>(pointFormat < 6 ? points.size() : 0));
        for (std::size_t i = 0; i < 3; ++i) {
            put(file, 131 + 8 * i, scale[i]);
            put(file, 155 + 8 * i, offset[i]);
        }
        if (versionMinor == 4) {
            const std::size_t end = headerSize + records.size() + points.size() * recordLength;
            put(file, 235, static_cast<std::uint64_t>(extendedCount ? end : 0));
            put(file, 243, extendedCount);
            put(file, 247, static_cast<std::uint64_t>(points.size()));
        }
        file.insert(file.end(), records.begin(), records.end());
        for (const Bytes& point : points) {
            file.insert(file.end(), point.begin(), point.end());
        }
        file.insert(file.end(), extended.begin(), extended.end());
        return file;
    }
};

}  // namespace tarvo::exchange::tests
