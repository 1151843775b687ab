// What a query that changes points was made for: it refuses to go on in another transaction or
// with other point attributes.
#pragma once

#include "engine/session/session.h"

#include <memory>
#include <vector>

namespace tarvo::engine::query {

class ChangeGuard {
public:
    // Throws Failure(State) when no transaction is pending.
    explicit ChangeGuard(session::Session& session)
        : m_session(session), m_transaction(session.change().rolledBack), m_attributes(numbers()) {}

    // Throws Failure(State).
    void check() const {
        // Not by its number: after a rollback the next transaction gets the same one.
        if (m_session.change().rolledBack != m_transaction)
            throw Failure(ErrorCode::State, "The transaction of this query has ended.",
                          "Make a new query in the new transaction.");
        if (numbers() != m_attributes)
            throw Failure(ErrorCode::State,
                          "The point attributes changed since this query was made.",
                          "Make a new query.");
    }

private:
    std::vector<std::uint32_t> numbers() const {
        std::vector<std::uint32_t> numbers;
        for (const schema::Attribute& attribute : m_session.change().attributes.all())
            numbers.push_back(attribute.uid);
        return numbers;
    }

    session::Session& m_session;
    std::shared_ptr<bool> m_transaction;
    std::vector<std::uint32_t> m_attributes;  // by their numbers in the file
};

}  // namespace tarvo::engine::query
