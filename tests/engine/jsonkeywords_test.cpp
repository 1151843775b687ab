// The keywords of JSON schemas: findings that tell where a value fails, and can be acted on.
#include "tests/engine/jsoncheck.h"

#include "catalogue/catalogue.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tarvo::engine::validation {
namespace {

struct Case {
    const char* schema;
    const char* value;
    const char* findings;
};

class Keywords : public testing::TestWithParam<Case> {};

TEST_P(Keywords, TellWhereAndWhat) {
    EXPECT_EQ(check(GetParam().schema, GetParam().value), GetParam().findings);
}

INSTANTIATE_TEST_SUITE_P(
    Values, Keywords,
    testing::Values(
        Case{"{}", "[1, null]", ""}, Case{"true", "1", ""},
        Case{"false", "1", "The whole value: is not allowed here\n"},
        Case{R"({"type": "string"})", "5", "The whole value: expected a string, found 5\n"},
        Case{R"({"type": ["object", "null"]})", R"("a")",
             "The whole value: expected an object or null, found a string\n"},
        Case{R"({"type": "integer"})", "2.0", ""},
        Case{R"({"type": "integer"})", "2.5",
             "The whole value: expected a whole number, found 2.5\n"},
        Case{R"({"type": "integer", "minimum": 0})", "18446744073709551615", ""},
        Case{R"({"type": "integer", "maximum": 100})", "18446744073709551615",
             "The whole value: expected at most 100, found 18446744073709551615\n"},
        Case{R"({"minimum": -9223372036854775808})", "-9223372036854775808", ""},
        Case{R"({"maximum": 1e300})", "1e301",
             "The whole value: expected at most 1e+300, found 1e+301\n"},
        Case{R"({"enum": [1, "a", null, [1, 2], {"a": 1, "b": 2}]})", R"({"b": 2, "a": 1.0})", ""},
        Case{R"({"enum": ["on", "off"]})", R"("On")",
             "The whole value: expected \"on\" or \"off\", found \"On\"\n"},
        Case{R"({"const": 3})", "4", "The whole value: expected 3, found 4\n"},
        Case{R"({"minimum": 1, "exclusiveMaximum": 2})", "2",
             "The whole value: expected less than 2, found 2\n"},
        Case{R"({"minimum": 1, "exclusiveMinimum": true})", "1",
             "The whole value: expected more than 1, found 1\n"},
        Case{R"({"multipleOf": 0.1})", "0.3", ""},
        Case{R"({"multipleOf": 2})", "3.5",
             "The whole value: expected a multiple of 2, found 3.5\n"},
        Case{R"({"minLength": 3, "maxLength": 3})", R"("äöü")", ""},
        Case{R"({"maxLength": 2})", R"("äöü")",
             "The whole value: expected at most 2 characters, found 3\n"},
        Case{R"({"pattern": "^[°']$"})", R"("°")", ""},
        Case{R"({"pattern": "^a+$"})", R"("ab")",
             "The whole value: expected a text that matches ^a+$, found \"ab\"\n"},
        Case{R"({"pattern": "b"})", R"("abc")", ""}, Case{R"({"pattern": "^b"})", "7", ""},
        // Bytes that are no text, and texts that are cut, stay characters.
        Case{"{\"pattern\": \"^\ufffd\ufffd$\"}", "\"\xe2\x82\"", ""},
        Case{"{\"pattern\": \"^\ufffd\ufffd$\"}", "\"\xff\xc3\"", ""},
        Case{R"({"const": 1})", R"("ääääääääääääääääääääääääääääääääääääääää")",
             "The whole value: expected 1, found \"äääääääääääääääääääääääääääää...\n"},
        // The pattern is looked for anywhere, in texts of several lines too.
        Case{R"({"pattern": "a|b"})", R"("x\ny a z\n")", ""},
        Case{R"({"pattern": "^b|c$"})", R"("abc")", ""},
        Case{R"({"pattern": "^(a|b)$"})", R"("ab")",
             "The whole value: expected a text that matches ^(a|b)$, found \"ab\"\n"},
        Case{R"({"pattern": "^[\\]a]{2,3}\\($"})", R"("]a(")", ""},
        Case{R"({"pattern": "^[\\]a]{2,3}\\($"})", R"("](")",
             "The whole value: expected a text that matches ^[\\]a]{2,3}\\($, found \"](\"\n"},
        Case{"{\"pattern\": \"^\ufffd{4}$\"}", "\"\xf5\x80\x80\x80\"", ""},
        Case{R"({"pattern": "^[\\](?=]+$"})", R"("](?=")", ""},
        Case{R"({"pattern": "^a\\(?=b$"})", R"("a(=b")", ""},
        // Texts as they would be written.
        Case{R"({"enum": ["a\\b", "\u001f\""]})", R"("\u0011\\")",
             "The whole value: expected \"a\\\\b\" or \"\\u001f\\\"\", found \"\\u0011\\\\\"\n"},
        Case{R"({"enum": ["a\\b", "\u001f\""]})", R"("\u001f\"")", ""},
        // Equal numbers are equal however they are written, others are not.
        Case{R"({"enum": [1, 1e15, 0.5, 20000000000.0]})", "1.0", ""},
        Case{R"({"enum": [1.0, [2.0]]})", "[2]", ""},
        Case{R"({"const": 1000000000000000})", "1e15", ""},
        Case{R"({"const": 9007199254740993})", "9007199254740992",
             "The whole value: expected 9007199254740993, found 9007199254740992\n"},
        // Beyond 2^53 nothing is rounded, neither a limit nor a value nor a double beside either.
        Case{R"({"items": [{"minimum": 9007199254740993}, {"maximum": 9007199254740992},
                 {"exclusiveMaximum": 18446744073709551615}, {"exclusiveMinimum":
                 9007199254740992.0}, {"exclusiveMaximum": 18446744073709551615}, {"maximum":
                 18446744073709551616}, {"minimum": -9223372036854775807}, {"const":
                 18446744073709551614}, {"enum": [9007199254740992.0]}, {"maximum": 0.5}]})",
             R"([9007199254740992, 9007199254740993, 18446744073709551615, 9007199254740993,
                 18446744073709551614, 18446744073709551615, -9223372036854775808,
                 18446744073709551615, 9007199254740992, 9223372036854775807])",
             "/0: expected at least 9007199254740993, found 9007199254740992\n"
             "/1: expected at most 9007199254740992, found 9007199254740993\n"
             "/2: expected less than 18446744073709551615, found 18446744073709551615\n"
             "/6: expected at least -9223372036854775807, found -9223372036854775808\n"
             "/7: expected 18446744073709551614, found 18446744073709551615\n"
             "/9: expected at most 0.5, found 9223372036854775807\n"},
        Case{R"({"items": [{"multipleOf": 1}, {"multipleOf": 1.5}, {"multipleOf": 0.001},
                 {"multipleOf": 18446744073709551615}, {"multipleOf": 0.1}, {"multipleOf": 1e-300},
                 {"multipleOf": 1e300}]})",
             R"([12345678901.5, 9007199254740994, 9007199254740993, 18446744073709551614,
                 0.30000000000000004, 1e300, 1])",
             "/0: expected a multiple of 1, found 12345678901.5\n"
             "/1: expected a multiple of 1.5, found 9007199254740994\n"
             "/3: expected a multiple of 18446744073709551615, found 18446744073709551614\n"
             "/6: expected a multiple of 1e+300, found 1\n"},
        Case{R"({"enum": [1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15]})", "0",
             "The whole value: expected 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11 or 12 or one of 3 more, "
             "found 0\n"},
        Case{R"({"enum": [1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12]})", "0",
             "The whole value: expected 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11 or 12, found 0\n"},
        Case{R"({"const": 1})", R"("aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa")",
             "The whole value: expected 1, found "
             "\"aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa\"\n"},
        Case{R"({"const": 1})", R"("aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa")",
             "The whole value: expected 1, found "
             "\"aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa...\n"},
        Case{R"({"multipleOf": 2})", "9007199254740993",
             "The whole value: expected a multiple of 2, found 9007199254740993\n"},
        Case{R"({"multipleOf": 3})", "-9007199254740993", ""},
        Case{R"({"multipleOf": 0.01})", "1234567.89", ""},
        Case{R"({"multipleOf": 0.01})", "1234567.895",
             "The whole value: expected a multiple of 0.01, found 1234567.895\n"},
        Case{R"({"items": {"minimum": 0}, "uniqueItems": false})",
             "[18446744073709551615, 18446744073709551615]", ""},
        Case{R"({"type": ["boolean", "null", "array"]})", "{}",
             "The whole value: expected true or false, null or an array, found an object\n"},
        Case{R"({"items": [{"maxLength": 0}, {"minLength": 1.0}, {"maxItems": 0}, {"minItems": 1},
                 {"maxProperties": 0}, {"minProperties": 1}, {"exclusiveMinimum": 1.5},
                 {"exclusiveMaximum": -1}, {"maximum": 1e-7}, {"multipleOf": 0.5}]})",
             R"(["a", "", [1], [], {"a": 1}, {}, 1.5, -1, 1, 0.25])",
             "/0: expected at most 0 characters, found 1\n"
             "/1: expected at least 1 characters, found 0\n"
             "/2: expected at most 0 elements, found 1\n"
             "/3: expected at least 1 elements, found 0\n"
             "/4: expected at most 0 members, found 1\n"
             "/5: expected at least 1 members, found 0\n"
             "/6: expected more than 1.5, found 1.5\n"
             "/7: expected less than -1, found -1\n"
             "/8: expected at most 0.0000001, found 1\n"
             "/9: expected a multiple of 0.5, found 0.25\n"},
        Case{R"({"pattern": "^[€😀]{2}$"})", R"("😀€")", ""},
        Case{R"({"maxLength": 1})", R"("😀")", ""},
        // Beyond 2^63, in values and in schemas.
        Case{R"({"properties": {"a": {"minimum": 0, "maximum": 18446744073709551615}},
                 "items": {"enum": [[18446744073709551615]]}})",
             R"({"a": 18446744073709551615})", ""},
        Case{R"({"items": {"enum": [{"b": [18446744073709551615]}]}})",
             R"([{"b": [18446744073709551615]}])", ""},
        // Beside a reference nothing counts, and what nobody refers to is not looked at.
        Case{R"({"definitions": {"a": {"type": "number"}, "b": {"type": "nonsense"}},
                 "$ref": "#/definitions/a", "minimum": 5, "prefixItems": []})",
             "3", ""},
        Case{R"({"definitions": {"a": {"type": "number"}}, "$ref": "#/definitions/a"})", "null",
             "The whole value: expected a number, found null\n"},
        Case{R"({"properties": {"a]": {"properties": {"[0]": {"items": {"type": "null"}}}}}})",
             R"({"a]": {"[0]": [null, 1]}})", "/a]/[0]/1: expected null, found 1\n"},
        // What looks at one kind of value lets the others pass.
        Case{
            R"({"required": ["a"], "minLength": 9, "minItems": 9, "minimum": 9, "uniqueItems": true,
                 "propertyNames": false, "patternProperties": {"": false}, "pattern": "a",
                 "multipleOf": 7})",
            "null", ""},
        // Marks within texts are no nesting.
        Case{
            R"({"type": "string"})",
            R"("\"[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[")",
            ""}));

INSTANTIATE_TEST_SUITE_P(
    Parts, Keywords,
    testing::Values(
        // Every fault, in the order of the value, each once, without its echo in the parents.
        Case{R"({"properties": {"b": {"type": "string"}, "a": {"properties": {"u": {"type":
                 "string"}}}}, "required": ["c", "d"]})",
             R"({"a": {"u": 1}, "b": false})",
             "The whole value: the member \"c\" is missing\n"
             "The whole value: the member \"d\" is missing\n"
             "/a/u: expected a string, found 1\n"
             "/b: expected a string, found true or false\n"},
        Case{R"({"items": {"type": "number"}})", R"([1, "2", 3, null, 5, 6, 7, 8, 9, 0, "x"])",
             "/1: expected a number, found a string\n/3: expected a number, found null\n"
             "/10: expected a number, found a string\n"},
        Case{R"({"properties": {"a": {}}, "additionalProperties": false})",
             R"({"a": 1, "b/c": 2, "~": 3})",
             "/b~1c: is not allowed here\n/~0: is not allowed here\n"},
        Case{R"({"properties": {"n": {}}, "patternProperties": {"^x_": {"type": "number"}},
                 "additionalProperties": {"type": "string"}})",
             R"({"x_a": 1, "x_b": "1", "n": null, "s": "", "t": 1})",
             "/x_b: expected a number, found a string\n/t: expected a string, found 1\n"},
        Case{R"({"propertyNames": {"pattern": "^[a-z]+$"}})", R"({"a": 1, "B": 2})",
             "/B: the name of the member is not allowed: expected a text that matches ^[a-z]+$, "
             "found \"B\"\n"},
        Case{R"({"items": [{"type": "string"}, {"type": "number"}], "additionalItems": false})",
             R"([1, 2, 3])", "/0: expected a string, found 1\n/2: is not allowed here\n"},
        Case{R"({"uniqueItems": true, "minItems": 4})",
             R"([{"a": 1, "b": 2}, 1, {"b": 2, "a": 1}])",
             "The whole value: expected at least 4 elements, found 3\n"
             "/2: is the same as element 0\n"},
        Case{R"({"uniqueItems": true})", R"([1, "1", 2, 1.0, [1], 2, 1])",
             "/3: is the same as element 0\n/5: is the same as element 2\n"
             "/6: is the same as element 0\n"},
        Case{
            R"({"propertyNames": {"maxLength": 1}})", R"({"bc": 1, "a": 2, "de": 3})",
            "/bc: the name of the member is not allowed: expected at most 1 characters, found 2\n"
            "/de: the name of the member is not allowed: expected at most 1 characters, found 2\n"},
        // Every expression that fits counts, also beside a schema by the name.
        Case{
            R"({"properties": {"ab": {"type": "number"}}, "patternProperties": {"a": {"minimum": 3},
                 "b": {"maximum": 1}}, "additionalProperties": false})",
            R"({"ab": 2, "xab": 2, "b": 2, "c": 0})",
            "/ab: expected at least 3, found 2\n/ab: expected at most 1, found 2\n"
            "/xab: expected at least 3, found 2\n/xab: expected at most 1, found 2\n"
            "/b: expected at most 1, found 2\n/c: is not allowed here\n"},
        Case{R"({"then": false, "else": false})", "1", ""},
        Case{R"({"if": {"minimum": 3}, "else": false})", "2",
             "The whole value: is not allowed here\n"},
        Case{R"({"contains": {"const": 5}})", "[1, 2]",
             "The whole value: has no element like the one that the schema asks for\n"},
        Case{R"({"dependencies": {"a": ["b"], "c": {"required": ["d"]}}})", R"({"a": 1, "c": 1})",
             "The whole value: the member \"b\" is missing, which another member needs\n"
             "The whole value: the member \"d\" is missing\n"},
        Case{R"({"dependencies": {"a": ["it's"]}})", R"({"a": 1})",
             "The whole value: the member \"it's\" is missing, which another member needs\n"},
        Case{R"({"minProperties": 2})", R"({"a": 1})",
             "The whole value: expected at least 2 members, found 1\n"},
        Case{R"({"anyOf": [{"type": "null"}, {"minimum": 3}]})", "2",
             "The whole value: expected null, found 2\nThe whole value: expected at least 3, found "
             "2\nThe whole value: satisfies none of the alternatives\n"},
        Case{R"({"oneOf": [{"type": "number"}, {"minimum": 3}]})", "5",
             "The whole value: satisfies more than one of the alternatives\n"},
        Case{R"({"allOf": [{"minimum": 3}, {"minimum": 3}, {"maximum": 1}]})", "2",
             "The whole value: expected at least 3, found 2\n"
             "The whole value: expected at most 1, found 2\n"},
        Case{R"({"not": {"type": "null"}})", "null",
             "The whole value: satisfies what the schema excludes with \"not\"\n"},
        Case{R"({"if": {"required": ["a"]}, "then": {"required": ["b"]}, "else": {"maxProperties":
                 0}})",
             R"({"a": 1})", "The whole value: the member \"b\" is missing\n"},
        // Members of a schema's parts may be called like keywords.
        Case{R"({"properties": {"$ref": {"type": "string"}, "id": {"type": "string"}, "type":
                 {"type": "null"}}})",
             R"({"$ref": 1, "id": 2, "type": 3})",
             "/$ref: expected a string, found 1\n/id: expected a string, found 2\n"
             "/type: expected null, found 3\n"},
        Case{R"({"definitions": {"a b": {"if": {"type": "number"}, "then": {"minimum": 1},
                 "propertyNames": {"maxLength": 1}}}, "properties": {"x": {"$ref":
                 "#/definitions/a%20b"}, "y": {"$ref": "#/definitions/a%20b"}}})",
             R"({"x": 0, "y": {"bc": 1}})",
             "/x: expected at least 1, found 0\n/y/bc: the name of the member is not allowed: "
             "expected at most 1 characters, found 2\n"}));

TEST(JsonSchema, HoldsEachLimitBelowAtAndAboveIt) {
    struct Limit {
        const char* schema;
        const char* below;
        const char* at;
        const char* above;
        const char* satisfied;  // a digit for each of the three
    };
    const Limit limits[] = {
        {R"({"minimum": 2})", "1.5", "2", "2.5", "011"},
        {R"({"maximum": 2})", "1.5", "2.0", "2.5", "110"},
        {R"({"exclusiveMinimum": 2})", "1.5", "2", "2.5", "001"},
        {R"({"exclusiveMaximum": 2})", "1.5", "2", "2.5", "100"},
        {R"({"minimum": 1, "exclusiveMinimum": 2})", "1.5", "2", "2.5", "001"},
        {R"({"maximum": 3, "exclusiveMaximum": 2})", "1.5", "2", "2.5", "100"},
        // Draft 4: a switch of each end by itself.
        {R"({"minimum": 2, "exclusiveMinimum": true})", "1", "2", "3", "001"},
        {R"({"minimum": 2, "exclusiveMinimum": false})", "1", "2", "3", "011"},
        {R"({"maximum": 2, "exclusiveMaximum": true})", "1", "2", "3", "100"},
        {R"({"maximum": 2, "exclusiveMaximum": false})", "1", "2", "3", "110"},
        {R"({"minimum": 2, "exclusiveMaximum": true})", "1", "2", "3", "011"},
        {R"({"maximum": 2, "exclusiveMinimum": true})", "1", "2", "3", "110"},
        {R"({"minimum": 0, "maximum": 2, "exclusiveMinimum": true})", "0", "1", "2", "011"},
        {R"({"minimum": 0, "maximum": 2, "exclusiveMaximum": true})", "0", "1", "2", "110"},
        {R"({"minimum": 0, "exclusiveMinimum": false, "maximum": 2, "exclusiveMaximum": true})",
         "0", "1", "2", "110"},
        {R"({"minimum": 0, "exclusiveMinimum": true, "maximum": 2, "exclusiveMaximum": false})",
         "0", "1", "2", "011"},
        {R"({"exclusiveMinimum": true, "exclusiveMaximum": true})", "0", "1", "2", "111"},
        {R"({"minimum": 2, "maximum": 2})", "1", "2", "3", "010"},
        {R"({"multipleOf": 2})", "3", "4", "5", "010"},
        {R"({"minLength": 2})", R"("a")", R"("ab")", R"("abc")", "011"},
        {R"({"maxLength": 2})", R"("a")", R"("ab")", R"("abc")", "110"},
        {R"({"minItems": 2})", "[1]", "[1, 2]", "[1, 2, 3]", "011"},
        {R"({"maxItems": 2})", "[1]", "[1, 2]", "[1, 2, 3]", "110"},
        {R"({"minProperties": 1})", "{}", R"({"a": 1})", R"({"a": 1, "b": 1})", "011"},
        {R"({"maxProperties": 1})", "{}", R"({"a": 1})", R"({"a": 1, "b": 1})", "110"},
        {R"({"maxLength": 0})", R"("")", "1", R"("a")", "110"},
        {R"({"maxItems": 0})", "[]", "1", "[1]", "110"},
        {R"({"items": [{}, {}], "additionalItems": false})", "[1]", "[1, 2]", "[1, 2, 3]", "110"},
        {R"({"items": [], "additionalItems": false})", "[]", "1", "[1]", "110"},
    };
    for (const Limit& limit : limits) {
        std::string satisfied;
        for (const char* value : {limit.below, limit.at, limit.above})
            satisfied += check(limit.schema, value).empty() ? '1' : '0';
        EXPECT_EQ(satisfied, limit.satisfied) << limit.schema;
    }
}

TEST(JsonSchema, ValuesOfTheCatalogueSatisfyTheirSchemas) {
    int neutral = 0;
    for (const catalogue::MetaDataEntry& item : catalogue::metaData()) {
        EXPECT_EQ(check(item.schema, item.example), "") << item.name;
        if (!item.neutral.empty()) {
            ++neutral;
            EXPECT_EQ(check(item.schema, item.neutral), "") << item.name;
            EXPECT_NE(item.neutral, item.example) << item.name;
        }
        // The schemas do look: none takes a number for its item.
        EXPECT_NE(check(item.schema, "7"), "") << item.name;
    }
    EXPECT_GT(neutral, 20);
}

TEST(JsonSchema, FindingsAreRecordsWhateverTheNamesAre) {
    const JsonSchema schema(R"({"properties": {"a: b": {"maximum": 1}, "c": {"not": {}}},
                                "additionalProperties": false, "required": ["d"]})");
    const std::vector<Finding> found = schema.check(R"({"a: b": 2, "c": 1, "e\nf": 1})");
    std::string fields;
    for (const Finding& one : found)
        fields += one.pointer + "|" + one.keyword + "|" + one.expected + "|" + one.found + "\n";
    EXPECT_EQ(fields,
              "|required||\n/a: b|maximum|at most 1|2\n/c|not||\n"
              "/e\nf|additionalProperties||\n");
    EXPECT_EQ(toLine(found.back()), "/e f: is not allowed here");
}

}  // namespace
}  // namespace tarvo::engine::validation
