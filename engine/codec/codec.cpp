#include "engine/codec/codec.h"

#include "engine/base/zstd.h"
#include "engine/codec/bitpack.h"
#include "engine/codec/transform.h"

#include <algorithm>
#include <new>
#include <string>

namespace tarvo::engine::codec {

struct FreeContext {
    void operator()(ZSTD_CCtx* context) const { ZSTD_freeCCtx(context); }
    void operator()(ZSTD_DCtx* context) const { ZSTD_freeDCtx(context); }
};

namespace {

Codec transformed(bool delta, bool shuffle) {
    if (delta)
        return shuffle ? Codec::DeltaShuffled : Codec::Delta;
    return shuffle ? Codec::Shuffled : Codec::Zstd;
}

// Higher levels gain under one per cent on point clouds, and none at all where a code is a byte.
int zstdLevel(std::uint8_t compressionLevel, unsigned width) {
    return compressionLevel <= 33 || width == 1 ? 1 : compressionLevel <= 66 ? 2 : 3;
}

// The most that zstd can make of so many bytes: each block takes four at least and gives 128 KiB
// at most. Keeps memory from being taken for what a damaged header claims.
bool canExpandTo(std::size_t frameBytes, std::size_t bytes) {
    return bytes / ZSTD_BLOCKSIZE_MAX <= frameBytes / 4;
}

}  // namespace

struct Encoder::Scratch {
    std::unique_ptr<ZSTD_CCtx, FreeContext> context{ZSTD_createCCtx()};
    std::vector<PackedRun> runs;
    schema::Column differences;
    Bytes plain;
    Bytes frame;
    Bytes other;

    // Leaves one frame with content size and checksum in frame. The planes are blocks of their
    // own, because each has its own distribution of bytes.
    void compress(int level, std::size_t planeBytes) {
        if (!context)
            throw std::bad_alloc();
        requireCompressed(ZSTD_CCtx_reset(context.get(), ZSTD_reset_session_and_parameters));
        requireCompressed(ZSTD_CCtx_setParameter(context.get(), ZSTD_c_compressionLevel, level));
        requireCompressed(ZSTD_CCtx_setParameter(context.get(), ZSTD_c_checksumFlag, 1));
        requireCompressed(ZSTD_CCtx_setParameter(context.get(), ZSTD_c_contentSizeFlag, 1));
        requireCompressed(ZSTD_CCtx_setPledgedSrcSize(context.get(), plain.size()));
        frame.resize(ZSTD_compressBound(plain.size()) + 64 * 8);
        ZSTD_outBuffer out{frame.data(), frame.size(), 0};
        for (std::size_t at = 0;;) {
            const std::size_t end = std::min(plain.size(), at + planeBytes);
            ZSTD_inBuffer in{plain.data(), end, at};
            const bool last = end == plain.size();
            const std::size_t left =
                ZSTD_compressStream2(context.get(), &out, &in, last ? ZSTD_e_end : ZSTD_e_flush);
            requireCompressed(left);
            at = in.pos;
            if (left != 0) {
                frame.resize(frame.size() * 2);
                out.dst = frame.data();
                out.size = frame.size();
            } else if (last) {
                break;
            }
        }
        frame.resize(out.pos);
    }
};

Encoder::Encoder() : m_scratch(std::make_unique<Scratch>()) {}
Encoder::~Encoder() = default;

void Encoder::encode(const schema::Column& column, const Options& options, Bytes& out) {
    Scratch& scratch = *m_scratch;
    const std::size_t rawBytes = column.size() * column.width();
    const bool forced = options.compressionOptions >= 1 && options.compressionOptions <= 3;
    std::size_t best = rawBytes;
    Codec codec = Codec::Raw;

    const bool pack = !forced || options.compressionLevel == 0;
    if (pack) {
        const std::size_t packed = measureRuns(column, scratch.runs);
        if (packed < best) {
            best = packed;
            codec = Codec::BitPacked;
        }
    }
    // Below this size the frame alone costs what could be won.
    constexpr std::size_t smallest = 48;
    if (options.compressionLevel > 0 && (forced || best >= smallest)) {
        const bool shuffle =
            column.width() > 1 && (!forced || (options.compressionOptions & 2) != 0);
        const int level = zstdLevel(options.compressionLevel, column.width());
        const auto compress = [&](bool differences) {
            scratch.plain.resize(rawBytes);
            applyTransform(column, differences, shuffle, scratch.plain, scratch.differences);
            scratch.compress(level, shuffle ? column.size() : rawBytes);
        };
        // The entropy knows nothing of repetitions: where it doesn't clearly favour one form,
        // both are tried.
        const double ratio = forced ? 1 : deltaRatio(column);
        bool delta = forced ? (options.compressionOptions & 1) != 0 : ratio < 0.97;
        compress(delta);
        if (!forced && ratio > 0.65 && ratio < 1.15) {
            scratch.other.swap(scratch.frame);
            compress(!delta);
            if (scratch.frame.size() < scratch.other.size())
                delta = !delta;
            else
                scratch.other.swap(scratch.frame);
        }
        // Packed codes decode many times faster: they may be a tenth larger.
        const bool wins = codec == Codec::BitPacked ? best * 10 > scratch.frame.size() * 11
                                                    : scratch.frame.size() < best;
        if (wins)
            codec = transformed(delta, shuffle);
    }

    out.push_back(static_cast<std::uint8_t>(codec));
    if (codec == Codec::BitPacked) {
        packRuns(column, scratch.runs, out);
    } else if (codec == Codec::Raw) {
        column.visit([&]<typename T>(std::span<const T> codes) {
            const auto* bytes = reinterpret_cast<const std::uint8_t*>(codes.data());
            out.insert(out.end(), bytes, bytes + rawBytes);
        });
    } else {
        out.insert(out.end(), scratch.frame.begin(), scratch.frame.end());
    }
}

struct Decoder::Scratch {
    std::unique_ptr<ZSTD_DCtx, FreeContext> context{ZSTD_createDCtx()};
    Bytes plain;

    void decompress(ByteReader& reader, ByteSpan frame, std::size_t bytes) {
        if (!context)
            throw std::bad_alloc();
        if (ZSTD_getFrameContentSize(frame.data(), frame.size()) != bytes ||
            !canExpandTo(frame.size(), bytes))
            reader.fail("a compressed block that does not hold " + std::to_string(bytes) +
                        " bytes");
        if (ZSTD_findFrameCompressedSize(frame.data(), frame.size()) != frame.size())
            reader.fail("a compressed block that does not end with its frame");
        plain.resize(bytes);
        const std::size_t result =
            ZSTD_decompressDCtx(context.get(), plain.data(), bytes, frame.data(), frame.size());
        requireMemory(result);
        if (ZSTD_isError(result))
            reader.fail(std::string("compressed data that does not decompress: ") +
                        ZSTD_getErrorName(result));
        if (result != bytes)
            reader.fail(std::to_string(result) + " bytes where there should be " +
                        std::to_string(bytes));
    }
};

Decoder::Decoder() : m_scratch(std::make_unique<Scratch>()) {}
Decoder::~Decoder() = default;

Block Decoder::decode(Bytes block, unsigned width, std::size_t count, std::string_view what) {
    ByteReader reader(block, what);
    const auto number = reader.number<std::uint8_t>();
    if ((width != 1 && width != 2 && width != 4 && width != 8) || count > SIZE_MAX / 16)
        reader.fail("a column of " + std::to_string(count) + " values of " + std::to_string(width) +
                    " bytes");
    const std::size_t bytes = count * width;
    switch (const auto codec = static_cast<Codec>(number)) {
        case Codec::Raw: {
            if (reader.left() != bytes)
                reader.fail(std::to_string(reader.left()) + " bytes where there should be " +
                            std::to_string(bytes));
            schema::Column column = schema::Column::unfilled(width, count);
            revertTransform(reader.take(bytes), false, false, column);
            return Block(std::move(column));
        }
        case Codec::BitPacked: {
            std::vector<PackedRun> runs = readRuns(reader, width, count);
            const std::size_t at = block.size() - reader.left();
            return Block(width, count, std::move(runs), std::move(block), at);
        }
        case Codec::Shuffled:
        case Codec::DeltaShuffled:
        case Codec::Zstd:
        case Codec::Delta: {
            m_scratch->decompress(reader, reader.take(reader.left()), bytes);
            schema::Column column = schema::Column::unfilled(width, count);
            revertTransform(m_scratch->plain,
                            codec == Codec::Delta || codec == Codec::DeltaShuffled,
                            codec == Codec::Shuffled || codec == Codec::DeltaShuffled, column);
            return Block(std::move(column));
        }
    }
    reader.fail("the codec " + std::to_string(number) + ", which is not known");
}

}  // namespace tarvo::engine::codec
