// The texts of filters and what they mean.
#include "engine/base/error.h"
#include "tests/engine/filtertable.h"

#include <gtest/gtest.h>

#include <cmath>
#include <thread>

using namespace tarvo::engine;
using namespace tarvo::engine::filter;
using namespace tarvo::engine::filter::testing;

namespace {

struct Result {
    int code = 0;
    std::string text, details;
};

Result failureOf(const std::string& text) {
    const AttributeTable table = makeTable();
    try {
        BoundFilter filter(Expression::parse(text), table);
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.code(), ErrorCode::Filter);
        return {static_cast<int>(failure.code()), failure.what(), failure.details()};
    }
    return {};
}

// Whether the one value of the attribute passes.
bool passes(const std::string& text, const std::string& name, double value) {
    const AttributeTable table = makeTable();
    const Grid& grid = table[static_cast<std::size_t>(table.find(name))].grid;
    Column column(grid.width(), 1);
    column.set(0, grid.code(value));
    const BoundFilter filter(Expression::parse(text), table);
    const bool selected =
        selectFrom(filter, 1, [&](const ElementRef&) -> const Column& { return column; }).size();
    std::vector<schema::ElementStatistics> known(filter.elements().size(),
                                                 schema::statistics(column, grid));
    EXPECT_NE(filter.decide(known), selected ? Decision::None : Decision::All) << text;
    return selected;
}

}  // namespace

TEST(FilterText, TellsWhatWasExpectedAndWhere) {
    struct {
        const char* text;
        const char* message;
    } const cases[] = {
        {"(a == 1 && ( )", "Expected a number, a name or \"(\" at position 14, found \")\"."},
        {"a == ", "Expected a number, a name or \"(\" at position 6, found the end."},
        {"find largest leaf", "Expected an operator at position 6, found \"largest\"."},
        {"(a > 1", "Expected an operator or \")\" at position 7, found the end."},
        {"a = 1", "Found \"=\" at position 3: write \"==\"."},
        {"a & b", "Found \"&\" at position 3: write \"&&\"."},
        {"a | b", "Found \"|\" at position 3: write \"||\"."},
        {"a > 12x", "Expected an operator after the number 12 at position 7, found \"x\"."},
        {"1e > a", "Expected an operator after the number 1 at position 2, found \"e\"."},
        {"a > 2e+", "Expected an operator after the number 2 at position 6, found \"e\"."},
        {"a \x01 b", "The character (not printable) at position 3 has no meaning in a filter."},
        {"1 < a < 5",
         "Found a second comparison at position 7: join comparisons with \"&&\", as in "
         "\"1 < a && a < 5\"."},
        {"a[1.5] > 1", "Expected the whole number of an element at position 3, found \"1.5\"."},
        {"a[2] > 1", "The attribute \"a\" has no element 2 (position 3): it has 1 element."},
        {"a[18446744073709551615] > 1",
         "The attribute \"a\" has no element 18446744073709551615 (position 3): it has 1 element."},
        {"a > 1e-999", "The number 1e-999 at position 5 is too large or too small."},
        {"yz[0] > 1", "There is no attribute \"yz\" (position 1)."},
        {"\xc3\xa4 > 1", "The character \"\xc3\xa4\" at position 1 has no meaning in a filter."},
        {"a:largest > 1",
         "Expected \"minimum\", \"maximum\", \"default\" or \"invalid\" at position 3, found "
         "\"largest\"."},
        {"tarvo.xyz[a] > 1",
         "Expected the whole number of an element at position 11, found \"a\"."},
        {"a > 1e999", "The number 1e999 at position 5 is too large or too small."},
        {"a < 85070591730234615865843651857942052865",
         "The number 85070591730234615865843651857942052865 at position 5 is too large to be held "
         "exactly: whole numbers go up to 85070591730234615865843651857942052864. Write it with an "
         "exponent to have it rounded."},
        {"1 > 0 || 9223372036854775808 * 9223372036854775808 * 1 < 9223372036854775808 * "
         "9223372036854775809",
         "The whole numbers at position 58 give one that is too large to be held exactly. Write "
         "one of them with a decimal point to have it rounded."},
        {"-4503599627370497.2 < 0",
         "The number 4503599627370497.2 at position 2 has too many digits: it would be taken for "
         "4503599627370497."},
        {"xyz[0] > 1", "There is no attribute \"xyz\" (position 1). Did you mean \"tarvo.xyz\"?"},
        {"1 < tarvo.xyz",
         "The attribute \"tarvo.xyz\" at position 5 has 3 elements: write \"tarvo.xyz[0]\" to "
         "\"tarvo.xyz[2]\"."},
        {"tarvo.xyz[3] > 1",
         "The attribute \"tarvo.xyz\" has no element 3 (position 11): it has 3 elements, counted "
         "from 0."},
    };
    for (const auto& c : cases)
        EXPECT_EQ(failureOf(c.text).text, c.message);
    EXPECT_EQ(failureOf("\xc3\xa4").details, "\xc3\xa4\n^");
    // Cut between characters.
    std::string umlauts;
    for (int i = 0; i < 100; ++i)
        umlauts += "\xc3\xa4";
    EXPECT_EQ(failureOf("$" + umlauts).details, "$" + umlauts.substr(0, 60) + "...\n^");
    EXPECT_EQ(failureOf("a >\t=1").details, "a > =1\n    ^");
    const Result far = failureOf(std::string(3000, ' ') + "a ? 1" + std::string(3000, ' '));
    EXPECT_NE(far.text.find("position 3003"), std::string::npos);
    EXPECT_LT(far.details.size(), 300u);
    EXPECT_EQ(far.details[far.details.size() - 1], '^');
}

TEST(FilterText, MarksThePlaceInTextsOfAnyLength) {
    for (const int parts : {0, 3, 30}) {
        std::string text;
        for (int i = 0; i < parts; ++i)
            text += "a == 1 || ";
        text += "$";
        for (int i = 0; i < parts; ++i)
            text += " || a == 1";
        const std::string details = failureOf(text).details;
        const std::size_t end = details.find('\n');
        const std::size_t caret = details.find('^', end);
        ASSERT_NE(caret, std::string::npos) << details;
        EXPECT_EQ(details.at(caret - end - 1), '$') << details;
    }
}

TEST(FilterText, BoundsDepthAndLength) {
    const auto nested = [](int depth) {
        return std::string(depth, '(') + "a" + std::string(depth, ')') + " == 1";
    };
    EXPECT_EQ(failureOf(nested(200)).text, "");
    EXPECT_EQ(failureOf(nested(201)).text,
              "The expression is nested too deeply at position 201: at most 200 levels are "
              "possible.");
    EXPECT_EQ(failureOf(std::string(199, '!') + "a").text, "");
    EXPECT_NE(failureOf(std::string(200, '!') + "a").text.find("too deeply"), std::string::npos);
    EXPECT_NE(failureOf(nested(30000)).text.find("nested too deeply"), std::string::npos);
    EXPECT_NE(failureOf(std::string(30000, '!') + "a").text.find("too deeply"), std::string::npos);
    EXPECT_NE(failureOf(std::string(30000, '-') + "a").text.find("too deeply"), std::string::npos);
    std::string sum = "a", list = "a == 1";
    for (int i = 0; i < 5000; ++i) {
        sum += "+a";
        list += " || a==" + std::to_string(i);
    }
    EXPECT_TRUE(passes(sum + " == 7 * 5001", "a", 7));
    EXPECT_EQ(failureOf(list).text, "");
    std::string groups = "(a == 1)";
    for (int i = 0; i < 300; ++i)
        groups += " || !(a == " + std::to_string(i) + ")";
    EXPECT_EQ(failureOf(groups).text, "");
    EXPECT_EQ(failureOf(std::string(65536, ' ')).text, "");
    EXPECT_EQ(failureOf(std::string(65537, ' ')).text,
              "The filter is too long: it has 65537 bytes, at most 65536 are possible.");

    // The deepest tree that is let in evaluates on a small thread.
    std::string deep = "a";
    for (int i = 0; i < 190; ++i)
        deep = i % 2 ? "(1 && " + deep + " > 0)" : "(0 - " + deep + " * 1)";
    EXPECT_NE(failureOf(deep + "").text.find("too deeply"), std::string::npos);
    deep = "a";
    for (int i = 0; i < 90; ++i)
        deep = i % 2 ? "!(" + deep + " > 0)" : "(0 - " + deep + ")";
    std::thread([&] { EXPECT_EQ(failureOf(deep).text, ""); }).join();
    passes(deep, "a", 3);
}

TEST(FilterText, BlankOrAlwaysTrueTextsSelectAll) {
    const AttributeTable table = makeTable();
    for (const char* text :
         {"", "  \t\r\n ", "1", "a >= 0", "2 > 1 && -1", "h >= 1 || g == 7", "a * 0 == 0",
          "9007199254740993 != 9007199254740992", "a\n>=\r\n0", "9223372036854775807 * 2 % 10 == 4",
          "20000000000000000000 > 1.9e19", "f:maximum + 1 > f:maximum", "1 % 0 != 1 % 0"}) {
        const BoundFilter filter(Expression::parse(text), table);
        EXPECT_TRUE(filter.empty()) << text;
        EXPECT_TRUE(filter.elements().empty()) << text;
        EXPECT_EQ(filter.decide({}), Decision::All);
        EXPECT_EQ(selectFrom(filter, 3, {}), (Selection{0, 1, 2}));
    }
    const BoundFilter never(Expression::parse("a > 255 && b == 1"), table);
    EXPECT_FALSE(never.empty());
    EXPECT_TRUE(never.elements().empty());
    EXPECT_EQ(never.decide({}), Decision::None);
    EXPECT_TRUE(selectFrom(never, 3, {}).empty());
}

TEST(FilterMeaning, FollowsTheOperators) {
    EXPECT_TRUE(passes("1 + 2 * a == 7", "a", 3));
    EXPECT_TRUE(passes("10 - 4 - a == 3", "a", 3));
    EXPECT_TRUE(passes("a / 2 == 1.5", "a", 3));
    EXPECT_TRUE(passes("-b % 3 == -1", "b", 7));
    EXPECT_TRUE(passes("a == 1 || a == 3 && a == 4 || 0", "a", 1));
    EXPECT_TRUE(passes("!(a == 1) == 1", "a", 3));
    EXPECT_TRUE(passes("(a > 2) + (a > 1) == 2", "a", 3));
    EXPECT_FALSE(passes("a % (a - 3) == 0", "a", 3));
    EXPECT_TRUE(passes("a % (a - 3) != 0", "a", 3));
    EXPECT_TRUE(passes("1 / (a - 3) > 1e300", "a", 3));
    EXPECT_TRUE(passes("+a - -a == 6 && !!a == 1 && - - a == +3", "a", 3));
    EXPECT_TRUE(passes("a == 3. && 1.5e+2 == 150 && 1E2 == 100 && 5.e-1 == .5", "a", 3));
    EXPECT_TRUE(passes(
        "8 - 4 / 2 * 3 == 2 && 7 % 4 * 2 == 6 && -7 % 4 == -3 && 7.5 % 2 == 1.5 && a", "a", 3));
    EXPECT_TRUE(passes("1 || 0 && 0 && a", "a", 0));
    EXPECT_FALSE(passes("!a == 3", "a", 3));
    EXPECT_TRUE(passes("a", "a", 3));
    EXPECT_FALSE(passes("a", "a", 0));
    EXPECT_TRUE(passes(".5e1 < a+1e-3", "a", 5));
    // What the menus insert: blanks between a name, its index and its property.
    EXPECT_TRUE(passes("a == a :maximum && h:minimum == 1", "a", 255));
    EXPECT_TRUE(passes("tarvo.xyz [ 1 ] :minimum == -1 && a == 3", "a", 3));
}

TEST(FilterMeaning, ComparesWithWhatDefinitionsSay) {
    EXPECT_TRUE(passes("c == c:invalid", "c", -500));
    EXPECT_TRUE(passes("c == c:minimum", "c", -500));
    EXPECT_TRUE(passes("b == b:invalid", "b", -2000));
    EXPECT_FALSE(passes("b != b:invalid", "b", -2000));
    EXPECT_TRUE(passes("b < b:minimum", "b", -2000));
    EXPECT_TRUE(passes("d:invalid == d", "d", -1));
    EXPECT_TRUE(passes("k == 0.5", "k", 0.5));
    EXPECT_FALSE(passes("a == a:invalid", "a", 0));
    EXPECT_TRUE(passes("u + 1 == 0", "u", -1));
    EXPECT_FALSE(passes("u + 1 > 5", "u", -1));
    EXPECT_TRUE(passes("u + 1 > 1e19", "u", 1.7e19));
    EXPECT_TRUE(passes("g == g:maximum", "g", 18446744073709551616.0));
    EXPECT_TRUE(passes("z == 0", "z", 0));
    EXPECT_FALSE(passes("z", "z", 0));
    EXPECT_TRUE(passes("e != e", "e", noInvalid));
    EXPECT_FALSE(passes("e == e", "e", noInvalid));
    EXPECT_FALSE(passes("e", "e", noInvalid));
    EXPECT_FALSE(passes("e >= -1e6", "e", noInvalid));
    EXPECT_TRUE(passes("c == 0.07", "c", 0.07));
    EXPECT_TRUE(passes("tarvo.xyz[1] <= 0.003", "tarvo.xyz", 0.003));
    EXPECT_FALSE(passes("a < 1 % 0", "a", 3));
    EXPECT_FALSE(passes("a >= 1 % 0", "a", 3));
    EXPECT_TRUE(passes("a != 1 % 0", "a", 3));
}

// A definition may say what no point can be.
TEST(FilterMeaning, DefaultsBetweenTheStepsStayWhatTheyAre) {
    AttributeTable table = makeTable();
    AttributeRecord record = table[0].record;
    for (const double value : {0.4, 0.0, 254.75}) {
        record.defaultValue = value;
        table.all()[0] = schema::Attribute(record, 0);
        const std::string text = "a:default == " + std::to_string(value);
        EXPECT_TRUE(BoundFilter(Expression::parse(text), table).empty()) << text;
    }
}

TEST(FilterMeaning, InvalidValuesTakePartAsWhatTheyAre) {
    const struct {
        const char* text;
        const char* name;
        double passing, other;
    } cases[] = {
        {"b == -2000", "b", -2000, -1000},
        {"b >= -1000", "b", -1000, -2000},
        {"!(b > 5)", "b", -2000, 6},
        {"!(b != -2000)", "b", -2000, 0},
        {"b < 1000 || b == 1000", "b", -2000, noInvalid},
        {"b + 2000 == 0", "b", -2000, -1000},
        {"d * 2 == -2", "d", -1, 0.1},
        {"k + 0 == 0.5", "k", 0.5, 0},
        {"k % 1 != 0", "k", 0.5, 100},
        {"w > 1e29", "w", 1e30, 100},
        {"w + 1 > 1e29", "w", 1e30, 100},
        {"w == w:invalid", "w", 1e30, 100},
        {"w * 0.5 <= 50", "w", 100, 1e30},
        {"v", "v", 1, 0},
        {"!v", "v", 0, 10},
        {"y", "y", 1, noInvalid},
        {"!y", "y", noInvalid, 10},
        {"y * 1", "y", 1, noInvalid},
        {"y + 1 != y + 1", "y", noInvalid, 2},
        {"-m > 0", "m", -9223372036854775808.0, 0},
        {"!(a < 255)", "a", 255, 254},
        {"!(a > 0)", "a", 0, 1},
        {"b < 500 && b < 400", "b", -2000, 450},
        {"b < 500 && b > -500", "b", 0, -2000},
        {"b > -500 && b < 500", "b", 0, -2000},
        {"b < 5 && b == b:invalid", "b", -2000, 0},
        {"b == b:invalid && b > -500 && b < 500 || b == 7", "b", 7, -2000},
        {"!(b >= 400 || b >= 500)", "b", -2000, 450},
        {"!(b >= 500 || b < -500)", "b", 0, -2000},
        {"w > 10 && w > 50 && w < 1e31", "w", 1e30, 20},
        {"a != 3 && a < 5", "a", 4, 3},
        {"a < 5 && a != 3", "a", 4, 3},
        {"1 < g * 3", "g", 1.8e19, 0},
        {"g * g * 4 > 1e30", "g", 1.8e19, 1e6},
        {"(g * 7 + 3) % 10 == 3", "g", 20, 21},
    };
    for (const auto& one : cases) {
        EXPECT_TRUE(passes(one.text, one.name, one.passing)) << one.text;
        if (!std::isnan(one.other) || one.name == std::string("y")) {
            EXPECT_FALSE(passes(one.text, one.name, one.other)) << one.text;
        }
    }
}

// Of steps in whole numbers of two widths and in doubles.
TEST(FilterMeaning, ChainsOfOperatorsGoFromTheLeftEachStepAsIfAlone) {
    const double large = 4503599627370497;  // 2^52 + 1
    std::string sum = "f";
    for (int i = 1; i < 6001; ++i)
        sum += i % 2 ? " + f" : " + 2 * f";
    EXPECT_TRUE(passes(sum + " == 40536900245961843497", "f", large));  // 9001 times it
    EXPECT_TRUE(passes("2 * f + 1 - 9007199254740994 - 0.5 == 0.5", "f", large));
    EXPECT_TRUE(passes("0.5 + 2 * f + 1 - 9007199254740994 != 1.5", "f", large));
    EXPECT_TRUE(passes("f * 2 % 10 / 4 == 1", "f", large));
    EXPECT_TRUE(passes("10 - a - 2 - 1 == 0", "a", 7));
    EXPECT_TRUE(passes("98 / a / 2 * 7 % 4 == 1", "a", 7));
    EXPECT_TRUE(passes("a % (a - 7) + 1 != 0", "a", 7));
    EXPECT_FALSE(passes("a % (a - 7) + 1 < 1", "a", 7));
}

// As doubles each of these pairs is one number.
TEST(FilterMeaning, NumbersThatAreWrittenAreComparedExactly) {
    const char* const ascending[][2] = {
        {"18446744073709551615", "18446744073709551616"},
        {"9007199254740992.0", "9007199254740993"},
        {"9007199254740992", "9007199254740993.0"},
        {"9007199254740992.00", "9007199254740993.000"},
        {"18446744073709551615", "18446744073709551616.0"},
        {"18446744073709551615.0", "1.8446744073709551616e19"},
        {"99999999999999991611392", "1e23"},
        {"85070591730234615865843651857942052863", "85070591730234615865843651857942052864"},
        {"85070591730234615865843651857942052863", "85070591730234615865843651857942052864.0"},
        {"85070591730234615865843651857942052864", "85070591730234615865843651857942052865e0"},
        {"9223372036854775807 * 9223372036854775807", "9223372036854775807 * 9223372036854775808"},
        {"18446744073709551616 - 1", "18446744073709551615 + 1"},
        {"-18446744073709551616", "-18446744073709551615"},
        {"-9007199254740993.0", "-9007199254740992"},
    };
    for (const auto& [less, more] : ascending) {
        const std::string a = less, b = more;
        for (const std::string& text : {a + " < " + b, b + " > " + a, a + " != " + b,
                                        "!(" + b + " <= " + a + ")", b + " == " + b})
            EXPECT_TRUE(passes(text, "a", 1)) << text;
    }
    for (const char* text : {"1e23 == 100000000000000000000000", "2.50e1 == 25", "0e9 == 0.0",
                             "w == 1e30", "1e30 == w:invalid", "00012 == 12", "1e300 > 1e299"})
        EXPECT_TRUE(passes(text, "w", 1e30)) << text;
    // Doubles of which none is the number.
    EXPECT_FALSE(passes("e == 9007199254740993 || g == 18446744073709551616", "g", 1.8e19));
    const double two54 = 18014398509481984;
    EXPECT_TRUE(passes("x == 18014398509481984", "x", two54));
    for (const char* number : {"18014398509481983", "18014398509481985"}) {
        const std::string text = number;
        EXPECT_FALSE(passes("x == " + text, "x", two54));
        EXPECT_EQ(passes("x < " + text, "x", two54), number == std::string("18014398509481985"));
        EXPECT_EQ(passes("x >= " + text, "x", two54), number == std::string("18014398509481983"));
    }
}

TEST(FilterMeaning, LargeIntegersStayExact) {
    const AttributeTable table = makeTable();
    Column ids(8, 3);
    for (const std::uint64_t i : {0u, 1u, 2u})
        ids.set(i, 9007199254740992u + i);
    const auto count = [&](const char* text) {
        const BoundFilter filter(Expression::parse(text), table);
        return selectFrom(filter, 3, [&](const ElementRef&) -> const Column& { return ids; })
            .size();
    };
    EXPECT_EQ(count("f == 9007199254740993"), 1u);
    EXPECT_EQ(count("f == 9007199254740993.0"), 1u);
    EXPECT_EQ(count("9.007199254740992e15 == f"), 1u);
    EXPECT_EQ(count("f + 0 <= 9007199254740992.0"), 1u);
    EXPECT_EQ(count("-f < -9007199254740993.0"), 1u);
    EXPECT_EQ(count("g < 18446744073709551616"), 3u);
    EXPECT_EQ(count("f + 1 > 9007199254740993"), 2u);
    EXPECT_EQ(count("g % 2 == 1"), 1u);
    EXPECT_EQ(count("g * 3 == 27021597764222979"), 1u);
    EXPECT_EQ(count("m % -1 == 0"), 3u);
    // The smallest number by -1, of which both are values of points.
    Column least(8, 3), minus(1, 3);
    minus.set(0, 4);
    const BoundFilter remainder(Expression::parse("m % n == 0"), table);
    EXPECT_EQ(selectFrom(remainder, 3,
                         [&](const ElementRef& element) -> const Column& {
                             return table[element.attribute].record.name == "m" ? least : minus;
                         }),
              (Selection{0}));
    // Of whole numbers, though 0 could be among the divisors.
    Column many(8, 3), twos(8, 3);
    for (const std::size_t i : {0u, 1u, 2u}) {
        many.set(i, 9007199254740992u + i);
        twos.set(i, i == 2 ? 0 : 2);
    }
    const BoundFilter parity(Expression::parse("f % g == 1"), table);
    EXPECT_EQ(selectFrom(parity, 3,
                         [&](const ElementRef& element) -> const Column& {
                             return table[element.attribute].record.name == "f" ? many : twos;
                         }),
              (Selection{1}));
    EXPECT_EQ(count("g - 9007199254740992 < 2"), 2u);
    EXPECT_EQ(count("f % 2"), 1u);
    EXPECT_EQ(count("18446744073709551615 - g >= 18437736874454810623"), 1u);
}

TEST(FilterMeaning, ReadsNoColumnThatTheOthersMakeNeedless) {
    const AttributeTable table = makeTable();
    const BoundFilter filter(Expression::parse("(e * 2 > 1) && a == 300 - 100"), table);
    const codec::Block zeros(Column(1, 5000));
    Selection selection;
    filter.select(
        5000,
        [&](std::size_t slot) -> const codec::Block& {
            EXPECT_EQ(filter.elements()[slot], (ElementRef{0, 0}));
            return zeros;
        },
        selection);
    EXPECT_TRUE(selection.empty());
}

TEST(FilterMeaning, EachElementIsAskedForOnceAndMustHaveAllPoints) {
    const AttributeTable table = makeTable();
    const BoundFilter filter(
        Expression::parse("c > 1 && a * a > a && tarvo.xyz[2] < a && tarvo.xyz[0] < 1 && c < 9"),
        table);
    EXPECT_EQ(filter.elements(), (std::vector<ElementRef>{{2, 0}, {10, 0}, {10, 2}, {0, 0}}));
    for (const std::size_t size : {9u, 10u}) {
        const Column narrow(1, size), wide(4, size);
        const auto select = [&] {
            (void)selectFrom(filter, 10, [&](const ElementRef& element) -> const Column& {
                return element.attribute == 0 ? narrow : wide;
            });
        };
        if (size < 10) {
            EXPECT_THROW(select(), Failure);
        } else {
            EXPECT_NO_THROW(select());
        }
    }
    // Points of the batch before are no points of this one.
    const BoundFilter equal(Expression::parse("a == 7"), table);
    Column sevens(1, 3), others(1, 3);
    sevens.set(1, 7);
    for (const Column* column : {&sevens, &others, &sevens}) {
        const Selection selection =
            selectFrom(equal, 3, [&](const ElementRef&) -> const Column& { return *column; });
        EXPECT_EQ(selection, column == &sevens ? Selection{1} : Selection{});
    }
}

TEST(FilterMeaning, MergedRangesOfOneElementDecideTogether) {
    const AttributeTable table = makeTable();
    const BoundFilter filter(Expression::parse("(c >= -10) && (c < 20) && (c != 5)"), table);
    const Grid& grid = table[2].grid;
    const auto decide = [&](double low, double high, bool invalid = false) {
        const std::vector<schema::ElementStatistics> known{
            {grid.code(low), grid.code(high), true, invalid}};
        return filter.decide(known);
    };
    EXPECT_EQ(decide(-10, 4.99), Decision::All);
    EXPECT_EQ(decide(-10, 4.99, true), Decision::Look);
    EXPECT_EQ(decide(20, 30), Decision::None);
    EXPECT_EQ(decide(5, 5), Decision::None);
    EXPECT_EQ(decide(4, 6), Decision::Look);
    const BoundFilter empty(Expression::parse("c > 3 && c < 2 && a == 1"), table);
    EXPECT_TRUE(empty.elements().empty());
}

// A condition that looks at a few points only, within another one that does.
TEST(FilterMeaning, ListsOfPointsWithinListsAreThoseOfTheBlock) {
    const AttributeTable table = makeTable();
    constexpr std::size_t count = 1024;
    Column a(1, count), b(2, count);
    const Grid& grid = table[1].grid;
    for (std::size_t i = 0; i < count; ++i) {
        a.set(i, i % 50);
        b.set(i, grid.code(static_cast<Wide>(i % 700)));
    }
    const BoundFilter filter(
        Expression::parse("a == 7 && (b == 7 && b % 2 == 1 && b % 7 == 0 || "
                          "b == 357 && b % 2 == 0 && b % 7 == 0 || b * 2 == 1114)"),
        table);
    const Selection selection = selectFrom(
        filter, count,
        [&](const ElementRef& element) -> const Column& { return element.attribute == 0 ? a : b; });
    Selection expected;
    for (std::uint32_t i = 0; i < count; ++i)
        if (i % 50 == 7 && (i % 700 == 7 || i % 700 == 557))
            expected.push_back(i);
    ASSERT_FALSE(expected.empty());
    EXPECT_EQ(selection, expected);
}
