// Adds points from the caller's buffers to the pending transaction.
#pragma once

#include "engine/query/buffers.h"
#include "engine/query/pointwriter.h"
#include "engine/session/session.h"

#include <memory>
#include <optional>
#include <string_view>
#include <vector>

namespace tarvo::engine::query {

class InsertQuery {
public:
    explicit InsertQuery(session::Session& session);

    void bind(std::string_view attribute, std::uint32_t type, const void* buffer,
              std::int32_t stride);
    void bindId(std::uint32_t type, void* buffer, std::int32_t stride);

    // Inserts count points; what is not bound gets its default value. All of them or, on failure,
    // none.
    std::uint32_t next(std::uint32_t count);

private:
    session::Session& m_session;
    std::shared_ptr<PointWriter> m_writer;
    std::uint32_t m_transaction;
    std::vector<Binding> m_bindings;
    std::optional<Binding> m_id;
};

}  // namespace tarvo::engine::query
