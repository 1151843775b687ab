#include "engine/query/combiner.h"

#include <algorithm>

namespace tarvo::engine::query {

namespace {

bool isLess(const WeightedCode& a, const WeightedCode& b) {
    return a.code < b.code;
}

}  // namespace

std::uint64_t Combiner::combine(std::span<const WeightedCode> codes) {
    if (m_method == schema::LodMethod::First)
        return codes[0].code;
    if (m_method == schema::LodMethod::Majority)
        return majority(codes);
    m_valid.clear();
    for (const WeightedCode& one : codes)
        if (!m_grid.isInvalid(one.code))
            m_valid.push_back(one);
    if (m_valid.empty())
        return m_grid.invalidCode();
    switch (m_method) {
        case schema::LodMethod::Minimum:
            return std::min_element(m_valid.begin(), m_valid.end(), isLess)->code;
        case schema::LodMethod::Maximum:
            return std::max_element(m_valid.begin(), m_valid.end(), isLess)->code;
        default:
            break;
    }
    const std::uint64_t mean = average();
    // An invalid code may lie among the valid ones: the mean must not become it.
    return m_grid.isInvalid(mean) ? m_valid[0].code : mean;
}

std::uint64_t Combiner::majority(std::span<const WeightedCode> codes) {
    m_sorted.assign(codes.begin(), codes.end());
    std::sort(m_sorted.begin(), m_sorted.end(), isLess);
    std::uint64_t best = m_sorted[0].code;
    std::uint64_t most = 0;
    for (std::size_t begin = 0; begin < m_sorted.size();) {
        std::uint64_t weight = 0;
        std::size_t end = begin;
        for (; end < m_sorted.size() && m_sorted[end].code == m_sorted[begin].code; ++end)
            weight += m_sorted[end].weight;
        if (weight > most) {
            most = weight;
            best = m_sorted[begin].code;
        }
        begin = end;
    }
    return best;
}

std::uint64_t Combiner::average() const {
    schema::Grid::Wide all = 0;
    for (const WeightedCode& one : m_valid)
        all += one.weight;
    if (m_grid.kind() == schema::Grid::Kind::Float) {
        // Each divided first: the sum of large numbers would be infinite.
        double mean = 0;
        for (const WeightedCode& one : m_valid)
            mean += m_grid.value(one.code) *
                    (static_cast<double>(one.weight) / static_cast<double>(all));
        const auto [least, greatest] = std::minmax_element(m_valid.begin(), m_valid.end(), isLess);
        return m_grid.code(
            std::clamp(mean, m_grid.value(least->code), m_grid.value(greatest->code)));
    }
    schema::Grid::Wide sum = 0;
    for (const WeightedCode& one : m_valid)
        sum += static_cast<schema::Grid::Wide>(one.code) * one.weight;
    return static_cast<std::uint64_t>((sum + all / 2) / all);
}

}  // namespace tarvo::engine::query
