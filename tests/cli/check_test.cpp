// qrbtool check: what it writes and how it ends.
#include "tests/cli/commandtest.h"

#include <fstream>

namespace {

using namespace tarvo::cli::tests;

class Check : public CommandTest {
protected:
    Check() {
        EXPECT_EQ(run("sample -n 20000 " + file).code, 0);
        EXPECT_EQ(run("metadata " + file + " set my.note '\"a note to be found\"'").code, 0);
    }
    // Inverts a byte of the first place where the text stands.
    void damage(const std::string& text) const {
        std::fstream stream(file, std::ios::in | std::ios::out | std::ios::binary);
        const std::string all(std::istreambuf_iterator<char>(stream), {});
        const std::size_t at = all.find(text);
        ASSERT_NE(at, std::string::npos) << text;
        stream.seekp(static_cast<std::streamoff>(at));
        stream.put(static_cast<char>(~text[0]));
    }
};

TEST_F(Check, OfASoundDatabaseTellsWhatWasRead) {
    const Result text = run("check " + file);
    EXPECT_EQ(text.code, 0) << text.output;
    EXPECT_EQ(text.output.rfind("No faults found: 3 transactions, ", 0), 0u) << text.output;
    const rapidjson::Document report = json("check --json " + file);
    EXPECT_EQ(report["fault_count"].GetUint(), 0u);
    EXPECT_EQ(report["faults"].Size(), 0u);
    EXPECT_EQ(report["transactions"].GetUint(), 3u);
    EXPECT_EQ(report["points"].GetUint(), 20000u);
    EXPECT_GT(report["blobs"].GetUint(), 5u);
    EXPECT_GT(report["bytes"].GetUint(), 20000u);
    // What no transaction holds any more.
    EXPECT_EQ(text.output.find("for vacuum"), std::string::npos) << text.output;
    expectSuccess("metadata " + file + " set my.note 2");
    expectSuccess("metadata " + file + " set my.note 3");
    expectSuccess("finalize " + file);
    const std::uint64_t left = json("check --json " + file)["unreached_blobs"].GetUint64();
    EXPECT_GT(left, 1u);
    const std::string told = expectSuccess("check " + file);
    EXPECT_NE(told.find("\n" + std::to_string(left) + " blobs of no transaction, for vacuum to"),
              std::string::npos)
        << told;
}

TEST_F(Check, TellsEachFaultOnALineOfItsOwn) {
    EXPECT_EQ(run("metadata " + file + " set \"$(printf 'two\\nlines')\" '\"to be broken\"'").code,
              0);
    damage("to be broken");
    const Result text = run("check " + file);
    EXPECT_EQ(text.code, 1);
    EXPECT_NE(text.output.find("two lines"), std::string::npos) << text.output;
    EXPECT_EQ(std::count(text.output.begin(), text.output.end(), '\n'), 2) << text.output;
}

TEST_F(Check, OfADamagedItemNamesItAndEndsWithOne) {
    damage("a note to be found");
    const Result text = run("check " + file);
    EXPECT_EQ(text.code, 1);
    EXPECT_EQ(text.output.rfind("Transaction 3, metadata item \"my.note\": The file is damaged", 0),
              0u)
        << text.output;
    EXPECT_NE(text.output.find("\n1 fault found: 3 transactions, "), std::string::npos)
        << text.output;
    const Result json = run("check --json " + file);
    EXPECT_EQ(json.code, 1);
    rapidjson::Document report;
    report.Parse(json.output.c_str());
    ASSERT_TRUE(report.IsObject()) << json.output;
    EXPECT_EQ(report["fault_count"].GetUint(), 1u);
    EXPECT_STREQ(report["faults"][0]["item"].GetString(), "my.note");
    EXPECT_STREQ(report["faults"][0]["kind"].GetString(), "metadata item");
    EXPECT_EQ(report["faults"][0]["transaction"].GetUint(), 3u);
    EXPECT_FALSE(report["faults"][0].HasMember("node"));
}

TEST_F(Check, OfDamagedValuesNamesTheirPlace) {
    const std::string damaged = folder.file("b.qrbx");
    int faults = 0;
    int ofFirstElements = 0;
    for (std::uintmax_t i = 1; i < 12; ++i) {
        std::filesystem::copy_file(file, damaged,
                                   std::filesystem::copy_options::overwrite_existing);
        std::fstream stream(damaged, std::ios::in | std::ios::out | std::ios::binary);
        const auto at = static_cast<std::streamoff>(std::filesystem::file_size(file) * i / 12);
        stream.seekg(at);
        const int byte = stream.get();
        stream.seekp(at);
        stream.put(static_cast<char>(~byte));
        stream.close();
        rapidjson::Document report;
        report.Parse(run("check --json " + damaged).output.c_str());
        ASSERT_TRUE(report.IsObject());
        const std::string text = run("check " + damaged).output;
        for (const auto& fault : report["faults"].GetArray()) {
            if (!fault.HasMember("element"))
                continue;
            const unsigned element = fault["element"].GetUint();
            const std::string place = "block, node " + std::to_string(fault["node"].GetUint()) +
                                      ", " + fault["attribute"].GetString() + "[" +
                                      std::to_string(element) + "]: ";
            EXPECT_NE(text.find(place), std::string::npos) << place << "\n" << text;
            ++faults;
            ofFirstElements += element == 0 ? 1 : 0;
        }
    }
    EXPECT_GT(ofFirstElements, 0);
    EXPECT_GT(faults, ofFirstElements);
}

TEST_F(Check, OfADamagedCurrentStateNamesTheTransaction) {
    damage("\"parent\":2,");
    const Result text = run("check " + file);
    EXPECT_EQ(text.code, 1);
    EXPECT_NE(text.output.find("transaction 3"), std::string::npos) << text.output;
}

}  // namespace
