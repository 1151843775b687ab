// Stores the leaves that the tree builder makes: encodes them on the worker threads and appends
// them to the container in the order in which they were made, whatever the number of threads.
#pragma once

#include "engine/index/builder.h"
#include "engine/session/session.h"

#include <deque>
#include <future>

namespace tarvo::engine::query {

class LeafWriter final : public index::BuilderBackend {
public:
    // state: the pending state; gives the attributes and the node ids.
    LeafWriter(session::Session& session, session::State& state, const index::RowLayout& layout,
               const index::KeySpace& space);
    ~LeafWriter() override;

    std::shared_ptr<index::LeafContent> writeLeaf(const std::uint8_t* rows,
                                                  std::size_t count) override;
    void complete(index::LeafContent& content) override;
    std::vector<std::uint8_t> readLeaf(const index::Node& leaf) override;
    index::Page readPage(const BlobRef& reference) override;
    BlobRef writePage(const index::Page& page) override;
    std::uint32_t newNodeId() override;

private:
    // A leaf on its way into the container: one blob with the blocks one after another; the
    // references lack the blob's id.
    struct Encoded {
        Bytes blob;
        std::vector<index::AttributeData> attributes;
    };
    struct Job {
        std::future<Encoded> encoded;
        std::shared_ptr<index::LeafContent> content;
    };
    void storeOldest();

    session::Session& m_session;
    session::State& m_state;
    const index::RowLayout& m_layout;
    const index::KeySpace& m_space;
    std::shared_ptr<const schema::AttributeTable> m_table;  // shared with the tasks
    std::deque<Job> m_jobs;
};

}  // namespace tarvo::engine::query
