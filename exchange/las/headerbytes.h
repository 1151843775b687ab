// The header and the variable length records of a LAS file of version 1.4 that is written.
#pragma once

#include "exchange/las/header.h"

#include <array>
#include <cstdint>
#include <vector>

namespace tarvo::exchange::las {

inline constexpr std::size_t writtenHeaderSize = 375;
// Longer records stand behind the points, as extended ones.
inline constexpr std::size_t largestPlainRecord = 65535;

// What the writer of a file decides.
struct FileDescription {
    int pointFormat = 0;             // 0 to 10
    std::uint16_t recordLength = 0;  // at least what the format takes; the rest are extra bytes
    std::array<double, 3> scale{1, 1, 1};
    std::array<double, 3> offset{};
    // userId (16 bytes at most), recordId, description (32) and data are written. None of them
    // tells of a compression.
    std::vector<Record> records;
    std::uint16_t globalEncoding = 0;
    std::string systemIdentifier;  // 32 bytes at most, as the next one
    std::string generatingSoftware;
    std::uint16_t creationDay = 0;  // of the year, from 1
    std::uint16_t creationYear = 0;
    std::uint16_t fileSourceId = 0;
    std::array<std::uint8_t, 16> guid{};
    bool compress = false;  // LAZ
};

// What is known when all points are there.
struct PointTotals {
    // Counts records of a file.
    void add(const FileDescription& file, const std::uint8_t* records, std::size_t count);

    std::uint64_t points = 0;
    std::array<std::uint64_t, 15> byReturn{};  // of the returns 1 to 15
    std::array<std::int32_t, 3> least{};       // stored coordinates
    std::array<std::int32_t, 3> greatest{};
};

// Where things lie in the file.
struct FilePlaces {
    std::uint32_t plainRecords = 0;
    std::uint32_t points = 0;
    std::uint32_t extendedRecords = 0;
    std::uint64_t firstExtended = 0;
};

std::vector<std::uint8_t> headerBytes(const FileDescription& file, const PointTotals& totals,
                                      const FilePlaces& places);
// A record with its header.
std::vector<std::uint8_t> recordBytes(const Record& record, bool extended);

}  // namespace tarvo::exchange::las
