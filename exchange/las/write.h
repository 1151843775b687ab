// Points into LAS and LAZ files of version 1.4.
#pragma once

#include "exchange/import/importsteps.h"
#include "exchange/las/recordplan.h"

#include <cstdint>
#include <cstdio>
#include <optional>
#include <string>
#include <vector>

namespace tarvo::exchange::las {

struct WriteOptions {
    std::optional<int> pointFormat;  // see PlanOptions
    std::optional<double> scale;
    bool compressed = false;  // LAZ
};

struct Written {
    std::uint64_t points = 0;
    std::vector<std::string> notes;  // lines for the user
};

// Reads the source twice: to choose the fields, and to write. file: empty, open for reading and
// writing, at its beginning. progress may be empty. Throws Failure.
Written writePoints(PointSource& source, const WriteOptions& options, std::FILE* file,
                    const ImportProgress& progress);

}  // namespace tarvo::exchange::las
