// DuckDB through its C interface, loaded at run time.
#pragma once

#include "benchmarks/engine.h"

#include <memory>

namespace bench {

// library: the file name of the shared library. Throws std::runtime_error.
std::unique_ptr<Engine> makeDuckdb(const std::string& library);
std::string duckdbVersion(const std::string& library);

}  // namespace bench
