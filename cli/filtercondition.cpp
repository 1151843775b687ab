#include "cli/filtercondition.h"

#include "core/attributegrid.h"
#include "core/filtertext.h"
#include "core/namedvalues.h"
#include "numbers/numbertext.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <span>
#include <utility>

namespace tarvo::cli {

namespace {

using core::FilterToken;
using numbers::Grid;
using qrb::pointcloud::PointAttribute;
using qrb::pointcloud::PointAttributes;
using Tokens = std::span<const FilterToken>;

// Nesting that is looked into; libraries refuse more than this or run over.
constexpr unsigned mostNesting = 500;

bool endsOperand(const FilterToken& token, std::string_view filter) {
    return token.kind == FilterToken::Kind::NAME || token.kind == FilterToken::Kind::NUMBER ||
           token.kind == FilterToken::Kind::CLOSING || token.of(filter) == "]";
}

std::string tidy(std::string_view filter, Tokens tokens) {
    std::string text;
    bool isTight = true;  // no blank before the next one
    for (std::size_t i = 0; i < tokens.size(); ++i) {
        const std::string_view word = tokens[i].of(filter);
        const bool isSign = word == "-" || word == "+" || word == "!";
        const bool isUnary = isSign && (i == 0 || !endsOperand(tokens[i - 1], filter));
        const bool isClosing = word == ")" || word == "[" || word == "]" || word == ":";
        text += isTight || isClosing ? "" : " ";
        text += word;
        isTight = isUnary || word == "(" || word == "[" || word == ":";
    }
    return text;
}

// Behind the parenthesis that belongs to the one at begin; the end where there is none.
std::size_t behindParenthesis(Tokens tokens, std::size_t begin) {
    std::size_t depth = 0;
    for (std::size_t i = begin; i < tokens.size(); ++i) {
        if (tokens[i].kind == FilterToken::Kind::OPENING) {
            ++depth;
        } else if (tokens[i].kind == FilterToken::Kind::CLOSING && --depth == 0) {
            return i + 1;
        }
    }
    return tokens.size();
}

// Calls visit(TOKENS) with each condition.
template <typename Visit>
void eachCondition(std::string_view filter, Tokens tokens, const Visit& visit,
                   unsigned nesting = 0) {
    std::size_t begin = 0;
    bool hasJunction = false;
    for (std::size_t i = 0; i < tokens.size(); ++i) {
        if (tokens[i].kind == FilterToken::Kind::OPENING) {
            i = behindParenthesis(tokens, i) - 1;
        } else if (tokens[i].kind == FilterToken::Kind::JUNCTION) {
            eachCondition(filter, tokens.subspan(begin, i - begin), visit, nesting);
            begin = i + 1;
            hasJunction = true;
        }
    }
    if (hasJunction) {
        eachCondition(filter, tokens.subspan(begin), visit, nesting);
        return;
    }
    std::size_t inner = 0;  // behind signs "!"
    while (inner < tokens.size() && tokens[inner].of(filter) == "!") {
        ++inner;
    }
    const bool isEnclosed = inner < tokens.size() &&
                            tokens[inner].kind == FilterToken::Kind::OPENING &&
                            behindParenthesis(tokens, inner) == tokens.size();
    if (isEnclosed && tokens.size() > inner + 2 && nesting < mostNesting) {
        eachCondition(filter, tokens.subspan(inner + 1, tokens.size() - inner - 2), visit,
                      nesting + 1);
    } else if (!tokens.empty()) {
        visit(tokens);
    }
}

// The number that an operand is.
std::optional<std::string> numberIn(std::string_view filter, Tokens operand) {
    const bool isNegative = operand.size() == 2 && operand[0].of(filter) == "-";
    if (operand.empty() || operand.back().kind != FilterToken::Kind::NUMBER ||
        (operand.size() > 1 && !isNegative)) {
        return std::nullopt;
    }
    return (isNegative ? "-" : "") + std::string(operand.back().of(filter));
}

// Filters compare with the number as it is written; none is rounded.
std::string placeNote(const std::string& text, double value, const Grid& grid) {
    switch (core::placeOf(value, grid)) {
        case core::ValuePlace::ON_GRID:
            return {};
        case core::ValuePlace::OUTSIDE:
            return text + " lies outside the range " + numbers::numberText(grid.minimum()) +
                   " to " + numbers::numberText(grid.maximum()) + ".";
        case core::ValuePlace::OFF_GRID:
            break;
    }
    const Grid::Bound above = grid.firstAtLeast(value);
    if (above.none || above.code == 0) {
        return {};
    }
    return text + " is compared as it is; stored values next to it are " +
           numbers::numberText(grid.value(above.code - 1)) + " and " +
           numbers::numberText(grid.value(above.code)) + ".";
}

// What is told of numbers; each definition is read once.
class Notes {
public:
    explicit Notes(const PointAttributes& attributes) : m_attributes(attributes) {}

    std::vector<std::string> on(std::string_view filter, Tokens condition) {
        const auto comparisons = core::comparisonsIn(condition);
        if (comparisons.size() != 1) {
            return {};
        }
        auto name = core::attributeIn(filter, comparisons[0].left);
        auto number = numberIn(filter, comparisons[0].right);
        if (!name) {
            name = core::attributeIn(filter, comparisons[0].right);
            number = numberIn(filter, comparisons[0].left);
        }
        const auto value = number ? core::namedNumber(*number) : std::nullopt;
        if (!name || !value || !m_attributes.exists(*name)) {
            return {};
        }
        const Definition& attribute = definition(*name);
        std::vector<std::string> notes;
        const auto named = attribute.names.find(*value);
        if (named != attribute.names.end()) {
            notes.push_back(*number + " is \"" + named->second + "\".");
        }
        const std::string place =
            attribute.grid ? placeNote(*number, value->value, *attribute.grid) : "";
        if (!place.empty()) {
            notes.push_back(place);
        }
        return notes;
    }

private:
    struct Definition {
        std::optional<Grid> grid;
        std::map<core::NamedNumber, std::string> names;
    };

    const Definition& definition(const std::string& name) {
        const auto known = m_definitions.find(name);
        if (known != m_definitions.end()) {
            return known->second;
        }
        const PointAttribute attribute = m_attributes.get(name);
        Definition read{core::gridOf(attribute), {}};
        for (const core::NamedValue& value : core::readNamedValues(attribute.namedValues)) {
            const auto number = value.understood ? core::namedNumber(value.value) : std::nullopt;
            if (number && !value.name.empty()) {
                read.names.emplace(*number, value.name);
            }
        }
        return m_definitions.emplace(name, std::move(read)).first->second;
    }

    const PointAttributes& m_attributes;
    std::map<std::string, Definition> m_definitions;
};

}  // namespace

std::string tidyFilter(const std::string& filter) {
    return tidy(filter, core::filterTokens(filter));
}

std::vector<FilterCondition> conditionsOf(const std::string& filter,
                                          const PointAttributes& attributes) {
    const std::vector<FilterToken> tokens = core::filterTokens(filter);
    std::vector<FilterCondition> conditions;
    Notes notes(attributes);
    eachCondition(filter, tokens, [&](Tokens condition) {
        const std::size_t begin = condition.front().begin;
        conditions.push_back({tidy(filter, condition),
                              filter.substr(begin, condition.back().end - begin),
                              notes.on(filter, condition)});
    });
    return conditions;
}

std::vector<std::string> attributesIn(const std::string& filter,
                                      const PointAttributes& attributes) {
    std::vector<std::string> names;
    bool isProperty = false;  // behind a colon
    for (const FilterToken& token : core::filterTokens(filter)) {
        const std::string word(token.of(filter));
        if (token.kind == FilterToken::Kind::NAME && !isProperty &&
            std::ranges::find(names, word) == names.end() && attributes.exists(word)) {
            names.push_back(word);
        }
        isProperty = word == ":";
    }
    return names;
}

}  // namespace tarvo::cli
