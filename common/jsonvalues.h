// Typed reads from JSON values with messages that a user can act on, the level-of-detail method of
// a point attribute, and JSON texts made readable.
#pragma once

#include "qrb/defaults/jsonmemory.h"

#include <string>
#include <utility>
#include <vector>

namespace tarvo::common {

// "boolean", "string", "number", "array"; "unknown type" for everything else.
std::string jsonTypeName(const rapidjson::Value& value);

// The contents of a string value, zero bytes included.
std::string jsonStringValue(const rapidjson::Value& value);

// Puts the member of an object into result, else the default. Throws std::runtime_error for a
// member that is no string.
void getJsonStringField(std::string& result, const rapidjson::Value& value,
                        const std::string& fieldName, const std::string& defaultValue);

struct LodMethod {
    std::string method = "default";
    std::string remainder;  // what follows the JSON value in the text
};

// Reads a bare name, a JSON string or a JSON object with a member "method"; an empty text stands
// for the method "default". Throws std::runtime_error for other texts.
LodMethod parseLodMethod(const std::string& text);

// Both write numbers as they are and cost no stack, however deep the text nests.
// The text with line breaks and an indent of four blanks; as it stands where it is no JSON, or
// nests so deep that the blanks would fill the memory.
std::string formattedJson(const std::string& text);
// Takes the blanks out of a JSON document and returns true; leaves other texts alone.
bool compactJson(std::string& text);

// Objects of named values, as files: each value that is a JSON document stands as that, any other
// as a string. Indented.
std::string writeJsonItems(const std::vector<std::pair<std::string, std::string>>& items);
// The members of such an object that are strings (their text) or objects (as JSON text), in the
// order of the file; the others are left out. Throws std::runtime_error for other texts.
std::vector<std::pair<std::string, std::string>> readJsonItems(const std::string& text);

}  // namespace tarvo::common
