// A regular expression of a JSON schema, searched in time that grows with the text times the size
// of the expression, whatever the two are: texts may come from hostile files.
#pragma once

#include <cstddef>
#include <memory>
#include <string>

namespace re2 {
class RE2;
}

namespace tarvo::engine::validation {

class Pattern {
public:
    // ECMA 262 without back references and looking around, which can't be searched in bounded
    // time. Throws Failure(Argument) for these, for faults and for expressions that are too large.
    explicit Pattern(const std::string& expression);
    ~Pattern();

    // Whether the expression matches anywhere in the text. Bytes that are no UTF-8 count as U+FFFD.
    bool search(const std::string& text) const;
    // Rough number of steps per byte of the text.
    std::size_t size() const { return m_size; }

private:
    std::unique_ptr<re2::RE2> m_regex;
    std::size_t m_size;
};

}  // namespace tarvo::engine::validation
