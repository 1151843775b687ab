// The point records of a compressed file, as they were before.
#pragma once

#include "exchange/las/chunklist.h"
#include "exchange/las/recordbytes.h"
#include "exchange/laz/chunkdecoder.h"

#include <memory>
#include <vector>

namespace tarvo::exchange::las {

// Whether a record tells how and where points are compressed: nothing of it holds for them outside
// of their file.
bool isOfCompression(const Record& record);

class CompressedPoints {
public:
    // Reads where the points lie; the file and the header must outlive it. Decoding takes longer
    // than anything else that an import does with a point, and an import reads all twice: so the
    // first records stay decoded, as many as fit into mostKept bytes together with those of the
    // other files that are open. Throws Failure.
    CompressedPoints(RawFile& file, const Header& header, const std::vector<Record>& records,
                     std::uint64_t mostKept = 256u << 20);
    ~CompressedPoints();

    // Back to the first point.
    void rewind();
    // The next count records one behind the other, until the next call; never more than are left.
    // Throws Failure.
    const std::uint8_t* next(std::uint32_t count);

private:
    class FileBytes;

    std::uint64_t buffered() const { return (m_filled - m_begin) / m_header.recordLength; }
    std::uint8_t* roomFor(std::uint64_t points);
    void stopKeeping();
    void takeRestOfFront();
    std::size_t chunksAtOnce(std::uint32_t count) const;
    void decodeChunks(std::size_t count);
    void openLargeChunk();
    void decodePiece(std::uint32_t count);
    [[noreturn]] void fail(std::uint64_t begin, const laz::Damage& damage) const;
    std::unique_ptr<laz::ChunkDecoder> idleDecoder();

    RawFile& m_file;
    const Header& m_header;
    laz::Description m_description;
    ChunkList m_list;

    std::uint64_t m_mayKeep = 0;  // bytes
    // What was read stays in m_records: so far all of it fits.
    bool m_isKeeping = false;
    RecordBytes m_records;  // decoded ones; those to be read are within it
    std::size_t m_begin = 0;
    std::size_t m_filled = 0;
    std::size_t m_next = 0;  // of the listed chunks
    // Where not all fits, the records of the first listed chunks.
    RecordBytes m_front;
    std::size_t m_frontFilled = 0;
    std::size_t m_frontRead = 0;
    std::size_t m_frontChunks = 0;
    std::vector<std::unique_ptr<laz::ChunkDecoder>> m_idle;

    // The chunk that is decoded piece by piece, if there is one.
    std::unique_ptr<laz::ChunkDecoder> m_piecewise;
    std::unique_ptr<FileBytes> m_bytes;
    std::vector<std::uint8_t> m_layers;
    Chunk m_open;
    std::uint64_t m_opened = 0;    // points of all chunks that were opened
    std::uint64_t m_openLeft = 0;  // of its points
};

}  // namespace tarvo::exchange::las
