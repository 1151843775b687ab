// What the states of a database reach: the blobs that must be kept, and which parts of them. Memory
// is about a hundred bytes per blob.
#pragma once

#include "engine/index/node.h"
#include "engine/session/state.h"
#include "engine/store/container.h"

#include <cstdint>
#include <set>
#include <utility>

namespace tarvo::engine::session {

class Reach {
public:
    // known: what has been reached already; pages that are known are not read again, so that only
    // the rest is complete. It must outlive this.
    explicit Reach(store::Container& container, const Reach* known = nullptr)
        : m_container(container), m_known(known) {}

    // Adds everything that a state reaches, directly or through pages and the changelog.
    void add(const State& state);
    const store::WantedExtents& extents() const { return m_extents; }

private:
    void want(const BlobRef& reference);
    // Of what refers to more: whether that has not been reached yet.
    bool enter(const BlobRef& reference);
    void addNodes(const index::Page& nodes);
    index::Page readPage(const BlobRef& reference);

    store::Container& m_container;
    const Reach* m_known;
    store::WantedExtents m_extents;
    std::set<std::pair<std::uint64_t, std::uint64_t>> m_entered;  // blob and offset
};

}  // namespace tarvo::engine::session
