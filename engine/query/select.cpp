#include "engine/query/select.h"

#include <algorithm>
#include <numeric>

namespace tarvo::engine::query {

void SelectQuery::bind(std::string_view attribute, std::uint32_t type, void* buffer,
                       std::int32_t stride) {
    if (m_started)
        throw Failure(ErrorCode::State, "The query has begun: buffers must be bound before.");
    m_bindings.push_back(makeBinding(m_scan.state().attributes, attribute, type, buffer, stride));
}

void SelectQuery::copy(std::size_t begin, std::size_t count, std::size_t row) const {
    std::vector<std::uint32_t> all;
    std::span<const std::uint32_t> rows;
    if (m_hits->all) {
        all.resize(count);
        std::iota(all.begin(), all.end(), static_cast<std::uint32_t>(begin));
        rows = all;
    } else {
        rows = std::span(m_hits->selection).subspan(begin, count);
    }
    std::size_t column = 0;
    for (const Binding& binding : m_bindings) {
        const schema::Attribute& attribute = m_scan.state().attributes[binding.elements.attribute];
        const std::size_t size = sizeOfType(binding.type);
        for (std::uint32_t e = 0; e < binding.elements.count; ++e)
            writeValues(
                attribute, *m_hits->columns[column++], rows, binding.type,
                binding.buffer + static_cast<std::ptrdiff_t>(row) * binding.stride + e * size,
                binding.stride);
    }
}

std::uint32_t SelectQuery::next(std::uint32_t count) {
    if (!m_started) {
        m_started = true;
        std::vector<filter::ElementRef> columns;
        for (const Binding& binding : m_bindings)
            for (std::uint32_t e = 0; e < binding.elements.count; ++e)
                columns.push_back({binding.elements.attribute, binding.elements.first + e});
        m_scan.setColumns(std::move(columns));
    }
    const store::Container::ReadScope scope(m_session.container());
    std::uint32_t done = 0;
    while (done < count && !m_ended) {
        if (!m_hits) {
            m_hits = m_scan.next();
            m_at = 0;
            if (!m_hits) {
                m_ended = true;
                break;
            }
        }
        const auto part =
            static_cast<std::uint32_t>(std::min<std::uint64_t>(count - done, m_hits->count - m_at));
        if (!m_bindings.empty())
            copy(m_at, part, done);
        m_at += part;
        done += part;
        if (m_at == m_hits->count)
            m_hits.reset();
    }
    return done;
}

std::uint32_t SelectQuery::progress() const {
    if (m_ended)
        return 100;
    if (m_scan.total() == 0)
        return 0;
    return static_cast<std::uint32_t>(
        std::min<std::uint64_t>(99, m_scan.passed() * 100 / m_scan.total()));
}

}  // namespace tarvo::engine::query
