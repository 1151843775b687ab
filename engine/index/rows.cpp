#include "engine/index/rows.h"

#include "engine/base/error.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>

#ifdef _WIN32
#include <io.h>
#else
#include <unistd.h>
#endif

namespace tarvo::engine::index {

namespace {

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

class MemoryReader final : public RowReader {
public:
    MemoryReader(std::vector<std::uint8_t> rows, std::size_t stride)
        : m_rows(std::move(rows)), m_stride(stride) {}
    const std::uint8_t* next() override {
        if (m_at >= m_rows.size())
            return nullptr;
        m_at += m_stride;
        return m_rows.data() + m_at - m_stride;
    }

private:
    std::vector<std::uint8_t> m_rows;
    std::size_t m_stride;
    std::size_t m_at = 0;
};

}  // namespace

RowLayout::RowLayout(const schema::AttributeTable& table) : m_stride(sizeof(Key)) {
    for (const schema::Attribute& attribute : table.all()) {
        m_firstField.push_back(m_fields.size());
        if (!has(attribute))
            continue;
        if (attribute.record.name == schema::pointIdName)
            m_idField = m_fields.size();
        for (std::uint32_t element = 0; element < attribute.record.length; ++element) {
            m_fields.push_back({attribute.uid, element, attribute.grid.width(), m_stride});
            m_stride += attribute.grid.width();
        }
    }
}

std::vector<std::uint8_t> sortRows(const std::vector<std::uint8_t>& rows, std::size_t stride) {
    struct Entry {
        Key key;
        std::uint32_t row;
    };
    std::vector<Entry> order(rows.size() / stride);
    for (std::size_t i = 0; i < order.size(); ++i)
        order[i] = {RowLayout::key(rows.data() + i * stride), static_cast<std::uint32_t>(i)};
    std::sort(order.begin(), order.end(), [](const Entry& a, const Entry& b) {
        return a.key != b.key ? a.key < b.key : a.row < b.row;
    });
    std::vector<std::uint8_t> sorted(rows.size());
    for (std::size_t i = 0; i < order.size(); ++i)
        std::memcpy(sorted.data() + i * stride, rows.data() + order[i].row * stride, stride);
    return sorted;
}

std::unique_ptr<RowReader> readRows(std::vector<std::uint8_t> rows, std::size_t stride) {
    return std::make_unique<MemoryReader>(std::move(rows), stride);
}

RowFile::RowFile(const std::string& directory, const std::vector<std::uint8_t>& rows)
    : m_file(openTemporaryFile(directory)) {
    if (!m_file || std::fwrite(rows.data(), 1, rows.size(), m_file) != rows.size() ||
        std::fflush(m_file) != 0) {
        if (m_file)
            std::fclose(m_file);
        failTemporaryFile(directory);
    }
}

RowFile::~RowFile() {
    std::fclose(m_file);
}

class RowFile::Reader final : public RowReader {
public:
    Reader(std::FILE* file, std::size_t stride, std::size_t bufferSize)
        : m_file(file),
          m_stride(stride),
          m_buffer(std::max<std::size_t>(1, bufferSize / stride) * stride) {
        std::rewind(file);
    }
    const std::uint8_t* next() override {
        if (m_at == m_size) {
            m_size = std::fread(m_buffer.data(), 1, m_buffer.size(), m_file);
            m_at = 0;
            if (std::ferror(m_file) || m_size % m_stride != 0)
                failTemporaryFile("(sorted points)");
            if (m_size == 0)
                return nullptr;
        }
        m_at += m_stride;
        return m_buffer.data() + m_at - m_stride;
    }

private:
    std::FILE* m_file;
    std::size_t m_stride;
    std::vector<std::uint8_t> m_buffer;
    std::size_t m_at = 0;
    std::size_t m_size = 0;
};

std::unique_ptr<RowReader> RowFile::read(std::size_t stride, std::size_t bufferSize) const {
    return std::make_unique<Reader>(m_file, stride, bufferSize);
}

RowMerger::RowMerger(std::vector<std::unique_ptr<RowReader>> sources, std::size_t stride)
    : m_stride(stride) {
    for (std::unique_ptr<RowReader>& reader : sources)
        if (const std::uint8_t* row = reader->next())
            m_sources.push_back({std::move(reader), row});
}

bool RowMerger::fill(std::size_t count) {
    if (m_window.size() - m_begin >= count * m_stride)
        return true;
    m_window.erase(m_window.begin(), m_window.begin() + static_cast<std::ptrdiff_t>(m_begin));
    m_begin = 0;
    // More than asked for, so that the window moves seldom.
    const std::size_t goal = (count + count / 2 + 1024) * m_stride;
    while (m_window.size() < goal && !m_sources.empty()) {
        // Few sources: looking at each is as fast as a heap.
        std::size_t least = 0;
        Key leastKey = RowLayout::key(m_sources[0].row);
        for (std::size_t i = 1; i < m_sources.size(); ++i) {
            const Key key = RowLayout::key(m_sources[i].row);
            if (key < leastKey) {
                least = i;
                leastKey = key;
            }
        }
        Source& source = m_sources[least];
        m_window.insert(m_window.end(), source.row, source.row + m_stride);
        source.row = source.reader->next();
        if (!source.row)
            m_sources.erase(m_sources.begin() + static_cast<std::ptrdiff_t>(least));
    }
    return m_window.size() >= count * m_stride;
}

std::size_t RowMerger::countUpTo(Key last, std::size_t limit) {
    fill(limit);
    const std::size_t available = std::min(limit, (m_window.size() - m_begin) / m_stride);
    std::size_t low = 0;
    std::size_t high = available;
    while (low < high) {
        const std::size_t middle = (low + high) / 2;
        if (RowLayout::key(front() + middle * m_stride) <= last)
            low = middle + 1;
        else
            high = middle;
    }
    return low;
}

void RowMerger::insert(const std::vector<std::uint8_t>& rows) {
    // Rows that come later from the sources may belong among these: the window must reach past the
    // last of them, so they join as one more source, and so does what the window holds.
    std::vector<std::uint8_t> window(m_window.begin() + static_cast<std::ptrdiff_t>(m_begin),
                                     m_window.end());
    m_window.clear();
    m_begin = 0;
    std::vector<Source> sources;
    for (std::unique_ptr<RowReader>& reader : std::array<std::unique_ptr<RowReader>, 2>{
             readRows(rows, m_stride), readRows(std::move(window), m_stride)})
        if (const std::uint8_t* row = reader->next())
            sources.push_back({std::move(reader), row});
    for (Source& source : m_sources)
        sources.push_back(std::move(source));
    m_sources = std::move(sources);
}

}  // namespace tarvo::engine::index
