#include "files/error.h"
#include "files/identity.h"
#include "files/path.h"
#include "files/place.h"
#include "files/wholefile.h"
#include "tests/files/foldersyncs.h"

#include <gtest/gtest.h>

#include <sched.h>
#include <sys/resource.h>
#include <sys/wait.h>

#include <csignal>
#include <fstream>
#include <iostream>
#include <sstream>

namespace {

using namespace tarvo;
namespace fs = std::filesystem;

class Files : public testing::Test {
protected:
    Files() {
        m_folder = fs::temp_directory_path() / ("qrb_files-" + std::to_string(getpid()));
        fs::create_directories(m_folder);
    }
    ~Files() override { fs::remove_all(m_folder); }

    std::string file(const std::string& name) const { return (m_folder / name).string(); }
    std::string write(const std::string& name, const std::string& text) const {
        std::ofstream(file(name), std::ios::binary) << text;
        return file(name);
    }
    static std::string read(const std::string& fileName) {
        std::ostringstream text;
        text << std::ifstream(fileName, std::ios::binary).rdbuf();
        return text.str();
    }
    std::set<std::string> names() const {
        std::set<std::string> result;
        for (const auto& entry : fs::directory_iterator(m_folder))
            result.insert(entry.path().filename().string());
        return result;
    }
    template <typename Function>
    static std::string failure(Function&& function) {
        try {
            function();
        } catch (const files::FileError& error) {
            return std::string(error.what()) + "\n" + error.details();
        }
        ADD_FAILURE() << "nothing was thrown";
        return {};
    }
    // In another process, which the function ends with a signal.
    template <typename Function>
    static void inKilledProcess(Function&& function) {
        const pid_t child = ::fork();
        if (child == 0) {
            function();
            ::_exit(0);
        }
        int status = 0;
        ASSERT_EQ(::waitpid(child, &status, 0), child);
        ASSERT_TRUE(WIFSIGNALED(status));
    }

    fs::path m_folder;
};

TEST_F(Files, LinksAndOtherNamesStandForOneFile) {
    const std::string a = write("a", "1");
    write("b", "1");
    fs::create_hard_link(a, file("hard"));
    fs::create_symlink("a", file("soft"));
    fs::create_symlink(file("soft"), file("softer"));
    for (const char* const name : {"hard", "soft", "softer", "./a"})
        EXPECT_TRUE(files::sameFile(a, file(name))) << name;
    EXPECT_FALSE(files::sameFile(a, file("b")));
    EXPECT_FALSE(files::sameFile(file("none"), file("none")));
    EXPECT_EQ(files::resolved(file("softer")), a);
    EXPECT_EQ(files::resolved(file("hard")), file("hard"));
    fs::create_symlink("not/yet", file("dangling"));
    EXPECT_EQ(files::resolved(file("dangling")), file("not/yet"));
    fs::create_symlink("circle", file("circle"));
    EXPECT_TRUE(fs::is_symlink(files::resolved(file("circle"))));
}

TEST_F(Files, PlacesAreTakenOnceAndSurviveAPowerCut) {
    ASSERT_TRUE(files::placeDurably(write("new", "first"), file("a")));
    EXPECT_EQ(lastSyncedNames(), (std::set<std::string>{"a"}));
    EXPECT_FALSE(files::placeDurably(write("new", "second"), file("a")));
    EXPECT_EQ(read(file("a")), "first");
    lastSyncedNames().clear();
    files::replaceDurably(file("new"), file("a"));
    EXPECT_EQ(lastSyncedNames(), (std::set<std::string>{"a"}));
    EXPECT_EQ(read(file("a")), "second");
    fs::create_symlink("nowhere", file("link"));
    EXPECT_FALSE(files::placeDurably(write("new", "third"), file("link")));
    EXPECT_NE(failure([&] { files::placeDurably(file("none"), file("b")); }).find("none"),
              std::string::npos);
}

TEST_F(Files, OnlyLeftoversOfProcessesThatAreGoneAreRemoved) {
    inKilledProcess([this] {
        const std::string temporary = files::temporaryNameFor(file("a"));
        write(fs::path(temporary).filename().string(), "");
        write(fs::path(temporary).filename().string() + "-journal", "");
        fs::create_directories(files::temporaryNameFor(file("a")) + "/more");
        files::WholeFile whole(file("a"));
        whole.write("half");
        ::raise(SIGKILL);  // before the object goes
    });
    ASSERT_EQ(names().size(), 4u);
    const std::string own = fs::path(files::temporaryNameFor(file("a"))).filename().string();
    // Neither those of users' own names, nor of others' programs that run, nor what is no file.
    const std::string mark = own.substr(0, own.rfind('-', own.rfind('-') - 1) + 1);
    std::set<std::string> kept{"a.new",           "a.new-other-1-1",     "b",         own,
                               mark + "99999999", mark + "99999999.txt", mark + "1-1"};
    for (const std::string& name : kept)
        write(name, "");
    fs::create_directory(file(mark + "99999999-folder"));
    fs::create_symlink("a.new", file(mark + "99999999-link"));
    kept.insert({mark + "99999999-folder", mark + "99999999-link"});
    files::removeLeftovers(file("b"));
    EXPECT_EQ(names().size(), kept.size() + 4);
    files::removeLeftovers(file("a"));
    EXPECT_EQ(names(), kept);
    write(own + "-journal", "");
    write(own + "0", "");
    files::removeTemporary(file(own));
    kept.erase(own);
    kept.insert(own + "0");
    EXPECT_EQ(names(), kept);
}

// A container counts its processes by itself: its numbers mean nothing here.
TEST_F(Files, LeftoversOfOtherContainersAreNotTold) {
    const pid_t child = ::fork();
    if (child == 0) {
        if (::unshare(CLONE_NEWPID) != 0 && ::unshare(CLONE_NEWUSER | CLONE_NEWPID) != 0)
            ::_exit(1);
        const pid_t first = ::fork();
        if (first == 0) {
            // Of a process that there is none of here.
            std::string name = files::temporaryNameFor(file("a"));
            name.replace(name.rfind("-1-"), 3, "-99999999-");
            std::ofstream(name) << "";
            ::_exit(0);
        }
        ::waitpid(first, nullptr, 0);
        ::_exit(first > 0 ? 0 : 1);
    }
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    if (WEXITSTATUS(status) != 0) {
        std::cout << "Other containers were left out: this system makes none for us.\n";
        GTEST_SKIP();
    }
    ASSERT_EQ(names().size(), 1u);
    files::removeLeftovers(file("a"));
    EXPECT_EQ(names().size(), 1u);
}

TEST_F(Files, LeftoversOfTheFirstReleaseAreRemovedOnceTheyRest) {
    const auto old = fs::file_time_type::clock::now() - std::chrono::hours(1);
    for (const char* name : {"a.new-999999999", "a.new-999999999-journal", "a.new-999999998",
                             "a.new-1", "a.new-999999999-more"}) {
        write(name, "");
        if (std::string(name) != "a.new-999999998")  // somebody may still write it
            fs::last_write_time(file(name), old);
    }
    files::removeLeftovers(file("a"));
    EXPECT_EQ(names(),
              (std::set<std::string>{"a.new-1", "a.new-999999998", "a.new-999999999-more"}));
}

TEST_F(Files, MayHaveTheLongestName) {
    std::string name(128, 'x');
    for (int i = 0; i < 42; ++i)
        name += "\xe2\x82\xac";
    ASSERT_EQ(name.size(), 254u);
    write(name, "old");
    files::WholeFile whole(file(name));
    ASSERT_EQ(names().size(), 2u);
    // Its temporary one is text, too, whatever it is cut to.
    for (const std::string& each : names())
        for (std::size_t i = each.find('\xe2'); i < each.size() && each[i] < 0; i += 3)
            EXPECT_EQ(each.compare(i, 3, "\xe2\x82\xac"), 0) << each;
    whole.write("new");
    whole.publish();
    EXPECT_EQ(read(file(name)), "new");
    EXPECT_EQ(names().size(), 1u);
}

TEST_F(Files, AWholeFileAppearsOnlyWhenItIsPublished) {
    write("a", "old");
    fs::permissions(file("a"), fs::perms::owner_read | fs::perms::owner_write);
    {
        files::WholeFile abandoned(file("a"));
        EXPECT_TRUE(abandoned.replaces());
        abandoned.write("half");
    }
    EXPECT_EQ(names(), (std::set<std::string>{"a"}));
    EXPECT_EQ(read(file("a")), "old");
    fs::create_symlink("a", file("link"));
    files::WholeFile whole(file("link"));
    whole.write("ne");
    whole.write("w");
    EXPECT_EQ(read(file("a")), "old");
    whole.publish();
    EXPECT_EQ(read(file("a")), "new");
    EXPECT_TRUE(fs::is_symlink(file("link")));
    EXPECT_EQ(fs::status(file("a")).permissions(), fs::perms::owner_read | fs::perms::owner_write);
    EXPECT_EQ(lastSyncedNames(), (std::set<std::string>{"a", "link"}));
    files::WholeFile another(file("b"));
    EXPECT_FALSE(another.replaces());
    another.publish();
    EXPECT_EQ(names(), (std::set<std::string>{"a", "b", "link"}));
}

TEST_F(Files, PlacesThatCantBeWrittenStayAsTheyAre) {
    EXPECT_NE(failure([&] { files::WholeFile(m_folder.string()); }).find("is a folder"),
              std::string::npos);
    EXPECT_NE(failure([&] { files::WholeFile(file("no/file")); }).find("folder must be there"),
              std::string::npos);
    fs::create_symlink("circle", file("circle"));
    failure([&] { files::WholeFile(file("circle")); });
    EXPECT_NE(failure([&] {
                  files::WholeFile full("/dev/full");
                  full.write("text");
                  full.publish();
              }).find("No space left"),
              std::string::npos);
    // What is left of a file when there is no room for another, and of one that was not there.
    for (const char* const name : {"there", "new"}) {
        if (name == std::string("there"))
            write(name, "old");
        const pid_t child = ::fork();
        if (child == 0) {
            std::signal(SIGXFSZ, SIG_IGN);
            const rlimit small{1000, RLIM_INFINITY};
            ::setrlimit(RLIMIT_FSIZE, &small);
            std::string said;
            try {
                files::WholeFile whole(file(name));
                whole.write(std::string(2000, 'x'));
                whole.publish();
            } catch (const files::FileError& error) {
                said = error.details();
            }
            ::_exit(said == (fs::exists(file(name)) ? "What stood there before is as it was." : "")
                        ? 0
                        : 1);
        }
        int status = -1;
        ::waitpid(child, &status, 0);
        EXPECT_EQ(status, 0) << name;
    }
    EXPECT_EQ(read(file("there")), "old");
    EXPECT_FALSE(fs::exists(file("new")));
    fs::remove(file("there"));
    // A user like any other: nothing is protected from the first one. Into a folder that may be
    // entered but not listed he may write.
    fs::permissions(m_folder, fs::perms::all);
    write("protected", "old");
    fs::permissions(file("protected"), fs::perms::owner_read | fs::perms::others_read);
    fs::create_directory(file("dark"));
    fs::permissions(file("dark"), static_cast<fs::perms>(0333));
    const pid_t child = ::fork();
    if (child == 0) {
        if (::getuid() == 0 && ::setuid(65534) != 0)
            ::_exit(3);
        int status = 1;
        try {
            files::WholeFile(file("protected"));
        } catch (const files::FileError& error) {
            status = error.details() == std::string("It is write-protected.") ? 0 : 2;
        }
        try {
            files::WholeFile whole(file("dark/new"));
            whole.write("text");
            whole.publish();
        } catch (const files::FileError&) {
            status = 4;
        }
        ::_exit(status);
    }
    int status = -1;
    ::waitpid(child, &status, 0);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(read(file("protected")), "old");
    fs::permissions(file("dark"), fs::perms::all);
    EXPECT_EQ(read(file("dark/new")), "text");
    fs::remove(file("protected"));
    fs::remove_all(file("dark"));
    EXPECT_EQ(names(), (std::set<std::string>{"circle"}));
}

TEST_F(Files, AWholeFileRemovesWhatFormerOnesHaveLeftAndNeedsNoFolderInItsName) {
    inKilledProcess([this] {
        files::WholeFile whole(file("a"));
        ::raise(SIGKILL);
    });
    ASSERT_EQ(names().size(), 1u);
    const fs::path before = fs::current_path();
    fs::current_path(m_folder);
    {
        files::WholeFile whole("a");
        EXPECT_EQ(names().size(), 1u);
        whole.write("text");
        whole.publish();
    }
    fs::current_path(before);
    EXPECT_EQ(names(), std::set<std::string>{"a"});
    EXPECT_EQ(lastSyncedNames(), std::set<std::string>{"a"});
}

// Of another user: a signal can't be sent to it, but it is there.
TEST_F(Files, LeftoversOfProgramsOfOtherUsersAreKept) {
    const std::string name = files::temporaryNameFor(file("a"));
    const std::string end = std::to_string(::getpid()) + "-";
    std::string other = name;
    other.replace(other.rfind(end), other.npos, "1-1");
    write(fs::path(other).filename().string(), "");
    fs::permissions(m_folder, fs::perms::all);
    const pid_t child = ::fork();
    if (child == 0) {
        if (::getuid() == 0 && ::setuid(65534) != 0)
            ::_exit(1);
        files::removeLeftovers(file("a"));
        ::_exit(fs::exists(other) ? 0 : 2);
    }
    int status = -1;
    ::waitpid(child, &status, 0);
    EXPECT_EQ(status, 0);
}

// Standard output that is appended to a file is no file to be replaced.
TEST_F(Files, AnOpenFileIsWrittenOn) {
    write("log", "before\n");
    const int saved = ::dup(STDOUT_FILENO);
    std::FILE* const log = std::fopen(file("log").c_str(), "a");
    ASSERT_NE(log, nullptr);
    ::dup2(::fileno(log), STDOUT_FILENO);
    for (const char* const name : {"/dev/stdout", "/dev/fd/1"}) {
        files::WholeFile whole(name);
        EXPECT_FALSE(whole.replaces());
        whole.write("after\n");
        whole.publish();
    }
    ::dup2(saved, STDOUT_FILENO);
    ::close(saved);
    std::fclose(log);
    EXPECT_EQ(read(file("log")), "before\nafter\nafter\n");
    EXPECT_EQ(names(), (std::set<std::string>{"log"}));
}

TEST_F(Files, AFolderThatCouldNotBeOpenedIsNotCalledSynced) {
    const std::string first = write("new", "first");
    // The sanitizer needs descriptors when it sees a category of errors for the first time.
    failure([&] { files::replaceDurably(file("none"), file("a")); });
    rlimit before{};
    ASSERT_EQ(::getrlimit(RLIMIT_NOFILE, &before), 0);
    const int lowest = ::dup(STDERR_FILENO);
    ::close(lowest);
    const rlimit none{static_cast<rlim_t>(lowest), before.rlim_max};
    ::setrlimit(RLIMIT_NOFILE, &none);
    const std::string said = failure([&] { files::replaceDurably(first, file("a")); });
    ::setrlimit(RLIMIT_NOFILE, &before);
    EXPECT_NE(said.find("could not be synced"), std::string::npos) << said;
    EXPECT_EQ(names(), (std::set<std::string>{"a"}));
    // One that failed is told; some systems can't, which is no failure.
    for (const int error : {EIO, ENOSPC, EINVAL, EROFS}) {
        folderSyncs() = {0, 1, error};
        if (error == EIO || error == ENOSPC)
            EXPECT_NE(failure([&] { files::syncFolderOf(file("a")); }).find("could not be synced"),
                      std::string::npos);
        else
            EXPECT_NO_THROW(files::syncFolderOf(file("a")));
    }
}

}  // namespace
