// The public header block of a LAS file (versions 1.0 to 1.4) and its variable length records.
// Field names and layouts follow the LAS 1.4 R15 specification of the ASPRS.
#pragma once

#include "exchange/rawfile.h"

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace tarvo::exchange::las {

struct Header {
    std::uint16_t fileSourceId = 0;
    std::uint16_t globalEncoding = 0;
    std::string guid;  // 8-4-4-4-12 hexadecimal digits
    int versionMinor = 0;
    std::string systemIdentifier;
    std::string generatingSoftware;
    std::uint16_t creationDay = 0;  // of the year, from 1
    std::uint16_t creationYear = 0;
    std::uint16_t headerSize = 0;
    std::uint32_t pointOffset = 0;
    std::uint32_t vlrCount = 0;
    int pointFormat = 0;
    bool isCompressed = false;  // LAZ
    std::uint16_t recordLength = 0;
    std::uint64_t pointCount = 0;
    std::array<double, 3> scale{};
    std::array<double, 3> offset{};
    std::array<double, 3> minimum{};  // as the header claims; points may lie outside
    std::array<double, 3> maximum{};
    std::uint64_t waveformOffset = 0;  // 0: the file holds no waveforms
    std::uint64_t evlrOffset = 0;
    std::uint32_t evlrCount = 0;
};

// A variable length record, extended or not.
struct Record {
    std::string userId;
    std::uint16_t recordId = 0;
    std::string description;
    std::uint64_t length = 0;
    std::vector<std::uint8_t> data;  // empty where the data were too long to be kept
};

// Reads and checks the header: afterwards every point lies within the file, but of compressed ones
// nothing is known. Throws Failure.
Header readHeader(RawFile& file);

// Reads both kinds of variable length records. Throws Failure.
std::vector<Record> readRecords(RawFile& file, const Header& header);

// The bytes that a point of a format (0 to 10) takes at least.
std::uint16_t pointSize(int format);

}  // namespace tarvo::exchange::las
