// What a record consists of and how it is coded: the "laszip encoded" record of a file.
#pragma once

#include <cstdint>
#include <span>
#include <stdexcept>
#include <vector>

namespace tarvo::exchange::laz {

// The coded bytes contradict themselves or what describes them; the text says what is wrong, and
// stands behind a colon.
struct Damage : std::runtime_error {
    using std::runtime_error::runtime_error;
};

// Of the records of a point format, which are coded alike. With its two versions of layered items
// a file's scanner channels are told apart differently.
struct Layout {
    // format: 0 to 10; recordLength: at least what the format takes.
    Layout(int format, unsigned recordLength);

    bool isLayered() const { return format >= 6; }

    int format;
    unsigned recordLength;
    unsigned itemVersion;  // 2, of layered items 3 (written) or 4
    // Places within the record; 0: it has none.
    unsigned time = 0;  // pointwise: layered points have it among their own fields
    unsigned colour = 0;
    unsigned infrared = 0;
    unsigned wavePacket = 0;
    unsigned extra = 0;
    unsigned extraCount = 0;  // bytes
};

// Points of a chunk as everybody writes them.
inline constexpr std::uint32_t usualChunkSize = 50000;
// In place of a number of points: each chunk has its own, which the chunk table tells.
inline constexpr std::uint32_t variableChunkSize = 0xffffffff;

struct Description {
    // Reads the record's data and checks them against the point format (0 to 10) and the length
    // that the file's header tells. Throws Damage; of what is whole, but not understood, Refusal.
    static Description read(std::span<const std::uint8_t> data, int format, unsigned recordLength);
    // The data of the record for a layout that is written.
    static std::vector<std::uint8_t> write(const Layout& layout, std::uint32_t chunkSize);

    Layout layout;
    bool isChunked = true;  // else there is one chunk of all points, and no table of chunks
    std::uint32_t chunkSize = usualChunkSize;
};

// A coding that nobody writes any more; the text is a sentence about the file.
struct Refusal : std::runtime_error {
    using std::runtime_error::runtime_error;
};

}  // namespace tarvo::exchange::laz
