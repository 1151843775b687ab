// A window with plugins that the test has written, chosen and run with the mouse.
#pragma once

#include "tests/window/samplewindow.h"

#include <QTemporaryDir>
#include <functional>
#include <vector>

class PluginWindow : public SampleWindow {
public:
    // With the folder of plugins set, and nothing in it.
    explicit PluginWindow(const QString& database);

    // A plugin in a folder of its own. body: of its function run(); members: of its manifest, each
    // after a comma.
    void add(const QString& name, const QString& body, const QString& members = {}) const;
    QString folder() const { return m_folder.path(); }
    QString path(const QString& name) const { return m_folder.filePath(name); }
    bool write(const QString& name, const QString& text) const;

    // Opens the menu, and gives it.
    QMenu* openMenu() const;
    // Texts of the entries; what is disabled is in brackets, separators are "-".
    QStringList entries() const;
    // Clicks the plugin's entry; the first step gets the dialog. Returns the texts of the message
    // boxes.
    QStringList choose(const QString& name, std::vector<ModalScript::Step> steps) const;

private:
    QTemporaryDir m_folder;
};

// The step, with the dialog closed behind it, whatever failed.
ModalScript::Step closing(const ModalScript::Step& step);
// Clicks a button by its name.
void click(QDialog* dialog, const char* button);
// Puts the text in place of what is in the field, key by key.
void typeInto(QDialog* dialog, const char* field, const QString& text);
// The step of a plugin that nobody has agreed to yet: runs it, looks at it when it has ended, and
// closes it.
ModalScript::Step runTo(const std::function<void(QDialog*)>& look);
// Clicks "Run" and waits until the run has ended.
void runToEnd(QDialog* dialog);
bool isRunning(QDialog* dialog);
QString stateOf(QDialog* dialog);
QString outputOf(QDialog* dialog);
// The page of a result; null: there is none of that title.
QWidget* pageOf(QDialog* dialog, const QString& title);
