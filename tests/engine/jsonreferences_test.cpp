// What is no JSON schema, and references within one.
#include "tests/engine/jsoncheck.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

namespace tarvo::engine::validation {
namespace {

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

}  // namespace
}  // namespace tarvo::engine::validation
