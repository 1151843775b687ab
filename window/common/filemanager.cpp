#include "window/common/filemanager.h"

#include <QDesktopServices>
#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QUrl>

#ifdef QRB_WITH_DBUS
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#endif

namespace tarvo::window {

namespace {

[[maybe_unused]] void openFolderOf(const QString& fileName) {
    QDesktopServices::openUrl(QUrl::fromLocalFile(QFileInfo(fileName).absolutePath()));
}

}  // namespace

void showInFileManager(const QString& fileName) {
#if defined(Q_OS_WIN)
    QProcess::startDetached("explorer.exe", {"/select,", QDir::toNativeSeparators(fileName)});
#elif defined(Q_OS_MACOS)
    QProcess::startDetached("open", {"-R", fileName});
#elif defined(QRB_WITH_DBUS)
    const QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) {  // the answer would never come
        openFolderOf(fileName);
        return;
    }
    auto call = QDBusMessage::createMethodCall("org.freedesktop.FileManager1",
                                               "/org/freedesktop/FileManager1",
                                               "org.freedesktop.FileManager1", "ShowItems");
    call << QStringList{QUrl::fromLocalFile(fileName).toString(QUrl::FullyEncoded)} << QString();
    auto* watcher = new QDBusPendingCallWatcher(bus.asyncCall(call, 5000));
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, watcher, [watcher, fileName] {
        if (watcher->isError())
            openFolderOf(fileName);
        watcher->deleteLater();
    });
#else
    openFolderOf(fileName);
#endif
}

}  // namespace tarvo::window
