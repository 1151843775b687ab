#include "exchange/las/wkt.h"

#include "core/utf8.h"
#include "exchange/las/units.h"

#include <algorithm>
#include <charconv>
#include <initializer_list>

namespace tarvo::exchange::las {

namespace {

constexpr std::size_t deepest = 32;
constexpr std::size_t mostNodes = 20000;
constexpr std::size_t longestWktName = 200;
constexpr std::size_t longestCode = 24;
constexpr std::size_t longestUnitName = 40;
constexpr std::size_t longestQuote = 24;  // of a text in a message

bool isWord(char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '_' ||
           c == '.' || c == '+' || c == '-' || c == ':';
}

bool isBlank(char c) {
    return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

class WktParser {
public:
    explicit WktParser(std::string_view text) : m_text(text) {}

    WktTree run() {
        skipBlanks();
        while (m_at < m_text.size()) {
            const std::size_t begin = m_at;
            if (!readPart()) {
                m_tree.rest = m_text.substr(begin);
                break;
            }
            skipBlanks();
        }
        m_tree.isCut = m_tree.rest.empty() && !m_open.empty();
        if (m_open.size() > 1) {
            m_tree.nodes[m_open[m_open.size() - 2]].children.pop_back();
        }
        return std::move(m_tree);
    }

private:
    void skipBlanks() {
        while (m_at < m_text.size() && isBlank(m_text[m_at])) {
            ++m_at;
        }
    }
    bool readPart() {
        const char c = m_text[m_at];
        if (c == ',') {
            ++m_at;
            return true;
        }
        if (c == ']' || c == ')') {
            ++m_at;
            if (m_open.empty()) {
                return false;
            }
            m_open.pop_back();
            return true;
        }
        return c == '"' ? readString() : readWord();
    }
    bool readString() {
        const std::size_t begin = ++m_at;
        // A quote within is written twice.
        for (;; m_at += 2) {
            m_at = m_text.find('"', m_at);
            if (m_at == std::string_view::npos) {
                return false;
            }
            if (m_at + 1 >= m_text.size() || m_text[m_at + 1] != '"') {
                break;
            }
        }
        return addValue(m_text.substr(begin, m_at++ - begin));
    }
    bool readWord() {
        const std::size_t begin = m_at;
        while (m_at < m_text.size() && isWord(m_text[m_at])) {
            ++m_at;
        }
        const std::string_view word = m_text.substr(begin, m_at - begin);
        skipBlanks();
        if (word.empty()) {
            return false;
        }
        if (m_at == m_text.size() || (m_text[m_at] != '[' && m_text[m_at] != '(')) {
            return addValue(word);
        }
        ++m_at;
        if (m_open.size() == deepest || m_tree.nodes.size() == mostNodes) {
            return false;
        }
        const std::size_t place = m_tree.nodes.size();
        m_tree.nodes.push_back({word, {}, {}});
        (m_open.empty() ? m_tree.roots : m_tree.nodes[m_open.back()].children).push_back(place);
        m_open.push_back(place);
        return true;
    }
    bool addValue(std::string_view value) {
        if (m_open.empty()) {
            return false;
        }
        m_tree.nodes[m_open.back()].values.push_back(value);
        return true;
    }

    std::string_view m_text;
    std::size_t m_at = 0;
    WktTree m_tree;
    std::vector<std::size_t> m_open;
};

// A quote within a name is written twice.
std::string undoubled(std::string_view text) {
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        result += text[i];
        i += text.substr(i, 2) == "\"\"" ? 1 : 0;
    }
    return result;
}

// Without what some writers put around the text.
std::string_view bare(std::string_view text) {
    constexpr std::string_view blanks(" \t\r\n\0", 5);
    constexpr std::string_view byteOrderMark = "\xef\xbb\xbf";
    const auto strip = [&] {
        text.remove_prefix(std::min(text.find_first_not_of(blanks), text.size()));
    };
    strip();
    if (text.starts_with(byteOrderMark)) {
        text.remove_prefix(byteOrderMark.size());
        strip();
    }
    return text.substr(0, text.find_last_not_of(blanks) + 1);
}

bool isOneOf(std::string_view keyword, std::initializer_list<std::string_view> words) {
    return std::any_of(words.begin(), words.end(), [&](std::string_view word) {
        return std::equal(keyword.begin(), keyword.end(), word.begin(), word.end(),
                          [](char a, char b) { return (a >= 'a' && a <= 'z' ? a - 32 : a) == b; });
    });
}

bool isPlane(std::string_view keyword) {
    return isOneOf(keyword, {"PROJCS", "PROJCRS", "PROJECTEDCRS", "DERIVEDPROJCRS", "LOCAL_CS",
                             "ENGCRS", "ENGINEERINGCRS", "GEOCCS"});
}

bool isEarth(std::string_view keyword) {
    return isOneOf(keyword, {"GEOGCS", "GEOGCRS", "GEOGRAPHICCRS", "GEODCRS", "GEODETICCRS"});
}

bool isVertical(std::string_view keyword) {
    return isOneOf(keyword, {"VERT_CS", "VERTCS", "VERTCRS", "VERTICALCRS"});
}

class WktReader {
public:
    explicit WktReader(const WktTree& tree) : m_tree(tree) {}

    core::ReferenceSystem run() {
        core::ReferenceSystem system;
        if (m_tree.isCut) {
            noteUnread(m_unread, "the end of the well-known text, which is cut off");
        } else if (!m_tree.rest.empty()) {
            noteUnread(m_unread, "the well-known text from \"" +
                                     shortText(m_tree.rest, longestQuote) + "\" on");
        }
        if (const WktNode* const whole =
                m_tree.roots.empty() ? nullptr : unwrapped(m_tree.roots.front())) {
            system = systemOf(*whole);
        } else {
            noteUnread(m_unread, "the well-known text");
        }
        system.unread = std::move(m_unread);
        return system;
    }

private:
    core::ReferenceSystem systemOf(const WktNode& whole) {
        std::vector<const WktNode*> parts;
        if (isOneOf(whole.keyword, {"COMPD_CS", "COMPOUNDCRS"})) {
            for (const std::size_t child : whole.children) {
                parts.push_back(unwrapped(child));
            }
        } else {
            parts.push_back(&whole);
        }
        // Some writers put the system of the heights behind the other one.
        const std::size_t within = parts.size();
        for (std::size_t i = 1; i < m_tree.roots.size(); ++i) {
            parts.push_back(unwrapped(m_tree.roots[i]));
        }
        const WktNode* horizontal = nullptr;
        const WktNode* vertical = nullptr;
        for (std::size_t i = 0; i < parts.size(); ++i) {
            const WktNode* const part = parts[i];
            if (part != nullptr && isVertical(part->keyword) && vertical == nullptr) {
                vertical = part;
            } else if (part != nullptr && (isPlane(part->keyword) || isEarth(part->keyword)) &&
                       horizontal == nullptr) {
                horizontal = part;
            } else if (i >= within) {
                noteUnread(m_unread, "what stands behind the well-known text");
            }
        }
        if (horizontal == nullptr && vertical == nullptr) {
            noteUnread(m_unread, "the well-known text, which is no system of points in space");
        }
        return systemOf(whole, horizontal, vertical);
    }
    const WktNode& child(const WktNode& node, std::size_t i) const {
        return m_tree.nodes[node.children[i]];
    }
    const WktNode* find(const WktNode& node, std::initializer_list<std::string_view> words,
                        std::size_t index = 0) const {
        for (std::size_t i = 0; i < node.children.size(); ++i) {
            if (isOneOf(child(node, i).keyword, words) && index-- == 0) {
                return &child(node, i);
            }
        }
        return nullptr;
    }
    // The system itself, out of what binds it to another one, to an epoch or the like.
    const WktNode* unwrapped(std::size_t place) const {
        const WktNode* node = &m_tree.nodes[place];
        for (std::size_t depth = 0; depth < deepest; ++depth) {
            if (!isOneOf(node->keyword, {"BOUNDCRS", "SOURCECRS", "COORDINATEMETADATA"})) {
                return node;
            }
            const bool bound = isOneOf(node->keyword, {"BOUNDCRS"});
            const WktNode* const inner = bound                    ? find(*node, {"SOURCECRS"})
                                         : node->children.empty() ? nullptr
                                                                  : &child(*node, 0);
            if (inner == nullptr) {
                return nullptr;
            }
            node = inner;
        }
        return nullptr;
    }
    // "EPSG:25832" of the system itself.
    std::string code(const WktNode& node) const {
        const WktNode* const id = find(node, {"AUTHORITY", "ID"});
        if (id == nullptr || id->values.size() < 2 || id->values[0].empty() ||
            id->values[1].empty() || id->values[0].size() > longestCode ||
            id->values[1].size() > longestCode) {
            return {};
        }
        std::string authority(id->values[0]);
        std::transform(authority.begin(), authority.end(), authority.begin(),
                       [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c; });
        return shortText(authority + ":" + undoubled(id->values[1]), 2 * longestCode + 1);
    }
    std::string unitText(const WktNode* unit, bool isAngle) {
        if (unit == nullptr) {
            return {};
        }
        const std::string name = unit->values.empty() ? "" : undoubled(unit->values[0]);
        isAngle =
            isOneOf(unit->keyword, {"ANGLEUNIT"}) || (isAngle && isOneOf(unit->keyword, {"UNIT"}));
        std::string symbol;
        if (unit->values.size() == 1) {
            symbol = shortText(name, longestUnitName);
        } else if (unit->values.size() > 1) {
            std::string_view text = unit->values[1];
            text.remove_prefix(text.starts_with('+') ? 1 : 0);
            double factor = 0;
            const auto read = std::from_chars(text.data(), text.data() + text.size(), factor);
            factor = read.ptr == text.data() + text.size() ? factor : 0;
            symbol = isAngle ? angleUnit(factor, name) : lengthUnit(factor, name);
        }
        if (symbol.empty()) {
            noteUnread(m_unread, "the unit \"" + shortText(name, longestQuote) + "\"" +
                                     (unit->values.size() > 1
                                          ? " with the factor \"" +
                                                shortText(unit->values[1], longestQuote) + "\""
                                          : ""));
        }
        return symbol;
    }
    // Of an axis, or of all axes together.
    std::string unit(const WktNode& node, std::size_t axis, bool isAngle) {
        const auto words = {std::string_view("UNIT"), std::string_view("LENGTHUNIT"),
                            std::string_view("ANGLEUNIT")};
        const WktNode* const own = find(node, {"AXIS"}, axis);
        const WktNode* const ofAxis = own ? find(*own, words) : nullptr;
        return unitText(ofAxis ? ofAxis : find(node, words), isAngle);
    }
    core::ReferenceSystem systemOf(const WktNode& whole, const WktNode* horizontal,
                                   const WktNode* vertical) {
        core::ReferenceSystem system;
        const auto name = [](const WktNode& node) {
            return shortText(node.values.empty() ? std::string() : undoubled(node.values[0]),
                             longestWktName);
        };
        system.name = name(whole);
        system.code = code(whole);
        std::uint32_t epsg = 0;
        if (system.code.starts_with("EPSG:")) {
            const char* const end = system.code.data() + system.code.size();
            const auto read = std::from_chars(system.code.data() + 5, end, epsg);
            system.epsg = read.ptr == end && epsg >= 1024 && epsg <= 999999 ? epsg : 0;
        }
        if (horizontal != nullptr) {
            const WktNode* const coordinates = find(*horizontal, {"CS"});
            const bool isAngle = isEarth(horizontal->keyword) &&
                                 !(coordinates != nullptr && !coordinates->values.empty() &&
                                   isOneOf(coordinates->values[0], {"CARTESIAN"}));
            system.horizontalUnit = unit(*horizontal, 0, isAngle);
            // Heights above an ellipsoid; no angle is one.
            if (find(*horizontal, {"AXIS"}, 2) != nullptr) {
                const std::string third = unit(*horizontal, 2, isAngle);
                system.verticalUnit = isAngle && third == system.horizontalUnit ? "" : third;
            }
        }
        if (vertical != nullptr) {
            system.verticalUnit = unit(*vertical, 0, false);
        }
        if (horizontal != nullptr && vertical != nullptr) {
            const std::string first = code(*horizontal);
            const std::string second = code(*vertical);
            if (horizontal == &whole) {
                system.name += system.name.empty() ? "" : " + ";
                system.name += name(*vertical);
                system.code.clear();
                system.epsg = 0;
            }
            if (!first.empty() && !second.empty()) {
                const std::size_t authority = first.find(':') + 1;
                const bool isShared = second.starts_with(first.substr(0, authority));
                system.code = first + "+" + (isShared ? second.substr(authority) : second);
            }
        }
        return system;
    }

    const WktTree& m_tree;
    std::string m_unread;
};

}  // namespace

WktTree parseWkt(std::string_view text) {
    return WktParser(text).run();
}

std::optional<core::ReferenceSystem> systemOfWkt(std::string_view text) {
    text = bare(text);
    if (text.empty()) {
        return std::nullopt;
    }
    const WktTree tree = parseWkt(text);
    core::ReferenceSystem system = WktReader(tree).run();
    system.wkt = core::validUtf8(text);
    return system;
}

}  // namespace tarvo::exchange::las
