// What stands behind the handles of the C interface.
#pragma once

#include "engine/capi/handletable.h"
#include "engine/capi/log.h"
#include "engine/query/fill.h"
#include "engine/query/insert.h"
#include "engine/query/remove.h"
#include "engine/query/select.h"
#include "engine/query/update.h"
#include "engine/session/session.h"
#include "qrb/qrb.h"

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <utility>

namespace tarvo::engine::capi {

// What a call failed with.
class CallError {
public:
    static CallError outOfMemory() noexcept;
    // From the exception that is being handled. Being out of memory needs none to be told.
    void describeException() noexcept;

    std::int32_t code() const { return m_code; }
    const char* text() const;
    const char* details() const;

private:
    std::int32_t m_code = 0;
    bool m_outOfMemory = false;  // the texts are constants
    std::string m_text;
    std::string m_details;
};

// Records that can be locked.
class Record : public Object {
public:
    std::atomic<int> locks{0};
};

class CreateSettings final : public Record {
public:
    session::CreateSettings value;
};

class OpenSettings final : public Record {
public:
    session::OpenSettings value;
};

class PointAttribute final : public Record {
public:
    schema::AttributeRecord value;
};

class Transaction final : public Object {
public:
    session::TransactionRecord value;
};

class Result final : public Object {
public:
    CallError error;
};

class Context final : public Object {
public:
    Context(Log ownLog, std::string ownApi) : log(std::move(ownLog)), api(std::move(ownApi)) {}

    Log log;
    std::string api;
    CallError error;
    std::string text;      // what the last call handed out
    std::string findings;  // of the last validation, JSON; empty: there was none
    qrb_authentication_function authentication = nullptr;
    void* authenticationData = nullptr;
    std::atomic<int> callingBack{0};  // calls under way that may call back
    std::function<bool()> goOn;       // whether calls are to go on; empty: nobody is asked
};

// An open file, which its handle and its queries share: these go on when the handle is closed.
struct Database {
    Database(const std::string& fileName, const session::OpenSettings& settings,
             const std::string& api)
        : session(fileName, settings, api) {}

    // Throws Failure(State) within a call that may call back.
    void requireIdle() const;

    session::Session session;
    std::atomic<bool> closed{false};
    std::atomic<int> callingBack{0};  // calls under way that may call back
};

class Pointcloud final : public Object {
public:
    ~Pointcloud() override { close(); }

    // Ends the pending transaction with its lock; queries go on reading.
    void close() noexcept;

    std::shared_ptr<Database> database;  // null: closed
};

// What the queries have in common; the file outlives the query.
class QueryObject : public Object {
public:
    explicit QueryObject(std::shared_ptr<Database> file) : database(std::move(file)) {}
    const std::shared_ptr<Database> database;
    // Made in a transaction, with which what it reads has gone when the file was closed.
    const bool ofTransaction = database->session.pending();
};

// number: tells kinds of the same Query apart.
template <typename Query, int number = 0>
class QueryOf final : public QueryObject {
public:
    template <typename... Arguments>
    explicit QueryOf(std::shared_ptr<Database> file, Arguments&&... arguments)
        : QueryObject(std::move(file)),
          query(database->session, std::forward<Arguments>(arguments)...) {}
    Query query;
};

// Asks the state that is current at each call.
struct StatQuery {
    explicit StatQuery(session::Session& of) : session(of) {}
    session::Session& session;
};

}  // namespace tarvo::engine::capi
