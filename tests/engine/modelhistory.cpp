// What begins, ends and undoes transactions of a database and of its model.
#include "tests/engine/modelplay.h"

#include "engine/query/commit.h"

#include <gtest/gtest.h>

#include <sys/wait.h>
#include <unistd.h>
#include <csignal>

namespace tarvo::engine::testing {

std::string Play::betweenTransactions() {
    const std::vector<std::uint32_t> ids = m_session->history().transactions();
    const std::uint32_t picked = ids[below(static_cast<std::uint32_t>(ids.size()))];
    switch (below(6)) {
        case 0:
            m_session->restore(picked);
            m_now = m_history.at(picked);
            return "restore " + std::to_string(picked);
        case 1:
            if (picked == ids.front() || picked == m_session->current()) {
                EXPECT_THROW(m_session->history().discard({picked}), Failure);
                return "discard refused";
            }
            EXPECT_GT(m_session->history().size({picked}), 0u);
            m_session->history().discard({picked});
            m_history.erase(picked);
            return "discard " + std::to_string(picked);
        case 2:
            m_session->history().vacuum();
            return "vacuum";
        case 3:
            if (chance(4)) {
                m_session->history().finalize();
                const std::uint32_t now = m_session->current();
                std::erase_if(m_history, [&](const auto& entry) {
                    return entry.first != ids.front() && entry.first != now;
                });
                return "finalize";
            }
            return "nothing";
        case 4:
            return crash();
        default:
            return reopen();
    }
}

std::string Play::levelOfDetail() {
    const std::uint32_t mode = 1 + below(2);
    m_session->setLevelOfDetail(mode, chance(3) ? 0 : 1 + below(mode == 1 ? 60 : 4));
    return "level of detail";
}

std::string Play::endTransaction(bool keep) {
    if (keep) {
        if (chance(2))
            m_session->changelog().append("message of step " + std::to_string(m_step));
        query::commit(*m_session, {}, chance(2) ? signer : session::Signer());
        m_history[m_id] = m_now;
        EXPECT_EQ(m_folder.names(), "a.qrbx ");
        return "commit";
    }
    m_session->rollback();
    m_now = m_before;
    return "rollback";
}

std::string Play::reopen() {
    const bool pending = m_session->pending();
    m_session.reset();
    if (pending)
        m_now = m_before;
    open();
    return "reopen";
}

std::string Play::crash() {
    const bool pending = m_session->pending();
    m_session.reset();
    if (pending)
        m_now = m_before;
    // At this percentage of its commit; 100 comes behind it.
    const int end = chance(3) ? 100 : static_cast<int>(below(100));
    const ::pid_t child = ::fork();
    if (child == 0) {
        session::Session session(m_file, session::OpenSettings{0}, "test");
        session.begin("crash", "test", "", "");
        session.metaData().set("item 0", "\"crashed\"");
        insert(session, std::vector<Point>(500, Point{1, 2, 3, 4}));
        query::commit(session, [end](int percent) {
            if (percent >= end)
                ::raise(SIGKILL);
            return true;
        });
        ::_exit(0);
    }
    ::waitpid(child, nullptr, 0);
    open();
    if (end == 100) {
        m_now.metaData["item 0"] = "\"crashed\"";
        m_now.signedItems.erase("item 0");
        for (int i = 0; i < 500; ++i) {
            Values& values = m_now.points[m_now.nextId++];
            values = {{"xyz[0]", 1}, {"xyz[1]", 2}, {"xyz[2]", 3}};
            for (const auto& [name, attribute] : m_now.attributes)
                if (!isConstant(attribute))
                    values[name] = name == "amplitude" ? 4 : attribute.defaultValue;
        }
        for (const auto& [name, attribute] : m_now.attributes)
            if (isConstant(attribute))
                m_now.constants.try_emplace(name, attribute.defaultValue);
        m_history[m_session->current()] = m_now;
    }
    return "crash at " + std::to_string(end) + " % of a commit";
}

}  // namespace tarvo::engine::testing
