// What the room throws besides the layer's Error.
#pragma once

#include <stdexcept>
#include <string>
#include <utility>

namespace tarvo::core {

// A failure with one line of text and further lines that say where and what to do.
class Failure : public std::runtime_error {
public:
    explicit Failure(const std::string& text, std::string details = {})
        : std::runtime_error(text), m_details(std::move(details)) {}
    const std::string& details() const { return m_details; }

private:
    std::string m_details;
};

}  // namespace tarvo::core
