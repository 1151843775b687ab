#include "core/newdatabase.h"

#include "core/outputplace.h"
#include "files/error.h"
#include "files/path.h"
#include "files/place.h"
#include "qrb/error.h"

#include <chrono>
#include <filesystem>
#include <optional>
#include <string>
#include <system_error>
#include <thread>
#include <utility>

namespace tarvo::core {

namespace fs = std::filesystem;

namespace {

[[noreturn]] void refuse(const std::string& text, const std::string& details = {}) {
    throw qrb::ErrorImpl(0, text, details);
}

// Bytes; the container's journal beside it has a longer one.
constexpr std::size_t longestName = 240;

// How long is waited for a lock that is only taken to look: by another program that begins to
// replace the same database, for example, while this one is at the end of hours.
constexpr int tries = 40;
constexpr auto pause = std::chrono::milliseconds(50);

// An old database that nobody else writes as long as this lives. Opening it plays back what an
// interrupted writer has left; nobody else may touch that.
class Hold {
public:
    // Throws qrb::Error.
    Hold(const qrb::Context& context, const std::string& place) : m_cloud(context) {
        m_cloud.open(place, qrb::pointcloud::OpenSettings(context));
        m_transaction.emplace(m_cloud.transactions(), "Replace", "");
    }

private:
    qrb::Pointcloud m_cloud;
    std::optional<qrb::pointcloud::TransactionGuard> m_transaction;
};

}  // namespace

NewDatabase::NewDatabase(const qrb::Context& context, const std::string& fileName, bool overwrite,
                         std::string advice)
    : m_context(context),
      m_fileName(fileName),
      m_place(files::resolved(fileName)),
      m_temporary(files::temporaryNameFor(m_place)),
      m_overwrite(overwrite),
      m_advice(std::move(advice)),
      m_cloud(std::make_unique<qrb::Pointcloud>(context)) {
    if (fileName.empty())
        refuse("The new database has no name.", "Give the name of a file.");
    if (const auto size = files::nameOf(files::pathOf(m_place).filename()).size();
        size > longestName)
        refuse("The name of the new database is too long: it has " + std::to_string(size) +
               " bytes of at most " + std::to_string(longestName) + ".");
    const fs::path folder = files::pathOf(m_place).parent_path();
    std::error_code error;
    if (!folder.empty() && !fs::is_directory(folder, error))
        refuse("There is no folder to write \"" + fileName + "\" to.",
               "Make the folder, or give the name of a file in another one.");
    if (isTaken()) {
        checkPlace();
        // Now, before hours are spent.
        whileHeld([] {});
    } else {
        checkPromise(fileName, OutputKind::Database);
    }
    files::removeLeftovers(m_place);
}

NewDatabase::~NewDatabase() {
    m_cloud.reset();
    files::removeTemporary(m_temporary);
}

bool NewDatabase::isTaken() const {
    std::error_code error;
    return fs::exists(fs::symlink_status(files::pathOf(m_place), error));
}

void NewDatabase::checkPlace() const {
    std::error_code error;
    if (fs::is_directory(files::pathOf(m_place), error))
        refuse("\"" + m_fileName + "\" is a folder.", "Give the name of a file in it.");
    const bool isDatabase = m_context.databaseFileTypeCheck(m_place);
    if (isDatabase && !m_overwrite)
        refuse("The file \"" + m_fileName + "\" exists already.", m_advice);
    if (!isDatabase)
        refuse("The file \"" + m_fileName + "\" exists already, and is not a database.",
               "Only databases are replaced. Give another name, or remove the file by hand if that "
               "is meant.");
}

void NewDatabase::create(const qrb::pointcloud::CreateSettings& settings) {
    m_cloud->create(m_temporary, settings);
}

void NewDatabase::create(const qrb::pointcloud::CreateSettings& settings, const std::string& schema,
                         bool optionals) {
    m_cloud->create(m_temporary, settings, schema, optionals);
}

void NewDatabase::whileHeld(const std::function<void()>& work) const {
    std::optional<Hold> hold;
    for (int tried = 1; !hold; ++tried) {
        try {
            hold.emplace(m_context, m_place);
        } catch (const qrb::Error& error) {
            const bool isBusy = error.code() == QRB_ERROR_BUSY;
            if (isBusy && tried < tries) {
                std::this_thread::sleep_for(pause);
                continue;
            }
            const std::string details = error.details() ? error.details() : "";
            refuse("The file \"" + m_fileName + "\" is not replaced: " +
                       (isBusy ? "it is being changed." : "it can't be opened and changed."),
                   error.what() + (details.empty() ? "" : "\n" + details) +
                       (isBusy ? "" : "\nRemove it by hand if that is meant."));
        }
    }
    work();
}

// A journal without its file is what is left of a database that was removed; played back into the
// new one, it would damage that.
void NewDatabase::removeStrayJournal() const {
    std::error_code error;
    if (!isTaken() && fs::remove(files::pathOf(m_place + "-journal"), error))
        files::syncFolderOf(m_place);
    if (error)
        refuse("\"" + m_place +
                   "-journal\" is left of a database that was removed, and would "
                   "damage the new one, but can't be removed: " +
                   error.message() + ".",
               "Remove it by hand.");
}

void NewDatabase::publish() {
    m_cloud->close();
    m_cloud.reset();
    try {
        if (!m_overwrite || !isTaken()) {
            removeStrayJournal();
            if (!files::placeDurably(m_temporary, m_place))
                refuse(
                    "The file \"" + m_fileName + "\" exists already: somebody made it meanwhile.",
                    "It is left as it is. Give another name.");
            return;
        }
        checkPlace();
        whileHeld([this] {
            std::error_code error;
            const fs::file_status old = fs::status(files::pathOf(m_place), error);
            if (fs::exists(old))
                fs::permissions(files::pathOf(m_temporary), old.permissions(), error);
            files::replaceDurably(m_temporary, m_place);
        });
    } catch (const files::FileError& error) {
        refuse(error.what(), error.details());
    }
}

}  // namespace tarvo::core
