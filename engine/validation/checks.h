// The keywords that the validation does itself, as constraints of the schema library: those that
// look at one value, where the library's findings don't tell what was expected and found, and
// those where its algorithms take time or stack without bound.
#pragma once

#include <cstdint>
#include <string>

namespace valijson {
class SchemaParser;
class ValidationResults;
}  // namespace valijson

namespace tarvo::engine::validation {

// What one validation may do; counted by all checks of a schema.
struct Effort {
    static constexpr std::uint64_t maximumSteps = 20'000'000'000;
    static constexpr std::size_t maximumFindings = 1000;

    // The findings of the whole value, where they are bounded; those of parts may be dropped.
    const valijson::ValidationResults* results = nullptr;
    std::uint64_t steps = 0;  // roughly nanoseconds

    // Throws Failure(Validation) when it becomes too much.
    void add(std::uint64_t more);
};

// Thrown when there are more findings than anybody reads.
struct EnoughFindings {};

// Makes the parser know the keywords of flattened schemas. effort must outlive what it parses.
void addChecks(valijson::SchemaParser& parser, Effort& effort);

}  // namespace tarvo::engine::validation
