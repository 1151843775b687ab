#include "plugin/parameters.h"

#include "core/error.h"
#include "core/jsonvalues.h"
#include "core/nodelist.h"
#include "core/utf8.h"
#include "files/path.h"
#include "numbers/numbertext.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <filesystem>
#include <system_error>

namespace tarvo::plugin {

namespace {

using core::Failure;
using Json = rapidjson::Value;
using Writer = rapidjson::Writer<rapidjson::StringBuffer>;

[[noreturn]] void refuse(const Parameter& parameter, const std::string& value) {
    std::string takes;
    switch (parameter.type) {
        case ParameterType::INTEGER:
            takes = "a whole number";
            break;
        case ParameterType::NUMBER:
            takes = "a number";
            break;
        case ParameterType::BOOLEAN:
            takes = "true or false";
            break;
        case ParameterType::CHOICE:
            for (const Choice& choice : parameter.choices)
                takes += (takes.empty() ? "\"" : ", \"") + choice.value + "\"";
            takes = "one of " + takes;
            break;
        case ParameterType::ATTRIBUTE:
            takes = "the name of a point attribute";
            break;
        case ParameterType::ATTRIBUTES:
            takes = "names of point attributes";
            break;
        case ParameterType::NODES:
            takes = "node ids such as 1,4-7";
            break;
        default:
            takes = "a text in UTF-8 without zero bytes";
            break;
    }
    const auto textOf = [](const std::optional<double>& number) {
        return number ? numbers::numberText(*number) : std::string();
    };
    const std::string least = textOf(parameter.minimum), most = textOf(parameter.maximum);
    if (!least.empty() && !most.empty())
        takes = takes + " from " + least + " to " + most;
    else if (!least.empty())
        takes = takes + " from " + least;
    else if (!most.empty())
        takes = takes + " up to " + most;
    throw Failure("The parameter \"" + parameter.name + "\" takes " + takes + ".",
                  "It is " + (value.size() > 200 ? value.substr(0, 200) + "..." : value) + ".");
}

rapidjson::Document parsed(const std::string& json) {
    rapidjson::Document document;
    document.Parse<rapidjson::kParseIterativeFlag | rapidjson::kParseFullPrecisionFlag |
                   rapidjson::kParseValidateEncodingFlag>(json.data(), json.size());
    return document;
}

std::string jsonString(const std::string& text) {
    rapidjson::StringBuffer buffer;
    Writer(buffer).String(text.data(), static_cast<rapidjson::SizeType>(text.size()));
    return {buffer.GetString(), buffer.GetSize()};
}

bool isPlainText(const Json& value) {
    return value.IsString() && core::jsonStringValue(value).find('\0') == std::string::npos;
}

bool isAttributeName(const Json& value) {
    return isPlainText(value) && value.GetStringLength() > 0;
}

bool isWithin(const Parameter& parameter, double value) {
    return std::isfinite(value) && !(parameter.minimum && value < *parameter.minimum) &&
           !(parameter.maximum && value > *parameter.maximum);
}

bool isNodeList(const Json& value) {
    if (!isPlainText(value))
        return false;
    try {
        core::parseNodeList(core::jsonStringValue(value));
        return true;
    } catch (const Failure&) {
        return false;
    }
}

bool isTaken(const Parameter& parameter, const Json& value) {
    switch (parameter.type) {
        case ParameterType::INTEGER:
            return value.IsInt64() && isWithin(parameter, static_cast<double>(value.GetInt64()));
        case ParameterType::NUMBER:
            return value.IsNumber() && isWithin(parameter, value.GetDouble());
        case ParameterType::BOOLEAN:
            return value.IsBool();
        case ParameterType::CHOICE:
            return value.IsString() &&
                   std::any_of(parameter.choices.begin(), parameter.choices.end(),
                               [&value](const Choice& choice) {
                                   return choice.value == core::jsonStringValue(value);
                               });
        case ParameterType::ATTRIBUTE:
            return isAttributeName(value);
        case ParameterType::ATTRIBUTES:
            return value.IsArray() && std::all_of(value.Begin(), value.End(), [](const Json& item) {
                       return isAttributeName(item);
                   });
        case ParameterType::NODES:
            return isNodeList(value);
        default:
            return isPlainText(value);
    }
}

bool readInteger(std::string_view text, std::int64_t& number) {
    text = core::trimmed(text);
    const auto read = std::from_chars(text.data(), text.data() + text.size(), number);
    return read.ec == std::errc() && read.ptr == text.data() + text.size();
}

std::string unchecked(const Parameter& parameter, const std::string& text) {
    switch (parameter.type) {
        case ParameterType::INTEGER:
            if (std::int64_t number = 0; readInteger(text, number))
                return std::to_string(number);
            refuse(parameter, "\"" + text + "\"");
        case ParameterType::NUMBER:
            if (const auto number = numbers::readNumber(text))
                return numbers::numberText(*number);
            refuse(parameter, "\"" + text + "\"");
        case ParameterType::BOOLEAN:
            return std::string(core::trimmed(text));
        case ParameterType::ATTRIBUTES: {
            std::string json;
            for (std::string_view rest = text; !rest.empty();) {
                const std::size_t end = std::min(rest.find(','), rest.size());
                const std::string name(core::trimmed(rest.substr(0, end)));
                if (!name.empty())
                    json += (json.empty() ? "" : ",") + jsonString(name);
                rest.remove_prefix(std::min(end + 1, rest.size()));
            }
            return "[" + json + "]";
        }
        default:
            return jsonString(text);
    }
}

// The script runs in a folder of its own.
std::string absoluteName(const std::string& name) {
    std::error_code error;
    const std::filesystem::path path = std::filesystem::absolute(files::pathOf(name), error);
    return name.empty() || error ? name : files::nameOf(path);
}

void writeArgument(Writer& writer, const Parameter& parameter, const Json& value) {
    switch (parameter.type) {
        case ParameterType::NUMBER:
            writer.Double(value.GetDouble());
            break;
        case ParameterType::NODES:
            writer.StartArray();
            for (const std::uint32_t node : core::parseNodeList(core::jsonStringValue(value)))
                writer.Uint(node);
            writer.EndArray();
            break;
        case ParameterType::INPUT_FILE:
        case ParameterType::OUTPUT_FILE:
            writer.String(absoluteName(core::jsonStringValue(value)).c_str());
            break;
        default:
            value.Accept(writer);
    }
}

}  // namespace

std::string valueFromText(const Parameter& parameter, const std::string& text) {
    std::string json = unchecked(parameter, text);
    checkValue(parameter, json);
    return json;
}

std::string textOfValue(const Parameter& parameter, const std::string& json) {
    const rapidjson::Document value = parsed(json);
    if (parameter.type != ParameterType::ATTRIBUTES)
        return value.IsString() ? core::jsonStringValue(value) : json;
    std::string text;
    for (const Json& name : value.GetArray())
        text += (text.empty() ? "" : ", ") + core::jsonStringValue(name);
    return text;
}

void checkValue(const Parameter& parameter, const std::string& json) {
    const rapidjson::Document value = parsed(json);
    if (value.HasParseError() || !isTaken(parameter, value))
        refuse(parameter, json);
}

std::string argumentsOf(const Manifest& manifest, const Values& values) {
    rapidjson::StringBuffer buffer;
    Writer writer(buffer);
    writer.StartObject();
    std::size_t used = 0;
    for (const Parameter& parameter : manifest.parameters) {
        const auto given = values.find(parameter.name);
        if (given == values.end() && !parameter.defaultValue)
            throw Failure("The parameter \"" + parameter.name + "\" has no value.",
                          parameter.description);
        used += given == values.end() ? 0 : 1;
        const std::string& json = given == values.end() ? *parameter.defaultValue : given->second;
        checkValue(parameter, json);
        writer.Key(parameter.name.c_str());
        writeArgument(writer, parameter, parsed(json));
    }
    writer.EndObject();
    if (used == values.size())
        return {buffer.GetString(), buffer.GetSize()};
    for (const auto& value : values) {
        const auto hasName = [&value](const Parameter& one) { return one.name == value.first; };
        if (std::none_of(manifest.parameters.begin(), manifest.parameters.end(), hasName))
            throw Failure("The plugin \"" + manifest.name + "\" has no parameter \"" + value.first +
                          "\".");
    }
    return {buffer.GetString(), buffer.GetSize()};
}

}  // namespace tarvo::plugin
