// What validations find.
#pragma once

#include "qrb/findings.h"

namespace tarvo::cli {

// Writes what a validation found, a line each, or as a JSON array of texts as the manner says, and
// its notes to standard error; throws NegativeAnswer if there is anything.
void reportFindings(const qrb::pointcloud::Findings& findings);

}  // namespace tarvo::cli
