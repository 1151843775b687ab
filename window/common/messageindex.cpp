#include "window/common/messageindex.h"

#include <algorithm>
#include <optional>

namespace tarvo::window {

namespace {

constexpr qsizetype keyLength = 4;
constexpr qsizetype longestNumber = 60;
constexpr qsizetype usualLength = 2000;
constexpr int mostAttempts = 100;  // to divide a text of that length

MessageIndex::Pattern compiled(const MessagePattern& source) {
    MessageIndex::Pattern pattern{&source, {QString()}, 0};
    const QString text = QString::fromUtf8(source.text);
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i] == '%' && i + 1 < text.size() && text[i + 1].isDigit()) {
            pattern.pieces += QString();
            ++i;
            continue;
        }
        pattern.pieces.back() += text[i];
        ++pattern.letters;
    }
    return pattern;
}

bool isNumber(QStringView text) {
    return !text.isEmpty() && text.size() <= longestNumber &&
           (std::all_of(text.begin(), text.end(),
                        [](QChar c) {
                            return c.isDigit() || c.isSpace() ||
                                   QStringView(u".,'+-eE").contains(c);
                        }) ||
            text.compare(u"nan", Qt::CaseInsensitive) == 0 || text.endsWith(u"inf"));
}

bool canBe(char kind, QStringView text) {
    return kind == 'v' || (kind == 'n' ? isNumber(text) : !text.isEmpty());
}

// What stands before pieces[number] and all further ones from at on; false: they don't fit.
bool capture(const MessageIndex::Pattern& pattern, QStringView text, qsizetype number, qsizetype at,
             int& attempts, QList<QStringView>& captures) {
    const QString& piece = pattern.pieces[number];
    const bool last = number + 1 == pattern.pieces.size();
    qsizetype next = last ? text.size() - piece.size() : text.indexOf(piece, at);
    while (next >= at && attempts-- > 0) {
        const QStringView found = text.sliced(at, next - at);
        if (canBe(pattern.source->kinds[number - 1], found)) {
            captures += found;
            if (last || capture(pattern, text, number + 1, next + piece.size(), attempts, captures))
                return true;
            captures.removeLast();
        }
        next = last ? -1 : text.indexOf(piece, next + 1);
    }
    return false;
}

std::optional<QList<QStringView>> captured(const MessageIndex::Pattern& pattern, QStringView text) {
    const QStringList& pieces = pattern.pieces;
    if (pieces.size() == 1)
        return text == pieces[0] ? std::optional(QList<QStringView>()) : std::nullopt;
    if (text.size() < pattern.letters || !text.startsWith(pieces.front()) ||
        !text.endsWith(pieces.back()))
        return {};
    QList<QStringView> captures;
    int attempts = text.size() < usualLength ? mostAttempts : static_cast<int>(pieces.size());
    if (!capture(pattern, text, 1, pieces.front().size(), attempts, captures))
        return {};
    return captures;
}

}  // namespace

MessageIndex::MessageIndex(std::span<const MessagePattern> patterns) {
    m_patterns.reserve(static_cast<qsizetype>(patterns.size()));
    for (const MessagePattern& source : patterns) {
        const qsizetype number = m_patterns.size();
        m_patterns += compiled(source);
        const QString& begin = m_patterns.back().pieces.front();
        const QString& end = m_patterns.back().pieces.back();
        if (begin.size() >= keyLength)
            m_byBegin[begin.first(keyLength)] += number;
        else if (end.size() >= keyLength)
            m_byEnd[end.last(keyLength)] += number;
        else
            m_others += number;
    }
}

QList<MessageIndex::Match> MessageIndex::matches(QStringView text, qint64& work) const {
    QList<qsizetype> candidates = m_others;
    if (text.size() >= keyLength) {
        candidates += m_byBegin.value(text.first(keyLength).toString());
        candidates += m_byEnd.value(text.last(keyLength).toString());
    }
    QList<Match> found;
    for (const qsizetype number : candidates) {
        const Pattern& pattern = m_patterns[number];
        work -= pattern.pieces.size() > 2 ? text.size() : keyLength;
        if (work < 0)
            break;
        if (auto captures = captured(pattern, text))
            found += {&pattern, std::move(*captures)};
    }
    std::stable_sort(found.begin(), found.end(), [](const Match& a, const Match& b) {
        return a.pattern->letters > b.pattern->letters;
    });
    return found;
}

}  // namespace tarvo::window
