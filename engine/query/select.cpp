#include "engine/query/select.h"

namespace tarvo::engine::query {

void SelectQuery::bind(std::string_view attribute, std::uint32_t type, void* buffer,
                       std::int32_t stride) {
    if (m_started)
        throw Failure(ErrorCode::State, "The query has begun: buffers must be bound before.");
    m_bindings.push_back(makeBinding(m_scan.state().attributes, attribute, type, buffer, stride));
}

void SelectQuery::copy(const HitReader::Portion& portion, std::size_t row) const {
    const Rows rows{portion.begin, portion.count,
                    portion.hits->all ? nullptr : &portion.hits->selection};
    std::size_t column = 0;
    for (const Binding& binding : m_bindings) {
        const schema::Attribute& attribute = m_scan.state().attributes[binding.elements.attribute];
        const std::size_t size = sizeOfType(binding.type);
        for (std::uint32_t e = 0; e < binding.elements.count; ++e)
            writeValues(
                attribute, *portion.hits->columns[column++], rows, binding.type,
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
    const session::Blobs::Scope scope(m_session.blobs());
    try {
        return m_session.reading(m_scan.state(), [&] {
            std::uint32_t done = 0;
            while (done < count) {
                const std::optional<HitReader::Portion> portion = m_reader.next(count - done);
                if (!portion)
                    break;
                if (!m_bindings.empty())
                    copy(*portion, done);
                done += portion->count;
            }
            return done;
        });
    } catch (...) {
        m_reader.fail();
        throw;
    }
}

}  // namespace tarvo::engine::query
