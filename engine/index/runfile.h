// Runs of points in a temporary file beside the database, which vanishes with the process: pieces
// of a run one behind the other in the order of their keys, each packed for itself.
#pragma once

#include "engine/index/pointmerger.h"
#include "engine/index/sortedrun.h"

#include <cstdint>
#include <cstdio>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace tarvo::engine::index {

class RunFile {
public:
    // directory: where the file is made, with the first run.
    explicit RunFile(std::string directory) : m_directory(std::move(directory)) {}
    ~RunFile();
    RunFile(const RunFile&) = delete;
    RunFile& operator=(const RunFile&) = delete;

    // Where a run stands.
    struct Place {
        std::uint64_t begin = 0;
        std::uint64_t end = 0;
    };
    // Any thread. Throws Failure(File), and the file is as before.
    Place add(SortedRun& run);
    // From the beginning; the file must outlive the reader. Any number of readers, one thread.
    // primary: as of the run.
    std::unique_ptr<RunReader> read(const Place& place, const RowLayout& layout,
                                    const KeySpace& space, std::size_t primary);

private:
    class Reader;
    void write(const std::vector<std::uint8_t>& bytes, std::uint64_t at);
    void read(std::uint64_t at, std::vector<std::uint8_t>& bytes);

    std::string m_directory;
    std::mutex m_mutex;
    std::FILE* m_file = nullptr;
    std::uint64_t m_end = 0;
};

}  // namespace tarvo::engine::index
