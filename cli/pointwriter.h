// The forms in which points are written as text.
#pragma once

#include "cli/output.h"
#include "cli/text.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace tarvo::cli {

struct PointColumn {
    std::string attribute;
    std::string name;  // of the element
    ValueFormat format;
    const std::uint64_t* values = nullptr;  // of a page of points; owned by the caller
};

class PointWriter {
public:
    virtual ~PointWriter() = default;
    virtual void begin() = 0;
    // The point of this index of the page.
    virtual void point(std::uint32_t index) = 0;
};

// format: "table", "csv" or "jsonl". The output must outlive the writer.
std::unique_ptr<PointWriter> makePointWriter(const std::string& format,
                                             const std::vector<PointColumn>& columns,
                                             Output& output);

}  // namespace tarvo::cli
