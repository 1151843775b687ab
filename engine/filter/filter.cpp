#include "engine/filter/filter.h"

#include "engine/base/error.h"
#include "engine/filter/term.h"

namespace tarvo::engine::filter {

BoundFilter::BoundFilter(const Expression& expression, const schema::AttributeTable& table)
    : m_program(bind(expression, table)) {}
BoundFilter::~BoundFilter() = default;
BoundFilter::BoundFilter(BoundFilter&&) noexcept = default;
BoundFilter& BoundFilter::operator=(BoundFilter&&) noexcept = default;

bool BoundFilter::empty() const {
    return !m_program->root;
}

const std::vector<ElementRef>& BoundFilter::elements() const {
    return m_program->elements;
}

Decision BoundFilter::decide(std::span<const schema::ElementStatistics> statistics) const {
    if (!m_program->root)
        return Decision::All;
    if (statistics.size() != m_program->slots.size())
        throw Failure(ErrorCode::Internal, "A filter got the statistics of other elements.");
    const Truth truth = decideTerm(*m_program->root, m_program->slots, statistics);
    if (!truth.canBeTrue)
        return Decision::None;
    return truth.canBeFalse ? Decision::Look : Decision::All;
}

void BoundFilter::select(std::size_t count, const ColumnSource& columns,
                         Selection& selection) const {
    if (!m_program->root) {
        selection.resize(count);
        for (std::size_t i = 0; i < count; ++i)
            selection[i] = static_cast<std::uint32_t>(i);
        return;
    }
    selection.clear();
    if (!m_program->root->as<Constant>())
        selectPoints(m_program->slots, *m_program->root, m_program->height, count, columns,
                     selection);
}

}  // namespace tarvo::engine::filter
