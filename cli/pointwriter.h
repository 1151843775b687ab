// The forms in which points are written as text, besides csv (core/delimitedpoints).
#pragma once

#include "cli/output.h"
#include "core/pointpages.h"

#include <cstdint>
#include <memory>
#include <string>

namespace tarvo::cli {

class PointWriter {
public:
    virtual ~PointWriter() = default;
    virtual void begin() = 0;
    // A point of the page read last.
    virtual void point(std::uint32_t row) = 0;
    virtual void end() {}
};

// format: "table", "json" or "jsonl". Points and output must outlive the writer. One of JSON that
// is destroyed before its end leaves JSON, where the output has a part of it already.
std::unique_ptr<PointWriter> makePointWriter(const std::string& format,
                                             const core::PointPages& points, Output& output);

}  // namespace tarvo::cli
