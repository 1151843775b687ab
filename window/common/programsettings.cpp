#include "window/common/programsettings.h"

#include <QCoreApplication>
#include <QFile>
#include <QWidget>
#include <utility>

namespace tarvo::window {

namespace {

std::function<void(const QString&)>& teller() {
    static std::function<void(const QString&)> tell;
    return tell;
}

// Settings may hold keys that sign data, so nobody else may read them.
void keepPrivate(QSettings& settings) {
    settings.sync();
    if (settings.status() == QSettings::AccessError)
        if (const auto tell = std::exchange(teller(), nullptr))
            tell(settings.fileName());
#ifndef Q_OS_WIN
    const QFileDevice::Permissions owner = QFileDevice::ReadOwner | QFileDevice::WriteOwner;
    const QFileDevice::Permissions others = QFileDevice::ReadGroup | QFileDevice::WriteGroup |
                                            QFileDevice::ReadOther | QFileDevice::WriteOther;
    QFile file(settings.fileName());
    if (file.exists() && (file.permissions() & others))
        file.setPermissions(owner);
#endif
}

}  // namespace

void onUnwrittenSettings(std::function<void(const QString& fileName)> tell) {
    teller() = std::move(tell);
}

ProgramSettings::ProgramSettings(const QString& group)
    : QSettings(QSettings::IniFormat, QSettings::UserScope, QCoreApplication::organizationName(),
                QCoreApplication::applicationName()) {
    beginGroup(group);
}

ProgramSettings::~ProgramSettings() {
    keepPrivate(*this);
}

DialogSettings::DialogSettings(const QString& group)
    : QSettings(QSettings::NativeFormat, QSettings::UserScope, QCoreApplication::organizationName(),
                QCoreApplication::applicationName()) {
    if (!group.isEmpty())
        beginGroup(group);
}

DialogSettings::~DialogSettings() {
    keepPrivate(*this);
}

void DialogSettings::restoreGeometryOf(QWidget* dialog) const {
    if (contains("Geometry"))
        dialog->restoreGeometry(value("Geometry").toByteArray());
}

void DialogSettings::saveGeometryOf(const QWidget* dialog) {
    setValue("Geometry", dialog->saveGeometry());
}

QStringList movedToFront(QStringList list, const QString& text, int maximum) {
    list.removeOne(text);
    list.prepend(text);
    while (list.size() > maximum)
        list.removeLast();
    return list;
}

}  // namespace tarvo::window
