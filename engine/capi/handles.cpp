#include "engine/capi/handles.h"

#include "files/error.h"
#include "files/path.h"

#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <new>

namespace tarvo::engine::capi {

namespace {

// Handed out when there is no memory for another result; stands in no table and is never deleted.
const char outOfMemoryMark = 0;

}  // namespace

qrb_result* outOfMemoryResult() noexcept {
    return reinterpret_cast<qrb_result*>(const_cast<char*>(&outOfMemoryMark));
}

CallError CallError::outOfMemory() noexcept {
    CallError error;
    error.m_code = QRB_ERROR_MEMORY;
    error.m_outOfMemory = true;
    return error;
}

void CallError::describeException() noexcept {
    m_outOfMemory = false;
    try {
        try {
            throw;
        } catch (const Failure& failure) {
            m_code = static_cast<std::int32_t>(failure.code());
            m_text = failure.what();
            m_details = failure.details();
        } catch (const files::FileError& failure) {
            m_code = QRB_ERROR_FILE;
            m_text = failure.what();
            m_details = failure.details();
        } catch (const std::bad_alloc&) {
            m_outOfMemory = true;
        } catch (const std::exception& exception) {
            m_code = QRB_ERROR_INTERNAL;
            m_text = std::string("The library failed: ") + exception.what();
            m_details.clear();
        }
    } catch (...) {
        m_outOfMemory = true;  // for the message, too
    }
    if (m_outOfMemory)
        m_code = QRB_ERROR_MEMORY;
}

const char* CallError::text() const {
    return m_outOfMemory ? "Out of memory." : m_text.c_str();
}

const char* CallError::details() const {
    return m_outOfMemory ? "Use a smaller cache size or close other programs." : m_details.c_str();
}

qrb_result* makeResult() noexcept {
    try {
        const auto result = std::make_shared<Result>();
        result->error.describeException();
        return static_cast<qrb_result*>(HandleTable::instance().add(result, nullptr));
    } catch (...) {
        return outOfMemoryResult();
    }
}

void throwMissing(const char* what) {
    throw Failure(ErrorCode::Argument, std::string("The argument \"") + what + "\" is missing.");
}

void throwWrongHandle(const void* handle, const char* what, const char* expected) {
    throw Failure(ErrorCode::Argument,
                  std::string("The argument \"") + what + "\" is not " + expected + ".",
                  HandleTable::instance().find(handle)
                      ? "It is a handle of another kind."
                      : "It was deleted already, or is no handle of this library.");
}

void throwClosed() {
    throw Failure(ErrorCode::State, "The database of this query was closed.",
                  "Its transaction was rolled back. Open the database again and make a new query.");
}

std::shared_ptr<GraphNode> given(qrb_graph_node* node, const char* what) {
    if (!node)
        throwMissing(what);
    std::shared_ptr<GraphNode> found = HandleTable::instance().findNode(node);
    if (!found)
        throwWrongHandle(node, what, "an index node made by qrb_pointcloud_graph_node_new");
    return found;
}

void requireNotAsking() {
    if (Interruption::isAsking())
        throw Failure(ErrorCode::State,
                      "The library is at work: an interrupt function can't call it.");
}

void Database::requireIdle() const {
    if (callingBack > 0)
        throw Failure(ErrorCode::State,
                      "The database is at work: a callback can't call this function on it.",
                      "A progress or authentication function may ask its database whether it is "
                      "open, for its UUID, and for the current, the pending and all transactions. "
                      "The rest has to wait until the call that called back has returned.");
}

void Pointcloud::close() noexcept {
    if (!database)
        return;
    database->closed = true;
    try {
        if (database->session.pending())
            database->session.rollback();
    } catch (...) {
        // The session's own end has the same effect once the last query has gone.
    }
    database.reset();
}

std::shared_ptr<Pointcloud> idle(qrb_pointcloud* pointcloud) {
    std::shared_ptr<Pointcloud> object = given(pointcloud, "pointcloud");
    if (object->database)
        object->database->requireIdle();
    return object;
}

std::shared_ptr<Pointcloud> closed(qrb_pointcloud* pointcloud) {
    std::shared_ptr<Pointcloud> object = idle(pointcloud);
    if (object->database)
        throw Failure(ErrorCode::State, "A database is open already.", "Close it first.");
    return object;
}

std::shared_ptr<Database> createAndOpen(const std::string& fileName,
                                        const session::CreateSettings& settings,
                                        const std::string& api,
                                        const std::function<void()>& create) {
    // Before there is a file: its removal needs no memory then.
    const std::filesystem::path file = files::pathOf(fileName);
    create();
    try {
        return std::make_shared<Database>(fileName, session::OpenSettings{settings.cacheSize}, api);
    } catch (...) {
        std::error_code ignored;
        std::filesystem::remove(file, ignored);
        throw;
    }
}

namespace {

std::shared_ptr<Database> requireOpen(const Pointcloud& pointcloud) {
    if (!pointcloud.database)
        throw Failure(ErrorCode::State, "No database is open.");
    return pointcloud.database;
}

}  // namespace

std::shared_ptr<Database> databaseOf(qrb_pointcloud* pointcloud) {
    return requireOpen(*idle(pointcloud));
}

std::shared_ptr<session::Session> sessionAnytime(qrb_pointcloud* pointcloud) {
    const std::shared_ptr<Database> database = requireOpen(*given(pointcloud, "pointcloud"));
    return {database, &database->session};
}

void giveText(Context& context, std::string text, const char** out) {
    const char*& slot = given(out, "output");
    context.text = std::move(text);
    slot = context.text.c_str();
}

void giveOwnText(const std::string& text, char** out) {
    char*& slot = given(out, "output");
    auto* copy = static_cast<char*>(std::malloc(text.size() + 1));
    if (!copy)
        throw std::bad_alloc();
    std::memcpy(copy, text.c_str(), text.size() + 1);
    slot = copy;
}

void giveNames(Context& context, const std::vector<std::string>& names, std::uint32_t* count,
               const char** block) {
    given(count, "count");
    std::string all;
    for (const std::string& name : names) {
        all += name;
        all += '\0';
    }
    giveText(context, std::move(all), block);
    *count = static_cast<std::uint32_t>(names.size());
}

session::Progress progressOf(qrb_progress_function progress, void* data) {
    if (!progress)
        return {};
    return [progress, data](int percent) {
        return progress(static_cast<std::uint8_t>(percent), data) != 0;
    };
}

session::Signer signerOf(const Context* context, std::uint32_t method, std::uint32_t key_length,
                         const std::uint8_t* key) {
    session::Signer signer;
    signer.method = method;
    if (key_length > 0) {
        given(key, "key");
        signer.key.assign(key, key + key_length);
    }
    if (context && context->authentication)
        signer.authenticator = [function = context->authentication,
                                data = context->authenticationData](
                                   ByteSpan challenge, std::span<std::uint8_t> answer) {
            return function(challenge.data(), static_cast<std::uint32_t>(challenge.size()),
                            answer.data(), static_cast<std::uint32_t>(answer.size()), data) != 0;
        };
    return signer;
}

query::Scope scopeOf(const std::uint32_t* nodes, std::uint32_t count) {
    query::Scope scope;
    scope.nodes.emplace();
    for (std::uint32_t i = 0; i < count; ++i)
        scope.nodes->insert(given(nodes, "nodes") ? nodes[i] : 0);
    return scope;
}

}  // namespace tarvo::engine::capi
