// What shells and man are told: that it is complete, and that they take it.
#include "tests/cli/commandtest.h"

#include <functional>
#include <set>

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
    const std::string quoted = "'" + odd + "'";
    EXPECT_EQ(completed("qrbtool update " + quoted + " --set tarvo.xy"), "tarvo.xyz=\n");
    EXPECT_EQ(completed("qrbtool update " + quoted + " --set tarvo.xyz = ''"), "\n");
    EXPECT_EQ(completed("qrbtool attributes " + quoted + " show tarvo.xy"), "tarvo.xyz\n");
    EXPECT_EQ(completed("qrbtool attributes " + quoted + " add tarvo.selec"), "tarvo.selected\n");
    expectSuccess("metadata " + quoted + " set tarvo.item '1'");
    EXPECT_EQ(completed("qrbtool metadata " + quoted + " get tarvo.it"), "tarvo.item\n");
    EXPECT_EQ(completed("qrbtool validate " + quoted + " --schema avg.fw"), "avg.fwa\n");
    // No database, and one that is none.
    EXPECT_EQ(completed("qrbtool select -a ''"), "\n");
    EXPECT_EQ(completed("qrbtool metadata get " + folder.file("a")), odd + "\n");
    EXPECT_EQ(completed("qrbtool metadata get " + folder.write("none", "x") + " ''"), "\n");
}

// Both show a word with what stands before it in different ways: here the last part alone counts.
std::set<std::string> partsOf(const std::string& lines) {
    std::set<std::string> parts;
    std::istringstream stream(lines);
    for (std::string line; std::getline(stream, line);) {
        line = line.substr(0, line.find('\t'));
        line = line.substr(0, line.find_last_not_of('=') + 1);
        line.erase(0, line.find_last_of("/,=") + 1);
        std::erase(line, '\\');
        if (!line.empty()) {
            parts.insert(line);
        }
    }
    return parts;
}

// Types each of the words into an interactive zsh, presses Tab, and prints what compadd is given,
// then "(end)".
constexpr const char* zshTyping = R"SCRIPT(
zmodload zsh/zpty || exit 1
scripts=$1 answer=$2
shift 2
cat > $answer.setup <<EOF
PS1='' LISTMAX=10000 fpath=($scripts \$fpath)
autoload -U compinit && compinit -u -D
compadd() {
    if (( ! \${@[(I)-*[OAD]*]} )); then
        local -a hits
        builtin compadd -O hits "\$@"
        print -rl -- \$hits >> $answer
    fi
    builtin compadd "\$@"
}
told() { print -r -- "(end)" >> $answer; comppostfuncs=(told) }
comppostfuncs=(told)
bindkey '^I' complete-word
EOF
: > $answer
zpty shell "TERM=dumb zsh -f -i"
zpty -w shell "source $answer.setup"
for ((n = 1; n <= $#; n++)); do
    zpty -w -n shell "${@[n]}"$'\t'
    for ((i = 0; i < 200; i++)); do
        (( $(grep -c '^(end)$' $answer) >= n )) && break
        sleep 0.05
        zpty -r -t shell shown
    done
    zpty -w -n shell $'\C-u'
done
zpty -d shell
cat $answer
)SCRIPT";

TEST_F(Documents, ZshAndFishCompleteWhatMayFollow) {
    const std::string odd = folder.file("a b.qrbx");
    ASSERT_EQ(run("sample -n 1 '" + odd + "'").code, 0);
    const std::string program = std::filesystem::path(QRBTOOL_FILE).parent_path().string();
    const std::string typing = folder.write("type.zsh", zshTyping);
    // What the shells offer for each of the words.
    const auto zsh = [&](const std::vector<std::string>& all) {
        std::string command = "cd " + folder.file("") + " && PATH=" + program + ":$PATH zsh -f " +
                              typing + " " QRB_DOCUMENTS "/zsh/vendor-completions " +
                              folder.file("told");
        for (const std::string& words : all) {
            command += " \"" + words + "\"";
        }
        const std::string output = runShell(command).output;
        const std::string end = "(end)\n";
        std::vector<std::string> offers;
        for (std::size_t at = 0; output.find(end, at) != std::string::npos;) {
            const std::size_t next = output.find(end, at);
            offers.push_back(output.substr(at, next - at));
            at = next + end.size();
        }
        return offers;
    };
    const auto fish = [&](const std::vector<std::string>& all) {
        std::vector<std::string> offers;
        for (const std::string& words : all) {
            offers.push_back(runShell("cd " + folder.file("") + " && PATH=" + program +
                                      ":$PATH fish --no-config -c 'source " QRB_DOCUMENTS
                                      "/fish/vendor_completions.d/qrbtool.fish; "
                                      "complete -C\"" +
                                      words + "\"'")
                                 .output);
        }
        return offers;
    };
    using Words = std::set<std::string>;
    const std::pair<std::string, Words> cases[] = {
        {"qrbtool sel", {"select"}},
        {"qrbtool -q metadata a s", {"set", "sign"}},
        {"qrbtool metadata a sign --k", {"--key", "--key-file"}},
        {"qrbtool select a --format ", {"table", "csv", "json", "jsonl"}},
        {"qrbtool select a --format=j", {"json", "jsonl"}},
        {"qrbtool select --format csv a --ou", {"--output"}},
        {"qrbtool help transactions r", {}},
        {"qrbtool help tra", {"transactions"}},
        {"qrbtool completion ", {"bash", "zsh", "fish"}},
        {"qrbtool completion bash ", {}},
        {"qrbtool select a --filter ", {}},
        {"qrbtool info " + folder.file("a"), {"a b.qrbx"}},
        {"qrbtool select " + folder.file("a\\ b.qrbx") + " -a tarvo.xy", {"tarvo.xyz"}},
        {"qrbtool select " + folder.file("a\\ b.qrbx") + " -a tarvo.id,tarvo.xy", {"tarvo.xyz"}},
        {"qrbtool metadata " + folder.file("a\\ b.qrbx") + " get tarvo.time", {"tarvo.time_base"}},
        {"qrbtool attributes " + folder.file("a\\ b.qrbx") + " show tarvo.xy", {"tarvo.xyz"}},
        {"qrbtool update " + folder.file("a\\ b.qrbx") + " --set tarvo.xy", {"tarvo.xyz"}},
        {"qrbtool validate --schema avg.fw", {"avg.fwa"}},
    };
    std::vector<std::string> typed;
    for (const auto& [words, expected] : cases) {
        typed.push_back(words);
    }
    using Shell = std::function<std::vector<std::string>(const std::vector<std::string>&)>;
    std::string missing;
    for (const auto& [name, shell] : {std::pair<std::string, Shell>{"zsh", zsh}, {"fish", fish}}) {
        if (!hasProgram(name)) {
            missing += "There is no " + name + ". ";
            continue;
        }
        const std::vector<std::string> offers = shell(typed);
        ASSERT_EQ(offers.size(), typed.size()) << name;
        for (std::size_t i = 0; i < offers.size(); ++i) {
            EXPECT_EQ(partsOf(offers[i]), cases[i].second) << name << ": " << typed[i] << "\n"
                                                           << offers[i];
        }
    }
    if (!missing.empty()) {
        GTEST_SKIP() << missing;
    }
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
