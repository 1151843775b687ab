#include "tests/fuzz/parts.h"
#include "tests/fuzz/sql.h"

#include <zstd.h>

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <optional>
#include <string_view>

namespace tarvo::fuzz {

using namespace tarvo::engine;

namespace {

constexpr std::size_t mostParts = 4000;
constexpr std::size_t mostExpanded = 4u << 20;  // of a page or block that is packed here

struct Reference {
    std::size_t blob = 0;
    std::size_t length = 0;
    std::uint64_t checksum = 0;
};

std::string hexadecimal(std::uint64_t number) {
    char text[17];
    std::snprintf(text, sizeof text, "%016llx", static_cast<unsigned long long>(number));
    return text;
}

// The references to the blobs so far, by part.
class Assembly {
public:
    void add(const Part& part) {
        Reference reference;
        std::optional<Bytes> blob = blobOf(part);
        if (blob) {
            blobs.push_back(std::move(*blob));
            reference = {blobs.size(), blobs.back().size(), checksum(blobs.back())};
        }
        m_references.push_back(reference);
    }
    // "@N;" resolved.
    std::string text(ByteSpan content) const {
        const std::string_view in(reinterpret_cast<const char*>(content.data()), content.size());
        std::string out;
        for (std::size_t at = 0; at < in.size();) {
            const std::size_t end = in[at] == '@' ? in.find(';', at) : std::string_view::npos;
            if (end == std::string_view::npos || end - at > 5 || end - at < 2) {
                out += in[at++];
                continue;
            }
            const Reference to =
                find(std::strtoul(std::string(in.substr(at + 1, end)).c_str(), nullptr, 10));
            out += "\"blob\":" + std::to_string(to.blob) +
                   ",\"length\":" + std::to_string(to.length) + ",\"checksum\":\"" +
                   hexadecimal(to.checksum) + "\"";
            at = end + 1;
        }
        return out;
    }

    std::vector<Bytes> blobs;

private:
    Reference find(std::size_t part) const {
        return part < m_references.size() ? m_references[part] : Reference{};
    }
    Bytes page(ByteSpan content) const {
        static constexpr std::uint8_t lead[] = {1, 0, 0};
        Bytes out;
        ByteWriter writer(out);
        for (std::size_t at = 0; at < content.size();) {
            if (content.size() - at < 11 || std::memcmp(&content[at], lead, 3) != 0 ||
                std::memcmp(&content[at + 7], "REF!", 4) != 0) {
                out.push_back(content[at++]);
                continue;
            }
            std::uint32_t part = 0;
            std::memcpy(&part, &content[at + 3], 4);
            const Reference to = find(part);
            writer.varint(to.blob);
            writer.varint(0);
            writer.varint(to.length);
            writer.number(to.checksum);
            at += 11;
        }
        return out;
    }
    static Bytes packed(ByteSpan content) {
        Bytes frame(ZSTD_compressBound(content.size()));
        frame.resize(ZSTD_compress(frame.data(), frame.size(), content.data(), content.size(), 1));
        return frame;
    }
    static Bytes bomb(ByteSpan content) {
        std::uint32_t count = 0;
        if (content.size() >= sizeof count)
            std::memcpy(&count, content.data(), sizeof count);
        count = std::min<std::uint32_t>(count, 60000) + 1;
        // Magic, descriptor with a content
        // size of 8 bytes and a single segment, then blocks that repeat one byte.
        Bytes frame;
        ByteWriter writer(frame);
        writer.number<std::uint32_t>(0xFD2FB528);
        writer.number<std::uint8_t>(0xE0);
        writer.number<std::uint64_t>(std::uint64_t(count) << 17);
        for (std::uint32_t i = 0; i < count; ++i) {
            const std::uint32_t header = (1u << 17) << 3 | 1u << 1 | (i + 1 == count ? 1 : 0);
            for (const unsigned shift : {0u, 8u, 16u})
                frame.push_back(static_cast<std::uint8_t>(header >> shift));
            frame.push_back(content.size() > 4 ? content[4] : 0);
        }
        return frame;
    }
    std::optional<Bytes> blobOf(const Part& part) const {
        switch (part.kind) {
            case Kind::Text: {
                const std::string text = this->text(part.content);
                return Bytes(text.begin(), text.end());
            }
            case Kind::Page:
                return packed(page(part.content));
            case Kind::Block: {
                if (part.content.empty() || part.content[0] < 2)
                    return part.content;
                Bytes block{part.content[0]};
                const Bytes frame = packed(ByteSpan(part.content).subspan(1));
                block.insert(block.end(), frame.begin(), frame.end());
                return block;
            }
            case Kind::Bomb:
                return bomb(part.content);
            case Kind::Blob:
                return part.content;
            default:
                return std::nullopt;
        }
    }

    std::vector<Reference> m_references;
};

std::int64_t checksumOf(const std::string& text) {
    return static_cast<std::int64_t>(
        checksum({reinterpret_cast<const std::uint8_t*>(text.data()), text.size()}));
}

}  // namespace

Parts partsFromBytes(ByteSpan bytes) {
    Parts parts;
    std::size_t at = 0;
    while (bytes.size() - at >= 5 && parts.size() < mostParts) {
        Part& part = parts.emplace_back();
        part.kind = static_cast<Kind>(bytes[at] % static_cast<std::uint8_t>(Kind::Count));
        std::uint32_t length = 0;
        std::memcpy(&length, &bytes[at + 1], 4);
        at += 5;
        const std::size_t taken = std::min<std::size_t>({length, bytes.size() - at, mostExpanded});
        part.content.assign(bytes.begin() + static_cast<std::ptrdiff_t>(at),
                            bytes.begin() + static_cast<std::ptrdiff_t>(at + taken));
        at += taken;
    }
    return parts;
}

Bytes bytesFromParts(const Parts& parts) {
    Bytes bytes;
    ByteWriter writer(bytes);
    for (const Part& part : parts) {
        writer.number(static_cast<std::uint8_t>(part.kind));
        writer.number(static_cast<std::uint32_t>(part.content.size()));
        writer.bytes(part.content);
    }
    return bytes;
}

void assemble(const Parts& parts, const std::string& fileName) {
    std::filesystem::remove(fileName);
    std::filesystem::remove(fileName + "-journal");
    Assembly assembly;
    std::vector<std::string> roots;
    std::optional<std::string> identity;
    std::optional<std::string> history;
    for (const Part& part : parts) {
        assembly.add(part);
        if (part.kind == Kind::Root)
            roots.push_back(assembly.text(part.content));
        else if (part.kind == Kind::Identity)
            identity = std::string(part.content.begin(), part.content.end());
        else if (part.kind == Kind::History)
            history = std::string(part.content.begin(), part.content.end());
    }
    const std::string last = std::to_string(assembly.blobs.size());
    if (!history) {
        const std::string current = std::to_string(roots.size());
        history = current + " " + current + " " + last;
        for (std::size_t id = 1; id <= roots.size(); ++id)
            *history += " " + std::to_string(id);
    }
    Sql sql(fileName);
    sql.run(
        "PRAGMA page_size=8192; PRAGMA auto_vacuum=INCREMENTAL; PRAGMA journal_mode=OFF;"
        "PRAGMA synchronous=OFF; PRAGMA application_id=0x51524258; PRAGMA user_version=2; BEGIN;"
        "CREATE TABLE blob(id INTEGER PRIMARY KEY, data BLOB NOT NULL);"
        "CREATE TABLE info(name TEXT PRIMARY KEY, value TEXT NOT NULL, checksum INTEGER NOT NULL) "
        "WITHOUT ROWID;"
        "CREATE TABLE snapshot(id INTEGER PRIMARY KEY, last_blob INTEGER NOT NULL, root TEXT NOT "
        "NULL, checksum INTEGER NOT NULL)");
    std::int64_t id = 0;
    for (const Bytes& blob : assembly.blobs)
        sql.insert("INSERT INTO blob VALUES(?, ?)", ++id, blob);
    id = 0;
    for (const std::string& root : roots) {
        ++id;
        sql.insert("INSERT INTO snapshot VALUES(?, ?, ?, ?)", id,
                   static_cast<std::int64_t>(assembly.blobs.size()), root,
                   checksumOf(std::to_string(id) + ":" + last + ":" + root));
    }
    const std::string names[] = {"identity", "history"};
    for (const std::string& name : names) {
        const std::optional<std::string>& value = name == "identity" ? identity : history;
        if (value)
            sql.insert("INSERT INTO info VALUES(?, ?, ?)", name, *value,
                       checksumOf(name + ":" + *value));
    }
    sql.run("COMMIT");
}

}  // namespace tarvo::fuzz
