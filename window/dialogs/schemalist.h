// The file schemas of the default definitions, as lists offer them.
#pragma once

#include <QMap>
#include <QString>

class QComboBox;

namespace tarvo::window {

// Adds an entry for each schema, with its extension as data, and returns the schema texts by label,
// pretty-printed. The label is the extension, followed by the identifier where they differ.
QMap<QString, QString> fillSchemaList(QComboBox* list);

// The entry whose extension ends the location, of several the longest; -1: none. In extensions
// "{C}" and "{N}" stand for digits and dots for any character.
int schemaFor(const QComboBox* list, const QString& location);

}  // namespace tarvo::window
