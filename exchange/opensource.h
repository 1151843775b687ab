// Point sources of the files that a user names.
#pragma once

#include "exchange/table/pointsource.h"

#include <memory>
#include <string>
#include <vector>

namespace tarvo::exchange {

using PointSources = std::vector<std::unique_ptr<PointSource>>;

// format: "las", "csv" or empty for what the file's extension tells. Throws Failure if the file
// can't be read.
std::unique_ptr<PointSource> openSource(const std::string& fileName, std::string format = {});

}  // namespace tarvo::exchange
