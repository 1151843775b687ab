// JSON schemas: findings that can be acted on, and schemas and values made to hurt.
#include "engine/validation/jsonschema.h"

#include "catalogue/catalogue.h"
#include "engine/base/error.h"

#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <vector>

namespace tarvo::engine::validation {
namespace {

// The findings, a line each.
std::string check(const std::string& schema, const std::string& value) {
    std::string lines;
    for (const Finding& finding : JsonSchema(schema).check(value))
        lines += toLine(finding) + "\n";
    return lines;
}

std::string refusal(const std::string& schema, const std::string& value = "1") {
    try {
        return "not refused: " + check(schema, value);
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.code(), ErrorCode::Argument);
        return std::string(failure.what()) + " " + failure.details();
    }
}

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

TEST(JsonSchema, RefusesWhatIsNoSchemaAndSaysWhere) {
    EXPECT_NE(refusal("{").find("At byte 2"), std::string::npos);
    EXPECT_NE(refusal("5").find("expected a schema"), std::string::npos);
    EXPECT_NE(refusal(R"({"properties": {"a": {"type": "text"}}})").find("/properties/a/type"),
              std::string::npos);
    for (const char* schema : {R"({"minimum": "1"})",
                               R"({"multipleOf": 0})",
                               R"({"minItems": -1})",
                               R"({"required": "a"})",
                               R"({"enum": []})",
                               R"({"pattern": "[a"})",
                               R"({"properties": []})",
                               R"({"allOf": {}})",
                               R"({"items": 3})",
                               R"({"type": []})",
                               R"({"not": null})",
                               R"({"$ref": 5})",
                               R"({"minLength": 1.5})",
                               R"({"maxItems": "1"})",
                               R"({"type": 5})",
                               R"({"uniqueItems": 1})",
                               R"({"items": [5]})",
                               R"({"anyOf": []})",
                               R"({"dependencies": {"a": [1]}})",
                               R"({"dependencies": []})",
                               R"({"required": [1]})",
                               R"({"pattern": 1})",
                               R"({"const": 1, "if": 1})",
                               R"({"$ref": "#/a~2"})",
                               R"({"multipleOf": -1})"})
        EXPECT_EQ(refusal(schema).find("The JSON schema is not valid at"), 0u) << refusal(schema);
    EXPECT_EQ(refusal(R"({"properties": {"a/b": {"dependencies": {"~": [1]}}}})"),
              "The JSON schema is not valid at \"/properties/a~1b/dependencies/~0\": expected an "
              "array of texts. ");
    EXPECT_EQ(refusal(R"({"patternProperties": {"(a": {}}})")
                  .find("The JSON schema is not valid at \"/patternProperties\": The regular "
                        "expression \"(a\" can't be understood: "),
              0u);
    EXPECT_EQ(
        refusal(R"({"pattern": "(a)\\1"})"),
        "The JSON schema is not valid at \"/pattern\": The regular expression \"(a)\\1\" has a "
        "back reference, which is not supported. ");
    EXPECT_EQ(
        refusal(R"({"pattern": "a\u0000b"})"),
        "The JSON schema is not valid at \"/pattern\": The regular expression \"a\" contains a "
        "zero byte. ");
    // What a later draft would check must not pass unchecked.
    for (const char* keyword : {"prefixItems", "minContains", "unevaluatedProperties"})
        EXPECT_EQ(refusal("{\"" + std::string(keyword) + "\": []}"),
                  "The JSON schema is not valid at \"/\": the keyword \"" + std::string(keyword) +
                      "\" is newer than draft 7, which is supported. ");
    EXPECT_NE(refusal("{}", "[1,").find("The value is not valid JSON"), std::string::npos);
    EXPECT_NE(refusal("{}", "1e999").find("too big"), std::string::npos);
}

TEST(JsonSchema, FollowsNoReferenceThatLeadsOutOrRound) {
    for (const char* reference :
         {"http://example.org/schema.json", "file:///etc/passwd", "other.json#/a", "#name", ""})
        EXPECT_NE(
            refusal("{\"$ref\": \"" + std::string(reference) + "\"}").find("nothing is loaded"),
            std::string::npos);
    EXPECT_NE(refusal(R"({"id": "http://example.org/", "items": {"$ref": "a.json"}})")
                  .find("nothing is loaded"),
              std::string::npos);
    for (const char* reference : {"#/definitions/a", "#/~2", "#/definitions/a~"})
        EXPECT_EQ(refusal("{\"$ref\": \"" + std::string(reference) + "\"}"),
                  "The JSON schema is not valid at \"/\": it refers to \"" +
                      std::string(reference) + "\", which the schema does not have. ");
    for (const char* schema :
         {R"({"$ref": "#"})", R"({"definitions": {"a": {"$ref": "#/definitions/a"}},
              "items": {"$ref": "#/definitions/a"}})",
          R"({"anyOf": [{"type": "null"}, {"$ref": "#"}]})",
          R"({"dependencies": {"a": {"if": {"$ref": "#"}}}})",
          R"({"definitions": {"a": {"$ref": "#/definitions/b"}, "b": {"allOf": [{"$ref":
              "#/definitions/a"}]}}, "$ref": "#/definitions/a"})"})
        EXPECT_NE(refusal(schema).find("refers back to itself"), std::string::npos) << schema;
}

TEST(JsonSchema, FollowsReferencesToAnyName) {
    const std::string names = R"({"definitions": {"a+b(c):$d": {"const": 1}, "e/f~g": {"const": 2},
        "50%": {"const": 3}, "höhe %41": {"const": 4}, "": {"": {"const": 5}}, "l": [0, {"const":
        6}]}, "items": [{"$ref": "#/definitions/)";
    const std::pair<const char*, int> references[] = {{"a+b(c):$d", 1},
                                                      {"a%2Bb%28c%29%3A%24d", 1},
                                                      {"e~1f~0g", 2},
                                                      {"e%7E1f%7e0g", 2},
                                                      {"50%", 3},
                                                      {"50%25", 3},
                                                      {"/", 5},
                                                      {"l/1", 6},
                                                      {"h\u00f6he %2541", 4},
                                                      {"h%C3%B6he%20%2541", 4}};
    for (const auto& [reference, number] : references)
        EXPECT_EQ(check(names + reference + "\"}]}", "[" + std::to_string(number) + "]") +
                      check(names + reference + "\"}]}", "[0]"),
                  "/0: expected " + std::to_string(number) + ", found 0\n")
            << reference;
    for (const char* reference : {"l/01", "l/2", "l/-", "l/x", "e/f~g", "a%2", "h%C3he %41"})
        EXPECT_NE(refusal(names + reference + "\"}]}").find("which the schema does not have"),
                  std::string::npos)
            << reference;
    // A fault of a definition is told where it stands.
    EXPECT_NE(refusal(R"({"definitions": {"a b": {"type": "x"}}, "not": {"$ref":
                  "#/definitions/a%20b"}})")
                  .find("at \"/definitions/a b/type\""),
              std::string::npos);
}

TEST(JsonSchema, ChecksTreesToTheirLeavesInBoundedTime) {
    const std::string tree = R"({"type": "object", "required": ["n"], "properties": {"n": {"type":
        "integer"}, "children": {"items": {"$ref": "#"}}}})";
    EXPECT_EQ(check(tree, R"({"n": 1, "children": [{"n": 2}, {"n": 3, "children": [{"n": "x"},
                  {"children": [5]}]}]})"),
              "/children/1/children/0/n: expected a whole number, found a string\n"
              "/children/1/children/1: the member \"n\" is missing\n"
              "/children/1/children/1/children/0: expected an object, found 5\n");
    EXPECT_EQ(check(R"({"$ref": "#/definitions/even", "definitions": {
                  "even": {"maxItems": 1, "items": {"$ref": "#/definitions/odd"}},
                  "odd": {"type": "array", "minItems": 1, "items": {"$ref":
                  "#/definitions/even"}}}})",
                    "[[[[[[]]]]]]"),
              "/0/0/0/0/0: expected at least 1 elements, found 0\n");
    // Each level is reached in several ways: all of them would be 4 to the power of 90.
    const std::string ways = R"({"properties": {"a": {"$ref": "#"}}, "patternProperties": {"a":
        {"$ref": "#"}}, "anyOf": [{"additionalProperties": {"$ref": "#"}}, {"items": {"$ref":
        "#"}, "propertyNames": {"$ref": "#"}, "not": {"required": ["b"]}}], "maxProperties": 1})";
    std::string good = "{}";
    std::string bad = R"({"a": 1, "b": 2})";
    for (int i = 0; i < 90; ++i) {
        good = "{\"a\": " + good + "}";
        bad = "{\"a\": " + bad + "}";
    }
    EXPECT_EQ(check(ways, good), "");
    EXPECT_NE(check(ways, bad).find("/a/a: expected at most 1 members, found 2\n"),
              std::string::npos);
}

TEST(JsonSchema, StaysBoundedWithHostileSchemas) {
    // Ten definitions that each use the next one eight times.
    std::string laughs = R"({"$ref": "#/definitions/d0", "definitions": {)";
    for (int i = 0; i < 10; ++i) {
        laughs += "\"d" + std::to_string(i) + "\": {\"allOf\": [";
        for (int k = 0; k < 8; ++k)
            laughs += std::string(k ? "," : "") + "{\"$ref\": \"#/definitions/d" +
                      std::to_string(i + 1) + "\"}";
        laughs += "]},";
    }
    EXPECT_EQ(check(laughs + "\"d10\": {}}}", "1"), "");
    EXPECT_EQ(check(laughs + "\"d10\": {\"type\": \"null\"}}}", "1"),
              "The whole value: expected null, found 1\n");
    std::string many = "{\"allOf\": [true";
    for (int i = 0; i < 100000; ++i)
        many += ",{}";
    EXPECT_NE(refusal(many + "]}").find("has more than 100000 parts"), std::string::npos);
    // A chain of references is as deep as one of schemas.
    std::string chain = R"({"$ref": "#/definitions/d0", "definitions": {)";
    for (int i = 0; i < 5000; ++i)
        chain += "\"d" + std::to_string(i) + "\": {\"not\": {\"$ref\": \"#/definitions/d" +
                 std::to_string(i + 1) + "\"}},";
    EXPECT_NE(refusal(chain + "\"d5000\": {}}}").find("nests more than"), std::string::npos);
    EXPECT_NE(refusal(std::string(100000, '[')).find("nests more than"), std::string::npos);
    EXPECT_NE(refusal("{}", std::string(100000, '[')).find("nests more than"), std::string::npos);
    for (const char* pattern : {"(a)\\\\1",
                                "(?=a)a",
                                "(?!a)b",
                                "a{9999999999}",
                                "((a{99}){99}){99}",
                                "[a",
                                "a)(b",
                                "\\\\p{X}",
                                "(?<=a)b",
                                "\\\\k<a>",
                                "\\\\Z",
                                "a**",
                                "^*",
                                "(?i)a",
                                "[b-a]",
                                "a{2,1}",
                                "a{x",
                                "\\\\u12",
                                "\\\\c1",
                                "(?:a{60}){70}",
                                "a{99999999999999999999999}",
                                "a{4001}"})
        EXPECT_NE(refusal("{\"pattern\": \"" + std::string(pattern) + "\"}")
                      .find("The regular expression"),
                  std::string::npos)
            << pattern;
    EXPECT_EQ(check("{\"pattern\": \"" + std::string(1000, 'a') + "\"}", "1"), "");
    EXPECT_NE(refusal("{\"patternProperties\": {\"" + std::string(1001, 'a') + "\": {}}}")
                  .find("is longer than 1000 bytes."),
              std::string::npos);
    EXPECT_EQ(check(R"({"pattern": "^\\[\\(\\{[\\](]{2}"})", R"("[({](")"), "");
}

TEST(JsonSchema, ChecksTheDeepestSchemaThatItTakes) {
    for (const char* keyword : {"allOf", "anyOf", "patternProperties", "propertyNames"}) {
        std::string chain = R"({"$ref": "#/definitions/d0", "definitions": {)";
        for (int i = 0; i < 50; ++i) {
            const std::string next = "{\"$ref\": \"#/definitions/d" + std::to_string(i + 1) + "\"}";
            const std::string part = std::string(keyword) == "propertyNames" ? next
                                     : keyword[0] == 'p' ? "{\".\": " + next + "}"
                                                         : "[" + next + "]";
            chain += "\"d" + std::to_string(i) + "\": {\"" + keyword + "\": " + part + "},";
        }
        JsonSchema schema(chain + "\"d50\": {\"type\": \"object\"}}}");
        std::string value = "{}";
        for (int i = 0; i < 90; ++i)
            value = "{\"a\": " + value + "}";
        EXPECT_TRUE(schema.check(value).empty()) << keyword;
    }
}

TEST(JsonSchema, RefusesValuesThatNeedTooMuchStack) {
    std::string schema = R"({"items": {"$ref": "#"}})";
    std::string value = "1";
    for (int i = 0; i < 40; ++i)
        schema = "{\"allOf\": [" + schema + "]}";
    for (int i = 0; i < 100; ++i)
        value = "[" + value + "]";
    EXPECT_EQ(check(schema, "[[[[[1]]]]]"), "");
    EXPECT_EQ(refusal(schema, value),
              "The value nests too deep for its schema: it nests more than 1000 checks. ");
}

TEST(JsonSchema, SearchesAnyPatternInLinearTime) {
    // Each takes a backtracking search longer than the age of the universe: it would not end.
    const std::string text(30000, 'a');
    for (const char* pattern : {"^(a+)+$", "^(a|a)*$", "^(a|aa)+$", "(.*)(.*)(.*)(.*)(.*)c"}) {
        EXPECT_NE(check("{\"pattern\": \"" + std::string(pattern) + "\"}", '"' + text + "b\""), "");
        const std::string members = "{\"additionalProperties\": false, \"patternProperties\": {\"" +
                                    std::string(pattern) + "\": {}}}";
        EXPECT_NE(check(members, "{\"" + text + "b\": 1}"), "");
    }
    EXPECT_EQ(check(R"({"pattern": "a$"})", '"' + std::string(65536, 'a') + '"'), "");
    // Repetitions within repetitions unfold once only.
    EXPECT_EQ(check(
                  "{\"pattern\": \"^" + std::string(300, '(') + "a" +
                      [] {
                          std::string closing;
                          for (int i = 0; i < 300; ++i)
                              closing += ")+";
                          return closing;
                      }() +
                      "$\"}",
                  '"' + text + '"'),
              "");
    // Each value has its own bound of what its check may take.
    JsonSchema heavy(R"({"items": {"pattern": "^([ab]{30}){30}$"}})");
    const std::string some = '"' + std::string(60000, 'a') + '"';
    for (int i = 0; i < 25; ++i)
        EXPECT_EQ(heavy.check("[" + some + "]").size(), 1u);
    std::string many = some;
    for (int i = 0; i < 25; ++i)
        many += "," + some;
    EXPECT_EQ(
        refusal(R"({"items": {"pattern": "^([ab]{30}){30}$"}})", "[" + many + "]"),
        "Checking the value against its schema takes too long. Make the schema simpler or the "
        "value smaller.");
}

TEST(JsonSchema, ReadsPatternsAsEcma262Does) {
    const struct {
        const char* pattern;
        std::vector<const char*> matched;
        std::vector<const char*> others;
    } cases[] = {
        {R"(^a$)", {"a"}, {R"(a\n)", R"(\na)", "ba"}},
        {R"(^\\d\\D\\w\\W\\/\\-$)", {"1a_ /-"}, {"٣a_ /-", "1a_a/-"}},
        {R"(^\\s\\S$)", {" a", R"(\u00a0b)", R"(\ufeff\u0000)", R"(\u2028😀)"}, {"  ", "aa"}},
        {R"(^[\\s][^\\S]$)", {R"(\u000b\u3000)"}, {R"(\u200b )"}},
        {R"(^\\u00e4\\x41\\cJ\\t\\0$)", {R"(äA\n\t\u0000)"}, {"äA"}},
        {R"(^\\uD83D\\uDE00\\u{1F600}$)", {"😀😀"}, {"😀"}},
        {R"(^.$)", {"😀", "ä"}, {R"(\n)", R"(\r)", R"(\u2028)", R"(\u2029)", "ab"}},
        {R"(^[^]$)", {R"(\n)", "😀"}, {"", "ab"}},
        {R"(a[]|^b)", {"b"}, {"a", "a]"}},
        {R"(^[[:alpha:]]$)", {"[]", ":]", "a]"}, {"b", "b]"}},
        {R"(^[\\b\\w-.\\]^-]+$)", {R"(\ba-.]^)"}, {"[", ","}},
        {R"(^(?<year>\\d{4})-(?:a|b)??$)", {"2024-", "2024-a"}, {"204-a"}},
        {R"(\\bfoo\\B.)", {"foox", "a foo1"}, {"foo", "afoox", "foo x"}},
        {R"(^\\p{Lu}\\p{Letter}\\P{L}\\p{Script=Greek}$)", {"ÄB1α"}, {"äB1α", "ÄBCα"}},
        {R"(^}]a{0}b{2}c{1,}d{0,2}$)", {"}]bbcdd", "}]bbcccc"}, {"}]bcdd", "}]abbc", "}]bbcddd"}},
        {R"(^[\\uD800-\\uDBFF]?$)", {""}, {"😀"}},
    };
    for (const auto& [pattern, matched, others] : cases) {
        const JsonSchema schema("{\"pattern\": \"" + std::string(pattern) + "\"}");
        for (const char* text : matched)
            EXPECT_TRUE(schema.check('"' + std::string(text) + '"').empty())
                << pattern << " " << text;
        for (const char* text : others)
            EXPECT_FALSE(schema.check('"' + std::string(text) + '"').empty())
                << pattern << " " << text;
    }
    // More repetitions than are searched in one piece.
    for (const auto& [pattern, least, most] :
         {std::tuple("^.{1500,3200}$", 1500, 3200), std::tuple("^(a{30}){50}$", 1500, 1500),
          std::tuple("^(?:(?:aa){600}){3}$", 3600, 3600), std::tuple("^a{4000}$", 4000, 4000)}) {
        const JsonSchema schema("{\"pattern\": \"" + std::string(pattern) + "\"}");
        for (const int length : {least - 1, least, most, most + 1})
            EXPECT_EQ(schema.check('"' + std::string(length, 'a') + '"').empty(),
                      length >= least && length <= most)
                << pattern << " " << length;
    }
    EXPECT_FALSE(JsonSchema(R"({"pattern": "^a{1500,}$"})")
                     .check('"' + std::string(1499, 'a') + '"')
                     .empty());
}

TEST(JsonSchema, ChecksFormatsOfTextsAndTellsUnknownOnes) {
    const std::string longest = std::string(64, 'a') + "@b.c";
    const struct {
        const char* format;
        std::vector<std::string> good;
        std::vector<std::string> bad;
    } cases[] = {
        {"date-time",
         {"2024-02-29T23:59:60Z", "1990-12-31T15:59:60-08:00", "0000-01-01t00:00:00.123456789z"},
         {"2024-02-30T00:00:00Z", "2023-02-29T00:00:00Z", "2024-01-01T24:00:00Z",
          "2024-01-01 00:00:00Z", "2024-01-01T00:00:00", "2024-01-01T00:00:60Z",
          "2024-01-01T00:00:00.Z", "2024-01-01T00:00:00+24:00", "2024-01-01T00:00:00Zx", ""}},
        {"date", {"2000-02-29"}, {"1900-02-29", "2024-00-01", "2024-1-1", "2024-04-31"}},
        {"time", {"08:30:06Z", "08:30:06+00:20"}, {"08:30Z", "08:30:06", "8:30:06Z"}},
        {"email",
         {"a.b+c@d-e.org", longest, R"(\"a b\\\"@\"@d.org)", "a@[127.0.0.1]", "a@[IPv6:::1]"},
         {"a" + longest, "a", "@a", "a@", ".a@b", "a.@b", "a..b@c", "a b@c", R"(\"a\"b@c)", "a@-b",
          "a@[300.1.1.1]", R"(\"a\\\"@b)"}},
        {"hostname", {"a", "1.a-b.org"}, {"", "-a", "a-", "a..b", "a.", "a_b", "ä.org"}},
        {"ipv4", {"0.0.0.0", "255.255.255.255"}, {"256.0.0.1", "1.2.3", "1.2.3.4.5", "01.2.3.4"}},
        {"ipv6",
         {"::", "::1", "1::", "1:2:3:4:5:6:7:8", "::ffff:1.2.3.4", "1:2:3:4:5:6:7::", "a::b:c"},
         {"", ":", ":::", "1:2:3:4:5:6:7", "1:2:3:4:5:6:7:8:9", "12345::", "1::2::3",
          "1:", "1.2.3.4::", "::1%eth0", "1:2:3:4:5:6:7::8", "g::", "::1.2.3"}},
        {"uri",
         {"http://u:p@a.org:80/b;c/%20?d=e/?#f/?", "urn:a:b", "file:///a", "http://[::1]/",
          "mailto:a@b.c", "http://[v1.a:b]", "a:"},
         {"//a", "a/b", "1a:b", "http://a b", "http://a/%2", "http://[::1", "http://a:b/", ":a",
          "http://a/[b]", "http://a#b#c", "http://ä.org", "a:{}"}},
        {"uri-reference",
         {"", "../a", "//a/b", "#f", "?q", "a/b:c", "./a:b", "http://a"},
         {"1a:b", R"(a\\b)", "%", "#a#b", "//a:b"}},
        {"uuid",
         {"2eb8aa08-AA98-11ea-b4aa-73b441d16380"},
         {"2eb8aa08-aa98-11ea-b4aa-73b441d1638", "2eb8aa08aa98-11ea-b4aa-73b441d163800",
          "2eb8aa08-aa98-11ea-b4aa-73b441d1638g"}},
        {"json-pointer", {"", "/", "/a~0b~1c/ä"}, {"a", "/~", "/~2", "#/a"}},
        {"regex", {R"((?=a)(b)\\1)", "a{5000}", ""}, {"(", R"(\\Z)", "[a", "*"}},
    };
    for (const auto& [format, good, bad] : cases) {
        const JsonSchema schema("{\"format\": \"" + std::string(format) + "\"}");
        EXPECT_TRUE(schema.notes().empty()) << format;
        EXPECT_TRUE(schema.check("5").empty()) << format;
        for (const std::string& text : good)
            EXPECT_TRUE(schema.check('"' + text + '"').empty()) << format << " " << text;
        for (const std::string& text : bad)
            EXPECT_FALSE(schema.check('"' + text + '"').empty()) << format << " " << text;
    }
    EXPECT_EQ(check(R"({"format": "date"})", "\"x\""),
              "The whole value: expected a text of the format date, found \"x\"\n");
    const JsonSchema other(R"({"format": "own", "items": {"format": "iri"}, "not": {"format":
                              "own", "type": "null"}})");
    EXPECT_TRUE(other.check("[\"x\"]").empty());
    EXPECT_EQ(other.notes(), (std::vector<std::string>{"The format \"iri\" is not checked.",
                                                       "The format \"own\" is not checked."}));
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

TEST(JsonSchema, ChecksManyElementsAndListsABoundedNumberOfFaults) {
    std::string numbers = "[";
    for (int i = 0; i < 100000; ++i)
        numbers += std::to_string(i) + ",";
    EXPECT_EQ(check(R"({"uniqueItems": true, "items": {"type": "integer"}})", numbers + "-1]"), "");
    EXPECT_EQ(check(R"({"uniqueItems": true})", numbers + "5]"),
              "/100000: is the same as element 5\n");
    JsonSchema texts(R"({"items": {"type": "string"}})");
    const std::vector<Finding> found = texts.check(numbers + "-1]");
    ASSERT_GE(found.size(), 400u);
    EXPECT_LE(found.size(), 2000u);
    EXPECT_EQ(found[0].text, "has more faults than those listed here");
    EXPECT_EQ(found[8].pointer, "/7");
    // Also behind a part that was checked by itself.
    JsonSchema parts(
        R"({"properties": {"a": {"allOf": [{}]}, "b": {"items": {"type": "string"}}}})");
    EXPECT_LE(parts.check("{\"a\": 1, \"b\": " + numbers + "-1]}").size(), 2000u);
    // And of a part: what was found until then is told.
    JsonSchema within(R"({"allOf": [{"items": {"type": "string"}}, {"minItems": 1000000}]})");
    const std::vector<Finding> parted = within.check(numbers + "-1]");
    ASSERT_GE(parted.size(), 400u);
    EXPECT_EQ(toLine(parted[0]), "The whole value: has more faults than those listed here");
    EXPECT_EQ(toLine(parted[1]), "/0: expected a string, found 0");
    EXPECT_EQ(parted[300].pointer, "/299");
    // Of a name only the first fault is told; the search for it is left from any depth.
    std::string names = "{";
    for (int i = 0; i < 900; ++i)
        names += "\"" + std::to_string(i) + "\": 1, ";
    EXPECT_EQ(
        JsonSchema(R"({"propertyNames": {"not": {"not": {"type": "string"}}, "allOf": [{"allOf":
                         [{"minLength": 5, "pattern": "^x"}]}]}})")
            .check(names + "\"xxxxx\": 1}")
            .size(),
        900u);
    // The next value is judged afresh.
    EXPECT_TRUE(texts.check("[\"a\"]").empty());
}

}  // namespace
}  // namespace tarvo::engine::validation
