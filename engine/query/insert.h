// Adds points from the caller's buffers to the pending transaction.
#pragma once

#include "engine/query/buffers.h"
#include "engine/query/changeguard.h"
#include "engine/query/pointwriter.h"
#include "engine/session/session.h"

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

    // Inserts count points; what is not bound gets its default value, the point id the next free
    // one. All of them or, on failure, none. Throws Failure(Exists) for an own id that a point has
    // already, Failure(Range) for values out of range.
    std::uint32_t next(std::uint32_t count);

private:
    std::vector<std::uint64_t> readIds(std::uint32_t count) const;
    void addPoints(PointWriter& writer, const std::vector<std::uint64_t>& ids) const;
    std::vector<schema::Attribute> readConstants(std::uint32_t count) const;

    session::Session& m_session;
    ChangeGuard m_guard;
    std::vector<Binding> m_bindings;
    bool m_ownIds = false;
    std::optional<Binding> m_id;
};

}  // namespace tarvo::engine::query
