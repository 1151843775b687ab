#include "core/idranges.h"

#include "core/error.h"

#include <algorithm>

namespace tarvo::core {

namespace {

constexpr std::uint32_t batchSize = 1 << 16;
constexpr std::uint64_t buckets = 1 << 14;

class Divider {
public:
    Divider(const qrb::Pointcloud& database, const PointSelection& selection, std::uint64_t most,
            const std::function<void()>& goOn)
        : m_database(database), m_selection(selection), m_most(most), m_goOn(goOn) {}

    void divide(const IdRange& range) {
        if (range.points <= m_most)
            return put(range);
        if (range.first == range.last)
            throw Failure("The id " + std::to_string(range.first) + " stands for " +
                              std::to_string(range.points) + " points.",
                          "Points are compared by their ids. \"qrbtool check\" looks for damage.");
        const std::uint64_t width = (range.last - range.first) / buckets + 1;
        const std::vector<std::uint64_t> counts = countIn(range, width);
        IdRange whole{range.first, range.first, 0};  // so far
        bool open = false;
        for (std::uint64_t i = 0; i < buckets; ++i) {
            const std::uint64_t first = range.first + i * width;
            const std::uint64_t last =
                range.last - first < width ? range.last : first + (width - 1);
            if (open && whole.points + counts[i] > m_most) {
                put(whole);
                open = false;
            }
            if (counts[i] > m_most) {
                divide({first, last, counts[i]});
            } else {
                whole = open ? IdRange{whole.first, last, whole.points + counts[i]}
                             : IdRange{first, last, counts[i]};
                open = true;
            }
            if (last == range.last)
                break;
        }
        if (open)
            put(whole);
    }

    std::vector<IdRange> ranges;

private:
    void put(const IdRange& range) { ranges.push_back(range); }

    std::vector<std::uint64_t> countIn(const IdRange& range, std::uint64_t width) const {
        const std::string name = m_database.pointAttributes().pointIdName();
        PointSelection selection = m_selection;
        selection.filter = filterOf(range, name);
        auto query = selection.query(m_database);
        std::vector<std::uint64_t> ids(batchSize);
        query.bind(name, qrb::pointcloud::DataType::UINT64, ids.data(), sizeof ids[0]);
        std::vector<std::uint64_t> counts(buckets);
        while (const std::uint32_t count = query.next(batchSize)) {
            for (std::uint32_t i = 0; i < count; ++i)
                ++counts[(ids[i] - range.first) / width];
            m_goOn();
        }
        return counts;
    }

    const qrb::Pointcloud& m_database;
    const PointSelection& m_selection;
    std::uint64_t m_most;
    const std::function<void()>& m_goOn;
};

}  // namespace

std::vector<IdRange> divideIds(const qrb::Pointcloud& database, const PointSelection& selection,
                               std::uint64_t points, std::uint64_t most,
                               const std::function<void()>& goOn) {
    if (points <= most)
        return {{0, UINT64_MAX, points}};
    const auto stat = database.stat();
    const std::uint32_t root = stat.root().id;
    const std::string name = database.pointAttributes().pointIdName();
    const auto type = qrb::pointcloud::DataType::UINT64;
    IdRange all{0, 0, points};
    stat.minimum(root, name, type, &all.first, false);
    stat.maximum(root, name, type, &all.last, false);
    Divider divider(database, selection, most, goOn);
    divider.divide(all);
    divider.ranges.front().first = 0;
    divider.ranges.back().last = UINT64_MAX;
    return std::move(divider.ranges);
}

std::string filterOf(const IdRange& range, const std::string& name) {
    std::string filter;
    if (range.first > 0)
        filter = name + " >= " + std::to_string(range.first);
    if (range.last < UINT64_MAX)
        filter += (filter.empty() ? "" : " && ") + name + " <= " + std::to_string(range.last);
    return filter;
}

}  // namespace tarvo::core
