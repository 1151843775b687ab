// Points of a database as columns, for those who write them in another form.
#pragma once

#include "core/pointpages.h"
#include "exchange/table/pointsource.h"

#include <string>
#include <vector>

namespace tarvo::exchange::database {

class DatabaseSource : public PointSource {
public:
    // Reads the elements of the attributes in the types that their definitions need. The database
    // must outlive the source and not be used elsewhere while it reads. Throws qrb::Error, as all
    // reading does.
    DatabaseSource(const qrb::Pointcloud& database, std::string fileName,
                   core::PointSelection selection, const std::vector<std::string>& attributes);

    // How the values of the columns are written as text, one for each.
    const std::vector<core::PointColumn>& formats() const { return m_formats; }

    const std::string& fileName() const override { return m_fileName; }
    const std::vector<Column>& columns() const override { return m_columns; }
    double progress() const override { return m_query.progress() / 100.0; }
    void rewind() override;
    std::uint32_t largestBatch() const override { return m_largestBatch; }
    std::uint32_t next() override { return m_query.next(m_largestBatch); }
    const void* values(std::size_t column) const override { return m_values[column].data(); }
    Origin origin() const override;
    // The items that an import of a LAS file made.
    std::vector<std::pair<std::string, std::string>> metaData() const override;

private:
    void addColumns(const qrb::pointcloud::PointAttribute& definition);

    const qrb::Pointcloud& m_database;
    std::string m_fileName;
    core::PointSelection m_selection;
    std::vector<core::PointColumn> m_formats;
    std::vector<Column> m_columns;
    std::uint32_t m_largestBatch = batchSize;
    std::vector<std::vector<std::uint8_t>> m_values;  // per column
    qrb::pointcloud::QuerySelect m_query;
};

}  // namespace tarvo::exchange::database
