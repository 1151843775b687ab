#include "window/frame/pluginmenu.h"

#include "core/error.h"
#include "plugin/package.h"
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

PluginMenu::PluginMenu(QWidget* window) : QMenu("Plugins", window) {
    setObjectName("menuPlugins");
    setToolTipsVisible(true);
    m_settings = new QAction("Settings ...", this);
    m_settings->setObjectName("actionPluginSettings");
    m_settings->setToolTip(
        "<html><body><p>Choose the Python that runs plugins, and their folder</p></body></html>");
    connect(m_settings, &QAction::triggered, this, &PluginMenu::settingsWanted);
    connect(this, &QMenu::aboutToShow, this, &PluginMenu::fill);
    addAction(m_settings);
}

void PluginMenu::fill() {
    for (QAction* action : actions()) {
        removeAction(action);
        if (action != m_settings)
            action->deleteLater();
    }
    addPlugins();
    addSeparator();
    addAction(m_settings);
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
        problem = QString::fromUtf8(failure.what());
    }
    if (found.empty())
        addRemark("No plugins in " + shownFolder, problem);
    for (const plugin::Found& one : found) {
        const QString place = QString::fromStdString(one.place);
        if (!one.manifest) {
            addRemark(QDir(shownFolder).relativeFilePath(place),
                      QString::fromStdString(one.problem));
            continue;
        }
        QAction* action = addAction(menuText(QString::fromStdString(one.manifest->title)));
        action->setObjectName("actionPlugin_" + QString::fromStdString(one.manifest->name));
        action->setToolTip(
            plainToolTip(QString::fromStdString(one.manifest->description).trimmed()));
        action->setEnabled(m_runnable);
        connect(action, &QAction::triggered, this, [this, place] { emit chosen(place); });
    }
}

QAction* PluginMenu::addRemark(const QString& text, const QString& toolTip) {
    QAction* action = addAction(menuText(text));
    action->setToolTip(plainToolTip(toolTip));
    action->setEnabled(false);
    return action;
}

}  // namespace tarvo::window
