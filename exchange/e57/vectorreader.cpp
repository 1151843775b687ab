#include "exchange/e57/vectorreader.h"

#include "core/error.h"
#include "exchange/bytes.h"
#include "exchange/table/decimal.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <limits>

namespace tarvo::exchange::e57 {

namespace {

constexpr std::size_t padding = 16;  // bytes behind a stream
// What all streams together may hold that records don't use up: they advance side by side.
constexpr std::size_t maximumAhead = 64u << 20;
// Records without any bits are all alike.
constexpr std::uint64_t maximumConstants = 65536;

enum PacketType : std::uint8_t { IndexPacket = 0, DataPacket = 1, EmptyPacket = 2 };

}  // namespace

VectorReader::VectorReader(PagedFile& file, const Scan& scan)
    : m_file(file), m_scan(scan), m_left(scan.recordCount) {
    m_begin = file.logical(scan.offset, "section of a scan");
    std::array<std::uint8_t, 32> header{};
    file.read(m_begin, header.data(), header.size(), "section of a scan");
    const auto length = get<std::uint64_t>(header.data() + 8);
    if (header[0] != 1) {
        file.fail("the section of a scan is of the kind " + std::to_string(header[0]));
    }
    if (length > file.size() - m_begin || length < header.size()) {
        file.fail("the section of a scan is said to take " + std::to_string(length) + " bytes");
    }
    m_end = m_begin + length;
    m_position = file.logical(get<std::uint64_t>(header.data() + 16), "data of a scan");
    if (m_position < m_begin + header.size() || m_position > m_end) {
        file.fail("the data of a scan stands outside of its section");
    }
    for (const Field& field : scan.fields) {
        Stream& stream = m_streams.emplace_back();
        stream.bits = field.bits();
        stream.isKept = stream.bits > 0;
        stream.bytes.resize(padding);
    }
    requireRoom();
}

void VectorReader::requireRoom() const {
    std::uint64_t bits = 0;
    for (const Stream& stream : m_streams) {
        bits += stream.bits;
    }
    const std::uint64_t room = m_end - m_position;
    if (bits == 0 ? m_scan.recordCount > maximumConstants : m_scan.recordCount > room * 8 / bits) {
        m_file.fail(std::to_string(m_scan.recordCount) + " records of " + std::to_string(bits) +
                    " bits do not fit into the " + std::to_string(room) + " bytes of a scan");
    }
}

std::uint64_t VectorReader::available() const {
    std::uint64_t count = m_left;
    for (const Stream& stream : m_streams) {
        if (stream.isKept) {
            count =
                std::min<std::uint64_t>(count, (stream.size * 8 - stream.position) / stream.bits);
        }
    }
    return count;
}

std::uint32_t VectorReader::prepare(std::uint32_t maximum) {
    while (m_left > 0 && available() == 0) {
        readPacket();
    }
    return static_cast<std::uint32_t>(std::min<std::uint64_t>(available(), maximum));
}

void VectorReader::readPacket() {
    std::array<std::uint8_t, 6> header{};
    if (m_end - m_position < header.size()) {
        m_file.fail("the data of a scan ends " + std::to_string(m_left) +
                    " records before its last one");
    }
    m_file.read(m_position, header.data(), header.size(), "packet");
    const std::size_t length = get<std::uint16_t>(header.data() + 2) + std::size_t{1};
    if (length > m_end - m_position || length < header.size()) {
        m_file.fail("a packet of a scan has " + std::to_string(length) + " bytes, where " +
                    std::to_string(m_end - m_position) + " are left");
    }
    if (header[0] == IndexPacket || header[0] == EmptyPacket) {
        m_position += length;
        return;
    }
    const std::size_t count = get<std::uint16_t>(header.data() + 4);
    if (header[0] != DataPacket || count != m_streams.size()) {
        m_file.fail("a packet of a scan is of the kind " + std::to_string(header[0]) + " with " +
                    std::to_string(count) + " of " + std::to_string(m_streams.size()) + " fields");
    }
    m_packet.resize(length);
    m_file.read(m_position, m_packet.data(), length, "packet");
    std::size_t at = header.size() + 2 * count;
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t size = header.size() + 2 * i + 2 <= length
                                     ? get<std::uint16_t>(m_packet.data() + header.size() + 2 * i)
                                     : 0;
        if (at > length || size > length - at) {
            m_file.fail("the fields of a packet take more bytes than the packet has");
        }
        append(m_streams[i], m_packet.data() + at, size);
        at += size;
    }
    m_position += length;
    std::size_t ahead = 0;
    for (const Stream& stream : m_streams) {
        ahead += stream.size - stream.position / 8;
    }
    if (ahead > maximumAhead) {
        m_file.fail("the fields of a scan stand too far apart");
    }
}

void VectorReader::append(Stream& stream, const std::uint8_t* bytes, std::size_t size) {
    if (!stream.isKept) {
        return;
    }
    // What was taken goes when that moves no more bytes than were taken.
    const std::size_t done = stream.position / 8;
    if (done * 2 >= stream.size) {
        stream.bytes.erase(stream.bytes.begin(),
                           stream.bytes.begin() + static_cast<std::ptrdiff_t>(done));
        stream.position %= 8;
        stream.size -= done;
    }
    stream.bytes.resize(stream.size);
    stream.bytes.insert(stream.bytes.end(), bytes, bytes + size);
    stream.size += size;
    stream.bytes.resize(stream.size + padding);
}

void VectorReader::wholeNumbers(std::size_t field, std::uint32_t count,
                                std::int64_t* values) const {
    const Stream& stream = m_streams[field];
    const auto first = static_cast<std::uint64_t>(m_scan.fields[field].minimum);
    if (stream.bits == 0) {
        std::fill_n(values, count, m_scan.fields[field].minimum);
        return;
    }
    const std::uint64_t mask = ~std::uint64_t{0} >> (64 - stream.bits);
    std::size_t position = stream.position;
    for (std::uint32_t i = 0; i < count; ++i, position += stream.bits) {
        const std::uint8_t* const bytes = stream.bytes.data() + position / 8;
        const unsigned shift = position % 8;
        std::uint64_t value = get<std::uint64_t>(bytes) >> shift;
        if (shift + stream.bits > 64) {
            value |= static_cast<std::uint64_t>(bytes[8]) << (64 - shift);
        }
        values[i] = static_cast<std::int64_t>((value & mask) + first);
    }
}

std::uint64_t VectorReader::numbers(std::size_t field, std::uint32_t count, double* values) const {
    const Field& own = m_scan.fields[field];
    const std::uint8_t* const bytes = m_streams[field].bytes.data() + m_streams[field].position / 8;
    switch (own.kind) {
        case Field::Kind::Single:
            for (std::uint32_t i = 0; i < count; ++i) {
                values[i] = get<float>(bytes + std::size_t{4} * i);
            }
            return 0;
        case Field::Kind::Double:
            std::memcpy(values, bytes, std::size_t{8} * count);
            return 0;
        case Field::Kind::Integer:
        case Field::Kind::Scaled:
            break;
        case Field::Kind::Text:
            std::fill_n(values, count, std::numeric_limits<double>::quiet_NaN());
            return 0;
    }
    std::vector<std::int64_t> whole(count);
    wholeNumbers(field, count, whole.data());
    const Affine affine =
        own.kind == Field::Kind::Scaled ? Affine(own.scale, own.offset) : Affine();
    std::transform(whole.begin(), whole.end(), values,
                   [&](std::int64_t value) { return affine(value); });
    return countBlurred(affine, {values, count});
}

bool VectorReader::holdsMore() {
    // Beside whole bytes a stream ends in bits that fill one up.
    const auto goesOn = [](const Stream& stream) {
        return !stream.isKept || stream.size * 8 - stream.position >= std::max(stream.bits, 8u);
    };
    if (std::ranges::none_of(m_streams, &Stream::isKept)) {
        return false;
    }
    try {
        while (m_position < m_end && !std::ranges::all_of(m_streams, goesOn)) {
            readPacket();
        }
    } catch (const core::Failure&) {
        return false;  // nobody needs what is damaged there
    }
    return std::ranges::all_of(m_streams, goesOn);
}

void VectorReader::take(std::uint32_t count) {
    for (Stream& stream : m_streams) {
        stream.position += stream.isKept ? std::size_t{stream.bits} * count : 0;
    }
    m_left -= count;
}

}  // namespace tarvo::exchange::e57
