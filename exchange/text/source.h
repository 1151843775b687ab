// The points of a text of numbers without quotes: XYZ, PTS and others like them.
#pragma once

#include "exchange/csv/columntype.h"
#include "exchange/csv/linereader.h"
#include "exchange/table/pointsource.h"
#include "exchange/text/fields.h"

namespace tarvo::exchange::text {

class TextSource : public PointSource {
public:
    // names: of the columns, as a user gives them; "-" passes one over. Empty: those of a header
    // line that blanks separate, else what their number tells: x y z, intensity, r g b. Looks at
    // every value once. Throws Failure, naming line and column of what can't be read; faults are
    // those of texts with a header line.
    explicit TextSource(const std::string& fileName, const std::vector<std::string>& names = {},
                        const OpenProgress& progress = {});

    const std::string& fileName() const override { return m_fileName; }
    const std::vector<Column>& columns() const override { return m_columns; }
    double progress() const override;
    void rewind() override { m_lines.rewind(); }
    std::uint32_t largestBatch() const override { return m_largestBatch; }
    std::uint32_t next() override;
    const void* values(std::size_t column) const override { return m_values[column].data(); }
    std::vector<std::string> notes() const override;

private:
    // The first line that is neither comment nor a count; separator and header follow from it.
    void readBegin(bool isNamed);
    void findTypes(const std::vector<std::string>& names);
    // isTold: by the user or the file.
    void nameColumns(const std::vector<std::string>& names, bool isTold);
    std::vector<std::string> defaultNames() const;
    // False at the end. The fields refer to the line.
    bool nextRow();
    void refuseMixedPoints(std::string_view line);
    void parse(std::size_t column, std::uint32_t row);
    std::string line() const;
    std::string nameOf(std::size_t field) const;

    std::string m_fileName;
    csv::LineReader m_lines;
    Separator m_separator = Separator::Blanks;
    std::uint64_t m_headerLine = 0;  // 0: there is none
    std::vector<std::string> m_header;
    std::size_t m_width = 0;  // fields of a line
    std::uint64_t m_pointCount = 0;
    std::uint64_t m_announced = 0;  // by the counts before the points
    bool m_isAnnounced = false;
    bool m_isLooking = true;               // at the types: counts are taken now
    std::uint64_t m_pointLine = 0;         // first line with a decimal point
    std::uint64_t m_commaLine = 0;         // the same with a decimal comma
    std::vector<csv::ColumnType> m_types;  // of the fields
    std::vector<std::size_t> m_fieldOf;    // per column
    std::vector<Column> m_columns;
    std::uint32_t m_largestBatch = batchSize;
    std::vector<std::vector<std::uint64_t>> m_values;  // 8 bytes each, of the column's type
    std::string m_changed;                             // a line whose commas became points
    std::vector<std::string_view> m_fields;
};

}  // namespace tarvo::exchange::text
