// The points of a text file of separated values as columns.
#pragma once

#include "exchange/csv/linereader.h"
#include "exchange/table/pointsource.h"

namespace tarvo::exchange::csv {

class CsvSource : public PointSource {
public:
    // Reads the header line and looks at every value once, to tell whole numbers from others.
    // Throws Failure, naming line and column of what can't be read. Columns have a fault where ids
    // are none, or where a whole number is none that a double holds beside numbers of other kinds.
    explicit CsvSource(const std::string& fileName, const OpenProgress& progress = {});

    const std::string& fileName() const override { return m_fileName; }
    const std::vector<Column>& columns() const override { return m_columns; }
    double progress() const override;
    void rewind() override;
    std::uint32_t largestBatch() const override { return m_largestBatch; }
    std::uint32_t next() override;
    const void* values(std::size_t column) const override { return m_values[column].data(); }
    // Of the file, from 1; row: of the last batch.
    std::uint64_t lineOf(std::uint32_t row) const { return m_rowLines[row]; }

private:
    void readHeader();
    void findTypes();
    bool nextRow();
    // Decimal commas become points.
    void changeCommas(std::string_view line);
    void parse(std::size_t column, std::uint32_t row);
    [[noreturn]] void failCell(std::size_t column, std::string_view text) const;

    std::string m_fileName;
    LineReader m_lines;
    char m_separator = ',';
    std::vector<std::string> m_names;  // of the header line
    std::vector<Column> m_columns;
    std::uint32_t m_largestBatch = batchSize;
    std::vector<std::vector<std::uint64_t>> m_values;  // 8 bytes each, of the column's type
    std::vector<std::uint64_t> m_rowLines;
    std::vector<std::string_view> m_fields;
    std::vector<std::string> m_storage;
    std::vector<std::string> m_changed;  // cells whose commas became points
    bool m_isLooking = true;             // at the types
    std::uint64_t m_pointLine = 0;       // first line with a decimal point
    std::uint64_t m_commaLine = 0;       // the same with a decimal comma
};

}  // namespace tarvo::exchange::csv
