// Ranges of point ids that hold no more points than fit into memory.
#pragma once

#include "core/pointpages.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace tarvo::core {

struct IdRange {
    std::uint64_t first = 0;
    std::uint64_t last = UINT64_MAX;
    std::uint64_t points = 0;  // of the selection that was divided
};

// Ranges that follow each other and hold all ids, each with at most `most` points (above 0) of the
// selection, whose number is `points`. Reads the ids where there are more, in as many turns as
// their gaps want. goOn is called now and then; what it throws ends the work, as qrb::Error does,
// and Failure where one id has more points than fit.
std::vector<IdRange> divideIds(const qrb::Pointcloud& database, const PointSelection& selection,
                               std::uint64_t points, std::uint64_t most,
                               const std::function<void()>& goOn);

// The filter expression of a range, empty for that of all ids. name: the attribute of the ids.
std::string filterOf(const IdRange& range, const std::string& name);

}  // namespace tarvo::core
