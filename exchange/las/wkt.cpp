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

    std::optional<WktTree> run() {
        skipBlanks();
        while (m_at < m_text.size()) {
            if (!readPart()) {
                return std::nullopt;
            }
            skipBlanks();
        }
        return m_open.empty() && !m_tree.roots.empty() ? std::optional(std::move(m_tree))
                                                       : std::nullopt;
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

    std::optional<core::ReferenceSystem> run() {
        const WktNode* const whole = unwrapped(m_tree.roots.front());
        if (whole == nullptr) {
            return std::nullopt;
        }
        std::vector<const WktNode*> parts;
        if (isOneOf(whole->keyword, {"COMPD_CS", "COMPOUNDCRS"})) {
            for (const std::size_t child : whole->children) {
                parts.push_back(unwrapped(child));
            }
        } else {
            parts.push_back(whole);
            // Some writers put the system of the heights behind the other one.
            for (std::size_t i = 1; i < m_tree.roots.size(); ++i) {
                parts.push_back(unwrapped(m_tree.roots[i]));
            }
        }
        const WktNode* horizontal = nullptr;
        const WktNode* vertical = nullptr;
        for (const WktNode* part : parts) {
            if (part != nullptr && isVertical(part->keyword)) {
                vertical = vertical ? vertical : part;
            } else if (part != nullptr && (isPlane(part->keyword) || isEarth(part->keyword))) {
                horizontal = horizontal ? horizontal : part;
            }
        }
        if (horizontal == nullptr && vertical == nullptr) {
            return std::nullopt;
        }
        return systemOf(*whole, horizontal, vertical);
    }

private:
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
        return shortText(authority + ":" + std::string(id->values[1]), 2 * longestCode + 1);
    }
    std::string unitText(const WktNode* unit, bool isAngle) const {
        if (unit == nullptr || unit->values.empty()) {
            return {};
        }
        double factor = 0;
        if (unit->values.size() > 1) {
            const std::string_view text = unit->values[1];
            const std::size_t sign = text.starts_with('+') ? 1 : 0;
            std::from_chars(text.data() + sign, text.data() + text.size(), factor);
        }
        isAngle =
            isOneOf(unit->keyword, {"ANGLEUNIT"}) || (isAngle && isOneOf(unit->keyword, {"UNIT"}));
        return isAngle ? angleUnit(factor, unit->values[0]) : lengthUnit(factor, unit->values[0]);
    }
    // Of an axis, or of all axes together.
    std::string unit(const WktNode& node, std::size_t axis, bool isAngle) const {
        const auto words = {std::string_view("UNIT"), std::string_view("LENGTHUNIT"),
                            std::string_view("ANGLEUNIT")};
        const WktNode* const own = find(node, {"AXIS"}, axis);
        const WktNode* const ofAxis = own ? find(*own, words) : nullptr;
        return unitText(ofAxis ? ofAxis : find(node, words), isAngle);
    }
    core::ReferenceSystem systemOf(const WktNode& whole, const WktNode* horizontal,
                                   const WktNode* vertical) const {
        core::ReferenceSystem system;
        const auto name = [](const WktNode& node) {
            return shortText(node.values.empty() ? std::string_view() : node.values[0],
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
};

}  // namespace

std::optional<WktTree> parseWkt(std::string_view text) {
    return WktParser(text).run();
}

std::optional<core::ReferenceSystem> systemOfWkt(std::string_view text) {
    const auto tree = parseWkt(text);
    if (!tree) {
        return std::nullopt;
    }
    auto system = WktReader(*tree).run();
    if (system) {
        system->wkt = core::validUtf8(text);
    }
    return system;
}

}  // namespace tarvo::exchange::las
