// Where the programs may write what they put out.
#pragma once

#include "qrb/context.h"

#include <string>
#include <vector>

namespace tarvo::core {

// Refuses the places that an output must never take: a database, whoever has it open, a scan in
// its own format, and a file that is being read, by whatever names. fileName and reads: UTF-8. Throws qrb::Error.
void checkOutputPlace(const qrb::Context& context, const std::string& fileName,
                      const std::vector<std::string>& reads = {});

}  // namespace tarvo::core
