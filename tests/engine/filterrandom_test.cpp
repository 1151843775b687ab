// Random expressions, evaluated point by point on a tree of the test's own.
#include "engine/base/error.h"
#include "tests/engine/filtertable.h"
#include "tests/engine/seed.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <random>

using namespace tarvo::engine;
using namespace tarvo::engine::filter;
using namespace tarvo::engine::filter::testing;

namespace {

struct Value {
    bool whole = true;
    Wide integer = 0;
    double real = 0;
    double asReal() const { return whole ? static_cast<double>(integer) : real; }
    bool truth() const { return whole ? integer != 0 : real < 0 || real > 0; }
};

Value ofReal(double value) {
    return {false, 0, value};
}
Value ofWhole(Wide value) {
    return {true, value, 0};
}

struct Tree {
    std::string operation;  // "lit", "ref" or an operator
    std::vector<Tree> operands;
    Value literal;
    std::size_t column = 0;
    std::string text;
};

struct Data {
    AttributeTable table = makeTable();
    std::vector<ElementRef> elements;
    std::vector<Column> columns;

    const Grid& grid(std::size_t column) const { return table[elements[column].attribute].grid; }
    const std::string& name(std::size_t column) const {
        return table[elements[column].attribute].record.name;
    }
    Value at(std::size_t column, std::size_t point) const {
        const Grid& own = grid(column);
        const std::uint64_t code = columns[column][point];
        if (own.kind() == Grid::Kind::Integer && name(column) != "k" && name(column) != "w")
            return ofWhole(own.integerValue(code));
        return ofReal(own.value(code));
    }
};

Value evaluate(const Tree& tree, const Data& data, std::size_t point) {
    const std::string& op = tree.operation;
    if (op == "lit")
        return tree.literal;
    if (op == "ref")
        return data.at(tree.column, point);
    const Value a = evaluate(tree.operands[0], data, point);
    if (op == "!")
        return ofWhole(!a.truth());
    if (op == "neg")
        return a.whole ? ofWhole(-a.integer) : ofReal(-a.real);
    const Value b = evaluate(tree.operands[1], data, point);
    if (op == "&&")
        return ofWhole(a.truth() && b.truth());
    if (op == "||")
        return ofWhole(a.truth() || b.truth());
    const bool whole = a.whole && b.whole;
    const double x = a.asReal(), y = b.asReal();
    if (op == "+")
        return whole ? ofWhole(a.integer + b.integer) : ofReal(x + y);
    if (op == "-")
        return whole ? ofWhole(a.integer - b.integer) : ofReal(x - y);
    if (op == "*")
        return whole ? ofWhole(a.integer * b.integer) : ofReal(x * y);
    if (op == "/")
        return ofReal(x / y);
    if (op == "%") {
        if (!whole)
            return ofReal(std::fmod(x, y));
        // A divisor that could be 0 makes a double.
        const Tree& divisor = tree.operands[1];
        const bool never0 = divisor.operation == "lit" || data.name(divisor.column) == "h";
        if (b.integer == 0)
            return ofReal(noInvalid);
        return never0 ? ofWhole(a.integer % b.integer)
                      : ofReal(static_cast<double>(a.integer % b.integer));
    }
    // A number that is written is compared exactly with a whole one.
    const auto isExact = [](const Value& value, const Tree& other, const Value& literal) {
        return value.whole && other.operation == "lit" && std::trunc(literal.real) == literal.real;
    };
    const bool exact = whole || isExact(a, tree.operands[1], b) || isExact(b, tree.operands[0], a);
    const Wide m = a.whole ? a.integer : exact ? static_cast<Wide>(a.real) : 0;
    const Wide n = b.whole ? b.integer : exact ? static_cast<Wide>(b.real) : 0;
    const int order = exact ? (m < n ? -1 : m > n) : x < y ? -1 : x > y ? 1 : x == y ? 0 : 2;
    if (op == "==")
        return ofWhole(order == 0);
    if (op == "!=")
        return ofWhole(order != 0);
    if (op == "<")
        return ofWhole(order == -1);
    if (op == "<=")
        return ofWhole(order == -1 || order == 0);
    if (op == ">")
        return ofWhole(order == 1);
    return ofWhole(order == 1 || order == 0);
}

class Generator {
public:
    Generator(const Data& data, std::mt19937_64& random) : m_data(data), m_random(random) {}

    Tree condition(int depth) {
        const int kind = pick(depth > 0 ? 10 : 4);
        if (kind >= 7)
            return binary(pick(2) ? "&&" : "||", condition(depth - 1), condition(depth - 1));
        if (kind == 6)
            return unary("!", "!", condition(depth - 1));
        if (kind == 5)
            return number(2);
        static const char* const comparisons[] = {"==", "!=", "<", "<=", ">", ">="};
        const std::string op = comparisons[pick(6)];
        if (kind == 4)
            return binary(op, number(2), number(2));
        if (kind == 3)
            return binary(op, large(), pick(2) ? large() : literalNear(pick(2) ? 5 : 6));
        const std::size_t column = pick(m_data.columns.size());
        Tree element = reference(column);
        Tree literal = literalNear(column);
        return pick(2) ? binary(op, std::move(element), std::move(literal))
                       : binary(op, std::move(literal), std::move(element));
    }

private:
    int pick(std::size_t count) { return static_cast<int>(m_random() % count); }

    Tree reference(std::size_t column) {
        Tree tree{"ref", {}, {}, column, m_data.name(column)};
        const ElementRef& element = m_data.elements[column];
        if (m_data.table[element.attribute].record.length > 1)
            tree.text += "[" + std::to_string(element.element) + "]";
        return tree;
    }

    static Tree literal(const Value& value) {
        if (value.whole) {
            const bool negative = value.integer < 0;
            const auto size = static_cast<std::uint64_t>(negative ? -value.integer : value.integer);
            return {"lit",
                    {},
                    value,
                    0,
                    negative ? "(-" + std::to_string(size) + ")" : std::to_string(size)};
        }
        char buffer[64];
        // All digits of a whole number: the shortest ones that make the same double are another
        // one.
        const bool hasAllDigits =
            std::trunc(value.real) == value.real && std::fabs(value.real) < 0x1p70;
        std::string text(
            buffer,
            hasAllDigits
                ? std::to_chars(buffer, buffer + 64, value.real, std::chars_format::fixed).ptr
                : std::to_chars(buffer, buffer + 64, value.real).ptr);
        if (text.find_first_not_of("-0123456789") == std::string::npos)
            text += ".0";
        return {"lit", {}, value, 0, "(" + text + ")"};
    }

    // A value of the column, or one beside it.
    Tree literalNear(std::size_t column) {
        Value value = m_data.at(column, pick(m_data.columns[column].size()));
        if (!value.whole && !std::isfinite(value.real))
            value = ofReal(0.25);
        if (value.whole)
            value.integer += pick(5) == 0 ? pick(3) - 1 : 0;
        else if (pick(4) == 0)
            value.real += pick(2) ? 0.004 : -1;
        if (value.whole && pick(4) == 0)
            value = ofReal(static_cast<double>(value.integer) + (pick(2) ? 0.5 : 0));
        if (value.whole && (value.integer < -Wide(~0ull) || value.integer > Wide(~0ull)))
            value = ofWhole(1);
        return literal(value);
    }

    Tree small(int depth) {
        static const std::size_t columns[] = {0, 1, 2, 3, 4, 7, 8, 9, 10, 11};
        if (depth == 0 && pick(3) == 0)
            return literal(pick(2) ? ofWhole(pick(1000) - 300) : ofReal(pick(1000) / 16.0 - 20));
        return reference(columns[pick(10)]);
    }

    Tree number(int depth) {
        if (depth == 0 || pick(5) == 0)
            return small(depth);
        switch (pick(7)) {
            case 0:
                return unary("neg", "-", number(depth - 1));
            case 1:
                return binary("+", number(depth - 1), number(depth - 1));
            case 2:
                return binary("-", number(depth - 1), number(depth - 1));
            case 3:
                return binary("*", number(depth - 1), number(depth - 1));
            case 4:
                return binary("/", number(depth - 1), number(depth - 1));
            case 5: {
                static const std::size_t divisors[] = {0, 1, 2, 7};
                return binary(
                    "%", number(depth - 1),
                    pick(2) ? reference(divisors[pick(4)]) : literal(ofWhole(1 + pick(50))));
            }
            default:
                return condition(0);
        }
    }

    // Over the 64-bit attributes, where doubles would round.
    Tree large() {
        Tree base = reference(pick(2) ? 5 : 6);
        switch (pick(5)) {
            case 0:
                return binary("+", std::move(base), literal(ofWhole(pick(100))));
            case 1:
                return binary("-", std::move(base), literalNear(6));
            case 2:
                return binary("*", std::move(base), literal(ofWhole(pick(9) - 4)));
            case 3:
                return binary("%", std::move(base), literal(ofWhole(1 + pick(5))));
            default:
                return base;
        }
    }

    static Tree unary(const std::string& operation, const std::string& symbol, Tree operand) {
        Tree tree{operation, {}, {}, 0, symbol + "(" + operand.text + ")"};
        tree.operands.push_back(std::move(operand));
        return tree;
    }

    static Tree binary(const std::string& operation, Tree a, Tree b) {
        Tree tree{operation, {}, {}, 0, "(" + a.text + ") " + operation + " (" + b.text + ")"};
        tree.operands.push_back(std::move(a));
        tree.operands.push_back(std::move(b));
        return tree;
    }

    const Data& m_data;
    std::mt19937_64& m_random;
};

void fillColumns(Data& data, std::size_t count, std::mt19937_64& random) {
    data.columns.clear();
    data.elements.clear();
    for (std::size_t attribute = 0; attribute < data.table.size(); ++attribute)
        for (std::uint32_t e = 0; e < std::min(2u, data.table[attribute].record.length); ++e) {
            const Grid& grid = data.table[attribute].grid;
            const std::uint64_t first =
                grid.kind() == Grid::Kind::Float ? grid.firstAtLeast(-INFINITY).code : 0;
            const std::uint64_t size = grid.maximumCode() - first;
            // Narrow ranges now and then, so that statistics decide; few distinct values, so that
            // equality occurs.
            const std::uint64_t spread = random() % 3 == 0 ? std::min<std::uint64_t>(size, 3)
                                         : random() % 2    ? std::min<std::uint64_t>(size, 40)
                                                           : size;
            const std::uint64_t low =
                first + (size - spread == 0 ? 0 : random() % (size - spread + 1));
            const bool invalids = random() % 2;
            Column column(grid.width(), count);
            for (std::size_t i = 0; i < count; ++i)
                column.set(i, grid.hasInvalid() && invalids && random() % 4 == 0
                                  ? grid.invalidCode()
                              : spread == ~0ull ? random()
                                                : low + random() % (spread + 1));
            if (grid.kind() == Grid::Kind::Float && random() % 2)
                for (std::size_t i = 0; i < count; ++i)
                    if (!grid.isInvalid(column[i]))
                        column.set(i,
                                   grid.code(std::max(static_cast<double>(random() % 41) / 4 - 5,
                                                      data.table[attribute].record.minimumValue)));
            data.elements.push_back({attribute, e});
            data.columns.push_back(std::move(column));
        }
}

}  // namespace

TEST(FilterRandom, AgreesWithAPointByPointEvaluation) {
    std::mt19937_64 random(tarvo::engine::testing::seedOfRun());
    Data data;
    int decided = 0, checked = 0;
    for (int batch = 0; batch < 60; ++batch) {
        const std::size_t count = batch % 10 == 0 ? 2500 : 1 + random() % 40;
        fillColumns(data, count, random);
        Generator generator(data, random);
        for (int i = 0; i < (count > 100 ? 60 : 200); ++i) {
            const Tree tree = generator.condition(3);
            SCOPED_TRACE(tree.text);
            const BoundFilter filter(Expression::parse(tree.text), data.table);
            const auto indexOf = [&](const ElementRef& element) {
                return static_cast<std::size_t>(
                    std::find(data.elements.begin(), data.elements.end(), element) -
                    data.elements.begin());
            };
            Selection expected;
            for (std::size_t point = 0; point < count; ++point)
                if (evaluate(tree, data, point).truth())
                    expected.push_back(static_cast<std::uint32_t>(point));
            const auto columnOf = [&](const ElementRef& element) -> const Column& {
                return data.columns[indexOf(element)];
            };
            ASSERT_EQ(selectFrom(filter, count, columnOf), expected);

            std::vector<schema::ElementStatistics> known;
            for (const ElementRef& element : filter.elements())
                known.push_back(schema::statistics(data.columns[indexOf(element)],
                                                   data.table[element.attribute].grid));
            Decided conditions;
            const Decision decision = filter.decide(known, &conditions);
            if (decision == Decision::None) {
                ASSERT_TRUE(expected.empty());
            } else if (decision == Decision::All) {
                ASSERT_EQ(expected.size(), count);
            } else {
                ASSERT_EQ(selectFrom(filter, count, columnOf, conditions), expected);
            }
            ++checked;
            decided += decision != Decision::Look && !filter.elements().empty();
        }
    }
    // Statistics that decide nothing would be sound as well.
    EXPECT_GT(decided, checked / 20);
}

TEST(FilterRandom, CodesThatNoValueHasDoNoHarm) {
    std::mt19937_64 random(5);
    Data data;
    fillColumns(data, 300, random);
    Generator generator(data, random);
    std::vector<Tree> trees;
    for (int i = 0; i < 3000; ++i)
        trees.push_back(generator.condition(3));
    for (const char* text : {"a % h == 1", "g % h == 0", "(f - g) % (h - 40) > 1", "-g * g < 3"})
        trees.push_back({"", {}, {}, 0, text});
    for (Column& column : data.columns)
        for (std::size_t i = 0; i < column.size(); ++i)
            column.set(i, i % 3 == 0 ? ~0ull - i % 5 : random());
    for (const Tree& tree : trees) {
        const BoundFilter filter(Expression::parse(tree.text), data.table);
        std::vector<schema::ElementStatistics> known;
        for (std::size_t i = 0; i < filter.elements().size(); ++i)
            known.push_back({random() >> random() % 64, random() >> random() % 64,
                             random() % 4 != 0, random() % 2 != 0});
        filter.decide(known);
        const Selection selection =
            selectFrom(filter, 300, [&](const ElementRef& element) -> const Column& {
                return data.columns[static_cast<std::size_t>(
                    std::find(data.elements.begin(), data.elements.end(), element) -
                    data.elements.begin())];
            });
        ASSERT_LE(selection.size(), 300u) << tree.text;
        ASSERT_TRUE(std::is_sorted(selection.begin(), selection.end()));
        ASSERT_TRUE(selection.empty() || selection.back() < 300) << tree.text;
    }
}
