#include "engine/store/extents.h"

#include "engine/store/connection.h"

#include <algorithm>

namespace tarvo::engine::store {

void Extents::add(Extent extent) {
    if (extent.length == 0)
        return;
    if (extent.offset > maximumBlob || extent.length > maximumBlob - extent.offset)
        throw Failure(ErrorCode::Damaged,
                      "The file is damaged: something refers to more than a blob can hold.");
    // The first that ends at this one or behind it, and all that begin within it or at its end.
    const auto first = std::ranges::lower_bound(
        m_extents, extent.offset, {}, [](const Extent& e) { return e.offset + e.length; });
    const std::uint64_t end = extent.offset + extent.length;
    const auto last = std::ranges::upper_bound(first, m_extents.end(), end, {}, &Extent::offset);
    if (first == last) {
        m_extents.insert(first, extent);
        return;
    }
    const std::uint64_t lastEnd = (last - 1)->offset + (last - 1)->length;
    first->offset = std::min(first->offset, extent.offset);
    first->length = std::max(lastEnd, end) - first->offset;
    m_extents.erase(first + 1, last);
}

Bytes encodeExtents(const Extents& extents) {
    Bytes bytes;
    ByteWriter writer(bytes);
    writer.number(static_cast<std::uint32_t>(extents.all().size()));
    for (const Extent& extent : extents.all()) {
        writer.number(static_cast<std::uint32_t>(extent.offset));
        writer.number(static_cast<std::uint32_t>(extent.length));
    }
    return bytes;
}

std::uint64_t sparseBytes(const Extents& extents) {
    std::uint64_t bytes = extentCountBytes;
    for (const Extent& extent : extents.all())
        bytes += extentBytes + extent.length;
    return bytes;
}

std::optional<std::uint64_t> placeOf(Extent wanted, ByteSpan list, std::string_view what) {
    ByteReader reader(list, what);
    std::uint64_t place = extentCountBytes + list.size();
    if (wanted.length == 0)
        return place;
    std::uint64_t end = 0;
    while (reader.left() > 0) {
        const auto offset = reader.number<std::uint32_t>();
        const auto length = reader.number<std::uint32_t>();
        if (offset < end)
            reader.fail("a list of extents that overlap");
        if (wanted.offset >= offset && wanted.offset - offset <= length &&
            wanted.length <= length - (wanted.offset - offset))
            return place + (wanted.offset - offset);
        place += length;
        end = std::uint64_t(offset) + length;
    }
    return std::nullopt;
}

}  // namespace tarvo::engine::store
