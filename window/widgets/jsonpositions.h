// Where things stand in JSON texts, so that an editor can lead there. Positions are indices of
// QString. Texts may be hostile: no depth of nesting costs stack.
#pragma once

#include <QString>
#include <QStringList>
#include <optional>
#include <vector>

namespace tarvo::window {

struct TextSpan {
    qsizetype begin = 0;
    qsizetype end = 0;
};

// The value of each JSON pointer (RFC 6901). Where it is not there, the innermost value around its
// place that is; none where that is not there, either. Reads the text once.
std::vector<std::optional<TextSpan>> placesOf(const QString& json, const QStringList& pointers);

struct JsonFault {
    QString text;
    qsizetype position = 0;
};
// What keeps a text from being one JSON value; none: it is one.
std::optional<JsonFault> jsonFaultOf(const QString& text);

// Counted from 1, columns in characters.
struct LineAndColumn {
    qsizetype line = 1;
    qsizetype column = 1;
};
LineAndColumn lineAndColumn(const QString& text, qsizetype position);
// The same of many positions; reads the text once.
std::vector<LineAndColumn> linesAndColumns(const QString& text,
                                           const std::vector<qsizetype>& positions);

}  // namespace tarvo::window
