#include "window/dialogs/workingdialog.h"

#include "window/common/guard.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QKeyEvent>
#include <QProgressBar>
#include <QThread>
#include <QtConcurrentRun>
#include <exception>
#include <stdexcept>

namespace tarvo::window {

namespace {

// The dialog is disabled while it works, but its bar isn't.
void keepReadable(QWidget* bar) {
    QPalette palette = QApplication::palette(bar);
    for (int role = 0; role < QPalette::NColorRoles; ++role) {
        const auto each = static_cast<QPalette::ColorRole>(role);
        palette.setBrush(QPalette::Disabled, each, palette.brush(QPalette::Active, each));
    }
    bar->setPalette(palette);
}

}  // namespace

// The dialog's state while it works.
class WorkingDialog::Busy {
public:
    explicit Busy(WorkingDialog& dialog) : m_dialog(dialog) {
        m_dialog.m_cancel = false;
        m_dialog.m_busy = true;
        m_dialog.m_bar->setValue(0);
        m_dialog.m_bar->show();
        keepReadable(m_dialog.m_bar);
        m_dialog.setEnabled(false);
        // What is disabled gets no keys of its own.
        qApp->installEventFilter(&m_dialog);
    }
    ~Busy() {
        qApp->removeEventFilter(&m_dialog);
        m_dialog.m_busy = false;
        m_dialog.m_cancel = false;
        m_dialog.m_bar->hide();
        m_dialog.setEnabled(true);
    }
    Busy(const Busy&) = delete;
    Busy& operator=(const Busy&) = delete;

private:
    WorkingDialog& m_dialog;
    const WaitCursor m_waiting;
};

void WorkingDialog::useProgressBar(QProgressBar* bar) {
    m_bar = bar;
    m_bar->hide();
    connect(this, &WorkingDialog::update_progress, m_bar, &QProgressBar::setValue,
            Qt::QueuedConnection);
}

double WorkingDialog::work(const QString& cancelled, const Job& job) {
    const Busy busy(*this);
    QElapsedTimer timer;
    timer.start();
    std::exception_ptr failure;
    const auto running = QtConcurrent::run([&] {
        try {
            job([&](int percent) {
                if (m_cancel)
                    throw std::runtime_error(cancelled.toStdString());
                emit update_progress(percent);
            });
        } catch (...) {
            failure = std::current_exception();
        }
    });
    while (!running.isFinished()) {
        QApplication::processEvents();
        QThread::msleep(50);
    }
    // A wish to cancel that came too late changes nothing: what counts is whether the work was
    // done.
    if (failure)
        std::rethrow_exception(failure);
    return static_cast<double>(timer.nsecsElapsed()) / 1e6;
}

bool WorkingDialog::eventFilter(QObject* object, QEvent* event) {
    const bool isKey =
        event->type() == QEvent::ShortcutOverride || event->type() == QEvent::KeyPress;
    if (m_busy && isKey && static_cast<QKeyEvent*>(event)->matches(QKeySequence::Cancel)) {
        m_cancel = true;
        return true;
    }
    return QDialog::eventFilter(object, event);
}

void WorkingDialog::done(int result) {
    if (m_busy) {
        m_cancel = true;
        return;
    }
    QDialog::done(result);
}

}  // namespace tarvo::window
