#include "engine/schema/namefilter.h"

#include <algorithm>

namespace tarvo::engine::schema {

namespace {

// On a mismatch only the last * takes one character more: that is enough, and never exponential.
bool matchesPattern(std::string_view text, std::string_view pattern) {
    std::size_t at = 0;
    std::size_t next = 0;
    std::size_t star = std::string_view::npos;
    std::size_t resume = 0;
    while (at < text.size()) {
        if (next < pattern.size() && pattern[next] == '*') {
            star = next++;
            resume = at;
        } else if (next < pattern.size() && (pattern[next] == '?' || pattern[next] == text[at])) {
            ++next;
            ++at;
        } else if (star != std::string_view::npos) {
            next = star + 1;
            at = ++resume;
        } else {
            return false;
        }
    }
    return pattern.find_first_not_of('*', next) == std::string_view::npos;
}

}  // namespace

std::vector<std::string> tagsOf(const AttributeRecord& record) {
    std::vector<std::string> result;
    const std::string& tags = record.tags;
    for (std::size_t begin = 0; begin < tags.size();) {
        const std::size_t end = std::min(tags.find(',', begin), tags.size());
        const std::size_t first = std::min(tags.find_first_not_of(" \t\r\n", begin), end);
        if (first < end) {
            const std::size_t last = tags.find_last_not_of(" \t\r\n", end - 1);
            result.push_back(tags.substr(first, last + 1 - first));
        }
        begin = end + 1;
    }
    return result;
}

bool hasTag(const AttributeRecord& record, std::string_view tag) {
    const std::vector<std::string> tags = tagsOf(record);
    return std::find(tags.begin(), tags.end(), tag) != tags.end();
}

bool matchesFilter(const AttributeRecord& record, std::string_view filter) {
    if (filter.empty())
        return true;
    if (filter[0] == '#')
        return hasTag(record, filter.substr(1));
    return matchesPattern(record.name, filter);
}

}  // namespace tarvo::engine::schema
