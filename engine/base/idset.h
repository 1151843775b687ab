// A set of 64-bit numbers, compressed: small for the dense runs that ids mostly are.
#pragma once

#include <cstdint>
#include <memory>

namespace tarvo::engine {

class IdSet {
public:
    IdSet();
    ~IdSet();
    IdSet(IdSet&&) noexcept;
    IdSet& operator=(IdSet&&) noexcept;

    // Whether it was not in the set.
    bool insert(std::uint64_t id);
    // Whether it was in the set.
    bool erase(std::uint64_t id);
    bool contains(std::uint64_t id) const;
    std::uint64_t size() const;

private:
    struct Impl;
    std::unique_ptr<Impl> m;
};

}  // namespace tarvo::engine
