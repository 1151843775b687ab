#include "core/filtertext.h"

#include "core/utf8.h"

#include <algorithm>

namespace tarvo::core {

namespace {

using Kind = FilterToken::Kind;

bool isFilterDigit(char c) {
    return c >= '0' && c <= '9';
}
bool isNameStart(char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_' ||
           static_cast<unsigned char>(c) >= 0x80;
}
bool isNamePart(char c) {
    return isNameStart(c) || isFilterDigit(c) || c == '.';
}
bool isFilterBlank(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}
bool isContinuation(char c) {
    return (static_cast<unsigned char>(c) & 0xc0) == 0x80;
}

std::size_t endOfNumber(std::string_view text, std::size_t at) {
    while (at < text.size() &&
           (isNamePart(text[at]) ||
            ((text[at] == '+' || text[at] == '-') && (text[at - 1] == 'e' || text[at - 1] == 'E') &&
             at + 1 < text.size() && isFilterDigit(text[at + 1]))))
        ++at;
    return at;
}

FilterToken tokenAt(std::string_view text, std::size_t at) {
    const char c = text[at];
    const std::string_view rest = text.substr(at);
    const auto symbol = [&](Kind kind, std::size_t length) {
        return FilterToken{kind, at, at + length};
    };
    if (isFilterDigit(c) || (c == '.' && rest.size() > 1 && isFilterDigit(rest[1])))
        return {Kind::NUMBER, at, endOfNumber(text, at + 1)};
    if (isNameStart(c)) {
        std::size_t end = at;
        while (end < text.size() && isNamePart(text[end]))
            ++end;
        return {Kind::NAME, at, end};
    }
    if (c == '"' || c == '\'') {
        const std::size_t end = text.find(c, at + 1);
        return end == std::string_view::npos ? symbol(Kind::OTHER, 1)
                                             : FilterToken{Kind::QUOTED, at, end + 1};
    }
    if (rest.starts_with("&&") || rest.starts_with("||"))
        return symbol(Kind::JUNCTION, 2);
    for (const std::string_view comparison : {"==", "!=", "<=", ">=", "<", ">"})
        if (rest.starts_with(comparison))
            return symbol(Kind::COMPARISON, comparison.size());
    return symbol(c == '(' ? Kind::OPENING : c == ')' ? Kind::CLOSING : Kind::OTHER, 1);
}

bool endsOperand(const FilterToken& token) {
    return token.kind == Kind::COMPARISON || token.kind == Kind::JUNCTION ||
           token.kind == Kind::OPENING || token.kind == Kind::CLOSING;
}

bool isWord(const FilterToken& token) {
    return token.kind == Kind::NAME || token.kind == Kind::NUMBER || token.kind == Kind::QUOTED;
}

// Whether an operator is missing before the token, which is for the library to say.
bool standsBesideWord(std::span<const FilterToken> tokens, std::size_t at) {
    return at > 0 && isWord(tokens[at]) && isWord(tokens[at - 1]);
}

}  // namespace

std::vector<FilterToken> filterTokens(std::string_view filter) {
    std::vector<FilterToken> tokens;
    for (std::size_t at = 0; at < filter.size();) {
        if (isFilterBlank(filter[at])) {
            ++at;
            continue;
        }
        tokens.push_back(tokenAt(filter, at));
        at = tokens.back().end;
    }
    return tokens;
}

std::vector<FilterComparison> comparisonsIn(std::span<const FilterToken> tokens) {
    std::vector<FilterComparison> comparisons;
    std::size_t operand = 0;  // where the one that stands at i begins
    for (std::size_t i = 0; i < tokens.size(); ++i) {
        if (!endsOperand(tokens[i])) {
            operand = standsBesideWord(tokens, i) ? i : operand;
            continue;
        }
        if (tokens[i].kind == Kind::COMPARISON) {
            std::size_t end = i + 1;
            while (end < tokens.size() && !endsOperand(tokens[end]) &&
                   !(end > i + 1 && standsBesideWord(tokens, end)))
                ++end;
            comparisons.push_back({tokens.subspan(operand, i - operand), tokens[i],
                                   tokens.subspan(i + 1, end - i - 1)});
        }
        operand = i + 1;
    }
    return comparisons;
}

std::optional<std::string> attributeIn(std::string_view filter,
                                       std::span<const FilterToken> operand) {
    if (operand.empty() || operand[0].kind != Kind::NAME)
        return std::nullopt;
    const bool isElement = operand.size() == 4 && operand[1].of(filter) == "[" &&
                           operand[2].kind == Kind::NUMBER && operand[3].of(filter) == "]";
    if (operand.size() != 1 && !isElement)
        return std::nullopt;
    return std::string(operand[0].of(filter));
}

bool isNodeSearch(std::string_view filter) {
    const std::vector<FilterToken> tokens = filterTokens(filter.substr(0, 200));
    if (tokens.size() < 2 || tokens[1].kind != Kind::NAME)
        return false;
    return lowerCase(tokens[0].of(filter)) == "find";
}

std::string placeInText(std::string_view text, std::size_t offset) {
    constexpr std::size_t around = 60;  // bytes
    std::size_t first = offset > around ? offset - around : 0;
    while (first < offset && isContinuation(text[first]))
        ++first;
    std::size_t last = std::min(text.size(), offset + around);
    while (last < text.size() && isContinuation(text[last]))
        ++last;
    std::string line(text.substr(first, last - first));
    for (char& c : line)
        if (static_cast<unsigned char>(c) < 0x20 || c == 0x7f)
            c = ' ';
    const std::string cut = first > 0 ? "..." : "";
    const std::size_t before = cut.size() + charactersBefore(text.substr(first), offset - first);
    return cut + line + (last < text.size() ? "..." : "") + "\n" + std::string(before, ' ') + "^";
}

std::size_t charactersBefore(std::string_view text, std::size_t offset) {
    return static_cast<std::size_t>(
        std::ranges::count_if(text.substr(0, offset), [](char c) { return !isContinuation(c); }));
}

}  // namespace tarvo::core
