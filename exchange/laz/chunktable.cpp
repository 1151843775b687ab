#include "exchange/laz/chunktable.h"

#include "exchange/bytes.h"
#include "exchange/laz/decoder.h"
#include "exchange/laz/encoder.h"
#include "exchange/laz/integermodel.h"
#include "exchange/laz/layout.h"

namespace tarvo::exchange::laz {

namespace {

class SizesModel {
public:
    explicit SizesModel(bool isVariable) : m_isVariable(isVariable) {}

    template <typename Coder>
    void code(Coder& coder, ChunkSize& chunk) {
        if (m_isVariable) {
            codeNumber(coder, m_last.points, chunk.points, 0);
        }
        codeNumber(coder, m_last.bytes, chunk.bytes, 1);
        m_last = chunk;
    }

private:
    template <typename Coder>
    void codeNumber(Coder& coder, std::uint32_t last, std::uint32_t& now, unsigned context) {
        now = static_cast<std::uint32_t>(m_model.code(coder, static_cast<std::int32_t>(last),
                                                      static_cast<std::int32_t>(now), context));
    }

    bool m_isVariable;
    ChunkSize m_last;
    IntegerModel<32, 2> m_model;
};

}  // namespace

std::uint64_t largestChunkTable(std::uint64_t chunks) {
    constexpr std::uint64_t end = 4;
    constexpr std::uint64_t number = 8;  // two symbols and 23 bits: less than 7 bytes
    return chunkTableHead + end + chunks * 2 * number;
}

std::vector<ChunkSize> readChunkTable(std::span<const std::uint8_t> bytes, std::uint32_t count,
                                      bool isVariable) {
    std::vector<ChunkSize> chunks;
    if (count == 0) {
        return chunks;
    }
    Decoder decoder;
    decoder.begin(bytes);
    SizesModel model(isVariable);
    for (std::uint32_t i = 0; i < count && decoder.isSound(); ++i) {
        model.code(decoder, chunks.emplace_back());
    }
    if (!decoder.isSound()) {
        throw Damage("it is damaged or cut off");
    }
    return chunks;
}

std::vector<std::uint8_t> writeChunkTable(std::span<const ChunkSize> chunks, bool isVariable) {
    std::vector<std::uint8_t> table(chunkTableHead);
    put(table.data() + 4, static_cast<std::uint32_t>(chunks.size()));
    if (!chunks.empty()) {
        Encoder encoder;
        encoder.begin();
        SizesModel model(isVariable);
        for (ChunkSize chunk : chunks) {
            model.code(encoder, chunk);
        }
        const std::vector<std::uint8_t>& bytes = encoder.finish();
        table.insert(table.end(), bytes.begin(), bytes.end());
    }
    return table;
}

}  // namespace tarvo::exchange::laz
