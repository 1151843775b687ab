#include "view/nodereader.h"

#include <algorithm>
#include <cmath>

namespace tarvo::view {

namespace {

using qrb::pointcloud::DataType;

constexpr std::uint32_t batchSize = 50'000;

}  // namespace

void NodeReader::read(std::uint32_t place, const std::string& filter,
                      const std::function<void(const PointBatch&)>& take) const {
    const ViewNode& node = m_tree.nodes()[place];
    const CloudSpace& space = m_tree.space();
    const auto size =
        static_cast<std::uint32_t>(std::clamp<std::uint64_t>(node.points, 1, batchSize));
    std::vector<drawing::Vector> places(size);
    std::vector<drawing::Shade> values(size);
    std::vector<std::uint64_t> ids(size);
    qrb::pointcloud::QuerySelect query =
        m_database.select(std::vector<std::uint32_t>{node.id}, filter);
    for (std::uint32_t i = 0; i < space.dimensions; ++i)
        query.bind(space.attribute + "[" + std::to_string(i) + "]", DataType::DOUBLE, &places[0][i],
                   sizeof(drawing::Vector));
    for (std::size_t i = 0; i < m_colouring.elements().size(); ++i)
        query.bind(m_colouring.elements()[i], DataType::DOUBLE, &values[0][i],
                   sizeof(drawing::Shade));
    query.bind(m_database.pointAttributes().pointIdName(), DataType::UINT64, ids.data(), 8);

    PointBatch batch;
    while (const std::uint32_t count = query.next(size)) {
        batch.places.clear();
        batch.shades.clear();
        batch.ids.clear();
        for (std::uint32_t i = 0; i < count; ++i) {
            if (!std::isfinite(places[i][0]) || !std::isfinite(places[i][1]) ||
                !std::isfinite(places[i][2]))
                continue;
            batch.places.push_back(places[i]);
            batch.shades.push_back(m_colouring.shade(values[i].data(), node));
            batch.ids.push_back(ids[i]);
        }
        take(batch);
    }
}

}  // namespace tarvo::view
