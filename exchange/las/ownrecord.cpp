#include "exchange/las/ownrecord.h"

#include "catalogue/jsonmemory.h"
#include "core/json.h"
#include "exchange/table/names.h"

#include <algorithm>
#include <map>
#include <optional>
#include <set>
#include <string_view>
#include <utility>

namespace tarvo::exchange::las {

namespace {

using OwnWriter = rapidjson::Writer<rapidjson::StringBuffer>;

constexpr std::uint32_t mostElements = 65536;

void putMember(OwnWriter& writer, const char* key, const std::string& text) {
    writer.Key(key);
    writer.String(text.data(), static_cast<rapidjson::SizeType>(text.size()));
}

std::optional<std::string> entryText(const rapidjson::Value& object, const char* key) {
    const auto found = object.FindMember(key);
    if (found == object.MemberEnd() || !found->value.IsString()) {
        return std::nullopt;
    }
    return std::string(found->value.GetString(), found->value.GetStringLength());
}

std::optional<std::uint32_t> entryNumber(const rapidjson::Value& object, const char* key) {
    const auto found = object.FindMember(key);
    if (found == object.MemberEnd() || !found->value.IsUint()) {
        return std::nullopt;
    }
    return found->value.GetUint();
}

// What an entry says of a dimension.
std::optional<Column> entryColumn(const rapidjson::Value& entry) {
    if (!entry.IsObject()) {
        return std::nullopt;
    }
    const auto attribute = entryText(entry, "attribute");
    const auto element = entryNumber(entry, "element");
    const auto length = entryNumber(entry, "length");
    const auto title = entryText(entry, "title");
    const auto description = entryText(entry, "description");
    // Coordinates never are extra bytes.
    if (!attribute || !isAttributeName(*attribute) || *attribute == "tarvo.xyz" || !element ||
        !length || !title || !description || *length > mostElements || *element >= *length) {
        return std::nullopt;
    }
    Column column;
    column.attribute = *attribute;
    column.element = *element;
    column.length = *length;
    column.title = *title;
    column.description = *description;
    return column;
}

using Element = std::pair<std::string, std::uint32_t>;

// Every entry if each element comes once, and attributes have one length, that of the fields, too;
// else nothing.
std::optional<std::vector<Column>> entryColumns(const rapidjson::Value& entries,
                                                const std::vector<Dimension>& dimensions) {
    std::map<std::string, std::uint32_t> lengths;
    for (const Dimension& dimension : dimensions) {
        lengths.emplace(dimension.column.attribute, dimension.column.length);
    }
    std::vector<Column> columns;
    std::set<Element> seen;
    for (const rapidjson::Value& entry : entries.GetArray()) {
        auto column = entryColumn(entry);
        if (!column || !seen.insert({column->attribute, column->element}).second ||
            lengths.emplace(column->attribute, column->length).first->second != column->length) {
            return std::nullopt;
        }
        columns.push_back(std::move(*column));
    }
    return columns;
}

const Record* findOwn(const std::vector<Record>& records) {
    const auto found = std::find_if(records.begin(), records.end(), isOwnRecord);
    return found == records.end() || found->data.size() != found->length ? nullptr : &*found;
}

void dropFields(std::vector<Dimension>& dimensions, std::size_t fields,
                const std::set<Element>& elements, const std::set<std::string>& absent) {
    const auto end = dimensions.begin() + static_cast<std::ptrdiff_t>(fields);
    const auto kept = std::remove_if(dimensions.begin(), end, [&](const Dimension& dimension) {
        const Column& column = dimension.column;
        return absent.contains(column.attribute) ||
               elements.contains({column.attribute, column.element});
    });
    dimensions.erase(kept, end);
}

}  // namespace

bool isOwnRecord(const Record& record) {
    return record.userId == ownUserId && record.recordId == ownRecordId;
}

std::string ownRecord(const std::vector<Column>& extra, const std::vector<std::string>& absent) {
    rapidjson::StringBuffer buffer;
    OwnWriter writer(buffer);
    writer.StartObject();
    writer.Key("extra_bytes");
    writer.StartArray();
    for (const Column& column : extra) {
        writer.StartObject();
        putMember(writer, "attribute", column.attribute);
        writer.Key("element");
        writer.Uint(column.element);
        writer.Key("length");
        writer.Uint(column.length);
        putMember(writer, "title", column.title);
        putMember(writer, "description", column.description);
        writer.EndObject();
    }
    writer.EndArray();
    writer.Key("absent");
    writer.StartArray();
    for (const std::string& name : absent) {
        writer.String(name.data(), static_cast<rapidjson::SizeType>(name.size()));
    }
    writer.EndArray();
    writer.EndObject();
    return {buffer.GetString(), buffer.GetSize()};
}

bool applyOwnRecord(const std::vector<Record>& records, std::size_t extraCount,
                    std::vector<Dimension>& dimensions) {
    const Record* const record = findOwn(records);
    if (!record) {
        return std::none_of(records.begin(), records.end(), isOwnRecord);
    }
    rapidjson::Document document;
    if (document
            .Parse<rapidjson::kParseIterativeFlag | rapidjson::kParseValidateEncodingFlag>(
                reinterpret_cast<const char*>(record->data.data()), record->data.size())
            .HasParseError() ||
        !document.IsObject()) {
        return false;
    }
    const auto entries = document.FindMember("extra_bytes");
    const auto absent = document.FindMember("absent");
    if (entries == document.MemberEnd() || !entries->value.IsArray() ||
        absent == document.MemberEnd() || !absent->value.IsArray() ||
        entries->value.Size() != extraCount) {
        return false;
    }
    const auto columns = entryColumns(entries->value, dimensions);
    if (!columns) {
        return false;
    }
    const std::size_t fields = dimensions.size() - extraCount;
    std::set<Element> elements;
    for (std::size_t i = 0; i < extraCount; ++i) {
        Column& column = dimensions[fields + i].column;
        const Column& told = (*columns)[i];
        column.attribute = told.attribute;
        column.element = told.element;
        column.length = told.length;
        column.title = told.title;
        column.description = told.description;
        elements.insert({told.attribute, told.element});
    }
    std::set<std::string> silent;
    for (const rapidjson::Value& name : absent->value.GetArray()) {
        // Coordinates are always there.
        if (name.IsString() && std::string_view(name.GetString()) != "tarvo.xyz") {
            silent.emplace(name.GetString(), name.GetStringLength());
        }
    }
    dropFields(dimensions, fields, elements, silent);
    return true;
}

}  // namespace tarvo::exchange::las
