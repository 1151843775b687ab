// A database for the tests of the window, made with qrbtool.
#pragma once

#include <QString>
#include <QStringList>

struct TestDatabase {
    QString fileName;
    QString error;      // empty: it was made
    bool real = false;  // from a real point cloud, else from the sample generator
    qint64 pointCount = 0;
};

// Runs qrbtool; empty, or what went wrong.
QString runTool(const QStringList& arguments);

// From a real cloud where the build knows a folder of them.
TestDatabase makeTestDatabase(const QString& folder);
// A simulated scan of so many points.
TestDatabase makeSampleDatabase(const QString& folder, int points);
// One whose export takes seconds, so that there is time to stop it.
TestDatabase makeLongExport(const QString& folder);
