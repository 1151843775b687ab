// Which file a name stands for: two names, links and renamed files included, stand for the same
// file exactly when their identities are equal. Names are UTF-8.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace tarvo::files {

struct Identity {
    std::uint64_t device = 0;
    std::uint64_t file = 0;
    bool operator==(const Identity&) const = default;
};

// Of the file that the name leads to, through links; none where there is no such file or it can't
// be looked at. Does not open the file: on most systems closing it again would drop the locks that
// the program holds on it.
std::optional<Identity> identityOf(const std::string& fileName);

// Whether both names stand for one file that exists.
bool sameFile(const std::string& first, const std::string& second);

}  // namespace tarvo::files
