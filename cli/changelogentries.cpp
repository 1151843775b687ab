#include "cli/changelogentries.h"

namespace tarvo::cli {

namespace {

// Whether an entry begins here, at the begin of a line.
bool beginsEntry(std::string_view line) {
    return line.size() > 2 && line[0] == '[' && line[1] == '#' && line[2] >= '0' && line[2] <= '9';
}

}  // namespace

std::string changelogEntryOf(std::string_view changelog, std::uint32_t number) {
    const std::string start = "[#" + std::to_string(number) + "]";
    std::string_view found;
    bool within = false;
    std::size_t begin = 0;
    for (std::size_t at = 0; at < changelog.size();) {
        const std::string_view line = changelog.substr(at);
        if (beginsEntry(line)) {
            within = line.substr(0, start.size()) == start;
            begin = at;
        }
        const std::size_t end = changelog.find('\n', at);
        at = end == std::string_view::npos ? changelog.size() : end + 1;
        if (within) {
            found = changelog.substr(begin, at - begin);
        }
    }
    return std::string(found);
}

}  // namespace tarvo::cli
