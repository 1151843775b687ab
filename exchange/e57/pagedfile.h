// An E57 file without its pages: 1020 bytes of each 1024 hold data, the rest is their checksum.
#pragma once

#include "exchange/rawfile.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace tarvo::exchange::e57 {

inline constexpr std::uint32_t pageSize = 1024;
inline constexpr std::uint32_t pageData = pageSize - 4;

class PagedFile {
public:
    // Reads and checks the file's header. Throws Failure.
    explicit PagedFile(const std::string& fileName);

    const std::string& fileName() const { return m_file.fileName(); }
    // Bytes of data, without checksums; so are all positions unless they are called physical.
    std::uint64_t size() const { return m_size; }
    std::uint64_t xmlOffset() const { return m_xmlOffset; }
    std::uint64_t xmlLength() const { return m_xmlLength; }
    std::uint32_t versionMajor() const { return m_versionMajor; }
    std::uint32_t versionMinor() const { return m_versionMinor; }

    // Of an offset that counts the checksums. Throws Failure where none can be meant.
    std::uint64_t logical(std::uint64_t physical, const char* what) const;
    // Reads exactly size bytes; what names the thing that is read in the error. Throws Failure for
    // a page that does not agree with its checksum.
    void read(std::uint64_t position, void* buffer, std::size_t size, const char* what);
    // Throws Failure: the file is damaged.
    [[noreturn]] void fail(const std::string& text) const { m_file.fail(text); }

private:
    void loadPages(std::uint64_t page);

    RawFile m_file;
    std::uint64_t m_size = 0;
    std::uint64_t m_xmlOffset = 0;
    std::uint64_t m_xmlLength = 0;
    std::uint32_t m_versionMajor = 0;
    std::uint32_t m_versionMinor = 0;
    std::vector<std::uint8_t> m_pages;  // those that were read last
    std::uint64_t m_firstPage = 0;
    std::uint64_t m_pageCount = 0;  // of those
};

}  // namespace tarvo::exchange::e57
