// Files whose tables, roots and definitions are not those that this library writes, with the right
// checksums: each is refused with its reason before anything is read or written by it.
#include "tests/engine/hostile.h"

#include <sys/stat.h>

#include <array>

namespace tarvo::engine {
namespace {

using namespace testing;

class HostileStore : public Store {
protected:
    // A damaged copy of the file.
    void spoil(const std::function<void(store::Connection&)>& change) {
        renew();
        store::Connection connection(m_spoilt, SQLITE_OPEN_READWRITE);
        change(connection);
    }
    void spoil(const char* sql) {
        renew();
        runSql(m_spoilt, sql);
    }
    void spoilHistory(const std::function<void(store::History&)>& change) {
        spoil([&](store::Connection& connection) {
            store::History history = store::readHistory(connection);
            change(history);
            store::writeHistory(connection, history);
        });
    }
    // In the root of the current transaction.
    void spoilRoot(std::string_view what, std::string_view by) {
        renew();
        rewriteSnapshot(m_spoilt, 2, [&](std::string& root) { replace(root, what, by); });
    }
    Outcome opening() {
        return outcomeOf([&] { session::Session(m_spoilt, {}, "test"); });
    }
    Outcome beginning() {
        session::Session session(m_spoilt, {}, "test");
        return outcomeOf([&] { session.begin("change", "test", "", ""); });
    }
    void expectDamage(const std::string& text) {
        const Outcome outcome = opening();
        EXPECT_EQ(outcome.code, ErrorCode::Damaged);
        EXPECT_NE(outcome.text.find(text), std::string::npos) << outcome.text;
    }

    const std::string m_spoilt = m_folder.file("spoilt.qrbx");

private:
    void renew() {
        std::filesystem::copy_file(m_file, m_spoilt,
                                   std::filesystem::copy_options::overwrite_existing);
    }
};

TEST_F(HostileStore, OtherTablesAreNoFileOfThisLibrary) {
    for (const char* const sql :
         {"DROP TABLE snapshot", "DROP TABLE blob", "CREATE TABLE zoo(animal)", "CREATE TABLE a(b)",
          "CREATE VIEW zoo AS SELECT 1", "CREATE INDEX zoo ON snapshot(root)",
          "CREATE TRIGGER zoo AFTER INSERT ON blob BEGIN DELETE FROM blob; END",
          "ALTER TABLE blob ADD COLUMN more", "PRAGMA journal_mode=WAL"}) {
        spoil(sql);
        const Outcome outcome = opening();
        EXPECT_EQ(outcome.code, ErrorCode::Format) << sql;
        EXPECT_EQ(outcome.text, "The file is not a point-cloud database of this library.") << sql;
        EXPECT_TRUE(store::Container::recognises(m_spoilt)) << sql;
    }
}

TEST_F(HostileStore, WhatIsNoFileIsNotOpened) {
    const std::string pipe = m_folder.file("pipe");
    const std::string folder = m_folder.file("folder");
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    std::filesystem::create_directory(folder);
    for (const std::string& name : {pipe, folder, m_folder.file("none")}) {
        EXPECT_FALSE(store::Container::recognises(name));
        const Outcome outcome = outcomeOf([&] { session::Session(name, {}, "test"); });
        const bool exists = std::filesystem::exists(name);
        EXPECT_EQ(outcome.code, exists ? ErrorCode::Format : ErrorCode::NotFound);
        EXPECT_EQ(outcome.text, exists ? "\"" + name + "\" is not a file."
                                       : "The file \"" + name + "\" does not exist.");
    }
}

TEST_F(HostileStore, NumbersThatNoHistoryHasAreDamage) {
    const std::function<void(store::History&)> lies[] = {
        [](auto& history) { history.last = 1; },
        [](auto& history) { history.current = 3; },
        [](auto& history) { history.lastBlob = store::mostBlobs + 1; },
        [](auto& history) {
            history.kept = {1, 2, 3};
        },
        [](auto& history) { history.kept = {2}; },
        [](auto& history) {
            history.kept = {2, 1};
        },
    };
    for (const auto& lie : lies) {
        spoilHistory(lie);
        expectDamage("the list of transactions does not agree with its checksum");
    }
    for (const char* const text :
         {"", "2", "2 2", "2 2 9 1 x", "2 2 9 1 2x", "2 2 99999999999999999999 1 2"}) {
        spoil([&](store::Connection& connection) { store::putInfo(connection, "history", text); });
        expectDamage("the list of transactions does not agree with its checksum");
    }
    for (const char* const sql :
         {"UPDATE info SET value = CAST(value AS BLOB) WHERE name = 'history'",
          "UPDATE info SET checksum = CAST(CAST(checksum AS TEXT) AS BLOB) WHERE name = 'history'",
          "UPDATE info SET checksum = checksum + 1 WHERE name = 'history'"}) {
        spoil(sql);
        expectDamage("the item \"history\"");
    }
    // Of a transaction that is not even read.
    for (const char* const number : {"-1", "1 << 61"}) {
        spoil(("UPDATE snapshot SET last_blob = " + std::string(number) + " WHERE id = 1").c_str());
        expectDamage("the list of transactions does not agree with its checksum");
    }
    spoil("UPDATE snapshot SET checksum = checksum + 1 WHERE id = 2");
    expectDamage("transaction 2 does not agree with its checksum");
}

TEST_F(HostileStore, AHistoryThatHasNoNumberLeftIsNotContinuedAndNotLocked) {
    const auto expectEnd = [&](ErrorCode code, const std::string& text) {
        const session::Session beside(m_spoilt, {}, "test");
        session::Session session(m_spoilt, {}, "test");
        for (int i = 0; i < 2; ++i) {
            const Outcome outcome = beginning();
            EXPECT_EQ(outcome.code, code);
            EXPECT_EQ(outcome.text, text);
            const Outcome again = outcomeOf([&] { session.begin("again", "test", "", ""); });
            EXPECT_EQ(again.text, text);
        }
        EXPECT_EQ(readAll(session), m_before);
        // It holds no lock: what can be done is done.
        session.restore(1);
        EXPECT_EQ(session.current(), 1u);
    };
    spoilHistory([](auto& history) { history.last = UINT32_MAX; });
    expectEnd(ErrorCode::State, "The database has no more transaction numbers.");
    spoilHistory([](auto& history) { history.lastBlob = store::mostBlobsBefore + 1; });
    expectEnd(ErrorCode::Damaged, "The file is damaged: it has no room for another transaction.");
    // The current state's newest blob is its changelog entry, then the item that is made one here.
    const auto newest = [&] {
        store::Connection connection(m_spoilt, SQLITE_OPEN_READONLY);
        return store::readLastBlob(connection, 2);
    };
    const std::string lost =
        "The file is damaged: its current transaction refers to data that no "
        "transaction keeps. Nothing was changed.";
    spoil([&](store::Connection& connection) {
        store::History history = store::readHistory(connection);
        const std::string root = store::readRoot(connection, 2);
        --history.lastBlob;
        store::removeSnapshot(connection, 2);
        store::putSnapshot(connection, 2, history.lastBlob, root);
        store::writeHistory(connection, history);
    });
    expectEnd(ErrorCode::Damaged, lost);
    const std::string item = R"("metadata":{"item":{"blob":)" + std::to_string(newest() + 2) +
                             R"(,"length":1,"checksum":"00"}})";
    spoilRoot("\"metadata\":{}", item);
    expectEnd(ErrorCode::Damaged, lost);
}

TEST_F(HostileStore, RootsOfAnotherTransactionOrAnotherIndexAreDamage) {
    spoil([](store::Connection& connection) {
        const std::string first = store::readRoot(connection, 1);
        const std::int64_t lastBlob = store::readLastBlob(connection, 2);
        store::removeSnapshot(connection, 2);
        store::putSnapshot(connection, 2, lastBlob, first);
    });
    expectDamage("transaction 2 is not what it should be");
    const char* const reference = "a reference is not readable";
    const char* const detail = "it has no such level of detail as it tells";
    for (const auto& [what, by, text] : std::initializer_list<std::array<const char*, 3>>{
             {"\"blob\":", "\"blob\":0,\"was\":", reference},
             {"\"blob\":", "\"blob\":9223372036854775808,\"was\":", "no valid member \"blob\""},
             {"\"checksum\":\"", "\"checksum\":\"x", reference},
             {"\"checksum\":\"", "\"checksum\":\"1\",\"was\":\"", "agree with its checksum"},
             {"\"checksum\":\"", "\"checksum\":\"1x\",\"was\":\"", reference},
             {"\"checksum\":\"", "\"checksum\":\"11111111111111111\",\"was\":\"", reference},
             {"\"mode\":1", "\"mode\":3", detail},
             {"\"mode\":1,\"size\":0", "\"mode\":1,\"size\":100", detail},
             {"\"mode\":1,\"size\":0", "\"mode\":2,\"size\":17", detail},
             {"\"points\":", "\"points\":-", "no valid member \"points\""}}) {
        SCOPED_TRACE(by);
        spoilRoot(what, by);
        expectDamage(text);
    }
    spoilRoot("\"points\":1500", "\"points\":1499");
    session::Session session(m_spoilt, {}, "test");
    EXPECT_EQ(outcomeOf([&] { (void)readAll(session); }).text,
              "The file is damaged: its index has no root.");
}

TEST_F(HostileStore, SettingsThatNoFileIsMadeWithAreRefused) {
    for (const auto& [what, by] : std::initializer_list<std::pair<const char*, const char*>>{
             {"\"chunk_mode\":1", "\"chunk_mode\":7"},
             {"\"chunk_size\":200", "\"chunk_size\":0"},
             {"\"compression_level\":50", "\"compression_level\":101"},
             {"\"single-pass\"", "\"no-pass\""}}) {
        spoil([&, what = what, by = by](store::Connection& connection) {
            std::string text = store::getInfo(connection, "identity");
            replace(text, what, by);
            store::putInfo(connection, "identity", text);
        });
        EXPECT_NE(opening().text, "") << by;
    }
}

// What an attribute table says, or how it is refused.
std::string tableOf(const std::string& text) {
    try {
        return "attributes: " + std::to_string(session::attributesFromText(text).size());
    } catch (const Failure& failure) {
        return failure.what();
    }
}

TEST(HostileDefinitions, ThatContradictThemselvesAreRefusedWithTheirNames) {
    schema::AttributeTable table;
    table.all().emplace_back(record("xyz", -100, 100, 1, 3), 1);
    table.all().emplace_back(record(std::string(schema::pointIdName), 0, 1e6), 2);
    table.all().emplace_back(record("same", 0, 10, 1, 2), 3);
    table.all().back().record.storageClass = 1;
    table.all().back().constant = {1, 10};
    table.all().emplace_back(record("other", 0, 10), 4);
    const std::string sound = session::attributesText(table);
    EXPECT_EQ(tableOf(sound), "attributes: 4");
    const std::string value =
        "The file is damaged: the constant value of the point attribute "
        "\"same\" is not readable.";
    const std::string code = "The file is damaged: a constant value is not readable.";
    const std::string ten = "\"000000000000000a\"";
    struct Case {
        const char* what;
        std::string by;
        std::string text;
    };
    const Case cases[] = {
        {"\"other\"", "\"same\"",
         "The file is damaged: it has the point attribute \"same\" twice."},
        {"\"number\":4", "\"number\":3",
         "The file is damaged: it has the point attribute \"other\" twice."},
        {"\"tarvo.id\"", "\"id\"",
         "The file is damaged: it lacks its primary attribute or point id."},
        {"000000000000000a", "000000000000000b", value},
        {"\"000000000000000a\"", ten + "," + ten, value},
        {",\"000000000000000a\"", "", value},
        {"\"storage_class\":1", "\"storage_class\":2", value},
        {"000000000000000a", "000000000000000g", code},
        {"000000000000000a", "a ", code},
        {"000000000000000a", "", code},
        {"\"000000000000000a\"", "10", code},
    };
    for (const Case& one : cases) {
        std::string text = sound;
        replace(text, one.what, one.by);
        EXPECT_EQ(tableOf(text), one.text) << one.by;
    }
    EXPECT_EQ(tableOf("{}"), "The file is damaged: its attribute table is no list.");
    std::string nameless = sound;
    replace(nameless, "\"other\"", "\"0ther\"");
    EXPECT_NE(tableOf(nameless).find("must begin with a letter"), std::string::npos);
    std::swap(table.all()[1], table.all()[3]);
    EXPECT_EQ(tableOf(session::attributesText(table)),
              "The file is damaged: it lacks its primary attribute or point id.");
}

}  // namespace
}  // namespace tarvo::engine
