#include "engine/schema/lodmethod.h"

#include "engine/base/json.h"

namespace tarvo::engine::schema {

namespace {

std::string methodName(const AttributeRecord& record) {
    const std::string& text = record.lodSettings;
    if (text.empty())
        return "default";
    if (text.find_first_of("{}[]\"\\") == std::string::npos)
        return text;
    const std::string what = "The level-of-detail settings of \"" + record.name + "\"";
    const rapidjson::Document document = parseJson(text, what);
    if (document.IsString())
        return document.GetString();
    const JsonObject object(document, what, ErrorCode::Argument);
    return object.has("method") ? object.text("method") : "default";
}

bool hasTag(const std::string& tags, std::string_view tag) {
    for (std::size_t at = tags.find(tag); at != std::string::npos; at = tags.find(tag, at + 1)) {
        const std::size_t end = at + tag.size();
        const bool begins = at == 0 || tags[at - 1] == ',' || tags[at - 1] == ' ';
        if (begins && (end == tags.size() || tags[end] == ',' || tags[end] == ' '))
            return true;
    }
    return false;
}

}  // namespace

LodMethod lodMethod(const AttributeRecord& record) {
    const std::string name = methodName(record);
    if (name == "default") {
        if (record.name == pointIdName)
            return LodMethod::First;
        const bool kinds = !record.namedValues.empty() || hasTag(record.tags, "enumeration") ||
                           hasTag(record.tags, "boolean");
        return kinds ? LodMethod::Majority : LodMethod::Average;
    }
    if (name == "average")
        return LodMethod::Average;
    if (name == "minimum")
        return LodMethod::Minimum;
    if (name == "maximum")
        return LodMethod::Maximum;
    if (name == "majority")
        return LodMethod::Majority;
    if (name == "first" || name == "thinout")
        return LodMethod::First;
    throw Failure(
        ErrorCode::Argument,
        "The level-of-detail method \"" + name + "\" of the point attribute \"" + record.name +
            "\" is unknown.",
        "The methods are default, average, minimum, maximum, majority, first and thinout.");
}

}  // namespace tarvo::engine::schema
