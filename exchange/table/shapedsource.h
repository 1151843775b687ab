// The points of another source that a shape leaves.
#pragma once

#include "core/shape.h"
#include "exchange/table/pointsource.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace tarvo::exchange {

class ShapedSource : public PointSource {
public:
    // Sources with one shaper are shaped as one: they have to be read one after the other, each to
    // its end, and rewinding the first of them (isFirst) begins anew. shown: columns of the inner
    // source that this one has, the first ones. check is called between batches, many of which may
    // leave nothing; what it throws passes through. Throws Failure if the inner source lacks
    // coordinates that the shape needs.
    ShapedSource(std::unique_ptr<PointSource> inner, std::shared_ptr<core::Shaper> shaper,
                 bool isFirst, std::function<void()> check, std::size_t shown = SIZE_MAX);

    const std::string& fileName() const override { return m_inner->fileName(); }
    const std::vector<Column>& columns() const override { return m_columns; }
    double progress() const override { return m_inner->progress(); }
    void rewind() override;
    std::uint32_t largestBatch() const override { return m_inner->largestBatch(); }
    std::uint32_t next() override;
    const void* values(std::size_t column) const override { return m_values[column].data(); }
    std::vector<Affine> coordinateAxes() const override { return m_inner->coordinateAxes(); }
    Origin origin() const override { return m_inner->origin(); }
    std::vector<std::pair<std::string, std::string>> metaData() const override {
        return m_inner->metaData();
    }
    std::vector<std::string> notes() const override { return m_inner->notes(); }

private:
    void pick(std::uint32_t count);

    std::unique_ptr<PointSource> m_inner;
    std::shared_ptr<core::Shaper> m_shaper;
    bool m_isFirst = false;
    std::function<void()> m_check;
    std::vector<Column> m_columns;
    std::vector<std::vector<std::uint8_t>> m_values;  // per column
    std::size_t m_coordinates[3] = {};                // columns of the inner source
    std::vector<double> m_places;                     // x, y, z of a batch, point by point
    std::vector<std::uint32_t> m_rows;
};

// The sources as they are left by a shape that looks at all of them together; themselves where all
// points stay. check: as above. Throws Failure.
std::vector<std::unique_ptr<PointSource>> shaped(std::vector<std::unique_ptr<PointSource>> sources,
                                                 const core::Shape& shape,
                                                 const std::function<void()>& check);

}  // namespace tarvo::exchange
