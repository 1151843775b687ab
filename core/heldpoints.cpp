#include "core/heldpoints.h"

#include "core/error.h"

#include <algorithm>

namespace tarvo::core {

namespace {

constexpr std::size_t batchBytes = 16 << 20;
constexpr std::size_t largestBatch = 1 << 16;

std::size_t valueBytes(const std::vector<ReadColumn>& columns) {
    std::size_t bytes = 0;
    for (const ReadColumn& column : columns)
        bytes += column.stride;
    return bytes;
}

[[noreturn]] void throwTwice(std::uint64_t id) {
    throw Failure("The id " + std::to_string(id) + " occurs twice.",
                  "Points are compared by their ids. \"qrbtool check\" looks for damage.");
}

}  // namespace

PointBatches::PointBatches(const qrb::Pointcloud& database, const PointSelection& selection,
                           const std::vector<ReadColumn>& columns)
    : m_query(selection.query(database)),
      m_columns(columns),
      m_size(static_cast<std::uint32_t>(
          std::clamp<std::size_t>(batchBytes / (valueBytes(columns) + 8), 1, largestBatch))),
      m_ids(m_size),
      m_buffers(columns.size()) {
    m_query.bind(database.pointAttributes().pointIdName(), qrb::pointcloud::DataType::UINT64,
                 m_ids.data(), sizeof m_ids[0]);
    for (std::size_t i = 0; i < columns.size(); ++i) {
        m_buffers[i].resize((columns[i].stride * m_size + 7) / 8);
        m_query.bind(columns[i].attribute, columns[i].type, m_buffers[i].data(),
                     static_cast<std::int32_t>(columns[i].stride));
    }
}

std::size_t HeldPoints::bytesOf(const std::vector<ReadColumn>& columns) {
    return valueBytes(columns) + sizeof(Entry) + 1;
}

HeldPoints::HeldPoints(const std::vector<ReadColumn>& columns, std::uint64_t points)
    : m_columns(columns), m_values(columns.size()), m_found(points) {
    m_entries.reserve(points);
    for (std::size_t i = 0; i < columns.size(); ++i)
        m_values[i].reserve(points * columns[i].stride);
}

void HeldPoints::add(const PointBatches& batch, std::uint32_t count) {
    if (count > m_found.size() - m_entries.size())
        throw Failure("The database holds more points than it tells.",
                      "\"qrbtool check\" looks for damage.");
    for (std::uint32_t row = 0; row < count; ++row)
        m_entries.push_back({batch.id(row), static_cast<std::uint32_t>(m_entries.size())});
    for (std::size_t i = 0; i < m_columns.size(); ++i)
        m_values[i].insert(m_values[i].end(), batch.values(i, 0), batch.values(i, count));
}

void HeldPoints::sort() {
    const auto before = [](const Entry& a, const Entry& b) { return a.id < b.id; };
    if (!std::is_sorted(m_entries.begin(), m_entries.end(), before))
        std::sort(m_entries.begin(), m_entries.end(), before);
    for (std::size_t i = 1; i < m_entries.size(); ++i)
        if (m_entries[i].id == m_entries[i - 1].id)
            throwTwice(m_entries[i].id);
}

std::optional<std::uint32_t> HeldPoints::find(std::uint64_t id) {
    // Both sides are mostly in the same order.
    if (m_next >= m_entries.size() || m_entries[m_next].id != id)
        m_next = static_cast<std::size_t>(
            std::lower_bound(m_entries.begin(), m_entries.end(), id,
                             [](const Entry& entry, std::uint64_t of) { return entry.id < of; }) -
            m_entries.begin());
    if (m_next >= m_entries.size() || m_entries[m_next].id != id)
        return std::nullopt;
    const std::uint32_t row = m_entries[m_next++].row;
    if (m_found[row])
        throwTwice(id);
    m_found[row] = true;
    return row;
}

}  // namespace tarvo::core
