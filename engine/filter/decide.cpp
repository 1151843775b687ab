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

Interval termBounds(const Term& term, const std::vector<Slot>& slots, Statistics statistics);

Interval chainBounds(const Term& term, const Chain& chain, const std::vector<Slot>& slots,
                     Statistics statistics) {
    const bool real = term.type == Type::Real;
    Interval left = termBounds(*chain.first, slots, statistics);
    for (const Chain::Step& step : chain.steps) {
        const Interval right = termBounds(*step.operand, slots, statistics);
        // What is computed as doubles has the rounding of doubles, even where a part of the range
        // would fit into integers. The remainder of integers is exact before it is rounded.
        const bool early = real && step.operation != Operator::Modulo;
        left =
            combine(step.operation, early ? left.asReal() : left, early ? right.asReal() : right);
        if (real)
            left = left.asReal();
    }
    return left;
}

Interval termBounds(const Term& term, const std::vector<Slot>& slots, Statistics statistics) {
    if (term.as<Constant>())
        return term.bounds;
    if (const auto* element = term.as<Element>())
        return elementBounds(slots[element->slot], statistics[element->slot]);
    if (const auto* negative = term.as<Negative>())
        return negate(termBounds(*negative->operand, slots, statistics));
    if (const auto* chain = term.as<Chain>())
        return chainBounds(term, *chain, slots, statistics);
    const Truth truth = decideTerm(term, slots, statistics);
    return Interval::ofWhole(truth.canBeFalse ? 0 : 1, truth.canBeTrue ? 1 : 0);
}

Truth decideJunction(const Junction& junction, const std::vector<Slot>& slots,
                     Statistics statistics, Decided* decided) {
    // As a conjunction: a disjunction is the inverse of that of its inverse operands.
    Truth truth{true, false};
    for (const TermPointer& operand : junction.operands) {
        const Truth one = decideTerm(*operand, slots, statistics, decided);
        const Truth same = junction.conjunction ? one : one.inverse();
        if (!same.canBeTrue) {
            truth = {false, true};
            break;
        }
        truth.canBeFalse = truth.canBeFalse || same.canBeFalse;
    }
    return junction.conjunction ? truth : truth.inverse();
}

Truth truthOf(const Term& term, const std::vector<Slot>& slots, Statistics statistics,
              Decided* decided) {
    if (const auto* codes = term.as<Codes>())
        return decideCodes(codes->set, slots[codes->slot].grid, statistics[codes->slot]);
    if (const auto* comparison = term.as<Comparison>()) {
        const Interval a = termBounds(*comparison->left, slots, statistics);
        const Interval b = termBounds(*comparison->right, slots, statistics);
        return comparison->operation == Operator::Equal  ? isEqual(a, b)
               : comparison->operation == Operator::Less ? isLess(a, b)
                                                         : isLessOrEqual(a, b);
    }
    if (const auto* value = term.as<NotZero>())
        return isTrue(termBounds(*value->operand, slots, statistics));
    if (const auto* inner = term.as<Not>())
        return decideTerm(*inner->operand, slots, statistics, decided).inverse();
    if (const auto* junction = term.as<Junction>())
        return decideJunction(*junction, slots, statistics, decided);
    return isTrue(term.bounds);  // a constant
}

}  // namespace

Decision decisionOf(const Truth& truth) {
    if (!truth.canBeTrue)
        return Decision::None;
    return truth.canBeFalse ? Decision::Look : Decision::All;
}

Truth decideTerm(const Term& term, const std::vector<Slot>& slots,
                 std::span<const schema::ElementStatistics> statistics, Decided* decided) {
    const Truth truth = truthOf(term, slots, statistics, decided);
    if (decided)
        (*decided)[term.number] = decisionOf(truth);
    return truth;
}

}  // namespace tarvo::engine::filter
