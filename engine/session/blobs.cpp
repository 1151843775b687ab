#include "engine/session/blobs.h"

#include "engine/index/key.h"
#include "engine/index/shape.h"

namespace tarvo::engine::session {

namespace {

// Whoever reads the points of a node makes room for as many as it tells.
void requireCapacity(const std::vector<index::Node>& nodes, std::uint32_t capacity) {
    for (const index::Node& node : nodes) {
        if (node.ownCount > capacity)
            throw Failure(ErrorCode::Damaged, "The file is damaged: node " +
                                                  std::to_string(node.id) +
                                                  " holds more points than a node can have.");
        requireCapacity(node.children, capacity);
    }
}

}  // namespace

void checkJsonSize(const std::string& json, const char* what) {
    if (json.size() > maximumJsonSize)
        throw Failure(ErrorCode::State, std::string(what) + " would be too large to be read again.",
                      "It would have " + std::to_string(json.size()) + " bytes of at most " +
                          std::to_string(maximumJsonSize) + ".");
}

Blobs::Blobs(store::Container& container, std::uint64_t cacheSize, std::uint32_t nodeCapacity)
    : m_container(container),
      m_nodeCapacity(nodeCapacity),
      m_pages(cacheSize / 8),
      m_blocks(cacheSize / 2) {}

std::string Blobs::readText(const BlobRef& reference, std::string_view what) {
    const Bytes bytes = read(reference, what);
    return {bytes.begin(), bytes.end()};
}

BlobRef Blobs::addText(const std::string& text) {
    return add(bytesOf(text));
}

BlobRef Blobs::addJson(const std::string& json, const char* what) {
    checkJsonSize(json, what);
    return addText(json);
}

index::Page Blobs::readPage(const BlobRef& reference, index::PageContents contents) {
    index::Page page = index::decodePage(read(reference, "a page of the index"), contents);
    requireCapacity(page, m_nodeCapacity);
    return page;
}

std::shared_ptr<const index::Page> Blobs::rootPage(const State& state) {
    if (!state.rootPage) {
        index::Node none;
        none.id = 1;
        return std::make_shared<const index::Page>(1, none);
    }
    std::shared_ptr<const index::Page> page = pageReader()(state.rootPage);
    if (page->size() != 1 || page->front().totalCount != state.pointCount ||
        !index::isRoot(page->front(), index::KeySpace(state.primary())))
        throw Failure(ErrorCode::Damaged, "The file is damaged: its index has no root.");
    return page;
}

index::PageReader Blobs::pageReader() {
    return [this](const BlobRef& reference) {
        std::shared_ptr<const index::Page> page = m_pages.get(reference);
        if (!page) {
            page = std::make_shared<const index::Page>(readPage(reference));
            m_pages.put(reference, page, index::heldBytes(*page));
        }
        return page;
    };
}

index::PageReader Blobs::outlineReader() {
    return [this](const BlobRef& reference) {
        std::shared_ptr<const index::Page> page = m_pages.get(reference);
        if (!page)
            page = std::make_shared<const index::Page>(
                readPage(reference, index::PageContents::Outline));
        return page;
    };
}

void Blobs::forget() {
    m_pages.clear();
    m_blocks.clear();
}

}  // namespace tarvo::engine::session
