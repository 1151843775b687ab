#include "window/panels/changelogentries.h"

namespace tarvo::window {

namespace {

// An expression of the user's is given up after this many steps.
QRegularExpression searchPattern(const QString& pattern) {
    if (pattern.isEmpty())
        return changelogEntryHeader();
    return QRegularExpression("(*LIMIT_MATCH=1000000)" + pattern,
                              QRegularExpression::CaseInsensitiveOption);
}

TextRange rangeOf(const QRegularExpressionMatch& match, bool header) {
    return {match.capturedStart(), match.capturedLength() - (header ? 1 : 0)};
}

}  // namespace

QString faultOfSearch(const QString& pattern) {
    const QRegularExpression expression(pattern);
    return expression.isValid()
               ? QString()
               : QObject::tr("\"%1\" is no regular expression: %2, at character %3.")
                     .arg(pattern, expression.errorString(),
                          QString::number(expression.patternErrorOffset() + 1));
}

const QRegularExpression& changelogEntryHeader() {
    static const QRegularExpression pattern(R"(\[#\d+\][^\n]*\n)");
    return pattern;
}

// As the expression finds them, which takes its time in a text of many megabytes.
int countChangelogEntries(const QString& text) {
    int count = 0;
    for (qsizetype at = text.indexOf("[#"); at >= 0; at = text.indexOf("[#", at)) {
        at += 2;
        const qsizetype digits = at;
        while (at < text.size() && text[at] >= '0' && text[at] <= '9')
            ++at;
        if (at == digits || at >= text.size() || text[at] != ']')
            continue;
        const qsizetype end = text.indexOf('\n', at);
        if (end < 0)
            break;
        ++count;
        at = end + 1;
    }
    return count;
}

std::optional<TextRange> nextInChangelog(const QString& text, const QString& pattern,
                                         qsizetype from) {
    const QRegularExpression searched = searchPattern(pattern);
    if (!searched.isValid())
        return std::nullopt;
    const auto match = searched.match(text, from);
    if (!match.hasMatch() || match.capturedLength() == 0)
        return std::nullopt;
    return rangeOf(match, pattern.isEmpty());
}

std::optional<TextRange> previousInChangelog(const QString& text, const QString& pattern,
                                             qsizetype before) {
    std::optional<TextRange> last;
    const QRegularExpression searched = searchPattern(pattern);
    if (!searched.isValid())
        return std::nullopt;
    auto matches = searched.globalMatch(text);
    while (matches.hasNext()) {
        const auto match = matches.next();
        if (match.capturedStart() >= before)
            break;
        if (match.capturedLength() > 0)
            last = rangeOf(match, pattern.isEmpty());
    }
    return last;
}

}  // namespace tarvo::window
