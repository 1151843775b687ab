// The one exception of this room: an operation on a file failed.
#pragma once

#include <stdexcept>
#include <string>
#include <utility>

namespace tarvo::files {

// what(): one line, what failed and for which file; details(): why, and what to do.
class FileError : public std::runtime_error {
public:
    explicit FileError(const std::string& text, std::string details = {})
        : std::runtime_error(text), m_details(std::move(details)) {}

    const std::string& details() const noexcept { return m_details; }

private:
    std::string m_details;
};

}  // namespace tarvo::files
