#include "exchange/laz/chunkdecoder.h"

#include "exchange/bytes.h"
#include "exchange/laz/layered.h"
#include "exchange/laz/pointwise.h"

#include <optional>
#include <string>

namespace tarvo::exchange::laz {

struct ChunkDecoder::Records {
    Decoder stream;  // of pointwise records
    std::vector<Layer<Decoder>> layers;
    std::vector<std::uint32_t> layerSizes;
    std::optional<PointwiseRecords> pointwise;
    std::optional<LayeredRecords> layered;
};

ChunkDecoder::ChunkDecoder(const Layout& layout)
    : m_layout(layout), m_records(std::make_unique<Records>()) {
    if (layout.isLayered()) {
        m_records->layered.emplace(layout);
        m_records->layers.resize(LayeredRecords::layerCount(layout));
        m_records->layerSizes.resize(m_records->layers.size());
    } else {
        m_records->pointwise.emplace(layout);
    }
}

ChunkDecoder::~ChunkDecoder() = default;

void ChunkDecoder::decode(std::span<const std::uint8_t> chunk, std::uint32_t count,
                          std::uint8_t* records) {
    begin(chunk, count);
    next(count, records);
    finish();
}

void ChunkDecoder::begin(std::span<const std::uint8_t> chunk, std::uint32_t count,
                         ByteSource* source) {
    m_size = chunk.size();
    m_isFirst = true;
    m_first.clear();
    while (m_first.size() < m_layout.recordLength) {
        if (chunk.empty() && source) {
            chunk = source->more();
        }
        if (chunk.empty()) {
            throw Damage("it ends within its first point");
        }
        const std::size_t size =
            std::min<std::size_t>(chunk.size(), m_layout.recordLength - m_first.size());
        m_first.insert(m_first.end(), chunk.begin(),
                       chunk.begin() + static_cast<std::ptrdiff_t>(size));
        chunk = chunk.subspan(size);
    }
    if (m_layout.isLayered()) {
        m_records->layered->begin(m_first.data());
        beginLayers(chunk, count);
    } else {
        m_records->pointwise->begin(m_first.data());
        m_records->stream.begin(chunk, source);
    }
}

void ChunkDecoder::beginLayers(std::span<const std::uint8_t> bytes, std::uint32_t count) {
    std::vector<Layer<Decoder>>& layers = m_records->layers;
    const std::size_t head = 4 + 4 * layers.size();
    if (bytes.size() < head) {
        throw Damage("it ends before its layers");
    }
    if (const auto told = get<std::uint32_t>(bytes.data()); told != count) {
        throw Damage("it tells of " + std::to_string(told) + " points, but it should have " +
                     std::to_string(count));
    }
    std::span<const std::uint8_t> rest = bytes.subspan(head);
    for (std::size_t i = 0; i < layers.size(); ++i) {
        const auto size = get<std::uint32_t>(bytes.data() + 4 + 4 * i);
        if (size > rest.size()) {
            throw Damage("its layer " + std::to_string(i + 1) + " has " + std::to_string(size) +
                         " bytes, but " + std::to_string(rest.size()) + " are left");
        }
        layers[i].isThere = size != 0;
        m_records->layerSizes[i] = size;
        if (size != 0) {
            layers[i].coder.begin(rest.first(size));
        }
        rest = rest.subspan(size);
    }
    if (!layers[Point14Model::positionLayer].isThere && count > 1) {
        throw Damage("it has no positions");
    }
    if (!rest.empty()) {
        throw Damage(std::to_string(rest.size()) + " bytes are left behind its layers");
    }
}

void ChunkDecoder::next(std::uint32_t count, std::uint8_t* records) {
    const std::size_t length = m_layout.recordLength;
    std::uint32_t i = 0;
    if (m_isFirst && count != 0) {
        std::copy(m_first.begin(), m_first.end(), records);
        m_isFirst = false;
        i = 1;
    }
    bool isSound = true;
    if (m_layout.isLayered()) {
        const std::span<Layer<Decoder>> layers = m_records->layers;
        for (; i < count; ++i) {
            m_records->layered->code(layers, records + i * length);
        }
        for (const Layer<Decoder>& layer : layers) {
            isSound &= !layer.isThere || layer.coder.isSound();
        }
    } else {
        for (; i < count; ++i) {
            m_records->pointwise->code(m_records->stream, records + i * length);
        }
        isSound = m_records->stream.isSound();
    }
    if (!isSound) {
        throw Damage("its coded points are damaged or cut off");
    }
}

std::uint64_t ChunkDecoder::position() const {
    return m_layout.recordLength + m_records->stream.position();
}

void ChunkDecoder::finish() {
    bool isAtEnd = true;
    if (m_layout.isLayered()) {
        for (std::size_t i = 0; i < m_records->layers.size(); ++i) {
            const Layer<Decoder>& layer = m_records->layers[i];
            isAtEnd &= !layer.isThere || layer.coder.position() == m_records->layerSizes[i];
        }
    } else {
        isAtEnd = position() == m_size;
    }
    if (!isAtEnd) {
        throw Damage("its coded points take fewer bytes than it has");
    }
}

std::size_t LayeredChunk::headSize(const Layout& layout) {
    return layout.recordLength + 4 + 4 * LayeredRecords::layerCount(layout);
}

LayeredChunk LayeredChunk::read(const Layout& layout, const std::uint8_t* head) {
    LayeredChunk chunk;
    chunk.count = get<std::uint32_t>(head + layout.recordLength);
    chunk.size = headSize(layout);
    for (std::size_t at = layout.recordLength + 4; at < headSize(layout); at += 4) {
        chunk.size += get<std::uint32_t>(head + at);
    }
    return chunk;
}

}  // namespace tarvo::exchange::laz
