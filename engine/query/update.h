// Changes values of existing points, which their ids name. Changes are collected within the cache
// size and put into the tree when somebody wants to see them.
#pragma once

#include "engine/query/buffers.h"
#include "engine/query/changeguard.h"

#include <memory>
#include <optional>
#include <string_view>
#include <vector>

namespace tarvo::engine::query {

class UpdateQuery {
public:
    explicit UpdateQuery(session::Session& session);

    // The point id tells which points; the others what they get.
    void bind(std::string_view attribute, std::uint32_t type, const void* buffer,
              std::int32_t stride);
    // Changes the points with the next count ids and tells how many there are; ids without a point
    // are passed over. Of an id that comes again the last values hold. All or, on failure, nothing.
    std::uint32_t next(std::uint32_t count);

private:
    class Change;

    session::Session& m_session;
    ChangeGuard m_guard;
    std::optional<Binding> m_id;
    std::vector<Binding> m_bindings;
    std::shared_ptr<Change> m_change;
};

}  // namespace tarvo::engine::query
