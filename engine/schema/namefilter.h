// Picks attributes by their names or tags.
#pragma once

#include "engine/schema/attribute.h"

#include <string>
#include <string_view>
#include <vector>

namespace tarvo::engine::schema {

// The words of a comma-separated list, without the blanks around them.
std::vector<std::string> tagsOf(const AttributeRecord& record);
bool hasTag(const AttributeRecord& record, std::string_view tag);

// Whether a filter picks the attribute: "#TAG" by a tag, anything else is a pattern for the whole
// name in which * stands for any characters and ? for one. Both are case-sensitive. An empty filter
// picks everything.
bool matchesFilter(const AttributeRecord& record, std::string_view filter);

}  // namespace tarvo::engine::schema
