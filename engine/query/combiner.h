// The value of the one point that stands for several where levels of detail are combined.
#pragma once

#include "engine/schema/lodmethod.h"

#include <cstdint>
#include <span>
#include <vector>

namespace tarvo::engine::query {

struct WeightedCode {
    std::uint64_t code;
    std::uint64_t weight;  // the points that have it, at least 1
};

class Combiner {
public:
    // The attribute must outlive it. Throws Failure(Argument) for settings that name no method.
    explicit Combiner(const schema::Attribute& attribute)
        : m_grid(attribute.grid), m_method(schema::lodMethod(attribute.record)) {}

    // From the codes of one or more points in the order of the index.
    std::uint64_t combine(std::span<const WeightedCode> codes);

private:
    std::uint64_t majority(std::span<const WeightedCode> codes);
    std::uint64_t average() const;

    const schema::Grid& m_grid;
    schema::LodMethod m_method;
    std::vector<WeightedCode> m_sorted;
    std::vector<WeightedCode> m_valid;
};

}  // namespace tarvo::engine::query
