#include "cli/database.h"

#include "cli/commands.h"
#include "cli/terminal.h"

#include <filesystem>
#include <optional>
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
    if (!m_changing) {
        ending.emplace();
    }
    return m_cloud.inspect(format);
}

std::uint32_t Database::change(const Change& change, const std::function<void()>& work) {
    if (m_changing) {
        work();
        return 0;
    }
    struct Flag {
        explicit Flag(bool& value) : value(value) { value = true; }
        ~Flag() { value = false; }
        bool& value;
    };
    qrb::pointcloud::TransactionGuard transaction(m_cloud.transactions(), change.title, agentText(),
                                                  change.comments, change.settings);
    const Flag changing(m_changing);
    work();
    ProgressLine progress("Writing " + m_fileName);
    transaction.commit(change.signature,
                       [&progress](int percent) { progress.update(percent / 100.0); });
    return transaction.id();
}

}  // namespace tarvo::cli
