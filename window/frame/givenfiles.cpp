#include "window/frame/givenfiles.h"

#include "core/error.h"
#include "exchange/format.h"
#include "qrb/error.h"
#include "window/common/messages.h"

#include <QDir>
#include <QFileInfo>

namespace tarvo::window {

namespace {

// What keeps a file from being opened or imported, in words that go on behind its name; empty: it
// is a database, but one that the library doesn't take for one.
QString faultOf(const QString& fileName) {
    const QFileInfo file(fileName);
    if (!file.exists())
        return QObject::tr("there is no such file.");
    if (file.isDir())
        return QObject::tr("it is a folder. Name the files in it.");
    if (!file.isFile())
        return QObject::tr("it is no file.");
    try {
        const exchange::FileKind kind = exchange::kindOfFile(fileName.toStdString());
        // The library says why it can't be opened.
        return kind.what == "a database file"
                   ? QString()
                   : QObject::tr(
                         "it is neither a database nor a point cloud that can be read, but %0.")
                         .arg(kind.what.empty() ? QObject::tr("a text that may hold anything")
                                                : translatedMessage(kind.what));
    } catch (const core::Failure& failure) {
        return translatedMessage(failure.what());
    }
}

}  // namespace

GivenFiles sortFiles(const QStringList& fileNames, const qrb::Context& context) {
    GivenFiles given;
    QStringList texts;
    for (const QString& name : fileNames) {
        const QString place = QDir::toNativeSeparators(QFileInfo(name).absoluteFilePath());
        const auto refuse = [&](const QString& words) {
            given.refusals += QObject::tr("\"%1\": %2").arg(QDir::toNativeSeparators(name), words);
        };
        QString fault;
        const bool isDatabase = isDatabaseFile(place, context);
        if (!isDatabase && isPointFile(place)) {
            given.points += place;
        } else if (!isDatabase && isTextFileName(place) && QFileInfo(place).isFile()) {
            texts += place;
        } else if (!isDatabase && !(fault = faultOf(place)).isEmpty()) {
            refuse(fault);
        } else if (given.database.isEmpty()) {
            given.database = place;
        } else {
            refuse(QObject::tr(
                "it is another database, and a window shows one. Open it in a new window."));
        }
    }
    for (const QString& text : texts) {
        if (given.database.isEmpty() && given.points.isEmpty() && given.text.isEmpty())
            given.text = text;
        else
            given.refusals +=
                QObject::tr("\"%1\": a changelog text is shown by itself only.").arg(text);
    }
    return given;
}

bool isDatabaseFile(const QString& fileName, const qrb::Context& context) {
    if (!QFileInfo(fileName).isFile())
        return false;
    try {
        return context.databaseFileTypeCheck(fileName.toStdString());
    } catch (const qrb::Error&) {
        return false;
    }
}

bool isPointFile(const QString& fileName) {
    static const QStringList suffixes = {"las", "laz", "ply", "ptx", "e57",
                                         "csv", "xyz", "pts", "asc"};
    const QFileInfo file(fileName);
    if (!file.isFile())
        return false;
    if (suffixes.contains(file.suffix().toLower()))
        return true;
    try {
        const exchange::FileKind kind = exchange::kindOfFile(fileName.toStdString());
        return kind.isCertain && !kind.format.empty();
    } catch (const core::Failure&) {
        return false;
    }
}

bool isTextFileName(const QString& fileName) {
    return fileName.endsWith(".txt", Qt::CaseInsensitive);
}

}  // namespace tarvo::window
