// The frame of tests that drive a window on a database with mouse and keys: each begins with a
// fresh window, and opens the database when it wants to.
#pragma once

#include "tests/window/modalanswer.h"
#include "tests/window/testdatabase.h"
#include "window/frame/mainwindow.h"

#include <QAction>
#include <QComboBox>
#include <QLineEdit>
#include <QObject>
#include <QTemporaryDir>
#include <QTreeWidget>
#include <memory>

class DatabaseWindowTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void cleanupTestCase();

protected:
    template <typename Widget>
    Widget* child(const char* name) const {
        auto* widget = m_window->findChild<Widget*>(name);
        if (!widget)
            qFatal("no child %s", name);
        return widget;
    }
    QAction* action(const char* name) const { return child<QAction>(name); }
    QTreeWidget* points() const { return child<QTreeWidget>("treePointData"); }
    QLineEdit* filter() const { return child<QComboBox>("PointDataFilter")->lineEdit(); }
    QString fieldText(const char* name) const { return child<QLineEdit>(name)->text(); }

    void open();
    void showTab(const char* name);
    void pressKey(Qt::Key key, Qt::KeyboardModifiers modifiers = {});
    void enterFilter(const QString& text);
    int columnOf(const QString& element) const;
    QString copyOfDatabase(const QString& name) const;

    QTemporaryDir m_folder;
    TestDatabase m_database;
    std::unique_ptr<tarvo::window::MainWindow> m_window;
};
