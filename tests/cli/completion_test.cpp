// What shells and man are told: that it is complete, and that they take it.
#include "tests/cli/commandtest.h"

namespace {

using namespace tarvo::cli::tests;

class Documents : public CommandTest {
protected:
    // What bash offers for the last of the words.
    std::string completed(const std::string& words) const {
        const std::string script =
            "source " QRB_DOCUMENTS "/bash-completion/completions/qrbtool; COMP_WORDS=(" + words +
            "); COMP_CWORD=$((${#COMP_WORDS[@]}-1)); _qrbtool " QRBTOOL_FILE
            " \"${COMP_WORDS[COMP_CWORD]}\" \"${COMP_WORDS[COMP_CWORD-1]}\"; "
            "echo \"${COMPREPLY[*]}\"";
        const Result result = runShell("bash -u " + folder.write("try.sh", script));
        EXPECT_EQ(result.code, 0) << result.output;
        return result.output;
    }
    static bool hasProgram(const std::string& name) {
        return runShell("command -v " + name + " >/dev/null").code == 0;
    }
};

TEST_F(Documents, BashCompletesWhatMayFollow) {
    if (!hasProgram("bash")) {
        GTEST_SKIP() << "There is no bash.";
    }
    EXPECT_EQ(completed("qrbtool sel"), "select\n");
    EXPECT_EQ(completed("qrbtool -q metadata a s"), "set sign\n");
    EXPECT_EQ(completed("qrbtool metadata a sign --k"), "--key --key-file\n");
    EXPECT_EQ(completed("qrbtool select a --format ''"), "table csv json jsonl\n");
    EXPECT_EQ(completed("qrbtool select a --format = j"), "json jsonl\n");
    EXPECT_EQ(completed("qrbtool select --format csv a --ou"), "--output\n");
    EXPECT_EQ(completed("qrbtool help transactions r"), "\n");
    EXPECT_EQ(completed("qrbtool help tra"), "transactions\n");
    EXPECT_EQ(completed("qrbtool completion ''"), "bash zsh fish\n");
    const std::string odd = folder.file("a b.qrbx");
    ASSERT_EQ(run("sample -n 1 '" + odd + "'").code, 0);
    EXPECT_EQ(completed("qrbtool info " + folder.file("a")), odd + "\n");
    EXPECT_EQ(completed("qrbtool select '" + odd + "' -a tarvo.id,tarvo.xy"),
              "tarvo.id,tarvo.xyz\n");
}

TEST_F(Documents, ScriptsAreThoseOfTheirShells) {
    for (const auto& [shell, place] : {std::pair{"bash", "bash-completion/completions/qrbtool"},
                                       {"zsh", "zsh/vendor-completions/_qrbtool"},
                                       {"fish", "fish/vendor_completions.d/qrbtool.fish"}}) {
        const std::string name = std::string(QRB_DOCUMENTS "/") + place;
        EXPECT_EQ(read(name), run(std::string("completion ") + shell).output);
        if (hasProgram(shell)) {
            EXPECT_EQ(runShell(std::string(shell) + " -n " + name).output, "") << shell;
        }
    }
}

TEST_F(Documents, PagesTellEveryCommandAndOptionCleanly) {
    std::istringstream names(expectSuccess("manual --names"));
    int pages = 0;
    for (std::string name; std::getline(names, name); ++pages) {
        const std::string page = QRB_DOCUMENTS "/man/man1/qrbtool-" + name + ".1";
        EXPECT_EQ(read(page), run("manual " + name).output);
        EXPECT_NE(read(QRB_DOCUMENTS "/man/man1/qrbtool.1").find("qrbtool\\-" + name),
                  std::string::npos);
    }
    EXPECT_GT(pages, 25);
    EXPECT_NE(
        read(QRB_DOCUMENTS "/man/man1/qrbtool-select.1").find("\\fB\\-\\-limit\\fR \\fIPOINTS"),
        std::string::npos);
    expectFailure(2, "manual slect", "Did you mean \"select\"");
    if (hasProgram("groff")) {
        EXPECT_EQ(runShell("cd " QRB_DOCUMENTS "/man/man1 && for page in *.1; do groff -man -ww -z "
                           "-Tutf8 -K utf8 $page; done")
                      .output,
                  "");
    }
}

}  // namespace
