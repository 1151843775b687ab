// JSON texts that the commands write: for programs, and as the settings of transactions.
#pragma once

#include "core/json.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tarvo::cli {

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

// A JSON text indented; empty if the text is no JSON.
std::string indentedJson(const std::string& json);

}  // namespace tarvo::cli
