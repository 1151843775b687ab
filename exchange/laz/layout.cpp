#include "exchange/laz/layout.h"

#include "exchange/bytes.h"

#include <string>

namespace tarvo::exchange::laz {

namespace {

struct Item {
    unsigned type;
    unsigned size;

    bool operator==(const Item&) const = default;
};

enum ItemTypes : unsigned {
    bytesItem = 0,
    point10Item = 6,
    gpsTimeItem,
    colourItem,
    wavePacketItem,
    layeredPointItem,
    layeredColourItem,
    layeredInfraredItem,
    layeredWavePacketItem,
    layeredBytesItem
};

enum Compressors : unsigned { noCompressor, oneStream, chunkedPoints, chunkedLayers };

constexpr std::size_t headSize = 34;
constexpr std::size_t itemSize = 6;

std::vector<Item> itemsOf(const Layout& layout) {
    std::vector<Item> items;
    const auto add = [&](bool isThere, unsigned type, unsigned size) {
        if (isThere) {
            items.push_back({type, size});
        }
    };
    if (layout.isLayered()) {
        items.push_back({layeredPointItem, 30});
        add(layout.colour && !layout.infrared, layeredColourItem, 6);
        add(layout.infrared, layeredInfraredItem, 8);
        add(layout.wavePacket, layeredWavePacketItem, 29);
        add(layout.extraCount, layeredBytesItem, layout.extraCount);
    } else {
        items.push_back({point10Item, 20});
        add(layout.time, gpsTimeItem, 8);
        add(layout.colour, colourItem, 6);
        add(layout.wavePacket, wavePacketItem, 29);
        add(layout.extraCount, bytesItem, layout.extraCount);
    }
    return items;
}

// The versions that can be decoded; 0: none.
bool isKnownVersion(unsigned type, unsigned version) {
    switch (type) {
        case wavePacketItem:
            return version == 1;
        case bytesItem:
        case point10Item:
        case gpsTimeItem:
        case colourItem:
            return version == 2;
        case layeredPointItem:
            return version >= 2 && version <= 4;
        default:
            return version == 3 || version == 4;
    }
}

}  // namespace

Layout::Layout(int pointFormat, unsigned length)
    : format(pointFormat), recordLength(length), itemVersion(pointFormat < 6 ? 2 : 3) {
    unsigned at = isLayered() ? 30 : 20;
    const auto add = [&](bool isThere, unsigned& place, unsigned size) {
        if (isThere) {
            place = at;
            at += size;
        }
    };
    add(format == 1 || (format >= 3 && format <= 5), time, 8);
    add(format == 2 || format == 3 || format == 5 || format == 7 || format == 8 || format == 10,
        colour, 6);
    add(format == 8 || format == 10, infrared, 2);
    add(format == 4 || format == 5 || format >= 9, wavePacket, 29);
    extra = at;
    extraCount = recordLength - at;
}

Description Description::read(std::span<const std::uint8_t> data, int format,
                              unsigned recordLength) {
    if (data.size() < headSize) {
        throw Damage("it has " + std::to_string(data.size()) + " bytes instead of " +
                     std::to_string(headSize) + " and more");
    }
    const auto compressor = get<std::uint16_t>(data.data());
    const auto coder = get<std::uint16_t>(data.data() + 2);
    const std::size_t count = get<std::uint16_t>(data.data() + 32);
    if (data.size() < headSize + count * itemSize) {
        throw Damage("it has " + std::to_string(data.size()) + " bytes, too few for " +
                     std::to_string(count) + " items");
    }
    if (compressor == noCompressor || compressor > chunkedLayers || coder != 0) {
        throw Damage("it names compressor " + std::to_string(compressor) + " and coder " +
                     std::to_string(coder) + "; 1 to 3 and 0 are known");
    }
    Description description{Layout(format, recordLength)};
    Layout& layout = description.layout;
    const std::vector<Item> items = itemsOf(layout);
    bool isExpected = count == items.size() && (compressor == chunkedLayers) == layout.isLayered();
    for (std::size_t i = 0; i < count && isExpected; ++i) {
        const std::uint8_t* const item = data.data() + headSize + i * itemSize;
        isExpected = items[i] == Item{get<std::uint16_t>(item), get<std::uint16_t>(item + 2)};
    }
    if (!isExpected) {
        throw Damage("its items are not those of point format " + std::to_string(format) +
                     " with records of " + std::to_string(recordLength) + " bytes");
    }
    for (std::size_t i = 0; i < count; ++i) {
        const unsigned version = get<std::uint16_t>(data.data() + headSize + i * itemSize + 4);
        if (!isKnownVersion(items[i].type, version)) {
            throw Refusal(
                version == 1 ? "is coded as LAZ writers did before version 2.0 (items of version 1)"
                             : "has items of version " + std::to_string(version));
        }
        if (layout.isLayered() && version == 4) {
            layout.itemVersion = 4;
        }
    }
    description.isChunked = compressor != oneStream;
    description.chunkSize = get<std::uint32_t>(data.data() + 12);
    if (description.chunkSize == 0) {
        description.chunkSize = variableChunkSize;
    }
    return description;
}

std::vector<std::uint8_t> Description::write(const Layout& layout, std::uint32_t chunkSize) {
    const std::vector<Item> items = itemsOf(layout);
    std::vector<std::uint8_t> data(headSize + items.size() * itemSize);
    put(data.data(),
        static_cast<std::uint16_t>(layout.isLayered() ? chunkedLayers : chunkedPoints));
    // The version of the format's description, which readers don't ask for.
    data[4] = 3;
    data[5] = 4;
    data[6] = 3;
    put(data.data() + 12, chunkSize);
    put(data.data() + 16, std::int64_t{-1});  // no special records
    put(data.data() + 24, std::int64_t{-1});
    put(data.data() + 32, static_cast<std::uint16_t>(items.size()));
    for (std::size_t i = 0; i < items.size(); ++i) {
        std::uint8_t* const item = data.data() + headSize + i * itemSize;
        put(item, static_cast<std::uint16_t>(items[i].type));
        put(item + 2, static_cast<std::uint16_t>(items[i].size));
        put(item + 4,
            static_cast<std::uint16_t>(items[i].type == wavePacketItem ? 1 : layout.itemVersion));
    }
    return data;
}

}  // namespace tarvo::exchange::laz
