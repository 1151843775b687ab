// Files that the first release made, and what it read of them: golden/README.md tells how.
#include "tests/engine/store.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>
#include <fstream>
#include <sstream>

namespace tarvo::engine {
namespace {

using namespace testing;

std::string golden(const std::string& name) {
    return std::string(QRB_GOLDEN) + "/" + name;
}

std::string textOf(const std::string& file) {
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

int formatOf(const std::string& file) {
    return numberIn(file, "PRAGMA user_version");
}

// A file with everything in it: levels of detail, storage classes, free numbers, invalid values,
// signatures, states restored and discarded, each kind of index.
class FirstRelease : public ::testing::TestWithParam<const char*> {
protected:
    FirstRelease() : m_file(m_folder.file("a.qrbx")) {
        std::filesystem::copy_file(golden(GetParam() + std::string(".qrbx")), m_file);
        std::filesystem::permissions(m_file, std::filesystem::perms::owner_all);
    }

    // Every value against the text that the first release wrote.
    void expectValues(session::Session& session) const {
        std::istringstream csv(textOf(golden(GetParam() + std::string(".csv"))));
        std::string line;
        std::getline(csv, line);
        std::vector<std::string> names;
        for (std::istringstream header(line); std::getline(header, line, ',');)
            names.push_back(line);
        query::SelectQuery query(session, {}, "");
        std::vector<double> values(names.size());
        for (std::size_t i = 0; i < names.size(); ++i)
            query.bind(names[i], QRB_DATA_TYPE_DOUBLE, &values[i], 0);
        std::size_t rows = 0;
        while (std::getline(csv, line)) {
            ASSERT_EQ(query.next(1), 1u);
            ++rows;
            std::istringstream fields(line);
            std::string field;
            for (std::size_t i = 0; i < names.size(); ++i) {
                std::getline(fields, field, ',');
                ASSERT_NEAR(values[i], std::stod(field), 1e-9) << names[i] << " in row " << rows;
            }
        }
        EXPECT_EQ(query.next(1), 0u);
        EXPECT_GT(rows, 100u);
    }

    TemporaryFolder m_folder;
    std::string m_file;
};

TEST_P(FirstRelease, ReadsTheSameAndIsRewrittenOnlyByACommit) {
    const std::string bytes = textOf(m_file);
    std::vector<std::uint32_t> ids;
    {
        session::Session session(m_file, {}, "test");
        expectValues(session);
        ids = session.history().transactions();
        for (const std::uint32_t id : ids)
            EXPECT_EQ(session.history().details(id).id, id);
        session.begin("never made", "test", "", "");
        session.metaData().set("x", "1");
        session.rollback();
    }
    EXPECT_EQ(textOf(m_file), bytes);
    {
        // Its history is changed in its own format.
        session::Session session(m_file, {}, "test");
        const std::uint32_t current = session.current();
        session.restore(1);
        session.restore(current);
        session.history().discard({});
        session.history().vacuum();
        EXPECT_EQ(formatOf(m_file), 1);
        expectValues(session);
        EXPECT_EQ(session.history().transactions(), ids);
    }
    session::Session session(m_file, {}, "test");
    session::Session beside(m_file, {}, "test");
    const std::uint32_t added = session.begin("new", "test", "", "");
    EXPECT_GT(added, ids.back());
    session.metaData().set("new", "1");
    query::commit(session);
    EXPECT_EQ(formatOf(m_file), 2);
    // Nothing is left of what the first format had in other places.
    EXPECT_EQ(numberIn(m_file, "SELECT count(*) FROM info WHERE name IN ('identity', 'history')"), 2);
    EXPECT_EQ(numberIn(m_file, "SELECT count(*) FROM info"), 2);
    expectValues(session);
    EXPECT_EQ(beside.metaData().get("new"), "1");
    expectValues(beside);
    ids.push_back(added);
    EXPECT_EQ(session.history().transactions(), ids);
    session.restore(ids[ids.size() - 2]);
    session.history().discard({added});
    session.history().vacuum();
    // A number is not given twice, though it was discarded.
    EXPECT_EQ(session.begin("again", "test", "", ""), added + 1);
    session.rollback();
    session::Session again(m_file, {}, "test");
    expectValues(again);
}

// The number of a transaction that was discarded before the file got its second version.
TEST_P(FirstRelease, GivesNoNumberTwice) {
    session::Session session(m_file, {}, "test");
    const std::vector<std::uint32_t> ids = session.history().transactions();
    session.restore(ids[ids.size() - 2]);
    session.history().discard({ids.back()});
    ASSERT_EQ(formatOf(m_file), 1);
    session::Session again(m_file, {}, "test");
    EXPECT_GT(again.begin("new", "test", "", ""), ids.back());
    again.rollback();
}

// A program of that release may have the file open, and a transaction pending.
TEST_P(FirstRelease, IsWrittenByOneOfBothReleasesAtATime) {
    const std::string lock = m_file + "-writer";
    session::Session session(m_file, {}, "test");
    const int older = ::open(lock.c_str(), O_RDWR | O_CREAT, 0644);
    ASSERT_EQ(::flock(older, LOCK_EX | LOCK_NB), 0);
    ASSERT_EQ(::write(older, "123456789", 9), 9);
    try {
        session.begin("beside", "test", "", "");
        FAIL() << "two writers";
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.code(), ErrorCode::Busy);
        EXPECT_EQ(failure.details(), "Lock: " + lock + ", process 123456789");
    }
    EXPECT_THROW(session.history().vacuum(), Failure);
    ::close(older);
    // A link in its place leads nowhere.
    const std::string other = m_folder.file("other");
    std::ofstream(other) << "kept";
    std::filesystem::rename(lock, lock + "-left");
    std::filesystem::create_symlink(other, lock);
    try {
        session.begin("through a link", "test", "", "");
        FAIL() << "a link was followed";
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.code(), ErrorCode::File);
    }
    EXPECT_EQ(textOf(other), "kept");
    // That of a writer that was killed is taken over.
    std::filesystem::rename(lock + "-left", lock);
    session.begin("alone", "test", "", "");
    EXPECT_EQ(textOf(lock), std::to_string(::getpid()));
    const int waiting = ::open(lock.c_str(), O_RDWR);
    EXPECT_NE(::flock(waiting, LOCK_EX | LOCK_NB), 0);
    ::close(waiting);
    query::commit(session);
    // From here on that release can't write it.
    session.begin("alone", "test", "", "");
    EXPECT_FALSE(std::filesystem::exists(lock));
}

INSTANTIATE_TEST_SUITE_P(Files, FirstRelease,
                         ::testing::Values("release1-history", "release1-edges"),
                         [](const auto& each) {
                             return std::string(each.param).substr(std::string("release1-").size());
                         });

TEST(FirstReleaseHistory, KeepsItsChangelogMetadataAndSignatures) {
    TemporaryFolder folder;
    const std::string file = folder.file("a.qrbx");
    std::filesystem::copy_file(golden("release1-history.qrbx"), file);
    session::Session session(file, {}, "test");
    EXPECT_EQ(session.current(), 15u);
    EXPECT_EQ(session.history().transactions().back(), 16u);
    EXPECT_EQ(session.changelog().text(), textOf(golden("release1-history-changelog.txt")));
    EXPECT_EQ(session.metaData().get("note"), "{\"text\":\"älter, \\\"quoted\\\"\\n\"}");
    EXPECT_EQ(session.metaData().get("plain"), "no JSON");
    EXPECT_TRUE(session.metaData().verify("note", {1, {0x00, 0xff, 0x17}, {}}));
    EXPECT_EQ(countOf(session, "free.number > 1"), 107u);
    session.restore(16);
    EXPECT_EQ(session.metaData().get("second"), "17");
    EXPECT_EQ(session.history().details(16).comments, "two\nlines");
}

TEST(FirstReleaseHistory, LosesNothingByAFlippedBit) {
    TemporaryFolder folder;
    const std::string file = folder.file("a.qrbx");
    std::filesystem::copy_file(golden("release1-history.qrbx"), file);
    // The last transaction seems to refer to less: what lies behind must not be collected.
    (void)numberIn(file, "UPDATE snapshot SET last_blob = 3 WHERE id = 16");
    (void)numberIn(file, "UPDATE snapshot SET last_blob = last_blob - 1 WHERE id = 14");
    const int blobs = numberIn(file, "SELECT count(*) FROM blob");
    session::Session session(file, {}, "test");
    session.begin("small", "test", "", "");
    session.metaData().set("x", "1");
    EXPECT_THROW(query::commit(session), Failure);
    session.rollback();
    EXPECT_EQ(numberIn(file, "SELECT count(*) FROM blob"), blobs);
}

}  // namespace
}  // namespace tarvo::engine
