// The parameters of a new file and of an open, as the engine keeps them.
#pragma once

#include "engine/index/shape.h"
#include "engine/schema/attribute.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace tarvo::engine::session {

enum class ChunkMode : std::uint32_t { PointCount = 1, EdgeLength = 2 };
enum class LodMode : std::uint32_t { Thinout = 1, Combine = 2 };

inline constexpr std::uint64_t defaultCacheSize = 512u << 20;

struct CreateSettings {
    CreateSettings();  // the primary attribute is "tarvo.xyz" of the default catalogue
    explicit CreateSettings(schema::AttributeRecord primary)
        : primaryAttribute(std::move(primary)) {}

    schema::AttributeRecord primaryAttribute;
    std::uint32_t chunkMode = 1;
    std::uint32_t chunkSize = 32768;
    std::uint32_t lodMode = 1;
    std::uint32_t chunkSizeLod = 0;
    std::uint64_t cacheSize = defaultCacheSize;
    std::uint8_t compressionLevel = 50;
    bool optimizePointId = false;
    std::string pointInsertMode = "single-pass";
};

struct OpenSettings {
    std::uint64_t cacheSize = defaultCacheSize;
    unsigned threads = 0;  // that work for the session; 0: as many as the machine runs at once
    // The kept transaction whose state is read, whatever becomes current; 0: the current one.
    std::uint32_t transaction = 0;
    // Nothing is changed and no lock taken; of an older transaction in any case.
    bool readOnly = false;
};

// Throws Failure(Argument) naming the setting that a file can't be created with.
void validate(const CreateSettings& settings);
// Of a level-of-detail size: per cent for thinout, a level for combine.
std::uint32_t largestLodSize(std::uint32_t mode);
bool isPossibleLod(std::uint32_t mode, std::uint32_t size);
void validateLod(std::uint32_t mode, std::uint32_t size);

// The most points that a leaf of such a file has. In either chunk mode it is bounded, because a
// leaf is encoded and decoded as one piece of memory.
std::uint32_t leafCapacity(const CreateSettings& settings);

// The most points that any node of such a file has: very small leaves have fewer than the
// level-of-detail points above them may be.
std::uint32_t nodeCapacity(const CreateSettings& settings);
// The cells that the nodes of such a file stand for.
index::Cells cellsOf(const CreateSettings& settings, const schema::Attribute& primary);

// JSON texts with the fields as members in snake case, but for "readOnly"; reading keeps the values
// of members that are missing and throws Failure(Argument) without changing anything.
std::string toJson(const CreateSettings& settings);
void fromJson(std::string_view json, CreateSettings& settings);
std::string toJson(const OpenSettings& settings);
void fromJson(std::string_view json, OpenSettings& settings);

// An attribute of the default catalogue; Failure(NotFound) when it has none of that name.
schema::AttributeRecord defaultAttribute(std::string_view name);

}  // namespace tarvo::engine::session
