// Files as tests write and read them, whole.
#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>

inline QByteArray contentsOf(const QString& fileName) {
    QFile file(fileName);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("missing");
}

// The file's name; empty: it can't be written.
inline QString written(const QString& fileName, const QByteArray& bytes) {
    QFile file(fileName);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() ? fileName
                                                                                : QString();
}
