#include "cli/database.h"

#include "cli/commands.h"
#include "cli/errors.h"
#include "cli/terminal.h"

#include <filesystem>
#include <system_error>

namespace tarvo::cli {

Database::Database(const qrb::Context& context, const std::string& fileName)
    : m_fileName(fileName), m_cloud(context) {
    m_cloud.open(fileName, qrb::pointcloud::OpenSettings(context));
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
