// JSON schemas and values made to hurt: time, memory and stack stay bounded.
#include "tests/engine/jsoncheck.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tarvo::engine::validation {
namespace {

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
