// JSON texts that the commands write: for programs, and as the settings of transactions.
#pragma once

#include "qrb/defaults/jsonmemory.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tarvo::cli {

// Parse flags and a writer for JSON texts of any depth whose numbers keep their digits.
constexpr unsigned exactParseFlags = rapidjson::kParseIterativeFlag |
                                     rapidjson::kParseNumbersAsStringsFlag |
                                     rapidjson::kParseValidateEncodingFlag;
template <typename Writer>
class ExactWriter : public Writer {
public:
    using Writer::Writer;
    // The writer itself would put quotes around it.
    bool RawNumber(const char* text, rapidjson::SizeType length, bool) {
        return this->RawValue(text, length, rapidjson::kNumberType);
    }
};

// Bytes that are no UTF-8 are replaced, so that what comes out is JSON whatever a file holds.
class JsonText {
public:
    JsonText();

    void beginObject() { m_writer.StartObject(); }
    void endObject() { m_writer.EndObject(); }
    void beginArray() { m_writer.StartArray(); }
    void endArray() { m_writer.EndArray(); }
    void key(std::string_view name);

    void value(std::string_view text);
    void value(const char* text) { value(std::string_view(text)); }
    void value(const std::string& text) { value(std::string_view(text)); }
    void value(std::uint32_t number) { m_writer.Uint(number); }
    void value(std::uint64_t number) { m_writer.Uint64(number); }
    void value(std::int64_t number) { m_writer.Int64(number); }
    void value(bool yes) { m_writer.Bool(yes); }
    void value(double number);  // null for NaN and the infinite
    void value(const std::vector<std::string>& texts);
    // A JSON text as it is.
    void raw(const std::string& json);
    // Texts of numbers as numbers; an empty one is null.
    void numbers(const std::vector<std::string>& texts);

    template <typename T>
    void member(std::string_view name, const T& content) {
        key(name);
        value(content);
    }

    // The text so far, with a line break at the end.
    std::string text() const;
    // The same on one line.
    std::string compact() const;

private:
    rapidjson::StringBuffer m_buffer;
    rapidjson::PrettyWriter<rapidjson::StringBuffer> m_writer;
};

// A JSON text with other white space: indented, or none. Numbers keep their digits. Empty if the
// text is no JSON.
std::string indentedJson(std::string_view json);
std::string compactJson(std::string_view json);

}  // namespace tarvo::cli
