// File names in clipboard and drag data.
#pragma once

#include <QString>
#include <QStringList>

class QMimeData;

namespace tarvo::window {

// The existing local file that the data names, by its first URL or else by its text: absolute,
// native separators. Empty: none.
QString localFileIn(const QMimeData* data);
// The same for all files that it names.
QStringList localFilesIn(const QMimeData* data);

}  // namespace tarvo::window
