// Memory for the codes of columns: what holds many thousands of them comes and goes with every leaf
// that is read. It is taken from the system in slabs of some megabytes, on large pages where there
// are such, and given back when nothing stands in a slab any more. Any thread.
#pragma once

#include <cstddef>
#include <new>
#include <utility>

namespace tarvo::engine {

// At least so many bytes, aligned for every type; throws std::bad_alloc. Small ones come from the
// ordinary heap.
void* takeMemory(std::size_t bytes);
// bytes: as it was taken with.
void giveMemory(void* memory, std::size_t bytes) noexcept;

// For standard containers; leaves what it makes room for as it is where nothing else is asked for.
template <typename T>
struct SlabAllocator {
    using value_type = T;

    SlabAllocator() = default;
    template <typename Other>
    SlabAllocator(const SlabAllocator<Other>&) {}

    T* allocate(std::size_t count) { return static_cast<T*>(takeMemory(count * sizeof(T))); }
    void deallocate(T* memory, std::size_t count) noexcept {
        giveMemory(memory, count * sizeof(T));
    }
    template <typename Made>
    void construct(Made* place) {
        ::new (static_cast<void*>(place)) Made;
    }
    template <typename Made, typename... Arguments>
    void construct(Made* place, Arguments&&... arguments) {
        ::new (static_cast<void*>(place)) Made(std::forward<Arguments>(arguments)...);
    }
    bool operator==(const SlabAllocator&) const { return true; }
};

}  // namespace tarvo::engine
