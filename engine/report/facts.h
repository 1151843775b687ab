// What the reports tell, gathered once from the index, which is walked to its leaves; no points
// are read. A value: it holds the state that it describes.
#pragma once

#include "engine/session/session.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace tarvo::engine::report {

// The nodes at one depth below the root, which is at depth 0.
struct LevelFacts {
    std::uint64_t leaves = 0;
    std::uint64_t innerNodes = 0;
    std::uint64_t points = 0;               // in the leaves
    std::uint64_t levelOfDetailPoints = 0;  // in the inner nodes, in place of the points below
};

// One attribute of State::attributes, in its order.
struct AttributeFacts {
    // Per element, of all points; neither hasValid nor hasInvalid where there are no points.
    std::vector<schema::ElementStatistics> elements;
    std::uint64_t blocks = 0;
    std::uint64_t bytes = 0;      // of these
    std::uint64_t leafBytes = 0;  // without those of level of detail points
};

struct ItemFacts {
    std::string name;
    std::uint64_t bytes = 0;
    bool isSigned = false;
};

struct Facts {
    std::string fileName;
    std::uint64_t fileSize = 0;
    session::Identity identity;
    std::shared_ptr<const session::State> state;
    bool pending = false;       // the state is that of a transaction not yet committed
    std::uint32_t current = 0;  // the current transaction; a pending one's parent
    std::vector<session::TransactionRecord> transactions;  // that the file keeps, ascending
    std::vector<ItemFacts> metaData;

    index::Node root;
    std::uint64_t leaves = 0;
    std::vector<LevelFacts> levels;  // by depth; empty without points
    std::vector<AttributeFacts> attributes;

    // What the state reaches of the file, in bytes; the rest belongs to older transactions, is
    // free, or is the container's own.
    std::uint64_t pointBytes = 0;          // blocks of the leaves
    std::uint64_t levelOfDetailBytes = 0;  // blocks of the inner nodes
    std::uint64_t indexBytes = 0;          // pages of the index
    std::uint64_t metaDataBytes = 0;
    std::uint64_t otherBytes() const {
        const std::uint64_t reached = pointBytes + levelOfDetailBytes + indexBytes + metaDataBytes;
        return reached < fileSize ? fileSize - reached : 0;
    }
};

// Of the pending state, else the current one. Throws Failure(Damaged) where the index contradicts
// itself.
Facts gatherFacts(session::Session& session);

}  // namespace tarvo::engine::report
