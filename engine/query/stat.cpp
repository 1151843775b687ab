#include "engine/query/stat.h"

#include "engine/base/interruption.h"
#include "engine/filter/filter.h"
#include "engine/index/shape.h"
#include "engine/query/buffers.h"
#include "engine/query/findnode.h"

#include <optional>

namespace tarvo::engine::query {

namespace {

class IndexReader {
public:
    IndexReader(session::Session& session, std::string_view filter)
        : m_state(session.state()),
          m_filter(filter::Expression::parse(findCommand(filter) ? "" : filter),
                   m_state->attributes),
          m_pages(m_filter.empty() ? session.blobs().outlineReader()
                                   : session.blobs().pageReader()) {
        if (const std::optional<FindCommand> command = findCommand(filter))
            m_wanted = findNode(session, *m_state, *command);
    }

    std::optional<IndexEntry> read(const index::Node& node, bool all) const {
        Interruption::check();
        if (m_wanted && node.id == *m_wanted)
            return IndexEntry{node.id, node.revision, node.totalCount, node.ownCount, {}};
        if (m_wanted && node.isLeaf())
            return std::nullopt;
        if (!all && !m_filter.empty()) {
            const filter::Decision decision = decide(node);
            if (decision == filter::Decision::None)
                return std::nullopt;
            all = decision == filter::Decision::All;
        }
        IndexEntry entry{node.id, node.revision, node.totalCount, node.ownCount, {}};
        const auto readChildren = [&](const std::vector<index::Node>& children) {
            index::requireTree(node, children);
            for (const index::Node& child : children)
                if (std::optional<IndexEntry> below = read(child, all))
                    entry.children.push_back(std::move(*below));
        };
        if (node.isLeaf())
            return entry;
        if (node.childPage)
            readChildren(*m_pages(node.childPage));
        else
            readChildren(node.children);
        // An inner node that was kept only for children that all turned out to have no hits.
        if (entry.children.empty())
            return std::nullopt;
        return entry;
    }
    const session::State& state() const { return *m_state; }

private:
    filter::Decision decide(const index::Node& node) const {
        std::vector<schema::ElementStatistics> statistics;
        for (const filter::ElementRef& element : m_filter.elements())
            statistics.push_back(
                index::statisticsOf(node, m_state->attributes[element.attribute], element.element));
        return m_filter.decide(statistics);
    }

    std::shared_ptr<const session::State> m_state;
    filter::BoundFilter m_filter;
    index::PageReader m_pages;
    std::optional<std::uint32_t> m_wanted;  // the one node that a command found
};

// A node that lives with its page; its statistics are complete without the pages below.
std::shared_ptr<const index::Node> findNode(session::Session& session, const session::State& state,
                                            std::uint32_t id) {
    return session.reading(state, [&] {
        const std::shared_ptr<const index::Page> root = session.blobs().rootPage(state);
        for (index::TreeCursor cursor(root->front(), session.blobs().pageReader()); cursor.node();
             cursor.enter())
            if (cursor.node()->id == id)
                return std::shared_ptr<const index::Node>(cursor.page() ? cursor.page() : root,
                                                          cursor.node());
        throw Failure(ErrorCode::NotFound, "The index has no node " + std::to_string(id) + ".");
    });
}

}  // namespace

IndexEntry readIndex(session::Session& session, std::string_view filter) {
    const IndexReader reader(session, filter);
    return session.reading(reader.state(), [&]() -> IndexEntry {
        const std::shared_ptr<const index::Page> page = session.blobs().rootPage(reader.state());
        const index::Node& root = page->front();
        if (std::optional<IndexEntry> entry = reader.read(root, false))
            return std::move(*entry);
        return {root.id, root.revision, root.totalCount, root.ownCount, {}};
    });
}

void readExtreme(session::Session& session, std::uint32_t node, std::string_view attribute,
                 Extreme extreme, bool cleaned, std::uint32_t type, void* buffer) {
    const std::shared_ptr<const session::State> state = session.state();
    const Binding binding = makeBinding(state->attributes, attribute, type, buffer, 0);
    const schema::Attribute& definition = state->attributes[binding.elements.attribute];
    const schema::Grid& grid = definition.grid;
    const std::shared_ptr<const index::Node> found = findNode(session, *state, node);
    for (std::uint32_t e = 0; e < binding.elements.count; ++e) {
        const schema::ElementStatistics s =
            index::statisticsOf(*found, definition, binding.elements.first + e);
        if (found->totalCount == 0 || (cleaned && !s.hasValid))
            throw Failure(ErrorCode::NotFound, "Node " + std::to_string(node) +
                                                   " holds no value of \"" +
                                                   definition.record.name + "\".");
        std::uint64_t code = extreme == Extreme::Minimum ? s.minimum : s.maximum;
        if (!s.hasValid) {
            code = grid.invalidCode();
        } else if (!cleaned && s.hasInvalid) {
            const double invalid = grid.value(grid.invalidCode());
            const double valid = grid.value(code);
            if (extreme == Extreme::Minimum ? invalid < valid : invalid > valid)
                code = grid.invalidCode();
        }
        writeValue(definition, code, type, binding.buffer + e * sizeOfType(type));
    }
}

std::uint32_t readRevision(session::Session& session, std::uint32_t node,
                           std::string_view attribute) {
    const std::shared_ptr<const session::State> state = session.state();
    const schema::ElementRange elements = schema::resolveElements(state->attributes, attribute);
    const std::shared_ptr<const index::Node> found = findNode(session, *state, node);
    const index::AttributeData* data = found->find(state->attributes[elements.attribute].uid);
    return data ? data->revision : 0;
}

}  // namespace tarvo::engine::query
