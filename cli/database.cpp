#include "cli/database.h"

#include "cli/commands.h"
#include "cli/errors.h"
#include "cli/manner.h"
#include "cli/terminal.h"
#include "core/namedfilter.h"
#include "exchange/format.h"
#include "files/path.h"
#include "qrb/error.h"

#include <chrono>
#include <filesystem>
#include <system_error>

namespace tarvo::cli {

namespace {

// While a database is changed a journal stands beside it, whose name is that much longer.
constexpr std::size_t longestName = 255 - std::string_view("-journal").size();

// Where the file is a point cloud of another format.
void refusePointCloud(const std::string& fileName) {
    exchange::FileKind kind;
    try {
        kind = exchange::kindOfFile(fileName);
    } catch (const Failure&) {
        return;
    }
    if (kind.isCertain && !kind.format.empty()) {
        throw Failure("\"" + fileName + "\" is a point cloud of the format " + kind.format +
                          ", not a database.",
                      "\"qrbtool import\" makes a database of it.");
    }
}

}  // namespace

Database::Database(const qrb::Context& context, const std::string& fileName)
    : m_fileName(fileName), m_cloud(context) {
    const auto begin = std::chrono::steady_clock::now();
    try {
        qrb::pointcloud::OpenSettings settings(context);
        settings.cacheSize = manner().cacheSize.value_or(settings.cacheSize);
        m_cloud.open(fileName, settings);
        core::takeNamesInFilters(m_cloud);
    } catch (const qrb::Error&) {
        refusePointCloud(fileName);
        throw;
    }
    noteStep("Opening " + fileName, begin);
}

std::string Database::recordedFilter(const std::string& filter) const {
    return core::withNumbers(filter, core::FilterAttributes::of(m_cloud.pointAttributes()));
}

std::uint64_t Database::fileSize() const {
    std::error_code error;
    const std::uintmax_t size = std::filesystem::file_size(m_fileName, error);
    return error ? 0 : size;
}

std::string Database::inspect(std::uint8_t format) const {
    std::optional<InterruptsEnd> ending;
    if (!isChanging()) {
        ending.emplace();
    }
    return m_cloud.inspect(format);
}

void Database::begin(const Change& change) {
    const std::string name = files::nameOf(files::pathOf(m_fileName).filename());
    if (name.size() > longestName) {
        throw Failure("The name of the database has " + std::to_string(name.size()) +
                          " bytes, too many for it to be changed.",
                      "A journal with a longer name stands beside it meanwhile: rename it, to at "
                      "most " +
                          std::to_string(longestName) + " bytes.");
    }
    m_transaction.reset();
    m_transaction.emplace(m_cloud.transactions(), change.title, agentText(), change.comments,
                          change.settings);
    m_recorded = change;
    m_hasChanges = false;
}

std::uint32_t Database::change(const Change& change, const std::function<void()>& work) {
    if (isChanging()) {
        m_hasChanges = true;
        work();
        return 0;
    }
    return changeTogether(change, [&] {
        m_hasChanges = true;
        work();
    });
}

std::uint32_t Database::changeTogether(const Change& change, const std::function<void()>& steps) {
    struct End {
        ~End() { transaction.reset(); }
        std::optional<qrb::pointcloud::TransactionGuard>& transaction;
    };
    const End end{m_transaction};
    begin(change);
    steps();
    if (!m_hasChanges) {
        return 0;
    }
    ProgressLine progress("Writing " + m_fileName);
    m_transaction->commit(change.signature,
                          [&progress](int percent) { progress.update(percent / 100.0); });
    return m_transaction->id();
}

void Database::tryOut(const Change& change, const std::function<void()>& work) {
    if (!isChanging()) {
        changeTogether(change, work);
        return;
    }
    if (m_hasChanges) {
        throw Failure("A dry run can't follow changes of the same transaction.",
                      "They would be taken back with it.");
    }
    work();
    begin(m_recorded);
}

}  // namespace tarvo::cli
