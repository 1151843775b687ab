#include "engine/query/leafedit.h"

#include "engine/index/rows.h"
#include "engine/query/columns.h"

#include <algorithm>

namespace tarvo::engine::query {

void setElement(EditedLeaf& edited, const index::Node& leaf, const schema::Attribute& attribute,
                std::uint32_t element, index::ElementData data, std::uint32_t revision) {
    auto at = std::lower_bound(
        edited.attributes.begin(), edited.attributes.end(), attribute.uid,
        [](const index::AttributeData& a, std::uint32_t uid) { return a.uid < uid; });
    if (at == edited.attributes.end() || at->uid != attribute.uid) {
        index::AttributeData absent{attribute.uid, revision, {}};
        for (std::uint32_t e = 0; e < attribute.record.length; ++e)
            absent.elements.push_back({index::statisticsOf(leaf, attribute, e), {}});
        at = edited.attributes.insert(at, std::move(absent));
    }
    if (at->elements.size() != attribute.record.length)
        throw Failure(ErrorCode::Damaged,
                      "The file is damaged: the point attribute \"" + attribute.record.name +
                          "\" has another length in node " + std::to_string(leaf.id) + ".");
    at->revision = revision;
    at->elements[element] = data;
}

void removePoints(session::Session& session, const session::State& state, const index::Node& leaf,
                  std::span<const std::uint32_t> points, EditedLeaf& edited) {
    edited.changed = true;
    edited.count = leaf.ownCount - points.size();
    edited.attributes.clear();
    if (edited.count == 0)
        return;
    for (const schema::Attribute& attribute : state.attributes.all()) {
        if (!leaf.find(attribute.uid))
            continue;
        index::AttributeData data{attribute.uid, state.transaction.id, {}};
        for (std::uint32_t e = 0; e < attribute.record.length; ++e) {
            const auto column = readColumn(session, leaf, attribute, e);
            schema::Column left(column->width(), edited.count);
            std::size_t out = 0;
            auto gone = points.begin();
            for (std::uint32_t i = 0; i < column->size(); ++i)
                if (gone != points.end() && *gone == i)
                    ++gone;
                else
                    left.set(out++, (*column)[i]);
            data.elements.push_back(edited.blocks.add(attribute, left));
        }
        putAttribute(edited.attributes, std::move(data));
    }
}

}  // namespace tarvo::engine::query
