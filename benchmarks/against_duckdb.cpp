// Import, size, counts, first pages and peak memory, each beside the same work in DuckDB,
// interleaved in one run; prints medians and ratios.
//
//   bench_against_duckdb DUCKDB_LIBRARY SAMPLE.qrbx FOLDER     (see run.sh)
//
// Every measurement is a process of its own: this program again, as "--child ENGINE TASK ...".
#include "benchmarks/duckdb.h"
#include "benchmarks/ours.h"

#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <filesystem>
#include <stdexcept>
#include <thread>

namespace {

using namespace bench;
namespace fs = std::filesystem;

struct Measurement {
    double seconds = 0;    // of a query: with opening the file
    double again = 0;      // the third time that a query is asked
    double megabytes = 0;  // peak resident memory of the process
    std::uint64_t answer = 0;
};

// The most memory that this process had resident. (The figure of wait4 would count what the parent
// had at the fork.)
double peakMegabytes() {
    std::FILE* file = std::fopen("/proc/self/status", "r");
    char line[200];
    double kilobytes = 0;
    while (file && std::fgets(line, sizeof line, file))
        if (std::sscanf(line, "VmHWM: %lf", &kilobytes) == 1)
            break;
    if (file)
        std::fclose(file);
    return kilobytes / 1024;
}

// In the child: does the task and writes times, memory and answer to standard output.
int runChild(const std::vector<std::string>& arguments) {
    const auto at = [&](std::size_t i) { return arguments.at(i); };
    const std::unique_ptr<Engine> engine = at(0) == "ours" ? makeOurs() : makeDuckdb(at(0));
    const auto timed = [](const auto& task) {
        const auto begin = std::chrono::steady_clock::now();
        task();
        return std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
    };
    std::uint64_t answer = 0;
    double again = 0;
    double seconds = 0;
    if (at(1) == "import") {
        seconds = timed([&] { engine->import(at(2), at(3), at(4)); });
    } else {
        const Condition condition{at(3), at(4)};
        const auto ask = [&] {
            answer = at(1) == "count" ? engine->count(condition) : engine->firstPage(condition);
        };
        seconds = timed([&] {
            engine->open(at(2));
            ask();
        });
        ask();
        again = timed(ask);
    }
    std::printf("%.9f %.9f %.3f %llu\n", seconds, again, peakMegabytes(),
                static_cast<unsigned long long>(answer));
    return 0;
}

Measurement measure(const std::vector<std::string>& arguments) {
    int channel[2];
    if (::pipe(channel) != 0)
        throw std::runtime_error("no pipe");
    const pid_t child = ::fork();
    if (child < 0)
        throw std::runtime_error("no process");
    if (child == 0) {
        ::dup2(channel[1], 1);
        ::close(channel[0]);
        std::vector<std::string> all = {"bench_against_duckdb", "--child"};
        all.insert(all.end(), arguments.begin(), arguments.end());
        std::vector<char*> argv;
        for (std::string& argument : all)
            argv.push_back(argument.data());
        argv.push_back(nullptr);
        ::execv("/proc/self/exe", argv.data());
        ::_exit(127);
    }
    ::close(channel[1]);
    char text[200] = {};
    std::FILE* in = ::fdopen(channel[0], "r");
    const bool read = std::fgets(text, sizeof text, in) != nullptr;
    std::fclose(in);
    int status = 0;
    ::waitpid(child, &status, 0);
    Measurement result;
    unsigned long long answer = 0;
    if (!read || status != 0 ||
        std::sscanf(text, "%lf %lf %lf %llu", &result.seconds, &result.again, &result.megabytes,
                    &answer) != 4)
        throw std::runtime_error("a measurement failed: " + arguments.at(0) + " " +
                                 arguments.at(1));
    result.answer = answer;
    return result;
}

double median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

// A box around the middle row that holds about a thousandth of the points.
Condition smallBox(const std::string& rowFile, std::uint64_t points) {
    std::vector<Row> sample;
    forEachBatch(rowFile, [&](const Row* rows, std::uint32_t count) {
        for (std::uint32_t i = 0; i < count; i += 50)
            sample.push_back(rows[i]);
    });
    const Row middle = sample[sample.size() / 2];
    double half = 0.1;
    for (; half < 10000; half *= 1.3) {
        const auto inside = std::count_if(sample.begin(), sample.end(), [&](const Row& row) {
            return std::fabs(row.x - middle.x) < half && std::fabs(row.y - middle.y) < half &&
                   std::fabs(row.z - middle.z) < half;
        });
        if (static_cast<std::uint64_t>(inside) * 50 * 1000 >= points)
            break;
    }
    Condition box;
    const double centre[3] = {middle.x, middle.y, middle.z};
    for (int i = 0; i < 3; ++i) {
        char low[40], high[40];
        std::snprintf(low, sizeof low, "%.3f", centre[i] - half);
        std::snprintf(high, sizeof high, "%.3f", centre[i] + half);
        const std::string name = "tarvo.xyz[" + std::to_string(i) + "]";
        const std::string column(1, static_cast<char>('x' + i));
        box.filter += (i ? " && " : "") + name + " >= " + low + " && " + name + " <= " + high;
        box.sql += (i ? " AND " : "") + column + " >= " + low + " AND " + column + " <= " + high;
    }
    return box;
}

// One line of the table: ours and theirs, and how many times better ours is.
void printLine(const std::string& what, const char* unit, double ours, double theirs,
               bool moreIsBetter) {
    const double ratio = moreIsBetter ? ours / theirs : theirs / ours;
    std::printf("%-46s %12.4g %12.4g %-9s %8.2f\n", what.c_str(), ours, theirs, unit, ratio);
    std::fflush(stdout);
}

struct Pair {
    std::vector<double> ours, theirs, oursAgain, theirsAgain, oursMemory, theirsMemory;
};

void run(const std::string& duckdb, const std::string& model, const std::string& folder) {
    const std::string rows = folder + "/rows.bin";
    const std::string ourFile = folder + "/ours.qrbx";
    const std::string theirFile = folder + "/theirs.duckdb";
    dumpRows(model, rows);
    const std::uint64_t points = fs::file_size(rows) / sizeof(Row);
    std::printf("%llu points, %u cores, DuckDB %s\n", static_cast<unsigned long long>(points),
                std::thread::hardware_concurrency(), duckdbVersion(duckdb).c_str());
    std::printf("%-46s %12s %12s %-9s %8s\n", "", "qrblib", "DuckDB", "unit", "ratio");

    Pair imports;
    for (int i = 0; i < 3; ++i) {
        for (const std::string& file : {ourFile, theirFile, theirFile + ".wal"})
            fs::remove(file);
        const Measurement a = measure({"ours", "import", rows, model, ourFile});
        const Measurement b = measure({duckdb, "import", rows, model, theirFile});
        imports.ours.push_back(static_cast<double>(points) / a.seconds);
        imports.theirs.push_back(static_cast<double>(points) / b.seconds);
        imports.oursMemory.push_back(a.megabytes);
        imports.theirsMemory.push_back(b.megabytes);
    }
    printLine("import", "points/s", median(imports.ours), median(imports.theirs), true);
    printLine("  peak memory", "MiB", median(imports.oursMemory), median(imports.theirsMemory),
              false);
    printLine("size", "bytes/pt", static_cast<double>(fs::file_size(ourFile)) / points,
              static_cast<double>(fs::file_size(theirFile)) / points, false);

    const std::pair<const char*, Condition> conditions[] = {
        {"small box", smallBox(rows, points)},
        {"class and reflectance",
         {"tarvo.class == 5 && tarvo.reflectance > -12", "class = 5 AND reflectance > -12"}},
        {"no condition", {}},
    };
    for (const char* task : {"count", "page"})
        for (const auto& [name, condition] : conditions) {
            Pair pair;
            std::uint64_t answer = 0;
            for (int i = 0; i < 5; ++i) {
                const Measurement a =
                    measure({"ours", task, ourFile, condition.filter, condition.sql});
                const Measurement b =
                    measure({duckdb, task, theirFile, condition.filter, condition.sql});
                // On reflectance a FLOAT and a stored step may fall on different sides.
                const double difference =
                    std::fabs(static_cast<double>(a.answer) - static_cast<double>(b.answer));
                if (difference > 0.001 * static_cast<double>(std::max(a.answer, b.answer)))
                    throw std::runtime_error("different answers: " + std::to_string(a.answer) +
                                             " and " + std::to_string(b.answer));
                answer = a.answer;
                pair.ours.push_back(a.seconds * 1000);
                pair.theirs.push_back(b.seconds * 1000);
                pair.oursAgain.push_back(a.again * 1000);
                pair.theirsAgain.push_back(b.again * 1000);
                pair.oursMemory.push_back(a.megabytes);
                pair.theirsMemory.push_back(b.megabytes);
            }
            printLine(std::string(task) + ", " + name + " (" + std::to_string(answer) + ")", "ms",
                      median(pair.ours), median(pair.theirs), false);
            printLine("  asked again", "ms", median(pair.oursAgain), median(pair.theirsAgain),
                      false);
            printLine("  peak memory", "MiB", median(pair.oursMemory), median(pair.theirsMemory),
                      false);
        }
}

}  // namespace

int main(int argc, char** argv) {
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    try {
        if (!arguments.empty() && arguments[0] == "--child")
            return runChild({arguments.begin() + 1, arguments.end()});
        if (arguments.size() != 3) {
            std::fputs("usage: bench_against_duckdb DUCKDB_LIBRARY SAMPLE.qrbx FOLDER\n", stderr);
            return 2;
        }
        run(arguments[0], arguments[1], arguments[2]);
        return 0;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "bench_against_duckdb: %s\n", error.what());
        return 1;
    }
}
