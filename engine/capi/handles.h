// What stands behind the opaque handles of the C interface, and the gates through which every
// function goes: they turn exceptions into status or result, and are the only place that does.
#pragma once

#define QRB_PROTOTYPES
#include "engine/base/error.h"
#include "engine/capi/log.h"
#include "engine/query/fill.h"
#include "engine/query/insert.h"
#include "engine/query/remove.h"
#include "engine/query/select.h"
#include "engine/query/update.h"
#include "engine/session/session.h"
#include "qrb/qrb.h"

#include <atomic>
#include <memory>
#include <source_location>
#include <string>
#include <vector>

// Records that can be locked begin with this.
struct qrb_object {
    std::atomic<int> locks{0};
};

struct qrb_create_settings : qrb_object {
    tarvo::engine::session::CreateSettings value;
};

struct qrb_open_settings : qrb_object {
    tarvo::engine::session::OpenSettings value;
};

struct qrb_point_attribute : qrb_object {
    tarvo::engine::schema::AttributeRecord value;
};

struct qrb_result {
    std::int32_t code = 0;
    std::string text;
    std::string details;
};

struct qrb_context {
    tarvo::engine::capi::Log log;
    std::string api;
    qrb_result error;
    std::string text;  // what the last call handed out
    qrb_authentication_function authentication = nullptr;
    void* authenticationData = nullptr;
};

struct qrb_pointcloud {
    std::unique_ptr<tarvo::engine::session::Session> session;
    // Throws Failure(State) unless a file is open.
    tarvo::engine::session::Session& open() const;
};

struct qrb_transaction {
    tarvo::engine::session::TransactionRecord value;
};

struct qrb_query_select {
    tarvo::engine::query::SelectQuery query;
};

struct qrb_query_insert {
    tarvo::engine::query::InsertQuery query;
};

struct qrb_query_update {
    tarvo::engine::query::UpdateQuery query;
};

struct qrb_query_remove {
    tarvo::engine::query::RemoveQuery query;
};

struct qrb_query_fill {
    tarvo::engine::query::FillQuery query;
};

struct qrb_query_invert {
    tarvo::engine::query::FillQuery query;
};

struct qrb_query_stat {
    tarvo::engine::session::Session& session;
};

namespace tarvo::engine::capi {

// Fills the error from the exception that is being handled.
void describeException(qrb_result& error) noexcept;

// Runs a context-bound function; `where` names it in the log.
template <typename Function>
qrb_status call(qrb_context* context, Function&& function,
                std::source_location where = std::source_location::current()) noexcept {
    if (!context)
        return QRB_FAILURE;
    try {
        context->log.called(where.function_name());
        function();
        return QRB_SUCCESS;
    } catch (...) {
        describeException(context->error);
        context->log.failed(where.function_name(), context->error.text);
        return QRB_FAILURE;
    }
}

// Runs a _cf function.
template <typename Function>
qrb_result* callFree(Function&& function) noexcept {
    try {
        function();
        return nullptr;
    } catch (...) {
        auto* result = new (std::nothrow) qrb_result;
        if (result)
            describeException(*result);
        return result;
    }
}

// The object behind a handle or output; throws Failure(Argument) for null.
template <typename T>
T& given(T* pointer, const char* what) {
    if (!pointer)
        throw Failure(ErrorCode::Argument,
                      std::string("The argument \"") + what + "\" is missing.");
    return *pointer;
}

inline std::string textOf(const char* text) {
    return text ? text : "";
}

// The open session of a handle; throws Failure(State) when there is none.
inline session::Session& sessionOf(qrb_pointcloud* pointcloud) {
    return given(pointcloud, "pointcloud").open();
}

// Hands a text out that lives until the next call on the context.
void giveText(qrb_context& context, std::string text, const char** out);
// Hands out a text that the caller deletes.
void giveOwnText(const std::string& text, char** out);
// Hands a list of names out as a count and a block.
void giveNames(qrb_context& context, const std::vector<std::string>& names, std::uint32_t* count,
               const char** block);

// Deletes a record unless it is locked.
template <typename T>
void deleteRecord(T* record) {
    if (record && record->locks.load() > 0)
        throw Failure(ErrorCode::State, "The object is locked and can't be deleted.",
                      "Take its locks away first.");
    delete record;
}

// The nodes of a query's arguments.
query::Scope scopeOf(const std::uint32_t* nodes, std::uint32_t count);

session::Progress progressOf(qrb_progress_function progress, void* data);

// What signs with the arguments of a call; context: null where there is none.
session::Signer signerOf(const qrb_context* context, std::uint32_t method, std::uint32_t key_length,
                         const std::uint8_t* key);

}  // namespace tarvo::engine::capi
