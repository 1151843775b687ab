// How the program speaks and works: what the options say that all commands have.
#pragma once

#include <cstdint>
#include <optional>

namespace CLI {
class App;
}

namespace tarvo::cli {

struct Manner {
    bool quiet = false;                      // neither notes nor progress
    bool verbose = false;                    // notes tell what is being done, too
    bool json = false;                       // answers, notes and errors are JSON
    bool bytes = false;                      // sizes are exact
    std::optional<std::uint64_t> cacheSize;  // bytes, of each database that is opened
};

// That of the work at hand, for one thread, as everything here.
const Manner& manner();

// While one lives, the work has this manner.
class MannerScope {
public:
    explicit MannerScope(const Manner& manner);
    ~MannerScope();
    MannerScope(const MannerScope&) = delete;
    MannerScope& operator=(const MannerScope&) = delete;

private:
    Manner m_before;
};

// That of a step among others, whose own words add to what holds for all.
Manner added(const Manner& all, const Manner& own);

// Adds --quiet, --verbose, --json and --bytes; the manner must outlive the parsing.
void addMannerOptions(CLI::App& app, Manner& manner);
// Adds --cache.
void addCacheOption(CLI::App& app, Manner& manner);

// The group of the options that all commands have, in the help.
extern const char* const generalGroup;

}  // namespace tarvo::cli
