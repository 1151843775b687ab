// What the statistics of nodes tell of conditions: never wrong, and all that they can tell.
#include "engine/filter/interval.h"

#include "engine/base/error.h"
#include "engine/filter/arithmetic.h"
#include "tests/engine/filtertable.h"
#include "tests/engine/seed.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

using namespace tarvo::engine;
using namespace tarvo::engine::filter;
using namespace tarvo::engine::filter::testing;

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();

// A value that an interval holds.
struct Sample {
    bool whole = false;
    Wide integer = 0;
    double real = 0;
    double asReal() const { return whole ? static_cast<double>(integer) : real; }
};

class Intervals {
public:
    explicit Intervals(std::uint64_t seed) : m_random(seed) {}

    Interval any() {
        if (below(2) == 0) {
            const Wide a = wholeNumber(), b = wholeNumber();
            return Interval::ofWhole(std::min(a, b), std::max(a, b));
        }
        if (below(20) == 0)
            return Interval::nothing();
        if (below(20) == 0)
            return Interval::anything();
        const double a = realNumber(), b = below(4) == 0 ? a : realNumber();
        return Interval::ofReal(std::min(a, b), std::max(a, b), below(3) == 0);
    }

    // Its ends, some within, NaN where it may be.
    std::vector<Sample> samples(const Interval& interval) {
        std::vector<Sample> result;
        if (interval.whole) {
            for (const Wide value : {interval.low, interval.high})
                result.push_back({true, value, 0});
            const Wide middle = interval.low / 2 + interval.high / 2;
            for (const Wide value : {middle, Wide(-1), Wide(0), Wide(1), interval.low + 1})
                if (value >= interval.low && value <= interval.high)
                    result.push_back({true, value, 0});
            return result;
        }
        for (const double value :
             {interval.realLow, interval.realHigh, interval.realLow / 2 + interval.realHigh / 2,
              -1.0, -0.5, 0.0, 0.5, 1.0})
            if (value >= interval.realLow && value <= interval.realHigh)
                result.push_back({false, 0, value});
        if (interval.mayBeNaN)
            result.push_back({false, 0, noInvalid});
        return result;
    }

private:
    std::uint64_t below(std::uint64_t limit) { return m_random() % limit; }

    Wide wholeNumber() {
        switch (below(4)) {
            case 0:
                return static_cast<Wide>(below(7)) - 3;
            case 1:
                return static_cast<Wide>(below(2001)) - 1000;
            case 2:
                return static_cast<Wide>(static_cast<std::int64_t>(m_random()));
            default: {
                const Wide most = wideLimit >> below(70);
                return below(2) ? most : -most;
            }
        }
    }
    double realNumber() {
        switch (below(6)) {
            case 0:
                return 0;
            case 1:
                return static_cast<double>(below(9)) / 2 - 2;
            case 2:
                return static_cast<double>(below(2001)) - 1000.25;
            case 3:
                return below(2) ? 1e300 : -1e300;
            case 4:
                return below(2) ? infinity : -infinity;
            default:
                return std::ldexp(static_cast<double>(m_random()), -60) - 8;
        }
    }

    std::mt19937_64 m_random;
};

std::string textOf(const Interval& a) {
    const auto number = [](Wide value) { return std::to_string(static_cast<long double>(value)); };
    return a.whole ? "[" + number(a.low) + ", " + number(a.high) + "]"
                   : "[" + std::to_string(a.realLow) + ", " + std::to_string(a.realHigh) +
                         (a.mayBeNaN ? "] or NaN" : "]");
}

void expectHolds(const Interval& interval, double value) {
    if (std::isnan(value)) {
        EXPECT_TRUE(interval.mayBeNaN);
        return;
    }
    const Interval real = interval.asReal();
    EXPECT_LE(real.realLow, value);
    EXPECT_GE(real.realHigh, value);
}

Sample computed(Operator operation, const Interval& result, const Sample& a, const Sample& b) {
    const bool whole = a.whole && b.whole;
    if (result.whole) {
        const Wide value = operation == Operator::Add        ? a.integer + b.integer
                           : operation == Operator::Subtract ? a.integer - b.integer
                           : operation == Operator::Multiply ? a.integer * b.integer
                                                             : a.integer % b.integer;
        return {true, value, 0};
    }
    const double x = a.asReal(), y = b.asReal();
    const double value = operation == Operator::Add        ? x + y
                         : operation == Operator::Subtract ? x - y
                         : operation == Operator::Multiply ? x * y
                         : operation == Operator::Divide   ? x / y
                         : whole                           ? moduloOrNaN(a.integer, b.integer)
                                                           : std::fmod(x, y);
    return {false, 0, value};
}

using Compute = Interval (*)(const Interval&, const Interval&);
using Compare = Truth (*)(const Interval&, const Interval&);

bool compared(Operator operation, const Sample& a, const Sample& b) {
    const auto by = [&](auto x, auto y) {
        return operation == Operator::Less ? x < y : operation == Operator::Equal ? x == y : x <= y;
    };
    return a.whole && b.whole ? by(a.integer, b.integer) : by(a.asReal(), b.asReal());
}

const std::pair<Operator, Compare> comparisons[] = {
    {Operator::Less, isLess}, {Operator::LessEqual, isLessOrEqual}, {Operator::Equal, isEqual}};

// Both elements of the text are whole numbers from 0 to 9; q may be invalid (-1), r too (2).
AttributeTable digits() {
    AttributeTable table;
    addAttribute(table, "p", 1, 0, 9);
    addAttribute(table, "q", 1, 0, 9, -1);
    addAttribute(table, "r", 0.5, 0, 4.5, 2);
    addAttribute(table, "s", 0, 0, 9);
    return table;
}

Decision decided(const AttributeTable& table, const char* text,
                 const std::vector<schema::ElementStatistics>& known) {
    return BoundFilter(Expression::parse(text), table).decide(known);
}

}  // namespace

TEST(Interval, HoldsEveryValueThatItsOperandsGive) {
    Intervals intervals(tarvo::engine::testing::seedOfRun());
    const std::pair<Operator, Compute> operations[] = {{Operator::Add, add},
                                                       {Operator::Subtract, subtract},
                                                       {Operator::Multiply, multiply},
                                                       {Operator::Divide, divide},
                                                       {Operator::Modulo, modulo}};
    for (int round = 0; round < 5000 && !::testing::Test::HasFailure(); ++round) {
        const Interval a = intervals.any(), b = intervals.any();
        const std::vector<Sample> left = intervals.samples(a), right = intervals.samples(b);
        Interval both = a;
        both.include(b);
        for (const std::vector<Sample>* samples : {&left, &right})
            for (const Sample& sample : *samples)
                expectHolds(both, sample.asReal());
        for (const Sample& sample : left) {
            expectHolds(negate(a), -sample.asReal());
            const double value = sample.asReal();
            const Truth truth = isTrue(a);
            EXPECT_TRUE(value < 0 || value > 0 ? truth.canBeTrue : truth.canBeFalse) << value;
        }
        for (const auto& [operation, compute] : operations) {
            const Interval result = compute(a, b);
            SCOPED_TRACE(textOf(a) + " operator " + std::to_string(int(operation)) + " " +
                         textOf(b) + " = " + textOf(result));
            if (result.whole) {
                EXPECT_LE(-wideLimit, result.low);
                EXPECT_GE(wideLimit, result.high);
            }
            for (const Sample& x : left)
                for (const Sample& y : right) {
                    const Sample value = computed(operation, result, x, y);
                    if (value.whole) {
                        EXPECT_LE(result.low, value.integer);
                        EXPECT_GE(result.high, value.integer);
                    } else {
                        expectHolds(result, value.real);
                    }
                }
        }
        for (const auto& [operation, compare] : comparisons) {
            SCOPED_TRACE(textOf(a) + " comparison " + std::to_string(int(operation)) + " " +
                         textOf(b));
            const Truth truth = compare(a, b);
            for (const Sample& x : left)
                for (const Sample& y : right)
                    EXPECT_TRUE(compared(operation, x, y) ? truth.canBeTrue : truth.canBeFalse);
        }
    }
}

TEST(Interval, OfFewNumbersTellsWhetherAnyAndWhetherAllCompare) {
    for (const bool whole : {true, false})
        for (int a = 0; a < 100; ++a)
            for (int b = 0; b < 100; ++b) {
                const int low = a / 10, high = a % 10, from = b / 10, to = b % 10;
                if (low > high || from > to)
                    continue;
                const auto make = [&](int first, int last) {
                    return whole ? Interval::ofWhole(first, last)
                                 : Interval::ofReal(first, last, false);
                };
                for (const auto& [operation, compare] : comparisons) {
                    bool any = false, all = true;
                    for (int x = low; x <= high; ++x)
                        for (int y = from; y <= to; ++y) {
                            const bool holds = compared(operation, {true, x, 0}, {true, y, 0});
                            any = any || holds;
                            all = all && holds;
                        }
                    const Truth truth = compare(make(low, high), make(from, to));
                    ASSERT_EQ(truth.canBeTrue, any) << a << " " << b << " " << int(operation);
                    ASSERT_EQ(truth.canBeFalse, !all) << a << " " << b << " " << int(operation);
                }
            }
}

TEST(Interval, IsComputedInTheSmallestTypeThatHoldsIt) {
    const Wide most = INT64_MAX, least = INT64_MIN;
    EXPECT_EQ(typeFor(Interval::ofWhole(least, most)), Type::Integer);
    EXPECT_EQ(typeFor(Interval::ofWhole(least - 1, 0)), Type::Wide);
    EXPECT_EQ(typeFor(Interval::ofWhole(0, most + 1)), Type::Wide);
    EXPECT_EQ(typeFor(add(Interval::ofWhole(0, wideLimit - 1), Interval::ofWhole(1, 1))),
              Type::Wide);
    EXPECT_EQ(typeFor(add(Interval::ofWhole(0, wideLimit), Interval::ofWhole(1, 1))), Type::Real);
    EXPECT_EQ(typeFor(Interval::ofReal(1, 1, false)), Type::Real);
}

// Every range of statistics against the points that it stands for.
TEST(FilterDecision, IsRightAndDecidesWhatRangesCanDecide) {
    const AttributeTable table = digits();
    const Grid& q = table[1].grid;
    // How much is to be decided: of conditions on one element everything, of computed values all
    // but what invalid points do, of the rest nothing.
    enum Exact { Never, Valid, Always };
    const struct {
        const char* text;
        Exact exact;
    } cases[] = {
        {"p < 4", Always},
        {"p <= 4", Always},
        {"p == 4", Always},
        {"p != 4", Always},
        {"p > 4", Always},
        {"p >= 4", Always},
        {"q < 4", Always},
        {"q != 4", Always},
        {"q >= 0", Always},
        {"q == -1", Always},
        {"!(q > 3)", Always},
        {"q > 2 && q < 6", Always},
        {"p && q", Always},
        {"!q", Always},
        {"p == 2 && q == 7", Always},
        {"p < q", Valid},
        {"p <= q", Valid},
        {"q < p", Valid},
        {"p + q > 9", Valid},
        {"p - q >= 3", Valid},
        {"p * 2 == 8", Valid},
        {"-q < -4", Valid},
        {"q + 1", Valid},
        {"(p > 3) * 2 == 2", Valid},
        {"p == q", Never},
        {"p == 4 || p == 6", Never},
        {"q % 4 == 1 && p > 1", Never},
    };
    for (const auto& [text, exact] : cases) {
        const BoundFilter filter(Expression::parse(text), table);
        for (std::uint64_t bits = 0; bits < 20000; ++bits) {
            const std::uint64_t low[] = {bits / 10 % 10, bits / 1000 % 10};
            const std::uint64_t high[] = {bits % 10, bits / 100 % 10};
            const bool invalid = bits >= 10000;
            if (low[0] > high[0] || low[1] > high[1])
                continue;
            std::vector<std::uint64_t> firsts, seconds;
            for (std::uint64_t a = low[0]; a <= high[0]; ++a)
                for (std::uint64_t b = low[1]; b <= high[1] + (invalid ? 1 : 0); ++b) {
                    firsts.push_back(a);
                    seconds.push_back(b > high[1] ? q.invalidCode() : b);
                }
            Column columns[] = {Column(1, firsts.size()), Column(1, firsts.size())};
            for (std::size_t i = 0; i < firsts.size(); ++i) {
                columns[0].set(i, firsts[i]);
                columns[1].set(i, seconds[i]);
            }
            std::vector<schema::ElementStatistics> known;
            for (const ElementRef& element : filter.elements())
                known.push_back({low[element.attribute], high[element.attribute], true,
                                 invalid && element.attribute == 1});
            const std::size_t passing =
                selectFrom(filter, firsts.size(), [&](const ElementRef& element) -> const Column& {
                    return columns[element.attribute];
                }).size();
            const Decision decision = filter.decide(known);
            const Decision right = passing == 0               ? Decision::None
                                   : passing == firsts.size() ? Decision::All
                                                              : Decision::Look;
            if (exact == Always || (exact == Valid && !invalid) || decision != Decision::Look) {
                ASSERT_EQ(decision, right) << text << " " << bits;
            }
        }
    }
}

TEST(FilterDecision, TakesNothingFromStatisticsThatLie) {
    const AttributeTable table = digits();
    using Known = std::vector<schema::ElementStatistics>;
    for (const char* text : {"p > 5", "p < 5", "p != 5", "p + 1 > 6", "p * 2 < 10", "!(p * 2)"}) {
        EXPECT_EQ(decided(table, text, Known{{9, 3, true, false}}), Decision::Look) << text;
        EXPECT_EQ(decided(table, text, Known{{6, 9, false, false}}), Decision::Look) << text;
        EXPECT_EQ(decided(table, text, Known{{0, 0, false, false}}), Decision::Look) << text;
    }
    // Only invalid points: what minimum and maximum say means nothing.
    EXPECT_EQ(decided(table, "q > 5", Known{{9, 9, false, true}}), Decision::None);
    EXPECT_EQ(decided(table, "q + 1 == 0", Known{{9, 9, false, true}}), Decision::All);
    EXPECT_EQ(decided(table, "s >= 0", Known{{~0ull, 0, false, true}}), Decision::None);
    EXPECT_EQ(decided(table, "s != s", Known{{0, 0, false, true}}), Decision::All);
    EXPECT_THROW((void)decided(table, "p > 5", Known{}), Failure);
    EXPECT_THROW((void)decided(table, "p > 5", Known(2)), Failure);
}

// A computed double is rounded: exact bounds would exclude what it is rounded to.
TEST(FilterDecision, RoundsAsTheEvaluationDoes) {
    const AttributeTable table = makeTable();
    const struct {
        const char* text;
        std::vector<std::uint64_t> values;  // of the elements in their order
    } cases[] = {
        {"g * g == 81129638414606681695789005144064", {9007199254740993}},
        {"g * g != 81129638414606681695789005144064", {9007199254740993}},
        {"(f % g) < 9007199254740996", {9007199254740995, 1152921504606846976}},
        {"(f % g) == 9007199254740992", {9007199254740993, 1152921504606846976}},
        {"(f * g * 8) / 8 == f * g", {9007199254740993, 3}},
        {"(g - f) * g * 4 > 36028797018963968", {9007199254740993, 9007199254740992}},
        {"g + 0.5 == 9007199254740992", {9007199254740993}},
        {"a % 0.5 == 0", {3}},
        {"a / (a - 3) == 1", {3}},
        {"(a - 3) / (a - 3) != 0", {3}},
        {"a % (a - 3) == 0", {3}},
        {"(a - 3.0) % (a - 3.0) != 7", {3}},
    };
    for (const auto& one : cases) {
        const BoundFilter filter(Expression::parse(one.text), table);
        ASSERT_EQ(filter.elements().size(), one.values.size()) << one.text;
        std::vector<codec::Block> blocks;
        std::vector<schema::ElementStatistics> known;
        for (std::size_t i = 0; i < one.values.size(); ++i) {
            const Grid& grid = table[filter.elements()[i].attribute].grid;
            Column column(grid.width(), 1);
            column.set(0, one.values[i]);
            known.push_back(schema::statistics(column, grid));
            blocks.emplace_back(std::move(column));
        }
        std::size_t next = 0;
        Selection selection;
        filter.select(
            1, [&](std::size_t slot) -> const codec::Block& { return ++next, blocks[slot]; },
            selection);
        EXPECT_NE(filter.decide(known), selection.empty() ? Decision::All : Decision::None)
            << one.text;
    }
}
