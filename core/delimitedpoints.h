// Points of a database as delimited text: a line of column names and one per point, every value
// separated, nothing quoted. Several threads make the text while the next points are read.
#pragma once

#include "core/pointpages.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string_view>
#include <vector>

namespace tarvo::core {

struct DelimitedForm {
    char separator = ',';
    std::uint64_t limit = UINT64_MAX;  // points at most
    bool hasHeader = true;
};

// What the text is handed to, in order and in pieces of whole lines, and what gets the per cent of
// the points read after each batch: both on the calling thread, and what they throw ends the work.
using TextSink = std::function<void(std::string_view text)>;
using PercentSink = std::function<void(int percent)>;

// Makes the text of batches of points that somebody else reads, a few ahead of the one that is
// handed out. One thread.
class DelimitedWriter {
public:
    // Hands out the line of names, where the form has one.
    DelimitedWriter(const std::vector<PointColumn>& columns, const DelimitedForm& form,
                    TextSink text);
    ~DelimitedWriter();

    // The most points that are taken at once.
    std::uint32_t rows() const;
    // values: per column the first of rows packed values of the format's narrowType(); copied.
    void add(std::span<const void* const> values, std::uint32_t rows);
    // Hands out what is left.
    void finish();

private:
    struct Private;
    std::unique_ptr<Private> d;
};

// Returns the number of points. The database is used on the calling thread only. Throws qrb::Error,
// then all that was read before has been handed out.
std::uint64_t writeDelimited(const qrb::Pointcloud& database, const PointSelection& selection,
                             const std::vector<PointColumn>& columns, const DelimitedForm& form,
                             const TextSink& text, const PercentSink& percent = {});

}  // namespace tarvo::core
