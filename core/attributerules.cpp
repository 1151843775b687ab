#include "core/attributerules.h"

#include "core/lodsettings.h"
#include "core/namedvalues.h"
#include "core/utf8.h"
#include "core/valueformat.h"
#include "numbers/grid.h"
#include "numbers/numbertext.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <string_view>
#include <tuple>

namespace tarvo::core {

namespace {

using numbers::Grid;
using numbers::numberText;
using qrb::pointcloud::PointAttribute;

constexpr std::uint32_t longestVector = 255;
constexpr std::size_t longestName = 255;
constexpr std::uint32_t indexedElements = 4;
constexpr std::string_view pointIdName = "tarvo.id";

bool sameNumber(double a, double b) {
    return a == b || (std::isnan(a) && std::isnan(b));
}

// What the rules look at.
struct Subject {
    const PointAttribute& m;
    const AttributeUse& use;
    std::optional<Grid> grid;  // none: the numbers make none
    std::string gridFault;     // why the library that comes with the programs takes no such grid
    std::vector<NamedValueFinding> namedValues;
    LodProblem lod;

    Subject(const PointAttribute& attribute, const AttributeUse& attributeUse)
        : m(attribute), use(attributeUse), lod(lodSettingsProblem(attribute.lodSettings)) {
        const bool readable = std::isfinite(m.minimumValue) && std::isfinite(m.maximumValue) &&
                              m.minimumValue <= m.maximumValue && std::isfinite(m.resolution) &&
                              !std::isinf(m.invalidValue);
        if (readable) {
            try {
                grid.emplace(
                    Grid::Definition{m.minimumValue, m.maximumValue, m.resolution, m.invalidValue});
                namedValues = checkNamedValues(readNamedValues(m.namedValues), &m);
            } catch (const Grid::Fault& fault) {
                const std::string text = std::string("The definition ") + fault.what();
                gridFault = text + " " + fault.details();
            }
        }
    }
};

bool isLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
}

bool isNameCharacter(char c) {
    return isLetter(c) || (c >= '0' && c <= '9') || c == '.';
}

std::string doubtfulTag(const std::string& tags) {
    std::vector<std::string> known;
    for (std::size_t begin = 0; !tags.empty() && begin <= tags.size();) {
        const std::size_t end = std::min(tags.find(',', begin), tags.size());
        std::string tag(trimmed(std::string_view(tags).substr(begin, end - begin)));
        if (tag.empty())
            return "There is an empty tag.";
        if (std::find(known.begin(), known.end(), tag) != known.end())
            return "The tag \"" + tag + "\" stands twice.";
        known.push_back(std::move(tag));
        begin = end + 1;
    }
    return {};
}

std::string doubtfulDefault(const Subject& s) {
    const auto code = s.grid ? s.grid->find(s.m.defaultValue) : std::nullopt;
    if (!code || placeOf(s.m.defaultValue, *s.grid) != ValuePlace::OFF_GRID)
        return {};
    return "The default value is no multiple of the resolution; it is stored as " +
           numberText(s.grid->value(*code)) + ".";
}

// Of many findings the first, and how many there are.
std::string doubtfulNamedValues(const Subject& s) {
    if (s.namedValues.empty())
        return {};
    const std::size_t others = s.namedValues.size() - 1;
    return s.namedValues[0].text +
           (others == 0 ? "" : " (And " + std::to_string(others) + " more.)");
}

const char* const keyStorage =
    "Points are found by these values, which can't be one for all: choose variable or dynamic.";

struct Rule {
    AttributeField field;
    Severity severity;
    std::string (*check)(const Subject&);  // the sentence; empty: nothing is wrong
};

using Field = AttributeField;

// A condition and what it is told by.
std::string when(bool wrong, const char* text) {
    return wrong ? text : "";
}

// In the order in which the findings of one severity of a field are told.
constexpr Rule rules[] = {
    {Field::NAME, Severity::ERROR,
     [](const Subject& s) {
         return when(s.m.name.empty() && !s.use.stored, "Give the attribute a name.");
     }},
    {Field::NAME, Severity::ERROR,
     [](const Subject& s) {
         return when(s.m.name.find('\0') != std::string::npos || !isUtf8(s.m.name),
                     "A name can't hold such characters.");
     }},
    {Field::NAME, Severity::ERROR,
     [](const Subject& s) {
         const auto& taken = s.use.takenNames;
         return when(
             !s.use.stored && std::find(taken.begin(), taken.end(), s.m.name) != taken.end(),
             "This name exists already.");
     }},
    {Field::NAME, Severity::REFUSAL,
     [](const Subject& s) {
         return when(
             !s.use.stored && !std::all_of(s.m.name.begin(), s.m.name.end(), isNameCharacter),
             "A name holds letters from A to Z, digits, \".\" and \"_\" only.");
     }},
    {Field::NAME, Severity::REFUSAL,
     [](const Subject& s) {
         return when(!s.use.stored && !s.m.name.empty() && !isLetter(s.m.name[0]),
                     "A name begins with a letter or \"_\".");
     }},
    {Field::NAME, Severity::REFUSAL,
     [](const Subject& s) {
         return when(!s.use.stored && s.m.name.size() > longestName,
                     "A name has at most 255 characters.");
     }},
    {Field::TITLE, Severity::NOTE,
     [](const Subject& s) {
         return when(s.m.title.empty(), "Without a title, lists show the name only.");
     }},
    {Field::TAGS, Severity::NOTE, [](const Subject& s) { return doubtfulTag(s.m.tags); }},
    {Field::LENGTH, Severity::ERROR,
     [](const Subject& s) {
         return when(s.m.length == 0, "The length is 0; 1 to 255 is possible.");
     }},
    {Field::LENGTH, Severity::REFUSAL,
     [](const Subject& s) {
         return s.m.length <= longestVector
                    ? std::string()
                    : "The length is " + std::to_string(s.m.length) + "; 1 to 255 is possible.";
     }},
    {Field::LENGTH, Severity::NOTE,
     [](const Subject& s) {
         return when(s.use.primary && s.m.length > indexedElements,
                     "The index sorts points by the first 4 elements only.");
     }},
    {Field::RANGE, Severity::ERROR,
     [](const Subject& s) {
         return when(!std::isfinite(s.m.minimumValue), "The minimum is no finite number.");
     }},
    {Field::RANGE, Severity::ERROR,
     [](const Subject& s) {
         return when(!std::isfinite(s.m.maximumValue), "The maximum is no finite number.");
     }},
    {Field::RANGE, Severity::ERROR,
     [](const Subject& s) {
         return when(s.m.minimumValue > s.m.maximumValue, "Minimum is greater than maximum.");
     }},
    {Field::RANGE, Severity::REFUSAL,
     [](const Subject& s) { return s.m.resolution < 0 ? std::string() : s.gridFault; }},
    {Field::RANGE, Severity::REFUSAL,
     [](const Subject& s) {
         return when(s.grid && s.grid->hasWholeValues() &&
                         ValueFormat(s.m).type() == qrb::pointcloud::DataType::DOUBLE,
                     "No data type holds the range and the invalid value together: choose another "
                     "invalid value, or narrow the range.");
     }},
    {Field::RANGE, Severity::REFUSAL,
     [](const Subject& s) {
         return when(s.use.key && s.use.stored && !sameValues(*s.use.stored, s.m),
                     "Points are found by these values: length, range, resolution and invalid "
                     "value can't change.");
     }},
    {Field::RANGE, Severity::NOTE,
     [](const Subject& s) {
         return when(s.grid && s.m.minimumValue == s.m.maximumValue,
                     "The range holds a single value.");
     }},
    {Field::RANGE, Severity::NOTE,
     [](const Subject& s) {
         if (!s.grid || s.grid->kind() != Grid::Kind::Scaled ||
             placeOf(s.m.maximumValue, *s.grid) == ValuePlace::ON_GRID)
             return std::string();
         return "The range is no multiple of the resolution; the largest value is " +
                numberText(s.grid->value(s.grid->maximumCode())) + ".";
     }},
    {Field::RESOLUTION, Severity::ERROR,
     [](const Subject& s) {
         return when(!std::isfinite(s.m.resolution), "The resolution is no finite number.");
     }},
    {Field::RESOLUTION, Severity::ERROR,
     [](const Subject& s) {
         return when(!std::isfinite(s.m.scaleFactor), "The scale factor is no finite number.");
     }},
    {Field::RESOLUTION, Severity::REFUSAL,
     [](const Subject& s) {
         return when(s.m.resolution < 0,
                     "The resolution is neither positive nor 0 (floating-point numbers).");
     }},
    {Field::RESOLUTION, Severity::REFUSAL,
     [](const Subject& s) {
         return when(s.grid && s.use.primary && s.m.name == pointIdName &&
                         (s.m.length != 1 || s.grid->kind() != Grid::Kind::Integer),
                     "The point id is one whole number: length 1, resolution 1, whole limits.");
     }},
    {Field::RESOLUTION, Severity::NOTE,
     [](const Subject& s) {
         return when(s.m.scaleFactor == 0, "A scale factor of 0 makes every value 0.");
     }},
    {Field::DEFAULT, Severity::ERROR,
     [](const Subject& s) {
         return when(std::isinf(s.m.invalidValue), "The invalid value is no finite number.");
     }},
    {Field::DEFAULT, Severity::REFUSAL,
     [](const Subject& s) {
         return when(s.grid && !s.grid->find(s.m.defaultValue),
                     "The default value is neither in the range nor the invalid value.");
     }},
    {Field::DEFAULT, Severity::NOTE, doubtfulDefault},
    {Field::STORAGE, Severity::REFUSAL,
     [](const Subject& s) {
         const bool known = s.m.storageClass >= PointAttribute::CONSTANT &&
                            s.m.storageClass <= PointAttribute::DYNAMIC;
         return known ? std::string()
                      : "The storage class " + std::to_string(s.m.storageClass) + " is unknown.";
     }},
    {Field::STORAGE, Severity::REFUSAL,
     [](const Subject& s) {
         return s.m.compressionOptions <= PointAttribute::DELTA_SHUFFLE
                    ? std::string()
                    : "The compression options " + std::to_string(s.m.compressionOptions) +
                          " are unknown.";
     }},
    {Field::STORAGE, Severity::REFUSAL,
     [](const Subject& s) {
         return when(s.use.key && s.m.storageClass == PointAttribute::CONSTANT, keyStorage);
     }},
    {Field::STORAGE, Severity::NOTE,
     [](const Subject& s) {
         return when(!s.use.key && s.use.primary && s.m.storageClass == PointAttribute::CONSTANT,
                     "Points are found by these values, which can't be one for all: they are "
                     "stored as variable.");
     }},
    {Field::STORAGE, Severity::NOTE,
     [](const Subject& s) {
         return when(!s.use.key && !s.use.primary && s.use.stored &&
                         s.m.storageClass == PointAttribute::CONSTANT &&
                         s.use.stored->storageClass != PointAttribute::CONSTANT,
                     "Possible only where all points have the same value.");
     }},
    {Field::NAMED_VALUES, Severity::NOTE, doubtfulNamedValues},
    {Field::LOD_SETTINGS, Severity::ERROR,
     [](const Subject& s) { return s.lod.isJson ? std::string() : s.lod.text; }},
    {Field::LOD_SETTINGS, Severity::REFUSAL,
     [](const Subject& s) { return s.lod.isJson ? s.lod.text : std::string(); }},
};

}  // namespace

std::vector<AttributeFinding> checkAttribute(const PointAttribute& attribute,
                                             const AttributeUse& use) {
    const Subject subject(attribute, use);
    std::vector<AttributeFinding> findings;
    for (const Rule& rule : rules)
        if (std::string text = rule.check(subject); !text.empty())
            findings.push_back({rule.field, rule.severity, std::move(text)});
    std::stable_sort(findings.begin(), findings.end(),
                     [](const AttributeFinding& a, const AttributeFinding& b) {
                         return std::tie(a.field, a.severity) < std::tie(b.field, b.severity);
                     });
    return findings;
}

bool sameValues(const PointAttribute& a, const PointAttribute& b) {
    return a.length == b.length && a.resolution == b.resolution &&
           a.minimumValue == b.minimumValue && a.maximumValue == b.maximumValue &&
           sameNumber(a.invalidValue, b.invalidValue);
}

bool sameAttribute(const PointAttribute& a, const PointAttribute& b) {
    const auto texts = [](const PointAttribute& each) {
        return std::tie(each.name, each.title, each.tags, each.description, each.unitSymbol,
                        each.namedValues, each.storageClass, each.compressionOptions,
                        each.lodSettings);
    };
    return texts(a) == texts(b) && sameValues(a, b) && sameNumber(a.defaultValue, b.defaultValue) &&
           sameNumber(a.scaleFactor, b.scaleFactor);
}

}  // namespace tarvo::core
