// Reads points into the caller's buffers.
#pragma once

#include "engine/query/buffers.h"
#include "engine/query/scan.h"

#include <optional>
#include <vector>

namespace tarvo::engine::query {

class SelectQuery {
public:
    SelectQuery(session::Session& session, Scope scope, std::string_view filter)
        : m_session(session), m_scan(session, std::move(scope), filter) {}

    // Not once points were read.
    void bind(std::string_view attribute, std::uint32_t type, void* buffer, std::int32_t stride);
    std::uint32_t next(std::uint32_t count);
    // Per cent of the points passed; 100 only at the end.
    std::uint32_t progress() const { return m_reader.progress(); }
    const NodeTally& nodes() const { return m_reader.nodes(); }

private:
    void copy(const HitReader::Portion& portion, std::size_t row) const;

    session::Session& m_session;
    Scan m_scan;
    HitReader m_reader{m_scan};
    std::vector<Binding> m_bindings;
    bool m_started = false;
};

}  // namespace tarvo::engine::query
