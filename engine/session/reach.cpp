#include "engine/session/reach.h"

#include "engine/index/shape.h"
#include "engine/session/changelogentry.h"

namespace tarvo::engine::session {

bool Reach::addBlob(const BlobRef& reference) {
    if (!reference)
        return false;
    const auto [blob, isNew] = m_extents.try_emplace(reference.blob);
    blob->second.add({reference.offset, reference.length});
    return isNew && !(m_known && m_known->m_extents.contains(reference.blob));
}

index::Page Reach::readPage(const BlobRef& reference) {
    return index::decodePage(m_container.read(reference, "a page of the index"));
}

// Pages and changelog entries are blobs of their own: one that was reached before has brought
// along what it refers to.
void Reach::addNodes(const index::Page& nodes) {
    for (const index::Node& node : nodes) {
        for (const index::AttributeData& attribute : node.attributes)
            for (const index::ElementData& element : attribute.elements)
                addBlob(element.block);
        if (node.isLeaf())
            continue;
        if (!node.childPage) {
            index::requireTree(node, node.children);
            addNodes(node.children);
        } else if (addBlob(node.childPage)) {
            const index::Page children = readPage(node.childPage);
            index::requireTree(node, children);
            addNodes(children);
        }
    }
}

void Reach::add(const State& state) {
    addBlob(state.attributesBlob);
    for (const auto& [name, item] : state.metaData)
        addBlob(item.value);
    for (BlobRef link = state.changelog; addBlob(link);) {
        const Bytes blob = m_container.read(link, "the changelog");
        link =
            changelogFromBlob({reinterpret_cast<const char*>(blob.data()), blob.size()}).previous;
    }
    if (addBlob(state.rootPage))
        addNodes(readPage(state.rootPage));
}

}  // namespace tarvo::engine::session
