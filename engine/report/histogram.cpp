#include "engine/report/histogram.h"

#include "engine/report/text.h"
#include "numbers/numbertext.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <map>
#include <optional>

namespace tarvo::engine::report {

namespace {

constexpr std::size_t maximumBins = 64;
constexpr std::size_t fewValues = 16;
constexpr std::size_t columnsPerPass = 64;

using NamesByCode = std::map<std::uint64_t, std::string>;
using CountByCode = std::map<std::uint64_t, std::uint64_t>;

std::string_view withoutBlanks(std::string_view text) {
    const std::size_t begin = std::min(text.find_first_not_of(" \t\r"), text.size());
    return text.substr(begin, text.find_last_not_of(" \t\r") + 1 - begin);
}

// The lines "VALUE=NAME" of a definition; those with values that it can't have are left out.
NamesByCode namesOf(const schema::Attribute& attribute) {
    NamesByCode names;
    std::string_view left = attribute.record.namedValues;
    while (!left.empty()) {
        const std::string_view line = left.substr(0, left.find('\n'));
        left.remove_prefix(std::min(left.size(), line.size() + 1));
        const std::size_t equals = line.find('=');
        const std::string_view number = withoutBlanks(line.substr(0, equals));
        const char* end = number.data() + number.size();
        double value = 0;
        if (equals == std::string_view::npos || number.empty() ||
            std::from_chars(number.data(), end, value).ptr != end)
            continue;
        try {
            names.emplace(attribute.grid.code(value), withoutBlanks(line.substr(equals + 1)));
        } catch (const Failure&) {
            continue;
        }
    }
    return names;
}

// Counts different codes until there are more than `limit`.
class ValueCounter {
public:
    explicit ValueCounter(std::size_t limit) : m_limit(limit) {}

    // False once there are too many.
    bool add(std::uint64_t code) {
        std::size_t at = (code * 0x9e3779b97f4a7c15u) >> 57;
        while (m_counts[at] != 0 && m_codes[at] != code)
            at = (at + 1) % m_codes.size();
        if (m_counts[at]++ == 0) {
            m_codes[at] = code;
            return ++m_used <= m_limit;
        }
        return true;
    }
    CountByCode counts() const {
        CountByCode result;
        for (std::size_t i = 0; i < m_codes.size(); ++i)
            if (m_counts[i] != 0)
                result[m_codes[i]] = m_counts[i];
        return result;
    }

private:
    static_assert(maximumBins < 127);
    std::size_t m_limit;
    std::size_t m_used = 0;
    std::array<std::uint64_t, 128> m_codes{};
    std::array<std::uint64_t, 128> m_counts{};
};

class HistogramBuilder {
public:
    HistogramBuilder(const schema::Attribute& attribute, ColumnRef column,
                     const schema::ElementStatistics& statistics)
        : m_attribute(attribute),
          m_column(column),
          m_statistics(statistics),
          m_names(namesOf(attribute)) {
        if (!statistics.hasValid)
            return;
        if (isFloat()) {
            m_low = grid().value(statistics.minimum);
            m_high = grid().value(statistics.maximum);
            if (!std::isfinite(m_low) || !std::isfinite(m_high))
                failDamaged();
            // Halves, because the difference of two large numbers may be too large for one.
            const double inverse = maximumBins / (m_high / 2 - m_low / 2);
            m_binsPerHalf = std::isfinite(inverse) ? inverse : 0;
            m_bins.resize(m_binsPerHalf > 0 ? maximumBins : 1);
        } else {
            if (statistics.maximum > grid().maximumCode())
                failDamaged();
            const std::uint64_t range = statistics.maximum - statistics.minimum;
            m_stepsPerBin = range / maximumBins + 1;
            m_bins.resize(range / m_stepsPerBin + 1);
        }
        if (isFloat() || m_stepsPerBin > 1)
            m_values.emplace(valueLimit());
    }

    void add(const schema::Column& column) {
        column.visit([this](auto codes) {
            isFloat() ? addFloats(codes) : addSteps(codes);
            if (m_values)
                addValues(codes);
        });
    }

    Histogram finish() {
        Histogram result;
        result.column = m_column;
        result.count = m_count;
        result.invalid = m_invalid;
        if (grid().hasInvalid())
            result.invalidName = nameOf(grid().invalidCode());
        if (m_statistics.hasValid) {
            result.minimum = valueText(grid(), m_statistics.minimum);
            result.maximum = valueText(grid(), m_statistics.maximum);
        }
        if (m_count > 0)
            result.mean = mean();
        const std::optional<CountByCode> values = fewCounts();
        result.singleValues = values.has_value();
        if (values) {
            for (const auto& [code, count] : *values) {
                const std::string value = valueText(grid(), code);
                result.bins.push_back({value, value, count, nameOf(code)});
            }
        } else {
            for (std::size_t i = 0; i < m_bins.size(); ++i)
                result.bins.push_back(rangeBin(i));
        }
        return result;
    }

private:
    const schema::Grid& grid() const { return m_attribute.grid; }
    bool isFloat() const { return grid().kind() == schema::Grid::Kind::Float; }

    std::size_t valueLimit() const { return m_names.empty() ? fewValues : maximumBins; }

    // How often each value occurs, where there are few.
    std::optional<CountByCode> fewCounts() const {
        if (m_values)
            return m_values->counts();
        if (isFloat() || m_stepsPerBin > 1)
            return std::nullopt;
        CountByCode result;
        for (std::size_t i = 0; i < m_bins.size(); ++i)
            if (m_bins[i] != 0)
                result[m_statistics.minimum + i] = m_bins[i];
        return result.size() <= valueLimit() ? std::optional(result) : std::nullopt;
    }

    [[noreturn]] void failDamaged() const {
        throw Failure(ErrorCode::Damaged, "The file is damaged: points have values of \"" +
                                              elementName(m_attribute.record, m_column.element) +
                                              "\" that the index excludes.");
    }

    template <typename Codes>
    void addSteps(Codes codes) {
        using Code = typename Codes::value_type;
        const bool hasInvalid = grid().hasInvalid();
        const auto invalid = static_cast<Code>(grid().invalidCode());
        const auto first = static_cast<Code>(m_statistics.minimum);
        const std::uint64_t range = m_statistics.maximum - m_statistics.minimum;
        const auto steps = static_cast<Code>(m_stepsPerBin);
        double sum = 0;
        std::uint64_t count = 0;
        for (const Code code : codes) {
            if (hasInvalid && code == invalid)
                continue;
            const auto offset = static_cast<Code>(code - first);
            if (!m_statistics.hasValid || offset > range)
                failDamaged();
            ++m_bins[offset / steps];
            sum += static_cast<double>(offset);
            ++count;
        }
        m_sum += sum;
        m_count += count;
        m_invalid += codes.size() - count;
    }

    template <typename Codes>
    void addFloats(Codes codes) {
        for (const std::uint64_t code : codes) {
            if (grid().isInvalid(code)) {
                ++m_invalid;
                continue;
            }
            if (!m_statistics.hasValid || code < m_statistics.minimum ||
                code > m_statistics.maximum)
                failDamaged();
            const double value = grid().value(code);
            const double bin = (value / 2 - m_low / 2) * m_binsPerHalf;
            ++m_bins[std::min(static_cast<std::size_t>(bin), m_bins.size() - 1)];
            m_sum += value;
            ++m_count;
        }
    }

    template <typename Codes>
    void addValues(Codes codes) {
        for (const std::uint64_t code : codes)
            if (!grid().isInvalid(code) && !m_values->add(code)) {
                m_values.reset();
                return;
            }
    }

    double mean() const {
        const double average = static_cast<double>(m_sum / static_cast<long double>(m_count));
        return isFloat()
                   ? average
                   : grid().value(m_statistics.minimum) + average * m_attribute.record.resolution;
    }

    Bin rangeBin(std::size_t i) const {
        if (isFloat()) {
            const auto edge = [&](std::size_t at) {
                return numbers::numberText(std::lerp(
                    m_low, m_high, static_cast<double>(at) / static_cast<double>(m_bins.size())));
            };
            return {edge(i), edge(i + 1), m_bins[i], {}};
        }
        const std::uint64_t first = m_statistics.minimum + i * m_stepsPerBin;
        const std::uint64_t last =
            first + std::min(m_stepsPerBin - 1, m_statistics.maximum - first);
        return {valueText(grid(), first), valueText(grid(), last), m_bins[i],
                first == last ? nameOf(first) : std::string()};
    }

    std::string nameOf(std::uint64_t code) const {
        const auto found = m_names.find(code);
        return found != m_names.end() ? found->second : std::string();
    }

    const schema::Attribute& m_attribute;
    ColumnRef m_column;
    schema::ElementStatistics m_statistics;
    NamesByCode m_names;
    std::vector<std::uint64_t> m_bins;
    std::uint64_t m_stepsPerBin = 1;
    double m_low = 0;  // Float only
    double m_high = 0;
    double m_binsPerHalf = 0;
    std::optional<ValueCounter> m_values;  // while few; not for bins of a single step
    long double m_sum = 0;                 // of steps above the minimum; of values for Float
    std::uint64_t m_count = 0;
    std::uint64_t m_invalid = 0;
};

}  // namespace

std::uint64_t sampleStep(const Facts& facts, std::uint64_t limit) {
    const std::uint64_t points = facts.state->pointCount;
    return points <= limit ? 1 : (points - 1) / std::max<std::uint64_t>(limit, 1) + 1;
}

std::vector<Histogram> makeHistograms(session::Session& session, const Facts& facts,
                                      std::uint64_t step) {
    std::vector<ColumnRef> columns;
    for (std::size_t a = 0; a < facts.attributes.size(); ++a)
        for (std::uint32_t e = 0; e < facts.attributes[a].elements.size(); ++e)
            columns.push_back({a, e});
    std::vector<Histogram> result;
    // A definition may have thousands of elements: a leaf of all at once could be too much.
    for (std::size_t begin = 0; begin < columns.size(); begin += columnsPerPass) {
        const std::vector<ColumnRef> part(
            columns.begin() + static_cast<std::ptrdiff_t>(begin),
            columns.begin() +
                static_cast<std::ptrdiff_t>(std::min(columns.size(), begin + columnsPerPass)));
        std::vector<HistogramBuilder> builders;
        for (const ColumnRef& column : part)
            builders.emplace_back(facts.state->attributes[column.attribute], column,
                                  facts.attributes[column.attribute].elements[column.element]);
        if (facts.state->pointCount > 0) {
            LeafReader reader(session, facts, part, step);
            while (const auto leaf = reader.next())
                for (std::size_t i = 0; i < part.size(); ++i)
                    builders[i].add(*(*leaf)[i]);
        }
        for (HistogramBuilder& builder : builders)
            result.push_back(builder.finish());
    }
    return result;
}

}  // namespace tarvo::engine::report
