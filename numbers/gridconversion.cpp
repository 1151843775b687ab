#include "numbers/gridconversion.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace tarvo::numbers {

std::uint64_t FateCounts::changed() const {
    std::uint64_t sum = 0;
    for (const std::uint64_t count : m_counts)
        sum += count;
    return sum - of(Fate::Kept);
}

GridConversion::GridConversion(const Grid& from, const Grid& to, std::uint64_t defaultCode)
    : m_from(from),
      m_to(to),
      m_lost(to.hasInvalid() ? to.invalidCode() : defaultCode),
      m_whole(from.kind() == Grid::Kind::Integer && to.kind() == Grid::Kind::Integer) {
    const double before = from.invalidValue(), after = to.invalidValue();
    if (!to.hasInvalid())
        m_invalid = Fate::Validated;
    else
        m_invalid = before == after || (std::isnan(before) && std::isnan(after))
                        ? Fate::Kept
                        : Fate::InvalidMoved;
    // A number that two ways of reckoning give in two ways is still the same step.
    if (from.kind() != Grid::Kind::Float && to.kind() != Grid::Kind::Float)
        m_tolerance = std::min(from.resolution(), to.resolution()) * 1e-6;
}

bool GridConversion::isSame(std::uint64_t code, double before, double after) const {
    // A whole number that no double holds is another one as a double.
    if (m_from.kind() == Grid::Kind::Integer && std::abs(before) >= 9007199254740992.0)
        return after == std::trunc(after) && static_cast<Wide>(after) == m_from.integerValue(code);
    return before == after || std::abs(before - after) <= m_tolerance;
}

GridConversion::Result GridConversion::of(std::uint64_t code) const {
    if (m_from.isInvalid(code))
        return {m_lost, m_invalid};
    const double value = m_from.value(code);
    if (std::isnan(value))
        return {m_lost, m_invalid};
    const std::optional<std::uint64_t> found =
        m_whole ? m_to.find(m_from.integerValue(code)) : m_to.find(value);
    if (!found)
        return {m_lost, Fate::Outside};
    if (m_to.isInvalid(*found))
        return {*found, Fate::MadeInvalid};
    return {*found,
            m_whole || isSame(code, value, m_to.value(*found)) ? Fate::Kept : Fate::Rounded};
}

bool GridConversion::keeps(std::uint64_t first, std::uint64_t last) const {
    if (m_from.kind() != m_to.kind() || m_from.resolution() != m_to.resolution())
        return false;
    if (m_from.hasInvalid() && m_invalid != Fate::Kept)
        return false;
    if (of(first).fate != Fate::Kept || of(last).fate != Fate::Kept)
        return false;
    // Between two values that are kept all are, but for one that is now called invalid.
    if (!m_to.hasInvalid() || m_to.invalidIsOffGrid() || m_from.hasInvalid())
        return true;
    const double invalid = m_to.invalidValue();
    return invalid < m_from.value(first) || invalid > m_from.value(last);
}

}  // namespace tarvo::numbers
