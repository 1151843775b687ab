#include "copy/newdatabase.h"

#include "qrb/error.h"

#include <filesystem>
#include <system_error>
#include <utility>

#if defined(_WIN32)
#include <process.h>
#else
#include <unistd.h>
#endif

namespace tarvo::copy {

namespace fs = std::filesystem;

namespace {

std::string processId() {
#if defined(_WIN32)
    return std::to_string(_getpid());
#else
    return std::to_string(getpid());
#endif
}

fs::path pathOf(const std::string& utf8) {
    return {reinterpret_cast<const char8_t*>(utf8.c_str())};
}

// What an interrupted writer may leave beside a file; played back into another file of the same
// name, it would damage that.
fs::path journalOf(const std::string& fileName) {
    return pathOf(fileName + "-journal");
}

[[noreturn]] void refuse(const std::string& text, const std::string& details = {}) {
    throw qrb::ErrorImpl(0, text, details);
}

}  // namespace

NewDatabase::NewDatabase(const qrb::Context& context, const std::string& fileName, bool overwrite,
                         std::string advice)
    : m_fileName(fileName),
      m_temporary(fileName + ".new-" + processId()),
      m_overwrite(overwrite),
      m_advice(std::move(advice)),
      m_cloud(std::make_unique<qrb::Pointcloud>(context)) {
    std::error_code error;
    if (fs::is_directory(pathOf(fileName), error))
        refuse("\"" + fileName + "\" is a folder.", "Give the name of a file in it.");
    if (!overwrite)
        refuseExisting();
    const fs::path folder = pathOf(fileName).parent_path();
    if (!folder.empty() && !fs::is_directory(folder, error))
        refuse("There is no folder to write \"" + fileName + "\" to.",
               "Make the folder, or give the name of a file in another one.");
}

NewDatabase::~NewDatabase() {
    m_cloud.reset();
    removeTemporary();
}

void NewDatabase::refuseExisting() const {
    std::error_code error;
    if (fs::exists(fs::symlink_status(pathOf(m_fileName), error)))
        refuse("The file \"" + m_fileName + "\" exists already.", m_advice);
}

void NewDatabase::makeRoom() {
    // Left over by a process of the same number that was killed.
    m_created = true;
    std::error_code error;
    fs::remove(pathOf(m_temporary), error);
    fs::remove(journalOf(m_temporary), error);
}

void NewDatabase::create(const qrb::pointcloud::CreateSettings& settings) {
    makeRoom();
    m_cloud->create(m_temporary, settings);
}

void NewDatabase::create(const qrb::pointcloud::CreateSettings& settings, const std::string& schema,
                         bool optionals) {
    makeRoom();
    m_cloud->create(m_temporary, settings, schema, optionals);
}

void NewDatabase::publish() {
    m_cloud->close();
    m_cloud.reset();
    if (!m_overwrite)
        refuseExisting();
    std::error_code error;
    fs::remove(journalOf(m_fileName), error);
    fs::rename(pathOf(m_temporary), pathOf(m_fileName), error);
    if (error)
        refuse("Failed to rename \"" + m_temporary + "\" to \"" + m_fileName +
               "\": " + error.message() + ".");
    m_created = false;
}

void NewDatabase::removeTemporary() noexcept {
    if (m_created) {
        std::error_code error;
        fs::remove(pathOf(m_temporary), error);
        fs::remove(journalOf(m_temporary), error);
    }
}

}  // namespace tarvo::copy
