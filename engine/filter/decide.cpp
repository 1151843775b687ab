// What the statistics of a node tell about a condition on its points.
#include "engine/filter/term.h"

namespace tarvo::engine::filter {

namespace {

using Statistics = std::span<const schema::ElementStatistics>;

// Damaged statistics tell nothing.
bool usable(const schema::ElementStatistics& known) {
    return (known.hasValid || known.hasInvalid) &&
           (!known.hasValid || known.minimum <= known.maximum);
}

Truth decideCodes(const CodeSet& set, const schema::Grid& grid,
                  const schema::ElementStatistics& known) {
    if (!usable(known))
        return {};
    Truth truth{false, false};
    if (known.hasValid) {
        const Truth inside{known.minimum <= set.high && known.maximum >= set.low,
                           known.minimum < set.low || known.maximum > set.high};
        truth = set.outside ? inside.inverse() : inside;
    }
    if (known.hasInvalid) {
        const bool passes = set.contains(grid.invalidCode());
        truth.canBeTrue = truth.canBeTrue || passes;
        truth.canBeFalse = truth.canBeFalse || !passes;
    }
    return truth;
}

Interval elementBounds(const Slot& slot, const schema::ElementStatistics& known) {
    const schema::Grid& grid = slot.grid;
    if (!usable(known))
        return slot.bounds;
    const auto of = [&](std::uint64_t low, std::uint64_t high) {
        if (slot.whole)
            return Interval::ofWhole(grid.integerValue(low), grid.integerValue(high));
        const double first = grid.value(low), last = grid.value(high);
        if (!(first <= last))
            return Interval::nothing();
        return Interval::ofReal(first, last, false);
    };
    if (!known.hasValid)
        return of(grid.invalidCode(), grid.invalidCode());
    Interval bounds = of(known.minimum, known.maximum);
    if (known.hasInvalid)
        bounds.include(of(grid.invalidCode(), grid.invalidCode()));
    return bounds;
}

Interval termBounds(const Term& term, const std::vector<Slot>& slots, Statistics statistics) {
    if (term.kind == Term::Kind::Constant)
        return term.bounds;
    if (term.kind == Term::Kind::Element)
        return elementBounds(slots[term.slot], statistics[term.slot]);
    if (term.isCondition()) {
        const Truth truth = decideTerm(term, slots, statistics);
        return Interval::ofWhole(truth.canBeFalse ? 0 : 1, truth.canBeTrue ? 1 : 0);
    }
    const Interval a = termBounds(*term.operands[0], slots, statistics);
    if (term.operation == Operator::Negate)
        return negate(a);
    const Interval b = termBounds(*term.operands[1], slots, statistics);
    // What is computed as doubles has the rounding of doubles, even where a part of the range
    // would fit into integers. The remainder of integers is exact before it is rounded.
    const bool real = term.type == Type::Real;
    const bool early = real && term.operation != Operator::Modulo;
    const Interval x = early ? a.asReal() : a;
    const Interval y = early ? b.asReal() : b;
    const Interval result = term.operation == Operator::Add        ? add(x, y)
                            : term.operation == Operator::Subtract ? subtract(x, y)
                            : term.operation == Operator::Multiply ? multiply(x, y)
                            : term.operation == Operator::Divide   ? divide(x, y)
                                                                   : modulo(x, y);
    return real ? result.asReal() : result;
}

}  // namespace

Truth decideTerm(const Term& term, const std::vector<Slot>& slots, Statistics statistics) {
    switch (term.kind) {
        case Term::Kind::Codes:
            return decideCodes(term.codes, slots[term.slot].grid, statistics[term.slot]);
        case Term::Kind::Not:
            return decideTerm(*term.operands[0], slots, statistics).inverse();
        case Term::Kind::And: {
            Truth truth{true, false};
            for (const TermPointer& operand : term.operands) {
                const Truth one = decideTerm(*operand, slots, statistics);
                if (!one.canBeTrue)
                    return {false, true};
                truth.canBeFalse = truth.canBeFalse || one.canBeFalse;
            }
            return truth;
        }
        case Term::Kind::Or: {
            Truth truth{false, true};
            for (const TermPointer& operand : term.operands) {
                const Truth one = decideTerm(*operand, slots, statistics);
                if (!one.canBeFalse)
                    return {true, false};
                truth.canBeTrue = truth.canBeTrue || one.canBeTrue;
            }
            return truth;
        }
        case Term::Kind::Comparison: {
            const Interval a = termBounds(*term.operands[0], slots, statistics);
            const Interval b = termBounds(*term.operands[1], slots, statistics);
            return term.operation == Operator::Equal  ? isEqual(a, b)
                   : term.operation == Operator::Less ? isLess(a, b)
                                                      : isLessOrEqual(a, b);
        }
        case Term::Kind::Truth:
            return isTrue(termBounds(*term.operands[0], slots, statistics));
        default:
            return isTrue(term.bounds);  // Constant
    }
}

}  // namespace tarvo::engine::filter
