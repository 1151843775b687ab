// Plugins on the disk, and the trust in them.

#include "plugin/package.h"

#include "plugin/trust.h"
#include "tests/plugin/pluginfolder.h"

#include <sys/stat.h>

namespace {

using namespace tarvo;
using plugin::Trust;
using plugintests::failureOf;
namespace fs = std::filesystem;

TEST(Package, IsAFolderOrAScriptThatSaysWhatItIs) {
    const plugintests::PluginFolder folder;
    folder.add("b-folder", "pass");
    folder.write("b-folder/__pycache__/x.pyc", "x");
    folder.write("b-folder/.hidden", "x");
    folder.write("b-folder/lib/part.py", "x");
    fs::create_symlink("/etc/hostname", folder.path("b-folder/link"));
    folder.write("a.py",
                 "#!/usr/bin/env python3\n# /// plugin\r\n"
                 "# {\"name\": \"a-script\", \"title\": \"A\",\n#  \"version\": \"1\"}\n"
                 "# ///\npass\n");
    folder.write("other.py", "# no manifest\nimport x  # /// plugin\n");
    folder.write("unended.py", "# /// plugin\n# {}\npass\n");
    folder.write("readme.txt", "# /// plugin");
    folder.add("b-twin", "pass");
    folder.write("b-twin/plugin.json", R"({"name": "b-folder", "title": "z", "version": "1"})");
    folder.add("scriptless", "pass", R"(, "script": "../a.py")");
    fs::create_directories(folder.path("empty"));
    // Opening it would wait for a writer.
    ASSERT_EQ(mkfifo(folder.path("pipe.py").c_str(), 0600), 0);

    const auto found = plugin::findPlugins(folder.path());
    std::vector<std::string> names, problems;
    for (const auto& one : found) {
        if (one.manifest)
            names.push_back(one.manifest->name);
        else
            problems.push_back(fs::path(one.place).filename().string());
    }
    EXPECT_EQ(names, (std::vector<std::string>{"a-script", "b-folder"}));
    std::sort(problems.begin(), problems.end());
    EXPECT_EQ(problems,
              (std::vector<std::string>{"b-twin", "other.py", "scriptless", "unended.py"}));
    const auto package = plugin::readPackage(folder.path("b-folder"));
    ASSERT_EQ(package.files.size(), 3u);
    EXPECT_EQ(package.files[0].name, "lib/part.py");
    EXPECT_NE(failureOf([&] { plugin::findPlugins(folder.path("none")); }), "");
    EXPECT_NE(failureOf([&] { plugin::readPackage(folder.path("empty")); }), "");
    EXPECT_NE(failureOf([&] { plugin::readPackage(folder.path("none.py")); }), "");
}

TEST(Package, ThatIsTooLargeIsRefusedBeforeItIsRead) {
    const plugintests::PluginFolder folder;
    folder.add("a", "pass");
    std::ofstream(folder.path("a/data"), std::ios::binary);
    fs::resize_file(folder.path("a/data"), std::uintmax_t{1} << 40);
    EXPECT_NE(failureOf([&] { plugin::readPackage(folder.path("a")); }).find("too large"),
              std::string::npos);
}

TEST(Trust, EndsWithAnyChangeOfThePlugin) {
    const plugintests::PluginFolder folder;
    folder.add("a", "pass");
    const std::string store = folder.path("settings/trusted.json");
    const auto trust = [&] {
        return plugin::TrustedPlugins(store).trustIn(plugin::readPackage(folder.path("a")));
    };
    const auto give = [&] {
        plugin::TrustedPlugins(store).give(plugin::readPackage(folder.path("a")));
    };
    EXPECT_EQ(trust(), Trust::NEVER_ASKED);
    give();
    EXPECT_EQ(trust(), Trust::GIVEN);
    // The same by another name of the place; another plugin with the same bytes is none of it.
    EXPECT_EQ(plugin::TrustedPlugins(store).trustIn(plugin::readPackage(folder.path("a/../a"))),
              Trust::GIVEN);
    fs::copy(folder.path("a"), folder.path("b"));
    EXPECT_EQ(plugin::TrustedPlugins(store).trustIn(plugin::readPackage(folder.path("b"))),
              Trust::NEVER_ASKED);
    // A byte that moves from one file to its neighbour, a file more, one less.
    folder.write("a/a.py", "xy");
    folder.write("a/b.py", "z");
    give();
    folder.write("a/a.py", "x");
    folder.write("a/b.py", "yz");
    EXPECT_EQ(trust(), Trust::CHANGED);
    give();
    EXPECT_EQ(trust(), Trust::GIVEN);
    fs::rename(folder.path("a/a.py"), folder.path("a/c.py"));
    EXPECT_EQ(trust(), Trust::CHANGED);
    // A file of trust that is no JSON trusts nothing, and can be given anew.
    for (const std::string& text :
         {std::string("[nonsense"),
          "{\"a\": " + std::string(1'000'000, '[') + std::string(1'000'000, ']') + "}"}) {
        folder.write("settings/trusted.json", text);
        EXPECT_EQ(trust(), Trust::NEVER_ASKED);
        give();
        EXPECT_EQ(trust(), Trust::GIVEN);
    }
}

}  // namespace
