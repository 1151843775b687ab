// A plugin at work on a thread of its own. All else happens on the GUI thread, which is told at
// most twenty times a second, whatever comes.
#pragma once

#include "plugin/run.h"
#include "window/dialogs/plugin/outputtext.h"

#include <QFuture>
#include <QImage>
#include <QObject>
#include <QString>
#include <QTimer>
#include <exception>
#include <memory>
#include <optional>

namespace tarvo::window {

struct PluginJob {
    plugin::Package package;
    std::string pythonPath;  // as set
    std::string library;
    std::string database;
    std::string arguments;
    std::string agent;
};

// With the picture, where it is one that can be read.
struct PluginResult {
    plugin::Result result;
    QImage picture;
};

class PluginRun : public QObject {
    Q_OBJECT

public:
    // More results of one run are only counted.
    static constexpr int mostResults = 100;

    explicit PluginRun(QObject* parent = nullptr);
    // Cancels what runs, and waits for its end.
    ~PluginRun() override;

    // May be called again once the run has ended.
    void start(PluginJob job);
    void cancel();
    bool isRunning() const { return m_running; }

    // Of the run that has ended. Exceptions are those of plugin::findInterpreter() and run().
    const plugin::Outcome& outcome() const { return m_outcome; }
    const std::exception_ptr& failure() const { return m_failure; }
    // Results that were not told of.
    int resultsLeftOut() const { return m_resultsLeftOut; }

signals:
    void printed(const QString& text);
    void progressed(double fraction, const QString& text);
    void resulted(const std::shared_ptr<const tarvo::window::PluginResult>& result);
    // Nothing but rests of the output comes behind it.
    void ended();

private:
    class Mailbox;
    void deliver();
    void finish();

    std::shared_ptr<Mailbox> m_mailbox;
    std::optional<OutputText> m_text;
    QFuture<void> m_future;
    QTimer m_timer;
    bool m_running = false;
    int m_resultsLeftOut = 0;
    plugin::Outcome m_outcome;
    std::exception_ptr m_failure;
};

}  // namespace tarvo::window
