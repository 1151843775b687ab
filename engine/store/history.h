// What the container's small tables hold: the identity, which transactions are kept and which one
// is current. All of it is checked against checksums; the functions throw Failure(Damaged) where
// it does not agree. Call them within a container transaction, or for a single answer.
#pragma once

#include "engine/store/connection.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tarvo::engine::store {

// The versions of the format that are read. New files and commits to the oldest have the written
// one; a file gets the one with sparse blobs with the first of them. docs/file-format.md tells them
// apart.
inline constexpr std::int64_t oldestFormat = 1;
inline constexpr std::int64_t writtenFormat = 2;
inline constexpr std::int64_t sparseFormat = 3;
inline constexpr std::int64_t newestFormat = sparseFormat;

// No file can have so many blobs: the next numbers can be counted without care.
inline constexpr std::int64_t mostBlobs = std::int64_t(1) << 60;
// With more there is no room for those of another transaction.
inline constexpr std::int64_t mostBlobsBefore = mostBlobs / 2;

// Decides which blobs and transactions are kept, and so stands in one row with one checksum.
struct History {
    std::uint32_t current = 1;
    std::uint32_t last = 1;           // the largest number that a transaction ever got
    std::int64_t lastBlob = 0;        // the largest one that a transaction may refer to
    std::vector<std::uint32_t> kept;  // ascending
    bool operator==(const History&) const = default;

    bool keeps(std::uint32_t id) const;
};

// An item of the table "info".
void putInfo(Connection& connection, const std::string& name, std::string_view value);
std::string getInfo(Connection& connection, const std::string& name);
bool hasInfo(Connection& connection, const std::string& name);
void removeInfo(Connection& connection, const std::string& name);

bool isFirstFormat(Connection& connection);
// Compares with the transactions that are there: one that vanished is damage.
History readHistory(Connection& connection);
// In the version that the file has.
void writeHistory(Connection& connection, const History& history);
// Makes a file of the first version one of the written version; its history must be written next.
void raiseFormat(Connection& connection);

void putSnapshot(Connection& connection, std::uint32_t id, std::int64_t lastBlob,
                 std::string_view root);
// The root of a transaction; Failure(NotFound) where it is not kept.
std::string readRoot(Connection& connection, std::uint32_t id);
std::int64_t readLastBlob(Connection& connection, std::uint32_t id);
void removeSnapshot(Connection& connection, std::uint32_t id);

[[noreturn]] void throwDamaged(const std::string& fileName, const std::string& what);

}  // namespace tarvo::engine::store
