#include "window/dialogs/attribute/attributechecks.h"

#include "core/valueformat.h"
#include "window/dialogs/attribute/lodsettings.h"
#include "window/dialogs/attribute/namedvalues.h"
#include "window/dialogs/attribute/numbertext.h"

#include <algorithm>
#include <cmath>
#include <tuple>

namespace tarvo::window {

namespace {

using qrb::pointcloud::PointAttribute;

constexpr std::uint32_t longestVector = 255;
constexpr std::size_t longestName = 255;
constexpr std::uint32_t indexedElements = 4;
constexpr double twoTo53 = 9007199254740992.0;
constexpr double twoTo63 = 9223372036854775808.0;
constexpr double twoTo64 = 18446744073709551616.0;
const char* const pointIdName = "tarvo.id";

bool isWholeNumber(double value) {
    return std::trunc(value) == value && value >= -twoTo63 && value <= twoTo64;
}

// Whole numbers are stored exactly; the limits may be any of 64 bits, signed or unsigned.
bool storesIntegers(const PointAttribute& attribute) {
    return attribute.resolution == 1 && isWholeNumber(attribute.minimumValue) &&
           isWholeNumber(attribute.maximumValue);
}

double stepsOf(const PointAttribute& attribute) {
    return (attribute.maximumValue - attribute.minimumValue) / attribute.resolution;
}

// How far a number of steps may lie from a whole number.
double slackOf(double steps) {
    return std::max(1e-6, std::fabs(steps) * 1e-15);
}

bool isNearWhole(double steps) {
    return std::fabs(steps - std::round(steps)) <= slackOf(steps);
}

bool sameNumber(double a, double b) {
    return a == b || (std::isnan(a) && std::isnan(b));
}

// Without regard to the invalid value.
ValuePlace placeInRange(double value, const PointAttribute& attribute) {
    if (attribute.resolution == 0)
        return std::isnan(value) ||
                       (value >= attribute.minimumValue && value <= attribute.maximumValue)
                   ? ValuePlace::ON_GRID
                   : ValuePlace::OUTSIDE;
    // Who writes a value half a step outside is let in.
    const double tolerance = attribute.resolution * (0.5 + 1e-6);
    if (!(value >= attribute.minimumValue - tolerance &&
          value <= attribute.maximumValue + tolerance))
        return ValuePlace::OUTSIDE;
    const bool inside = value >= attribute.minimumValue && value <= attribute.maximumValue;
    const double steps = (value - attribute.minimumValue) / attribute.resolution;
    const bool whole = storesIntegers(attribute) ? value == std::trunc(value) : isNearWhole(steps);
    return inside && whole ? ValuePlace::ON_GRID : ValuePlace::OFF_GRID;
}

class Checker {
public:
    Checker(const PointAttribute& attribute, const AttributeUse& use) : m(attribute), m_use(use) {}

    std::vector<AttributeFinding> run() {
        if (!m_use.stored)
            checkName();
        if (m.title.empty())
            note(AttributeField::TITLE, "Without a title, lists show the name only.");
        checkTags();
        checkLength();
        checkNumbers();
        checkStorage();
        if (!m_invalidGrid)
            noteNamedValues();
        if (const QString problem = lodSettingsProblem(m.lodSettings); !problem.isEmpty())
            error(AttributeField::LOD_SETTINGS, problem);
        std::stable_sort(m_findings.begin(), m_findings.end(),
                         [](const AttributeFinding& a, const AttributeFinding& b) {
                             return std::tuple(a.field, !a.error) < std::tuple(b.field, !b.error);
                         });
        return std::move(m_findings);
    }

private:
    void error(AttributeField field, const QString& text) {
        m_findings.push_back({field, true, text});
    }
    void note(AttributeField field, const QString& text) {
        m_findings.push_back({field, false, text});
    }

    void checkName() {
        const auto isLetter = [](char c) {
            return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
        };
        const auto isOther = [&](char c) {
            return !isLetter(c) && !(c >= '0' && c <= '9') && c != '.';
        };
        if (m.name.empty())
            error(AttributeField::NAME, "Give the attribute a name.");
        else if (std::any_of(m.name.begin(), m.name.end(), isOther))
            error(AttributeField::NAME,
                  "A name holds letters from A to Z, digits, \".\" and \"_\" only.");
        else if (!isLetter(m.name[0]))
            error(AttributeField::NAME, "A name begins with a letter or \"_\".");
        else if (m.name.size() > longestName)
            error(AttributeField::NAME,
                  QString("A name has at most %0 characters.").arg(longestName));
        else if (m_use.takenNames.contains(QString::fromStdString(m.name)))
            error(AttributeField::NAME, "This name exists already.");
    }

    void checkTags() {
        QStringList known;
        for (const QString& part : QString::fromStdString(m.tags).split(',')) {
            const QString tag = part.trimmed();
            if (tag.isEmpty() && !m.tags.empty()) {
                note(AttributeField::TAGS, "There is an empty tag.");
                return;
            }
            if (known.contains(tag)) {
                note(AttributeField::TAGS, QString("The tag \"%0\" stands twice.").arg(tag));
                return;
            }
            known += tag;
        }
    }

    void checkLength() {
        if (m.length < 1 || m.length > longestVector)
            error(
                AttributeField::LENGTH,
                QString("The length is %0; 1 to %1 is possible.").arg(m.length).arg(longestVector));
        else if (m_use.primary && m.length > indexedElements)
            note(AttributeField::LENGTH,
                 QString("The index sorts points by the first %0 elements only.")
                     .arg(indexedElements));
    }

    void checkNumbers() {
        if (!std::isfinite(m.minimumValue))
            error(AttributeField::RANGE, "The minimum is no finite number.");
        if (!std::isfinite(m.maximumValue))
            error(AttributeField::RANGE, "The maximum is no finite number.");
        if (m.minimumValue > m.maximumValue)
            error(AttributeField::RANGE, "Minimum is greater than maximum.");
        if (!std::isfinite(m.resolution) || m.resolution < 0)
            error(AttributeField::RESOLUTION,
                  "The resolution is neither positive nor 0 (floating-point numbers).");
        if (!std::isfinite(m.scaleFactor))
            error(AttributeField::RESOLUTION, "The scale factor is no finite number.");
        else if (m.scaleFactor == 0)
            note(AttributeField::RESOLUTION, "A scale factor of 0 makes every value 0.");
        if (std::isinf(m.invalidValue))
            error(AttributeField::DEFAULT, "The invalid value is no finite number.");
        m_invalidGrid = std::any_of(m_findings.begin(), m_findings.end(), [](const auto& finding) {
            return finding.error && finding.field >= AttributeField::RANGE;
        });
        if (m_invalidGrid)
            return;
        if (m.minimumValue == m.maximumValue)
            note(AttributeField::RANGE, "The range holds a single value.");
        checkSteps();
        checkDefault();
        if (m_use.primary && m.name == pointIdName && (m.length != 1 || !storesIntegers(m)))
            error(AttributeField::RESOLUTION,
                  "The point id is one whole number: length 1, resolution 1, whole limits.");
        if (m_use.key && m_use.stored && !sameValues(*m_use.stored, m))
            error(AttributeField::RANGE,
                  "Points are found by these values: length, range, resolution and invalid value "
                  "can't change.");
    }

    void checkSteps() {
        if (m.resolution == 0)
            return;
        const double steps = stepsOf(m);
        if (storesIntegers(m)) {
            // 2^64 stands for the largest number of 64 bits, which no double can hold.
            const auto limit = [](double value) {
                return value == twoTo64 ? Wide(~std::uint64_t(0)) : Wide(value);
            };
            const bool isSigned = m.minimumValue == -twoTo63 && m.maximumValue == twoTo63;
            const Wide last = limit(m.maximumValue) - limit(m.minimumValue) - (isSigned ? 1 : 0);
            if (last > Wide(~std::uint64_t(0)))
                error(AttributeField::RANGE, "The range does not fit into 64 bits.");
            else if (last == Wide(~std::uint64_t(0)) && !std::isnan(m.invalidValue) &&
                     placeInRange(m.invalidValue, m) != ValuePlace::ON_GRID)
                error(AttributeField::DEFAULT,
                      "The range takes all of 64 bits: choose an invalid value within it, or "
                      "narrow it.");
            else if ((std::isnan(m.invalidValue) || isWholeNumber(m.invalidValue)) &&
                     core::ValueFormat(m).type() == qrb::pointcloud::DataType::DOUBLE)
                error(AttributeField::RANGE,
                      "No data type holds the range and the invalid value together: choose another "
                      "invalid value, or narrow the range.");
        } else if (!(steps + std::min(0.5, slackOf(steps)) < twoTo53)) {
            error(AttributeField::RANGE,
                  "The range has more than 2^53 steps: narrow it, or make the resolution coarser "
                  "or 0.");
        } else if (!isNearWhole(steps) && steps < twoTo53 / 1024) {
            const QString largest =
                numberText(steppedNumber(m.minimumValue, m.resolution, std::floor(steps)));
            note(AttributeField::RANGE,
                 QString("The range is no multiple of the resolution; the largest value is %0.")
                     .arg(largest));
        }
    }

    void checkDefault() {
        if (placeOf(m.defaultValue, m) == ValuePlace::OUTSIDE)
            error(AttributeField::DEFAULT,
                  "The default value is neither in the range nor the invalid value.");
        else if (placeOf(m.defaultValue, m) == ValuePlace::OFF_GRID)
            note(AttributeField::DEFAULT,
                 QString("The default value is no multiple of the resolution; it is stored as %0.")
                     .arg(numberText(nearestValue(m.defaultValue, m))));
    }

    void checkStorage() {
        if (m.storageClass < PointAttribute::CONSTANT || m.storageClass > PointAttribute::DYNAMIC)
            error(AttributeField::STORAGE,
                  QString("The storage class %0 is unknown.").arg(m.storageClass));
        if (m.compressionOptions > PointAttribute::DELTA_SHUFFLE)
            error(AttributeField::STORAGE,
                  QString("The compression options %0 are unknown.").arg(m.compressionOptions));
        if (m.storageClass != PointAttribute::CONSTANT)
            return;
        if (m_use.key)
            error(AttributeField::STORAGE,
                  "Points are found by these values, which can't be one "
                  "for all: choose variable or dynamic.");
        else if (m_use.primary)
            note(AttributeField::STORAGE,
                 "Points are found by these values, which can't be one "
                 "for all: they are stored as variable.");
        else if (m_use.stored && m_use.stored->storageClass != PointAttribute::CONSTANT)
            note(AttributeField::STORAGE, "Possible only where all points have the same value.");
    }

    // Of many findings the first, and how many there are.
    void noteNamedValues() {
        const auto findings = checkNamedValues(readNamedValues(m.namedValues), &m);
        if (findings.size() == 1)
            note(AttributeField::NAMED_VALUES, findings[0].text);
        else if (!findings.empty())
            note(AttributeField::NAMED_VALUES,
                 QString("%0 (And %1 more.)").arg(findings[0].text).arg(findings.size() - 1));
    }

    __extension__ typedef __int128 Wide;

    const PointAttribute& m;
    const AttributeUse& m_use;
    std::vector<AttributeFinding> m_findings;
    bool m_invalidGrid = false;
};

}  // namespace

std::vector<AttributeFinding> checkAttribute(const PointAttribute& attribute,
                                             const AttributeUse& use) {
    return Checker(attribute, use).run();
}

ValuePlace placeOf(double value, const PointAttribute& attribute) {
    return value == attribute.invalidValue ? ValuePlace::ON_GRID : placeInRange(value, attribute);
}

double nearestValue(double value, const PointAttribute& attribute) {
    if (attribute.resolution <= 0 || value == attribute.invalidValue)
        return value;
    const double last = std::floor(stepsOf(attribute) + slackOf(stepsOf(attribute)));
    if (!(last >= 0))
        return value;
    const double steps =
        std::clamp(std::round((value - attribute.minimumValue) / attribute.resolution), 0.0, last);
    return steppedNumber(attribute.minimumValue, attribute.resolution, steps);
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

QString conversionText(const PointAttribute& stored, const PointAttribute& attribute) {
    if (sameValues(stored, attribute))
        return {};
    const QString lost = std::isnan(attribute.invalidValue) && attribute.resolution != 0
                             ? QString("the default value")
                             : QString("invalid");
    QString text =
        QString("Stored values are converted; those outside the new range become %0.").arg(lost);
    if (attribute.length < stored.length)
        text += QString(" Elements from number %0 on are dropped.").arg(attribute.length);
    else if (attribute.length > stored.length)
        text += " New elements have the default value.";
    return text;
}

}  // namespace tarvo::window
