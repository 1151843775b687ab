#include "window/widgets/jsonsyntaxhighlighter.h"

#include "window/common/theme.h"

namespace tarvo::window {

namespace {

// Beyond it lines stay plain: each change of a line colours it anew.
constexpr qsizetype longestColoured = 20'000;

bool isWordCharacter(QChar c) {
    return c.isLetterOrNumber() || c == '+' || c == '-' || c == '.' || c == '_';
}

// Behind the closing quote; -1: there is none.
qsizetype endOfString(const QString& text, qsizetype begin) {
    for (qsizetype i = begin + 1; i < text.size(); ++i) {
        if (text[i] == '\\')
            ++i;
        else if (text[i] == '"')
            return i + 1;
    }
    return -1;
}

bool isFollowedByColon(const QString& text, qsizetype from) {
    while (from < text.size() && text[from].isSpace())
        ++from;
    return from < text.size() && text[from] == ':';
}

bool isNumber(const QString& word) {
    bool ok = false;
    word.toDouble(&ok);
    // "nan", "inf" and "+1" read as numbers, too.
    return ok && (word[0].isDigit() || word[0] == '-') && word.back().isDigit();
}

}  // namespace

JsonSyntaxHighlighter::JsonSyntaxHighlighter(QTextDocument* document)
    : QSyntaxHighlighter(document) {}

void JsonSyntaxHighlighter::adaptTo(const QPalette& palette) {
    m_name.setForeground(readable(QColor("#0b5394"), palette));
    m_string.setForeground(readable(QColor("#2e7d32"), palette));
    m_number.setForeground(readable(QColor("#9c4a00"), palette));
    m_literal.setForeground(readable(QColor("#7b1fa2"), palette));
    m_error.setForeground(readable(QColor("#c62828"), palette));
    m_error.setFontUnderline(true);
    rehighlight();
}

void JsonSyntaxHighlighter::setActive(bool active) {
    if (active == m_active)
        return;
    m_active = active;
    rehighlight();
}

void JsonSyntaxHighlighter::highlightBlock(const QString& text) {
    if (!m_active || text.size() > longestColoured)
        return;
    const auto colour = [this](qsizetype begin, qsizetype end, const QTextCharFormat& format) {
        setFormat(static_cast<int>(begin), static_cast<int>(end - begin), format);
    };
    for (qsizetype i = 0; i < text.size();) {
        if (text[i] == '"') {
            const qsizetype end = endOfString(text, i);
            if (end < 0) {
                colour(i, text.size(), m_error);
                return;
            }
            colour(i, end, isFollowedByColon(text, end) ? m_name : m_string);
            i = end;
        } else if (isWordCharacter(text[i])) {
            qsizetype end = i;
            while (end < text.size() && isWordCharacter(text[end]))
                ++end;
            const QString word = text.mid(i, end - i);
            if (word == "true" || word == "false" || word == "null")
                colour(i, end, m_literal);
            else
                colour(i, end, isNumber(word) ? m_number : m_error);
            i = end;
        } else {
            if (!text[i].isSpace() && !QString("{}[],:").contains(text[i]))
                colour(i, i + 1, m_error);
            ++i;
        }
    }
}

}  // namespace tarvo::window
