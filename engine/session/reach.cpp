#include "engine/session/reach.h"

#include "engine/index/shape.h"
#include "engine/session/changelogentry.h"

namespace tarvo::engine::session {

void Reach::want(const BlobRef& reference) {
    if (reference)
        m_extents[reference.blob].add({reference.offset, reference.length});
}

bool Reach::enter(const BlobRef& reference) {
    want(reference);
    const std::pair place(reference.blob, reference.offset);
    return reference && !(m_known && m_known->m_entered.contains(place)) &&
           m_entered.insert(place).second;
}

index::Page Reach::readPage(const BlobRef& reference) {
    return index::decodePage(m_container.read(reference, "a page of the index"));
}

// A page or changelog entry that was reached before has brought along what it refers to.
void Reach::addNodes(const index::Page& nodes) {
    for (const index::Node& node : nodes) {
        for (const index::AttributeData& attribute : node.attributes)
            for (const index::ElementData& element : attribute.elements)
                want(element.block);
        if (node.isLeaf())
            continue;
        if (!node.childPage) {
            index::requireTree(node, node.children);
            addNodes(node.children);
        } else if (enter(node.childPage)) {
            const index::Page children = readPage(node.childPage);
            index::requireTree(node, children);
            addNodes(children);
        }
    }
}

void Reach::add(const State& state) {
    want(state.attributesBlob);
    for (const auto& [name, item] : state.metaData)
        want(item.value);
    for (BlobRef link = state.changelog; enter(link);) {
        const Bytes blob = m_container.read(link, "the changelog");
        link =
            changelogFromBlob({reinterpret_cast<const char*>(blob.data()), blob.size()}).previous;
    }
    if (enter(state.rootPage))
        addNodes(readPage(state.rootPage));
}

}  // namespace tarvo::engine::session
