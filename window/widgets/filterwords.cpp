#include "window/widgets/filterwords.h"

#include <QRegularExpression>
#include <algorithm>

namespace tarvo::window {

namespace {

// Longer than any name with an index, an operator and a word.
constexpr qsizetype longestLook = 400;

bool isNamePart(QChar c) {
    return (c.unicode() < 0x80 && c.isLetterOrNumber()) || c == '.' || c == '_';
}

// Behind the cursor the rest of the word, with the index of an element.
qsizetype endOfWord(const QString& filter, qsizetype cursor) {
    qsizetype end = cursor;
    while (end < filter.size() && isNamePart(filter[end]))
        ++end;
    static const QRegularExpression index("\\G\\[\\d*\\]?");
    const auto match = index.match(filter, end);
    return match.hasMatch() ? match.capturedEnd() : end;
}

// Behind the quotation mark that ends the name at the cursor; the cursor where there is none.
qsizetype endOfQuoted(const QString& filter, qsizetype cursor, QChar mark) {
    const bool isClosed = filter.mid(cursor).count(mark) % 2 == 1;
    return isClosed ? filter.indexOf(mark, cursor) + 1 : cursor;
}

}  // namespace

std::optional<FilterWord> filterWordAt(const QString& filter, qsizetype cursor) {
    static const QRegularExpression comparison(
        "(?<![\\w.])([A-Za-z_][\\w.]*)\\s*(?:\\[\\s*\\d+\\s*\\])?\\s*(?:==|!=|<=|>=|<|>)\\s*"
        "(\"[^\"]*|'[^']*|-?[\\w.]*(?:\\[\\d*\\]?)?)$");
    static const QRegularExpression name("(?<![\\w.:])[A-Za-z_][\\w.]*(?:\\[\\d*\\]?)?$");
    const qsizetype first = std::max<qsizetype>(0, cursor - longestLook);
    const QString before = filter.mid(first, cursor - first);
    FilterWord word;
    if (const auto match = comparison.match(before); match.hasMatch()) {
        word.text = match.captured(2);
        word.compared = match.captured(1);
    } else if (const auto match = name.match(before); match.hasMatch()) {
        word.text = match.captured();
    } else {
        return std::nullopt;
    }
    word.begin = cursor - word.text.size();
    word.isQuoted = word.text.startsWith('"') || word.text.startsWith('\'');
    if (word.isQuoted) {
        word.end = endOfQuoted(filter, cursor, word.text[0]);
        word.text.remove(0, 1);
    } else {
        word.end = word.text.endsWith(']') ? cursor : endOfWord(filter, cursor);
    }
    return word;
}

}  // namespace tarvo::window
