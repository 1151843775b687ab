#include "window/frame/mimefile.h"

#include <QDir>
#include <QFileInfo>
#include <QMimeData>
#include <QUrl>

namespace tarvo::window {

namespace {

// Empty: it is no file.
QString nativeName(const QString& name) {
    const QFileInfo file(name);
    if (name.isEmpty() || !file.isFile())
        return {};
    return QDir::toNativeSeparators(file.absoluteFilePath());
}

}  // namespace

QString localFileIn(const QMimeData* data) {
    if (!data)
        return {};
    if (data->hasUrls())
        return nativeName(data->urls().value(0).toLocalFile());
    return data->hasText() ? nativeName(data->text()) : QString();
}

QStringList localFilesIn(const QMimeData* data) {
    if (!data || !data->hasUrls())
        return QStringList(localFileIn(data));
    QStringList names;
    for (const QUrl& url : data->urls())
        names += nativeName(url.toLocalFile());
    return names;
}

}  // namespace tarvo::window
