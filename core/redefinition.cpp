#include "core/redefinition.h"

#include "core/attributegrid.h"
#include "core/attributerules.h"
#include "core/pointpages.h"
#include "numbers/numbertext.h"
#include "qrb/error.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <vector>

namespace tarvo::core {

namespace {

using numbers::Fate;
using numbers::Grid;
using numbers::groupedText;
using numbers::numberText;
using qrb::pointcloud::DataType;
using qrb::pointcloud::PointAttribute;

// Values that are read at a time.
constexpr std::size_t pageValues = 1 << 20;
constexpr std::size_t largestPage = 1 << 16;

class Counter {
public:
    Counter(const qrb::Pointcloud& database, const PointAttribute& stored, const Grid& from,
            const Grid& to, std::uint64_t defaultCode, std::uint32_t elements)
        : m_database(database),
          m_from(from),
          m_conversion(from, to, defaultCode),
          m_columns(columnsOf(stored, elements)) {}

    // Whether the extremes of all points say that no value changes.
    bool isProven(const std::string& attribute, std::uint32_t length, std::uint32_t node) const {
        std::vector<std::uint64_t> least(length), greatest(length);
        const DataType type = m_columns.front().format.type();
        try {
            const auto statistics = m_database.stat();
            statistics.minimum(node, attribute, type, least.data(), true);
            statistics.maximum(node, attribute, type, greatest.data(), true);
        } catch (const qrb::Error&) {
            return false;  // no valid value, or no statistics
        }
        for (std::size_t e = 0; e < m_columns.size(); ++e) {
            const auto first = codeOf(least[e]), last = codeOf(greatest[e]);
            if (!first || !last || !m_conversion.keeps(*first, *last))
                return false;
        }
        return true;
    }

    // Counts value by value.
    void read(ValueChanges& changes, const qrb::pointcloud::Progress& progress) {
        const auto pageSize = static_cast<std::uint32_t>(
            std::clamp<std::size_t>(pageValues / m_columns.size(), 1, largestPage));
        PointPages pages(m_database, {}, m_columns, pageSize);
        while (const std::uint32_t count = pages.next()) {
            m_touched.assign(count, 0);
            for (std::size_t column = 0; column < m_columns.size(); ++column)
                readColumn(pages, column, count, changes.fates);
            changes.points +=
                static_cast<std::uint64_t>(std::count(m_touched.begin(), m_touched.end(), 1));
            if (progress)
                progress(static_cast<int>(pages.progress()));
        }
    }

private:
    void readColumn(const PointPages& pages, std::size_t column, std::uint32_t count,
                    numbers::FateCounts& fates) {
        std::uint64_t last = pages.value(0, column);
        Fate fate = fateOf(last);
        for (std::uint32_t row = 0; row < count; ++row) {
            if (const std::uint64_t bits = pages.value(row, column); bits != last) {
                last = bits;
                fate = fateOf(bits);
            }
            fates.add(fate);
            m_touched[row] |= fate != Fate::Kept;
        }
    }

    std::optional<std::uint64_t> codeOf(std::uint64_t bits) const {
        const DataType type = m_columns.front().format.type();
        if (type == DataType::DOUBLE)
            return m_from.find(std::bit_cast<double>(bits));
        const auto whole = type == DataType::INT64
                               ? static_cast<numbers::Wide>(static_cast<std::int64_t>(bits))
                               : static_cast<numbers::Wide>(bits);
        return m_from.kind() == Grid::Kind::Integer ? m_from.find(whole)
                                                    : m_from.find(static_cast<double>(whole));
    }

    Fate fateOf(std::uint64_t bits) const {
        const std::optional<std::uint64_t> code = codeOf(bits);
        return code ? m_conversion.of(*code).fate : Fate::Outside;
    }

    const qrb::Pointcloud& m_database;
    const Grid& m_from;
    numbers::GridConversion m_conversion;
    std::vector<PointColumn> m_columns;   // all of one format
    std::vector<std::uint8_t> m_touched;  // points of the page with a value that changes
};

// What becomes of values that the new definition has no place for.
std::string replacement(const PointAttribute& definition) {
    if (!std::isnan(definition.invalidValue))
        return "the invalid value " + numberText(definition.invalidValue);
    if (definition.resolution == 0)
        return "invalid";
    return "the default value " + numberText(definition.defaultValue);
}

// What becomes of values, one or several, by one kind of change.
std::string wordsOf(const std::string& values, bool one, Fate fate,
                    const PointAttribute& definition) {
    switch (fate) {
        case Fate::Rounded:
            return definition.resolution == 0
                       ? values + " would be rounded to floating-point numbers"
                       : values + " would be rounded to the resolution " +
                             numberText(definition.resolution);
        case Fate::Outside:
            return values + (one ? " lies outside " : " lie outside ") +
                   numberText(definition.minimumValue) + " to " +
                   numberText(definition.maximumValue) + " and would become " +
                   replacement(definition);
        case Fate::MadeInvalid:
            return values + (one ? " is " : " are ") + numberText(definition.invalidValue) +
                   " and would count as invalid";
        case Fate::InvalidMoved:
        case Fate::Validated:
            return values + (one ? " is" : " are") + " invalid and would become " +
                   replacement(definition);
        case Fate::Kept:
            break;
    }
    return {};
}

}  // namespace

std::optional<ValueChanges> countChanges(const qrb::Pointcloud& database,
                                         const PointAttribute& stored,
                                         const PointAttribute& definition,
                                         const qrb::pointcloud::Progress& progress) {
    const std::optional<Grid> from = gridOf(stored), to = gridOf(definition);
    const auto defaultCode = to ? to->find(definition.defaultValue) : std::nullopt;
    if (!from || !defaultCode || stored.length == 0 || definition.length == 0)
        return std::nullopt;
    ValueChanges changes;
    const qrb::pointcloud::IndexNode root = database.stat().root();
    const auto points = static_cast<std::uint64_t>(root.pointCountTotal);
    if (points == 0)
        return changes;
    const std::uint32_t elements = std::min(stored.length, definition.length);
    changes.dropped = points * (stored.length - elements);
    changes.added = points * (definition.length - elements);
    Counter counter(database, stored, *from, *to, *defaultCode, elements);
    if (counter.isProven(stored.name, stored.length, root.id))
        changes.fates.add(Fate::Kept, points * elements);
    else
        counter.read(changes, progress);
    if (changes.dropped > 0)
        changes.points = points;
    return changes;
}

std::string describe(const ValueChanges& changes, const PointAttribute& stored,
                     const PointAttribute& definition) {
    const auto counted = [](std::uint64_t count, const char* noun) {
        return groupedText(count) + " " + noun + (count == 1 ? "" : "s");
    };
    const std::uint64_t all = changes.changed();
    const std::string values =
        stored.length > 1 ? counted(all, "value") + " of " + counted(changes.points, "point") +
                                " in \"" + stored.name + "\""
                          : counted(all, "value") + " of \"" + stored.name + "\"";
    std::vector<std::string> parts;
    // Where all values change in one way it is said of them, else of the number that do.
    const auto subject = [&](std::uint64_t count) {
        return count == all ? values : groupedText(count);
    };
    for (const Fate fate :
         {Fate::Outside, Fate::Rounded, Fate::MadeInvalid, Fate::InvalidMoved, Fate::Validated}) {
        const std::uint64_t count = changes.fates.of(fate);
        if (count == 0)
            continue;
        parts.push_back(wordsOf(subject(count), count == 1, fate, definition));
    }
    if (changes.dropped > 0) {
        parts.push_back(subject(changes.dropped) +
                        " would be dropped with the elements from number " +
                        std::to_string(definition.length) + " on");
    }
    if (parts.empty())
        return {};
    if (parts.size() == 1)
        return parts.front() + ".";
    std::string list;
    for (const std::string& part : parts)
        list += (list.empty() ? "" : "; ") + part;
    return values + " would change: " + list + ".";
}

std::string conversionHint(const PointAttribute& stored, const PointAttribute& definition) {
    if (sameValues(stored, definition))
        return {};
    const bool hasInvalid = !std::isnan(definition.invalidValue) || definition.resolution == 0;
    std::string text = "Stored values are converted; those outside the new range become " +
                       std::string(hasInvalid ? "invalid." : "the default value.");
    if (definition.length < stored.length)
        text += " Elements from number " + std::to_string(definition.length) + " on are dropped.";
    else if (definition.length > stored.length)
        text += " New elements have the default value.";
    return text;
}

}  // namespace tarvo::core
