// Filters as people type them: named values by name in every command, and where mistakes are told.
#include "tests/cli/commandtest.h"

namespace {

using namespace tarvo::cli::tests;

class Filter : public CommandTest {
protected:
    std::string counted(const std::string& filter) const {
        return expectSuccess("select --count " + file + " --filter \"" + filter + "\"");
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
    expectSuccess("update " + file + " --set tarvo.class=9" + words);
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
    const auto refused = [&](const std::string& filter, const std::string& text) {
        expectFailure(1, "select --count " + file + " --filter \"" + filter + "\"", text);
    };
    refused("tarvo.class == gruond", "Did you mean \"ground\"?");
    refused("tarvo.class == 'high vegetation' && tarvo.nope == 1", "(position 37)");
    refused("tarvo.class == 'high vegetation' && tarvo.nope == 1",
            "    tarvo.class == 'high vegetation' && tarvo.nope == 1\n"
            "                                        ^");
    refused("tarvo.class == ground tarvo.id", "at position 23, found");
    refused("tarvo.range == ground", "There is no attribute \"ground\"");
    refused("tarvo.class == 'ground", "at position 16 has no meaning in a filter");
}

}  // namespace
