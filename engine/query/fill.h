// Changes all points that a filter selects: to one value (fill), or a two-valued attribute to its
// other value (invert). What is selected is settled when the query is made: what it changes does
// not select or deselect further points.
#pragma once

#include "engine/query/buffers.h"
#include "engine/query/changeguard.h"
#include "engine/query/scan.h"

#include <memory>
#include <optional>
#include <string_view>
#include <vector>

namespace tarvo::engine::query {

// A change of one element that needs no more than its code.
struct CodeChange {
    enum class Kind { Set, Invert };
    Kind kind = Kind::Set;
    std::size_t attribute = 0;
    std::uint32_t element = 0;
    std::uint64_t code = 0;  // to set

    std::uint64_t of(std::uint64_t before, const schema::Grid& grid) const {
        if (kind == Kind::Set)
            return code;
        return grid.isInvalid(before) ? before : 1 - before;
    }
};

class FillQuery {
public:
    // scope: nodes that are not leaves count as empty, their points only stand for those below.
    FillQuery(session::Session& session, Scope scope, std::string_view filter);

    // The value that the points get, one per element; read at once.
    void bind(std::string_view attribute, std::uint32_t type, const void* value);
    // An attribute with two values whose points get the other one; invalid ones stay so.
    void invert(std::string_view attribute);

    // Changes at most count further points and tells how many; 0: none left.
    std::uint32_t next(std::uint32_t count);
    // Per cent of the points passed; 100 only at the end.
    std::uint32_t progress() const { return m_reader.progress(); }

private:
    class Change;

    void add(const CodeChange& change);
    void changeConstants();

    session::Session& m_session;
    ChangeGuard m_guard;
    bool m_everything;  // no scope, no filter
    Scan m_scan;
    HitReader m_reader{m_scan};
    std::vector<CodeChange> m_changes;
    std::shared_ptr<Change> m_change;
    bool m_started = false;
};

}  // namespace tarvo::engine::query
