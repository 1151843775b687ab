#include "exchange/las/source.h"

#include "exchange/las/metadata.h"
#include "exchange/las/origin.h"
#include "exchange/table/threads.h"

#include <algorithm>
#include <mutex>

namespace tarvo::exchange::las {

namespace {

// Bytes of records that are taken apart at once: they stay in the processor's cache.
constexpr std::uint32_t pieceBytes = 128u << 10;

}  // namespace

LasSource::LasSource(const std::string& fileName)
    : m_file(fileName),
      m_header(readHeader(m_file)),
      m_records(readRecords(m_file, m_header)),
      m_dimensions(dimensions(m_header, extraDimensions(m_file, m_header, m_records))) {
    // At least one, so that the columns of a file without points have addresses too.
    const std::uint64_t capacity = std::clamp<std::uint64_t>(m_header.pointCount, 1, batchSize);
    for (const Dimension& dimension : m_dimensions) {
        m_columns.push_back(dimension.column);
        m_values.emplace_back(capacity * dataTypeSize(dimension.column.type));
    }
    m_pieceSize = std::max(1u, pieceBytes / m_header.recordLength);
}

double LasSource::progress() const {
    return m_header.pointCount == 0
               ? 1.0
               : static_cast<double>(m_position) / static_cast<double>(m_header.pointCount);
}

std::uint32_t LasSource::next() {
    const auto count = static_cast<std::uint32_t>(
        std::min<std::uint64_t>(batchSize, m_header.pointCount - m_position));
    std::mutex reading;
    std::uint32_t done = 0;
    onAllCores((count + m_pieceSize - 1) / m_pieceSize, [&] {
        std::vector<std::uint8_t> records(std::size_t{std::min(count, m_pieceSize)} *
                                          m_header.recordLength);
        for (;;) {
            std::unique_lock lock(reading);
            const std::uint32_t begin = done;
            const std::uint32_t piece = std::min(m_pieceSize, count - begin);
            if (piece == 0) {
                return;
            }
            m_file.read(m_header.pointOffset + (m_position + begin) * m_header.recordLength,
                        records.data(), std::size_t{piece} * m_header.recordLength, "point data");
            done += piece;
            lock.unlock();
            for (std::size_t i = 0; i < m_dimensions.size(); ++i) {
                decode(m_dimensions[i].field, records.data(), m_header.recordLength, piece,
                       m_values[i].data() + begin * dataTypeSize(m_dimensions[i].column.type));
            }
        }
    });
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

Origin LasSource::origin() const {
    return originOf(m_header, m_records);
}

std::vector<std::pair<std::string, std::string>> LasSource::metaData() const {
    return metaDataItems(m_file.fileName(), m_header, m_records);
}

}  // namespace tarvo::exchange::las
