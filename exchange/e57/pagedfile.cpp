#include "exchange/e57/pagedfile.h"

#include "exchange/bytes.h"
#include "exchange/e57/crc32c.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace tarvo::exchange::e57 {

namespace {

constexpr std::uint64_t pagesAtOnce = 64;
constexpr char signature[] = "ASTM-E57";

// Checksums are the one thing in the file whose highest byte comes first.
std::uint32_t storedSum(const std::uint8_t* bytes) {
    return static_cast<std::uint32_t>(bytes[0]) << 24 | static_cast<std::uint32_t>(bytes[1]) << 16 |
           static_cast<std::uint32_t>(bytes[2]) << 8 | bytes[3];
}

}  // namespace

PagedFile::PagedFile(const std::string& fileName) : m_file(fileName, "E57") {
    std::array<std::uint8_t, 48> header{};
    m_file.read(0, header.data(), header.size(), "header");
    if (std::memcmp(header.data(), signature, 8) != 0) {
        fail("it does not begin with \"ASTM-E57\"");
    }
    m_versionMajor = get<std::uint32_t>(header.data() + 8);
    m_versionMinor = get<std::uint32_t>(header.data() + 12);
    if (m_versionMajor != 1) {
        fail("it is of version " + std::to_string(m_versionMajor) + "." +
             std::to_string(m_versionMinor) + ", and only version 1 is known");
    }
    const auto length = get<std::uint64_t>(header.data() + 16);
    if (length > m_file.size()) {
        fail("it has " + std::to_string(m_file.size()) + " bytes of " + std::to_string(length));
    }
    if (const auto size = get<std::uint64_t>(header.data() + 40); size != pageSize) {
        fail("its pages have " + std::to_string(size) + " bytes, and only pages of " +
             std::to_string(pageSize) + " are known");
    }
    m_size = length / pageSize * pageData;
    m_xmlOffset = logical(get<std::uint64_t>(header.data() + 24), "XML section");
    m_xmlLength = get<std::uint64_t>(header.data() + 32);
    read(0, header.data(), header.size(), "header");  // with its page's checksum
}

std::uint64_t PagedFile::logical(std::uint64_t physical, const char* what) const {
    const std::uint64_t page = physical / pageSize;
    const std::uint64_t within = physical % pageSize;
    if (within >= pageData || page >= m_size / pageData) {
        fail(std::string("the ") + what + " is said to begin at byte " + std::to_string(physical) +
             ", where there is no data");
    }
    return page * pageData + within;
}

void PagedFile::loadPages(std::uint64_t page) {
    const std::uint64_t count = std::min(pagesAtOnce, m_size / pageData - page);
    m_pages.resize(count * pageSize);
    m_pageCount = 0;
    m_file.read(page * pageSize, m_pages.data(), m_pages.size(), "data");
    for (std::uint64_t i = 0; i < count; ++i) {
        const std::uint8_t* const bytes = m_pages.data() + i * pageSize;
        if (crc32c(bytes, pageData) != storedSum(bytes + pageData)) {
            fail("the page at byte " + std::to_string((page + i) * pageSize) +
                 " does not agree with its checksum");
        }
    }
    m_firstPage = page;
    m_pageCount = count;
}

void PagedFile::read(std::uint64_t position, void* buffer, std::size_t size, const char* what) {
    if (position > m_size || size > m_size - position) {
        fail(std::string("the ") + what + " goes beyond the end of the file");
    }
    auto* to = static_cast<std::uint8_t*>(buffer);
    while (size > 0) {
        const std::uint64_t page = position / pageData;
        const std::uint64_t within = position % pageData;
        if (page < m_firstPage || page - m_firstPage >= m_pageCount) {
            loadPages(page);
        }
        const std::size_t piece = std::min<std::size_t>(size, pageData - within);
        std::memcpy(to, m_pages.data() + (page - m_firstPage) * pageSize + within, piece);
        to += piece;
        position += piece;
        size -= piece;
    }
}

}  // namespace tarvo::exchange::e57
