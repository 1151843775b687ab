// Storage and queries beside the same work in another engine, and at growing sizes:
//
//   bench_side_by_side FOLDER QRBTOOL DUCKDB_LIBRARY|none FILE.las...     (see run.sh)
//
// Every measurement is a process of its own, mostly this program again, with a task in its words.
#include "benchmarks/columns.h"
#include "benchmarks/condition.h"
#include "benchmarks/duckdb.h"
#include "benchmarks/growth.h"
#include "benchmarks/ours.h"
#include "benchmarks/size.h"
#include "benchmarks/upkeep.h"
#include "core/error.h"
#include "qrb/error.h"
#include "qrb/loader.h"

#include <cstdio>
#include <exception>
#include <string>
#include <vector>

namespace {

using namespace bench;
using Arguments = std::vector<std::string>;

// What stands behind the first words.
Arguments rest(const Arguments& arguments, std::ptrdiff_t begin) {
    return {arguments.begin() + begin, arguments.end()};
}

int runTask(const Arguments& arguments) {
    tarvo::qrb::loadLibrary({});
    const std::string& kind = arguments.at(0);
    if (kind == "--ours")
        runOurs(rest(arguments, 1));
    else if (kind == "--upkeep")
        runUpkeep(rest(arguments, 1));
    else if (kind == "--duckdb")
        runDuckdb(arguments.at(1), rest(arguments, 2));
    else if (kind == "--conditions")
        std::fputs(textOf(chooseConditions(readPoints(arguments.at(1), arguments.at(2)))).c_str(),
                   stdout);
    else
        return 2;
    return 0;
}

int run(const Arguments& arguments) {
    const Places places{arguments[0], arguments[1], arguments[2] == "none" ? "" : arguments[2]};
    std::vector<Size> sizes;
    for (const std::string& lasFile : rest(arguments, 3))
        sizes.push_back(compareAt(places, lasFile));
    if (sizes.size() > 1)
        compareSizes(places, sizes.front(), sizes.back());
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    const Arguments arguments(argv + 1, argv + argc);
    try {
        if (!arguments.empty() && arguments[0].starts_with("--"))
            return runTask(arguments);
        if (arguments.size() >= 4)
            return run(arguments);
        std::fputs("usage: bench_side_by_side FOLDER QRBTOOL DUCKDB_LIBRARY|none FILE.las...\n",
                   stderr);
        return 2;
    } catch (const tarvo::qrb::Error& error) {
        std::fprintf(stderr, "bench_side_by_side: %s\n%s\n", error.what(), error.details());
    } catch (const std::exception& error) {
        std::fprintf(stderr, "bench_side_by_side: %s\n", error.what());
    }
    return 1;
}
