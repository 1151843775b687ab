#include "engine/session/attributegroups.h"

#include "catalogue/catalogue.h"
#include "engine/base/error.h"
#include "engine/schema/namefilter.h"

#include <utility>

namespace tarvo::engine::session {

namespace {

const std::string& groupName(const schema::AttributeRecord& record) {
    if (const catalogue::AttributeEntry* entry = catalogue::findAttribute(record.name))
        return entry->group;
    for (const char* tag : {"position", "direction", "transform"})
        if (schema::hasTag(record, tag))
            return catalogue::groups().front();
    return catalogue::groups().back();
}

// Sorts the attributes of a group: by the catalogue, then by the file.
std::pair<std::size_t, std::size_t> sortKey(const schema::AttributeTable& table,
                                            std::size_t index) {
    const auto all = catalogue::attributes();
    const catalogue::AttributeEntry* entry = catalogue::findAttribute(table[index].record.name);
    return {entry ? static_cast<std::size_t>(entry - all.data()) : all.size(), index};
}

}  // namespace

AttributeGroup groupOf(const schema::AttributeTable& table, std::string_view name) {
    const int found = table.find(name);
    if (found < 0)
        throw Failure(ErrorCode::NotFound,
                      "The database has no point attribute \"" + std::string(name) + "\".");
    const auto index = static_cast<std::size_t>(found);
    AttributeGroup result{groupName(table[index].record), 0};
    for (std::size_t i = 0; i < table.size(); ++i)
        if (groupName(table[i].record) == result.name && sortKey(table, i) < sortKey(table, index))
            ++result.rank;
    return result;
}

AttributeGroup defaultGroup(std::string_view name) {
    const catalogue::AttributeEntry* found = catalogue::findAttribute(name);
    if (!found)
        throw Failure(ErrorCode::NotFound,
                      "\"" + std::string(name) + "\" is not a default point attribute.");
    AttributeGroup result{found->group, 0};
    for (const catalogue::AttributeEntry& entry : catalogue::attributes()) {
        if (&entry == found)
            break;
        if (entry.group == found->group)
            ++result.rank;
    }
    return result;
}

}  // namespace tarvo::engine::session
