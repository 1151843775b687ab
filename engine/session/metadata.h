// The metadata items of a database: texts by name, most of them JSON, some of them signed.
#pragma once

#include "engine/session/signature.h"

#include <string>

namespace tarvo::engine::session {

class Session;

// Part of a session. What changes an item changes the pending transaction, and throws
// Failure(State) without one; what reads one sees that transaction.
class MetaData {
public:
    explicit MetaData(Session& session) : m_session(session) {}

    // Failure(NotFound)
    std::string get(const std::string& name);
    // A new value has no signature.
    void set(const std::string& name, const std::string& value);
    void remove(const std::string& name);
    // Method 0 removes the signature.
    void sign(const std::string& name, const Signer& signer);
    // Whether the signature is valid; with method 0 and no key: whether there is one.
    bool verify(const std::string& name, const Signer& signer);

private:
    Session& m_session;
};

void checkMetaDataName(const std::string& name);  // Failure(Argument)

}  // namespace tarvo::engine::session
