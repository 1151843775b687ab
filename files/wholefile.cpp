#include "files/wholefile.h"

#include "files/error.h"
#include "files/path.h"
#include "files/place.h"

#include <cerrno>
#include <system_error>

#ifdef _WIN32
#include <io.h>
#else
#include <unistd.h>
#endif

namespace tarvo::files {

namespace fs = std::filesystem;

namespace {

// anew: nothing may stand there; else what is open is written on.
std::FILE* openFile(const std::string& name, bool anew) {
#ifdef _WIN32
    return _wfopen(pathOf(name).c_str(), anew ? L"wbx" : L"ab");
#else
    return std::fopen(name.c_str(), anew ? "wbxe" : "abe");
#endif
}

// Sets errno.
bool isWritable(const std::string& name) {
#ifdef _WIN32
    return _waccess(pathOf(name).c_str(), 2) == 0;
#else
    return ::access(name.c_str(), W_OK) == 0;
#endif
}

bool sync(std::FILE* file) {
#ifdef _WIN32
    return _commit(_fileno(file)) == 0;
#else
    return ::fsync(::fileno(file)) == 0 || errno == EINVAL;
#endif
}

}  // namespace

WholeFile::WholeFile(const std::string& fileName) : m_name(fileName), m_place(resolved(fileName)) {
    std::error_code error;
    const fs::file_status status = fs::status(pathOf(m_place), error);
    if (fs::is_directory(status))
        throw FileError("\"" + m_name + "\" is a folder.", "Give the name of a file in it.");
    if (fs::is_symlink(fs::symlink_status(pathOf(m_place), error)) ||
        (fs::exists(status) && !fs::is_regular_file(status))) {
        m_direct = true;
        m_file = openFile(m_place, false);
    } else {
        if (fs::exists(status) && !isWritable(m_place))
            fail(errno, "It is write-protected.");
        removeLeftovers(m_place);
        m_temporary = temporaryNameFor(m_place);
        m_temporaryPath = pathOf(m_temporary);
        m_file = openFile(m_temporary, true);
        if (m_file && fs::exists(status))
            fs::permissions(m_temporaryPath, status.permissions(), error);
    }
    if (!m_file)
        fail(errno, m_direct ? "" : "Its folder must be there, and writable.");
}

WholeFile::~WholeFile() {
    if (m_file)
        std::fclose(m_file);
    if (!m_temporary.empty()) {
        std::error_code error;
        fs::remove(m_temporaryPath, error);
    }
}

void WholeFile::fail(int error, const char* details) const {
    throw FileError(
        "\"" + m_name + "\" can't be written: " + std::system_category().message(error) + ".",
        details);
}

void WholeFile::failWriting(int error) const {
    fail(error, replaces() ? "What stood there before is as it was." : "");
}

bool WholeFile::replaces() const {
    std::error_code error;
    return !m_direct && fs::exists(pathOf(m_place), error);
}

void WholeFile::write(std::string_view bytes) {
    if (std::fwrite(bytes.data(), 1, bytes.size(), m_file) != bytes.size())
        failWriting(errno);
}

std::FILE* WholeFile::stream() const {
    if (m_direct)
        throw FileError("\"" + m_name + "\" is no ordinary file.",
                        "This format is written from its end to its beginning, too: give the name "
                        "of a file.");
    return m_file;
}

void WholeFile::makePrivate() {
    std::error_code error;
    if (!m_direct)
        std::filesystem::permissions(
            m_temporaryPath,
            std::filesystem::perms::owner_read | std::filesystem::perms::owner_write, error);
    if (m_direct || error)
        fail(m_direct ? EINVAL : error.value(), "It can't be kept from others there.");
}

void WholeFile::publish() {
    if (std::fflush(m_file) != 0 || (!m_direct && !sync(m_file)))
        failWriting(errno);
    std::FILE* const file = m_file;
    m_file = nullptr;
    if (std::fclose(file) != 0)
        failWriting(errno);
    if (!m_direct) {
        replaceDurably(m_temporary, m_place);
        m_temporary.clear();
    }
}

}  // namespace tarvo::files
