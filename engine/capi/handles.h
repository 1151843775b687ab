// From handles to the objects behind them, and the gates through which every function of the C
// interface goes: they turn exceptions into status or result, and are the only place that does.
#pragma once

#define QRB_PROTOTYPES
#include "engine/base/error.h"
#include "engine/base/interruption.h"
#include "engine/capi/objects.h"
#include "qrb/qrb.h"

#include <functional>
#include <memory>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace tarvo::engine::capi {

// Which object stands behind a handle, and what the handle is called in errors.
template <typename Handle>
struct Behind;
#define BEHIND(handle, ObjectType, words)          \
    template <>                                    \
    struct Behind<handle> {                        \
        using Type = ObjectType;                   \
        static constexpr const char* name = words; \
    };
using SelectObject = QueryOf<query::SelectQuery>;
using InsertObject = QueryOf<query::InsertQuery>;
using UpdateObject = QueryOf<query::UpdateQuery>;
using RemoveObject = QueryOf<query::RemoveQuery>;
using FillObject = QueryOf<query::FillQuery>;
using InvertObject = QueryOf<query::FillQuery, 1>;
using StatObject = QueryOf<StatQuery>;
BEHIND(qrb_object, Record, "a settings or attribute record")
BEHIND(qrb_context, Context, "a context")
BEHIND(qrb_result, Result, "a result")
BEHIND(qrb_pointcloud, Pointcloud, "a database handle")
BEHIND(qrb_create_settings, CreateSettings, "a create settings record")
BEHIND(qrb_open_settings, OpenSettings, "an open settings record")
BEHIND(qrb_point_attribute, PointAttribute, "a point attribute record")
BEHIND(qrb_transaction, Transaction, "a transaction record")
BEHIND(qrb_query_select, SelectObject, "a select query")
BEHIND(qrb_query_insert, InsertObject, "an insert query")
BEHIND(qrb_query_update, UpdateObject, "an update query")
BEHIND(qrb_query_remove, RemoveObject, "a remove query")
BEHIND(qrb_query_fill, FillObject, "a fill query")
BEHIND(qrb_query_invert, InvertObject, "an invert query")
BEHIND(qrb_query_stat, StatObject, "a stat query")
#undef BEHIND

template <typename T>
concept OpaqueHandle = requires {
    typename Behind<std::remove_const_t<T>>::Type;
};

[[noreturn]] void throwMissing(const char* what);
// Throws Failure(Argument): a handle that is stale or of another kind.
[[noreturn]] void throwWrongHandle(const void* handle, const char* what, const char* expected);

// An output, or another input that is read; throws Failure(Argument) for null.
template <typename T>
requires(!OpaqueHandle<T>) T& given(T* pointer, const char* what) {
    if (!pointer)
        throwMissing(what);
    return *pointer;
}

// Null for what is not a handle of that kind.
template <OpaqueHandle T>
auto findObject(T* handle) noexcept {
    return std::dynamic_pointer_cast<typename Behind<std::remove_const_t<T>>::Type>(
        HandleTable::instance().find(handle));
}

// The object behind a handle, which lives as long as the call holds it; throws Failure(Argument)
// for null, and for what is not a handle of that kind.
template <OpaqueHandle T>
auto given(T* handle, const char* what) {
    if (!handle)
        throwMissing(what);
    auto object = findObject(handle);
    if (!object)
        throwWrongHandle(handle, what, Behind<std::remove_const_t<T>>::name);
    return object;
}

// The values of a record that may be left out.
template <OpaqueHandle T>
auto valueOr(T* handle, const char* what) {
    using Value = decltype(given(handle, what)->value);
    return handle ? given(handle, what)->value : Value();
}

// A node that was handed out; throws Failure(Argument) for null and any other.
std::shared_ptr<GraphNode> given(qrb_graph_node* node, const char* what);

// Throws Failure(State) within an interrupt function.
void requireNotAsking();

// Runs a context-bound function; `where` names it in the log. The function may take the context.
template <typename Function>
qrb_status call(qrb_context* context, Function&& function,
                const char* where = __builtin_FUNCTION()) noexcept {
    const std::shared_ptr<Context> bound = findObject(context);
    if (!bound)
        return QRB_FAILURE;
    try {
        bound->log.called(where);
        requireNotAsking();
        const Interruption interruption(bound->goOn);
        if constexpr (std::is_invocable_v<Function, Context&>)
            function(*bound);
        else
            function();
        return QRB_SUCCESS;
    } catch (...) {
        bound->error.describeException();
        bound->log.failed(where, bound->error.text());
        return QRB_FAILURE;
    }
}

// The result of a call that fails with the exception that is being handled; when there is no memory
// for one, the constant that tells so.
qrb_result* makeResult() noexcept;
qrb_result* outOfMemoryResult() noexcept;

// Runs a _cf function.
template <typename Function>
qrb_result* callFree(Function&& function) noexcept {
    try {
        function();
        return nullptr;
    } catch (...) {
        return makeResult();
    }
}

inline std::string textOf(const char* text) {
    return text ? text : "";
}

// Makes an object and hands its handle out. owner: see HandleTable.
template <OpaqueHandle T, typename... Arguments>
void make(T** out, const char* what, const void* owner, Arguments&&... arguments) {
    T*& slot = given(out, what);
    slot = static_cast<T*>(HandleTable::instance().add(
        std::make_shared<typename Behind<T>::Type>(std::forward<Arguments>(arguments)...), owner));
}

// The handle of a database that is not within a call that may call back.
std::shared_ptr<Pointcloud> idle(qrb_pointcloud* pointcloud);
// The same without an open file.
std::shared_ptr<Pointcloud> closed(qrb_pointcloud* pointcloud);
// Has a file made and opens it; where that fails there is no file.
std::shared_ptr<Database> createAndOpen(const std::string& fileName,
                                        const session::CreateSettings& settings,
                                        const std::string& api,
                                        const std::function<void()>& create);
// The open file of a handle; throws Failure(State) when there is none or it is not idle.
std::shared_ptr<Database> databaseOf(qrb_pointcloud* pointcloud);
// The same for what is allowed within a callback, too.
std::shared_ptr<session::Session> sessionAnytime(qrb_pointcloud* pointcloud);

inline std::shared_ptr<session::Session> sessionOf(qrb_pointcloud* pointcloud) {
    const std::shared_ptr<Database> database = databaseOf(pointcloud);
    return {database, &database->session};
}

// A handle that a function takes but doesn't need: null or a good one.
inline void checkUnused(qrb_pointcloud* pointcloud) {
    if (pointcloud)
        given(pointcloud, "pointcloud");
}

// Makes a query on the open file of a handle. It goes with the context.
template <OpaqueHandle T, typename... Arguments>
void makeQuery(qrb_context* context, qrb_pointcloud* pointcloud, T** query,
               Arguments&&... arguments) {
    make(query, "query", context, databaseOf(pointcloud), std::forward<Arguments>(arguments)...);
}

[[noreturn]] void throwClosed();

// A query to work with; throws Failure(State) when its file is not idle, or was closed and with it
// the transaction of the query ended.
template <OpaqueHandle T>
auto queryOf(T* handle) {
    const auto object = given(handle, "query");
    object->database->requireIdle();
    if constexpr (!std::is_same_v<std::remove_const_t<T>, qrb_query_stat>)
        if (object->ofTransaction && object->database->closed)
            throwClosed();
    return std::shared_ptr<decltype(object->query)>(object, &object->query);
}

// Deletes a query; null is allowed.
template <OpaqueHandle T>
void deleteQuery(T* handle) {
    if (!handle)
        return;
    given(handle, "query")->database->requireIdle();
    HandleTable::instance().remove(handle);
}

// Deletes what has no more to be looked at; null is allowed.
template <OpaqueHandle T>
void deleteObject(T* handle, const char* what) {
    if (handle) {
        given(handle, what);
        HandleTable::instance().remove(handle);
    }
}

// Deletes a record unless it is locked; null is allowed.
template <OpaqueHandle T>
void deleteRecord(T* handle, const char* what) {
    if (!handle)
        return;
    if (given(handle, what)->locks.load() > 0)
        throw Failure(ErrorCode::State, "The object is locked and can't be deleted.",
                      "Take its locks away first.");
    HandleTable::instance().remove(handle);
}

// Lives for a call that may call back: what else is called on the database meanwhile is refused.
class CallingBack {
public:
    CallingBack(Context& context, qrb_pointcloud* pointcloud)
        : m_context(context), m_database(databaseOf(pointcloud)) {
        ++m_context.callingBack;
        ++m_database->callingBack;
    }
    ~CallingBack() {
        --m_database->callingBack;
        --m_context.callingBack;
    }
    CallingBack(const CallingBack&) = delete;
    CallingBack& operator=(const CallingBack&) = delete;

    session::Session& session() const { return m_database->session; }

private:
    Context& m_context;
    const std::shared_ptr<Database> m_database;
};

// Hands a text out that lives until the next call on the context.
void giveText(Context& context, std::string text, const char** out);
// Hands out a text that the caller deletes.
void giveOwnText(const std::string& text, char** out);
// Hands a list of names out as a count and a block.
void giveNames(Context& context, const std::vector<std::string>& names, std::uint32_t* count,
               const char** block);

// The nodes of a query's arguments.
query::Scope scopeOf(const std::uint32_t* nodes, std::uint32_t count);

session::Progress progressOf(qrb_progress_function progress, void* data);

// What signs with the arguments of a call; context: null where there is none.
session::Signer signerOf(const Context* context, std::uint32_t method, std::uint32_t key_length,
                         const std::uint8_t* key);

}  // namespace tarvo::engine::capi
