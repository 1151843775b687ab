// The changelog: one entry per committed transaction, newest stored first as a chain of blobs.
//
// An entry is plain text with LF line ends:
//   [#2] Title
//   Agent: ...
//   Library: ...
//   Start: ...
//   Stop: ...
//   Comments: ...              (when there are any; further lines are indented)
//   Points: ...                (what changed, and likewise for attributes, metadata, ...)
//   Message: ...               (each that was appended)
//   Signature: HEX             (when the commit was signed: over all lines before it)
// Only an entry's first line holds "[#" and a digit, only the last one begins with "Signature:".
#pragma once

#include "engine/session/signature.h"
#include "engine/session/state.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tarvo::engine::session {

// What a pending transaction did that the states before and after do not tell.
struct ChangeNotes {
    std::uint64_t inserted = 0;
    std::uint64_t updated = 0;
    std::uint64_t removed = 0;
    std::vector<std::string> placeholders;  // items that were given the catalogue's examples
    std::vector<std::string> lines;         // "Topic: text"
    std::vector<std::string> messages;      // appended by the user
};

// The entry of a transaction, unsigned.
std::string changelogEntry(const State& before, const State& after, const ChangeNotes& notes);

// Adds the line "Signature: ..." to an entry.
void signEntry(std::string& entry, const Signer& signer);
// Whether the last line of an entry is its valid signature; with method 0 and no key: whether it
// has one.
bool verifyEntry(std::string_view entry, const Signer& signer);

// The stored form of an entry, which refers to the one before.
std::string changelogBlob(std::string_view entry, const BlobRef& previous);
struct ChangelogLink {
    std::string entry;
    BlobRef previous;
};
ChangelogLink changelogFromBlob(std::string_view blob);  // Failure(Damaged)

}  // namespace tarvo::engine::session
