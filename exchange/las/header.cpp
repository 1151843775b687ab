#include "exchange/las/header.h"

#include "core/error.h"
#include "exchange/bytes.h"
#include "exchange/las/texts.h"
#include "numbers/numbertext.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace tarvo::exchange::las {

namespace {

constexpr std::uint64_t vlrHeaderSize = 54;
constexpr std::uint64_t evlrHeaderSize = 60;
// Data that are kept: coordinate reference systems, extra bytes, small texts. Waveforms are not.
constexpr std::uint64_t keptRecordSize = 1 << 20;
constexpr std::uint64_t keptRecordsSize = 16 << 20;

std::string guidText(const std::uint8_t* b) {
    char text[40];
    std::snprintf(text, sizeof text, "%08x-%04x-%04x-%02x%02x-%02x%02x%02x%02x%02x%02x",
                  get<std::uint32_t>(b), get<std::uint16_t>(b + 4), get<std::uint16_t>(b + 6), b[8],
                  b[9], b[10], b[11], b[12], b[13], b[14], b[15]);
    return text;
}

void checkAxes(const RawFile& file, const Header& header) {
    static const char* const axes[] = {"x", "y", "z"};
    for (std::size_t i = 0; i < 3; ++i) {
        // A scale must leave neighbouring stored integers different numbers.
        if (!std::isfinite(header.scale[i]) || header.scale[i] == 0 ||
            std::abs(header.scale[i]) < 1e-30 || std::abs(header.scale[i]) > 1e30) {
            file.fail(std::string("the ") + axes[i] + " scale factor is " +
                      numbers::numberText(header.scale[i]));
        }
        if (!std::isfinite(header.offset[i]) || std::abs(header.offset[i]) > 1e30) {
            file.fail(std::string("the ") + axes[i] + " offset is " +
                      numbers::numberText(header.offset[i]));
        }
    }
}

void checkLayout(const RawFile& file, const Header& header) {
    const std::uint16_t smallest = header.versionMinor == 4   ? 375
                                   : header.versionMinor == 3 ? 235
                                                              : 227;
    if (header.headerSize < smallest) {
        file.fail("the header size is " + std::to_string(header.headerSize) + ", but version 1." +
                  std::to_string(header.versionMinor) + " needs " + std::to_string(smallest));
    }
    if (header.headerSize > file.size()) {
        file.fail("the header size is " + std::to_string(header.headerSize) +
                  ", but the file has " + std::to_string(file.size()) + " bytes");
    }
    if (header.pointOffset < header.headerSize || header.pointOffset > file.size()) {
        file.fail("the offset to point data is " + std::to_string(header.pointOffset) +
                  ", which is not between the header's end at " +
                  std::to_string(header.headerSize) + " and the file's end at " +
                  std::to_string(file.size()));
    }
    if (header.recordLength < pointSize(header.pointFormat)) {
        file.fail("the point data record length is " + std::to_string(header.recordLength) +
                  ", but point format " + std::to_string(header.pointFormat) + " takes " +
                  std::to_string(pointSize(header.pointFormat)));
    }
    const std::uint64_t room = (file.size() - header.pointOffset) / header.recordLength;
    if (!header.isCompressed && header.pointCount > room) {
        file.fail("the number of point records is " + std::to_string(header.pointCount) +
                  ", but the file holds " + std::to_string(room));
    }
}

class RecordWalker {
public:
    explicit RecordWalker(RawFile& file) : m_file(file) {}

    // Reads count records from a position; none may reach beyond end.
    void walk(std::uint64_t position, std::uint64_t count, std::uint64_t end, bool extended) {
        const std::uint64_t headerSize = extended ? evlrHeaderSize : vlrHeaderSize;
        const char* const kind =
            extended ? "extended variable length record" : "variable length record";
        if (position > end || count > (end - position) / headerSize) {
            m_file.fail(std::string("the number of ") + kind + "s is " + std::to_string(count) +
                        ", but there is no room for them between byte " + std::to_string(position) +
                        " and byte " + std::to_string(end));
        }
        for (std::uint64_t i = 0; i < count; ++i) {
            if (position > end || headerSize > end - position) {
                m_file.fail(std::string(kind) + " " + std::to_string(i + 1) + " begins at byte " +
                            std::to_string(position) + ", behind its end at " +
                            std::to_string(end));
            }
            std::array<std::uint8_t, evlrHeaderSize> bytes{};
            m_file.read(position, bytes.data(), headerSize, kind);
            position += headerSize;
            Record record;
            record.userId = getText(bytes.data() + 2, 16);
            record.recordId = get<std::uint16_t>(bytes.data() + 18);
            record.length = extended ? get<std::uint64_t>(bytes.data() + 20)
                                     : get<std::uint16_t>(bytes.data() + 20);
            record.description = getText(bytes.data() + (extended ? 28 : 22), 32);
            if (record.length > end - position) {
                m_file.fail(std::string(kind) + " " + std::to_string(i + 1) + " (\"" +
                            record.userId + "\", " + std::to_string(record.recordId) + ") has " +
                            "a length of " + std::to_string(record.length) + ", but only " +
                            std::to_string(end - position) + " bytes are left");
            }
            if (record.length <= keptRecordSize && m_kept + record.length <= keptRecordsSize) {
                record.data.resize(record.length);
                m_file.read(position, record.data.data(), record.data.size(), kind);
                m_kept += record.length;
            }
            position += record.length;
            m_records.push_back(std::move(record));
        }
    }
    std::vector<Record> take() { return std::move(m_records); }

private:
    RawFile& m_file;
    std::vector<Record> m_records;
    std::uint64_t m_kept = 0;
};

}  // namespace

std::uint16_t pointSize(int format) {
    static constexpr std::uint16_t sizes[] = {20, 28, 26, 34, 57, 63, 30, 36, 38, 59, 67};
    return sizes[format];
}

Header readHeader(RawFile& file) {
    std::array<std::uint8_t, 375> bytes{};
    const std::uint8_t* const b = bytes.data();
    file.read(0, bytes.data(), 227, "public header block");
    if (std::memcmp(b, "LASF", 4) != 0) {
        throw core::Failure("\"" + file.fileName() +
                                "\" is not a LAS file: it does not begin with "
                                "\"LASF\".",
                            "Give --format csv if it holds comma-separated values.");
    }
    Header header;
    // The compressed variant marks its files in the two highest bits of the point format.
    header.isCompressed = (b[104] & 0xc0) == 0x80;
    header.pointFormat = header.isCompressed ? b[104] & 0x3f : b[104];
    file.setFormat(header.isCompressed ? "LAZ" : "LAS");
    header.versionMinor = b[25];
    if (b[24] != 1 || header.versionMinor > 4) {
        throw core::Failure("The " + file.format() + " file \"" + file.fileName() +
                                "\" has version " + std::to_string(b[24]) + "." +
                                std::to_string(b[25]) + ".",
                            "Versions 1.0 to 1.4 can be imported.");
    }
    header.fileSourceId = get<std::uint16_t>(b + 4);
    header.globalEncoding = get<std::uint16_t>(b + 6);
    header.guid = guidText(b + 8);
    header.systemIdentifier = getText(b + 26, 32);
    header.generatingSoftware = getText(b + 58, 32);
    header.creationDay = get<std::uint16_t>(b + 90);
    header.creationYear = get<std::uint16_t>(b + 92);
    header.headerSize = get<std::uint16_t>(b + 94);
    header.pointOffset = get<std::uint32_t>(b + 96);
    header.vlrCount = get<std::uint32_t>(b + 100);
    header.recordLength = get<std::uint16_t>(b + 105);
    header.pointCount = get<std::uint32_t>(b + 107);
    for (std::size_t i = 0; i < 3; ++i) {
        header.scale[i] = get<double>(b + 131 + 8 * i);
        header.offset[i] = get<double>(b + 155 + 8 * i);
        header.maximum[i] = get<double>(b + 179 + 16 * i);
        header.minimum[i] = get<double>(b + 187 + 16 * i);
    }
    if (header.pointFormat > 10) {
        file.fail("the point data record format is " + std::to_string(header.pointFormat) +
                  "; 0 to 10 are known");
    }
    if (header.versionMinor >= 3 && header.headerSize >= 235) {
        file.read(227, bytes.data() + 227, 8, "public header block");
        header.waveformOffset = get<std::uint64_t>(b + 227);
    }
    if (header.versionMinor == 4 && header.headerSize >= 375) {
        file.read(227, bytes.data() + 227, 148, "public header block");
        header.evlrOffset = get<std::uint64_t>(b + 235);
        header.evlrCount = get<std::uint32_t>(b + 243);
        // Some writers of version 1.4 fill the old count only.
        if (const auto count = get<std::uint64_t>(b + 247); count != 0) {
            header.pointCount = count;
        }
    }
    checkLayout(file, header);
    checkAxes(file, header);
    return header;
}

std::vector<Record> readRecords(RawFile& file, const Header& header) {
    RecordWalker walker(file);
    walker.walk(header.headerSize, header.vlrCount, header.pointOffset, false);
    if (header.evlrCount != 0) {
        const std::uint64_t pointsEnd =
            header.pointOffset +
            (header.isCompressed ? 0 : header.pointCount * header.recordLength);
        if (header.evlrOffset < pointsEnd || header.evlrOffset > file.size()) {
            file.fail("the start of the first extended variable length record is " +
                      std::to_string(header.evlrOffset) +
                      ", which is not between the points' end at " + std::to_string(pointsEnd) +
                      " and the file's end at " + std::to_string(file.size()));
        }
        walker.walk(header.evlrOffset, header.evlrCount, file.size(), true);
    }
    return walker.take();
}

}  // namespace tarvo::exchange::las
