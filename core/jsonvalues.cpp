#include "core/jsonvalues.h"

#include <rapidjson/error/en.h>

namespace tarvo::core {

namespace {

constexpr const char* stringTarget = "string value";

}  // namespace

std::string jsonTypeName(const rapidjson::Value& value) {
    if (value.IsBool())
        return "boolean";
    if (value.IsString())
        return "string";
    if (value.IsNumber())
        return "number";
    if (value.IsArray())
        return "array";
    return "unknown type";
}

std::string jsonStringValue(const rapidjson::Value& value) {
    return {value.GetString(), value.GetStringLength()};
}

void getJsonStringField(std::string& result, const rapidjson::Value& value,
                        const std::string& fieldName, const std::string& defaultValue) {
    result = defaultValue;
    if (!value.IsObject())
        return;
    const rapidjson::Value name(rapidjson::StringRef(fieldName.data(), fieldName.size()));
    const auto member = value.FindMember(name);
    if (member == value.MemberEnd())
        return;
    if (!member->value.IsString())
        throw std::runtime_error("Failed to convert field \"" + fieldName + "\" from " +
                                 jsonTypeName(member->value) + " to " + stringTarget);
    result = jsonStringValue(member->value);
}

LodMethod parseLodMethod(const std::string& text) {
    std::string json = text;
    if (text.empty())
        json = "\"default\"";
    else if (text.find_first_of("{}[]\"\\") == std::string::npos)
        json = "\"" + text + "\"";
    rapidjson::Document document;
    // Iterative: a text of very many brackets must not exhaust the stack.
    constexpr unsigned flags = rapidjson::kParseStopWhenDoneFlag | rapidjson::kParseIterativeFlag;
    rapidjson::StringStream stream(json.c_str());
    document.ParseStream<flags>(stream);
    if (document.HasParseError())
        throw NoJson(std::string("Failed to parse JSON string: ") +
                     rapidjson::GetParseError_En(document.GetParseError()) +
                     " Position: " + std::to_string(document.GetErrorOffset()));
    if (!document.IsString() && !document.IsObject())
        throw std::runtime_error("JSON object or JSON string expected");
    LodMethod result;
    if (document.IsObject())
        getJsonStringField(result.method, document, "method", result.method);
    else
        result.method = jsonStringValue(document);
    result.remainder = json.substr(stream.Tell());
    return result;
}

}  // namespace tarvo::core
