#include "engine/base/slabs.h"

#include <array>
#include <bit>
#include <cstdint>
#include <mutex>

#ifdef __linux__
#include <sys/mman.h>
#endif

namespace tarvo::engine {

namespace {

constexpr std::size_t slabSize = std::size_t(4) << 20;  // and its alignment
constexpr std::size_t smallest = 8 << 10;               // less comes from the heap
constexpr std::size_t largest = 512 << 10;              // and so does more
constexpr std::size_t classCount = 4 * 6 + 1;
// A large page is cleared as a whole when it is first touched, which is dear to who needs little.
constexpr std::size_t slabsOfSmallPages = 8;

// Four sizes to each power of two.
std::size_t classOf(std::size_t bytes) {
    if (bytes <= smallest)
        return 0;
    const unsigned power = static_cast<unsigned>(std::bit_width(bytes - 1));  // 2^power >= bytes
    const std::size_t step = std::size_t(1) << (power - 3);
    const std::size_t quarter = (bytes - 1 - (std::size_t(4) * step)) / step;
    return (power - 14) * 4 + quarter + 1;
}

std::size_t sizeOf(std::size_t number) {
    if (number == 0)
        return smallest;
    const std::size_t step = std::size_t(1) << ((number - 1) / 4 + 11);
    return step * (5 + (number - 1) % 4);
}

// Begins each slab; its pieces are all of one class.
struct Slab {
    Slab* next = nullptr;  // with room, of the class
    Slab* before = nullptr;
    void* free = nullptr;       // a list through the pieces that were given back
    std::size_t untouched = 0;  // bytes from the beginning that were never given out follow here
    std::size_t used = 0;       // pieces
    std::size_t number = 0;     // of the class
};
constexpr std::size_t headerSize = 4096;

Slab* slabOf(void* memory) {
    return reinterpret_cast<Slab*>(reinterpret_cast<std::uintptr_t>(memory) & ~(slabSize - 1));
}

class Slabs {
public:
    void* take(std::size_t number) {
        const std::lock_guard guard(m_mutex);
        if (!m_withRoom[number])
            link(makeSlab(number));
        Slab& slab = *m_withRoom[number];
        void* piece = slab.free;
        if (piece) {
            slab.free = *static_cast<void**>(piece);
        } else {
            piece = reinterpret_cast<char*>(&slab) + slab.untouched;
            slab.untouched += sizeOf(number);
        }
        ++slab.used;
        if (!hasRoom(slab))
            unlink(slab);
        return piece;
    }
    void give(void* piece) noexcept {
        const std::lock_guard guard(m_mutex);
        Slab& slab = *slabOf(piece);
        const bool hadRoom = hasRoom(slab);
        *static_cast<void**>(piece) = slab.free;
        slab.free = piece;
        --slab.used;
        if (!hadRoom)
            link(&slab);
        // The last one of a class stays, so that taking and giving by turns costs nothing.
        if (slab.used == 0 && (slab.next || slab.before)) {
            unlink(slab);
            --m_count;
            ::operator delete(&slab, std::align_val_t(slabSize));
        }
    }

private:
    static bool hasRoom(const Slab& slab) {
        return slab.free || slab.untouched + sizeOf(slab.number) <= slabSize;
    }
    Slab* makeSlab(std::size_t number) {
        void* const memory = ::operator new(slabSize, std::align_val_t(slabSize));
        ++m_count;
#ifdef __linux__
        if (m_count > slabsOfSmallPages)
            (void)::madvise(memory, slabSize, MADV_HUGEPAGE);
#endif
        Slab* const slab = ::new (memory) Slab;
        slab->untouched = headerSize;
        slab->number = number;
        return slab;
    }
    void link(Slab* slab) {
        Slab*& first = m_withRoom[slab->number];
        slab->next = first;
        slab->before = nullptr;
        if (first)
            first->before = slab;
        first = slab;
    }
    void unlink(Slab& slab) {
        (slab.before ? slab.before->next : m_withRoom[slab.number]) = slab.next;
        if (slab.next)
            slab.next->before = slab.before;
        slab.next = slab.before = nullptr;
    }

    std::mutex m_mutex;
    std::array<Slab*, classCount> m_withRoom{};
    std::size_t m_count = 0;
};

// Never destroyed: columns may outlive everything else that is static.
Slabs& slabs() {
    alignas(Slabs) static std::byte place[sizeof(Slabs)];
    static Slabs& all = *::new (place) Slabs;
    return all;
}

// The address sanitizer is to see the borders of each piece.
#if defined(__SANITIZE_ADDRESS__)
constexpr bool hasSlabs = false;
#elif defined(__has_feature)
constexpr bool hasSlabs = !__has_feature(address_sanitizer);
#else
constexpr bool hasSlabs = true;
#endif

bool isFromSlab(std::size_t bytes) {
    return hasSlabs && bytes >= smallest && bytes <= largest;
}

}  // namespace

void* takeMemory(std::size_t bytes) {
    return isFromSlab(bytes) ? slabs().take(classOf(bytes)) : ::operator new(bytes);
}

void giveMemory(void* memory, std::size_t bytes) noexcept {
    if (isFromSlab(bytes))
        slabs().give(memory);
    else
        ::operator delete(memory);
}

}  // namespace tarvo::engine
