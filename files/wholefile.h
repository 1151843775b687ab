// A file that appears under its name only when it is whole: it is written beside its place, and
// moved there by publish(). Without that what stood there stays as it was, and nothing is left
// over.
#pragma once

#include <cstdio>
#include <filesystem>
#include <string>
#include <string_view>

namespace tarvo::files {

class WholeFile {
public:
    // fileName: UTF-8; where it is a link, the file behind it is written. A device, a pipe or an
    // open file ("/dev/stdout") is written directly. Throws FileError when the place can't be
    // written, or what stands there is write-protected.
    explicit WholeFile(const std::string& fileName);
    ~WholeFile();
    WholeFile(const WholeFile&) = delete;
    WholeFile& operator=(const WholeFile&) = delete;

    // Lets only the user read and write the file, whoever may what stands in its place. Throws
    // FileError, also for a device or a pipe.
    void makePrivate();
    // Whether publish() will replace a file that stands there now.
    bool replaces() const;
    // Appends. Throws FileError.
    void write(std::string_view bytes);
    // For who goes back to what it wrote before: open for writing, this object's. Not to be mixed
    // with write(). Throws FileError for a device or a pipe.
    std::FILE* stream() const;
    // Syncs the file and puts it in its place, with the access rights of the one that stood there;
    // nothing can be written after it. Throws FileError.
    void publish();

private:
    [[noreturn]] void fail(int error, const char* details) const;
    [[noreturn]] void failWriting(int error) const;

    std::string m_name;                     // as given
    std::string m_place;                    // behind links
    std::string m_temporary;                // to be removed
    std::filesystem::path m_temporaryPath;  // the same, ready for when there is no memory
    bool m_direct = false;
    std::FILE* m_file = nullptr;
};

}  // namespace tarvo::files
