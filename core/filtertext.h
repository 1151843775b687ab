// Filter expressions as texts: their words, and what stands beside their comparisons. What they
// mean is for the library to say, and so is what is wrong with them.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tarvo::core {

struct FilterToken {
    enum class Kind {
        NAME,  // letters of any alphabet, digits, "_" and "."; begins with no digit
        NUMBER,
        QUOTED,  // in " or ', which have no meaning to the library; with them
        COMPARISON,
        JUNCTION,  // "&&" and "||"
        OPENING,   // "("
        CLOSING,
        OTHER
    };

    Kind kind = Kind::OTHER;
    std::size_t begin = 0;  // bytes of the filter
    std::size_t end = 0;

    std::string_view of(std::string_view filter) const { return filter.substr(begin, end - begin); }
};

// Those of any text, blanks left out. A quotation mark without its fellow is OTHER.
std::vector<FilterToken> filterTokens(std::string_view filter);

// The operands of a comparison: tokens up to the next junction, parenthesis or comparison, and up
// to where an operator is missing.
struct FilterComparison {
    std::span<const FilterToken> left;
    FilterToken operation;
    std::span<const FilterToken> right;
};

// tokens: they must outlive the result.
std::vector<FilterComparison> comparisonsIn(std::span<const FilterToken> tokens);

// The name of the attribute where an operand is "NAME" or "NAME[I]" and nothing else.
std::optional<std::string> attributeIn(std::string_view filter,
                                       std::span<const FilterToken> operand);

// Whether it asks for a node, such as "find fullest leaf", rather than for points.
bool isNodeSearch(std::string_view filter);

// The part of a text around a byte of it, and below it a caret under its character: two lines, as
// the library tells the place of a mistake.
std::string placeInText(std::string_view text, std::size_t offset);

// Characters up to a byte of a text, which is the number of those before it.
std::size_t charactersBefore(std::string_view text, std::size_t offset);

}  // namespace tarvo::core
