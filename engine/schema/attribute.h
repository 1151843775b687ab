// The definition of one point attribute as the engine keeps it.
#pragma once

#include "engine/schema/grid.h"

#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

namespace tarvo::engine::schema {

// The plain record; the defaults are those of a new record.
struct AttributeRecord {
    std::string name = "none";
    std::string title = "none";
    std::string tags;
    std::string description;
    std::string unitSymbol;
    std::uint32_t length = 0;
    double resolution = 1.0;
    double minimumValue = 0.0;
    double maximumValue = 0.0;
    double defaultValue = 0.0;
    double invalidValue = std::numeric_limits<double>::quiet_NaN();  // NaN: none
    std::string namedValues;
    std::uint8_t storageClass = 1;  // 1 constant, 2 variable, 3 dynamic
    std::uint8_t compressionOptions = 0;
    std::string lodSettings = "default";
    double scaleFactor = 1.0;
};

inline constexpr std::uint32_t maximumLength = 255;
inline constexpr std::string_view pointIdName = "tarvo.id";

// Throws Failure(Argument) that names the field unless the record can be stored.
void validate(const AttributeRecord& record);
// Throws Failure(Argument) for a text that is no UTF-8. Files of earlier releases hold such ones.
void requireTexts(const AttributeRecord& record);

// The smallest type that holds every value: 0 NONE to 10 DOUBLE (qrb_data_type).
std::uint32_t dataType(const AttributeRecord& record);

// JSON text with the record's fields as members in snake case; invalid_value null stands for
// none. recordFromJson keeps the values of members that are missing and throws Failure(Argument).
std::string toJson(const AttributeRecord& record);
void recordFromJson(std::string_view json, AttributeRecord& record);

// How the values of an attribute are stored: once for the whole file; in blocks that share a blob
// with the other attributes of their node; in blocks of their own, which leave no dead bytes behind
// when they are replaced often.
enum class StorageClass : std::uint8_t { Constant = 1, Variable = 2, Dynamic = 3 };

// A definition within a file: the record, its grid, and the number by which nodes refer to it
// (unique within the file, never used again).
struct Attribute {
    Attribute(AttributeRecord definition, std::uint32_t number)
        : record(std::move(definition)), grid(record), uid(number) {}

    AttributeRecord record;
    Grid grid;
    std::uint32_t uid;
    // Of an attribute with one value for the whole file: the code of each element. Empty until the
    // first points give it.
    std::vector<std::uint64_t> constant;

    bool is(StorageClass storage) const {
        return record.storageClass == static_cast<std::uint8_t>(storage);
    }
    std::uint64_t defaultCode() const { return grid.code(record.defaultValue); }
    // What an element of a point has when its node says nothing about the attribute.
    std::uint64_t absentCode(std::uint32_t element) const {
        return element < constant.size() ? constant[element] : defaultCode();
    }
};

// The attributes of a file in their order; lookups by exact name.
class AttributeTable {
public:
    const std::vector<Attribute>& all() const { return m_attributes; }
    std::vector<Attribute>& all() { return m_attributes; }
    std::size_t size() const { return m_attributes.size(); }
    const Attribute& operator[](std::size_t index) const { return m_attributes[index]; }
    // The index, or -1.
    int find(std::string_view name) const;
    int findUid(std::uint32_t uid) const;

private:
    std::vector<Attribute> m_attributes;
};

// A descriptor "NAME", "NAME[I]", "NAME:property" or "NAME[I]:property" taken apart.
struct Descriptor {
    std::string name;
    std::int64_t element = -1;  // -1: none
    std::string property;       // without ":"; empty: none
};
// Throws Failure(Argument).
Descriptor decodeDescriptor(std::string_view text);

// The attribute and the elements [first, first + count) that "NAME" or "NAME[I]" means. Throws
// Failure(NotFound) for an unknown attribute, Failure(Argument) for an element that it lacks.
struct ElementRange {
    std::size_t attribute = 0;  // index in the table
    std::uint32_t first = 0;
    std::uint32_t count = 0;
};
ElementRange resolveElements(const AttributeTable& table, std::string_view descriptor);

}  // namespace tarvo::engine::schema
