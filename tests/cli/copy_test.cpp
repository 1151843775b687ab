// qrbtool copy, as a user runs it.
#include "tests/cli/commandtest.h"

namespace {

using namespace tarvo::cli::tests;

class CopyCommand : public CommandTest {
protected:
    CopyCommand() {
        std::string text = "tarvo.id,x,y,z,tarvo.class\n";
        for (int i = 1; i <= 500; ++i)
            text += std::to_string(3 * i) + "," + std::to_string(i) + ".5," + std::to_string(-i) +
                    ",7," + std::to_string(i % 4) + "\n";
        EXPECT_EQ(run("import " + folder.write("points.csv", text) + " " + source).code, 0);
        EXPECT_EQ(run("metadata " + source + " set one '{\"a\": 1}'").code, 0);
        EXPECT_EQ(run("metadata " + source + " set two '[2]'").code, 0);
    }
    std::string points(const std::string& file, const std::string& filter = "") const {
        return expectSuccess("select " + file + " -a tarvo.id,tarvo.xyz,tarvo.class --format csv" +
                             (filter.empty() ? "" : " -f '" + filter + "'"));
    }
    void expectFailure(int code, const std::string& words, const std::string& text) const {
        const std::size_t files = folder.count();
        CommandTest::expectFailure(code, "copy " + source + " " + words, text);
        EXPECT_EQ(folder.count(), files);
    }

    const std::string source = folder.file("source.qrbx");
    const std::string target = folder.file("target.qrbx");
};

TEST_F(CopyCommand, HoldsWhatIsSelected) {
    Result result = run("copy " + source + " " + target + " -f 'tarvo.class == 3' -m two");
    EXPECT_EQ(result.output, "125 points copied to \"" + target + "\".\n");
    EXPECT_EQ(points(target), points(source, "tarvo.class == 3"));
    EXPECT_EQ(run("metadata " + target + " get one").code, 1);
    EXPECT_EQ(run("metadata " + target + " get two").output, "[2]\n");

    result = run("copy " + source + " " + target + " --overwrite --changelog");
    EXPECT_EQ(result.code, 0) << result.output;
    EXPECT_EQ(points(target), points(source));
    const std::string log = run("changelog " + target).output;
    EXPECT_LT(log.find("Import"), log.find("Export"));

    EXPECT_EQ(
        run("copy " + source + " " + target + " --overwrite -a tarvo.class --no-metadata").code, 0);
    EXPECT_EQ(run("select " + target + " -f 'tarvo.class == 3' --count").output, "125\n");
    EXPECT_EQ(run("metadata " + target).output.find("one"), std::string::npos);
}

// As a new database does, however the example is written.
TEST_F(CopyCommand, TellsOfPlaceholders) {
    const std::string told = "Placeholders: examples, to be replaced, in tarvo.beam_geometry\n";
    const std::string example =
        R"({"beam_divergence" : 3.5e-4, "beam_exit_\u0064iameter": 0.00650})";
    ASSERT_EQ(run("metadata " + source + " set tarvo.beam_geometry '" + example + "'").code, 0);
    ASSERT_EQ(run("metadata " + source + " set three 3").code, 0);
    ASSERT_EQ(run("copy " + source + " " + target + " -m one,tarvo.beam_geometry").code, 0);
    for (const std::string& name : {source, target}) {
        const std::string log = run("changelog " + name).output;
        EXPECT_NE(log.find("\n" + told), std::string::npos) << log;
        EXPECT_EQ(log.find(told), log.rfind(told)) << log;
        const std::string notes = run("validate " + name + " --schema vtx").output;
        EXPECT_NE(notes.find("\"tarvo.beam_geometry\" holds the example"), std::string::npos)
            << notes;
    }
    ASSERT_EQ(run("copy " + source + " " + target + " --overwrite -m one").code, 0);
    EXPECT_EQ(run("changelog " + target).output.find("Placeholders"), std::string::npos);
}

TEST_F(CopyCommand, TakesOfAFileOfSettingsWhatItNamesButForThePrimaryAttribute) {
    const std::string other = folder.file("other.qrbx");
    const auto copy = [&](const std::string& from, const std::string& to, const char* settings) {
        EXPECT_EQ(
            run("copy " + from + " " + to + " --settings " + folder.write("s.json", settings)).code,
            0);
        EXPECT_EQ(points(to), points(source));
        EXPECT_EQ(run("attributes " + to).output, run("attributes " + source).output);
        const std::string created = run("transactions " + to + " show 1 --json").output;
        const std::size_t begin = created.find("\"settings\"");
        return created.substr(begin, created.find("\"size\"") - begin);
    };
    std::string expected = copy(source, target,
                                R"({"primary_attribute": {"name": "own.p", "length": 2},
                                    "chunk_size": 600, "compression_level": 5})");
    const std::string level = "compression_level\\\":";
    const std::size_t at = expected.find(level + "5");
    ASSERT_NE(at, std::string::npos) << expected;
    expected.replace(at + level.size(), 1, "9");
    EXPECT_EQ(copy(target, other, R"({"compression_level": 9})"), expected);
}

TEST_F(CopyCommand, FailuresLeaveNoFileAndSayWhatToDo) {
    expectFailure(1, target + " -f 'tarvo.class ==='", "===");
    expectFailure(1, target + " --nodes 4000000", "node 4000000");
    expectFailure(1, target + " -a no.such", "no.such");
    expectFailure(1, target + " -m no.such", "qrbtool metadata FILE");
    expectFailure(1, folder.file("no/target.qrbx"), "Make the folder");
    expectFailure(2, source + " --overwrite", "is the source and the target");
    ASSERT_EQ(run("sample -n 23 " + target).code, 0);
    expectFailure(1, target, "Give --overwrite to replace it.");
    // Whoever replaces it would learn of these afterwards.
    expectFailure(1, target + " -f 'no.such == 1'", "no.such");
    expectFailure(1, target + " -a no.such", "There is no attribute \"no.such\"");
    expectFailure(1, target + " --nodes 4000000", "node 4000000");
    expectFailure(1, target + " --overwrite -f '('", "(");
    EXPECT_EQ(run("select --count " + target).output, "23\n");
}

}  // namespace
