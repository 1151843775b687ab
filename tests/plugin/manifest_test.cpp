// Manifests, and the values of the parameters that they describe.

#include "plugin/manifest.h"

#include "engine/validation/jsonschema.h"
#include "plugin/parameters.h"
#include "tests/plugin/pluginfolder.h"

#include <filesystem>
#include <sstream>

namespace {

using namespace tarvo;
using plugin::Parameter;
using plugin::ParameterType;
using plugintests::failureOf;

const std::string head = R"("name": "a-1", "title": "A", "version": "1.0")";

std::string withParameter(const std::string& members) {
    return "{" + head + R"(, "parameters": [{)" + members + "}]}";
}

struct Case {
    std::string json;
    std::string complaint;  // empty: it is right
    // Not to be said in a JSON schema: it lets the text pass.
    bool beyondSchema = false;
};

const Case cases[] = {
    {"{" + head + "}", ""},
    {"{" + head + R"(, "script": "main.py", "writes": true, "description": "D"})", ""},
    {withParameter(R"("name": "x", "type": "number", "minimum": 0, "maximum": 1.5, "default": 0.5,
                      "unit": "m", "title": "X", "description": "How far")"),
     ""},
    {withParameter(R"("name": "x", "type": "choice", "choices": ["a", {"value": "b"}],
                      "default": "b")"),
     ""},
    {withParameter(R"("name": "x", "type": "nodes", "default": "1,4-7")"), ""},
    {withParameter(R"("name": "x", "type": "output file", "suffix": "csv")"), ""},
    {"{" + head + R"(, "script": "plugin.json"})", "no Python script"},
    {withParameter(R"("name": "x", "type": "attributes", "default": [["a"]])"), "no value of"},
    {withParameter(R"("name": "x", "type": "text", "default": )" + std::string(1'000'000, '[') +
                   std::string(1'000'000, ']')),
     "no value of", true},
    {"[]", "no object"},
    {"{", "No JSON", true},
    {"{" + head + R"(, "name": "b"})", "\"name\" stands there twice", true},
    {R"({"title": "A", "version": "1"})", "\"name\" is missing"},
    {R"({"name": "a", "title": "A"})", "\"version\" is missing"},
    {R"({"name": "../a", "title": "A", "version": "1"})", "small letters"},
    {R"({"name": "A", "title": "A", "version": "1"})", "small letters"},
    {R"({"name": 1, "title": "A", "version": "1"})", "\"name\" is no string"},
    {"{" + head + R"(, "writes": "yes"})", "neither true nor false"},
    {"{" + head + R"(, "author": "me"})", "\"author\" is not known"},
    {"{" + head + R"(, "parameters": {}})", "no array"},
    {withParameter(R"("name": "x")"), "\"type\" is missing"},
    {withParameter(R"("name": "x", "type": "float")"), "\"integer\""},
    {withParameter(R"("name": "x y", "type": "text")"), "begins with a letter"},
    {withParameter(R"("name": "x", "type": "text", "minimum": 1)"), "\"minimum\" is not known"},
    {withParameter(R"("name": "x", "type": "number", "minimum": 2, "maximum": 1)"),
     "greater than \"maximum\"", true},
    {withParameter(R"("name": "x", "type": "number", "minimum": 2, "default": 1)"), "from 2", true},
    {withParameter(R"("name": "x", "type": "integer", "default": 1.5)"), "a whole number"},
    {withParameter(R"("name": "x", "type": "choice")"), "one choice at least"},
    {withParameter(R"("name": "x", "type": "choice", "choices": []})"), "No JSON", true},
    {withParameter(R"("name": "x", "type": "choice", "choices": ["a"], "default": "b")"),
     "one of \"a\"", true},
    {withParameter(R"("name": "x", "type": "nodes", "default": "1,x")"), "node ids", true},
    {"{" + head +
         R"(, "parameters": [{"name": "x", "type": "text"}, {"name": "x", "type": "text"}]})",
     "Two parameters", true},
};

TEST(Manifest, IsReadOrRefusedWithThePlaceAsItsSchemaSays) {
    std::ostringstream text;
    text << std::ifstream(SOURCE_FOLDER "/python/plugins/plugin.schema.json").rdbuf();
    const engine::validation::JsonSchema schema(text.str());
    for (const Case& one : cases) {
        const std::string complaint = failureOf([&] { plugin::readManifest(one.json); });
        EXPECT_EQ(complaint.empty(), one.complaint.empty()) << one.json << "\n" << complaint;
        EXPECT_NE(complaint.find(one.complaint), std::string::npos) << one.json << "\n"
                                                                    << complaint;
        if (!one.beyondSchema) {
            EXPECT_EQ(schema.check(one.json).empty(), one.complaint.empty()) << one.json;
        }
    }
    const auto manifest = plugin::readManifest(cases[2].json);
    const Parameter& parameter = manifest.parameters.at(0);
    EXPECT_EQ(parameter.type, ParameterType::NUMBER);
    EXPECT_EQ(parameter.minimum, 0);
    EXPECT_EQ(parameter.maximum, 1.5);
    EXPECT_EQ(parameter.defaultValue, "0.5");
    EXPECT_EQ(manifest.script, "plugin.py");
    EXPECT_FALSE(manifest.writes);
    const auto choices = plugin::readManifest(cases[3].json).parameters.at(0).choices;
    EXPECT_EQ(choices.at(1).title, "b");
}

Parameter parameterOf(const std::string& members) {
    return plugin::readManifest(withParameter(R"("name": "x", )" + members)).parameters.at(0);
}

TEST(Parameters, TakeWhatTheyDescribeAndGiveItBack) {
    struct Value {
        std::string members, text, json, refused;
    };
    const Value values[] = {
        {R"("type": "integer", "minimum": -5, "maximum": 5)", " -5", "-5", "6"},
        {R"("type": "integer")", "-9223372036854775808", "-9223372036854775808",
         "9223372036854775808"},
        {R"("type": "number", "minimum": 0)", "1e-3", "0.001", "-0.1"},
        {R"("type": "number")", "0.1", "0.1", "nan"},
        {R"("type": "boolean")", "true", "true", "True"},
        {R"("type": "choice", "choices": ["a b", "c"])", "a b", "\"a b\"", "a"},
        {R"("type": "attribute")", "tarvo.class", "\"tarvo.class\"", ""},
        {R"("type": "attributes")", " a , b,", R"(["a","b"])", std::string("a\0b", 3)},
        {R"("type": "nodes")", "3-4,1", "\"3-4,1\"", "1-"},
        {R"("type": "filter")", "a == \"b\\\"", R"("a == \"b\\\"")", std::string("\0", 1)},
        {R"("type": "text")", "\xC3\xA4 = 1", "\"\xC3\xA4 = 1\"", "\xFF"},
    };
    for (const Value& value : values) {
        const Parameter parameter = parameterOf(value.members);
        EXPECT_EQ(plugin::valueFromText(parameter, value.text), value.json);
        EXPECT_EQ(plugin::valueFromText(parameter, plugin::textOfValue(parameter, value.json)),
                  value.json);
        EXPECT_NE(failureOf([&] { plugin::valueFromText(parameter, value.refused); }), "")
            << value.members << ": " << value.refused;
    }
}

TEST(Parameters, AreCompleteAndKnownWhenTheyReachTheScript) {
    const auto manifest = plugin::readManifest(
        "{" + head + R"(, "parameters": [{"name": "nodes", "type": "nodes", "default": ""},
            {"name": "out", "type": "output file"}, {"name": "note", "type": "text", "default": ""}]})");
    EXPECT_NE(failureOf([&] { plugin::argumentsOf(manifest, {}); }).find("\"out\" has no value"),
              std::string::npos);
    EXPECT_NE(failureOf([&] {
                  plugin::argumentsOf(manifest, {{"out", "\"o\""}, {"other", "1"}});
              }).find("no parameter \"other\""),
              std::string::npos);
    // Names of files are told from the script's folder, too.
    EXPECT_EQ(plugin::argumentsOf(manifest, {{"out", "\"o.csv\""}, {"nodes", "\"2,4-5\""}}),
              R"({"nodes":[2,4,5],"out":")" + std::filesystem::current_path().string() +
                  R"(/o.csv","note":""})");
}

}  // namespace
