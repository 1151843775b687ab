#include "core/changelogentries.h"

#include "core/error.h"
#include "files/temporaryfolder.h"

#include <algorithm>
#include <charconv>
#include <fstream>
#include <iterator>

namespace tarvo::core {

namespace {

constexpr std::string_view entryStart = "[#";
constexpr std::string_view signatureStart = "\nSignature: ";

// The number of the entry that begins here, behind which its line ends.
std::optional<std::uint64_t> numberOfHeader(std::string_view text) {
    text.remove_prefix(entryStart.size());
    std::uint64_t number = 0;
    const auto [next, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    const auto length = static_cast<std::size_t>(next - text.data());
    const bool isHeader = error == std::errc() && length < text.size() && text[length] == ']' &&
                          text.find('\n', length) != std::string_view::npos;
    return isHeader ? std::optional(number) : std::nullopt;
}

}  // namespace

std::string readChangelog(const qrb::pointcloud::Changelog& changelog) {
    const files::TemporaryFolder folder;
    const std::string name = folder.file("changelog.txt");
    changelog.exportToTextfile(name);
    std::ifstream file(name, std::ios::binary);
    std::string text(std::istreambuf_iterator<char>(file), {});
    if (!file)
        throw Failure("The changelog can't be read from \"" + name + "\".");
    return text;
}

std::vector<ChangelogEntry> changelogEntries(std::string_view changelog) {
    std::vector<ChangelogEntry> entries;
    for (std::size_t at = changelog.find(entryStart); at != std::string_view::npos;) {
        const auto number = numberOfHeader(changelog.substr(at));
        if (number) {
            if (!entries.empty())
                entries.back().end = at;
            entries.push_back({*number, at, changelog.size()});
        }
        // A header reaches to the end of its line.
        const std::size_t from = number ? changelog.find('\n', at) : at + 1;
        at = changelog.find(entryStart, from);
    }
    return entries;
}

std::optional<ChangelogEntry> changelogEntryAt(std::string_view changelog, std::size_t position) {
    const std::vector<ChangelogEntry> entries = changelogEntries(changelog);
    const auto behind =
        std::find_if(entries.begin(), entries.end(),
                     [&](const ChangelogEntry& entry) { return entry.begin > position; });
    return behind == entries.begin() ? std::nullopt : std::optional(behind[-1]);
}

bool hasSignature(std::string_view entry) {
    const std::size_t at = entry.find(signatureStart);
    const std::size_t digit = at + signatureStart.size();
    return at != std::string_view::npos && digit < entry.size() &&
           std::string_view("0123456789abcdefABCDEF").find(entry[digit]) != std::string_view::npos;
}

}  // namespace tarvo::core
