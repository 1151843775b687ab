#include "common/jsonvalues.h"

#include <rapidjson/error/en.h>
#include <rapidjson/memorystream.h>

#include <memory>
#include <stdexcept>

namespace tarvo::common {

namespace {

constexpr const char* stringTarget = "string value";

// From reader straight to writer, without a document in between.
constexpr unsigned copyFlags =
    rapidjson::kParseNumbersAsStringsFlag | rapidjson::kParseIterativeFlag;

// Writes numbers as they came, where the base would put them in quotes.
template <typename Base>
struct NumbersAsTheyAre : Base {
    using Base::Base;
    bool RawNumber(const char* digits, rapidjson::SizeType length, bool) {
        return Base::RawValue(digits, length, rapidjson::kNumberType);
    }
};

// A text of a few megabytes that nests deep would need terabytes for its indents.
constexpr std::size_t longestFormatted = 256 << 20;

// The bytes that a JSON text has once it is formatted, roughly.
std::size_t formattedSize(const std::string& text) {
    constexpr std::size_t indent = 4;
    std::size_t size = text.size();
    std::size_t depth = 0;
    bool quoted = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (quoted) {
            if (c == '\\')
                ++i;
            quoted = c != '"';
        } else if (c == '"') {
            quoted = true;
        } else if (c == '{' || c == '[') {
            size += indent * ++depth;
        } else if (c == '}' || c == ']') {
            depth -= depth > 0 ? 1 : 0;
            size += indent * depth;
        } else if (c == ',') {
            size += indent * depth;
        }
    }
    return size;
}

template <typename Writer>
bool copyJson(const std::string& text, Writer& writer) {
    rapidjson::Reader reader;
    rapidjson::MemoryStream source(text.data(), text.size());
    return !reader.Parse<copyFlags>(source, writer).IsError();
}

// Takes the members of the top-level object apart while they are read: strings as they are,
// objects written anew.
struct ItemCollector {
    std::vector<std::pair<std::string, std::string>> items;
    bool notAnObject = false;

    bool Null() {
        return scalar([](auto& writer) { return writer.Null(); });
    }
    bool Bool(bool value) {
        return scalar([value](auto& writer) { return writer.Bool(value); });
    }
    bool RawNumber(const char* digits, rapidjson::SizeType length, bool copy) {
        return scalar([=](auto& writer) { return writer.RawNumber(digits, length, copy); });
    }
    // Numbers come as they are written.
    bool Int(int) { return false; }
    bool Uint(unsigned) { return false; }
    bool Int64(std::int64_t) { return false; }
    bool Uint64(std::uint64_t) { return false; }
    bool Double(double) { return false; }
    bool String(const char* text, rapidjson::SizeType length, bool) {
        if (m_depth == 1) {
            items.emplace_back(m_name, std::string(text, length));
            return true;
        }
        return scalar([=](auto& writer) { return writer.String(text, length); });
    }
    bool Key(const char* text, rapidjson::SizeType length, bool) {
        if (m_depth == 1) {
            m_name.assign(text, length);
            return true;
        }
        return m_writer->Key(text, length);
    }
    bool StartObject() {
        return start([](auto& writer) { return writer.StartObject(); }, true);
    }
    bool StartArray() {
        return start([](auto& writer) { return writer.StartArray(); }, false);
    }
    bool EndObject(rapidjson::SizeType) {
        return end([](auto& writer) { return writer.EndObject(); });
    }
    bool EndArray(rapidjson::SizeType) {
        return end([](auto& writer) { return writer.EndArray(); });
    }

private:
    using Writer = NumbersAsTheyAre<rapidjson::Writer<rapidjson::StringBuffer>>;

    template <typename Write>
    bool scalar(Write write) {
        if (m_depth == 0)
            notAnObject = true;
        return m_depth > 1 ? write(*m_writer) : m_depth == 1;
    }
    template <typename Write>
    bool start(Write write, bool object) {
        if (m_depth++ == 0) {
            notAnObject = !object;
            return object;
        }
        if (m_depth == 2) {
            m_buffer.Clear();
            m_writer = std::make_unique<Writer>(m_buffer);
            m_isObject = object;
        }
        return write(*m_writer);
    }
    template <typename Write>
    bool end(Write write) {
        if (--m_depth == 0)
            return true;
        if (!write(*m_writer))
            return false;
        if (m_depth == 1 && m_isObject)
            items.emplace_back(m_name, std::string(m_buffer.GetString(), m_buffer.GetSize()));
        return true;
    }

    int m_depth = 0;
    std::string m_name;
    bool m_isObject = false;
    rapidjson::StringBuffer m_buffer;
    std::unique_ptr<Writer> m_writer;
};

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
        throw std::runtime_error(std::string("Failed to parse JSON string: ") +
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

std::string formattedJson(const std::string& text) {
    if (formattedSize(text) > longestFormatted)
        return text;
    rapidjson::StringBuffer buffer;
    NumbersAsTheyAre<rapidjson::PrettyWriter<rapidjson::StringBuffer>> writer(buffer);
    return copyJson(text, writer) ? std::string(buffer.GetString(), buffer.GetSize()) : text;
}

bool compactJson(std::string& text) {
    rapidjson::StringBuffer buffer;
    NumbersAsTheyAre<rapidjson::Writer<rapidjson::StringBuffer>> writer(buffer);
    if (!copyJson(text, writer))
        return false;
    text.assign(buffer.GetString(), buffer.GetSize());
    return true;
}

std::string writeJsonItems(const std::vector<std::pair<std::string, std::string>>& items) {
    rapidjson::StringBuffer buffer;
    NumbersAsTheyAre<rapidjson::PrettyWriter<rapidjson::StringBuffer>> writer(buffer);
    writer.StartObject();
    for (const auto& [name, value] : items) {
        writer.Key(name.data(), static_cast<rapidjson::SizeType>(name.size()));
        std::string compact = value;
        if (compactJson(compact))
            copyJson(compact, writer);
        else
            writer.String(value.data(), static_cast<rapidjson::SizeType>(value.size()));
    }
    writer.EndObject();
    return {buffer.GetString(), buffer.GetSize()};
}

std::vector<std::pair<std::string, std::string>> readJsonItems(const std::string& text) {
    rapidjson::MemoryStream source(text.data(), text.size());
    ItemCollector collector;
    rapidjson::Reader reader;
    if (reader.Parse<copyFlags>(source, collector).IsError() && !collector.notAnObject)
        throw std::runtime_error(std::string("Failed to parse JSON string: ") +
                                 rapidjson::GetParseError_En(reader.GetParseErrorCode()) +
                                 " Position: " + std::to_string(reader.GetErrorOffset()));
    if (collector.notAnObject)
        throw std::runtime_error("The top-level element is expected to be an object.");
    return std::move(collector.items);
}

}  // namespace tarvo::common
