#include "engine/base/idset.h"

#if defined(__GNUC__)
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wpedantic"
#pragma GCC diagnostic ignored "-Wunused-parameter"
#endif
#include <roaring/roaring64map.hh>
#if defined(__GNUC__)
#pragma GCC diagnostic pop
#endif

namespace tarvo::engine {

struct IdSet::Impl {
    Roaring64Map ids;
};

IdSet::IdSet() : m(std::make_unique<Impl>()) {}
IdSet::~IdSet() = default;
IdSet::IdSet(IdSet&&) noexcept = default;
IdSet& IdSet::operator=(IdSet&&) noexcept = default;

bool IdSet::insert(std::uint64_t id) {
    if (m->ids.contains(id))
        return false;
    m->ids.add(id);
    return true;
}

bool IdSet::erase(std::uint64_t id) {
    if (!m->ids.contains(id))
        return false;
    m->ids.remove(id);
    return true;
}

bool IdSet::contains(std::uint64_t id) const {
    return m->ids.contains(id);
}

std::uint64_t IdSet::size() const {
    return m->ids.cardinality();
}

}  // namespace tarvo::engine
