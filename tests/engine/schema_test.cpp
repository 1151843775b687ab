// Definitions of attributes: what they are taken for, and how attributes are named and picked.
#include "engine/base/error.h"
#include "engine/schema/lodmethod.h"
#include "engine/schema/merge.h"
#include "engine/schema/namefilter.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>

namespace tarvo::engine::schema {
namespace {

constexpr double none = std::numeric_limits<double>::quiet_NaN();

AttributeRecord record(const std::string& name, double minimum, double maximum,
                       double resolution = 1, double invalid = none) {
    AttributeRecord result;
    result.name = name;
    result.length = 1;
    result.minimumValue = result.defaultValue = minimum;
    result.maximumValue = maximum;
    result.resolution = resolution;
    result.invalidValue = invalid;
    return result;
}

// What a function throws: its text, and its details behind a bar; empty for nothing.
std::string failureOf(const std::function<void()>& function, ErrorCode code = ErrorCode::Argument) {
    try {
        function();
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.code(), code) << failure.what();
        return std::string(failure.what()) +
               (failure.details().empty() ? "" : "|" + failure.details());
    }
    return {};
}

TEST(AttributeType, IsTheSmallestThatHoldsEveryValue) {
    const double two63 = 9223372036854775808.0, two64 = 18446744073709551616.0;
    const struct {
        double minimum, maximum, resolution, invalid;
        std::uint32_t type;
    } cases[] = {
        {0, 255, 1, none, QRB_DATA_TYPE_UINT8},
        {0, 256, 1, none, QRB_DATA_TYPE_UINT16},
        {0, 254, 1, 255, QRB_DATA_TYPE_UINT8},
        {0, 255, 1, 256, QRB_DATA_TYPE_UINT16},
        {0, 255, 1, -1, QRB_DATA_TYPE_INT16},
        {0, 65535, 1, none, QRB_DATA_TYPE_UINT16},
        {0, 65536, 1, none, QRB_DATA_TYPE_UINT32},
        {0, 4294967295.0, 1, none, QRB_DATA_TYPE_UINT32},
        {0, 4294967296.0, 1, none, QRB_DATA_TYPE_UINT64},
        {0, two64, 1, none, QRB_DATA_TYPE_UINT64},
        {0, two64 * 2, 4096, none, QRB_DATA_TYPE_DOUBLE},
        {-128, 127, 1, none, QRB_DATA_TYPE_INT8},
        {-129, 127, 1, none, QRB_DATA_TYPE_INT16},
        {-128, 128, 1, none, QRB_DATA_TYPE_INT16},
        {-32768, 32767, 1, none, QRB_DATA_TYPE_INT16},
        {-32769, 0, 1, none, QRB_DATA_TYPE_INT32},
        {-1, 32768, 1, none, QRB_DATA_TYPE_INT32},
        {-2147483648.0, 2147483647, 1, none, QRB_DATA_TYPE_INT32},
        {-2147483649.0, 0, 1, none, QRB_DATA_TYPE_INT64},
        {-1, 2147483648.0, 1, none, QRB_DATA_TYPE_INT64},
        {-two63, two63, 1, none, QRB_DATA_TYPE_INT64},
        {-two63 * 2, 0, 4096, none, QRB_DATA_TYPE_DOUBLE},
        {-1, two64, 4096, none, QRB_DATA_TYPE_DOUBLE},
        {0, 10, 5, none, QRB_DATA_TYPE_UINT8},
        {0, 1, 0.1, none, QRB_DATA_TYPE_SINGLE},
        {0.5, 3.5, 1, none, QRB_DATA_TYPE_SINGLE},
        {0, 3.5, 1, none, QRB_DATA_TYPE_SINGLE},
        {0.5, 3, 1, none, QRB_DATA_TYPE_SINGLE},
        {0, 3, 1, 0.5, QRB_DATA_TYPE_SINGLE},
        {-3, 3, 1, -0.5, QRB_DATA_TYPE_SINGLE},
        {0, 1e9, 1, 0.5, QRB_DATA_TYPE_DOUBLE},
        {0, 8388607.5, 0.5, none, QRB_DATA_TYPE_SINGLE},
        {0, 8388608, 0.5, none, QRB_DATA_TYPE_DOUBLE},
        {-8388608, 0, 0.5, none, QRB_DATA_TYPE_DOUBLE},
        {0, 1, 0.5, 1e9, QRB_DATA_TYPE_DOUBLE},
        {0, 1, 0, none, QRB_DATA_TYPE_DOUBLE},
    };
    for (const auto& one : cases)
        EXPECT_EQ(dataType(record("a", one.minimum, one.maximum, one.resolution, one.invalid)),
                  one.type)
            << one.minimum << " to " << one.maximum << " by " << one.resolution << ", invalid "
            << one.invalid;
    EXPECT_EQ(dataType(AttributeRecord()), std::uint32_t(QRB_DATA_TYPE_NONE));
}

TEST(AttributeRecords, AreRefusedBeyondTheirLimitsOnly) {
    using Change = std::function<void(AttributeRecord&)>;
    const auto outcome = [](const Change& change) {
        AttributeRecord changed = record("a", 0, 10);
        change(changed);
        return failureOf([&] { validate(changed); });
    };
    for (const Change& change :
         std::vector<Change>{[](AttributeRecord&) {}, [](AttributeRecord& r) { r.length = 255; },
                             [](AttributeRecord& r) { r.name = std::string(255, 'n'); },
                             [](AttributeRecord& r) { r.name = "_a.B9_"; },
                             [](AttributeRecord& r) { r.storageClass = 3; },
                             [](AttributeRecord& r) { r.compressionOptions = 3; },
                             [](AttributeRecord& r) { r.scaleFactor = -0.5; },
                             [](AttributeRecord& r) { r.defaultValue = r.invalidValue = 99; },
                             [](AttributeRecord& r) { r.defaultValue = 10.5; }})
        EXPECT_EQ(outcome(change), "");
    const std::string name = "its name must begin with a letter and have at most 255 characters.";
    const std::pair<Change, std::string> refused[] = {
        {[](AttributeRecord& r) { r.name = ""; }, name},
        {[](AttributeRecord& r) { r.name = ".a"; }, name},
        {[](AttributeRecord& r) { r.name = "9a"; }, name},
        {[](AttributeRecord& r) { r.name = std::string(256, 'n'); }, name},
        {[](AttributeRecord& r) { r.name = "a-b"; },
         "its name may hold letters, digits, \".\" and \"_\" only."},
        {[](AttributeRecord& r) { r.length = 0; }, "its length is 0, 1 to 255 is possible."},
        {[](AttributeRecord& r) { r.length = 256; }, "its length is 256, 1 to 255 is possible."},
        {[](AttributeRecord& r) { r.storageClass = 0; },
         "its storage class is 0, 1 (constant), 2 (variable) and 3 (dynamic) are possible."},
        {[](AttributeRecord& r) { r.storageClass = 4; },
         "its storage class is 4, 1 (constant), 2 (variable) and 3 (dynamic) are possible."},
        {[](AttributeRecord& r) { r.compressionOptions = 4; },
         "its compression options are 4, 0 to 3 are possible."},
        {[](AttributeRecord& r) { r.invalidValue = -INFINITY; }, "its invalid value is infinite."},
        {[](AttributeRecord& r) { r.scaleFactor = INFINITY; }, "its scale factor is not a number."},
        {[](AttributeRecord& r) { r.scaleFactor = none; }, "its scale factor is not a number."},
        {[](AttributeRecord& r) { r.defaultValue = 11; },
         "its default value is neither in its range nor the invalid value."},
        {[](AttributeRecord& r) { r.defaultValue = none; },
         "its default value is neither in its range nor the invalid value."}};
    for (const auto& [change, reason] : refused) {
        AttributeRecord changed = record("a", 0, 10);
        change(changed);
        EXPECT_EQ(outcome(change),
                  "The point attribute \"" + changed.name + "\" is not valid: " + reason);
    }
}

TEST(AttributeRecords, BeginAsConstantsWithoutElements) {
    EXPECT_EQ(toJson(AttributeRecord()),
              R"({"name":"none","title":"none","tags":"","description":"","unit_symbol":"",)"
              R"("length":0,"resolution":1.0,"minimum_value":0.0,"maximum_value":0.0,)"
              R"("default_value":0.0,"invalid_value":null,"named_values":"","storage_class":1,)"
              R"("compression_options":0,"lod_settings":"default","scale_factor":1.0})");
}

TEST(AttributeRecords, StayWhatTheyAreWhenATextIsRefused) {
    AttributeRecord before = record("a", -5, 10, 0.5, 99);
    before.title = "title";
    before.tags = "tags";
    before.description = "description";
    before.unitSymbol = "m";
    before.length = 3;
    before.defaultValue = 7;
    before.namedValues = "1=one";
    before.storageClass = 3;
    before.compressionOptions = 2;
    before.lodSettings = "first";
    before.scaleFactor = 4;
    AttributeRecord after;
    recordFromJson(toJson(before), after);
    EXPECT_EQ(toJson(after), toJson(before));
    EXPECT_EQ(toJson(after),
              R"({"name":"a","title":"title","tags":"tags","description":"description",)"
              R"("unit_symbol":"m","length":3,"resolution":0.5,"minimum_value":-5.0,)"
              R"("maximum_value":10.0,"default_value":7.0,"invalid_value":99.0,)"
              R"("named_values":"1=one","storage_class":3,"compression_options":2,)"
              R"("lod_settings":"first","scale_factor":4.0})");
    EXPECT_EQ(failureOf([&] {
                  recordFromJson(R"({"name": "b", "length": 2, "scale_factor": "x"})", after);
              }),
              "The point attribute text has no valid member \"scale_factor\".|Expected a number or "
              "null.");
    EXPECT_EQ(toJson(after), toJson(before));
    recordFromJson(R"({"invalid_value": null})", after);
    EXPECT_TRUE(std::isnan(after.invalidValue));
}

TEST(AttributeNames, WithElementsAndPropertiesAreTakenApart) {
    const auto parts = [](const char* text) {
        std::string result;
        const std::string failed = failureOf([&] {
            const Descriptor found = decodeDescriptor(text);
            result = found.name + "|" + std::to_string(found.element) + "|" + found.property;
        });
        return failed + result;
    };
    const auto refusal = [](const std::string& text, const std::string& reason) {
        return "\"" + text + "\" does not name a point attribute: " + reason;
    };
    const std::string name = "expected a name that begins with a letter.";
    const std::string number = "expected a number between \"[\" and \"]\".";
    const std::pair<const char*, std::string> cases[] = {
        {"a.b_9", "a.b_9|-1|"},
        {" \t a [ 12 ] : minimum \t", "a|12|minimum"},
        {"a[0]", "a|0|"},
        {"a[1] :maximum", "a|1|maximum"},
        {"a:default", "a|-1|default"},
        {"a:invalid", "a|-1|invalid"},
        {"a[4294967295]", "a|4294967295|"},
        {"", refusal("", name)},
        {"9a", refusal("9a", name)},
        {" .a ", refusal(".a", name)},
        {"[1]", refusal("[1]", name)},
        {"a[1", refusal("a[1", "expected \"]\" behind the element.")},
        {"a[]", refusal("a[]", number)},
        {"a[1x]", refusal("a[1x]", number)},
        {"a[-1]", refusal("a[-1]", number)},
        {"a[4294967296]", refusal("a[4294967296]", number)},
        {"a:", refusal("a:", "expected minimum, maximum, default or invalid behind \":\".")},
        {"a:Minimum",
         refusal("a:Minimum", "expected minimum, maximum, default or invalid behind \":\".")},
        {"a b", refusal("a b", "found \"b\" behind the name.")},
        {"a[1] b", refusal("a[1] b", "found \"b\" behind the name.")},
    };
    for (const auto& [text, expected] : cases)
        EXPECT_EQ(parts(text), expected);

    AttributeTable table;
    AttributeRecord three = record("b", 0, 1);
    three.length = 3;
    table.all().emplace_back(record("a", 0, 1), 7);
    table.all().emplace_back(three, 2);
    const auto elements = [&](const char* text) {
        const ElementRange range = resolveElements(table, text);
        return std::vector<std::size_t>{range.attribute, range.first, range.count};
    };
    EXPECT_EQ(elements("a"), (std::vector<std::size_t>{0, 0, 1}));
    EXPECT_EQ(elements("b"), (std::vector<std::size_t>{1, 0, 3}));
    EXPECT_EQ(elements("b[0]"), (std::vector<std::size_t>{1, 0, 1}));
    EXPECT_EQ(elements("b[2]"), (std::vector<std::size_t>{1, 2, 1}));
    EXPECT_EQ(failureOf([&] { elements("b[3]"); }),
              "The point attribute \"b\" has the elements 0 to 2, not 3.");
    EXPECT_EQ(failureOf([&] { elements("b:minimum"); }),
              "Values of \"b:minimum\" can't be bound, only those of an attribute.");
    EXPECT_EQ(failureOf([&] { elements("B"); }, ErrorCode::NotFound),
              "The database has no point attribute \"B\".");
    EXPECT_EQ(table.findUid(2), 1);
    EXPECT_EQ(table.findUid(7), 0);
    EXPECT_EQ(table.findUid(1), -1);
}

TEST(LodMethods, AreNamedBySettingsTagsAndNames) {
    const auto method = [](const std::string& settings, const std::string& tags = "",
                           const std::string& named = "", const std::string& name = "a") {
        AttributeRecord one = record(name, 0, 1);
        one.lodSettings = settings;
        one.tags = tags;
        one.namedValues = named;
        return lodMethod(one);
    };
    const std::pair<const char*, LodMethod> settings[] = {
        {"", LodMethod::Average},
        {"default", LodMethod::Average},
        {"average", LodMethod::Average},
        {"minimum", LodMethod::Minimum},
        {"maximum", LodMethod::Maximum},
        {"majority", LodMethod::Majority},
        {"first", LodMethod::First},
        {"\"first\"", LodMethod::First},
        {"{}", LodMethod::Average},
        {R"({"weight": 2, "method": "maximum"})", LodMethod::Maximum},
    };
    for (const auto& [text, expected] : settings)
        EXPECT_EQ(method(text), expected) << text;
    for (const char* tags : {"boolean", "enumeration", "a, boolean", "boolean ,b",
                             "x,enumeration,y", "booleans boolean", "nonboolean,boolean"})
        EXPECT_EQ(method("default", tags), LodMethod::Majority) << tags;
    for (const char* tags : {"booleans", "nonboolean", "Boolean", "enumeration2"})
        EXPECT_EQ(method("default", tags), LodMethod::Average) << tags;
    EXPECT_EQ(method("default", "", "1=one"), LodMethod::Majority);
    EXPECT_EQ(method("average", "boolean", "1=one"), LodMethod::Average);
    EXPECT_EQ(method("default", "boolean", "", "tarvo.id"), LodMethod::First);
    EXPECT_EQ(method("minimum", "", "", "tarvo.id"), LodMethod::Minimum);
    const std::string methods =
        "|The methods are default, average, minimum, maximum, majority, first and thinout.";
    EXPECT_EQ(
        failureOf([&] { method("First"); }),
        "The level-of-detail method \"First\" of the point attribute \"a\" is unknown." + methods);
    EXPECT_EQ(failureOf([&] { method("[]"); }),
              "The level-of-detail settings of \"a\" is not a JSON object.");
    EXPECT_EQ(failureOf([&] { method("{\"method\": 1}"); }),
              "The level-of-detail settings of \"a\" has no valid member \"method\".|Expected a "
              "text.");
}

TEST(NameFilters, PickByWholeNamesAndWholeTags) {
    AttributeRecord one = record("ab.c", 0, 1);
    one.tags = " first ,\n\tsecond tag\r\n,,third";
    EXPECT_EQ(tagsOf(one), (std::vector<std::string>{"first", "second tag", "third"}));
    for (const char* filter : {"", "*", "**", "ab.c", "ab.c*", "*ab.c", "a?.c", "a*c**", "????",
                               "#first", "#second tag", "#third"})
        EXPECT_TRUE(matchesFilter(one, filter)) << filter;
    for (const char* filter : {"ab", "ab.c?", "?ab.c", "b*", "AB.C", "#", "#First", "#second",
                               "# first", "#tag", "ab?c.", "*b"})
        EXPECT_FALSE(matchesFilter(one, filter)) << filter;
}

// The parts of a merged definition, and a few that can't be had from files alone.
TEST(MergedDefinitions, HoldTheValuesOfAll) {
    AttributeRecord first = record("a", -0.3, 1, 0.1);
    AttributeRecord second = record("a", -0.75, 2.25, 0.25, -9);
    AttributeRecord third = record("a", 0, 1, 0.5);
    first.title = "First";
    first.storageClass = 1;
    second.storageClass = 3;
    first.namedValues = "0=no\n\n1=yes";
    second.namedValues = "1=Yes\n2=maybe\n";
    third.namedValues = "2=more\n3";
    first.compressionOptions = 1;
    EXPECT_EQ(toJson(merged({first, second, third})),
              R"({"name":"a","title":"First","tags":"","description":"","unit_symbol":"",)"
              R"("length":1,"resolution":0.05,"minimum_value":-0.75,"maximum_value":2.25,)"
              R"("default_value":-0.3,"invalid_value":-9.0,)"
              R"("named_values":"0=no\n1=yes\n2=maybe\n3","storage_class":3,)"
              R"("compression_options":1,"lod_settings":"default","scale_factor":1.0})");
    EXPECT_EQ(toJson(merged({first})), toJson(first));  // also its constant

    const auto resolution = [](const AttributeRecord& a, const AttributeRecord& b) {
        const double one = merged({a, b}).resolution, other = merged({b, a}).resolution;
        EXPECT_EQ(one, other);
        return one;
    };
    EXPECT_EQ(resolution(record("a", -0.3, 1, 0.2), record("a", -0.2, 1, 0.2)), 0.1);
    EXPECT_EQ(resolution(record("a", -0.3, 1, 0.7), record("a", 0.4, 1, 0.7)), 0.7);
    EXPECT_EQ(resolution(record("a", 0, 1e15, 0.5), record("a", 0, 1, 0.1)), 0);
    EXPECT_EQ(resolution(record("a", 1e22, 1e22 + 4e8, 4194304), record("a", 0, 1e-6, 1e-20)), 0);
    EXPECT_EQ(resolution(record("a", -1e22, 0, 4194304), record("a", 0, 1e-6, 1e-20)), 0);
    const auto refusal = [](const AttributeRecord& a, const AttributeRecord& b) {
        return failureOf([&] { (void)merged({a, b}); });
    };
    const auto refused = [](const std::string& reason) {
        return "The definitions of the point attribute \"a\" can't be merged: " + reason +
               "|Give one of them another name.";
    };
    const double two60 = 1152921504606846976.0;
    EXPECT_EQ(refusal(record("a", -two60, 0), record("a", 0, 1, 0.5)),
              refused("one holds whole numbers above 2^53, another fractions."));
    EXPECT_EQ(refusal(record("a", 0, 1, 0), record("a", 0, two60)),
              refused("one holds whole numbers above 2^53, another fractions."));
    EXPECT_EQ(refusal(record("a", -two60 * 8, 0), record("a", 0, two60 * 16)),
              refused("their range is wider than 64 bits."));
    AttributeRecord scaled = record("a", 0, 1);
    scaled.scaleFactor = 0.5;
    EXPECT_EQ(refusal(record("a", 0, 1), scaled), refused("their scale factors are 1 and 0.5."));
}

}  // namespace
}  // namespace tarvo::engine::schema
