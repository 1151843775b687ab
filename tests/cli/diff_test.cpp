// qrbtool diff: what it writes and how it ends.
#include "tests/cli/commandtest.h"

namespace {

using namespace tarvo::cli::tests;

class Diff : public CommandTest {
protected:
    // Transaction 2 has three points; 3 changes one and 4 removes one.
    Diff() {
        folder.write("a.csv", "tarvo.id,x,y,z,v\n1,1,1,1,5\n2,2,1,1,6\n3,3,1,1,7\n");
        expectSuccess("import " + folder.file("a.csv") + " " + file);
        expectSuccess("update " + file + " --set csv.v=9 --filter \"tarvo.id == 2\"");
        expectSuccess("remove " + file + " --filter \"tarvo.id == 3\"");
        current = json("transactions " + file + " show --json")["id"].GetUint();
    }
    std::string number(std::uint32_t before) const { return std::to_string(current - before); }

    std::uint32_t current = 0;
};

TEST_F(Diff, OfTransactionsTellsPointsAndEndsWithTheAnswer) {
    const Result told = run("diff " + file + " --from " + number(2));
    EXPECT_EQ(told.code, 1);
    EXPECT_EQ(told.output, "--- " + file + ", transaction " + number(2) + "\n+++ " + file +
                               ", transaction " + number(0) +
                               "\nPoints (3 -> 2)\n"
                               "  - 1 point removed\n"
                               "      id 3: 3 1 1\n"
                               "  * 1 point changed\n"
                               "    csv.v: 1 point\n"
                               "      id 2: 6 -> 9\n");
    const Result asJson =
        run("diff " + file + " --from " + number(1) + " --to " + number(2) + " --first 0 --json");
    EXPECT_EQ(asJson.code, 1);
    rapidjson::Document document;
    ASSERT_FALSE(document.Parse(asJson.output.c_str()).HasParseError()) << asJson.output;
    EXPECT_EQ(document["after"]["transaction"].GetUint(), current - 2);
    EXPECT_TRUE(document["different"].GetBool());
    EXPECT_EQ(document["points"]["changed"].GetUint(), 1u);
    EXPECT_EQ(document["points"]["removed"].GetUint(), 0u);
    for (const rapidjson::Value& one : document["points"]["values"].GetArray())
        EXPECT_EQ(one["first"].Size(), 0u);
    EXPECT_EQ(run("diff " + file + " --from " + number(2) + " --definitions-only").code, 0);
}

TEST_F(Diff, OfFilesReadsThemOnly) {
    const std::string copy = folder.file("copy.qrbx");
    std::filesystem::copy_file(file, copy);
    std::filesystem::permissions(copy, std::filesystem::perms::owner_read);
    const std::string before = read(file);
    expectSuccess("diff " + file + " " + copy, "--- " + file + ", transaction " + number(0) +
                                                   "\n+++ " + copy + ", transaction " + number(0) +
                                                   "\nNo differences: 2 points compared.\n");
    std::filesystem::create_hard_link(file, folder.file("link.qrbx"));
    expectSuccess("diff " + file + " " + folder.file("link.qrbx"));
    expectFailure(1, "diff " + copy + " " + file + " --from " + number(1) + " -a tarvo.xyz",
                  "1 point removed");
    EXPECT_EQ(read(file), before);
    EXPECT_EQ(read(copy), before);
}

TEST_F(Diff, ThatCanNotBeMadeEndsWithTwo) {
    expectFailure(2, "diff " + file, "a second database");
    expectFailure(2, "diff " + file + " " + file + " " + file, "two databases");
    expectFailure(2, "diff " + file + " " + folder.file("none.qrbx"), "does not exist");
    expectFailure(2, "diff " + file + " " + folder.file("a.csv"), "not a point-cloud database");
    expectFailure(2, "diff " + file + " --from 99", "does not keep transaction 99");
    expectFailure(2, "diff " + file + " " + file + " -a none", "Neither database has");
    expectFailure(2, "diff " + file + " " + file + " -a csv.v --definitions-only", "excludes");
}

}  // namespace
