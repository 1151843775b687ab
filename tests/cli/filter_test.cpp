// Filters as people type them: named values by name in every command, and what explain tells.
#include "tests/cli/commandtest.h"

namespace {

using namespace tarvo::cli::tests;

class Filter : public CommandTest {
protected:
    std::string counted(const std::string& filter) const {
        return expectSuccess("select --count " + file + " --filter \"" + filter + "\"");
    }
    // What explain tells as JSON.
    rapidjson::Document explained(const std::string& filter) const {
        rapidjson::Document json;
        json.Parse(expectSuccess("--json explain " + file + " \"" + filter + "\"").c_str());
        EXPECT_TRUE(json.IsObject()) << filter;
        return json;
    }
    static std::uint64_t number(const rapidjson::Value& reach, const char* part,
                                const char* unit = "points") {
        return reach[part][unit].GetUint64();
    }
};

TEST_F(Filter, ValuesAreNamedInEveryCommand) {
    expectSuccess("sample -n 20000 " + file);
    const std::string ground = counted("tarvo.class == 2");
    EXPECT_NE(ground, "0\n");
    EXPECT_EQ(counted("tarvo.class == ground"), ground);
    EXPECT_EQ(counted("GROUND==tarvo.class"), ground);
    EXPECT_EQ(counted("(tarvo.class == 'high vegetation') || tarvo.class == building"),
              counted("tarvo.class == 5 || tarvo.class == 6"));
    const std::string words = " --filter 'tarvo.class == ground'";
    const std::string copy = folder.file("copy.qrbx");
    expectSuccess("index " + file + words);
    expectSuccess("copy " + file + " " + copy + words + " --bounds -1000,-1000,1000,1000");
    expectSuccess("export " + file + " " + folder.file("ground.las") + words);
    expectSuccess("split " + file + " " + folder.file("parts") + " --by tarvo.class" + words);
    expectSuccess("update " + file + " --set tarvo.class=Water" + words);
    EXPECT_EQ(counted("tarvo.class == water"), ground);
    expectSuccess(
        "transactions " + file +
        " run --title T \"remove --filter 'tarvo.class == water'\" \"select --count --filter "
        "'tarvo.class != water'\"");
    EXPECT_EQ(counted("tarvo.class == 9"), "0\n");
    // What was done is kept with numbers.
    EXPECT_NE(expectSuccess("transactions " + copy + " show 2").find("tarvo.class == 2"),
              std::string::npos);
    EXPECT_NE(expectSuccess("transactions " + file + " show 3").find("tarvo.class == 2"),
              std::string::npos);
}

TEST_F(Filter, MistakesAreToldWhereTheyWereTyped) {
    expectSuccess("sample -n 10 " + file);
    expectFailure(2, "update " + file + " --set tarvo.class=gruond --filter 1",
                  "\"gruond\" is not a whole number of at least 0, nor the name of one value.\n"
                  "    Did you mean \"ground\"");
    const auto refused = [&](const std::string& filter, const std::string& text) {
        for (const char* command : {"select --count", "explain"}) {
            const bool isOption = command[0] == 's';
            expectFailure(1,
                          std::string(command) + " " + file + (isOption ? " --filter" : "") +
                              " \"" + filter + "\"",
                          text);
        }
    };
    refused("tarvo.class == gruond", "Did you mean \"ground\"?");
    refused("tarvo.class == 'high vegetation' && tarvo.nope == 1", "(position 37)");
    refused("tarvo.class == 'high vegetation' && tarvo.nope == 1",
            "    tarvo.class == 'high vegetation' && tarvo.nope == 1\n"
            "                                        ^");
    refused("tarvo.class == ground tarvo.id", "at position 23, found");
    refused("tarvo.range == ground", "There is no attribute \"ground\"");
    refused("tarvo.class == 'ground", "The quotation mark at position 16 has no second one");
}

TEST_F(Filter, ExplainTellsWhatTheIndexKnows) {
    expectSuccess("sample -n 300000 " + file);
    const auto json = explained(
        "tarvo.class==ground&&!(tarvo.xyz[2]<-1.00001||1)||"
        "-tarvo.xyz[0] >= -50 && tarvo.id >= 0 && tarvo.class == 70000");
    EXPECT_STREQ(json["understood"].GetString(),
                 "tarvo.class == 2 && !(tarvo.xyz[2] < -1.00001 || 1) || -tarvo.xyz[0] >= -50 && "
                 "tarvo.id >= 0 && tarvo.class == 70000");
    std::vector<std::string> conditions;
    for (const auto& one : json["conditions"].GetArray()) {
        conditions.push_back(std::string(one["expression"].GetString()) + ": " +
                             one["pass"].GetString());
        for (const auto& note : one["notes"].GetArray()) {
            conditions.back() += std::string(" ") + note.GetString();
        }
    }
    const std::vector<std::string> expected = {
        "tarvo.class == 2: some 2 is \"ground\".",
        "tarvo.xyz[2] < -1.00001: some -1.00001 is compared as it is; stored values next to it are "
        "-1.00025 and -1.",
        "1: all",
        "-tarvo.xyz[0] >= -50: some",
        "tarvo.id >= 0: all",
        "tarvo.class == 70000: none 70000 lies outside the range 0 to 65535."};
    EXPECT_EQ(conditions, expected);
    EXPECT_STREQ(json["pass"].GetString(), "none");

    // The three parts are the database, and bound what the filter selects.
    for (const char* const filter : {"tarvo.xyz[0] > 5", "tarvo.class == ground", "tarvo.id < 1000",
                                     "tarvo.xyz[0] > 5 && tarvo.xyz[1] < 0", "tarvo.id > 0"}) {
        const auto reach = explained(filter);
        const std::uint64_t whole = number(reach, "whole");
        const std::uint64_t lookedAt = number(reach, "looked_at");
        const std::uint64_t selected = std::stoull(counted(filter));
        EXPECT_EQ(number(reach, "skipped") + whole + lookedAt, 300000u) << filter;
        EXPECT_EQ(number(reach, "database", "leaves"), number(reach, "skipped", "leaves") +
                                                           number(reach, "whole", "leaves") +
                                                           number(reach, "looked_at", "leaves"));
        EXPECT_LE(whole, selected) << filter;
        EXPECT_GE(whole + lookedAt, selected) << filter;
    }
    const auto low = explained("tarvo.xyz[2] < -1");
    EXPECT_GT(number(low, "skipped"), 0u);
    EXPECT_GT(number(low, "whole"), 0u);
    EXPECT_GT(number(low, "looked_at"), 0u);

    const std::string text = expectSuccess("explain " + file + " 'tarvo.class == ground'");
    for (const char* const part : {"Understood    tarvo.class == 2\n", "UINT16", "looked at"}) {
        EXPECT_NE(text.find(part), std::string::npos) << text;
    }
    EXPECT_EQ(expectSuccess("explain " + file + " --filter 'tarvo.class == ground'"), text);
    expectFailure(2, "explain " + file + " 'a == 1' --filter 'a == 1'", "excludes");
    expectFailure(2, "explain " + file, "filter is required");
    EXPECT_NE(expectSuccess("explain " + file + " 'find fullest leaf'").find("Node "),
              std::string::npos);
    expectFailure(2, "explain " + file, "");
    // With a blank beside each sign it would be longer than filters may be.
    std::string sum = "1";
    while (sum.size() < 40000) {
        sum += "+1";
    }
    expectSuccess("explain " + file + " '" + sum + "'");
}

}  // namespace
