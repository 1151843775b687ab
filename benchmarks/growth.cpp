#include "benchmarks/growth.h"

#include "benchmarks/process.h"
#include "benchmarks/table.h"
#include "benchmarks/upkeep.h"

#include <cstdio>
#include <filesystem>

namespace bench {

namespace fs = std::filesystem;

namespace {

using Arguments = std::vector<std::string>;

// Both sizes in turn, so that neither has the quieter machine; of each the fastest time counts,
// since these are so short that anything else on the machine shows.
class Pair {
public:
    Pair(std::string small, std::string large) : m_files{std::move(small), std::move(large)} {}

    // The words come before and behind the file.
    void ask(const Arguments& before, const Arguments& behind, int rounds) {
        for (int i = 0; i < rounds; ++i)
            for (std::size_t size = 0; size < 2; ++size) {
                Arguments words = before;
                words.push_back(m_files[size]);
                words.insert(words.end(), behind.begin(), behind.end());
                m_measured[size].push_back(measurementsOf(outputOfSelf(words)));
            }
    }
    Measurement of(std::size_t size, const std::string& name) const {
        std::vector<Measurement> all;
        for (const Measurements& measured : m_measured[size])
            all.push_back(measured.at(name));
        return fastest(all);
    }
    void print(const std::string& title, Unit unit, const std::string& name, double target) const {
        printGrowth({title, unit, of(0, name), of(1, name), target});
    }

private:
    std::string m_files[2];
    std::vector<Measurements> m_measured[2];
};

Measurement perPoint(Measurement whole) {
    whole.wall /= static_cast<double>(whole.answer);
    whole.cpu /= static_cast<double>(whole.answer);
    return whole;
}

constexpr double unchanged = 1.5;  // what should not depend on the size

void printReading(const Size& small, const Size& large) {
    constexpr int rounds = 9;
    Pair panels(small.database, large.database);
    panels.ask({"--upkeep", "panels"}, {}, rounds);
    for (const std::string& name : panelNames)
        panels.print(name == "open" ? name : "panel: " + name, milliseconds, name, unchanged);
    for (const char* task : {"page", "count"}) {
        Pair asked(small.database, large.database);
        asked.ask({"--ours", task}, {""}, rounds);
        asked.print(task == std::string("page") ? "first page" : "count, no filter", milliseconds,
                    "first", unchanged);
    }
    Pair box(small.database, large.database);
    box.ask({"--ours", "count"}, {large.conditions.back().filter}, 1);
    box.print("count, class or height and return", milliseconds, "first", 0);
}

void printChanges(const Places& places, const Size& small, const Size& large) {
    const std::string copies[2] = {places.folder + "/small.qrbx", places.folder + "/large.qrbx"};
    fs::copy_file(small.database, copies[0], fs::copy_options::overwrite_existing);
    fs::copy_file(large.database, copies[1], fs::copy_options::overwrite_existing);
    const auto both = [&](const char* title, const char* task, const Arguments& words,
                          double target) {
        Pair pair(copies[0], copies[1]);
        pair.ask({"--upkeep", task}, words, 1);
        pair.print(title, milliseconds, task, target);
    };
    Pair few(copies[0], copies[1]);
    for (const char* pointClass : {"6", "7", "8", "9", "10"})
        few.ask({"--upkeep", "update"}, {"100", pointClass}, 1);
    few.print("update of 100 ids", milliseconds, "update", 3);
    const std::string many = std::to_string(large.points / 10);
    const std::string fewer = std::to_string(small.points / 10);
    const auto tenth = [&](const char* title, const char* task, const Arguments& behind) {
        const auto at = [&](const std::string& file, const std::string& ids) {
            Arguments words = {"--upkeep", task, file, ids};
            words.insert(words.end(), behind.begin(), behind.end());
            return measurementsOf(outputOfSelf(words)).at(task);
        };
        printGrowth({title, seconds, at(copies[0], fewer), at(copies[1], many), 0});
    };
    tenth("update of a tenth by id", "update", {"11"});
    both("fill, class or height and return", "fill", {large.conditions.back().filter}, 0);
    tenth("remove a tenth by id", "remove", {});
    Pair lod(copies[0], copies[1]);
    lod.ask({"--upkeep", "lod"}, {}, 1);
    printRate("level of detail", lod.of(0, "lod"), lod.of(1, "lod"), 4);
    both("check", "check", {}, 0);
    both("finalize and vacuum", "vacuum", {}, 0);
    for (const std::string& copy : copies)
        fs::remove(copy);
}

}  // namespace

void compareSizes(const Places& places, const Size& small, const Size& large) {
    std::printf("\nfrom %llu to %llu points\n", static_cast<unsigned long long>(small.points),
                static_cast<unsigned long long>(large.points));
    printGrowthHead();
    printReading(small, large);
    printGrowth(
        {"import", microsecondsPerPoint, perPoint(small.import), perPoint(large.import), 1.15});
    printGrowth({"CSV of everything", seconds, small.csv, large.csv, 0});
    printChanges(places, small, large);
}

}  // namespace bench
