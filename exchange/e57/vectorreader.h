// The records of a scan: a stream of bits per field, in packets.
#pragma once

#include "exchange/e57/document.h"

#include <cstdint>
#include <vector>

namespace tarvo::exchange::e57 {

class VectorReader {
public:
    // Reads the header of the section; file and scan must outlive it. Throws Failure.
    VectorReader(PagedFile& file, const Scan& scan);

    // Bytes of the section.
    std::uint64_t length() const { return m_end - m_begin; }
    // Reads packets until there are records to take: how many of them, maximum at most; 0 when all
    // have been taken. Throws Failure.
    std::uint32_t prepare(std::uint32_t maximum);
    // A field of the first count records that are prepared: stored whole numbers of a field that
    // has them, or the numbers of any but a text; returns how many of those are blurred (see
    // countBlurred).
    void wholeNumbers(std::size_t field, std::uint32_t count, std::int64_t* values) const;
    std::uint64_t numbers(std::size_t field, std::uint32_t count, double* values) const;
    // Those are done with.
    void take(std::uint32_t count);
    // Whether the section goes on behind the records, all of which have been taken.
    bool holdsMore();

private:
    struct Stream {
        unsigned bits = 0;                // of a value
        bool isKept = false;              // texts are not, and constants have no bytes
        std::vector<std::uint8_t> bytes;  // with some behind the last, so that words can be read
        std::size_t size = 0;             // bytes without those
        std::size_t position = 0;         // bits taken
    };
    void readPacket();
    void append(Stream& stream, const std::uint8_t* bytes, std::size_t size);
    std::uint64_t available() const;
    void requireRoom() const;

    PagedFile& m_file;
    const Scan& m_scan;
    std::uint64_t m_begin = 0;
    std::uint64_t m_end = 0;
    std::uint64_t m_position = 0;
    std::uint64_t m_left = 0;  // records
    std::vector<Stream> m_streams;
    std::vector<std::uint8_t> m_packet;
};

}  // namespace tarvo::exchange::e57
