#include "exchange/las/source.h"

#include "exchange/las/metadata.h"
#include "exchange/las/origin.h"

#include <algorithm>

namespace tarvo::exchange::las {

namespace {

// Records are taken apart in pieces that stay in the processor's cache.
constexpr std::uint32_t pieceSize = 4096;

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
    m_buffer.resize(std::min<std::uint64_t>(pieceSize, capacity) * m_header.recordLength);
}

double LasSource::progress() const {
    return m_header.pointCount == 0
               ? 1.0
               : static_cast<double>(m_position) / static_cast<double>(m_header.pointCount);
}

std::uint32_t LasSource::next() {
    const auto count = static_cast<std::uint32_t>(
        std::min<std::uint64_t>(batchSize, m_header.pointCount - m_position));
    for (std::uint32_t done = 0; done < count;) {
        const std::uint32_t piece = std::min(pieceSize, count - done);
        m_file.read(m_header.pointOffset + (m_position + done) * m_header.recordLength,
                    m_buffer.data(), std::size_t{piece} * m_header.recordLength, "point data");
        for (std::size_t i = 0; i < m_dimensions.size(); ++i) {
            const std::size_t size = dataTypeSize(m_dimensions[i].column.type);
            decode(m_dimensions[i].field, m_buffer.data(), m_header.recordLength, piece,
                   m_values[i].data() + done * size);
        }
        done += piece;
    }
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
