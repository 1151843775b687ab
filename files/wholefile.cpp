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

std::FILE* openFile(const std::string& name, bool anew) {
#ifdef _WIN32
    return _wfopen(pathOf(name).c_str(), anew ? L"wbx" : L"wb");
#else
    return std::fopen(name.c_str(), anew ? "wbxe" : "wbe");
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
    if (fs::exists(status) && !fs::is_regular_file(status)) {
        m_file = openFile(m_place, false);
    } else {
        removeLeftovers(m_place);
        m_temporary = temporaryNameFor(m_place);
        m_file = openFile(m_temporary, true);
    }
    if (!m_file)
        fail(errno);
}

WholeFile::~WholeFile() {
    if (m_file) {
        std::fclose(m_file);
        if (!m_temporary.empty()) {
            std::error_code error;
            fs::remove(pathOf(m_temporary), error);
        }
    }
}

void WholeFile::fail(int error) const {
    throw FileError("\"" + m_name +
                        "\" can't be written: " + std::system_category().message(error) + ".",
                    m_temporary.empty() ? "" : "What stood there before is as it was.");
}

void WholeFile::write(std::string_view bytes) {
    if (std::fwrite(bytes.data(), 1, bytes.size(), m_file) != bytes.size())
        fail(errno);
}

void WholeFile::publish() {
    if (std::fflush(m_file) != 0 || (!m_temporary.empty() && !sync(m_file)))
        fail(errno);
    if (!m_temporary.empty()) {
        std::error_code error;
        const fs::file_status old = fs::status(pathOf(m_place), error);
        if (fs::exists(old))
            fs::permissions(pathOf(m_temporary), old.permissions(), error);
    }
    std::FILE* const file = m_file;
    if (m_temporary.empty()) {
        m_file = nullptr;
        if (std::fclose(file) != 0)
            fail(errno);
        return;
    }
    replaceDurably(m_temporary, m_place);
    m_file = nullptr;
    std::fclose(file);
}

}  // namespace tarvo::files
