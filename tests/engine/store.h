// A database for the tests of the store, and what goes on around it: other processes, changes
// behind the library's back.
#pragma once

#include "engine/query/commit.h"
#include "tests/engine/database.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <sys/wait.h>
#include <unistd.h>
#include <functional>
#include <random>
#include <stdexcept>
#include <string>

namespace tarvo::engine::testing {

// The code and text of what a function throws; Internal and empty where it throws nothing.
struct Outcome {
    ErrorCode code = ErrorCode::Internal;
    std::string text;
};
inline Outcome outcomeOf(const std::function<void()>& function) {
    try {
        function();
    } catch (const Failure& failure) {
        return {failure.code(), failure.what()};
    }
    return {};
}

// Changes a file behind the library's back.
inline void runSql(const std::string& file, const char* sql) {
    sqlite3* handle = nullptr;
    char* message = nullptr;
    ASSERT_EQ(sqlite3_open(file.c_str(), &handle), SQLITE_OK);
    EXPECT_EQ(sqlite3_exec(handle, sql, nullptr, nullptr, &message), SQLITE_OK) << message;
    sqlite3_close(handle);
}

// What a statement says of a file, 0 where it says nothing.
inline int numberIn(const std::string& file, const char* sql) {
    sqlite3* handle = nullptr;
    sqlite3_stmt* statement = nullptr;
    sqlite3_open(file.c_str(), &handle);
    sqlite3_prepare_v2(handle, sql, -1, &statement, nullptr);
    const int answer = sqlite3_step(statement) == SQLITE_ROW ? sqlite3_column_int(statement, 0) : 0;
    sqlite3_finalize(statement);
    sqlite3_close(handle);
    return answer;
}

// Runs a function in a process of its own, which waits where it calls pause() until go() is called
// here.
class OtherProcess {
public:
    explicit OtherProcess(const std::function<int(const std::function<void()>& pause)>& function) {
        if (::pipe(m_toChild) + ::pipe(m_toParent) != 0)
            throw std::runtime_error("no pipe");
        m_child = ::fork();
        if (m_child != 0)
            return;
        int status = 100;
        try {
            status = function([this] {
                char turn = 'p';
                if (::write(m_toParent[1], &turn, 1) != 1 || ::read(m_toChild[0], &turn, 1) != 1)
                    ::_exit(101);
            });
        } catch (...) {
        }
        ::_exit(status);
    }
    ~OtherProcess() {
        if (m_child > 0)
            wait();
        for (const int end : {m_toChild[0], m_toChild[1], m_toParent[0], m_toParent[1]})
            ::close(end);
    }
    void untilPause() {
        char turn = 0;
        EXPECT_EQ(::read(m_toParent[0], &turn, 1), 1);
    }
    void go() {
        const char turn = 'g';
        EXPECT_EQ(::write(m_toChild[1], &turn, 1), 1);
    }
    int wait() {
        int status = 0;
        ::waitpid(m_child, &status, 0);
        m_child = 0;
        return WIFSIGNALED(status) ? 1000 + WTERMSIG(status) : WEXITSTATUS(status);
    }

private:
    int m_toChild[2];
    int m_toParent[2];
    ::pid_t m_child = 0;
};

class Store : public ::testing::Test {
protected:
    Store() : m_file(m_folder.file("a.qrbx")) {
        session::Session::create(m_file, settings(1, 200), "test", amplitudeOnly());
        session::Session session(m_file, {}, "test");
        commitPoints(session, somePoints(1500, 1));
        m_before = readAll(session);
    }
    // The file is what it was, and can be changed.
    void expectUnchanged() {
        session::Session session(m_file, {}, "test");
        EXPECT_EQ(readAll(session), m_before);
        session.begin("probe", "test", "", "");
        session.metaData().set("probe", "1");
        query::commit(session);
        EXPECT_EQ(session.metaData().get("probe"), "1");
    }

    TemporaryFolder m_folder;
    std::string m_file;
    Points m_before;
};

inline constexpr std::size_t megabyte = 1u << 20;

inline Bytes noise(std::size_t size, std::uint32_t seed) {
    std::mt19937 random(seed);
    Bytes bytes(size);
    for (std::uint8_t& byte : bytes)
        byte = static_cast<std::uint8_t>(random());
    return bytes;
}

}  // namespace tarvo::engine::testing
