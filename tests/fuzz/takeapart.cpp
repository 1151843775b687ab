#include "engine/index/node.h"
#include "tests/fuzz/parts.h"
#include "tests/fuzz/sql.h"

#include <zstd.h>

#include <map>
#include <string_view>

namespace tarvo::fuzz {

using namespace tarvo::engine;

namespace {

class TakingApart {
public:
    explicit TakingApart(const std::string& fileName) : m_sql(fileName) {}

    Parts take() {
        Bytes identity = m_sql.get("SELECT value FROM info WHERE name = 'identity'");
        std::vector<Part> roots;
        std::int64_t id = 0;
        while (true) {
            const Bytes next = m_sql.get("SELECT id FROM snapshot WHERE id > ? ORDER BY id", id);
            if (next.empty())
                break;
            id = std::stoll(std::string(next.begin(), next.end()));
            const Bytes root = m_sql.get("SELECT root FROM snapshot WHERE id = ?", id);
            roots.push_back({Kind::Root, text({root.begin(), root.end()})});
        }
        m_parts.insert(m_parts.end(), roots.begin(), roots.end());
        m_parts.push_back({Kind::Identity, std::move(identity)});
        return m_parts;
    }

private:
    Bytes blob(const BlobRef& reference) {
        Bytes whole = m_sql.get("SELECT data FROM blob WHERE id = ?",
                                static_cast<std::int64_t>(reference.blob));
        if (reference.length == 0)
            return whole;
        const auto begin = whole.begin() + static_cast<std::ptrdiff_t>(reference.offset);
        return {begin, begin + reference.length};
    }
    static Bytes unpacked(ByteSpan frame) {
        Bytes plain(ZSTD_getFrameContentSize(frame.data(), frame.size()));
        ZSTD_decompress(plain.data(), plain.size(), frame.data(), frame.size());
        return plain;
    }
    std::uint32_t add(Kind kind, Bytes content) {
        m_parts.push_back({kind, std::move(content)});
        return static_cast<std::uint32_t>(m_parts.size() - 1);
    }
    std::uint32_t partOf(const BlobRef& reference, Kind kind) {
        const std::pair place(reference.blob, reference.offset);
        if (const auto found = m_known.find(place); found != m_known.end())
            return found->second;
        Bytes content = blob(reference);
        if (kind == Kind::Text) {
            content = text({content.begin(), content.end()});
        } else if (kind == Kind::Page) {
            index::Page page = index::decodePage(content);
            for (index::Node& node : page)
                replace(node);
            content = unpacked(index::encodePage(page));
        } else if (kind == Kind::Block && content.at(0) >= 2) {
            Bytes plain = unpacked(ByteSpan(content).subspan(1));
            plain.insert(plain.begin(), content[0]);
            content = std::move(plain);
        }
        return m_known[place] = add(kind, std::move(content));
    }
    // What encodePage makes of it: 01 00 00, the part, "REF!".
    static BlobRef placeholder(std::uint32_t part) {
        return {1, 0, 0, std::uint64_t(0x21464552) << 32 | part};
    }
    void replace(index::Node& node) {
        for (index::AttributeData& attribute : node.attributes)
            for (index::ElementData& element : attribute.elements)
                if (element.block)
                    element.block = placeholder(partOf(element.block, Kind::Block));
        for (index::Node& child : node.children)
            replace(child);
        if (node.childPage)
            node.childPage = placeholder(partOf(node.childPage, Kind::Page));
    }
    // References as the library writes them: "blob":1,"length":2,"checksum":"...".
    Bytes text(std::string in) {
        static constexpr std::string_view begin = "\"blob\":";
        std::string out;
        std::size_t at = 0;
        while (true) {
            const std::size_t found = in.find(begin, at);
            if (found == std::string::npos)
                break;
            const std::size_t end = in.find("\"checksum\":\"", found) + 12 + 16 + 1;
            BlobRef reference;
            reference.blob = std::stoull(in.substr(found + begin.size()));
            const bool isPage = found >= 8 && in.compare(found - 8, 8, "\"root\":{") == 0;
            const std::uint32_t part = partOf(reference, isPage ? Kind::Page : Kind::Text);
            out += in.substr(at, found - at) + "@" + std::to_string(part) + ";";
            at = end;
        }
        out += in.substr(at);
        return {out.begin(), out.end()};
    }

    Sql m_sql;
    Parts m_parts;
    std::map<std::pair<std::uint64_t, std::uint64_t>, std::uint32_t> m_known;
};

}  // namespace

Parts takeApart(const std::string& fileName) {
    return TakingApart(fileName).take();
}

}  // namespace tarvo::fuzz
