// The points of a PTX file as columns: scans in rows and columns, each with its pose.
#pragma once

#include "exchange/ptx/scans.h"
#include "exchange/table/columnbuffers.h"
#include "exchange/table/pointsource.h"

namespace tarvo::exchange::ptx {

class PtxSource : public PointSource {
public:
    // Reads the headers of all scans and counts their lines. Throws Failure.
    explicit PtxSource(const std::string& fileName, const OpenProgress& progress = {});

    const std::string& fileName() const override { return m_fileName; }
    const std::vector<Column>& columns() const override { return m_columns; }
    double progress() const override { return m_reader.progress(); }
    void rewind() override;
    std::uint32_t largestBatch() const override { return m_buffers.capacity(); }
    // Points at the origin of their scanner are holes, and no points.
    std::uint32_t next() override;
    const void* values(std::size_t column) const override { return m_buffers.of(column); }
    // "ptx.scans": size, position, axes and matrix of each.
    std::vector<std::pair<std::string, std::string>> metaData() const override;
    std::vector<std::string> notes() const override;

private:
    void readScans();
    void makeColumns();

    std::string m_fileName;
    ScanReader m_reader;
    std::vector<Scan> m_scans;
    std::vector<Column> m_columns;
    bool m_hasColours = false;
    ColumnBuffers m_buffers;
    std::size_t m_scan = 0;     // from 1; 0: before the first
    std::uint64_t m_point = 0;  // of the scan
    std::uint64_t m_holes = 0;  // since the first point
};

}  // namespace tarvo::exchange::ptx
