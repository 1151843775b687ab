// Container: giving back the space of what nobody wants.
#include "engine/store/containerimpl.h"

#include <algorithm>
#include <vector>

namespace tarvo::engine::store {

namespace {

// Of what a step writes, bytes.
constexpr std::uint64_t stepBytes = 16u << 20;

struct Surplus {
    std::vector<std::int64_t> rows;    // that nobody wants
    std::vector<std::uint64_t> blobs;  // of which too much is not wanted
    std::uint64_t bytes = 0;           // of both that nobody wants
};

std::uint64_t numberOf(std::int64_t row) {
    return row < 0 ? ~static_cast<std::uint64_t>(row) + 1 : static_cast<std::uint64_t>(row);
}

// What is wanted must be there: a file with gaps is not for cleaning up but for a backup.
Surplus findSurplus(Connection& connection, const WantedExtents& wanted) {
    const bool mayBeSparse = !isFirstFormat(connection);
    // Where a blob has two rows, the whole one is read, and the sparse one is not wanted.
    Statement rows(connection.handle,
                   "SELECT id, length(data), id < 0 AND EXISTS(SELECT 1 FROM blob AS whole WHERE "
                   "whole.id = -blob.id) FROM blob ORDER BY id",
                   connection.fileName);
    Surplus surplus;
    std::size_t found = 0;
    while (rows.step()) {
        const auto blob = wanted.find(numberOf(rows.integer(0)));
        const auto bytes = static_cast<std::uint64_t>(rows.integer(1));
        if (blob == wanted.end() || rows.integer(2) != 0) {
            surplus.rows.push_back(rows.integer(0));
            surplus.bytes += bytes;
            continue;
        }
        ++found;
        const std::uint64_t sparse = sparseBytes(blob->second);
        if (mayBeSparse && sparse < bytes && bytes - sparse > bytes / 4) {
            surplus.blobs.push_back(blob->first);
            surplus.bytes += bytes - sparse;
        }
    }
    if (found != wanted.size())
        throw Failure(ErrorCode::Damaged,
                      "The file is damaged: data of a transaction that is kept is missing. "
                      "Nothing was removed.",
                      "File: " + connection.fileName + "\nRestore it from a backup.");
    return surplus;
}

}  // namespace

void Container::Impl::makeSparse(std::uint64_t blob, const Extents& wanted) {
    Bytes bytes = encodeExtents(wanted);
    for (const Extent& extent : wanted.all()) {
        const Bytes part = readBlob(blob, extent, "data of a transaction");
        bytes.insert(bytes.end(), part.begin(), part.end());
    }
    closeReader();
    const auto id = static_cast<std::int64_t>(blob);
    Statement(connection->handle, "DELETE FROM blob WHERE id IN (?, ?)", fileName())
        .bind(1, id)
        .bind(2, -id)
        .run();
    Statement(connection->handle, "INSERT INTO blob VALUES(?, ?)", fileName())
        .bind(1, -id)
        .bind(2, ByteSpan(bytes))
        .run();
    if (connection->pragma("PRAGMA user_version") < sparseFormat)
        connection->run(("PRAGMA user_version=" + std::to_string(sparseFormat)).c_str());
}

std::uint64_t Container::unusedSize(const WantedExtents& wanted) {
    const std::lock_guard guard(m->mutex);
    Connection& connection = *m->connection;
    const auto freePages = static_cast<std::uint64_t>(connection.pragma("PRAGMA freelist_count"));
    return findSurplus(connection, wanted).bytes +
           freePages * static_cast<std::uint64_t>(connection.pragma("PRAGMA page_size"));
}

void Container::giveBack(const WantedExtents& wanted, const std::function<bool(int)>& progress) {
    Connection& connection = *m->connection;
    const auto report = [&](std::size_t done, std::size_t all, int from, int to) {
        const auto share = all > 0 ? static_cast<int>(done * (to - from) / all) : to - from;
        if (!progress(from + share))
            throw Failure(ErrorCode::Cancelled, "The clean-up was cancelled.",
                          "The space given back so far stays so; nothing is lost.");
    };
    const Surplus surplus = [&] {
        const std::lock_guard guard(m->mutex);
        return findSurplus(connection, wanted);
    }();

    std::size_t done = 0;
    m->inSteps([&](std::int64_t step) {
        const std::size_t end =
            std::min(done + static_cast<std::size_t>(step), surplus.rows.size());
        {
            Impl::Change change(*m);
            m->requireAlone();
            Statement statement(connection.handle, "DELETE FROM blob WHERE id = ?", fileName());
            for (std::size_t i = done; i < end; ++i) {
                statement.bind(1, surplus.rows[i]);
                statement.run();
            }
            change.commit();
        }
        done = end;
        report(done, surplus.rows.size(), 0, 30);
        return done < surplus.rows.size();
    });

    done = 0;
    m->inSteps([&](std::int64_t step) {
        std::size_t end = done;
        if (done < surplus.blobs.size()) {
            Impl::Change change(*m);
            m->requireAlone();
            std::uint64_t bytes = 0;
            while (end < surplus.blobs.size() && step-- > 0 && bytes < stepBytes) {
                const auto blob = wanted.find(surplus.blobs[end++]);
                bytes += sparseBytes(blob->second);
                m->makeSparse(blob->first, blob->second);
            }
            change.commit();
        }
        done = end;
        report(done, surplus.blobs.size(), 30, 60);
        return done < surplus.blobs.size();
    });

    const auto freePages = [&] {
        const std::lock_guard guard(m->mutex);
        return connection.pragma("PRAGMA freelist_count");
    };
    const std::int64_t unused = freePages();
    std::int64_t left = unused;
    m->inSteps([&](std::int64_t step) {
        if (left == 0)
            return false;
        report(static_cast<std::size_t>(unused - left), static_cast<std::size_t>(unused), 60, 100);
        {
            Impl::Change change(*m);
            connection.run(("PRAGMA incremental_vacuum(" + std::to_string(step) + ")").c_str());
            change.commit();
        }
        const std::int64_t now = freePages();
        const bool fewer = now < left;
        left = now;
        return fewer;
    });
}

}  // namespace tarvo::engine::store
