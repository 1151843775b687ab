// Patterns and formats of texts in JSON schemas.
#include "tests/engine/jsoncheck.h"

#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <vector>

namespace tarvo::engine::validation {
namespace {

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

}  // namespace
}  // namespace tarvo::engine::validation
