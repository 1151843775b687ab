#include "plugin/manifest.h"

#include "core/error.h"
#include "core/jsonvalues.h"
#include "plugin/parameters.h"

#include <rapidjson/error/en.h>

#include <algorithm>
#include <array>
#include <set>
#include <utility>

namespace tarvo::plugin {

namespace {

using core::Failure;
using Json = rapidjson::Value;

constexpr std::array<std::pair<ParameterType, const char*>, 11> typeWords{{
    {ParameterType::TEXT, "text"},
    {ParameterType::INTEGER, "integer"},
    {ParameterType::NUMBER, "number"},
    {ParameterType::BOOLEAN, "boolean"},
    {ParameterType::CHOICE, "choice"},
    {ParameterType::ATTRIBUTE, "attribute"},
    {ParameterType::ATTRIBUTES, "attributes"},
    {ParameterType::FILTER, "filter"},
    {ParameterType::NODES, "nodes"},
    {ParameterType::INPUT_FILE, "input file"},
    {ParameterType::OUTPUT_FILE, "output file"},
}};

// An object of the manifest whose members are taken one by one.
class Members {
public:
    Members(const Json& object, std::string place) : m_object(object), m_place(std::move(place)) {
        if (!object.IsObject())
            fail(m_place + " is no object.");
        std::set<std::string> names;
        for (const auto& member : object.GetObject())
            if (!names.insert(core::jsonStringValue(member.name)).second)
                fail(of(core::jsonStringValue(member.name)) + " stands there twice.");
    }

    const Json* find(const char* name) {
        m_taken.insert(name);
        const auto member = m_object.FindMember(name);
        return member == m_object.MemberEnd() ? nullptr : &member->value;
    }

    std::string text(const char* name, bool required = false) {
        const Json* const value = find(name);
        if (value == nullptr && !required)
            return {};
        if (value == nullptr || !value->IsString())
            fail(of(name) + (value == nullptr ? " is missing." : " is no string."));
        std::string result = core::jsonStringValue(*value);
        if (result.find('\0') != std::string::npos || (required && result.empty()))
            fail(of(name) + (result.empty() ? " is empty." : " has a zero byte."));
        return result;
    }

    std::optional<double> number(const char* name) {
        const Json* const value = find(name);
        if (value == nullptr)
            return std::nullopt;
        if (!value->IsNumber())
            fail(of(name) + " is no number.");
        return value->GetDouble();
    }

    // Names that nobody has taken are mistyped.
    void requireNoMore() const {
        for (const auto& member : m_object.GetObject())
            if (const std::string name = core::jsonStringValue(member.name);
                !m_taken.contains(name))
                fail(of(name) + " is not known.");
    }

    std::string of(const std::string& name) const { return m_place + ": \"" + name + "\""; }
    [[noreturn]] static void fail(const std::string& text) {
        throw Failure("Wrong plugin manifest.", text);
    }

private:
    const Json& m_object;
    std::string m_place;
    std::set<std::string> m_taken;
};

bool isLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

bool isPluginName(const std::string& name) {
    return !name.empty() && name.size() <= 100 && name[0] >= 'a' && name[0] <= 'z' &&
           std::all_of(name.begin(), name.end(),
                       [](char c) { return (c >= 'a' && c <= 'z') || isDigit(c) || c == '-'; });
}

bool isParameterName(const std::string& name) {
    return !name.empty() && name.size() <= 100 && isLetter(name[0]) &&
           std::all_of(name.begin(), name.end(),
                       [](char c) { return isLetter(c) || isDigit(c) || c == '_'; });
}

std::string textOfJson(const Json& value) {
    rapidjson::StringBuffer buffer;
    rapidjson::Writer<rapidjson::StringBuffer> writer(buffer);
    value.Accept(writer);
    return {buffer.GetString(), buffer.GetSize()};
}

// Of the kind that some parameter takes, so that it is flat.
bool isPlain(const Json& value) {
    return !value.IsObject() &&
           (!value.IsArray() || std::all_of(value.Begin(), value.End(),
                                            [](const Json& item) { return item.IsString(); }));
}

ParameterType typeOf(Members& members) {
    const std::string word = members.text("type", true);
    for (const auto& [type, name] : typeWords)
        if (word == name)
            return type;
    std::string known;
    for (const auto& [type, name] : typeWords)
        known += (known.empty() ? "\"" : ", \"") + std::string(name) + "\"";
    Members::fail(members.of("type") + " is \"" + word + "\". The types are " + known + ".");
}

std::vector<Choice> choicesOf(Members& members) {
    const Json* const value = members.find("choices");
    if (value == nullptr || !value->IsArray() || value->Empty())
        Members::fail(members.of("choices") + " has to be an array of one choice at least.");
    std::vector<Choice> choices;
    for (const Json& item : value->GetArray()) {
        Choice choice;
        if (item.IsString()) {
            choice.value = choice.title = core::jsonStringValue(item);
        } else {
            Members parts(item, members.of("choices"));
            choice.value = parts.text("value", true);
            choice.title = parts.text("title");
            parts.requireNoMore();
            if (choice.title.empty())
                choice.title = choice.value;
        }
        choices.push_back(std::move(choice));
    }
    return choices;
}

Parameter readParameter(const Json& json, std::size_t number) {
    Members members(json, "Parameter " + std::to_string(number));
    Parameter parameter;
    parameter.name = members.text("name", true);
    if (!isParameterName(parameter.name))
        Members::fail(members.of("name") + " is \"" + parameter.name +
                      "\". A name has letters, digits and \"_\", and begins with a letter.");
    parameter.title = members.text("title");
    if (parameter.title.empty())
        parameter.title = parameter.name;
    parameter.description = members.text("description");
    parameter.type = typeOf(members);
    if (parameter.type == ParameterType::INTEGER || parameter.type == ParameterType::NUMBER) {
        parameter.unit = members.text("unit");
        parameter.minimum = members.number("minimum");
        parameter.maximum = members.number("maximum");
        if (parameter.minimum && parameter.maximum && *parameter.minimum > *parameter.maximum)
            Members::fail(members.of("minimum") + " is greater than \"maximum\".");
    }
    if (parameter.type == ParameterType::CHOICE)
        parameter.choices = choicesOf(members);
    if (parameter.type == ParameterType::INPUT_FILE || parameter.type == ParameterType::OUTPUT_FILE)
        parameter.suffix = members.text("suffix");
    if (const Json* const value = members.find("default")) {
        if (!isPlain(*value))
            Members::fail(members.of("default") + " is no value of a parameter.");
        parameter.defaultValue = textOfJson(*value);
        try {
            checkValue(parameter, *parameter.defaultValue);
        } catch (const Failure& failure) {
            Members::fail(members.of("default") + ": " + failure.what() + " " + failure.details());
        }
    }
    members.requireNoMore();
    return parameter;
}

}  // namespace

const char* wordOf(ParameterType type) {
    return std::find_if(typeWords.begin(), typeWords.end(),
                        [type](const auto& entry) { return entry.first == type; })
        ->second;
}

Manifest readManifest(std::string_view json) {
    rapidjson::Document document;
    document.Parse<rapidjson::kParseIterativeFlag | rapidjson::kParseFullPrecisionFlag |
                   rapidjson::kParseValidateEncodingFlag>(json.data(), json.size());
    if (document.HasParseError())
        Members::fail(std::string("No JSON: ") +
                      rapidjson::GetParseError_En(document.GetParseError()) + " At byte " +
                      std::to_string(document.GetErrorOffset()) + ".");
    Members members(document, "The manifest");
    Manifest manifest;
    manifest.name = members.text("name", true);
    if (!isPluginName(manifest.name))
        Members::fail(members.of("name") + " is \"" + manifest.name +
                      "\". A name has small letters, digits and \"-\", and begins with a letter.");
    manifest.title = members.text("title", true);
    manifest.description = members.text("description");
    manifest.version = members.text("version", true);
    if (std::string script = members.text("script"); !script.empty())
        manifest.script = std::move(script);
    if (!manifest.script.ends_with(".py"))
        Members::fail(members.of("script") + " is no Python script: its name ends with \".py\".");
    if (const Json* const writes = members.find("writes")) {
        if (!writes->IsBool())
            Members::fail(members.of("writes") + " is neither true nor false.");
        manifest.writes = writes->GetBool();
    }
    if (const Json* const parameters = members.find("parameters")) {
        if (!parameters->IsArray())
            Members::fail(members.of("parameters") + " is no array.");
        std::set<std::string> names;
        for (const Json& parameter : parameters->GetArray()) {
            manifest.parameters.push_back(readParameter(parameter, manifest.parameters.size() + 1));
            if (!names.insert(manifest.parameters.back().name).second)
                Members::fail("Two parameters have the name \"" + manifest.parameters.back().name +
                              "\".");
        }
    }
    members.requireNoMore();
    return manifest;
}

}  // namespace tarvo::plugin
