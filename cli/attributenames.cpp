#include "cli/attributenames.h"

#include "cli/errors.h"
#include "cli/suggestion.h"

#include <algorithm>
#include <set>

namespace tarvo::cli {

namespace {

using Files = std::initializer_list<const qrb::pointcloud::PointAttributes*>;

bool existsInAny(const Files& files, const std::string& name) {
    return std::any_of(files.begin(), files.end(),
                       [&](const auto* attributes) { return attributes->exists(name); });
}

// filter: as the library takes it; empty: all.
std::vector<std::string> listed(const Files& files, const std::string& filter) {
    std::vector<std::string> names;
    for (const auto* const attributes : files) {
        for (const std::string& name : attributes->listFiltered(filter)) {
            if (std::ranges::find(names, name) == names.end()) {
                names.push_back(name);
            }
        }
    }
    return names;
}

[[noreturn]] void refuse(const Files& files, const std::string& text, std::string name) {
    std::erase_if(name, [](char c) { return c == '*' || c == '?'; });
    throw Failure(text,
                  suggestion(name, listed(files, "")) + "\"qrbtool info\" lists the attributes.");
}

}  // namespace

std::vector<std::string> attributesNamed(Files attributes, const std::vector<std::string>& names) {
    std::vector<std::string> result;
    std::set<std::string> brought;  // by patterns
    for (const std::string& text : names) {
        const std::size_t bracket = text.find('[');
        const std::string name = text.substr(0, bracket);
        const std::string element = bracket == std::string::npos ? "" : text.substr(bracket);
        if (existsInAny(attributes, name)) {
            if (!brought.contains(text)) {
                result.push_back(text);
            }
            continue;
        }
        if (name.find_first_of("*?") == std::string::npos) {
            refuse(attributes, name);
        }
        // The library takes what begins with this for a tag.
        const auto matches =
            name.front() == '#' ? std::vector<std::string>() : listed(attributes, name);
        if (matches.empty()) {
            refusePattern(attributes, name);
        }
        for (const std::string& match : matches) {
            if (std::ranges::find(result, match + element) == result.end()) {
                result.push_back(match + element);
                brought.insert(match + element);
            }
        }
    }
    return result;
}

}  // namespace tarvo::cli
