#include "engine/session/settings.h"

#include "catalogue/catalogue.h"
#include "engine/base/json.h"

#include <algorithm>

namespace tarvo::engine::session {

namespace {

[[noreturn]] void refuseSetting(const char* name, const std::string& value, const char* possible) {
    throw Failure(ErrorCode::Argument,
                  std::string("The ") + name + " " + value + " is not possible: " + possible + ".");
}

}  // namespace

schema::AttributeRecord defaultAttribute(std::string_view name) {
    const catalogue::AttributeEntry* entry = catalogue::findAttribute(name);
    if (!entry)
        throw Failure(ErrorCode::NotFound,
                      "\"" + std::string(name) + "\" is not a default point attribute.");
    schema::AttributeRecord record;
    record.name = entry->name;
    record.title = entry->title;
    record.tags = entry->tags;
    record.description = entry->description;
    record.unitSymbol = entry->unitSymbol;
    record.length = entry->length;
    record.resolution = entry->resolution;
    record.minimumValue = entry->minimumValue;
    record.maximumValue = entry->maximumValue;
    record.defaultValue = entry->defaultValue;
    record.invalidValue = entry->invalidValue;
    record.namedValues = entry->namedValues;
    record.storageClass = entry->storageClass;
    record.compressionOptions = entry->compressionOptions;
    record.lodSettings = entry->lodSettings;
    record.scaleFactor = entry->scaleFactor;
    return record;
}

CreateSettings::CreateSettings() : primaryAttribute(defaultAttribute("tarvo.xyz")) {}

std::uint32_t leafCapacity(const CreateSettings& settings) {
    constexpr std::uint32_t largest = 1u << 20;
    const bool byCount = settings.chunkMode == static_cast<std::uint32_t>(ChunkMode::PointCount);
    return byCount ? std::min(settings.chunkSize, largest) : largest;
}

std::uint32_t nodeCapacity(const CreateSettings& settings) {
    // Points are combined by a grid of at least two cells along each edge.
    return std::max(leafCapacity(settings), 1u << index::maximumDimensions);
}

index::Cells cellsOf(const CreateSettings& settings, const schema::Attribute& primary) {
    index::Cells cells{index::KeySpace(primary), 0};
    const int depth = static_cast<int>(cells.space.depth());
    const bool byEdge = settings.chunkMode == static_cast<std::uint32_t>(ChunkMode::EdgeLength);
    const int level =
        byEdge ? static_cast<int>(cells.space.bits()) - static_cast<int>(settings.chunkSize)
               : depth;
    cells.leafLevel = static_cast<unsigned>(std::clamp(level, 1, depth));
    return cells;
}

std::uint32_t largestLodSize(std::uint32_t mode) {
    return mode == static_cast<std::uint32_t>(LodMode::Thinout) ? 99 : 16;
}

bool isPossibleLod(std::uint32_t mode, std::uint32_t size) {
    return (mode == 1 || mode == 2) && size <= largestLodSize(mode);
}

void validateLod(std::uint32_t mode, std::uint32_t size) {
    if (mode != 1 && mode != 2)
        refuseSetting("level-of-detail mode", std::to_string(mode), "1 is thinout, 2 is combine");
    if (size > largestLodSize(mode))
        refuseSetting("level-of-detail size", std::to_string(size),
                      mode == 1 ? "0 to 99 per cent" : "0 to 16");
}

void validate(const CreateSettings& settings) {
    schema::validate(settings.primaryAttribute);
    if (settings.chunkMode != 1 && settings.chunkMode != 2)
        refuseSetting("chunk mode", std::to_string(settings.chunkMode),
                      "1 limits the points of a leaf, 2 its edge length");
    if (settings.chunkMode == 1 && settings.chunkSize == 0)
        refuseSetting("chunk size", "0", "a leaf must have room for a point");
    if (settings.chunkMode == 2 && settings.chunkSize > 63)
        refuseSetting("chunk size", std::to_string(settings.chunkSize), "0 to 63");
    validateLod(settings.lodMode, settings.chunkSizeLod);
    if (settings.compressionLevel > 100)
        refuseSetting("compression level", std::to_string(settings.compressionLevel), "0 to 100");
    if (settings.pointInsertMode != "single-pass" && settings.pointInsertMode != "multi-pass")
        refuseSetting("point insert mode", "\"" + settings.pointInsertMode + "\"",
                      "\"single-pass\" or \"multi-pass\"");
}

std::string toJson(const CreateSettings& settings) {
    rapidjson::StringBuffer buffer;
    JsonWriter writer(buffer);
    writer.StartObject();
    writer.Key("primary_attribute");
    const std::string attribute = schema::toJson(settings.primaryAttribute);
    writer.RawValue(attribute.data(), attribute.size(), rapidjson::kObjectType);
    writeMember(writer, "chunk_mode", std::uint64_t(settings.chunkMode));
    writeMember(writer, "chunk_size", std::uint64_t(settings.chunkSize));
    writeMember(writer, "lod_mode", std::uint64_t(settings.lodMode));
    writeMember(writer, "chunk_size_lod", std::uint64_t(settings.chunkSizeLod));
    writeMember(writer, "cache_size", settings.cacheSize);
    writeMember(writer, "compression_level", std::uint64_t(settings.compressionLevel));
    writer.Key("optimize_point_id");
    writer.Bool(settings.optimizePointId);
    writeMember(writer, "point_insert_mode", settings.pointInsertMode);
    writer.EndObject();
    return {buffer.GetString(), buffer.GetSize()};
}

void fromJson(std::string_view json, CreateSettings& settings) {
    const rapidjson::Document document = parseJson(json, "The create settings text");
    const JsonObject object(document, "The create settings text", ErrorCode::Argument);
    CreateSettings result = settings;
    if (object.has("primary_attribute")) {
        rapidjson::StringBuffer buffer;
        JsonWriter writer(buffer);
        object.get("primary_attribute").Accept(writer);
        schema::recordFromJson({buffer.GetString(), buffer.GetSize()}, result.primaryAttribute);
    }
    object.read("chunk_mode", result.chunkMode);
    object.read("chunk_size", result.chunkSize);
    object.read("lod_mode", result.lodMode);
    object.read("chunk_size_lod", result.chunkSizeLod);
    object.read("cache_size", result.cacheSize);
    object.read("compression_level", result.compressionLevel);
    object.read("optimize_point_id", result.optimizePointId);
    object.read("point_insert_mode", result.pointInsertMode);
    settings = std::move(result);
}

std::string toJson(const OpenSettings& settings) {
    rapidjson::StringBuffer buffer;
    JsonWriter writer(buffer);
    writer.StartObject();
    writeMember(writer, "cache_size", settings.cacheSize);
    writeMember(writer, "transaction", std::uint64_t(settings.transaction));
    writer.Key("readOnly");
    writer.Bool(settings.readOnly);
    writer.EndObject();
    return {buffer.GetString(), buffer.GetSize()};
}

void fromJson(std::string_view json, OpenSettings& settings) {
    const rapidjson::Document document = parseJson(json, "The open settings text");
    const JsonObject object(document, "The open settings text", ErrorCode::Argument);
    OpenSettings result = settings;
    object.read("cache_size", result.cacheSize);
    object.read("transaction", result.transaction);
    object.read("readOnly", result.readOnly);
    settings = result;
}

}  // namespace tarvo::engine::session
