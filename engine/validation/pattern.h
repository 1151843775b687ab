// A regular expression of a JSON schema, searched in time that grows with the text times the size
// of the expression, whatever the two are: texts may come from hostile files.
#pragma once

#include <cstddef>
#include <regex>
#include <string>
#include <string_view>

namespace tarvo::engine::validation {

class Pattern {
public:
    // ECMAScript syntax without back references and look-ahead, which can't be searched in bounded
    // time. Throws Failure(Argument) for these, for faults and for expressions that are too large.
    explicit Pattern(const std::string& expression);

    // Whether the expression matches anywhere in the text, UTF-8 of at most maximumText bytes.
    bool search(const std::string& text) const;
    // Rough number of steps per byte of the text.
    std::size_t size() const { return m_size; }

    static constexpr std::size_t maximumText = 1u << 16;

private:
    std::wregex m_regex;  // characters, not the bytes of UTF-8
    std::size_t m_size;
};

}  // namespace tarvo::engine::validation
