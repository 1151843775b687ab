// The catalogue of default definitions: point attributes, metadata items, file schemas. Read once
// from the data files of this folder, which are compiled in; never changed afterwards, so any
// thread may read it. The interface layer and the database library share it. The "notes" of the
// data files say why a value is as it is; they are not read.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tarvo::catalogue {

// The version of a table and its date (ISO 8601).
struct Stamp {
    std::string version;
    std::string date;
};
Stamp attributesStamp();
Stamp metaDataStamp();
Stamp schemasStamp();
Stamp groupsStamp();  // of the attribute groups

// A default point attribute; the fields mean what those of a point attribute record mean.
struct AttributeEntry {
    std::string name;
    std::string title;
    std::string tags;
    std::string description;
    std::string unitSymbol;
    std::uint32_t length = 1;
    double resolution = 1.0;
    double minimumValue = 0.0;
    double maximumValue = 0.0;
    double defaultValue = 0.0;
    double invalidValue = 0.0;  // NaN: none
    std::string namedValues;    // lines "VALUE=NAME"
    std::uint8_t storageClass = 2;  // 3: values that are changed often, such as a selection
    std::uint8_t compressionOptions = 0;
    std::string lodSettings;
    double scaleFactor = 1.0;
    std::string group;  // one of groups()
};
std::span<const AttributeEntry> attributes();
// Null: not a default attribute. Names are compared exactly.
const AttributeEntry* findAttribute(std::string_view name);
// The five attribute groups, in their order.
std::span<const std::string> groups();

struct MetaDataEntry {
    std::string name;
    std::string title;
    std::string description;
    std::string schema;   // JSON schema (draft 7) of the value
    std::string example;  // a value that satisfies it
    std::string neutral;  // a value that satisfies it and claims nothing; empty: there is none
};
std::span<const MetaDataEntry> metaData();
const MetaDataEntry* findMetaData(std::string_view name);

struct SchemaEntry {
    std::string identifier;
    std::string extension;
    std::string json;  // {"identifier", "extension", "attributes", "metadata"}
};
std::span<const SchemaEntry> schemas();
const SchemaEntry* findSchema(std::string_view identifier);

}  // namespace tarvo::catalogue
