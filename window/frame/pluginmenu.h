// The menu "Plugins": one entry per plugin in the folder that is set, read when the menu opens.
#pragma once

#include <QMenu>
#include <QString>

namespace tarvo::window {

class PluginMenu : public QMenu {
    Q_OBJECT

public:
    explicit PluginMenu(QWidget* window);

    // Whether there is a database that plugins can run on.
    void setRunnable(bool runnable) { m_runnable = runnable; }

signals:
    // place: of the plugin's folder or script.
    void chosen(const QString& place);
    void settingsWanted();

private:
    void fill();
    void addPlugins();
    QAction* addEntry(const QString& text, const QString& toolTip);

    QAction* m_settings;
    bool m_runnable = false;
};

}  // namespace tarvo::window
