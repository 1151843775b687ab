#include "exchange/las/compressedpoints.h"

#include "core/error.h"
#include "exchange/table/threads.h"

#include <algorithm>
#include <atomic>
#include <mutex>
#include <string>
#include <thread>
#include <utility>

namespace tarvo::exchange::las {

namespace {

// Records of chunks that are decoded whole, together with others; larger ones come in pieces.
constexpr std::uint64_t wholeBytes = 64u << 20;
// The layers of such a chunk are needed all the time.
constexpr std::uint64_t largestLayers = 256u << 20;
// The models of so long records are large.
constexpr std::size_t longRecord = 4096;

// Of all files that are open.
std::atomic<std::uint64_t> keptOfAll = 0;

// What is left of so many bytes, as far as it is wanted; to be given back.
std::uint64_t claim(std::uint64_t wanted, std::uint64_t most) {
    std::uint64_t taken = keptOfAll;
    std::uint64_t claimed = 0;
    do {
        claimed = std::min(wanted, most - std::min(most, taken));
    } while (!keptOfAll.compare_exchange_weak(taken, taken + claimed));
    return claimed;
}

bool isDescription(const Record& record) {
    return record.userId == "laszip encoded" && record.recordId == 22204;
}

laz::Description readDescription(const RawFile& file, const Header& header,
                                 const std::vector<Record>& records) {
    const auto found = std::find_if(records.begin(), records.end(), isDescription);
    if (found == records.end() || found->data.size() != found->length) {
        file.fail("it has no record that tells how its points are compressed");
    }
    try {
        return laz::Description::read(found->data, header.pointFormat, header.recordLength);
    } catch (const laz::Damage& damage) {
        file.fail(std::string("the record that tells how its points are compressed: ") +
                  damage.what());
    } catch (const laz::Refusal& refusal) {
        throw core::Failure("The LAZ file \"" + file.fileName() + "\" " + refusal.what() + ".",
                            "Convert it to LAS, or to LAZ of today, first.");
    }
}

}  // namespace

bool isOfCompression(const Record& record) {
    return isDescription(record) || record.userId == "copc";
}

// A stretch of the file, some at a time.
class CompressedPoints::FileBytes : public laz::ByteSource {
public:
    FileBytes(RawFile& file, std::uint64_t begin, std::uint64_t end)
        : m_file(file), m_position(begin), m_end(end) {}

    std::span<const std::uint8_t> more() override {
        constexpr std::uint64_t most = 256u << 10;
        m_bytes.resize(std::min(most, m_end - m_position));
        if (m_bytes.empty()) {
            return {};
        }
        m_file.read(m_position, m_bytes.data(), m_bytes.size(), "point data");
        m_position += m_bytes.size();
        return m_bytes;
    }

private:
    RawFile& m_file;
    std::uint64_t m_position;
    std::uint64_t m_end;
    std::vector<std::uint8_t> m_bytes;
};

CompressedPoints::CompressedPoints(RawFile& file, const Header& header,
                                   const std::vector<Record>& records, std::uint64_t mostKept)
    : m_file(file),
      m_header(header),
      m_description(readDescription(file, header, records)),
      m_list(ChunkList::read(file, header, m_description)) {
    const std::uint64_t most = mostKept / header.recordLength;
    m_mayKeep = claim(std::min(header.pointCount, most) * header.recordLength, mostKept);
    m_isKeeping = m_mayKeep > 0;
}

CompressedPoints::~CompressedPoints() {
    keptOfAll -= m_mayKeep;
}

void CompressedPoints::rewind() {
    m_begin = 0;
    m_frontRead = 0;
    if (m_isKeeping) {
        return;
    }
    m_filled = 0;
    m_next = m_frontChunks;
    m_open = {};
    m_opened = m_openLeft = 0;
}

const std::uint8_t* CompressedPoints::next(std::uint32_t count) {
    const std::size_t size = std::size_t{count} * m_header.recordLength;
    if (m_frontRead < m_frontFilled) {
        if (size <= m_frontFilled - m_frontRead) {
            m_frontRead += size;
            return m_front.data() + m_frontRead - size;
        }
        takeRestOfFront();
    }
    while (buffered() < count) {
        const auto missing = static_cast<std::uint32_t>(count - buffered());
        if (m_openLeft != 0) {
            decodePiece(missing);
        } else if (const std::size_t chunks = chunksAtOnce(missing)) {
            decodeChunks(chunks);
        } else {
            openLargeChunk();
        }
    }
    const std::uint8_t* const records = m_records.data() + m_begin;
    m_begin += size;
    return records;
}

// Behind the records that are there; what was read goes unless it is kept.
std::uint8_t* CompressedPoints::roomFor(std::uint64_t points) {
    const std::uint64_t size = points * m_header.recordLength;
    if (m_isKeeping && m_filled + size > m_mayKeep) {
        stopKeeping();
    }
    if (!m_isKeeping) {
        std::copy(m_records.data() + m_begin, m_records.data() + m_filled, m_records.data());
        m_filled -= m_begin;
        m_begin = 0;
    }
    m_records.grow(m_filled + size);
    return m_records.data() + m_filled;
}

// What is there stays, and what comes goes when it was read. Of chunks that are decoded piece by
// piece nobody could go on in the midst.
void CompressedPoints::stopKeeping() {
    m_isKeeping = false;
    if (m_piecewise != nullptr) {
        return;
    }
    m_front = std::exchange(m_records, {});
    m_frontFilled = std::exchange(m_filled, 0);
    m_frontRead = std::exchange(m_begin, 0);
    m_frontChunks = m_next;
    takeRestOfFront();
}

// Records that are read at once lie one behind the other.
void CompressedPoints::takeRestOfFront() {
    const std::size_t rest = m_frontFilled - m_frontRead;
    m_records.grow(m_filled + rest);
    std::copy_n(m_front.data() + m_frontRead, rest, m_records.data() + m_filled);
    m_filled += rest;
    m_frontRead = m_frontFilled;
}

// The number of chunks to decode whole for so many points; 0: the next one is too large.
std::size_t CompressedPoints::chunksAtOnce(std::uint32_t count) const {
    const std::size_t busy = 2 * std::max(1u, std::thread::hardware_concurrency());
    std::uint64_t points = 0;
    std::size_t chunks = 0;
    for (std::size_t i = m_next; i < m_list.chunks.size(); ++i) {
        points += m_list.chunks[i].points;
        if (points * m_header.recordLength > wholeBytes ||
            (chunks >= busy && points - m_list.chunks[i].points >= count)) {
            break;
        }
        ++chunks;
    }
    return chunks;
}

void CompressedPoints::decodeChunks(std::size_t count) {
    std::vector<std::uint64_t> places(count + 1);
    for (std::size_t i = 0; i < count; ++i) {
        places[i + 1] =
            places[i] + std::uint64_t{m_list.chunks[m_next + i].points} * m_header.recordLength;
    }
    std::uint8_t* const records = roomFor(places[count] / m_header.recordLength);
    std::mutex mutex;
    std::atomic<std::size_t> done = 0;
    onAllCores(m_header.recordLength > longRecord ? 1 : count, [&] {
        std::unique_lock lock(mutex);
        std::unique_ptr<laz::ChunkDecoder> decoder = idleDecoder();
        lock.unlock();
        std::vector<std::uint8_t> bytes;
        for (std::size_t i = done++; i < count; i = done++) {
            const Chunk& chunk = m_list.chunks[m_next + i];
            bytes.resize(chunk.size);
            lock.lock();
            m_file.read(chunk.begin, bytes.data(), bytes.size(), "chunk");
            lock.unlock();
            try {
                decoder->decode(bytes, chunk.points, records + places[i]);
            } catch (const laz::Damage& damage) {
                fail(chunk.begin, damage);
            }
        }
        lock.lock();
        m_idle.push_back(std::move(decoder));
    });
    m_next += count;
    m_filled += places[count];
}

// The next listed chunk, or the next one of those that nobody listed.
void CompressedPoints::openLargeChunk() {
    if (m_list.isListed) {
        m_open = m_list.chunks[m_next++];
    } else {
        m_open.begin = m_opened == 0 ? m_list.begin : m_open.begin + m_piecewise->position();
        m_open.size = m_list.end - std::min(m_list.end, m_open.begin);
        m_open.points = 0;
    }
    const std::uint64_t points = m_list.isListed
                                     ? m_open.points
                                     : std::min(m_list.chunkPoints, m_header.pointCount - m_opened);
    m_piecewise = m_piecewise ? std::move(m_piecewise) : idleDecoder();
    m_layers.clear();
    try {
        if (m_description.layout.isLayered()) {
            if (m_open.size > largestLayers) {
                m_file.fail("its chunk at byte " + std::to_string(m_open.begin) + " has " +
                            std::to_string(m_open.size) + " bytes; " +
                            std::to_string(largestLayers) + " can be read");
            }
            m_layers.resize(m_open.size);
            m_file.read(m_open.begin, m_layers.data(), m_layers.size(), "chunk");
            m_piecewise->begin(m_layers, m_open.points);
        } else {
            m_bytes = std::make_unique<FileBytes>(m_file, m_open.begin, m_open.begin + m_open.size);
            m_piecewise->begin({}, m_open.points, m_bytes.get());
        }
        m_opened += points;
        m_openLeft = points;
    } catch (const laz::Damage& damage) {
        fail(m_open.begin, damage);
    }
}

void CompressedPoints::decodePiece(std::uint32_t count) {
    const auto points = static_cast<std::uint32_t>(std::min<std::uint64_t>(count, m_openLeft));
    std::uint8_t* const records = roomFor(points);
    try {
        m_piecewise->next(points, records);
        m_openLeft -= points;
        if (m_openLeft == 0 && m_list.isListed) {
            m_piecewise->finish();
        }
    } catch (const laz::Damage& damage) {
        fail(m_open.begin, damage);
    }
    m_filled += std::size_t{points} * m_header.recordLength;
}

void CompressedPoints::fail(std::uint64_t begin, const laz::Damage& damage) const {
    m_file.fail("the chunk at byte " + std::to_string(begin) + ": " + damage.what());
}

std::unique_ptr<laz::ChunkDecoder> CompressedPoints::idleDecoder() {
    if (m_idle.empty()) {
        return std::make_unique<laz::ChunkDecoder>(m_description.layout);
    }
    std::unique_ptr<laz::ChunkDecoder> decoder = std::move(m_idle.back());
    m_idle.pop_back();
    return decoder;
}

}  // namespace tarvo::exchange::las
