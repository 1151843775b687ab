// A JSON schema made self-contained: references are replaced by what they refer to, keywords are
// checked, and what the schema library can't be trusted with goes by names of our own (checks.h).
#pragma once

#include "engine/base/json.h"

#include "engine/base/json.h"

namespace tarvo::engine::validation {

// Throws Failure(Argument) with the JSON pointer of the place for faults, for references outside of
// the schema (nothing is ever loaded), for recursive schemas, for keywords of drafts after 7, and
// for schemas that are too deep or unfold into too much.
rapidjson::Document flattenSchema(const rapidjson::Value& schema);

// Whole numbers beyond 2^63 become doubles: the schema library takes them for negative ones.
void tameNumbers(rapidjson::Value& value);

// A JSON pointer (RFC 6901) extended by one member or element.
std::string childPointer(const std::string& parent, std::string_view name);

}  // namespace tarvo::engine::validation
