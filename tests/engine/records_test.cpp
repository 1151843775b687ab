// What a database records of its transactions, and the limits of what it takes: whole texts.
#include "tests/engine/store.h"

#include "engine/query/commit.h"
#include "engine/session/signature.h"
#include "engine/store/history.h"

#include <algorithm>
#include <cmath>
#include <ctime>
#include <regex>
#include <set>

namespace tarvo::engine {
namespace {

using namespace testing;

class TransactionRecords : public Store {
protected:
    // The lines of an entry that its record tells.
    std::string head(session::Session& session, std::uint32_t id, const std::string& title,
                     const std::string& agent) const {
        const session::TransactionRecord record = session.history().details(id);
        return "[#" + std::to_string(id) + "] " + title + "\nAgent: " + agent +
               "\nLibrary: " + session::libraryVersion() + " test\nStart: " + record.start +
               "\nStop: " + record.stop + "\n";
    }
};

TEST_F(TransactionRecords, AreTheWholeChangelogOfWhatWasDone) {
    session::Session session(m_file, {}, "test");
    const session::Signer signer{1, {7}, {}};
    session.begin("  two\nlines \n", "an\r\nagent", "a comment\n[#9] of lines\n \n", "{}");
    session.metaData().set("item", "one");
    session.metaData().set("other", "one");
    session.metaData().sign("item", signer);
    session.changelog().append(" said\n");
    session.setLevelOfDetail(2, 0);
    session.changelog().import("[#1] Older\n");
    const session::TransactionRecord pending = session.history().details(3);
    EXPECT_EQ(pending.id, 3u);
    EXPECT_EQ(pending.stop, "");
    EXPECT_EQ(pending.agent, "an\r\nagent");
    EXPECT_EQ(pending.settings, "{}");
    query::commit(session);

    session.begin("again", "agent", "", "");
    session.metaData().set("item", "two");
    session.metaData().set("other", "one");
    session.setLevelOfDetail(1, 0);
    query::commit(session);
    session.begin("signed", "agent", "", "");
    session.setLevelOfDetail(1, 9);
    session.metaData().sign("other", signer);
    query::commit(session, {}, signer);

    EXPECT_EQ(session.history().details(1).agent, session::libraryVersion());
    const std::string creation = head(session, 1, "Database creation", session::libraryVersion()) +
                                 "Point attributes: added xyz, tarvo.id, amplitude\n";
    const std::string points =
        head(session, 2, "insert", "test") + "Points: inserted 1500; now 1500\n";
    const std::string third = head(session, 3, "  two lines", "an agent") +
                              "Comments: a comment\n    [ #9] of lines\n"
                              "Metadata: added item, other; signed item\n"
                              "Level of detail: combine, size 0\n"
                              "Changelog: imported that of another database\n"
                              "Message:  said\n";
    const std::string fourth = head(session, 4, "again", "agent") +
                               "Metadata: changed item, other; signature removed from item\n"
                               "Level of detail: thinout, size 0\n";
    const std::string fifth = head(session, 5, "signed", "agent") +
                              "Metadata: signed other\n"
                              "Level of detail: thinout, size 9\n";
    const std::string signature =
        session::makeSignature(signer, {"changelog entry", {}, fifth, ""});
    EXPECT_EQ(session.changelog().text(), "[#1] Older\n\n" + creation + "\n" + points + "\n" +
                                              third + "\n" + fourth + "\n" + fifth +
                                              "Signature: " + signature + "\n");
    // What begins does so from the state that is current, whatever came after that.
    session.restore(2);
    session.begin("aside", "agent", "", "");
    query::commit(session);
    EXPECT_EQ(session::stateFromRoot(session.history().root(6)).parent, 2u);
    EXPECT_EQ(session::stateFromRoot(session.history().root(5)).parent, 4u);
    EXPECT_EQ(session.current(), 6u);
}

TEST_F(TransactionRecords, HaveTextsUpToTheirLimits) {
    session::Session session(m_file, {}, "test");
    const std::string title(megabyte, 't');
    const std::string text(16 * megabyte, 'c');
    EXPECT_EQ(session.begin(title, title, text, text), 3u);
    session.changelog().append(title);
    EXPECT_EQ(outcomeOf([&] { session.changelog().append(title + "t"); }).text,
              "The message is too long.");
    for (const char* const blank : {"", " ", "\t", "\r\n", " \n\t\r"})
        EXPECT_EQ(outcomeOf([&] { session.changelog().append(blank); }).text,
                  "The message is empty.");
    session.rollback();
    const auto refusal = [](const char* what, std::size_t most) {
        return std::string(what) + " of a transaction has at most " + std::to_string(most) +
               " bytes, this one has " + std::to_string(most + 1) + ".";
    };
    const auto begin = [&](const std::string& of, const std::string& by, const std::string& comment,
                           const std::string& settings) {
        const Outcome outcome = outcomeOf([&] { session.begin(of, by, comment, settings); });
        EXPECT_FALSE(session.pending());
        return outcome.text;
    };
    EXPECT_EQ(begin(title + "t", "", "", ""), refusal("The title", megabyte));
    EXPECT_EQ(begin("", title + "t", "", ""), refusal("The agent", megabyte));
    EXPECT_EQ(begin("", "", text + "c", ""), refusal("The comment", 16 * megabyte));
    EXPECT_EQ(begin("", "", "", text + "c"), refusal("The settings text", 16 * megabyte));
}

TEST_F(TransactionRecords, WhosePendingOneRefusesWhatWouldChangeTheOthers) {
    session::Session session(m_file, {}, "test");
    EXPECT_EQ(outcomeOf([&] { (void)session.change(); }).code, ErrorCode::State);
    session.begin("pending", "test", "", "");
    for (const auto& work : std::initializer_list<std::function<void()>>{
             [&] { session.begin("second", "test", "", ""); }, [&] { session.restore(1); },
             [&] { session.history().discard({1}); }, [&] { session.history().finalize(); },
             [&] { session.history().vacuum(); }}) {
        const Outcome outcome = outcomeOf(work);
        EXPECT_EQ(outcome.code, ErrorCode::State);
        EXPECT_EQ(outcome.text, "A transaction is pending.");
    }
    query::commit(session);
    session.begin("fourth", "test", "", "");
    query::commit(session);
    const auto discard = [&](std::uint32_t id) {
        return outcomeOf([&] { session.history().discard({3, id}); }).text;
    };
    EXPECT_EQ(discard(1), "Transaction 1 can't be discarded: it is the first one.");
    EXPECT_EQ(discard(4), "Transaction 4 can't be discarded: it is the current one.");
    EXPECT_EQ(discard(9), "The database has no transaction 9.");
    EXPECT_EQ(discard(3), "The database has no transaction 3.");
    EXPECT_EQ(session.history().transactions(), (std::vector<std::uint32_t>{1, 2, 3, 4}));
    session.history().finalize();
    EXPECT_EQ(session.history().transactions(), (std::vector<std::uint32_t>{1, 4}));
}

// One that can't be read doesn't take the place of one that can.
TEST_F(TransactionRecords, ThatAreDamagedAreNotRestored) {
    session::Session session(m_file, {}, "test");
    session.begin("attribute", "test", "", "");
    session.addAttribute(record("more", 0, 9));
    query::commit(session);
    const BlobRef table = session.state()->attributesBlob;
    session.restore(2);
    runSql(m_file, ("UPDATE blob SET data = zeroblob(length(data)) WHERE id = " +
                    std::to_string(table.blob))
                       .c_str());
    const Outcome outcome = outcomeOf([&] { session.restore(3); });
    EXPECT_EQ(outcome.code, ErrorCode::Damaged);
    EXPECT_EQ(outcome.text,
              "The file is damaged: the attribute table of transaction 3 does not "
              "agree with its checksum.");
    expectUnchanged();
}

// Not even what nobody wants: such a file is for a backup.
TEST_F(TransactionRecords, OfWhichDataIsMissingAreNotCleanedUp) {
    session::Session session(m_file, {}, "test");
    session.begin("item", "test", "", "");
    session.metaData().set("item", "1");
    query::commit(session);
    const BlobRef value = session.state()->metaData.at("item").value;
    runSql(m_file, ("INSERT INTO blob VALUES(5000, x'01'); DELETE FROM blob WHERE id = " +
                    std::to_string(value.blob))
                       .c_str());
    const std::uint64_t blobs = session.history().blobCount();
    const Outcome outcome = outcomeOf([&] { session.history().vacuum(); });
    EXPECT_EQ(outcome.code, ErrorCode::Damaged);
    EXPECT_EQ(outcome.text,
              "The file is damaged: data of a transaction that is kept is missing. "
              "Nothing was removed.");
    EXPECT_EQ(session.history().blobCount(), blobs);
}

TEST_F(TransactionRecords, TellHowFarTheirWorkHasComeFromTheBeginToTheEnd) {
    session::Session session(m_file, {}, "test");
    std::vector<int> told;
    const session::Progress note = [&](int percent) {
        told.push_back(percent);
        return true;
    };
    const auto expectWhole = [&](const char* what) {
        SCOPED_TRACE(what);
        EXPECT_TRUE(std::is_sorted(told.begin(), told.end()));
        EXPECT_EQ(told.front(), 0);
        EXPECT_EQ(told.back(), 100);
        EXPECT_EQ(std::count(told.begin(), told.end(), 100), 1);
        told.clear();
    };
    const session::Progress stop = [&](int percent) {
        told.push_back(percent);
        return false;
    };
    session.begin("points", "test", "", "");
    insert(session, somePoints(20'000, 3));
    const Outcome cancelled = outcomeOf([&] { query::commit(session, stop); });
    EXPECT_EQ(cancelled.text, "The commit was cancelled.");
    EXPECT_EQ(told, std::vector<int>{0});
    told.clear();
    query::commit(session, note);
    expectWhole("a commit");
    session.restore(2);
    session.history().discard({3});
    EXPECT_EQ(outcomeOf([&] { session.history().vacuum(stop); }).text,
              "The clean-up was cancelled.");
    EXPECT_EQ(told, std::vector<int>{0});
    told.clear();
    session.history().vacuum(note);
    expectWhole("a clean-up");
    expectUnchanged();
}

TEST_F(TransactionRecords, TellTheBytesThatAreTheirsAlone) {
    session::Session session(m_file, {}, "test");
    session.begin("items", "test", "", "");
    session.metaData().set("large", std::string(5000, 'x'));
    session.metaData().set("small", "1");
    query::commit(session);
    session.restore(2);
    store::Connection connection(m_file, SQLITE_OPEN_READONLY);
    const std::string own = "SELECT sum(length(data)) FROM blob WHERE id > " +
                            std::to_string(store::readLastBlob(connection, 2));
    EXPECT_EQ(session.history().size({3}),
              static_cast<std::uint64_t>(connection.pragma(own.c_str())) +
                  store::readRoot(connection, 3).size());
}

// From the file, whatever is remembered of it.
TEST_F(TransactionRecords, AreReadAnewBehindAClearedCache) {
    session::Session session(m_file, {}, "test");
    (void)readAll(session);
    const index::Node root = session.blobs().rootNode(*session.state());
    BlobRef block;
    for (index::TreeCursor at(root, session.blobs().pageReader()); at.node() && !block; at.enter())
        if (at.node()->isLeaf())
            block = at.node()->attributes.at(0).elements.at(0).block;
    ASSERT_TRUE(block);
    runSql(m_file, ("UPDATE blob SET data = zeroblob(length(data)) WHERE id = " +
                    std::to_string(block.blob))
                       .c_str());
    EXPECT_EQ(readAll(session), m_before);
    session.blobs().forget();
    EXPECT_EQ(outcomeOf([&] { (void)readAll(session); }).code, ErrorCode::Damaged);
}

TEST(Creation, TakesSettingsUpToTheirLimits) {
    const auto refusal = [](const std::function<void(session::CreateSettings&)>& change) {
        session::CreateSettings some = settings(1, 200);
        change(some);
        return outcomeOf([&] { session::validate(some); }).text;
    };
    struct Case {
        std::function<void(session::CreateSettings&)> change;
        const char* refusal;
    };
    const char* const detail = "level-of-detail size ";
    const Case cases[] = {
        {[](auto& s) { s.chunkMode = 0; }, "chunk mode 0"},
        {[](auto& s) { s.chunkMode = 3; }, "chunk mode 3"},
        {[](auto& s) { s.chunkSize = 0; }, "chunk size 0"},
        {[](auto& s) { s.chunkSize = UINT32_MAX; }, ""},
        {[](auto& s) { s.chunkMode = 2, s.chunkSize = 0; }, ""},
        {[](auto& s) { s.chunkMode = 2, s.chunkSize = 63; }, ""},
        {[](auto& s) { s.chunkMode = 2, s.chunkSize = 64; }, "chunk size 64"},
        {[](auto& s) { s.lodMode = 0; }, "level-of-detail mode 0"},
        {[](auto& s) { s.lodMode = 3; }, "level-of-detail mode 3"},
        {[](auto& s) { s.chunkSizeLod = 99; }, ""},
        {[](auto& s) { s.chunkSizeLod = 100; }, "is not possible: 0 to 99 per cent."},
        {[](auto& s) { s.lodMode = 2, s.chunkSizeLod = 16; }, ""},
        {[](auto& s) { s.lodMode = 2, s.chunkSizeLod = 17; }, "is not possible: 0 to 16."},
        {[](auto& s) { s.chunkSizeLod = 1000; }, detail},
        {[](auto& s) { s.compressionLevel = 100; }, ""},
        {[](auto& s) { s.compressionLevel = 101; }, "compression level 101"},
        {[](auto& s) { s.pointInsertMode = "multi-pass"; }, ""},
        {[](auto& s) { s.pointInsertMode = ""; }, "point insert mode \"\""},
    };
    int number = 0;
    for (const Case& one : cases) {
        const std::string text = refusal(one.change);
        EXPECT_EQ(text.empty(), std::string(one.refusal).empty()) << number << text;
        EXPECT_NE(text.find(one.refusal), std::string::npos) << number << text;
        ++number;
    }
    // However large, a leaf is one piece of memory; the points of details fill no less.
    session::CreateSettings large = settings(1, UINT32_MAX);
    EXPECT_EQ(session::leafCapacity(large), 1u << 20);
    large.chunkMode = 2;
    EXPECT_EQ(session::leafCapacity(large), 1u << 20);
    EXPECT_EQ(session::leafCapacity(settings(1, 77)), 77u);
    EXPECT_EQ(session::nodeCapacity(settings(1, 10'000)), 10'000u);
}

TEST(Creation, LeavesNoFileOfNamesAndKeysThatNoneCanHave) {
    const TemporaryFolder folder;
    const std::string file = folder.file("a.qrbx");
    const auto create = [&](const session::CreateSettings& settings, const std::string& item) {
        const Outcome outcome = outcomeOf([&] {
            session::Session::create(file, settings, "test", {}, {{item, "1"}});
        });
        EXPECT_EQ(outcome.code, ErrorCode::Argument);
        EXPECT_EQ(folder.entries(), 0u);
        return outcome.text;
    };
    const std::string name = "The name of a metadata item must have 1 to 255 characters.";
    for (const std::string& item : {std::string(), std::string(256, 'n'), std::string("a\0b", 3)})
        EXPECT_EQ(create(settings(1, 200), item), name);
    session::CreateSettings byId = settings(1, 200);
    for (const auto& key : {record("tarvo.id", 0, 10, 0.5), record("tarvo.id", 0, 10, 0),
                            record("tarvo.id", 0, 10, 1, 2)}) {
        byId.primaryAttribute = key;
        EXPECT_EQ(create(byId, "item"),
                  "The primary attribute \"tarvo.id\" must be one whole number.");
    }
}

TEST(Creation, NamesEachFileByARandomUuidAndItsTimesByTheWorlds) {
    const TemporaryFolder folder;
    const std::regex uuid("[0-9a-f]{8}-[0-9a-f]{4}-4[0-9a-f]{3}-[89ab][0-9a-f]{3}-[0-9a-f]{12}");
    std::set<std::string> uuids;
    for (int i = 0; i < 12; ++i) {
        const std::string file = folder.file(std::to_string(i));
        session::Session::create(file, settings(1, 200), "test");
        const session::Session session(file, {}, "test");
        EXPECT_TRUE(std::regex_match(session.identity().uuid, uuid)) << session.identity().uuid;
        uuids.insert(session.identity().uuid);
    }
    EXPECT_EQ(uuids.size(), 12u);

    OtherProcess elsewhere([](const auto&) {
        ::setenv("TZ", "XYZ-9", 1);
        ::tzset();
        const std::time_t now = std::time(nullptr);
        std::tm told{};
        if (!::strptime(session::timestamp().c_str(), "%Y-%m-%dT%H:%M:%S", &told))
            return 1;
        return std::fabs(std::difftime(::timegm(&told), now)) < 3600 ? 0 : 2;
    });
    EXPECT_EQ(elsewhere.wait(), 0);
    // Up to a moment of less than 100 milliseconds, which has zeros.
    const std::regex form("\\d{4}-\\d\\d-\\d\\dT\\d\\d:\\d\\d:\\d\\d\\.\\d{3}Z");
    std::string time;
    do {
        time = session::timestamp();
        ASSERT_TRUE(std::regex_match(time, form)) << time;
    } while (time[20] != '0');
}

TEST(Creation, TakesOfATextOfSettingsWhatItNamesAndNothingOfOneThatIsRefused) {
    session::CreateSettings some = settings(2, 5);
    session::CreateSettings expected = some;
    expected.lodMode = 2;
    expected.primaryAttribute.title = "Place";
    for (const char* const text : {R"({"lod_mode": 2, "primary_attribute": {"title": "Place"}})",
                                   R"({"primary_attribute": {}})", "{}"}) {
        session::fromJson(text, some);
        EXPECT_EQ(session::toJson(some), session::toJson(expected)) << text;
    }
    const std::string before = session::toJson(some);
    for (const char* const text :
         {R"({"chunk_mode": 2, "chunk_size": -1})", R"({"lod_mode": 2, "point_insert_mode": 7})",
          R"({"primary_attribute": {"name": "p", "length": "one"}})", R"({"chunk_mode": 2)"}) {
        EXPECT_EQ(outcomeOf([&] { session::fromJson(text, some); }).code, ErrorCode::Argument);
        EXPECT_EQ(session::toJson(some), before) << text;
    }
    // The least memory with which its parts work.
    const TemporaryFolder folder;
    session::Session::create(folder.file("a"), some, "test");
    EXPECT_EQ(session::Session(folder.file("a"), {0}, "test").cacheSize(), 16u << 20);
    EXPECT_EQ(session::Session(folder.file("a"), {20u << 20}, "test").cacheSize(), 20u << 20);
}

TEST(Signatures, HoldForTheWholeOfATextAndOfThemselves) {
    const session::Signer signer{1, {1, 2, 3}, {}};
    const auto check = [&](std::string_view text, std::string_view signature) {
        return session::checkSignature(signer, {"kind", {"place"}, text, ""},
                                       session::SignatureForm::Second, signature);
    };
    const std::string right = session::makeSignature(signer, {"kind", {"place"}, "text", ""});
    std::string upper = right;
    std::transform(upper.begin(), upper.end(), upper.begin(), ::toupper);
    for (const std::string& given : {right, upper})
        for (const char* text : {"text", "text\n", "text \t", "text\t\r\n \n"})
            EXPECT_TRUE(check(text, given)) << text;
    for (const std::string& given :
         {std::string(), right.substr(0, 1), right.substr(0, 63), right + "0", " " + right})
        EXPECT_FALSE(check("text", given)) << given;
    for (const char* text : {"", " text", "tex", "te\txt", "text."})
        EXPECT_FALSE(check(text, right)) << text;

    // Of an entry the last line counts, and only that.
    std::string entry = "[#2] x\nSignature: abcdef\nMore: lines\n";
    EXPECT_FALSE(session::verifyEntry(entry, {}));
    EXPECT_FALSE(session::verifyEntry(entry, signer));
    session::signEntry(entry, signer);
    EXPECT_TRUE(session::verifyEntry(entry, signer));
    for (const char* unsignedOne :
         {"[#2] x\n", "[#2] x\nSignature: \n", "[#2] x\nSignature: none\n", "Signature: abcdef\n"})
        EXPECT_FALSE(session::verifyEntry(unsignedOne, {})) << unsignedOne;

    const session::Signer refusing{2, {}, [](ByteSpan, std::span<std::uint8_t>) { return false; }};
    const auto refusal = [](const session::Signer& by) {
        return outcomeOf([&] { (void)session::makeSignature(by, {"kind", {}, "text", ""}); }).text;
    };
    EXPECT_EQ(refusal(refusing), "The authentication function gave no answer.");
    EXPECT_EQ(refusal({2, {}, {}}), "There is no authentication function.");
    EXPECT_EQ(refusal({1, {}, {}}), "The signature key is missing.");
    EXPECT_EQ(refusal({3, {1}, {}}), "The signature method 3 is unknown.");
}

}  // namespace
}  // namespace tarvo::engine
