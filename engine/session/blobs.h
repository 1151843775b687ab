// The blobs of an open database: what states refer to, read with checks, and written for the
// pending transaction. Keeps pages of the index and decoded blocks within the cache size.
#pragma once

#include "engine/base/lrucache.h"
#include "engine/codec/block.h"
#include "engine/session/state.h"
#include "engine/store/container.h"

#include <string>

namespace tarvo::engine::session {

struct BlobRefHash {
    std::size_t operator()(const BlobRef& reference) const {
        return reference.checksum ^ (reference.blob * 0x9e3779b97f4a7c15u) ^ reference.offset;
    }
};
using BlockCache = LruCache<BlobRef, codec::Block, BlobRefHash>;

class Blobs {
public:
    // nodeCapacity: points that a node of the index can have at most. The container must outlive
    // this.
    Blobs(store::Container& container, std::uint64_t cacheSize, std::uint32_t nodeCapacity);

    // Throws Failure(Damaged), naming what it is, where the blob is not what was written.
    Bytes read(const BlobRef& reference, std::string_view what) {
        return m_container.read(reference, what);
    }
    std::string readText(const BlobRef& reference, std::string_view what);
    // For the pending transaction.
    BlobRef add(ByteSpan bytes) { return m_container.add(bytes); }
    BlobRef addText(const std::string& text);
    // Of a text that is read as JSON: within the limits of that, else Failure(State).
    BlobRef addJson(const std::string& json, const char* what);

    // A page of the index, from the file, whatever was read before.
    index::Page readPage(const BlobRef& reference,
                         index::PageContents contents = index::PageContents::All);
    // The page whose only node is the root of a state's index, and the reader of the pages below.
    std::shared_ptr<const index::Page> rootPage(const State& state);
    // A copy of the root.
    index::Node rootNode(const State& state) { return rootPage(state)->front(); }
    index::PageReader pageReader();
    // For walks over everything: of pages that were not read before only the outline, and not kept.
    index::PageReader outlineReader();
    BlockCache& blocks() { return m_blocks; }
    void forget();

    // While one lives, reads are faster, and writers of other processes wait.
    class Scope {
    public:
        explicit Scope(Blobs& blobs) : m_scope(blobs.m_container) {}

    private:
        store::Container::ReadScope m_scope;
    };

private:
    using PageCache = LruCache<BlobRef, index::Page, BlobRefHash>;

    store::Container& m_container;
    std::uint32_t m_nodeCapacity;
    PageCache m_pages;
    BlockCache m_blocks;
};

inline ByteSpan bytesOf(const std::string& text) {
    return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

void checkJsonSize(const std::string& json, const char* what);  // Failure(State)

}  // namespace tarvo::engine::session
