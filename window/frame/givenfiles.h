// Files that come together, by a drop or as words of the command line, and what becomes of each.
#pragma once

#include "qrb/context.h"

#include <QString>
#include <QStringList>

namespace tarvo::window {

struct GivenFiles {
    QString database;      // the first one; empty: none
    QStringList points;    // imported as one, into the database or a new one
    QString text;          // a changelog, where nothing else is given; empty: none
    QStringList refusals;  // lines on files that nothing becomes of
};

// By the contents of the files, and by the extensions of those whose contents tell nothing.
GivenFiles sortFiles(const QStringList& fileNames, const qrb::Context& context);

bool isDatabaseFile(const QString& fileName, const qrb::Context& context);

// Whether a file promises points by its extension or, for certain, by its content. It must exist
// and be no database.
bool isPointFile(const QString& fileName);

// Whether the name is that of a text.
bool isTextFileName(const QString& fileName);

}  // namespace tarvo::window
