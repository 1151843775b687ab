// A dialog whose work runs on another thread. While it does, the dialog is disabled, keeps
// painting, and takes a request to close it as the wish to cancel.
#pragma once

#include "qrb/transactions.h"

#include <QDialog>
#include <QString>
#include <atomic>
#include <functional>

class QProgressBar;

namespace tarvo::window {

class WorkingDialog : public QDialog {
    Q_OBJECT

public slots:
    void done(int result) override;

signals:
    // Per cent; from the working thread.
    void update_progress(int percent);

protected:
    bool eventFilter(QObject* object, QEvent* event) override;

    using Job = std::function<void(const qrb::pointcloud::Progress&)>;

    explicit WorkingDialog(QWidget* parent) : QDialog(parent) {}
    // Shows the bar while work is done. Call it once the form is built.
    void useProgressBar(QProgressBar* bar);

    // Runs the job on another thread, waits for it and returns the milliseconds that it took. The
    // job calls its argument often; once the dialog was asked to close, that throws
    // std::runtime_error with the text cancelled. Exceptions of the job are thrown on; a job that
    // came to its end has done its work, whatever the dialog was asked. Nothing that the job works
    // on may be used elsewhere meanwhile.
    // Esc asks the dialog to close, too.
    double work(const QString& cancelled, const Job& job);

private:
    class Busy;

    QProgressBar* m_bar = nullptr;
    bool m_busy = false;
    std::atomic<bool> m_cancel = false;  // read by the working thread
};

}  // namespace tarvo::window
