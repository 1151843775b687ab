// The changelog of a database as text, and the entries in it.
#pragma once

#include "qrb/changelog.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tarvo::core {

// The library writes it into files only: by way of a folder that is gone afterwards. Throws Failure
// and qrb::Error.
std::string readChangelog(const qrb::pointcloud::Changelog& changelog);

// From "[#NUMBER]" and the rest of that line to the next entry, or to the end of the text: what
// stands behind the signature belongs to it.
struct ChangelogEntry {
    std::uint64_t number = 0;
    std::size_t begin = 0;
    std::size_t end = 0;
};
std::vector<ChangelogEntry> changelogEntries(std::string_view changelog);

// The entry around a position; none before the first one.
std::optional<ChangelogEntry> changelogEntryAt(std::string_view changelog, std::size_t position);

// Whether a line of the entry's text begins as a signature does, valid or not.
bool hasSignature(std::string_view entry);

}  // namespace tarvo::core
