#include "tests/window/pointtable.h"

#include <utility>

Table tableOf(const tarvo::qrb::Pointcloud& cloud, const std::vector<std::string>& attributes,
              const std::string& filter) {
    constexpr std::uint32_t page = 10'000;
    auto query = cloud.select(filter);
    std::vector<std::uint64_t> ids(page);
    query.bind("tarvo.id", tarvo::qrb::pointcloud::DataType::UINT64, ids.data(), 8);
    std::vector<std::pair<std::uint32_t, std::vector<double>>> columns;
    for (const std::string& name : attributes) {
        const std::uint32_t length = cloud.pointAttributes().get(name).length;
        columns.emplace_back(length, std::vector<double>(std::size_t(page) * length));
    }
    for (std::size_t i = 0; i < attributes.size(); ++i)
        query.bind(attributes[i], tarvo::qrb::pointcloud::DataType::DOUBLE,
                   columns[i].second.data(), static_cast<std::int32_t>(8 * columns[i].first));
    Table table;
    while (const std::uint32_t count = query.next(page)) {
        for (std::uint32_t row = 0; row < count; ++row) {
            auto& values = table[ids[row]];
            for (const auto& [length, buffer] : columns)
                values.insert(values.end(), buffer.begin() + row * length,
                              buffer.begin() + (row + 1) * length);
        }
    }
    return table;
}
