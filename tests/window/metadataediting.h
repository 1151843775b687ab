// The frame of tests of the editor of metadata items: each begins with a fresh window on a database
// that has items of several kinds.
#pragma once

#include "tests/window/modalscript.h"
#include "tests/window/windowdriver.h"
#include "window/frame/mainwindow.h"
#include "window/widgets/jsontextedit.h"

#include <QLabel>
#include <QTemporaryDir>
#include <QTreeWidget>
#include <memory>
#include <string>
#include <vector>

class MetaDataEditingTest : public QObject {
    Q_OBJECT

protected slots:
    void initTestCase();
    void init();
    void cleanup();
    void cleanupTestCase();

protected:
    using Step = ModalScript::Step;

    WindowDriver driver() { return WindowDriver(*m_window); }
    QStringList run(const char* action, std::vector<Step> steps) {
        return driver().run(action, std::move(steps));
    }
    void begin();
    // Sees what was committed only.
    std::string committed(const char* name);
    void commit() { run("actionTransactionCommit", {ModalScript::press("OK")}); }
    static QString state(QDialog* dialog) { return in<QLabel>(dialog, "labelState")->text(); }
    static QTreeWidget* findings(QDialog* dialog) {
        return in<QTreeWidget>(dialog, "treeFindings");
    }
    static tarvo::window::JsonTextEdit* pane(QDialog* dialog) {
        return in<tarvo::window::JsonTextEdit>(dialog, "editValue");
    }
    static void type(QDialog* dialog, const QString& text);

    QTemporaryDir m_folder;
    QString m_file;
    std::unique_ptr<tarvo::window::MainWindow> m_window;
};
