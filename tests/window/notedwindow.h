// The frame of tests that drive a window with mouse and keys: each begins with a fresh one on a
// copy of a database that has points and, in a signed transaction, some metadata items.
#pragma once

#include "qrb/pointcloud.h"
#include "tests/window/modalscript.h"
#include "tests/window/testdatabase.h"
#include "tests/window/windowdriver.h"
#include "window/frame/mainwindow.h"

#include <QObject>
#include <QPlainTextEdit>
#include <QTemporaryDir>
#include <QTreeWidget>
#include <functional>
#include <memory>

class NotedWindowTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void cleanupTestCase();

protected:
    using Step = ModalScript::Step;

    template <typename Widget>
    Widget* child(const char* name) const {
        return in<Widget>(m_window.get(), name);
    }
    QTreeWidget* tree(const char* name) const { return child<QTreeWidget>(name); }
    QPlainTextEdit* log() const { return child<QPlainTextEdit>("editChangelog"); }

    void showTab(const char* name) { driver().showTab(name); }
    QStringList run(const char* action, std::vector<Step> steps) {
        return driver().run(action, std::move(steps));
    }
    void begin(const QString& title);
    QTreeWidgetItem* select(const char* treeName, const QString& text, bool add = false) {
        return driver().select(treeName, text, add);
    }
    WindowDriver driver() { return WindowDriver(*m_window); }
    // A second handle on the file that the window shows, for preparing it.
    void prepare(const std::function<void(tarvo::qrb::Pointcloud&)>& change);

    QTemporaryDir m_folder;
    TestDatabase m_original;
    QString m_file;
    std::unique_ptr<tarvo::window::MainWindow> m_window;
    const QString m_key = "0a 1b 2c";  // of the signed transaction
};
