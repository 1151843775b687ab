#include "exchange/las/recordwriter.h"

#include "core/error.h"
#include "exchange/seek.h"
#include "exchange/table/threads.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstring>
#include <mutex>
#include <thread>

namespace tarvo::exchange::las {

namespace {

// Records of a chunk: fewer points where they are very long.
constexpr std::size_t largestChunk = 64u << 20;
// Of all chunks that are encoded at once, if they are more than one.
constexpr std::size_t largestPending = 256u << 20;

bool isExtended(const Record& record) {
    return record.data.size() > largestPlainRecord;
}

Record compressionRecord(const laz::Layout& layout, std::uint32_t chunkPoints) {
    Record record;
    record.userId = "laszip encoded";
    record.recordId = 22204;
    record.description = "Compression of the points";
    record.data = laz::Description::write(layout, chunkPoints);
    return record;
}

}  // namespace

RecordWriter::RecordWriter(std::FILE* file, FileDescription description)
    : m_file(file),
      m_description(std::move(description)),
      m_layout(m_description.pointFormat, m_description.recordLength) {
    const std::size_t length = m_description.recordLength;
    m_chunkPoints = static_cast<std::uint32_t>(
        std::clamp<std::size_t>(largestChunk / length, 1, laz::usualChunkSize));
    m_chunksAtOnce = std::clamp<std::size_t>(largestPending / (m_chunkPoints * length), 1,
                                             2 * std::max(1u, std::thread::hardware_concurrency()));
    std::vector<std::uint8_t> records;
    const auto addRecord = [&](const Record& record) {
        const std::vector<std::uint8_t> bytes = recordBytes(record, false);
        records.insert(records.end(), bytes.begin(), bytes.end());
        ++m_places.plainRecords;
    };
    for (const Record& record : m_description.records) {
        if (!isExtended(record)) {
            addRecord(record);
        }
    }
    if (m_description.compress) {
        addRecord(compressionRecord(m_layout, m_chunkPoints));
    }
    if (records.size() > UINT32_MAX - writtenHeaderSize) {
        throw core::Failure("The variable length records take " + std::to_string(records.size()) +
                                " bytes, more than a LAS file can have before its points.",
                            "Leave some of them out.");
    }
    m_places.points = static_cast<std::uint32_t>(writtenHeaderSize + records.size());
    if (seekTo(m_file, 0) != 0) {
        fail();
    }
    write(std::vector<std::uint8_t>(writtenHeaderSize));
    write(records);
    if (m_description.compress) {
        const std::uint64_t noTable = m_places.points;
        write(&noTable, sizeof noTable);
    }
}

RecordWriter::~RecordWriter() = default;

void RecordWriter::add(const std::uint8_t* records, std::size_t count) {
    m_totals.add(m_description, records, count);
    const std::size_t length = m_description.recordLength;
    if (!m_description.compress) {
        write(records, count * length);
        return;
    }
    const std::size_t most = m_chunksAtOnce * m_chunkPoints * length;
    for (std::size_t left = count * length; left != 0;) {
        const std::size_t size = std::min(left, most - m_pending.size());
        m_pending.insert(m_pending.end(), records, records + size);
        records += size;
        left -= size;
        if (m_pending.size() == most) {
            encodePending(m_chunksAtOnce);
        }
    }
}

void RecordWriter::encodePending(std::size_t chunks) {
    const std::size_t points = m_pending.size() / m_description.recordLength;
    std::vector<std::vector<std::uint8_t>> encoded(chunks);
    std::atomic<std::size_t> done = 0;
    std::mutex mutex;
    onAllCores(chunks, [&] {
        std::unique_lock lock(mutex);
        std::unique_ptr<laz::ChunkEncoder> encoder;
        if (m_idle.empty()) {
            encoder = std::make_unique<laz::ChunkEncoder>(m_layout);
        } else {
            encoder = std::move(m_idle.back());
            m_idle.pop_back();
        }
        lock.unlock();
        for (std::size_t i = done++; i < chunks; i = done++) {
            const std::size_t first = i * m_chunkPoints;
            encoded[i] = encoder->encode(
                m_pending.data() + first * m_description.recordLength,
                static_cast<std::uint32_t>(std::min<std::size_t>(m_chunkPoints, points - first)));
        }
        lock.lock();
        m_idle.push_back(std::move(encoder));
    });
    for (const std::vector<std::uint8_t>& chunk : encoded) {
        write(chunk);
        m_chunks.push_back({0, static_cast<std::uint32_t>(chunk.size())});
    }
    m_pending.clear();
}

void RecordWriter::finish() {
    if (m_description.compress) {
        const std::size_t chunkBytes = std::size_t{m_chunkPoints} * m_description.recordLength;
        encodePending((m_pending.size() + chunkBytes - 1) / chunkBytes);
        const std::uint64_t table = m_position;
        write(laz::writeChunkTable(m_chunks, false));
        rewrite(m_places.points, &table, sizeof table);
    }
    m_places.firstExtended = m_position;
    for (const Record& record : m_description.records) {
        if (isExtended(record)) {
            write(recordBytes(record, true));
            ++m_places.extendedRecords;
        }
    }
    const std::vector<std::uint8_t> header = headerBytes(m_description, m_totals, m_places);
    rewrite(0, header.data(), header.size());
    if (std::fflush(m_file) != 0) {
        fail();
    }
}

void RecordWriter::write(const void* bytes, std::size_t size) {
    if (size != 0 && std::fwrite(bytes, 1, size, m_file) != size) {
        fail();
    }
    m_position += size;
}

// Replaces what stands somewhere, and goes back behind the end.
void RecordWriter::rewrite(std::uint64_t position, const void* bytes, std::size_t size) {
    if (seekTo(m_file, position) != 0 || std::fwrite(bytes, 1, size, m_file) != size ||
        seekTo(m_file, m_position) != 0) {
        fail();
    }
}

void RecordWriter::fail() const {
    throw core::Failure(std::string("Failed to write the ") +
                            (m_description.compress ? "LAZ" : "LAS") +
                            " file: " + std::strerror(errno) + ".",
                        "Its points were not written.");
}

}  // namespace tarvo::exchange::las
