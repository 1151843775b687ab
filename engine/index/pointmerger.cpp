#include "engine/index/pointmerger.h"

#include <algorithm>

namespace tarvo::engine::index {

namespace {

class MemoryReader final : public RunReader {
public:
    explicit MemoryReader(std::shared_ptr<SortedRun> run) : m_run(std::move(run)) {}
    std::shared_ptr<SortedRun> next() override { return std::move(m_run); }

private:
    std::shared_ptr<SortedRun> m_run;
};

}  // namespace

std::unique_ptr<RunReader> readRun(std::shared_ptr<SortedRun> run) {
    return std::make_unique<MemoryReader>(std::move(run));
}

bool PointMerger::Source::readPiece() {
    std::shared_ptr<SortedRun> run = reader->next();
    if (!run)
        return false;
    pieces.push_back({std::move(run)});
    return true;
}

// Of a place counted from the next one on; there must be a point.
Key PointMerger::Source::keyAt(std::size_t place) {
    for (std::size_t i = 0;; ++i) {
        if (i == pieces.size())
            readPiece();
        Piece& piece = pieces[i];
        if (const std::size_t left = piece.run->size() - piece.at; place >= left) {
            place -= left;
            continue;
        }
        return piece.run->keyAt(piece.at + place);
    }
}

Key PointMerger::Source::nextKey() {
    if (!next)
        next = keyAt(0);
    return *next;
}

std::size_t PointMerger::Source::countUpTo(Key last, std::size_t limit) {
    if (limit == 0 || nextKey() > last)
        return 0;
    std::size_t count = 0;
    for (std::size_t i = 0; i < pieces.size() || readPiece(); ++i) {
        const Piece& piece = pieces[i];
        const std::size_t here = piece.run->countUpTo(last, piece.at, limit - count);
        count += here;
        if (count == limit || here < piece.run->size() - piece.at)
            break;
    }
    return count;
}

void PointMerger::Source::take(std::size_t count, RunParts& parts) {
    while (count > 0) {
        Piece& piece = pieces.front();
        const std::size_t here = std::min(count, piece.run->size() - piece.at);
        const auto points = piece.run->order().subspan(piece.at, here);
        parts.push_back({piece.run, {points.begin(), points.end()}, isStored});
        piece.at += here;
        count -= here;
        if (piece.at == piece.run->size()) {
            pieces.pop_front();
            if (pieces.empty())
                readPiece();
        }
    }
    next.reset();
}

PointMerger::PointMerger(std::vector<std::unique_ptr<RunReader>> runs) {
    for (std::unique_ptr<RunReader>& reader : runs) {
        Source source;
        source.reader = std::move(reader);
        if (source.readPiece())
            m_sources.push_back(std::move(source));
    }
}

Key PointMerger::nextKey() {
    Key least = m_sources[0].nextKey();
    for (Source& source : m_sources)
        least = std::min(least, source.nextKey());
    return least;
}

std::size_t PointMerger::countUpTo(Key last, std::size_t limit) {
    std::size_t count = 0;
    for (Source& source : m_sources) {
        count += source.countUpTo(last, limit - count);
        if (count == limit)
            break;
    }
    return count;
}

// How many of the next points each source gives.
std::vector<std::size_t> PointMerger::shares(Key last, std::size_t count) {
    std::vector<std::size_t> result(m_sources.size());
    std::size_t sum = 0;
    for (std::size_t i = 0; i < m_sources.size() && sum <= count; ++i) {
        result[i] = m_sources[i].countUpTo(last, count + 1 - sum);
        sum += result[i];
    }
    if (sum == count)
        return result;
    // Not all that there are: those of the least keys.
    struct Next {
        Key key;
        std::size_t source;
    };
    std::vector<Next> next;
    const auto isLater = [](const Next& a, const Next& b) {
        return a.key != b.key ? a.key > b.key : a.source > b.source;
    };
    for (std::size_t i = 0; i < m_sources.size(); ++i)
        if (const Key key = m_sources[i].nextKey(); key <= last)
            next.push_back({key, i});
    std::make_heap(next.begin(), next.end(), isLater);
    std::fill(result.begin(), result.end(), 0);
    for (; count > 0; --count) {
        std::pop_heap(next.begin(), next.end(), isLater);
        Next& one = next.back();
        std::size_t& taken = result[one.source];
        Source& source = m_sources[one.source];
        ++taken;
        if (source.countUpTo(last, taken + 1) <= taken) {
            next.pop_back();
            continue;
        }
        one.key = source.keyAt(taken);
        std::push_heap(next.begin(), next.end(), isLater);
    }
    return result;
}

RunParts PointMerger::take(Key last, std::size_t count) {
    RunParts parts;
    const std::vector<std::size_t> counts = shares(last, count);
    for (std::size_t i = 0; i < counts.size(); ++i)
        if (counts[i] > 0)
            m_sources[i].take(counts[i], parts);
    std::erase_if(m_sources, [](const Source& source) { return source.pieces.empty(); });
    return parts;
}

void PointMerger::insert(std::shared_ptr<SortedRun> stored) {
    Source source;
    source.isStored = true;
    source.reader = readRun(std::move(stored));
    source.readPiece();
    m_sources.insert(m_sources.begin(), std::move(source));
}

}  // namespace tarvo::engine::index
