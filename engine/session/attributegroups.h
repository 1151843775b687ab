// The groups in which attributes are shown, by the default catalogue.
#pragma once

#include "engine/schema/attribute.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace tarvo::engine::session {

struct AttributeGroup {
    std::string name;        // one of the catalogue's groups
    std::uint32_t rank = 0;  // place within the group, from 0
};

// The group of an attribute of a file: the catalogue's; for an attribute that it lacks, the
// coordinates' where a tag tells that, else the last group. The rank counts the attributes of the
// file in that group: those of the catalogue in its order, then the others in the file's. Throws
// Failure(NotFound).
AttributeGroup groupOf(const schema::AttributeTable& table, std::string_view name);

// The same for an attribute of the catalogue, among all of the catalogue.
AttributeGroup defaultGroup(std::string_view name);

}  // namespace tarvo::engine::session
