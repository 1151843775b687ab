#include "exchange/sourceopener.h"

#include "core/error.h"
#include "exchange/inputfile.h"
#include "files/identity.h"

#include <algorithm>
#include <filesystem>
#include <functional>
#include <optional>
#include <utility>

namespace tarvo::exchange {

// What tells that a file was written to or replaced.
struct FileState {
    std::optional<files::Identity> identity;
    std::uintmax_t size = 0;
    std::filesystem::file_time_type time;
    bool operator==(const FileState&) const = default;
};

namespace {

// Open files are few and have buffers, and what stays decoded goes with them: a few inputs are
// worth to be kept open, as texts are read to their end when they are opened.
constexpr std::size_t mostOpen = 16;

FileState stateOf(const std::string& fileName) {
    FileState state;
    if (fileName != standardInput) {
        std::error_code error;
        state.identity = files::identityOf(fileName);
        state.size = std::filesystem::file_size(fileName, error);
        state.time = std::filesystem::last_write_time(fileName, error);
    }
    return state;
}

bool isAlike(const PointSource& source, const std::vector<Column>& columns,
             std::uint32_t largestBatch) {
    return source.largestBatch() == largestBatch &&
           std::ranges::equal(source.columns(), columns, [](const Column& a, const Column& b) {
               return a.type == b.type && a.descriptor() == b.descriptor();
           });
}

}  // namespace

// The sources that are open, the one that was used last at the end.
class SourceOpener::OpenFiles {
public:
    void makeRoom();
    void use(const ClosingSource* source) {
        forget(source);
        m_open.push_back(source);
    }
    void forget(const ClosingSource* source) { std::erase(m_open, source); }

private:
    std::vector<const ClosingSource*> m_open;
};

class SourceOpener::ClosingSource : public PointSource {
public:
    using Open = std::function<std::unique_ptr<PointSource>(const OpenProgress& progress)>;

    ClosingSource(const std::string& fileName, std::shared_ptr<OpenFiles> files, Open open,
                  const OpenProgress& progress)
        : m_fileName(fileName), m_files(std::move(files)), m_open(std::move(open)) {
        m_files->makeRoom();
        m_state = stateOf(fileName);
        m_source = m_open(progress);
        m_columns = m_source->columns();
        m_largestBatch = m_source->largestBatch();
        m_axes = m_source->coordinateAxes();
        m_origin = m_source->origin();
        m_metaData = m_source->metaData();
        m_files->use(this);
    }
    ~ClosingSource() override { m_files->forget(this); }

    void close() const {
        m_notes = m_source->notes();
        m_source.reset();
        m_files->forget(this);
    }

    const std::string& fileName() const override { return m_fileName; }
    const std::vector<Column>& columns() const override { return m_columns; }
    double progress() const override { return m_source ? m_source->progress() : 0; }
    void rewind() override {
        opened().rewind();
        m_files->use(this);
    }
    std::uint32_t largestBatch() const override { return m_largestBatch; }
    std::uint32_t next() override { return opened().next(); }
    const void* values(std::size_t column) const override { return opened().values(column); }
    std::vector<Affine> coordinateAxes() const override { return m_axes; }
    Origin origin() const override { return m_origin; }
    std::vector<std::pair<std::string, std::string>> metaData() const override {
        return m_metaData;
    }
    std::vector<std::string> notes() const override {
        return m_source ? m_source->notes() : m_notes;
    }

private:
    // Where it is open already this changes nothing, and several threads may ask.
    PointSource& opened() const {
        if (!m_source) {
            m_files->makeRoom();
            const bool isSame = stateOf(m_fileName) == m_state;
            m_source = m_open({});
            if (!isSame || !isAlike(*m_source, m_columns, m_largestBatch)) {
                m_source.reset();
                throw core::Failure("\"" + m_fileName + "\" was changed while it was read.",
                                    "Try again when nobody writes to it.");
            }
            m_files->use(this);
        }
        return *m_source;
    }

    std::string m_fileName;
    std::shared_ptr<OpenFiles> m_files;
    Open m_open;
    FileState m_state;
    mutable std::unique_ptr<PointSource> m_source;  // nothing: it is closed
    std::vector<Column> m_columns;
    std::uint32_t m_largestBatch = batchSize;
    std::vector<Affine> m_axes;
    Origin m_origin;
    std::vector<std::pair<std::string, std::string>> m_metaData;
    mutable std::vector<std::string> m_notes;  // of the time before it was closed
};

// An import reads all from the first to the last, twice: it is long until the one that was used
// last is used again.
void SourceOpener::OpenFiles::makeRoom() {
    if (m_open.size() >= mostOpen) {
        m_open.back()->close();
    }
}

SourceOpener::SourceOpener(std::string format, std::vector<std::string> columnNames)
    : m_format(std::move(format)),
      m_columnNames(std::move(columnNames)),
      m_files(std::make_shared<OpenFiles>()) {}

SourceOpener::~SourceOpener() = default;

std::unique_ptr<PointSource> SourceOpener::open(const std::string& fileName,
                                                const OpenProgress& progress) {
    return std::make_unique<ClosingSource>(
        fileName, m_files,
        [fileName, format = m_format, names = m_columnNames](const OpenProgress& opening) {
            return openSource(fileName, format, names, opening);
        },
        progress);
}

}  // namespace tarvo::exchange
