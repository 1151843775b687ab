#include "view/colouring.h"

#include "core/error.h"
#include "core/namedvalues.h"
#include "core/suggestion.h"
#include "core/valueformat.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace tarvo::view {

namespace {

using qrb::pointcloud::DataType;
using qrb::pointcloud::PointAttribute;

constexpr const char* colourAttribute = "tarvo.rgba";
constexpr double none = std::numeric_limits<double>::quiet_NaN();
// Of all attributes together; more are of no use in a list.
constexpr std::size_t mostChoices = 500;

struct WordChoice {
    const char* word;
    ColourBy by;
};
constexpr WordChoice wordChoices[] = {{"rgb", ColourBy::TrueColour},
                                      {"height", ColourBy::Height},
                                      {"level", ColourBy::Level},
                                      {"transaction", ColourBy::Transaction}};

std::string elementOf(const PointAttribute& attribute, std::uint32_t element) {
    return core::elementNames(attribute.name, attribute.length)[element];
}

std::string heightElement(const qrb::Pointcloud& database) {
    return database.pointAttributes().primaryAttributeName() + "[2]";
}

bool hasHeight(const qrb::Pointcloud& database) {
    const auto& attributes = database.pointAttributes();
    return attributes.get(attributes.primaryAttributeName()).length > 2;
}

bool hasColours(const qrb::Pointcloud& database) {
    return database.pointAttributes().exists(colourAttribute) &&
           database.pointAttributes().get(colourAttribute).length >= 3;
}

// Of valid values, among all points; none: there are none.
std::optional<drawing::Range> rangeOf(const qrb::Pointcloud& database, const std::string& element) {
    const qrb::pointcloud::QueryStat index = database.stat();
    const std::uint32_t root = index.root().id;
    if (root == 0)
        return std::nullopt;
    drawing::Range range;
    index.minimum(root, element, DataType::DOUBLE, &range.low, true);
    index.maximum(root, element, DataType::DOUBLE, &range.high, true);
    if (!std::isfinite(range.low) || !std::isfinite(range.high))
        return std::nullopt;
    return range;
}

// Scans without a camera often have colours that are all black.
bool areColoursDifferent(const qrb::Pointcloud& database) {
    for (const std::string& name : core::elementNames(
             colourAttribute, database.pointAttributes().get(colourAttribute).length, 3))
        if (const auto range = rangeOf(database, name); range && range->low < range->high)
            return true;
    return false;
}

bool isPossible(const qrb::Pointcloud& database, ColourBy by) {
    return by == ColourBy::Height       ? hasHeight(database)
           : by == ColourBy::TrueColour ? hasColours(database)
                                        : true;
}

ColourBy kindOf(const PointAttribute& attribute) {
    return attribute.namedValues.empty() ? ColourBy::Number : ColourBy::Class;
}

// Of the values that points may have, as several share a colour.
std::vector<LegendEntry> namesOf(const PointAttribute& attribute,
                                 const std::optional<drawing::Range>& range) {
    std::vector<core::NamedValue> values = core::readNamedValues(attribute.namedValues);
    core::sortNamedValues(values);
    std::vector<LegendEntry> entries;
    for (const core::NamedValue& value : values)
        if (const auto number = core::namedNumber(value.value);
            value.understood && number && range && number->value >= range->low &&
            number->value <= range->high)
            entries.push_back({drawing::paletteColour(static_cast<std::int64_t>(
                                   std::clamp(number->value, -9e18, 9e18))),
                               value.value + " " + value.name});
    return entries;
}

}  // namespace

std::string colourText(const qrb::Pointcloud& database, const ColourChoice& choice) {
    for (const WordChoice& word : wordChoices)
        if (word.by == choice.by)
            return word.word;
    return elementOf(database.pointAttributes().get(choice.attribute), choice.element);
}

std::vector<ColourChoice> colourChoices(const qrb::Pointcloud& database) {
    std::vector<ColourChoice> choices;
    for (const WordChoice& word : wordChoices)
        if (isPossible(database, word.by))
            choices.push_back({word.by, {}, 0, {}});
    if (choices.front().by == ColourBy::TrueColour && !areColoursDifferent(database))
        std::rotate(choices.begin(), choices.begin() + 1, choices.end());
    for (const std::string& name : database.pointAttributes().list()) {
        const PointAttribute attribute = database.pointAttributes().get(name);
        for (std::uint32_t i = 0; i < attribute.length && choices.size() < mostChoices; ++i)
            choices.push_back({kindOf(attribute), name, i, {}});
    }
    return choices;
}

ColourChoice readColour(const qrb::Pointcloud& database, const std::string& text) {
    std::vector<std::string> known;
    for (const WordChoice& word : wordChoices) {
        if (!isPossible(database, word.by))
            continue;
        if (text == word.word)
            return {word.by, {}, 0, {}};
        known.emplace_back(word.word);
    }
    for (const std::string& name : database.pointAttributes().list()) {
        const PointAttribute attribute = database.pointAttributes().get(name);
        const std::vector<std::string> elements = core::elementNames(name, attribute.length);
        for (std::uint32_t i = 0; i < attribute.length; ++i)
            if (text == elements[i] || (i == 0 && text == name))
                return {kindOf(attribute), name, i, {}};
        known.push_back(name);
    }
    std::string words;
    for (const WordChoice& word : wordChoices)
        if (isPossible(database, word.by))
            words += std::string(words.empty() ? "" : ", ") + word.word;
    const std::string advice = core::suggestion(text, known);
    throw core::Failure("The points of the database have no \"" + text + "\" to be coloured by.",
                        advice + "There are " + words +
                            ", and the names of attributes, with the number of an element behind "
                            "them where it is another than the first: \"a[1]\".");
}

Colouring::Colouring(const qrb::Pointcloud& database, const NodeTree& tree,
                     const ColourChoice& choice)
    : m_choice(choice), m_invalid(none) {
    switch (choice.by) {
        case ColourBy::Height: {
            if (!hasHeight(database))
                throw core::Failure("The points of the database have no height.",
                                    "Choose another colour.");
            m_unit = tree.space().unit;
            setRange(database, heightElement(database));
            break;
        }
        case ColourBy::TrueColour: {
            if (!hasColours(database))
                throw core::Failure("The points of the database have no colours of their own.",
                                    "Choose another colour.");
            const PointAttribute attribute = database.pointAttributes().get(colourAttribute);
            const std::vector<std::string> names =
                core::elementNames(attribute.name, attribute.length, 3);
            double present = 0;
            for (const std::string& name : names) {
                m_elements.push_back(name);
                if (const auto range = rangeOf(database, name))
                    present = std::max(present, range->high);
            }
            m_invalid = attribute.invalidValue;
            m_brightness = 255 / drawing::fullBrightness(present, attribute.maximumValue);
            break;
        }
        case ColourBy::Class:
        case ColourBy::Number: {
            const PointAttribute attribute = database.pointAttributes().get(choice.attribute);
            if (choice.element >= attribute.length)
                throw core::Failure("The attribute \"" + choice.attribute + "\" has " +
                                        std::to_string(attribute.length) + " elements.",
                                    "Choose another colour.");
            m_invalid = attribute.invalidValue;
            m_unit = attribute.unitSymbol;
            if (choice.by == ColourBy::Class) {
                m_elements.push_back(elementOf(attribute, choice.element));
                m_legend = namesOf(attribute, rangeOf(database, m_elements.back()));
            } else {
                setRange(database, elementOf(attribute, choice.element));
            }
            break;
        }
        case ColourBy::Level:
            m_range = {0, static_cast<double>(tree.deepestLevel())};
            break;
        case ColourBy::Transaction: {
            std::vector<std::uint32_t> seen;
            for (const ViewNode& node : tree.nodes())
                seen.push_back(node.revision);
            std::sort(seen.begin(), seen.end());
            seen.erase(std::unique(seen.begin(), seen.end()), seen.end());
            for (const std::uint32_t id : seen)
                m_legend.push_back({drawing::paletteColour(id), std::to_string(id)});
            break;
        }
    }
    if (choice.range && isRamp())
        m_range = *choice.range;
}

void Colouring::setRange(const qrb::Pointcloud& database, const std::string& element) {
    m_elements.push_back(element);
    m_range = rangeOf(database, element).value_or(drawing::Range{});
}

bool Colouring::isRamp() const {
    return m_choice.by == ColourBy::Height || m_choice.by == ColourBy::Number ||
           m_choice.by == ColourBy::Level;
}

drawing::Shade Colouring::shade(const double* values, const ViewNode& node) const {
    if (m_choice.by == ColourBy::Level)
        return {static_cast<double>(node.level), 0, 0};
    if (m_choice.by == ColourBy::Transaction)
        return {static_cast<double>(node.revision), 0, 0};
    drawing::Shade shade{};
    for (std::size_t i = 0; i < m_elements.size(); ++i) {
        if (std::isnan(values[i]) || values[i] == m_invalid)
            return {none, none, none};
        shade[i] = values[i] * m_brightness;
    }
    return shade;
}

drawing::Colour Colouring::colour(const drawing::Shade& shade) const {
    if (std::isnan(shade[0]))
        return colourOfNothing;
    if (m_choice.by == ColourBy::TrueColour)
        return drawing::trueColour(shade);
    if (isRamp())
        return drawing::rampColour(m_range.place(shade[0]));
    return drawing::paletteColour(
        static_cast<std::int64_t>(std::floor(std::clamp(shade[0], -9e18, 9e18))));
}

}  // namespace tarvo::view
