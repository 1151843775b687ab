// Removes points, which their ids name.
#pragma once

#include "engine/query/buffers.h"
#include "engine/query/changeguard.h"

#include <memory>
#include <optional>

namespace tarvo::engine::query {

class RemoveQuery {
public:
    explicit RemoveQuery(session::Session& session) : m_session(session), m_guard(session) {}

    void bind(std::uint32_t type, const void* buffer, std::int32_t stride);
    // Removes the points with the next count ids and tells how many there were; ids without a point
    // are passed over.
    std::uint32_t next(std::uint32_t count);

private:
    class Change;

    session::Session& m_session;
    ChangeGuard m_guard;
    std::optional<Binding> m_id;
    std::shared_ptr<Change> m_change;
};

}  // namespace tarvo::engine::query
