#include "window/frame/pluginmenu.h"

#include "core/error.h"
#include "plugin/package.h"
#include "window/common/messages.h"
#include "window/common/textformat.h"
#include "window/dialogs/plugin/dialogpluginsettings.h"

#include <QAction>
#include <QDir>

namespace tarvo::window {

namespace {

constexpr int shownCharacters = 80;

// As a menu takes it: a single ampersand would mark a key.
QString menuText(const QString& text) {
    return shortened(text.simplified(), shownCharacters).replace('&', "&&");
}

}  // namespace

PluginMenu::PluginMenu(QWidget* window) : QMenu(tr("Plugins"), window) {
    setObjectName("menuPlugins");
    setToolTipsVisible(true);
    m_settings = new QAction(tr("Settings ..."), this);
    m_settings->setObjectName("actionPluginSettings");
    m_settings->setToolTip("<html><body><p>" +
                           tr("Choose the Python that runs plugins, and their folder") +
                           "</p></body></html>");
    connect(m_settings, &QAction::triggered, this, &PluginMenu::settingsWanted);
    connect(this, &QMenu::aboutToShow, this, &PluginMenu::fill);
    addAction(m_settings);
}

void PluginMenu::fill() {
    for (QAction* action : actions()) {
        if (action == m_settings)
            continue;
        removeAction(action);
        action->deleteLater();
    }
    addPlugins();
    insertSeparator(m_settings);
}

void PluginMenu::addPlugins() {
    const std::string folder =
        plugin::pluginFolder(DialogPluginSettings::pluginPath().toStdString());
    const QString shownFolder = QDir::toNativeSeparators(QString::fromStdString(folder));
    std::vector<plugin::Found> found;
    QString problem;
    try {
        found = plugin::findPlugins(folder);
    } catch (const core::Failure& failure) {
        problem = translatedMessage(failure.what());
    }
    if (found.empty())
        addEntry(tr("No plugins in %1").arg(shownFolder), problem)->setEnabled(false);
    for (const plugin::Found& one : found) {
        const QString place = QString::fromStdString(one.place);
        if (!one.manifest) {
            addEntry(QDir(shownFolder).relativeFilePath(place), translatedMessage(one.problem))
                ->setEnabled(false);
            continue;
        }
        QAction* action = addEntry(QString::fromStdString(one.manifest->title),
                                   QString::fromStdString(one.manifest->description));
        action->setObjectName("actionPlugin_" + QString::fromStdString(one.manifest->name));
        action->setEnabled(m_runnable);
        connect(action, &QAction::triggered, this, [this, place] { emit chosen(place); });
    }
}

QAction* PluginMenu::addEntry(const QString& text, const QString& toolTip) {
    auto* action = new QAction(menuText(text), this);
    action->setToolTip(plainToolTip(toolTip.trimmed()));
    insertAction(m_settings, action);
    return action;
}

}  // namespace tarvo::window
