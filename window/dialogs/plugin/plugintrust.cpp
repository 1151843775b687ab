#include "window/dialogs/plugin/plugintrust.h"

#include "plugin/trust.h"
#include "window/common/messageboxes.h"
#include "window/common/textformat.h"

#include <QDir>
#include <QStringList>

namespace tarvo::window {

namespace {

// The beginning, in groups of four.
QString shortFingerprint(const std::string& fingerprint) {
    const QString digits = QString::fromStdString(fingerprint).left(16);
    QStringList groups;
    for (qsizetype i = 0; i < digits.size(); i += 4)
        groups += digits.mid(i, 4);
    return groups.join(' ') + " ...";
}

QString questionOn(const plugin::Package& package, plugin::Trust trust) {
    const plugin::Manifest& manifest = package.manifest;
    const QString title = shortened(QString::fromStdString(manifest.title).simplified(), 100);
    return (trust == plugin::Trust::CHANGED
                ? QObject::tr("The plugin \"%0\" has changed since you agreed to run it.")
                : QObject::tr("You have never run the plugin \"%0\"."))
               .arg(title) +
           "\n\n" +
           QObject::tr(
               "Place: %0\nVersion: %1\nFingerprint: %2\n\n%3\n"
               "It is a program that can do all that you can.\n\nRun it?")
               .arg(QDir::toNativeSeparators(QString::fromStdString(package.place)),
                    shortened(QString::fromStdString(manifest.version).simplified(), 100),
                    shortFingerprint(package.fingerprint),
                    manifest.writes ? QObject::tr("It changes the database.")
                                    : QObject::tr("It only reads the database."));
}

}  // namespace

bool isPluginTrusted(const plugin::Package& package, QWidget* parent) {
    plugin::TrustedPlugins trusted;
    const plugin::Trust trust = trusted.trustIn(package);
    if (trust == plugin::Trust::GIVEN)
        return true;
    if (!lossConfirmed(parent, questionOn(package, trust)))
        return false;
    trusted.give(package);
    return true;
}

}  // namespace tarvo::window
