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

std::uint64_t Extents::bytes() const {
    std::uint64_t sum = 0;
    for (const Extent& extent : m_extents)
        sum += extent.length;
    return sum;
}

std::uint64_t Extents::bytesBeside(const Extents& others) const {
    Extents both = others;
    for (const Extent& extent : m_extents)
        both.add(extent);
    return both.bytes() - others.bytes();
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
    return extentCountBytes + extents.all().size() * extentBytes + extents.bytes();
}

std::optional<std::uint64_t> placeOf(Extent wanted, ByteSpan list, std::uint64_t blobBytes,
                                     std::string_view what) {
    ByteReader reader(list, what);
    std::optional<std::uint64_t> found;
    std::uint64_t place = extentCountBytes + list.size();
    std::uint64_t end = 0;
    for (bool first = true; reader.left() > 0; first = false) {
        const auto offset = reader.number<std::uint32_t>();
        const auto length = reader.number<std::uint32_t>();
        if (length == 0 || (!first && offset <= end))
            reader.fail("extents that are empty or not apart from each other");
        if (wanted.offset >= offset && wanted.offset - offset <= length &&
            wanted.length <= length - (wanted.offset - offset))
            found = place + (wanted.offset - offset);
        place += length;
        end = std::uint64_t(offset) + length;
    }
    if (place != blobBytes)
        reader.fail("extents of another length than the blob");
    return found;
}

}  // namespace tarvo::engine::store
