// What the states of a database reach: the blobs that must be kept and which parts of them, and
// those that only some of the states hold. Memory is a few bytes per blob, about a hundred where
// parts are asked for.
#pragma once

#include "engine/base/idset.h"
#include "engine/index/node.h"
#include "engine/session/state.h"
#include "engine/store/container.h"

#include <functional>

namespace tarvo::engine::session {

class Reach {
public:
    explicit Reach(store::Container& container) : m_container(container) {}

    // Called for each blob that is reached for the first time, with the reference that led there.
    using OnBlob = std::function<void(const BlobRef& reference)>;
    void setOnBlob(OnBlob onBlob) { m_onBlob = std::move(onBlob); }
    // Which parts of the blobs are reached, for whoever asks for it before anything is added.
    void keepExtents() { m_keepsExtents = true; }
    const store::WantedExtents& extents() const { return m_extents; }
    // Adds everything that a state reaches, directly or through pages and the changelog.
    void add(const State& state);
    bool contains(std::uint64_t blob) const { return m_blobs.contains(blob); }

private:
    bool addBlob(const BlobRef& reference);
    void addNodes(const index::Page& nodes);
    index::Page readPage(const BlobRef& reference);

    store::Container& m_container;
    IdSet m_blobs;
    bool m_keepsExtents = false;
    store::WantedExtents m_extents;
    OnBlob m_onBlob;
};

}  // namespace tarvo::engine::session
