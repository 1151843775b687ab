// Point sources of the files that a user names.
#pragma once

#include "exchange/table/pointsource.h"

#include <memory>
#include <string>
#include <vector>

namespace tarvo::exchange {

using PointSources = std::vector<std::unique_ptr<PointSource>>;

// The format that openSource reads a file in, by a look at its beginning only. Throws Failure where
// openSource could not read it for what shows there.
std::string sourceFormat(const std::string& fileName, std::string format = {},
                         const std::vector<std::string>& columnNames = {});

// format: one of formatNames(), or empty for what the file's content tells. columnNames: of a text
// without a header line; empty: the usual ones. Throws Failure if the file can't be read.
std::unique_ptr<PointSource> openSource(const std::string& fileName, std::string format = {},
                                        const std::vector<std::string>& columnNames = {},
                                        const OpenProgress& progress = {});

}  // namespace tarvo::exchange
