#include "window/frame/mimefile.h"

#include <QDir>
#include <QFileInfo>
#include <QMimeData>
#include <QUrl>

namespace tarvo::window {

QString localFileIn(const QMimeData* data) {
    if (!data)
        return {};
    QString name;
    if (data->hasUrls())
        name = data->urls().value(0).toLocalFile();
    else if (data->hasText())
        name = data->text();
    const QFileInfo file(name);
    if (name.isEmpty() || !file.isFile())
        return {};
    return QDir::toNativeSeparators(file.absoluteFilePath());
}

}  // namespace tarvo::window
