#include "core/json.h"

#include <algorithm>
#include <optional>

namespace tarvo::core {

namespace {

constexpr std::size_t indentWidth = 4;
// A text of a few megabytes that nests deep would need terabytes for its indents.
constexpr std::size_t longestFormatted = 256 << 20;

// A JSON document with other white space between its parts, which stay as they are. Nothing where
// it would become too long.
class Layout {
public:
    Layout(std::string_view json, bool indents) : m_json(json), m_indents(indents) {}

    std::optional<std::string> run() {
        for (skipBlanks(); m_at < m_json.size(); skipBlanks()) {
            addPart();
            if (m_text.size() > longestFormatted)
                return std::nullopt;
        }
        return std::move(m_text);
    }

private:
    void skipBlanks() { m_at = std::min(m_json.find_first_not_of(" \t\r\n", m_at), m_json.size()); }
    void addPart() {
        const char c = m_json[m_at];
        if (c == '"') {
            addString();
            return;
        }
        ++m_at;
        if (c == '}' || c == ']') {
            --m_depth;
            startLine();
        }
        m_text += c;
        if (c == '{' || c == '[') {
            skipBlanks();
            if (m_json[m_at] == '}' || m_json[m_at] == ']') {
                m_text += m_json[m_at++];
                return;
            }
            ++m_depth;
            startLine();
        } else if (c == ',') {
            startLine();
        } else if (c == ':' && m_indents) {
            m_text += ' ';
        }
    }
    void addString() {
        const std::size_t begin = m_at++;
        while (m_json[m_at] != '"')
            m_at += m_json[m_at] == '\\' ? 2 : 1;
        m_text += m_json.substr(begin, ++m_at - begin);
    }
    void startLine() {
        if (m_indents)
            m_text.append(1, '\n').append(m_depth * indentWidth, ' ');
    }

    std::string_view m_json;
    bool m_indents;
    std::string m_text;
    std::size_t m_at = 0;
    std::size_t m_depth = 0;
};

}  // namespace

bool isJson(std::string_view text) {
    rapidjson::BaseReaderHandler<> nothing;
    return readJson(text, nothing);
}

std::string formattedJson(const std::string& text) {
    return isJson(text) ? Layout(text, true).run().value_or(text) : text;
}

bool compactJson(std::string& text) {
    if (!isJson(text))
        return false;
    text = Layout(text, false).run().value_or(text);
    return true;
}

}  // namespace tarvo::core
