// Stores the leaves that the tree builder makes: encodes them on the worker threads and appends
// them to the container in the order in which they were made, whatever the number of threads.
#pragma once

#include "engine/index/builder.h"
#include "engine/query/blocks.h"
#include "engine/session/session.h"

#include <deque>

namespace tarvo::engine::query {

class LeafPoints;

class LeafWriter final : public index::BuilderBackend {
public:
    // Called with the points stored so far.
    using OnStored = std::function<void(std::uint64_t points)>;

    // state: the pending state; gives the attributes and the node ids. renumberFrom: points that
    // were not stored before get new ids (codes) from this one on in the order of the index; none:
    // UINT64_MAX.
    LeafWriter(session::Session& session, session::State& state, const index::RowLayout& layout,
               const index::KeySpace& space, std::uint64_t renumberFrom = UINT64_MAX,
               OnStored onStored = {});
    ~LeafWriter() override;

    std::shared_ptr<index::LeafContent> writeLeaf(index::RunParts points,
                                                  std::size_t count) override;
    void complete(index::LeafContent& content) override;
    std::shared_ptr<index::SortedRun> readLeaf(const index::Node& leaf) override;
    index::Page readPage(const BlobRef& reference) override;
    BlobRef writePage(const index::Page& page) override;
    std::uint32_t newNodeId() override;

private:
    // A leaf on its way into the container.
    struct Leaf {
        index::RunParts points;
        std::size_t count = 0;
        std::uint64_t newIds = 0;
        std::shared_ptr<index::LeafContent> content;
    };
    struct Encoded {
        BlockWriter blocks;
        std::vector<index::AttributeData> attributes;
    };
    struct Job {
        Task<std::vector<Encoded>> encoded;
        std::vector<std::shared_ptr<index::LeafContent>> contents;
    };
    static Encoded encodeLeaf(const LeafPoints& points, const schema::AttributeTable& table,
                              const index::RowLayout& layout, std::uint8_t level,
                              std::uint32_t revision);
    void encodeBatch();
    // False: nothing is left to store.
    bool storeOldest();

    session::Session& m_session;
    session::State& m_state;
    const index::RowLayout& m_layout;
    const index::KeySpace& m_space;
    std::shared_ptr<const schema::AttributeTable> m_table;  // shared with the tasks
    std::uint64_t m_nextId;                                 // UINT64_MAX: points keep theirs
    OnStored m_onStored;
    std::uint64_t m_storedPoints = 0;
    std::vector<Leaf> m_batch;  // small leaves are encoded many to a task
    std::size_t m_batchPoints = 0;
    std::deque<Job> m_jobs;
};

}  // namespace tarvo::engine::query
