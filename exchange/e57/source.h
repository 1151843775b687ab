// The points of an E57 file as columns: all scans, with their poses applied.
#pragma once

#include "exchange/e57/columns.h"
#include "exchange/e57/vectorreader.h"
#include "exchange/table/columnbuffers.h"

#include <memory>

namespace tarvo::exchange::e57 {

class E57Source : public PointSource {
public:
    // Reads the description of all scans. Throws Failure.
    explicit E57Source(const std::string& fileName);

    const std::string& fileName() const override { return m_file.fileName(); }
    const std::vector<Column>& columns() const override { return m_plan.columns(); }
    double progress() const override;
    void rewind() override;
    std::uint32_t largestBatch() const override { return m_buffers.capacity(); }
    // Points that their scan calls invalid are left out.
    std::uint32_t next() override;
    const void* values(std::size_t column) const override { return m_buffers.of(column); }
    std::vector<Affine> coordinateAxes() const override { return m_plan.axes(); }
    // The system of "coordinateMetadata", where that is well-known text.
    Origin origin() const override;
    // "e57.file" and "e57.scans": what stands in the file besides points and pictures.
    std::vector<std::pair<std::string, std::string>> metaData() const override;
    std::vector<std::string> notes() const override;

private:
    void checkSections();
    // To the next scan that has points; false behind the last.
    bool nextScan();
    void findValid(std::uint32_t count);
    void takeCoordinates(std::uint32_t count, std::uint32_t row);
    void take(const Filling& filling, std::uint32_t count, std::uint32_t row);
    void takeColours(const Filling& filling, std::uint32_t count, std::uint32_t row);

    PagedFile m_file;
    Document m_document;
    ColumnPlan m_plan;
    ColumnBuffers m_buffers;
    std::uint64_t m_recordCount = 0;
    std::size_t m_scan = 0;  // from 1; 0: before the first
    std::unique_ptr<VectorReader> m_reader;
    std::vector<Filling> m_fillings;
    std::uint64_t m_done = 0;            // records since the first
    std::uint64_t m_invalid = 0;         // of those
    std::uint64_t m_cut = 0;             // colours beyond their limits
    std::uint64_t m_blurred = 0;         // values, see blurredNote
    std::uint64_t m_longer = 0;          // scans with records that they don't tell
    std::vector<std::uint32_t> m_valid;  // places of the points that are taken
    std::vector<double> m_numbers[3];
    std::vector<std::int64_t> m_whole;
    std::vector<std::int64_t> m_flags;
};

}  // namespace tarvo::exchange::e57
