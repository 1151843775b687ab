#include "engine/index/packedcolumn.h"

#include <algorithm>
#include <bit>

namespace tarvo::engine::index {

template <typename Function>
decltype(auto) PackedColumn::withBytes(unsigned bytes, Function&& function) {
    switch (bytes) {
        case 0:
            return function(std::integral_constant<unsigned, 0>{});
        case 1:
            return function(std::integral_constant<unsigned, 1>{});
        case 2:
            return function(std::integral_constant<unsigned, 2>{});
        case 3:
            return function(std::integral_constant<unsigned, 3>{});
        case 4:
            return function(std::integral_constant<unsigned, 4>{});
        case 5:
            return function(std::integral_constant<unsigned, 5>{});
        case 6:
            return function(std::integral_constant<unsigned, 6>{});
        case 7:
            return function(std::integral_constant<unsigned, 7>{});
        default:
            return function(std::integral_constant<unsigned, 8>{});
    }
}

std::uint64_t PackedColumn::operator[](std::size_t index) const {
    if (m_counts)
        return m_base + index;
    return withBytes(m_bytes, [&]<unsigned bytes>(std::integral_constant<unsigned, bytes>) {
        return m_base + load<bytes>(m_data.data() + index * bytes);
    });
}

// Twice as much as before at least, so that many small pieces cost no more than few large ones.
void PackedColumn::grow(std::size_t count) {
    const std::size_t size = (m_count + count) * m_bytes + padding;
    if (size > m_data.capacity())
        m_data.reserve(std::max(size, m_data.capacity() * 2));
    m_data.resize(size);
}

// Writes codes behind the last one; the column must have room for them.
template <typename CodeAt>
void PackedColumn::store(std::size_t count, CodeAt codeAt) {
    withBytes(m_bytes, [&]<unsigned bytes>(std::integral_constant<unsigned, bytes>) {
        if constexpr (bytes > 0) {
            std::uint8_t* out = m_data.data() + m_count * bytes;
            for (std::size_t i = 0; i < count; ++i, out += bytes) {
                const std::uint64_t code = codeAt(i) - m_base;
                // A few bytes more than are meant, which the next code writes anew.
                std::memcpy(out, &code, std::bit_ceil(bytes));
            }
        }
    });
    m_count += count;
}

// Packs the codes that are there with another base and size.
void PackedColumn::repack(std::uint64_t base, unsigned bytes) {
    PackedColumn other(m_width);
    other.m_base = base;
    other.m_bytes = bytes;
    other.m_data.reserve(m_data.capacity() / std::max(1u, m_bytes) * bytes);
    other.grow(m_count);
    if (m_counts) {
        other.store(m_count, [this](std::size_t i) { return m_base + i; });
    } else {
        withBytes(m_bytes, [&]<unsigned from>(std::integral_constant<unsigned, from>) {
            other.store(m_count, [this](std::size_t i) {
                return m_base + load<from>(m_data.data() + i * from);
            });
        });
    }
    m_data = std::move(other.m_data);
    m_base = base;
    m_bytes = bytes;
    m_counts = false;
}

void PackedColumn::makeRoomFor(std::uint64_t low, std::uint64_t high) {
    if (m_count == 0) {
        m_data.clear();
        m_bytes = 0;
        m_counts = false;
        m_base = low;
    } else {
        low = std::min(low, m_minimum);
        high = std::max(high, m_maximum);
    }
    const auto largest = [](unsigned bytes) -> std::uint64_t {
        return bytes == 0 ? 0 : ~0ull >> (64 - 8 * bytes);
    };
    if (m_counts || low < m_base || high - m_base > largest(m_bytes)) {
        const auto needed = static_cast<unsigned>((std::bit_width(high - low) + 7) / 8);
        const unsigned bytes = std::max(needed, m_bytes);
        // In the middle of what the bytes can hold, so that it lasts whichever way codes drift.
        repack(low - std::min(low, (largest(bytes) - (high - low)) / 2), bytes);
    }
    m_minimum = low;
    m_maximum = high;
}

template <typename T>
void PackedColumn::append(std::span<const T> codes) {
    if (codes.empty())
        return;
    const bool mayCount = m_count == 0 ? codes.size() > 1 : m_counts;
    if (mayCount) {
        const std::uint64_t first = m_count == 0 ? codes[0] : m_base + m_count;
        std::size_t counting = 0;
        while (counting < codes.size() && codes[counting] == first + counting)
            ++counting;
        if (counting == codes.size()) {
            appendCounting(first, counting);
            return;
        }
    }
    T low = codes[0];
    T high = codes[0];
    for (const T code : codes) {
        low = code < low ? code : low;
        high = code > high ? code : high;
    }
    makeRoomFor(low, high);
    grow(codes.size());
    store(codes.size(), [codes](std::size_t i) { return std::uint64_t(codes[i]); });
}
template void PackedColumn::append(std::span<const std::uint8_t>);
template void PackedColumn::append(std::span<const std::uint16_t>);
template void PackedColumn::append(std::span<const std::uint32_t>);
template void PackedColumn::append(std::span<const std::uint64_t>);

void PackedColumn::append(const schema::Column& codes) {
    codes.visit([this](auto typed) { append(typed); });
}

void PackedColumn::appendConstant(std::uint64_t code, std::size_t count) {
    if (count == 0)
        return;
    makeRoomFor(code, code);
    grow(count);
    store(count, [code](std::size_t) { return code; });
}

void PackedColumn::appendCounting(std::uint64_t first, std::size_t count) {
    if (count == 0)
        return;
    if (m_count == 0) {
        m_data.clear();
        m_bytes = 0;
        m_counts = true;
        m_base = m_minimum = m_maximum = first;
    } else if (!m_counts || first != m_base + m_count) {
        makeRoomFor(first, first + (count - 1));
        grow(count);
        store(count, [first](std::size_t i) { return first + i; });
        return;
    }
    m_count += count;
    m_maximum = std::max(m_maximum, m_base + (m_count - 1));
}

void PackedColumn::shrink() {
    const std::size_t size = bytes() + padding;
    if (m_data.capacity() > size + size / 4) {
        m_data.resize(std::min(size, m_data.size()));
        m_data.shrink_to_fit();
    }
}

void PackedColumn::gather(std::span<const std::uint32_t> rows, schema::Column& out,
                          std::size_t at) const {
    out.visit([&](auto codes) {
        using T = typename decltype(codes)::value_type;
        T* to = codes.data() + at;
        if (m_counts) {
            for (const std::uint32_t row : rows)
                *to++ = static_cast<T>(m_base + row);
            return;
        }
        withBytes(m_bytes, [&]<unsigned bytes>(std::integral_constant<unsigned, bytes>) {
            const std::uint8_t* const data = m_data.data();
            const std::uint64_t base = m_base;
            for (const std::uint32_t row : rows)
                *to++ = static_cast<T>(base + load<bytes>(data + std::size_t(row) * bytes));
        });
    });
}

void PackedColumn::unpack(std::size_t begin, std::span<std::uint64_t> out) const {
    if (m_counts) {
        for (std::size_t i = 0; i < out.size(); ++i)
            out[i] = m_base + begin + i;
        return;
    }
    withBytes(m_bytes, [&]<unsigned bytes>(std::integral_constant<unsigned, bytes>) {
        const std::uint8_t* from = m_data.data() + begin * bytes;
        for (std::uint64_t& code : out) {
            code = m_base + load<bytes>(from);
            from += bytes;
        }
    });
}

void PackedColumn::write(std::vector<std::uint8_t>& out) const {
    const std::uint64_t head[] = {m_count, m_base, m_minimum, m_maximum, m_bytes, m_counts};
    const auto* const bytes = reinterpret_cast<const std::uint8_t*>(head);
    out.insert(out.end(), bytes, bytes + sizeof head);
    out.insert(out.end(), m_data.begin(),
               m_data.begin() + static_cast<std::ptrdiff_t>(m_count * m_bytes));
}

std::span<const std::uint8_t> PackedColumn::read(std::span<const std::uint8_t> in) {
    std::uint64_t head[6];
    std::memcpy(head, in.data(), sizeof head);
    m_count = head[0];
    m_base = head[1];
    m_minimum = head[2];
    m_maximum = head[3];
    m_bytes = static_cast<unsigned>(head[4]);
    m_counts = head[5] != 0;
    const std::size_t size = m_count * m_bytes;
    m_data.assign(size + padding, 0);
    std::memcpy(m_data.data(), in.data() + sizeof head, size);
    return in.subspan(sizeof head + size);
}

}  // namespace tarvo::engine::index
