// Little-endian numbers in byte buffers: what the file holds is written and read through these.
// A reader checks every access and throws Failure(Damaged) past the end.
#pragma once

#include "engine/base/error.h"

#include <bit>
#include <cstdint>
#include <cstring>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

namespace tarvo::engine {

static_assert(std::endian::native == std::endian::little, "the file format is little-endian");

using Bytes = std::vector<std::uint8_t>;
using ByteSpan = std::span<const std::uint8_t>;

// The 64-bit checksum (XXH3) that references carry for what they refer to.
std::uint64_t checksum(ByteSpan bytes);

class ByteWriter {
public:
    explicit ByteWriter(Bytes& out) : m_out(out) {}

    template <typename T>
    void number(T value) {
        static_assert(std::is_arithmetic_v<T>);
        const std::size_t at = m_out.size();
        m_out.resize(at + sizeof(T));
        std::memcpy(m_out.data() + at, &value, sizeof(T));
    }
    // Seven bits a byte, lowest first, the top bit set on all but the last (LEB128).
    void varint(std::uint64_t value) {
        while (value >= 0x80) {
            m_out.push_back(static_cast<std::uint8_t>(value | 0x80));
            value >>= 7;
        }
        m_out.push_back(static_cast<std::uint8_t>(value));
    }
    void bytes(ByteSpan data) { m_out.insert(m_out.end(), data.begin(), data.end()); }

private:
    Bytes& m_out;
};

class ByteReader {
public:
    // what names the object in errors.
    ByteReader(ByteSpan data, std::string_view what) : m_data(data), m_what(what) {}

    template <typename T>
    T number() {
        static_assert(std::is_arithmetic_v<T>);
        T value;
        std::memcpy(&value, take(sizeof(T)).data(), sizeof(T));
        return value;
    }
    std::uint64_t varint() {
        std::uint64_t value = 0;
        for (unsigned shift = 0; shift < 64; shift += 7) {
            const std::uint8_t byte = take(1)[0];
            value |= static_cast<std::uint64_t>(byte & 0x7f) << shift;
            if (byte < 0x80)
                return value;
        }
        fail("an unending number");
    }
    // A varint that must not exceed limit.
    std::uint64_t varint(std::uint64_t limit) {
        const std::uint64_t value = varint();
        if (value > limit)
            fail("the number " + std::to_string(value) + " where at most " + std::to_string(limit) +
                 " is possible");
        return value;
    }
    ByteSpan take(std::size_t count) {
        if (count > m_data.size() - m_at)
            fail("its end too early");
        m_at += count;
        return m_data.subspan(m_at - count, count);
    }
    std::size_t left() const { return m_data.size() - m_at; }
    // Throws unless everything was read.
    void finish() const {
        if (left() != 0)
            fail("bytes behind its end");
    }
    [[noreturn]] void fail(const std::string& found) const {
        throw Failure(ErrorCode::Damaged,
                      "The file is damaged: " + std::string(m_what) + " is not readable.",
                      "Found " + found + ".");
    }

private:
    ByteSpan m_data;
    std::string_view m_what;
    std::size_t m_at = 0;
};

}  // namespace tarvo::engine
