// JSON texts of metadata items that tell about files.
#pragma once

#include "catalogue/jsonmemory.h"
#include "exchange/table/names.h"

#include <cmath>
#include <functional>
#include <string>

namespace tarvo::exchange {

using JsonWriter = rapidjson::PrettyWriter<rapidjson::StringBuffer>;

inline std::string jsonText(const std::function<void(JsonWriter&)>& write) {
    rapidjson::StringBuffer buffer;
    JsonWriter writer(buffer);
    writer.SetIndent(' ', 4);
    writer.SetFormatOptions(rapidjson::kFormatSingleLineArray);
    write(writer);
    return {buffer.GetString(), buffer.GetSize()};
}

inline void putString(JsonWriter& writer, const std::string& text) {
    const std::string valid = validUtf8(text);
    writer.String(valid.data(), static_cast<rapidjson::SizeType>(valid.size()));
}

inline void putText(JsonWriter& writer, const char* key, const std::string& text) {
    writer.Key(key);
    putString(writer, text);
}

// JSON has no words for numbers that are not finite.
inline void putNumber(JsonWriter& writer, double value) {
    std::isfinite(value) ? writer.Double(value) : writer.Null();
}

template <typename Numbers>
void putArray(JsonWriter& writer, const Numbers& values) {
    writer.StartArray();
    for (const double value : values) {
        putNumber(writer, value);
    }
    writer.EndArray();
}

template <typename Numbers>
void putNumbers(JsonWriter& writer, const char* key, const Numbers& values) {
    writer.Key(key);
    putArray(writer, values);
}

}  // namespace tarvo::exchange
