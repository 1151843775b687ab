// What programs throw, and this room.
#pragma once

#include <stdexcept>
#include <string>
#include <utility>

namespace tarvo::files {

// A failure with one line of text and further lines that say where and what to do.
class Failure : public std::runtime_error {
public:
    explicit Failure(const std::string& text, std::string details = {})
        : std::runtime_error(text), m_details(std::move(details)) {}
    const std::string& details() const noexcept { return m_details; }

private:
    std::string m_details;
};

// The one exception of this room: an operation on a file failed. The text says what and for which
// file, the details why.
class FileError : public Failure {
public:
    using Failure::Failure;
};

}  // namespace tarvo::files
