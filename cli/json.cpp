#include "cli/json.h"

#include "exchange/table/names.h"

#include <cmath>

namespace tarvo::cli {

namespace {

rapidjson::SizeType lengthOf(std::string_view text) {
    return static_cast<rapidjson::SizeType>(text.size());
}

}  // namespace

JsonText::JsonText() : m_writer(m_buffer) {
    m_writer.SetIndent(' ', 4);
}

void JsonText::key(std::string_view name) {
    const std::string valid = exchange::validUtf8(name);
    m_writer.Key(valid.data(), lengthOf(valid));
}

void JsonText::value(std::string_view text) {
    const std::string valid = exchange::validUtf8(text);
    m_writer.String(valid.data(), lengthOf(valid));
}

void JsonText::value(double number) {
    if (std::isfinite(number)) {
        m_writer.Double(number);
    } else {
        m_writer.Null();
    }
}

void JsonText::value(const std::vector<std::string>& texts) {
    m_writer.SetFormatOptions(rapidjson::kFormatSingleLineArray);
    beginArray();
    for (const std::string& text : texts) {
        value(text);
    }
    endArray();
    m_writer.SetFormatOptions(rapidjson::kFormatDefault);
}

void JsonText::raw(const std::string& json) {
    m_writer.RawValue(json.data(), json.size(), rapidjson::kObjectType);
}

void JsonText::numbers(const std::vector<std::string>& texts) {
    m_writer.SetFormatOptions(rapidjson::kFormatSingleLineArray);
    beginArray();
    for (const std::string& text : texts) {
        if (text.empty()) {
            m_writer.Null();
        } else {
            m_writer.RawValue(text.data(), text.size(), rapidjson::kNumberType);
        }
    }
    endArray();
    m_writer.SetFormatOptions(rapidjson::kFormatDefault);
}

std::string JsonText::text() const {
    return std::string(m_buffer.GetString(), m_buffer.GetSize()) + "\n";
}

std::string JsonText::compact() const {
    std::string text(m_buffer.GetString(), m_buffer.GetSize());
    core::compactJson(text);
    return text;
}

std::string indentedJson(const std::string& json) {
    return core::isJson(json) ? core::formattedJson(json) : "";
}

}  // namespace tarvo::cli
