// Typed reads from JSON values with messages that a user can act on, and the level-of-detail method
// of a point attribute.
#pragma once

#include "catalogue/jsonmemory.h"

#include <stdexcept>
#include <string>

namespace tarvo::core {

// "boolean", "string", "number", "array"; "unknown type" for everything else.
std::string jsonTypeName(const rapidjson::Value& value);

// The contents of a string value, zero bytes included.
std::string jsonStringValue(const rapidjson::Value& value);

// Puts the member of an object into result, else the default. Throws std::runtime_error for a
// member that is no string.
void getJsonStringField(std::string& result, const rapidjson::Value& value,
                        const std::string& fieldName, const std::string& defaultValue);

// A text that should be JSON and is not.
class NoJson : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

struct LodMethod {
    std::string method = "default";
    std::string remainder;  // what follows the JSON value in the text
};

// Reads a bare name, a JSON string or a JSON object with a member "method"; an empty text stands
// for the method "default". Throws NoJson, and std::runtime_error for JSON of another kind.
LodMethod parseLodMethod(const std::string& text);

}  // namespace tarvo::core
