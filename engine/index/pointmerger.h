// Merges runs of points: tells how many of the next ones lie in a cell, and hands them out with
// their runs, without moving them.
#pragma once

#include "engine/index/sortedrun.h"

#include <cstdint>
#include <deque>
#include <memory>
#include <optional>
#include <vector>

namespace tarvo::engine::index {

// A run in pieces, the keys of none before those of the piece before.
class RunReader {
public:
    virtual ~RunReader() = default;
    // The next piece, or null at the end.
    virtual std::shared_ptr<SortedRun> next() = 0;
};

// Of a run that stays in memory.
std::unique_ptr<RunReader> readRun(std::shared_ptr<SortedRun> run);

// Points of one run.
struct RunPart {
    std::shared_ptr<const SortedRun> run;
    std::vector<std::uint32_t> points;
    bool isStored = false;  // the points were in the tree before
};
using RunParts = std::vector<RunPart>;

class PointMerger {
public:
    // Points of equal keys come in the order of their runs.
    explicit PointMerger(std::vector<std::unique_ptr<RunReader>> runs);

    // Whether no point is left.
    bool atEnd() const { return m_sources.empty(); }
    // The key of the next point; there must be one.
    Key nextKey();
    // How many of the next `limit` points have keys up to `last`.
    std::size_t countUpTo(Key last, std::size_t limit);
    // The next points, in any order; countUpTo told that so many have keys up to `last`.
    RunParts take(Key last, std::size_t count);
    // Puts points that are stored, none before the last taken one, before those that are left.
    void insert(std::shared_ptr<SortedRun> stored);

private:
    struct Piece {
        std::shared_ptr<SortedRun> run;
        std::size_t at = 0;  // the next place
    };
    // A run that has points left.
    struct Source {
        std::unique_ptr<RunReader> reader;
        bool isStored = false;
        std::deque<Piece> pieces;  // those that were read
        std::optional<Key> next;   // key

        bool readPiece();
        Key nextKey();
        Key keyAt(std::size_t place);
        std::size_t countUpTo(Key last, std::size_t limit);
        void take(std::size_t count, RunParts& parts);
    };
    std::vector<std::size_t> shares(Key last, std::size_t count);

    std::vector<Source> m_sources;
};

}  // namespace tarvo::engine::index
