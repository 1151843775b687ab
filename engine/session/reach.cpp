#include "engine/session/reach.h"

#include "engine/session/changelog.h"

namespace tarvo::engine::session {

bool Reach::addBlob(const BlobRef& reference) {
    if (!reference)
        return false;
    const bool isNew = m_blobs.insert(reference.blob);
    if (m_onReference)
        m_onReference(reference, isNew);
    return isNew;
}

// Pages and changelog entries are blobs of their own: one that was reached before has brought
// along what it refers to.
void Reach::addPage(const BlobRef& reference) {
    if (addBlob(reference))
        for (const index::Node& node :
             index::decodePage(m_container.read(reference, "a page of the index")))
            addNode(node);
}

void Reach::addNode(const index::Node& node) {
    for (const index::AttributeData& attribute : node.attributes)
        for (const index::ElementData& element : attribute.elements)
            addBlob(element.block);
    for (const index::Node& child : node.children)
        addNode(child);
    addPage(node.childPage);
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
    addPage(state.rootPage);
}

}  // namespace tarvo::engine::session
