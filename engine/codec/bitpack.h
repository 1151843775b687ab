// Frame-of-reference bit packing: runs of 256 codes, each with its smallest code as base and the
// bits that its largest offset needs. The layout is in codec.h.
#pragma once

#include "engine/base/bytes.h"
#include "engine/codec/unpack.h"
#include "engine/schema/column.h"

#include <cstdint>
#include <vector>

namespace tarvo::engine::codec {

struct PackedRun {
    std::uint64_t base = 0;
    unsigned bits = 0;
    std::size_t at = 0;  // of its offsets, in the bytes of all
};

// Replaces runs with those of the column and returns the size of the packed form in bytes.
std::size_t measureRuns(const schema::Column& column, std::vector<PackedRun>& runs);

// Appends directory and packed offsets; runs as measured.
void packRuns(const schema::Column& column, const std::vector<PackedRun>& runs, Bytes& out);

// Reads the directory that packRuns wrote; the offsets are what is left, and exactly that. Throws
// Failure(Damaged).
std::vector<PackedRun> readRuns(ByteReader& reader, unsigned width, std::size_t count);

}  // namespace tarvo::engine::codec
