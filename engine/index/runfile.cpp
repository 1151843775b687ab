#include "engine/index/runfile.h"

#include "engine/base/error.h"

#include <algorithm>
#include <cerrno>
#include <cstring>

#ifndef _WIN32
#include <unistd.h>
#include <cstdlib>
#endif

namespace tarvo::engine::index {

namespace {

// Of every run that is merged one is in memory.
constexpr std::size_t pointsOfPiece = 2048;
constexpr std::size_t bytesOfWrite = 1u << 20;

[[noreturn]] void failTemporaryFile(const std::string& directory) {
    throw Failure(ErrorCode::File,
                  "Points can't be sorted: writing a temporary file failed. Free some space and "
                  "try again; nothing that was committed is lost.",
                  "Folder: " + directory + "\n" + std::strerror(errno));
}

// A file without a name: nothing is left behind whatever happens to the process.
std::FILE* openTemporaryFile(const std::string& directory) {
#ifdef _WIN32
    (void)directory;
    return std::tmpfile();
#else
    std::string name = directory + "/.qrb-sort-XXXXXX";
    const int file = ::mkstemp(name.data());
    if (file < 0)
        return nullptr;
    ::unlink(name.c_str());
    return ::fdopen(file, "w+b");
#endif
}

bool seek(std::FILE* file, std::uint64_t position) {
#ifdef _WIN32
    return _fseeki64(file, static_cast<long long>(position), SEEK_SET) == 0;
#else
    return ::fseeko(file, static_cast<off_t>(position), SEEK_SET) == 0;
#endif
}

// The points of the places [begin, end), behind their number of bytes.
void writePiece(const SortedRun& run, std::size_t begin, std::size_t end,
                std::vector<std::uint8_t>& out) {
    const std::size_t head = out.size();
    out.resize(head + sizeof(std::uint64_t));
    const std::span<const std::uint32_t> points = run.order().subspan(begin, end - begin);
    for (const PackedColumn& column : run.columns()) {
        schema::Column codes(column.width(), points.size());
        column.gather(points, codes, 0);
        PackedColumn piece(column.width());
        piece.append(codes);
        piece.write(out);
    }
    const std::uint64_t size = out.size() - head - sizeof size;
    std::memcpy(out.data() + head, &size, sizeof size);
}

}  // namespace

RunFile::~RunFile() {
    if (m_file)
        std::fclose(m_file);
}

void RunFile::write(const std::vector<std::uint8_t>& bytes, std::uint64_t at) {
    if (!m_file) {
        m_file = openTemporaryFile(m_directory);
        if (m_file)
            std::setvbuf(m_file, nullptr, _IONBF, 0);
    }
    if (!m_file || !seek(m_file, at) ||
        std::fwrite(bytes.data(), 1, bytes.size(), m_file) != bytes.size() ||
        std::fflush(m_file) != 0)
        failTemporaryFile(m_directory);
}

void RunFile::read(std::uint64_t at, std::vector<std::uint8_t>& bytes) {
    const std::lock_guard guard(m_mutex);
    if (!seek(m_file, at) || std::fread(bytes.data(), 1, bytes.size(), m_file) != bytes.size())
        failTemporaryFile("(sorted points)");
}

RunFile::Place RunFile::add(SortedRun& run) {
    run.settleAll();
    const std::lock_guard guard(m_mutex);
    std::uint64_t end = m_end;
    std::vector<std::uint8_t> bytes;
    for (std::size_t begin = 0; begin < run.size(); begin += pointsOfPiece) {
        writePiece(run, begin, std::min(run.size(), begin + pointsOfPiece), bytes);
        if (bytes.size() >= bytesOfWrite || begin + pointsOfPiece >= run.size()) {
            write(bytes, end);
            end += bytes.size();
            bytes.clear();
        }
    }
    const Place place{m_end, end};
    m_end = end;
    return place;
}

class RunFile::Reader final : public RunReader {
public:
    Reader(RunFile& file, const Place& place, const RowLayout& layout, const KeySpace& space,
           std::size_t primary)
        : m_file(file),
          m_at(place.begin),
          m_end(place.end),
          m_layout(layout),
          m_space(space),
          m_primary(primary) {}

    std::shared_ptr<SortedRun> next() override {
        if (m_at == m_end)
            return nullptr;
        m_bytes.resize(sizeof(std::uint64_t));
        m_file.read(m_at, m_bytes);
        std::uint64_t size = 0;
        std::memcpy(&size, m_bytes.data(), sizeof size);
        m_bytes.resize(size);
        m_file.read(m_at + sizeof size, m_bytes);
        m_at += sizeof size + size;
        PointColumns points(m_layout);
        std::span<const std::uint8_t> left = m_bytes;
        for (PackedColumn& column : points.columns)
            left = column.read(left);
        points.count = points.columns[0].size();
        return std::make_shared<SortedRun>(std::move(points), m_space, m_primary);
    }

private:
    RunFile& m_file;
    std::uint64_t m_at;
    std::uint64_t m_end;
    const RowLayout& m_layout;
    KeySpace m_space;
    std::size_t m_primary;
    std::vector<std::uint8_t> m_bytes;
};

std::unique_ptr<RunReader> RunFile::read(const Place& place, const RowLayout& layout,
                                         const KeySpace& space, std::size_t primary) {
    return std::make_unique<Reader>(*this, place, layout, space, primary);
}

}  // namespace tarvo::engine::index
