// A window on a copy of a small database in which every list has something to show.
#pragma once

#include "qrb/pointcloud.h"
#include "tests/window/windowdriver.h"
#include "window/frame/mainwindow.h"

#include <QTemporaryDir>
#include <memory>

// The database from which the copies are made: a transaction with all texts, some longer than lists
// show; metadata items around the limits of lists, one of them signed; attributes of several
// elements, of long texts and of all settings; chunks so small that the index has several levels.
class SampleDatabase {
public:
    // Makes the file; error() tells where that fails.
    SampleDatabase();
    const QString& error() const { return m_error; }
    // The folder is free for other files of the test.
    QString path(const QString& name) const { return m_folder.filePath(name); }
    // A fresh copy.
    QString copy(const QString& name = "work.qrbx") const;

    static constexpr int points = 600;

private:
    void addNotes(tarvo::qrb::Pointcloud& database) const;
    void addPoints(tarvo::qrb::Pointcloud& database) const;

    QTemporaryDir m_folder;
    QString m_error;
};

class SampleWindow {
public:
    // With the database open; empty: none is.
    explicit SampleWindow(const QString& fileName);
    // Drops a pending transaction.
    ~SampleWindow();

    tarvo::window::MainWindow& window() const { return *m_window; }
    WindowDriver driver() const { return WindowDriver(*m_window); }
    template <typename Widget>
    Widget* child(const char* name) const {
        return in<Widget>(m_window.get(), name);
    }
    // The handle that the window shows.
    tarvo::qrb::Pointcloud& database() const { return *m_window->session().database; }
    QStringList run(const char* action, std::vector<ModalScript::Step> steps) const {
        return driver().run(action, std::move(steps));
    }
    // Begins a transaction through the window.
    void begin() const;
    // Presses keys in the active window.
    void press(const QKeySequence& keys) const;

private:
    std::unique_ptr<tarvo::window::MainWindow> m_window;
};
