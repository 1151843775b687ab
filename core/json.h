// JSON texts as they are: numbers keep their digits, strings their characters, and no depth costs
// stack.
#pragma once

#include "catalogue/jsonmemory.h"

#include <rapidjson/memorystream.h>

#include <string>
#include <string_view>

namespace tarvo::core {

// How texts are read whose numbers shall be written as they came.
constexpr unsigned exactParseFlags =
    rapidjson::kParseIterativeFlag | rapidjson::kParseNumbersAsStringsFlag;
// A writer for what is read so.
template <typename Writer>
class ExactWriter : public Writer {
public:
    using Writer::Writer;
    // The writer itself would put quotes around it.
    bool RawNumber(const char* text, rapidjson::SizeType length, bool) {
        return this->RawValue(text, length, rapidjson::kNumberType);
    }
};

// Reads the text straight into the handler, a writer or the like. Whether it is one JSON document.
template <typename Handler>
bool readJson(std::string_view text, Handler& handler) {
    rapidjson::MemoryStream stream(text.data(), text.size());
    return !rapidjson::Reader().Parse<exactParseFlags>(stream, handler).IsError();
}

bool isJson(std::string_view text);
// The text with line breaks and an indent of four blanks; as it stands where it is no JSON, or
// nests so deep that the blanks would fill the memory.
std::string formattedJson(const std::string& text);
// Takes the white space out of a JSON document and returns true; leaves other texts alone.
bool compactJson(std::string& text);

}  // namespace tarvo::core
