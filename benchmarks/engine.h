// What both databases are asked to do. Every function runs in a process of its own, so that its
// peak memory is its own, and opens its file anew.
#pragma once

#include <cstdint>
#include <cstdio>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace bench {

// A point as it lies in the file that both imports read from.
struct Row {
    double x, y, z, timestamp;
    float reflectance, amplitude;
    std::uint16_t deviation;
    std::uint8_t targetIndex, targetCount, classification;
    std::uint8_t unused[3];
};
static_assert(sizeof(Row) == 48);

// The same condition in both languages.
struct Condition {
    std::string filter;
    std::string sql;
};

inline constexpr std::uint64_t cacheSize = 512u << 20;  // memory limit of both
inline constexpr std::uint32_t pageSize = 100;

// Calls use(rows, count) for the rows of a file in batches.
template <typename Use>
void forEachBatch(const std::string& rowFile, Use&& use) {
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(rowFile.c_str(), "rb"),
                                                               std::fclose);
    if (!file)
        throw std::runtime_error("can't read " + rowFile);
    std::vector<Row> rows(122880);
    while (const std::size_t count = std::fread(rows.data(), sizeof(Row), rows.size(), file.get()))
        use(rows.data(), static_cast<std::uint32_t>(count));
}

class Engine {
public:
    virtual ~Engine() = default;
    // model: a sample database with the definitions of the attributes.
    virtual void import(const std::string& rowFile, const std::string& model,
                        const std::string& target) = 0;
    // Opens a file for the queries that follow.
    virtual void open(const std::string& file) = 0;
    virtual std::uint64_t count(const Condition& condition) = 0;
    // Reads up to pageSize points with all attributes; gives their number.
    virtual std::uint64_t firstPage(const Condition& condition) = 0;
};

}  // namespace bench
