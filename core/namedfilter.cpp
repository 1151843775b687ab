#include "core/namedfilter.h"

#include "core/filtertext.h"
#include "core/namedvalues.h"
#include "core/suggestion.h"
#include "core/utf8.h"
#include "qrb/qrb.h"

#include <algorithm>
#include <charconv>
#include <map>
#include <string_view>
#include <utility>

namespace tarvo::core {

namespace {

using qrb::pointcloud::PointAttribute;

// Whether the number can stand in a filter as it stands in the definition.
bool isFilterNumber(const std::string& text) {
    const auto tokens = filterTokens(text);
    const bool isNegative = tokens.size() == 2 && tokens[0].of(text) == "-";
    return !tokens.empty() && tokens.back().kind == FilterToken::Kind::NUMBER &&
           (tokens.size() == 1 || isNegative);
}

// The words of one filter.
class Names {
public:
    Names(std::string_view filter, const FilterAttributes& attributes)
        : m_filter(filter), m_attributes(attributes) {}

    // The number that an operand stands for beside the other one; nothing where it is no name.
    std::optional<std::string> numberOf(std::span<const FilterToken> operand,
                                        std::span<const FilterToken> other) {
        const auto attribute = attributeIn(m_filter, other);
        if (!attribute || operand.empty() || valuesOf(*attribute).empty())
            return std::nullopt;
        if (isQuotationMark(operand[0]))
            refuse("The quotation mark at " + positionOf(operand[0]) +
                       " has no second one: one stands at each end of a name.",
                   operand[0]);
        const FilterToken::Kind kind = operand[0].kind;
        if (operand.size() != 1 ||
            (kind != FilterToken::Kind::NAME && kind != FilterToken::Kind::QUOTED))
            return std::nullopt;
        const bool isQuoted = kind == FilterToken::Kind::QUOTED;
        std::string word(operand[0].of(m_filter));
        if (isQuoted)
            word = trimmedQuotes(word);
        else if (definition(word))
            return std::nullopt;
        return numberNamed(word, *attribute, operand[0]);
    }

private:
    static std::string trimmedQuotes(const std::string& quoted) {
        return quoted.substr(1, quoted.size() - 2);
    }

    const std::optional<PointAttribute>& definition(const std::string& name) {
        const auto known = m_definitions.find(name);
        if (known != m_definitions.end())
            return known->second;
        return m_definitions.emplace(name, m_attributes.find(name)).first->second;
    }

    const std::vector<NamedValue>& valuesOf(const std::string& name) {
        const auto known = m_values.find(name);
        if (known != m_values.end())
            return known->second;
        std::vector<NamedValue> values;
        if (const auto& attribute = definition(name))
            values = readNamedValues(attribute->namedValues);
        std::erase_if(values, [](const NamedValue& value) {
            return !value.understood || !isFilterNumber(value.value) || value.name.empty();
        });
        return m_values.emplace(name, std::move(values)).first->second;
    }

    std::string numberNamed(const std::string& word, const std::string& attribute,
                            const FilterToken& place) {
        const std::vector<NamedValue> found = valuesNamed(word, valuesOf(attribute));
        if (found.empty())
            refuseUnknown(word, attribute, place);
        if (found.size() > 1)
            refuseAmbiguous(word, found, place);
        return found[0].value;
    }

    // One that has no second one.
    bool isQuotationMark(const FilterToken& token) const {
        return token.of(m_filter) == "\"" || token.of(m_filter) == "'";
    }

    std::string positionOf(const FilterToken& place) const {
        return "position " + std::to_string(charactersBefore(m_filter, place.begin) + 1);
    }

    // "\"ground\" at position 7"
    std::string placed(const std::string& word, const FilterToken& place) const {
        return "\"" + word.substr(0, 60) + "\" at " + positionOf(place);
    }

    [[noreturn]] void refuse(const std::string& text, const FilterToken& place) const {
        throw qrb::ErrorImpl(QRB_ERROR_FILTER, text, placeInText(m_filter, place.begin));
    }

    [[noreturn]] void refuseUnknown(const std::string& word, const std::string& attribute,
                                    const FilterToken& place) {
        const bool isQuoted = place.kind == FilterToken::Kind::QUOTED;
        std::vector<std::string> names;
        for (const NamedValue& value : valuesOf(attribute))
            names.push_back(value.name);
        if (!isQuoted)
            std::ranges::copy(m_attributes.names(), std::back_inserter(names));
        const std::string question = didYouMean(nearest(word, names));
        refuse(placed(word, place) +
                   (isQuoted
                        ? " is no named value of \"" + attribute + "\"."
                        : " is neither an attribute nor a named value of \"" + attribute + "\".") +
                   (question.empty() ? "" : " " + question),
               place);
    }

    [[noreturn]] void refuseAmbiguous(const std::string& word, const std::vector<NamedValue>& found,
                                      const FilterToken& place) const {
        std::string list;
        for (std::size_t i = 0; i < std::min<std::size_t>(found.size(), 5); ++i)
            list += (list.empty() ? "" : ", ") + found[i].value + " (" + found[i].name + ")";
        refuse(placed(word, place) + " may be one of several values: " + list +
                   (found.size() > 5 ? ", ..." : "") + ". Write the number.",
               place);
    }

    std::string_view m_filter;
    const FilterAttributes& m_attributes;
    std::map<std::string, std::optional<PointAttribute>> m_definitions;
    std::map<std::string, std::vector<NamedValue>> m_values;
};

// "position 17" in the words of a library: where its digits stand, and the number.
struct PositionWord {
    std::size_t begin = 0;
    std::size_t end = 0;
    std::size_t number = 0;
};

std::optional<PositionWord> positionIn(const std::string& text) {
    const std::string_view word = "position ";
    PositionWord result;
    result.begin = text.rfind(word);
    if (result.begin == std::string::npos)
        return std::nullopt;
    result.begin += word.size();
    const char* const end = text.data() + text.size();
    const auto [next, error] = std::from_chars(text.data() + result.begin, end, result.number);
    if (error != std::errc() || result.number == 0)
        return std::nullopt;
    result.end = static_cast<std::size_t>(next - text.data());
    return result;
}

}  // namespace

FilterAttributes FilterAttributes::of(const qrb::pointcloud::PointAttributes& attributes) {
    return {[&attributes](const std::string& name) {
                return attributes.exists(name) ? std::optional(attributes.get(name)) : std::nullopt;
            },
            [&attributes] { return attributes.list(); }};
}

FilterAttributes FilterAttributes::of(const std::vector<PointAttribute>& attributes) {
    return {[&attributes](const std::string& name) {
                const auto found = std::ranges::find(attributes, name, &PointAttribute::name);
                return found == attributes.end() ? std::nullopt : std::optional(*found);
            },
            [&attributes] {
                std::vector<std::string> names;
                for (const PointAttribute& attribute : attributes)
                    names.push_back(attribute.name);
                return names;
            }};
}

NamedFilter::NamedFilter(std::string typed, const FilterAttributes& attributes)
    : m_typed(std::move(typed)) {
    const std::vector<FilterToken> tokens = filterTokens(m_typed);
    Names names(m_typed, attributes);
    std::size_t end = 0;  // of what was read
    const auto replace = [&](std::span<const FilterToken> operand,
                             std::span<const FilterToken> other) {
        const auto number = operand.empty() || operand[0].begin < end
                                ? std::nullopt
                                : names.numberOf(operand, other);
        if (!number)
            return;
        m_numbers += m_typed.substr(end, operand[0].begin - end) + *number;
        end = operand[0].end;
        m_replacements.push_back({operand[0].begin, operand[0].end, *number});
    };
    for (const FilterComparison& comparison : comparisonsIn(tokens)) {
        replace(comparison.left, comparison.right);
        replace(comparison.right, comparison.left);
    }
    m_numbers += m_typed.substr(end);
}

std::size_t NamedFilter::typedOffset(std::size_t offset) const {
    std::size_t begin = 0;  // of the replacement at hand among the numbers
    std::size_t typed = 0;  // what stands behind the last one
    std::size_t read = 0;
    for (const Replacement& one : m_replacements) {
        begin = read + (one.begin - typed);
        if (offset < begin)
            break;
        typed = one.end;
        read = begin + one.number.size();
        if (offset < read)
            return one.begin;
    }
    return std::min(typed + (offset - read), m_typed.size());
}

qrb::ErrorImpl NamedFilter::ofTyped(const qrb::Error& error) const {
    std::string text = error.what();
    const std::string details = error.details() ? error.details() : "";
    const auto position = positionIn(text);
    const bool isPlaced =
        details.ends_with("^") && position && position->number <= m_numbers.size() + 1;
    if (error.code() != QRB_ERROR_FILTER || m_replacements.empty() || !isPlaced)
        return {error.code(), text, details};
    const std::size_t place = typedOffset(position->number - 1);
    text.replace(position->begin, position->end - position->begin,
                 std::to_string(charactersBefore(m_typed, place) + 1));
    return {error.code(), text, placeInText(m_typed, place)};
}

std::string withNumbers(const std::string& filter, const FilterAttributes& attributes) {
    return NamedFilter(filter, attributes).numbers();
}

void takeNamesInFilters(qrb::Pointcloud& database) {
    database.readFilters([](const qrb::pointcloud::PointAttributes& attributes,
                            const std::string& typed, const qrb::FilterCall& call) {
        const NamedFilter filter(typed, FilterAttributes::of(attributes));
        try {
            call(filter.numbers());
        } catch (const qrb::Error& error) {
            throw filter.ofTyped(error);
        }
    });
}

}  // namespace tarvo::core
