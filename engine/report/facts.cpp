#include "engine/report/facts.h"

namespace tarvo::engine::report {

namespace {

void addBlocks(Facts& facts, const index::Node& node) {
    for (std::size_t a = 0; a < facts.attributes.size(); ++a) {
        const index::AttributeData* data = node.find(facts.state->attributes[a].uid);
        if (!data)
            continue;
        AttributeFacts& attribute = facts.attributes[a];
        for (const index::ElementData& element : data->elements) {
            if (!element.block)
                continue;
            ++attribute.blocks;
            attribute.bytes += element.block.length;
            if (node.isLeaf())
                attribute.leafBytes += element.block.length;
            (node.isLeaf() ? facts.pointBytes : facts.levelOfDetailBytes) += element.block.length;
        }
    }
}

void walkIndex(session::Session& session, Facts& facts) {
    const session::State& state = *facts.state;
    if (state.pointCount == 0)
        return;
    facts.indexBytes = state.rootPage.length;
    std::uint64_t nodes = 0;
    std::uint64_t points = 0;
    const session::Blobs::Scope scope(session.blobs());
    for (index::TreeCursor cursor(facts.root, session.blobs().pageReader()); cursor.node();
         cursor.enter()) {
        const index::Node& node = *cursor.node();
        // A page that stands at two places would make a tree without end of a small file.
        if (++nodes > state.nextNodeId)
            throw Failure(ErrorCode::Damaged, "The file is damaged: its index is not a tree.");
        if (cursor.depth() >= facts.levels.size())
            facts.levels.resize(cursor.depth() + 1);
        LevelFacts& level = facts.levels[cursor.depth()];
        if (node.isLeaf()) {
            ++facts.leaves;
            ++level.leaves;
            level.points += node.ownCount;
            points += node.ownCount;
        } else {
            ++level.innerNodes;
            level.levelOfDetailPoints += node.ownCount;
            facts.indexBytes += node.childPage.length;
        }
        addBlocks(facts, node);
    }
    if (points != state.pointCount)
        throw Failure(ErrorCode::Damaged, "The file is damaged: the leaves of its index hold " +
                                              std::to_string(points) + " points, not " +
                                              std::to_string(state.pointCount) + ".");
}

}  // namespace

Facts gatherFacts(session::Session& session) {
    Facts facts;
    facts.state = session.state();
    const session::State& state = *facts.state;
    facts.fileName = session.fileName();
    facts.fileSize = session.fileSize();
    facts.identity = session.identity();
    facts.pending = session.pending();
    facts.current = facts.pending ? session.base().transaction.id : state.transaction.id;
    for (const std::uint32_t id : session.history().transactions())
        facts.transactions.push_back(session.history().details(id));
    for (const auto& [name, item] : state.metaData) {
        facts.metaData.push_back({name, item.value.length, !item.signature.empty()});
        facts.metaDataBytes += item.value.length;
    }
    facts.root = session.reading(state, [&] { return session.blobs().rootNode(state); });
    for (const schema::Attribute& attribute : state.attributes.all()) {
        AttributeFacts& entry = facts.attributes.emplace_back();
        entry.elements.resize(attribute.record.length);
        if (state.pointCount > 0)
            for (std::uint32_t e = 0; e < attribute.record.length; ++e)
                entry.elements[e] = index::statisticsOf(facts.root, attribute, e);
    }
    session.reading(state, [&] { walkIndex(session, facts); });
    return facts;
}

}  // namespace tarvo::engine::report
