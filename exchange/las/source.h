// The points of a LAS file, compressed or not, as columns.
#pragma once

#include "exchange/las/compressedpoints.h"
#include "exchange/las/dimensions.h"
#include "exchange/table/pointsource.h"

namespace tarvo::exchange::las {

class LasSource : public PointSource {
public:
    // Reads and checks the header and the variable length records. Throws Failure.
    explicit LasSource(const std::string& fileName);

    const Header& header() const { return m_header; }

    const std::string& fileName() const override { return m_file.fileName(); }
    const std::vector<Column>& columns() const override { return m_columns; }
    double progress() const override;
    void rewind() override;
    std::uint32_t largestBatch() const override { return m_largestBatch; }
    std::uint32_t next() override;
    const void* values(std::size_t column) const override { return m_values[column].data(); }
    std::vector<Affine> coordinateAxes() const override;
    Origin origin() const override;
    std::vector<std::pair<std::string, std::string>> metaData() const override;
    std::vector<std::string> notes() const override;

private:
    void noteFurtherRecords();

    RawFile m_file;
    Header m_header;
    std::vector<Record> m_records;
    std::unique_ptr<CompressedPoints> m_compressed;  // of LAZ files
    std::vector<Dimension> m_dimensions;
    std::vector<std::string> m_notes;
    std::vector<Column> m_columns;
    std::uint64_t m_position = 0;  // points read
    std::uint64_t m_blurred = 0;   // values of those, see blurredNote
    std::uint32_t m_largestBatch;
    std::uint32_t m_pieceSize;                        // points that are taken apart at once
    std::vector<std::vector<std::uint8_t>> m_values;  // per column
};

}  // namespace tarvo::exchange::las
