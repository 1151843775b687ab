// What a foreign program prints, as text that does nothing but stand there.
#pragma once

#include <QString>
#include <QStringDecoder>
#include <string_view>

namespace tarvo::window {

// Text panes lay out a line as a whole.
constexpr int longestOutputLine = 2000;

// Turns bytes that come in pieces into text: UTF-8, wrong bytes replaced; escape sequences of
// terminals left out; other control characters, those that change the direction of writing
// included, replaced; a carriage return ends a line; lines that are too long are broken.
class OutputText {
public:
    QString add(std::string_view bytes);

private:
    enum class State { TEXT, ESCAPE, SEQUENCE, STRING, STRING_ESCAPE };
    void addCharacter(QString& text, QChar c);
    bool isPartOfEscape(QChar c);

    QStringDecoder m_decoder{QStringDecoder::Utf8};
    State m_state = State::TEXT;
    bool m_afterReturn = false;
    int m_column = 0;
};

}  // namespace tarvo::window
