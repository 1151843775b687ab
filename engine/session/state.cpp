#include "engine/session/state.h"

#include "engine/base/json.h"
#include "engine/session/settings.h"

#include <algorithm>
#include <charconv>
#include <chrono>
#include <cstdio>
#include <ctime>

namespace tarvo::engine::session {

namespace {

// 64 bits do not fit every JSON reader's numbers: checksums are written in hexadecimal.
std::string hexadecimal(std::uint64_t value) {
    char text[17];
    std::snprintf(text, sizeof text, "%016llx", static_cast<unsigned long long>(value));
    return text;
}

std::uint64_t numberFromHexadecimal(const std::string& text, const char* what) {
    std::uint64_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number, 16);
    if (error != std::errc() || end != text.data() + text.size())
        throw Failure(ErrorCode::Damaged,
                      std::string("The file is damaged: ") + what + " is not readable.");
    return number;
}

void writeReferenceMembers(JsonWriter& writer, const BlobRef& reference) {
    writeMember(writer, "blob", reference.blob);
    writeMember(writer, "length", std::uint64_t(reference.length));
    writeMember(writer, "checksum", hexadecimal(reference.checksum));
}

BlobRef readReferenceMembers(const JsonObject& object) {
    BlobRef reference;
    reference.blob = object.number("blob", INT64_MAX);
    reference.length = static_cast<std::uint32_t>(object.number("length", UINT32_MAX));
    reference.checksum = numberFromHexadecimal(object.text("checksum"), "a reference");
    if (reference.blob == 0)
        throw Failure(ErrorCode::Damaged, "The file is damaged: a reference is not readable.");
    return reference;
}

// The one value of an attribute for the whole file.
std::vector<std::uint64_t> constantFromJson(const rapidjson::Value& codes,
                                            const schema::Attribute& attribute) {
    std::vector<std::uint64_t> result;
    for (const rapidjson::Value& code : codes.GetArray())
        result.push_back(
            numberFromHexadecimal(code.IsString() ? code.GetString() : "", "a constant value"));
    const schema::Grid& grid = attribute.grid;
    const bool possible = std::all_of(result.begin(), result.end(), [&](std::uint64_t code) {
        return code <= grid.maximumCode() || grid.isInvalid(code);
    });
    if (result.size() != attribute.record.length || !possible ||
        !attribute.is(schema::StorageClass::Constant))
        throw Failure(ErrorCode::Damaged,
                      "The file is damaged: the constant value of the point attribute \"" +
                          attribute.record.name + "\" is not readable.");
    return result;
}

}  // namespace

void writeReferenceMember(JsonWriter& writer, const char* name, const BlobRef& reference) {
    writer.Key(name);
    if (!reference) {
        writer.Null();
        return;
    }
    writer.StartObject();
    writeReferenceMembers(writer, reference);
    writer.EndObject();
}

BlobRef readReferenceMember(const JsonObject& parent, const char* name) {
    if (parent.get(name).IsNull())
        return {};
    return readReferenceMembers(parent.object(name));
}

std::string rootText(const State& state) {
    rapidjson::StringBuffer buffer;
    JsonWriter writer(buffer);
    const TransactionRecord& t = state.transaction;
    writer.StartObject();
    writer.Key("transaction");
    writer.StartObject();
    writeMember(writer, "id", std::uint64_t(t.id));
    writeMember(writer, "parent", std::uint64_t(state.parent));
    writeMember(writer, "qrb", t.qrb);
    writeMember(writer, "title", t.title);
    writeMember(writer, "agent", t.agent);
    writeMember(writer, "comments", t.comments);
    writeMember(writer, "settings", t.settings);
    writeMember(writer, "start", t.start);
    writeMember(writer, "stop", t.stop);
    writer.EndObject();
    writeReferenceMember(writer, "attributes", state.attributesBlob);
    writeMember(writer, "next_attribute", std::uint64_t(state.nextUid));
    writer.Key("index");
    writer.StartObject();
    writeReferenceMember(writer, "root", state.rootPage);
    writeMember(writer, "points", state.pointCount);
    writeMember(writer, "next_point", state.nextPointId);
    writeMember(writer, "next_node", std::uint64_t(state.nextNodeId));
    writer.EndObject();
    writer.Key("level_of_detail");
    writer.StartObject();
    writeMember(writer, "mode", std::uint64_t(state.lodMode));
    writeMember(writer, "size", std::uint64_t(state.chunkSizeLod));
    writer.EndObject();
    writer.Key("metadata");
    writer.StartObject();
    for (const auto& [name, item] : state.metaData) {
        writer.Key(name.data(), static_cast<rapidjson::SizeType>(name.size()));
        writer.StartObject();
        writeReferenceMembers(writer, item.value);
        if (!item.signature.empty()) {
            writer.Key("signature");
            writer.StartObject();
            writeMember(writer, "method", std::uint64_t(item.method));
            writeMember(writer, "value", item.signature);
            if (item.parent != 0)
                writeMember(writer, "parent", std::uint64_t(item.parent));
            writer.EndObject();
        }
        writer.EndObject();
    }
    writer.EndObject();
    writeReferenceMember(writer, "changelog", state.changelog);
    writer.EndObject();
    return {buffer.GetString(), buffer.GetSize()};
}

State stateFromRoot(std::string_view root) {
    const char* what = "A transaction's root";
    const rapidjson::Document document = parseJson(root, what, ErrorCode::Damaged);
    const JsonObject object(document, what, ErrorCode::Damaged);
    State state;
    const JsonObject transaction = object.object("transaction");
    TransactionRecord& t = state.transaction;
    t.id = static_cast<std::uint32_t>(transaction.number("id", UINT32_MAX));
    state.parent = static_cast<std::uint32_t>(transaction.number("parent", UINT32_MAX));
    t.qrb = transaction.text("qrb");
    t.title = transaction.text("title");
    t.agent = transaction.text("agent");
    t.comments = transaction.text("comments");
    t.settings = transaction.text("settings");
    t.start = transaction.text("start");
    t.stop = transaction.text("stop");
    state.attributesBlob = readReferenceMember(object, "attributes");
    state.nextUid = static_cast<std::uint32_t>(object.number("next_attribute", INT32_MAX));
    const JsonObject index = object.object("index");
    state.rootPage = readReferenceMember(index, "root");
    state.pointCount = index.number("points", INT64_MAX);
    state.nextPointId = index.number("next_point");
    state.nextNodeId = static_cast<std::uint32_t>(index.number("next_node", UINT32_MAX));
    const JsonObject lod = object.object("level_of_detail");
    state.lodMode = static_cast<std::uint32_t>(lod.number("mode", UINT32_MAX));
    state.chunkSizeLod = static_cast<std::uint32_t>(lod.number("size", UINT32_MAX));
    if (!isPossibleLod(state.lodMode, state.chunkSizeLod))
        throw Failure(ErrorCode::Damaged,
                      "The file is damaged: it has no such level of detail as it tells.");
    (void)object.object("metadata");
    for (const auto& member : object.get("metadata").GetObject()) {
        const std::string name(member.name.GetString(), member.name.GetStringLength());
        if (!isMetaDataName(name))
            throw Failure(ErrorCode::Damaged,
                          "The file is damaged: a metadata item has an impossible name.");
        const JsonObject stored(member.value, what, ErrorCode::Damaged);
        MetaItem item;
        item.value = readReferenceMembers(stored);
        if (stored.has("signature")) {
            const JsonObject signature = stored.object("signature");
            item.method = static_cast<std::uint32_t>(signature.number("method", UINT32_MAX));
            item.signature = signature.text("value");
            if (signature.has("parent"))
                item.parent = static_cast<std::uint32_t>(signature.number("parent", UINT32_MAX));
        }
        state.metaData[name] = std::move(item);
    }
    state.changelog = readReferenceMember(object, "changelog");
    return state;
}

std::string attributesText(const schema::AttributeTable& table) {
    rapidjson::StringBuffer buffer;
    JsonWriter writer(buffer);
    writer.StartArray();
    for (const schema::Attribute& attribute : table.all()) {
        writer.StartObject();
        writeMember(writer, "number", std::uint64_t(attribute.uid));
        writer.Key("definition");
        const std::string record = schema::toJson(attribute.record);
        writer.RawValue(record.data(), record.size(), rapidjson::kObjectType);
        if (!attribute.constant.empty()) {
            writer.Key("value");
            writer.StartArray();
            for (const std::uint64_t code : attribute.constant)
                writeText(writer, hexadecimal(code));
            writer.EndArray();
        }
        writer.EndObject();
    }
    writer.EndArray();
    return {buffer.GetString(), buffer.GetSize()};
}

bool isMetaDataName(const std::string& name) {
    return !name.empty() && name.size() <= 255 && name.find('\0') == std::string::npos;
}

void requireGiven(const State& state) {
    for (const schema::Attribute& attribute : state.attributes.all())
        if (attribute.uid >= state.nextUid)
            throw Failure(ErrorCode::Damaged,
                          "The file is damaged: the number of the point "
                          "attribute \"" +
                              attribute.record.name + "\" was not given yet.");
}

bool canBePointId(const schema::AttributeRecord& record) {
    return record.length == 1 && schema::Grid(record).kind() == schema::Grid::Kind::Integer;
}

schema::AttributeTable attributesFromText(std::string_view text) {
    const char* what = "The attribute table";
    const rapidjson::Document document = parseJson(text, what, ErrorCode::Damaged);
    schema::AttributeTable table;
    if (!document.IsArray())
        throw Failure(ErrorCode::Damaged, "The file is damaged: its attribute table is no list.");
    for (const rapidjson::Value& value : document.GetArray()) {
        const JsonObject object(value, what, ErrorCode::Damaged);
        rapidjson::StringBuffer buffer;
        JsonWriter writer(buffer);
        object.get("definition").Accept(writer);
        schema::AttributeRecord record;
        schema::recordFromJson({buffer.GetString(), buffer.GetSize()}, record);
        schema::validate(record);
        const auto number = static_cast<std::uint32_t>(object.number("number", UINT32_MAX));
        if (table.find(record.name) >= 0 || table.findUid(number) >= 0)
            throw Failure(ErrorCode::Damaged, "The file is damaged: it has the point attribute \"" +
                                                  record.name + "\" twice.");
        schema::Attribute& attribute = table.all().emplace_back(std::move(record), number);
        if (object.has("value"))
            attribute.constant = constantFromJson(object.array("value"), attribute);
    }
    const int pointId = table.find(schema::pointIdName);
    if (pointId != 0 && pointId != 1)
        throw Failure(ErrorCode::Damaged,
                      "The file is damaged: it lacks its primary attribute or point id.");
    for (const int key : {0, pointId})
        if (const auto& attribute = table[static_cast<std::size_t>(key)];
            attribute.is(schema::StorageClass::Constant))
            throw Failure(ErrorCode::Damaged, "The file is damaged: all its points have one \"" +
                                                  attribute.record.name + "\".");
    if (!canBePointId(table[static_cast<std::size_t>(pointId)].record))
        throw Failure(ErrorCode::Damaged, "The file is damaged: its point id is no whole number.");
    return table;
}

std::string timestamp() {
    using namespace std::chrono;
    const auto now = system_clock::now();
    const std::time_t seconds = system_clock::to_time_t(now);
    const auto milliseconds =
        duration_cast<std::chrono::milliseconds>(now.time_since_epoch()).count() % 1000;
    std::tm utc{};
#ifdef _WIN32
    gmtime_s(&utc, &seconds);
#else
    gmtime_r(&seconds, &utc);
#endif
    char text[40];
    std::strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%S", &utc);
    char result[48];
    std::snprintf(result, sizeof result, "%s.%03dZ", text, static_cast<int>(milliseconds));
    return result;
}

}  // namespace tarvo::engine::session
