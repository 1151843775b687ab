// Lists of point ids.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace tarvo::cli {

// The ids of a list such as "1,3-5", a few at a time, so that wide ranges need no memory.
class IdList {
public:
    // Numbers and ranges stand apart by commas, blanks or line breaks. Throws UsageError.
    explicit IdList(std::string_view text);

    // Leaves out what is above a largest id.
    void limit(std::uint64_t largest);
    std::uint64_t count() const;
    // Replaces ids with at most the next count ones; empty at the end.
    void next(std::vector<std::uint64_t>& ids, std::size_t count);

private:
    struct Range {
        std::uint64_t first;
        std::uint64_t last;
    };
    std::vector<Range> m_ranges;  // ascending, apart
    std::size_t m_at = 0;
};

}  // namespace tarvo::cli
