#include "catalogue/catalogue.h"

#include "catalogue/jsonmemory.h"

#include <rapidjson/error/en.h>

#include <limits>
#include <map>
#include <stdexcept>

namespace tarvo::embedded {
std::string_view attributes_json();
std::string_view metadata_json();
std::string_view schemas_json();
}  // namespace tarvo::embedded

namespace tarvo::catalogue {

namespace {

using Value = rapidjson::Value;

// The data files are part of the program: what is wrong in them is a fault of the build.
[[noreturn]] void fail(const std::string& where, const std::string& what) {
    throw std::logic_error("default definitions: " + where + ": " + what);
}

rapidjson::Document parse(std::string_view text, const char* fileName) {
    rapidjson::Document document;
    document.Parse<rapidjson::kParseFullPrecisionFlag>(text.data(), text.size());
    if (document.HasParseError()) {
        fail(fileName, std::string(rapidjson::GetParseError_En(document.GetParseError())) +
                           " (at byte " + std::to_string(document.GetErrorOffset()) + ")");
    }
    if (!document.IsObject()) {
        fail(fileName, "not a JSON object");
    }
    return document;
}

const Value& member(const Value& object, const char* name, const std::string& where) {
    const auto found = object.FindMember(name);
    if (found == object.MemberEnd()) {
        fail(where, std::string("no member \"") + name + "\"");
    }
    return found->value;
}

const Value& array(const Value& object, const char* name, const std::string& where) {
    const Value& value = member(object, name, where);
    if (!value.IsArray()) {
        fail(where, std::string("\"") + name + "\" is not an array");
    }
    return value;
}

std::string text(const Value& object, const char* name, const std::string& where) {
    const Value& value = member(object, name, where);
    if (!value.IsString()) {
        fail(where, std::string("\"") + name + "\" is not a text");
    }
    return {value.GetString(), value.GetStringLength()};
}

std::string text(const Value& object, const char* name, const std::string& where,
                 const char* usual) {
    return object.HasMember(name) ? text(object, name, where) : usual;
}

double number(const Value& object, const char* name, const std::string& where) {
    const Value& value = member(object, name, where);
    if (!value.IsNumber()) {
        fail(where, std::string("\"") + name + "\" is not a number");
    }
    return value.GetDouble();
}

double number(const Value& object, const char* name, const std::string& where, double usual) {
    return object.HasMember(name) ? number(object, name, where) : usual;
}

std::uint32_t whole(const Value& object, const char* name, const std::string& where,
                    std::uint32_t usual) {
    if (!object.HasMember(name)) {
        return usual;
    }
    const Value& value = member(object, name, where);
    if (!value.IsUint()) {
        fail(where, std::string("\"") + name + "\" is not a whole number");
    }
    return value.GetUint();
}

std::string compactJson(const Value& value) {
    rapidjson::StringBuffer buffer;
    rapidjson::Writer<rapidjson::StringBuffer> writer(buffer);
    value.Accept(writer);
    return {buffer.GetString(), buffer.GetSize()};
}

std::string prettyJson(const Value& value) {
    rapidjson::StringBuffer buffer;
    rapidjson::PrettyWriter<rapidjson::StringBuffer> writer(buffer);
    writer.SetIndent(' ', 4);
    value.Accept(writer);
    return {buffer.GetString(), buffer.GetSize()};
}

Stamp stampOf(const Value& object, const std::string& where) {
    return {text(object, "version", where), text(object, "date", where)};
}

// One table with its look-up. The keys view the names inside the entries, which never move.
template <typename Entry>
struct Table {
    Stamp stamp;
    std::vector<Entry> entries;
    std::map<std::string_view, const Entry*, std::less<>> index;

    void buildIndex(std::string Entry::*key, const std::string& where) {
        for (const Entry& entry : entries) {
            if (!index.emplace(entry.*key, &entry).second) {
                fail(where, "\"" + entry.*key + "\" stands twice");
            }
        }
    }
    const Entry* find(std::string_view key) const {
        const auto found = index.find(key);
        return found == index.end() ? nullptr : found->second;
    }
};

struct AttributeTable : Table<AttributeEntry> {
    std::vector<std::string> groups;
    Stamp groupsStamp;
};

AttributeEntry readAttribute(const Value& value) {
    if (!value.IsObject()) {
        fail("attributes.json", "an attribute is not an object");
    }
    AttributeEntry entry;
    entry.name = text(value, "name", "attributes.json");
    const std::string& where = entry.name;
    entry.title = text(value, "title", where);
    entry.tags = text(value, "tags", where, "");
    entry.description = text(value, "description", where, "");
    entry.unitSymbol = text(value, "unit_symbol", where, "");
    entry.length = whole(value, "length", where, 1);
    entry.resolution = number(value, "resolution", where, 1.0);
    entry.minimumValue = number(value, "minimum_value", where);
    entry.maximumValue = number(value, "maximum_value", where);
    entry.defaultValue = number(value, "default_value", where, 0.0);
    entry.invalidValue = std::numeric_limits<double>::quiet_NaN();
    if (value.HasMember("invalid_value") && !value["invalid_value"].IsNull()) {
        entry.invalidValue = number(value, "invalid_value", where);
    }
    entry.namedValues = text(value, "named_values", where, "");
    entry.storageClass = static_cast<std::uint8_t>(whole(value, "storage_class", where, 2));
    entry.compressionOptions =
        static_cast<std::uint8_t>(whole(value, "compression_options", where, 0));
    entry.lodSettings = text(value, "lod_settings", where, "default");
    entry.scaleFactor = number(value, "scale_factor", where, 1.0);
    entry.group = text(value, "group", where);
    return entry;
}

const AttributeTable& attributeTable() {
    static const AttributeTable table = [] {
        const std::string where = "attributes.json";
        const rapidjson::Document root = parse(embedded::attributes_json(), where.c_str());
        AttributeTable result;
        result.stamp = stampOf(root, where);
        const Value& groups = member(root, "groups", where);
        if (!groups.IsObject()) {
            fail(where, "\"groups\" is not an object");
        }
        result.groupsStamp = stampOf(groups, "groups");
        for (const Value& group : array(groups, "names", "groups").GetArray()) {
            if (!group.IsString()) {
                fail(where, "a group is not a text");
            }
            result.groups.emplace_back(group.GetString(), group.GetStringLength());
        }
        for (const Value& value : array(root, "attributes", where).GetArray()) {
            result.entries.push_back(readAttribute(value));
        }
        result.buildIndex(&AttributeEntry::name, where);
        return result;
    }();
    return table;
}

const Table<MetaDataEntry>& metaDataTable() {
    static const Table<MetaDataEntry> table = [] {
        const std::string where = "metadata.json";
        const rapidjson::Document root = parse(embedded::metadata_json(), where.c_str());
        Table<MetaDataEntry> result;
        result.stamp = stampOf(root, where);
        for (const Value& value : array(root, "items", where).GetArray()) {
            if (!value.IsObject()) {
                fail(where, "an item is not an object");
            }
            MetaDataEntry entry;
            entry.name = text(value, "name", where);
            entry.title = text(value, "title", entry.name);
            entry.description = text(value, "description", entry.name, "");
            entry.schema = prettyJson(member(value, "schema", entry.name));
            entry.example = prettyJson(member(value, "example", entry.name));
            if (value.HasMember("neutral")) {
                entry.neutral = prettyJson(value["neutral"]);
            }
            result.entries.push_back(std::move(entry));
        }
        result.buildIndex(&MetaDataEntry::name, where);
        return result;
    }();
    return table;
}

const Table<SchemaEntry>& schemaTable() {
    static const Table<SchemaEntry> table = [] {
        const std::string where = "schemas.json";
        const rapidjson::Document root = parse(embedded::schemas_json(), where.c_str());
        Table<SchemaEntry> result;
        result.stamp = stampOf(root, where);
        for (const Value& value : array(root, "schemas", where).GetArray()) {
            if (!value.IsObject()) {
                fail(where, "a schema is not an object");
            }
            SchemaEntry entry;
            entry.identifier = text(value, "identifier", where);
            entry.extension = text(value, "extension", entry.identifier);
            array(value, "attributes", entry.identifier);
            array(value, "metadata", entry.identifier);
            entry.json = compactJson(value);
            result.entries.push_back(std::move(entry));
        }
        result.buildIndex(&SchemaEntry::identifier, where);
        return result;
    }();
    return table;
}

}  // namespace

Stamp attributesStamp() {
    return attributeTable().stamp;
}

Stamp metaDataStamp() {
    return metaDataTable().stamp;
}

Stamp schemasStamp() {
    return schemaTable().stamp;
}

Stamp groupsStamp() {
    return attributeTable().groupsStamp;
}

std::span<const AttributeEntry> attributes() {
    return attributeTable().entries;
}

const AttributeEntry* findAttribute(std::string_view name) {
    return attributeTable().find(name);
}

std::span<const std::string> groups() {
    return attributeTable().groups;
}

std::span<const MetaDataEntry> metaData() {
    return metaDataTable().entries;
}

const MetaDataEntry* findMetaData(std::string_view name) {
    return metaDataTable().find(name);
}

std::span<const SchemaEntry> schemas() {
    return schemaTable().entries;
}

const SchemaEntry* findSchema(std::string_view identifier) {
    return schemaTable().find(identifier);
}

}  // namespace tarvo::catalogue
