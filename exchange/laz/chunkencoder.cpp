#include "exchange/laz/chunkencoder.h"

#include "exchange/bytes.h"
#include "exchange/laz/encoder.h"
#include "exchange/laz/layered.h"
#include "exchange/laz/pointwise.h"

#include <optional>

namespace tarvo::exchange::laz {

struct ChunkEncoder::Records {
    Encoder stream;  // of pointwise records
    std::vector<Layer<Encoder>> layers;
    std::optional<PointwiseRecords> pointwise;
    std::optional<LayeredRecords> layered;

    void encodePointwise(const Layout& layout, const std::uint8_t* records, std::uint32_t count,
                         std::vector<std::uint8_t>& chunk);
    void encodeLayered(const Layout& layout, const std::uint8_t* records, std::uint32_t count,
                       std::vector<std::uint8_t>& chunk);
};

ChunkEncoder::ChunkEncoder(const Layout& layout)
    : m_layout(layout), m_records(std::make_unique<Records>()) {
    if (layout.isLayered()) {
        m_records->layered.emplace(layout);
        m_records->layers.resize(LayeredRecords::layerCount(layout));
    } else {
        m_records->pointwise.emplace(layout);
    }
}

ChunkEncoder::~ChunkEncoder() = default;

std::vector<std::uint8_t> ChunkEncoder::encode(const std::uint8_t* records, std::uint32_t count) {
    std::vector<std::uint8_t> chunk(records, records + m_layout.recordLength);
    if (m_layout.isLayered()) {
        m_records->encodeLayered(m_layout, records, count, chunk);
    } else {
        m_records->encodePointwise(m_layout, records, count, chunk);
    }
    return chunk;
}

void ChunkEncoder::Records::encodePointwise(const Layout& layout, const std::uint8_t* records,
                                            std::uint32_t count, std::vector<std::uint8_t>& chunk) {
    pointwise->begin(records);
    stream.begin();
    for (std::uint32_t i = 1; i < count; ++i) {
        pointwise->code(stream, records + std::size_t{i} * layout.recordLength);
    }
    const std::vector<std::uint8_t>& bytes = stream.finish();
    chunk.insert(chunk.end(), bytes.begin(), bytes.end());
}

void ChunkEncoder::Records::encodeLayered(const Layout& layout, const std::uint8_t* records,
                                          std::uint32_t count, std::vector<std::uint8_t>& chunk) {
    layered->begin(records);
    for (Layer<Encoder>& layer : layers) {
        layer.coder.begin();
        layer.hasChanged = false;
    }
    // Those of the positions are always written.
    layers[Point14Model::positionLayer].hasChanged = true;
    layers[Point14Model::heightLayer].hasChanged = true;
    for (std::uint32_t i = 1; i < count; ++i) {
        layered->code(std::span(layers), records + std::size_t{i} * layout.recordLength);
    }
    std::size_t head = chunk.size();
    chunk.resize(head + 4 + 4 * layers.size());
    put(chunk.data() + head, count);
    for (Layer<Encoder>& layer : layers) {
        head += 4;
        if (layer.hasChanged) {
            const std::vector<std::uint8_t>& bytes = layer.coder.finish();
            put(chunk.data() + head, static_cast<std::uint32_t>(bytes.size()));
            chunk.insert(chunk.end(), bytes.begin(), bytes.end());
        }
    }
}

}  // namespace tarvo::exchange::laz
