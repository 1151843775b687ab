#include "window/dialogs/plugin/outputtext.h"

namespace tarvo::window {

namespace {

constexpr char16_t escape = 0x1b;
constexpr char16_t bell = 0x07;

// Of the controls of directions, which make a text look like another.
bool turnsDirection(char16_t c) {
    return c == 0x200e || c == 0x200f || (c >= 0x202a && c <= 0x202e) ||
           (c >= 0x2066 && c <= 0x2069);
}

bool isControl(char16_t c) {
    return c < 0x20 || (c >= 0x7f && c < 0xa0);
}

}  // namespace

QString OutputText::add(std::string_view bytes) {
    const QString decoded =
        m_decoder.decode(QByteArrayView(bytes.data(), static_cast<qsizetype>(bytes.size())));
    QString text;
    text.reserve(decoded.size());
    for (const QChar c : decoded)
        if (!isPartOfEscape(c))
            addCharacter(text, c);
    return text;
}

// Follows "ESC [ ... letter", "ESC ] ... BEL or ESC \", and "ESC letter".
bool OutputText::isPartOfEscape(QChar c) {
    const char16_t code = c.unicode();
    switch (m_state) {
        case State::TEXT:
            if (code != escape)
                return false;
            m_state = State::ESCAPE;
            return true;
        case State::ESCAPE:
            if (code >= 0x20 && code < 0x30)  // there is more to come
                return true;
            m_state = code == '['                                                ? State::SEQUENCE
                      : code == ']' || code == 'P' || code == '_' || code == '^' ? State::STRING
                                                                                 : State::TEXT;
            return true;
        case State::SEQUENCE:
            if (code >= 0x20 && code < 0x40)
                return true;
            m_state = State::TEXT;
            return code >= 0x40 && code < 0x7f;
        case State::STRING:
            if (code == escape)
                m_state = State::STRING_ESCAPE;
            else if (code == bell || code == '\n')
                m_state = State::TEXT;
            return true;
        case State::STRING_ESCAPE:
            m_state = State::TEXT;
            return code == '\\' || isPartOfEscape(c);
    }
    return false;
}

void OutputText::addCharacter(QString& text, QChar c) {
    const char16_t code = c.unicode();
    const bool wasReturn = m_afterReturn;
    m_afterReturn = code == '\r';
    if (code == '\n' && wasReturn)
        return;
    if (code == '\n' || code == '\r' || code == QChar::LineSeparator ||
        code == QChar::ParagraphSeparator) {
        text += '\n';
        m_column = 0;
        return;
    }
    if (m_column >= longestOutputLine && !c.isLowSurrogate()) {
        text += '\n';
        m_column = 0;
    }
    const bool harmless = code == '\t' || (!isControl(code) && !turnsDirection(code));
    text += harmless ? c : QChar(QChar::ReplacementCharacter);
    ++m_column;
}

}  // namespace tarvo::window
