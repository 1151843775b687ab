#include "engine/filter/filter.h"

#include "engine/base/error.h"
#include "engine/filter/term.h"

#include <numeric>

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

Decision BoundFilter::decide(std::span<const schema::ElementStatistics> statistics,
                             Decided* decided) const {
    if (!m_program->root)
        return Decision::All;
    if (statistics.size() != m_program->slots.size())
        throw Failure(ErrorCode::Internal, "A filter got the statistics of other elements.");
    if (decided)
        decided->assign(m_program->terms, Decision::Look);
    return decisionOf(decideTerm(*m_program->root, m_program->slots, statistics, decided));
}

void BoundFilter::select(std::size_t count, const BlockSource& blocks, Selection& selection,
                         const Decided& decided) const {
    if (!m_program->root) {
        selection.resize(count);
        std::iota(selection.begin(), selection.end(), 0u);
        return;
    }
    selection.clear();
    if (!m_program->root->as<Constant>())
        selectPoints(*m_program, count, blocks, decided, &selection);
}

std::size_t BoundFilter::count(std::size_t count, const BlockSource& blocks,
                               const Decided& decided) const {
    if (!m_program->root)
        return count;
    if (m_program->root->as<Constant>())
        return 0;
    return selectPoints(*m_program, count, blocks, decided, nullptr);
}

}  // namespace tarvo::engine::filter
