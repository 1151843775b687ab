// Reads everything that the kept transactions of a database reach, and tells what is not as it
// should be: every blob against its checksum; roots, definitions, metadata items and the changelog;
// the index down to its leaves, each block decoded and compared with what its node says. What
// several transactions share is read once. The signatures of items and entries are not checked.
#pragma once

#include "engine/session/session.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace tarvo::engine::report {

struct Fault {
    enum class Kind : std::uint8_t {
        Root,
        AttributeTable,
        MetaDataItem,
        Changelog,
        Index,
        Block,
        Container  // the tables that hold all of these
    };
    Kind kind = Kind::Root;
    // The one it was met in, the current one before all others; others may share it. 0: of none.
    std::uint32_t transaction = 0;
    std::string name;  // of the item or the point attribute; empty: of none
    std::optional<std::uint32_t> element;
    std::uint32_t node = 0;  // 0: of none
    std::string text;
    std::string details;
};

// The most faults that are listed; all are counted.
inline constexpr std::size_t listedFaults = 1000;

struct Findings {
    std::vector<Fault> faults;  // the first
    std::uint64_t faultCount = 0;
    // What was read.
    std::uint64_t transactions = 0;
    std::uint64_t blobs = 0;
    std::uint64_t points = 0;
    std::uint64_t bytes = 0;
    // Transactions that somebody discarded meanwhile.
    std::uint64_t leftOut = 0;
    // Blobs that no kept transaction reaches: rolled back, discarded, or those of a transaction
    // that is pending. Nothing when there are faults: a transaction that can't be read may reach
    // them.
    std::optional<std::uint64_t> unreached;

    void add(Fault fault) {
        ++faultCount;
        if (faults.size() < listedFaults)
            faults.push_back(std::move(fault));
    }
};

// A pending transaction is not looked at. Memory is bounded by the cache size, but for a few bytes
// per blob. Throws Failure where the file can't be read for another reason than damage.
Findings check(session::Session& session);

// The report of format 5, see report.h.
std::string checkReport(const Findings& findings);

}  // namespace tarvo::engine::report
