#include "exchange/table/shapedsource.h"

#include "qrb/visitvalues.h"

#include <algorithm>

namespace tarvo::exchange {

namespace {

constexpr const char* coordinates = "tarvo.xyz";

}  // namespace

ShapedSource::ShapedSource(std::unique_ptr<PointSource> inner, std::shared_ptr<core::Shaper> shaper,
                           bool isFirst, std::function<void()> check, std::size_t shown)
    : m_inner(std::move(inner)),
      m_shaper(std::move(shaper)),
      m_isFirst(isFirst),
      m_check(std::move(check)) {
    const std::vector<Column>& columns = m_inner->columns();
    m_columns.assign(columns.begin(), columns.begin() + static_cast<std::ptrdiff_t>(
                                                            std::min(shown, columns.size())));
    for (const Column& column : m_columns) {
        m_values.emplace_back(m_inner->largestBatch() * dataTypeSize(column.type));
    }
    if (!m_shaper->shape().needsCoordinates()) {
        return;
    }
    for (std::uint32_t element = 0; element < 3; ++element) {
        const auto found = std::ranges::find_if(columns, [element](const Column& column) {
            return column.attribute == coordinates && column.element == element;
        });
        if (found == columns.end()) {
            throw core::Failure("\"" + m_inner->fileName() + "\" has no coordinates \"" +
                                    coordinates + "\" by which its points could be chosen.",
                                "Leave --bounds, --polygon and --thin out.");
        }
        m_coordinates[element] = static_cast<std::size_t>(found - columns.begin());
    }
    m_places.resize(std::size_t{3} * m_inner->largestBatch());
}

void ShapedSource::rewind() {
    m_inner->rewind();
    if (m_isFirst) {
        m_shaper->restart();
    }
}

void ShapedSource::pick(std::uint32_t count) {
    if (!m_places.empty()) {
        for (std::size_t axis = 0; axis < 3; ++axis) {
            const std::size_t column = m_coordinates[axis];
            visitValues(m_inner->columns()[column].type, m_inner->values(column),
                        [&](const auto* values) {
                            for (std::uint32_t i = 0; i < count; ++i) {
                                m_places[3 * i + axis] = static_cast<double>(values[i]);
                            }
                        });
        }
    }
    m_shaper->pick(count, m_places.data(), m_rows);
}

std::uint32_t ShapedSource::next() {
    while (const std::uint32_t count = m_inner->next()) {
        pick(count);
        if (m_rows.empty()) {
            if (m_check) {
                m_check();
            }
            continue;
        }
        for (std::size_t i = 0; i < m_columns.size(); ++i) {
            const auto* const from = static_cast<const std::uint8_t*>(m_inner->values(i));
            core::copyRows(m_values[i].data(), from, dataTypeSize(m_columns[i].type), m_rows);
        }
        return static_cast<std::uint32_t>(m_rows.size());
    }
    return 0;
}

std::vector<std::unique_ptr<PointSource>> shaped(std::vector<std::unique_ptr<PointSource>> sources,
                                                 const core::Shape& shape,
                                                 const std::function<void()>& check) {
    if (shape.isEmpty()) {
        return sources;
    }
    const auto shaper = std::make_shared<core::Shaper>(shape);
    for (auto& source : sources) {
        const bool isFirst = &source == &sources.front();
        source = std::make_unique<ShapedSource>(std::move(source), shaper, isFirst, check);
    }
    return sources;
}

}  // namespace tarvo::exchange
