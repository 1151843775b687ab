// What validations find.
#pragma once

#include <functional>
#include <string>

namespace tarvo::cli {

// Runs a validation and writes what it finds, a line each, or as a JSON array of texts; throws
// NegativeAnswer if there is anything. Other failures are passed on.
void reportFindings(const std::function<void()>& validate, bool asJson);

}  // namespace tarvo::cli
