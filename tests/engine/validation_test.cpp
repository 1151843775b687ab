// JSON schemas: findings that can be acted on, and schemas and values made to hurt.
#include "engine/validation/jsonschema.h"

#include "catalogue/catalogue.h"
#include "engine/base/error.h"

#include <gtest/gtest.h>

#include <string>
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

void expectFindings(std::initializer_list<Case> cases) {
    for (const Case& one : cases)
        EXPECT_EQ(check(one.schema, one.value), one.findings) << one.schema << "\n" << one.value;
}

TEST(Keywords, TellWhatIsWrongWithAValue) {
    expectFindings(
        {{"{}", "[1, null]", ""},
         {"true", "1", ""},
         {"false", "1", "The whole value: is not allowed here\n"},
         {R"({"type": "string"})", "5", "The whole value: expected a string, found 5\n"},
         {R"({"type": ["object", "null"]})", R"("a")",
          "The whole value: expected an object or null, found a string\n"},
         {R"({"type": "integer"})", "2.0", ""},
         {R"({"type": "integer"})", "2.5", "The whole value: expected a whole number, found 2.5\n"},
         {R"({"type": "integer", "minimum": 0})", "18446744073709551615", ""},
         {R"({"type": "integer", "maximum": 100})", "18446744073709551615",
          "The whole value: expected at most 100, found 18446744073709551616\n"},
         {R"({"minimum": -9223372036854775808})", "-9223372036854775808", ""},
         {R"({"maximum": 1e300})", "1e301",
          "The whole value: expected at most 1e+300, found 1e+301\n"},
         {R"({"enum": [1, "a", null, [1, 2], {"a": 1, "b": 2}]})", R"({"b": 2, "a": 1.0})", ""},
         {R"({"enum": ["on", "off"]})", R"("On")",
          "The whole value: expected \"on\" or \"off\", found \"On\"\n"},
         {R"({"const": 3})", "4", "The whole value: expected 3, found 4\n"},
         {R"({"minimum": 1, "exclusiveMaximum": 2})", "2",
          "The whole value: expected less than 2, found 2\n"},
         {R"({"minimum": 1, "exclusiveMinimum": true})", "1",
          "The whole value: expected more than 1, found 1\n"},
         {R"({"multipleOf": 0.1})", "0.3", ""},
         {R"({"multipleOf": 2})", "3.5", "The whole value: expected a multiple of 2, found 3.5\n"},
         {R"({"minLength": 3, "maxLength": 3})", R"("äöü")", ""},
         {R"({"maxLength": 2})", R"("äöü")",
          "The whole value: expected at most 2 characters, found 3\n"},
         {R"({"pattern": "^[°']$"})", R"("°")", ""},
         {R"({"pattern": "^a+$"})", R"("ab")",
          "The whole value: expected a text that matches ^a+$, found \"ab\"\n"},
         {R"({"pattern": "b"})", R"("abc")", ""},
         {R"({"pattern": "^b"})", "7", ""},
         // Bytes that are no text, and texts that are cut, stay characters.
         {"{\"pattern\": \"^\ufffd$\"}", "\"\xe2\x82\"", ""},
         {"{\"pattern\": \"^\ufffd\ufffd$\"}", "\"\xff\xc3\"", ""},
         {R"({"const": 1})", R"("ääääääääääääääääääääääääääääääääääääääää")",
          "The whole value: expected 1, found \"äääääääääääääääääääääääääääää...\n"},
         // The pattern is looked for anywhere, in texts of several lines too.
         {R"({"pattern": "a|b"})", R"("x\ny a z\n")", ""},
         {R"({"pattern": "^b|c$"})", R"("abc")", ""},
         {R"({"pattern": "^(a|b)$"})", R"("ab")",
          "The whole value: expected a text that matches ^(a|b)$, found \"ab\"\n"},
         {R"({"pattern": "^[\\]a]{2,3}\\($"})", R"("]a(")", ""},
         {R"({"pattern": "^[\\]a]{2,3}\\($"})", R"("](")",
          "The whole value: expected a text that matches ^[\\]a]{2,3}\\($, found \"](\"\n"},
         {"{\"pattern\": \"^\ufffd$\"}", "\"\xf5\"", ""},
         {"{\"pattern\": \"^\ufffd$\"}", "\"\xf5\x80\x80\x80\"", ""},
         {R"({"pattern": "^[\\](?=]+$"})", R"("](?=")", ""},
         {R"({"pattern": "^a\\(?=b$"})", R"("a(=b")", ""},
         // Texts as they would be written.
         {R"({"enum": ["a\\b", "\u001f\""]})", R"("\u0011\\")",
          "The whole value: expected \"a\\\\b\" or \"\\u001f\\\"\", found \"\\u0011\\\\\"\n"},
         {R"({"enum": ["a\\b", "\u001f\""]})", R"("\u001f\"")", ""},
         // Equal numbers are equal however they are written, others are not.
         {R"({"enum": [1, 1e15, 0.5, 20000000000.0]})", "1.0", ""},
         {R"({"enum": [1.0, [2.0]]})", "[2]", ""},
         {R"({"const": 1000000000000000})", "1e15", ""},
         {R"({"const": 9007199254740993})", "9007199254740992",
          "The whole value: expected 9007199254740993, found 9007199254740992\n"},
         {R"({"enum": [1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15]})", "0",
          "The whole value: expected 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11 or 12 or one of 3 more, "
          "found 0\n"},
         {R"({"enum": [1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12]})", "0",
          "The whole value: expected 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11 or 12, found 0\n"},
         {R"({"const": 1})", R"("aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa")",
          "The whole value: expected 1, found "
          "\"aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa\"\n"},
         {R"({"const": 1})", R"("aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa")",
          "The whole value: expected 1, found "
          "\"aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa...\n"},
         {R"({"multipleOf": 2})", "9007199254740993",
          "The whole value: expected a multiple of 2, found 9007199254740993\n"},
         {R"({"multipleOf": 3})", "-9007199254740993", ""},
         {R"({"multipleOf": 0.01})", "1234567.89", ""},
         {R"({"multipleOf": 0.01})", "1234567.895",
          "The whole value: expected a multiple of 0.01, found 1234567.895\n"},
         {R"({"items": {"minimum": 0}, "uniqueItems": false})",
          "[18446744073709551615, 18446744073709551615]", ""},
         {R"({"type": ["boolean", "null", "array"]})", "{}",
          "The whole value: expected true or false, null or an array, found an object\n"},
         {R"({"items": [{"maxLength": 0}, {"minLength": 1.0}, {"maxItems": 0}, {"minItems": 1},
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
         {R"({"pattern": "^[€😀]{2}$"})", R"("😀€")", ""},
         {R"({"maxLength": 1})", R"("😀")", ""},
         // Beyond 2^63, in values and in schemas.
         {R"({"properties": {"a": {"minimum": 0, "maximum": 18446744073709551615}},
                 "items": {"enum": [[18446744073709551615]]}})",
          R"({"a": 18446744073709551615})", ""},
         {R"({"items": {"enum": [{"b": [18446744073709551615]}]}})",
          R"([{"b": [18446744073709551615]}])", ""},
         // Beside a reference nothing counts, and what nobody refers to is not looked at.
         {R"({"definitions": {"a": {"type": "number"}, "b": {"type": "nonsense"}},
                 "$ref": "#/definitions/a", "minimum": 5, "prefixItems": []})",
          "3", ""},
         {R"({"definitions": {"a": {"type": "number"}}, "$ref": "#/definitions/a"})", "null",
          "The whole value: expected a number, found null\n"},
         {R"({"properties": {"a]": {"properties": {"[0]": {"items": {"type": "null"}}}}}})",
          R"({"a]": {"[0]": [null, 1]}})", "/a]/[0]/1: expected null, found 1\n"},
         // What looks at one kind of value lets the others pass.
         {
             R"({"required": ["a"], "minLength": 9, "minItems": 9, "minimum": 9, "uniqueItems": true,
                 "propertyNames": false, "patternProperties": {"": false}, "pattern": "a",
                 "multipleOf": 7})",
             "null", ""},
         // Marks within texts are no nesting.
         {R"({"type": "string"})",
          R"("\"[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[")",
          ""}});
}

TEST(Keywords, TellWhichPartsAreWrong) {
    expectFindings(
        {// Every fault, in the order of the value, each once, without its echo in the parents.
         {R"({"properties": {"b": {"type": "string"}, "a": {"properties": {"u": {"type":
                 "string"}}}}, "required": ["c", "d"]})",
          R"({"a": {"u": 1}, "b": false})",
          "The whole value: the member \"c\" is missing\n"
          "The whole value: the member \"d\" is missing\n"
          "/a/u: expected a string, found 1\n"
          "/b: expected a string, found true or false\n"},
         {R"({"items": {"type": "number"}})", R"([1, "2", 3, null, 5, 6, 7, 8, 9, 0, "x"])",
          "/1: expected a number, found a string\n/3: expected a number, found null\n"
          "/10: expected a number, found a string\n"},
         {R"({"properties": {"a": {}}, "additionalProperties": false})",
          R"({"a": 1, "b/c": 2, "~": 3})",
          "/b~1c: is not allowed here\n/~0: is not allowed here\n"},
         {R"({"properties": {"n": {}}, "patternProperties": {"^x_": {"type": "number"}},
                 "additionalProperties": {"type": "string"}})",
          R"({"x_a": 1, "x_b": "1", "n": null, "s": "", "t": 1})",
          "/x_b: expected a number, found a string\n/t: expected a string, found 1\n"},
         {R"({"propertyNames": {"pattern": "^[a-z]+$"}})", R"({"a": 1, "B": 2})",
          "/B: the name of the member is not allowed: expected a text that matches ^[a-z]+$, "
          "found \"B\"\n"},
         {R"({"items": [{"type": "string"}, {"type": "number"}], "additionalItems": false})",
          R"([1, 2, 3])", "/0: expected a string, found 1\n/2: is not allowed here\n"},
         {R"({"uniqueItems": true, "minItems": 4})", R"([{"a": 1, "b": 2}, 1, {"b": 2, "a": 1}])",
          "The whole value: expected at least 4 elements, found 3\n"
          "/2: is the same as element 0\n"},
         {R"({"uniqueItems": true})", R"([1, "1", 2, 1.0, [1], 2, 1])",
          "/3: is the same as element 0\n/5: is the same as element 2\n"
          "/6: is the same as element 0\n"},
         {R"({"propertyNames": {"maxLength": 1}})", R"({"bc": 1, "a": 2, "de": 3})",
          "/bc: the name of the member is not allowed: expected at most 1 characters, found 2\n"
          "/de: the name of the member is not allowed: expected at most 1 characters, found 2\n"},
         // Every expression that fits counts, also beside a schema by the name.
         {
             R"({"properties": {"ab": {"type": "number"}}, "patternProperties": {"a": {"minimum": 3},
                 "b": {"maximum": 1}}, "additionalProperties": false})",
             R"({"ab": 2, "xab": 2, "b": 2, "c": 0})",
             "/ab: expected at least 3, found 2\n/ab: expected at most 1, found 2\n"
             "/xab: expected at least 3, found 2\n/xab: expected at most 1, found 2\n"
             "/b: expected at most 1, found 2\n/c: is not allowed here\n"},
         {R"({"then": false, "else": false})", "1", ""},
         {R"({"if": {"minimum": 3}, "else": false})", "2",
          "The whole value: is not allowed here\n"},
         {R"({"contains": {"const": 5}})", "[1, 2]",
          "The whole value: has no element like the one that the schema asks for\n"},
         {R"({"dependencies": {"a": ["b"], "c": {"required": ["d"]}}})", R"({"a": 1, "c": 1})",
          "The whole value: the member \"b\" is missing, which another member needs\n"
          "The whole value: the member \"d\" is missing\n"},
         {R"({"dependencies": {"a": ["it's"]}})", R"({"a": 1})",
          "The whole value: the member \"it's\" is missing, which another member needs\n"},
         {R"({"minProperties": 2})", R"({"a": 1})",
          "The whole value: expected at least 2 members, found 1\n"},
         {R"({"anyOf": [{"type": "null"}, {"minimum": 3}]})", "2",
          "The whole value: expected null, found 2\nThe whole value: expected at least 3, found "
          "2\nThe whole value: satisfies none of the alternatives\n"},
         {R"({"oneOf": [{"type": "number"}, {"minimum": 3}]})", "5",
          "The whole value: satisfies more than one of the alternatives\n"},
         {R"({"allOf": [{"minimum": 3}, {"minimum": 3}, {"maximum": 1}]})", "2",
          "The whole value: expected at least 3, found 2\n"
          "The whole value: expected at most 1, found 2\n"},
         {R"({"not": {"type": "null"}})", "null",
          "The whole value: satisfies what the schema excludes with \"not\"\n"},
         {R"({"if": {"required": ["a"]}, "then": {"required": ["b"]}, "else": {"maxProperties":
                 0}})",
          R"({"a": 1})", "The whole value: the member \"b\" is missing\n"},
         // Members of a schema's parts may be called like keywords.
         {R"({"properties": {"$ref": {"type": "string"}, "id": {"type": "string"}, "type":
                 {"type": "null"}}})",
          R"({"$ref": 1, "id": 2, "type": 3})",
          "/$ref: expected a string, found 1\n/id: expected a string, found 2\n"
          "/type: expected null, found 3\n"},
         {R"({"definitions": {"a b": {"if": {"type": "number"}, "then": {"minimum": 1},
                 "propertyNames": {"maxLength": 1}}}, "properties": {"x": {"$ref":
                 "#/definitions/a%20b"}, "y": {"$ref": "#/definitions/a%20b"}}})",
          R"({"x": 0, "y": {"bc": 1}})",
          "/x: expected at least 1, found 0\n/y/bc: the name of the member is not allowed: "
          "expected at most 1 characters, found 2\n"}});
}

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
         {R"({"$ref": "#"})", R"({"properties": {"child": {"$ref": "#"}}})",
          R"({"definitions": {"a": {"$ref": "#/definitions/b"}, "b": {"allOf": [{"$ref":
              "#/definitions/a"}]}}, "$ref": "#/definitions/a"})"})
        EXPECT_NE(refusal(schema).find("refers back to itself"), std::string::npos);
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
    EXPECT_NE(refusal(laughs + "\"d10\": {}}}").find("unfolds into more"), std::string::npos);
    // A definition may be used often, but what it unfolds into counts each time.
    const auto used = [](int times, const std::string& definition) {
        std::string schema = R"({"definitions": {"d": )" + definition + R"(}, "allOf": [true)";
        for (int i = 0; i < times; ++i)
            schema += R"(, {"$ref": "#/definitions/d"})";
        return check(schema + "]}", "1");
    };
    std::string list = "[1";
    for (int i = 2; i <= 200; ++i)
        list += "," + std::to_string(i);
    for (const char* keyword : {"enum", "const"}) {
        const std::string definition = "{\"" + std::string(keyword) +
                                       "\": " + (keyword[0] == 'e' ? list : "[" + list + "]") +
                                       "]}";
        EXPECT_EQ(used(50, definition).find("unfolds"), std::string::npos);
        EXPECT_THROW(used(150, definition), Failure) << keyword;
    }
    EXPECT_EQ(used(5000, "{}"), "");
    EXPECT_THROW(used(11000, "{}"), Failure);
    // A chain of references is as deep as one of schemas.
    std::string chain = R"({"$ref": "#/definitions/d0", "definitions": {)";
    for (int i = 0; i < 5000; ++i)
        chain += "\"d" + std::to_string(i) + "\": {\"not\": {\"$ref\": \"#/definitions/d" +
                 std::to_string(i + 1) + "\"}},";
    EXPECT_NE(refusal(chain + "\"d5000\": {}}}").find("nests more than"), std::string::npos);
    EXPECT_NE(refusal(std::string(100000, '[')).find("nests more than"), std::string::npos);
    EXPECT_NE(refusal("{}", std::string(100000, '[')).find("nests more than"), std::string::npos);
    for (const char* pattern :
         {"(a)\\\\1", "(?=a)a", "(?!a)b", "a{9999999999}", "((a{99}){99}){99}", "[a", "a)(b",
          "\\\\p{L}", "(?:a{60}){70}", "a{99999999999999999999999}", "a{4001}"})
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
    EXPECT_EQ(refusal(R"({"pattern": "a"})", '"' + std::string(65537, 'a') + '"'),
              "A text of 65537 bytes is too long to be compared with a regular expression. At most "
              "65536 bytes can be.");
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
    // The next value is judged afresh.
    EXPECT_TRUE(texts.check("[\"a\"]").empty());
}

}  // namespace
}  // namespace tarvo::engine::validation
