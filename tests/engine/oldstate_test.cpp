// A session on an older transaction, or one that only reads: it stays where it is, takes no lock
// and changes nothing.
#include "tests/engine/queryfixture.h"

namespace tarvo::engine {
namespace {

using namespace testing;

class OldState : public QueryFixture {
protected:
    // Transaction 2 has ten points of class 1, each further one fills them with its number.
    void SetUp() override {
        create({record("class", 0, 255)});
        add(10, "class", Values(10, 1));
        commit();
        change(3);
    }
    void change(double value) {
        begin();
        fill("class", value);
        commit();
    }
    std::unique_ptr<session::Session> at(std::uint32_t transaction, bool readOnly = false) {
        session::OpenSettings settings;
        settings.transaction = transaction;
        settings.readOnly = readOnly;
        return std::make_unique<session::Session>(file, settings, "test");
    }
    static void expectRefusals(session::Session& old, const std::string& words) {
        const std::function<void()> changes[] = {
            [&] { old.begin("t", "test", "", ""); }, [&] { old.restore(1); },
            [&] { old.history().discard({2}); },     [&] { old.history().finalize(); },
            [&] { old.history().vacuum(); },         [&] { old.metaData().set("a", "1"); },
        };
        for (const auto& change : changes) {
            const Outcome outcome = outcomeOf(change);
            EXPECT_EQ(outcome.code, ErrorCode::State);
            EXPECT_NE(outcome.text.find(words), std::string::npos) << outcome.text;
        }
    }
};

TEST_F(OldState, IsReadWhateverBecomesCurrent) {
    const auto old = at(2);
    const auto reading = at(0, true);
    EXPECT_FALSE(old->pending());
    expectRefusals(*old, "read transaction 2");
    expectRefusals(*reading, "read only");
    // Writers are not kept out; what they do is not seen by the one, and seen by the other.
    change(4);
    begin();
    EXPECT_EQ(reading->current(), 4u);
    EXPECT_EQ(old->current(), 2u);
    EXPECT_EQ(old->history().transactions().size(), 4u);
    EXPECT_EQ(countOf(*old, "class == 1"), 10u);
    EXPECT_EQ(countOf(*reading, "class == 4"), 10u);
    session->rollback();
}

TEST_F(OldState, ThatIsNotKeptIsRefusedAtOnce) {
    session->history().discard({2});
    const Outcome outcome = outcomeOf([&] { (void)at(2); });
    EXPECT_EQ(outcome.code, ErrorCode::NotFound);
    EXPECT_EQ(outcome.text, "The database does not keep transaction 2.");
    EXPECT_EQ(outcomeOf([&] { (void)at(99); }).code, ErrorCode::NotFound);
    EXPECT_NO_THROW((void)at(1));
    EXPECT_NO_THROW((void)at(3));
}

TEST_F(OldState, ThatIsCleanedUpMeanwhileTellsThat) {
    const auto old = at(2);
    session->history().discard({2});
    EXPECT_EQ(countOf(*old, "class == 1"), 10u);
    old->blobs().forget();
    session->history().vacuum();
    const Outcome outcome = outcomeOf([&] { (void)countOf(*old, "class == 1"); });
    EXPECT_EQ(outcome.code, ErrorCode::State);
    EXPECT_NE(outcome.text.find("Transaction 2, which is being read, was discarded"),
              std::string::npos)
        << outcome.text;
}

}  // namespace
}  // namespace tarvo::engine
