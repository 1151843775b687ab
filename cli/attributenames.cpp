#include "cli/attributenames.h"

#include "cli/errors.h"
#include "core/suggestion.h"

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

constexpr const char* listAdvice = "\"qrbtool info\" lists the attributes.";

[[noreturn]] void refuse(const Files& files, const std::string& name) {
    throw Failure(files.size() > 1 ? "Neither database has a point attribute \"" + name + "\"."
                                   : "There is no attribute \"" + name + "\" in the file.",
                  core::suggestion(name, listed(files, "")) + listAdvice);
}

// What a pattern is near to begins with something near to its letters.
[[noreturn]] void refusePattern(const Files& files, const std::string& pattern) {
    std::string letters = pattern;
    std::erase_if(letters, [](char c) { return c == '*' || c == '?'; });
    const std::vector<std::string> names = listed(files, "");
    std::vector<std::string> beginnings = names;
    for (const std::string& name : names) {
        beginnings.push_back(name.substr(0, letters.size()));
    }
    std::vector<std::string> near;
    for (const std::string& beginning : core::nearest(letters, beginnings)) {
        for (const std::string& name : names) {
            if (near.size() < 3 && name.starts_with(beginning) &&
                std::ranges::find(near, name) == near.end()) {
                near.push_back(name);
            }
        }
    }
    const std::string question = core::didYouMean(near);
    throw Failure("No attribute matches \"" + pattern + "\".",
                  question + (question.empty() ? "" : "\n") + listAdvice);
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
