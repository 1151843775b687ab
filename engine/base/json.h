// JSON texts within limits: what the engine reads and writes as JSON goes through these.
#pragma once

#include "engine/base/error.h"
#include "catalogue/jsonmemory.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace tarvo::engine {

using JsonWriter = rapidjson::Writer<rapidjson::StringBuffer, rapidjson::UTF8<>, rapidjson::UTF8<>,
                                     rapidjson::CrtAllocator, rapidjson::kWriteNanAndInfFlag>;

// The longest text that is parsed, in bytes.
inline constexpr std::size_t maximumJsonSize = 256u << 20;

// Parses a text; depth and size are bounded. Throws Failure(code) that names `what`, with the
// reason and its position in the details.
rapidjson::Document parseJson(std::string_view text, std::string_view what,
                              ErrorCode code = ErrorCode::Argument);

// Reads members of an object; each get throws Failure that names the member when it is missing or
// of another type, each read leaves the value alone when the member is missing.
class JsonObject {
public:
    JsonObject(const rapidjson::Value& value, std::string_view what, ErrorCode code);

    bool has(const char* name) const;
    const rapidjson::Value& get(const char* name) const;
    std::string text(const char* name) const;
    std::uint64_t number(const char* name, std::uint64_t limit = UINT64_MAX) const;
    JsonObject object(const char* name) const;
    const rapidjson::Value& array(const char* name) const;

    void read(const char* name, std::string& value) const;
    void read(const char* name, double& value) const;  // null gives NaN
    void read(const char* name, bool& value) const;
    void read(const char* name, std::uint8_t& value) const;
    void read(const char* name, std::uint32_t& value) const;
    void read(const char* name, std::uint64_t& value) const;

private:
    [[noreturn]] void fail(const char* name, const char* expected) const;

    const rapidjson::Value& m_value;
    std::string m_what;
    ErrorCode m_code;
};

inline void writeText(JsonWriter& writer, std::string_view text) {
    writer.String(text.data(), static_cast<rapidjson::SizeType>(text.size()));
}
inline void writeMember(JsonWriter& writer, const char* name, std::string_view text) {
    writer.Key(name);
    writeText(writer, text);
}
inline void writeMember(JsonWriter& writer, const char* name, std::uint64_t value) {
    writer.Key(name);
    writer.Uint64(value);
}
// NaN is written as null.
void writeMember(JsonWriter& writer, const char* name, double value);

}  // namespace tarvo::engine
