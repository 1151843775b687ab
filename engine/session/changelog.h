// The changelog of an open database, and what the pending transaction will write into it.
#pragma once

#include "engine/session/changelogentry.h"

#include <string>

namespace tarvo::engine::session {

class Session;

// Part of a session.
class Changelog {
public:
    explicit Changelog(Session& session) : m_session(session) {}

    // The entries from the first to the newest one.
    std::string text();
    // Adds a message to the entry of the pending transaction. Failure(Argument) for a blank one, or
    // one too many or too long; Failure(State) without a transaction.
    void append(const std::string& message);
    // Puts an older changelog before this one's, as part of the pending transaction.
    void import(const std::string& text);

    ChangeNotes& notes() { return m_notes; }

private:
    std::vector<std::string> entriesOf(const State& state);  // the newest first

    Session& m_session;
    ChangeNotes m_notes;
};

}  // namespace tarvo::engine::session
