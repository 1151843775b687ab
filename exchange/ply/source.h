// The vertices of a PLY file as columns: ASCII and binary of either byte order.
#pragma once

#include "exchange/ply/body.h"
#include "exchange/table/pointsource.h"

namespace tarvo::exchange::ply {

class PlySource : public PointSource {
public:
    // Reads and checks the header, and passes over what stands before the vertices. Throws
    // Failure.
    explicit PlySource(const std::string& fileName);

    const std::string& fileName() const override { return m_fileName; }
    const std::vector<Column>& columns() const override { return m_columns; }
    double progress() const override;
    void rewind() override;
    std::uint32_t largestBatch() const override { return m_buffers.capacity(); }
    std::uint32_t next() override;
    const void* values(std::size_t column) const override { return m_buffers.of(column); }
    // "ply.header": comments, elements and properties.
    std::vector<std::pair<std::string, std::string>> metaData() const override;
    std::vector<std::string> notes() const override;

private:
    std::vector<Field> makeColumns();

    std::string m_fileName;
    Header m_header;
    std::vector<Column> m_columns;
    ColumnBuffers m_buffers;
    std::unique_ptr<Body> m_body;
    std::uint64_t m_position = 0;  // vertices read
};

}  // namespace tarvo::exchange::ply
