// Writes point records as a LAS file of version 1.4, compressed or not.
#pragma once

#include "exchange/las/headerbytes.h"
#include "exchange/laz/chunkencoder.h"
#include "exchange/laz/chunktable.h"

#include <cstdio>
#include <memory>
#include <vector>

namespace tarvo::exchange::las {

// What stands in the file before finish is none that anybody could read.
class RecordWriter {
public:
    // Writes from the beginning of a file that is open for writing and can be sought in; it stays
    // the caller's and must outlive the writer. Throws Failure: the disk is full, or the
    // variable length records are too many for the format.
    RecordWriter(std::FILE* file, FileDescription description);
    ~RecordWriter();

    // Takes count records of the description's length. Points are encoded on all cores, and written
    // in order. Throws Failure when writing fails.
    void add(const std::uint8_t* records, std::size_t count);
    // Writes what is left and what tells of all points, once. The file is flushed, not synced.
    // Throws Failure when writing fails.
    void finish();

private:
    void write(const void* bytes, std::size_t size);
    void write(const std::vector<std::uint8_t>& bytes) { write(bytes.data(), bytes.size()); }
    void rewrite(std::uint64_t position, const void* bytes, std::size_t size);
    void encodePending(std::size_t chunks);
    [[noreturn]] void fail() const;

    std::FILE* m_file;
    FileDescription m_description;
    laz::Layout m_layout;
    FilePlaces m_places;
    PointTotals m_totals;
    std::uint64_t m_position = 0;

    // Of compressed files.
    std::uint32_t m_chunkPoints;
    std::size_t m_chunksAtOnce;
    std::vector<std::uint8_t> m_pending;  // records
    std::vector<laz::ChunkSize> m_chunks;
    std::vector<std::unique_ptr<laz::ChunkEncoder>> m_idle;
};

}  // namespace tarvo::exchange::las
