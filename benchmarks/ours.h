// The database library through the interface layer.
#pragma once

#include "benchmarks/engine.h"

#include <memory>

namespace bench {

std::unique_ptr<Engine> makeOurs();

// Writes the points of a sample database as rows, in the order of their ids.
void dumpRows(const std::string& database, const std::string& rowFile);

}  // namespace bench
