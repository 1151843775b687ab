#include "exchange/las/source.h"

#include "exchange/las/metadata.h"
#include "exchange/las/origin.h"
#include "exchange/las/ownrecord.h"
#include "exchange/table/threads.h"

#include <algorithm>
#include <atomic>
#include <memory>
#include <mutex>

namespace tarvo::exchange::las {

namespace {

// Bytes of records that are taken apart at once: they stay in the processor's cache.
constexpr std::uint32_t pieceBytes = 128u << 10;
// The memory of a batch's columns.
constexpr std::uint64_t largestBatchBytes = 256u << 20;

bool isWholeType(DataType type) {
    return type != DataType::SINGLE && type != DataType::DOUBLE;
}

}  // namespace

LasSource::LasSource(const std::string& fileName)
    : m_file(fileName, "LAS"),
      m_header(readHeader(m_file)),
      m_records(readRecords(m_file, m_header)) {
    m_dimensions = dimensions(m_header, extraDimensions(m_file, m_header, m_records));
    const std::size_t extra = m_dimensions.size() - dimensions(m_header, {}).size();
    if (!applyOwnRecord(m_records, extra, m_dimensions)) {
        m_notes.push_back(
            "what the file tells of its attributes does not fit its extra bytes; they get the "
            "names "
            "that LAS has for them.");
    }
    noteFurtherRecords();
    std::erase_if(m_records, isOwnRecord);
    if (m_header.isCompressed) {
        m_compressed = std::make_unique<CompressedPoints>(m_file, m_header, m_records);
        std::erase_if(m_records, isOfCompression);
    }
    std::uint64_t pointBytes = 0;
    for (const Dimension& dimension : m_dimensions) {
        pointBytes += dataTypeSize(dimension.column.type);
    }
    // At least one, so that the columns of a file without points have addresses too.
    const std::uint64_t most = std::clamp<std::uint64_t>(m_header.pointCount, 1, batchSize);
    m_largestBatch = static_cast<std::uint32_t>(
        std::clamp<std::uint64_t>(largestBatchBytes / pointBytes, 1, most));
    for (const Dimension& dimension : m_dimensions) {
        m_columns.push_back(dimension.column);
        m_values.emplace_back(m_largestBatch * dataTypeSize(dimension.column.type));
    }
    m_pieceSize = std::max(1u, pieceBytes / m_header.recordLength);
}

// A program that was stopped while it wrote leaves such a file.
void LasSource::noteFurtherRecords() {
    if (m_header.isCompressed || m_header.waveformOffset != 0) {
        return;
    }
    const std::uint64_t end = m_header.evlrCount > 0 ? m_header.evlrOffset : m_file.size();
    const std::uint64_t records = (end - m_header.pointOffset) / m_header.recordLength;
    if (records > m_header.pointCount) {
        m_notes.push_back("the header tells " + std::to_string(m_header.pointCount) +
                          " points, but there is room for " +
                          std::to_string(records - m_header.pointCount) +
                          " more behind them, which are left out.");
    }
}

void LasSource::rewind() {
    m_position = 0;
    m_blurred = 0;
    if (m_compressed) {
        m_compressed->rewind();
    }
}

double LasSource::progress() const {
    return m_header.pointCount == 0
               ? 1.0
               : static_cast<double>(m_position) / static_cast<double>(m_header.pointCount);
}

std::uint32_t LasSource::next() {
    const auto count = static_cast<std::uint32_t>(
        std::min<std::uint64_t>(m_largestBatch, m_header.pointCount - m_position));
    const std::uint8_t* const decoded = m_compressed ? m_compressed->next(count) : nullptr;
    std::mutex reading;
    std::uint32_t done = 0;
    std::atomic<std::uint64_t> blurred = 0;
    onAllCores((count + m_pieceSize - 1) / m_pieceSize, [&] {
        std::vector<std::uint8_t> read;
        for (;;) {
            std::unique_lock lock(reading);
            const std::uint32_t begin = done;
            const std::uint32_t piece = std::min(m_pieceSize, count - begin);
            if (piece == 0) {
                return;
            }
            const std::uint8_t* records = nullptr;
            if (decoded) {
                records = decoded + std::size_t{begin} * m_header.recordLength;
            } else {
                read.resize(std::size_t{piece} * m_header.recordLength);
                m_file.read(m_header.pointOffset + (m_position + begin) * m_header.recordLength,
                            read.data(), read.size(), "point data");
                records = read.data();
            }
            done += piece;
            lock.unlock();
            for (std::size_t i = 0; i < m_dimensions.size(); ++i) {
                const Field& field = m_dimensions[i].field;
                std::uint8_t* const to =
                    m_values[i].data() + begin * dataTypeSize(m_dimensions[i].column.type);
                decode(field, records, m_header.recordLength, piece, to);
                if (field.kind == Field::Kind::Affine && isWholeType(field.raw)) {
                    blurred +=
                        countBlurred(field.affine, {reinterpret_cast<const double*>(to), piece});
                }
            }
        }
    });
    m_blurred += blurred;
    m_position += count;
    return count;
}

std::vector<Affine> LasSource::coordinateAxes() const {
    std::vector<Affine> axes;
    for (std::size_t i = 0; i < 3; ++i) {
        axes.push_back(m_dimensions[i].field.affine);
    }
    return axes;
}

std::vector<std::string> LasSource::notes() const {
    std::vector<std::string> notes = m_notes;
    if (m_blurred > 0) {
        notes.push_back(blurredNote(m_blurred));
    }
    return notes;
}

Origin LasSource::origin() const {
    return originOf(m_header, m_records);
}

std::vector<std::pair<std::string, std::string>> LasSource::metaData() const {
    return metaDataItems(m_file.fileName(), m_header, m_records);
}

}  // namespace tarvo::exchange::las
