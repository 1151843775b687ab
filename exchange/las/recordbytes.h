// Memory for many records, as it comes: bytes that nobody has written are not touched, and what is
// there is not copied as it grows where the system can move pages.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <new>

namespace tarvo::exchange::las {

class RecordBytes {
public:
    std::uint8_t* data() { return m_bytes.get(); }

    // Room for at least so many bytes. Throws std::bad_alloc.
    void grow(std::size_t size) {
        if (size <= m_size) {
            return;
        }
        size = std::max(size, m_size + m_size / 2);
        void* const moved = std::realloc(m_bytes.get(), size);
        if (moved == nullptr) {
            throw std::bad_alloc();
        }
        (void)m_bytes.release();
        m_bytes.reset(static_cast<std::uint8_t*>(moved));
        m_size = size;
    }

private:
    struct Free {
        void operator()(std::uint8_t* bytes) const { std::free(bytes); }
    };
    std::unique_ptr<std::uint8_t, Free> m_bytes;
    std::size_t m_size = 0;
};

}  // namespace tarvo::exchange::las
