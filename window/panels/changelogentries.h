// Where the entries of a changelog text are.
#pragma once

#include <QRegularExpression>
#include <QString>
#include <optional>

namespace tarvo::window {

// "[#" and a number in brackets, to the end of the line.
const QRegularExpression& changelogEntryHeader();

int countChangelogEntries(const QString& text);

struct TextRange {
    qsizetype start = 0;
    qsizetype length = 0;
};

// What is wrong with the expression, in a sentence; empty: nothing.
QString faultOfSearch(const QString& pattern);

// The next match at or after a position, or the last one before it. pattern: empty for entry
// headers, whose line break is left out. None for an expression that is wrong or too slow to match.
std::optional<TextRange> nextInChangelog(const QString& text, const QString& pattern,
                                         qsizetype from);
std::optional<TextRange> previousInChangelog(const QString& text, const QString& pattern,
                                             qsizetype before);

}  // namespace tarvo::window
