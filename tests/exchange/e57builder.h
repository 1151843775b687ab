// Makes E57 files for tests, written from the format's description and not with the reader's code.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

namespace tarvo::exchange::tests {

inline std::uint32_t slowCrc32c(const std::uint8_t* bytes, std::size_t size) {
    std::uint32_t sum = ~0u;
    for (std::size_t i = 0; i < size; ++i) {
        sum ^= bytes[i];
        for (int bit = 0; bit < 8; ++bit) {
            sum = (sum >> 1) ^ ((sum & 1) != 0 ? 0x82f63b78u : 0u);
        }
    }
    return ~sum;
}

// Gives each page of a file its checksum.
inline void mendPages(std::uint8_t* file, std::size_t size) {
    for (std::size_t page = 0; page + 1024 <= size; page += 1024) {
        const std::uint32_t sum = slowCrc32c(file + page, 1020);
        for (int i = 0; i < 4; ++i) {
            file[page + 1020 + i] = static_cast<std::uint8_t>(sum >> (24 - 8 * i));
        }
    }
}

// A stream of bits, the lowest bit of a byte first.
class Bits {
public:
    void put(std::uint64_t value, unsigned width) {
        for (unsigned i = 0; i < width; ++i, ++m_count) {
            if (m_count % 8 == 0) {
                m_bytes.push_back(0);
            }
            m_bytes.back() |= static_cast<std::uint8_t>((value >> i & 1) << (m_count % 8));
        }
    }
    template <typename T>
    void putBytes(T value) {
        std::uint64_t raw = 0;
        std::memcpy(&raw, &value, sizeof value);
        put(raw, 8 * sizeof value);
    }
    const std::vector<std::uint8_t>& bytes() const { return m_bytes; }

private:
    std::vector<std::uint8_t> m_bytes;
    std::uint64_t m_count = 0;
};

struct E57Scan {
    std::string prototype;      // XML of the fields
    std::string about;          // XML beside the points
    std::vector<Bits> streams;  // one per field
    std::uint64_t recordCount = 0;
    std::string codecs;
};

struct E57Builder {
    std::vector<E57Scan> scans;
    std::string about;  // XML of the root
    std::string prologue = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";
    std::size_t packetBytes = 60000;  // of each stream
    bool withOtherPackets = false;    // index packets and empty ones between those with data
    std::uint8_t sectionId = 1;

    std::string build() const {
        std::vector<std::uint8_t> data(48);
        std::string xml;
        for (const E57Scan& scan : scans) {
            const std::size_t begin = data.size();
            data.resize(begin + 32);
            data[begin] = sectionId;
            addPackets(data, scan);
            put<std::uint64_t>(data, begin + 8, data.size() - begin);
            put<std::uint64_t>(data, begin + 16, physical(begin + 32));
            xml += "<vectorChild type=\"Structure\">" + scan.about +
                   "<points type=\"CompressedVector\" fileOffset=\"" +
                   std::to_string(physical(begin)) + "\" recordCount=\"" +
                   std::to_string(scan.recordCount) + "\"><prototype type=\"Structure\">" +
                   scan.prototype + "</prototype><codecs type=\"Vector\">" + scan.codecs +
                   "</codecs></points></vectorChild>\n";
        }
        xml = prologue + "<e57Root type=\"Structure\">" + about + "<data3D type=\"Vector\">" + xml +
              "</data3D></e57Root>\n";
        const std::size_t xmlBegin = data.size();
        data.insert(data.end(), xml.begin(), xml.end());
        data.resize((data.size() + 1019) / 1020 * 1020);
        std::memcpy(data.data(), "ASTM-E57", 8);
        put<std::uint32_t>(data, 8, 1);
        put<std::uint64_t>(data, 16, data.size() / 1020 * 1024);
        put<std::uint64_t>(data, 24, physical(xmlBegin));
        put<std::uint64_t>(data, 32, xml.size());
        put<std::uint64_t>(data, 40, 1024);
        std::string file;
        for (std::size_t page = 0; page < data.size(); page += 1020) {
            file.append(reinterpret_cast<const char*>(data.data()) + page, 1020);
            file.append(4, '\0');
        }
        mendPages(reinterpret_cast<std::uint8_t*>(file.data()), file.size());
        return file;
    }

private:
    static std::uint64_t physical(std::size_t logical) {
        return logical / 1020 * 1024 + logical % 1020;
    }
    template <typename T>
    static void put(std::vector<std::uint8_t>& data, std::size_t at, T value) {
        std::memcpy(data.data() + at, &value, sizeof value);
    }
    static void addOther(std::vector<std::uint8_t>& data, std::uint8_t kind, std::size_t size) {
        const std::size_t begin = data.size();
        data.resize(begin + size);
        data[begin] = kind;
        put<std::uint16_t>(data, begin + 2, static_cast<std::uint16_t>(size - 1));
    }
    void addPackets(std::vector<std::uint8_t>& data, const E57Scan& scan) const {
        std::size_t longest = 0;
        for (const Bits& stream : scan.streams) {
            longest = std::max(longest, stream.bytes().size());
        }
        for (std::size_t from = 0; from < longest; from += packetBytes) {
            if (withOtherPackets) {
                addOther(data, 0, 32);
                addOther(data, 2, 8);
            }
            const std::size_t begin = data.size();
            data.resize(begin + 6 + 2 * scan.streams.size());
            data[begin] = 1;
            put<std::uint16_t>(data, begin + 4, static_cast<std::uint16_t>(scan.streams.size()));
            for (std::size_t i = 0; i < scan.streams.size(); ++i) {
                const std::vector<std::uint8_t>& bytes = scan.streams[i].bytes();
                const std::size_t first = std::min(from, bytes.size());
                const std::size_t last = std::min(from + packetBytes, bytes.size());
                put<std::uint16_t>(data, begin + 6 + 2 * i,
                                   static_cast<std::uint16_t>(last - first));
                data.insert(data.end(), bytes.begin() + static_cast<std::ptrdiff_t>(first),
                            bytes.begin() + static_cast<std::ptrdiff_t>(last));
            }
            data.resize((data.size() + 3) / 4 * 4);
            put<std::uint16_t>(data, begin + 2,
                               static_cast<std::uint16_t>(data.size() - begin - 1));
        }
    }
};

inline std::string e57Field(const std::string& name, const std::string& type,
                            const std::string& attributes = {}) {
    return "<" + name + " type=\"" + type + "\" " + attributes + "/>";
}

inline std::string e57Range(std::int64_t low, std::int64_t high, const std::string& more = {}) {
    return "minimum=\"" + std::to_string(low) + "\" maximum=\"" + std::to_string(high) + "\" " +
           more;
}

}  // namespace tarvo::exchange::tests
