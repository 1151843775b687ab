// The metadata items of a database: texts by name, most of them JSON, some of them signed.
#pragma once

#include "engine/session/signature.h"

#include <string>
#include <vector>

namespace tarvo::engine::session {

class Session;
struct State;

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
    // The items of a state that hold placeholders, but for those that another one has, too.
    std::vector<std::string> placeholders(const State& state, const State& but);

private:
    Session& m_session;
};

void checkMetaDataName(const std::string& name);  // Failure(Argument)
// Whether a value of an item is the catalogue's example, which new files have for what nobody else
// can tell; however the JSON text is written.
bool isPlaceholder(const std::string& name, const std::string& value);

}  // namespace tarvo::engine::session
