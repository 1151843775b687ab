#include "benchmarks/size.h"

#include "benchmarks/duckdb.h"
#include "benchmarks/process.h"
#include "benchmarks/table.h"

#include <cstdio>
#include <filesystem>
#include <map>
#include <stdexcept>
#include <thread>

namespace bench {

namespace fs = std::filesystem;

namespace {

struct Targets {
    double first, decoding, cached;
};

// In the order of the conditions.
constexpr Targets countTargets[] = {
    {0.10, 0, 0.10}, {0.12, 0.30, 0.03}, {0.14, 0.22, 0.03}, {0.18, 0.20, 0.08}, {0.15, 0.20, 0.05},
};
struct PageTargets {
    std::size_t condition;
    double cold, warm;
};
constexpr PageTargets pageTargets[] = {{0, 0.05, 0.03}, {1, 0.10, 0.40}, {3, 0.20, 0.60}};

class Comparer {
public:
    Comparer(const Places& places, const std::string& lasFile) : m_places(places) {
        m_size.lasFile = lasFile;
        m_size.database = fileOf("qrbx");
    }
    Size run() {
        import();
        bytes();
        counts();
        pages();
        csv();
        for (const std::string& layout : layouts())
            removeFile(fileOf(layout));
        return m_size;
    }

private:
    // Each of the three ways, with its measurements.
    using PerLayout = std::map<std::string, std::vector<Measurements>>;

    std::vector<std::string> layouts() const {
        return m_places.duckdb.empty() ? std::vector<std::string>() : duckdbLayouts;
    }
    std::string fileOf(const std::string& ending) const {
        return m_places.folder + "/" + fs::path(m_size.lasFile).stem().string() + "." + ending;
    }
    static void removeFile(const std::string& file) {
        fs::remove(file);
        fs::remove(file + ".wal");
    }
    bool isLarge() const { return m_size.points >= 50'000'000; }
    std::string log() const { return m_places.folder + "/log.txt"; }
    Measurements duckdb(std::vector<std::string> words) const {
        words.insert(words.begin(), {"--duckdb", m_places.duckdb});
        return measurementsOf(outputOfSelf(words));
    }
    static std::vector<Measurement> named(const std::vector<Measurements>& all,
                                          const std::string& name) {
        std::vector<Measurement> result;
        for (const Measurements& one : all)
            result.push_back(one.at(name));
        return result;
    }

    // A row: the median of ours, held against the same of each way of the peer.
    void row(const std::string& name, Unit unit, const Measurement& ours, const PerLayout& peers,
             const std::string& what, double target) const {
        Comparison comparison{name, unit, ours, {}, target};
        for (const auto& [layout, measured] : peers) {
            comparison.peers.emplace_back(layout, median(named(measured, what)));
            const std::uint64_t answer = comparison.peers.back().second.answer;
            if (answer != ours.answer)
                throw std::runtime_error(name + ": " + std::to_string(ours.answer) +
                                         " here, DuckDB " + layout + " " + std::to_string(answer));
        }
        printComparison(comparison);
    }

    void import() {
        std::vector<Measurement> ours;
        PerLayout peers;
        const int rounds = fs::file_size(m_size.lasFile) > 1'000'000'000 ? 1 : 3;
        for (int i = 0; i < rounds; ++i) {
            removeFile(m_size.database);
            ours.push_back(
                runProgram({m_places.tool, "import", m_size.lasFile, m_size.database}, log()));
            for (const std::string& layout : layouts()) {
                removeFile(fileOf(layout));
                peers[layout].push_back(
                    duckdb({"import", m_size.lasFile, m_size.database, fileOf(layout)}));
            }
        }
        m_size.import = median(ours);
        m_size.conditions =
            conditionsOf(outputOfSelf({"--conditions", m_size.lasFile, m_size.database}));
        m_size.points = measurementsOf(outputOfSelf({"--ours", "count", m_size.database, ""}))
                            .at("first")
                            .answer;
        m_size.import.answer = m_size.points;
        head();
        PerLayout unsorted;
        if (peers.count(unsortedLayout) > 0)
            unsorted.insert(peers.extract(unsortedLayout));
        row("import, the other unsorted", seconds, m_size.import, unsorted, "import", 0.60);
        row("import, the other sorted", seconds, m_size.import, peers, "import", 0.45);
    }

    void head() const {
        std::printf(
            "\n%s, %llu points, %u threads%s\n", fs::path(m_size.lasFile).filename().c_str(),
            static_cast<unsigned long long>(m_size.points), std::thread::hardware_concurrency(),
            m_places.duckdb.empty()
                ? ""
                : (", beside DuckDB " + duckdbVersion(m_places.duckdb)).c_str());
        printComparisonHead();
    }

    void bytes() const {
        const auto perPoint = [&](const std::string& file) {
            Measurement result;
            result.wall =
                static_cast<double>(fs::file_size(file)) / static_cast<double>(m_size.points);
            return result;
        };
        Comparison comparison{
            "bytes per point", bytesPerPoint, perPoint(m_size.database), {}, 0.50};
        for (const std::string& layout : layouts())
            comparison.peers.emplace_back(layout, perPoint(fileOf(layout)));
        printComparison(comparison);
    }

    struct Rounds {
        std::vector<Measurements> ours;
        std::vector<Measurements> decoding;
        PerLayout peers;
    };
    // Interleaved, each in a process of its own.
    Rounds ask(const std::string& task, const Condition& condition, bool decoding) const {
        Rounds result;
        const int rounds = isLarge() ? 3 : 5;
        for (int i = 0; i < rounds; ++i) {
            result.ours.push_back(
                measurementsOf(outputOfSelf({"--ours", task, m_size.database, condition.filter})));
            if (decoding)
                result.decoding.push_back(measurementsOf(
                    outputOfSelf({"--ours", "decode", m_size.database, condition.filter})));
            for (const std::string& layout : layouts())
                result.peers[layout].push_back(duckdb({task, fileOf(layout), condition.sql}));
        }
        return result;
    }

    void counts() const {
        for (std::size_t i = 0; i < m_size.conditions.size(); ++i) {
            const Condition& condition = m_size.conditions[i];
            const Targets& targets = countTargets[i];
            const Rounds rounds = ask("count", condition, targets.decoding > 0);
            const Measurement first = median(named(rounds.ours, "first"));
            char share[40];
            std::snprintf(
                share, sizeof share, " (%.3g %%)",
                100 * static_cast<double>(first.answer) / static_cast<double>(m_size.points));
            std::printf("count, %s%s\n", condition.name.c_str(), i == 0 ? "" : share);
            row("  first", milliseconds, first, rounds.peers, "first", targets.first);
            if (targets.decoding > 0)
                row("  decoding", milliseconds, median(named(rounds.decoding, "again")),
                    rounds.peers, "again", targets.decoding);
            row("  cached", milliseconds, median(named(rounds.ours, "again")), rounds.peers,
                "again", targets.cached);
        }
    }

    void pages() const {
        for (const auto& [place, cold, warm] : pageTargets) {
            const Condition& condition = m_size.conditions.at(place);
            const Rounds rounds = ask("page", condition, false);
            std::printf("first page, %s\n", condition.name.c_str());
            row("  cold", milliseconds, median(named(rounds.ours, "first")), rounds.peers, "first",
                cold);
            row("  warm", milliseconds, median(named(rounds.ours, "again")), rounds.peers, "again",
                warm);
        }
    }

    void csv() {
        const std::string target = fileOf("csv");
        m_size.csv = csvInto(
            "CSV of everything", target,
            {m_places.tool, "select", m_size.database, "--format", "csv", "-o", target}, log());
        // What the disk takes of it is the same for both.
        csvInto("CSV of everything, thrown away", "/dev/null",
                {m_places.tool, "select", m_size.database, "--format", "csv"}, "/dev/null");
    }

    Measurement csvInto(const char* name, const std::string& target,
                        const std::vector<std::string>& words, const std::string& output) {
        std::vector<Measurement> ours;
        PerLayout peers;
        const auto forget = [&] {
            if (fs::is_regular_file(target))
                fs::remove(target);
        };
        const int rounds = isLarge() ? 1 : 3;
        for (int i = 0; i < rounds; ++i) {
            ours.push_back(runProgram(words, output));
            forget();
            for (const std::string& layout : layouts()) {
                peers[layout].push_back(duckdb({"csv", fileOf(layout), target}));
                forget();
            }
        }
        const Measurement all = median(ours);
        row(name, seconds, all, peers, "csv", 0.15);
        return all;
    }

    const Places& m_places;
    Size m_size;
};

}  // namespace

Size compareAt(const Places& places, const std::string& lasFile) {
    return Comparer(places, lasFile).run();
}

}  // namespace bench
