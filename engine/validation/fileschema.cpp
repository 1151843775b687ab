#include "engine/validation/fileschema.h"

#include "engine/base/json.h"

#include <set>

namespace tarvo::engine::validation {

namespace {

constexpr const char* schemaName = "The file schema";

std::vector<FileSchema::Item> readItems(const JsonObject& schema, const char* member) {
    const auto fail = [&](const std::string& reason) {
        throw Failure(ErrorCode::Argument,
                      std::string(schemaName) + " is not valid: in \"" + member + "\", " + reason);
    };
    std::vector<FileSchema::Item> items;
    std::set<std::string> names;
    for (const rapidjson::Value& value : schema.array(member).GetArray()) {
        if (!value.IsString())
            fail("element " + std::to_string(items.size()) + " is no text.");
        FileSchema::Item item{{value.GetString(), value.GetStringLength()}};
        if (!item.name.empty()) {
            item.optional = item.name.back() == '?';
            item.primary = item.name.back() == '*';
        }
        if (item.optional || item.primary)
            item.name.pop_back();
        if (item.name.empty())
            fail("element " + std::to_string(items.size()) + " is no name.");
        if (!names.insert(item.name).second)
            fail("\"" + item.name + "\" stands twice.");
        items.push_back(std::move(item));
    }
    return items;
}

}  // namespace

const FileSchema::Item* FileSchema::primary() const {
    for (const Item& item : attributes)
        if (item.primary)
            return &item;
    return nullptr;
}

FileSchema readFileSchema(std::string_view json) {
    const rapidjson::Document document = parseJson(json, schemaName);
    const JsonObject object(document, schemaName, ErrorCode::Argument);
    FileSchema schema;
    schema.identifier = object.text("identifier");
    schema.extension = object.text("extension");
    schema.attributes = readItems(object, "attributes");
    schema.metaData = readItems(object, "metadata");
    const FileSchema::Item* first = schema.primary();
    for (const FileSchema::Item& item : schema.attributes)
        if (item.primary && &item != first)
            throw Failure(ErrorCode::Argument, std::string(schemaName) +
                                                   " is not valid: it has two primary attributes, "
                                                   "\"" +
                                                   first->name + "\" and \"" + item.name + "\".");
    for (const FileSchema::Item& item : schema.metaData)
        if (item.primary)
            throw Failure(ErrorCode::Argument,
                          std::string(schemaName) + " is not valid: the metadata item \"" +
                              item.name + "\" is marked as primary, which only attributes can be.");
    return schema;
}

}  // namespace tarvo::engine::validation
