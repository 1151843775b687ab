#include "window/common/aside.h"

#include "qrb/error.h"
#include "window/common/guard.h"
#include "window/common/messages.h"

#include <QDialog>
#include <QEventLoop>
#include <QFontMetrics>
#include <QLabel>
#include <QProgressDialog>
#include <QPushButton>
#include <QThread>
#include <QTimer>
#include <algorithm>
#include <atomic>
#include <exception>
#include <limits>
#include <memory>
#include <mutex>
#include <optional>

namespace tarvo::window {

namespace {

constexpr int atOnce = 20;         // milliseconds that nobody notices
constexpr int milliseconds = 500;  // before the dialog comes up
constexpr int interval = 50;       // milliseconds between looks at the work
constexpr int labelWidth = 420;    // pixels; file names may be long

// What the two threads tell each other.
struct Shared {
    std::mutex mutex;
    std::string step;  // under the mutex, as the next one
    double fraction = 0;
    std::atomic<bool> cancelled = false;
};

class Worker {
public:
    Worker(const qrb::Context* context, const AsideJob& job)
        : m_thread(QThread::create([this, context, &job] { run(context, job); })) {
        m_thread->start();
    }
    ~Worker() {
        m_shared.cancelled = true;
        m_thread->wait();
    }
    Worker(const Worker&) = delete;
    Worker& operator=(const Worker&) = delete;

    Shared& shared() { return m_shared; }
    QThread& thread() { return *m_thread; }
    bool ended(int timeout) { return m_thread->wait(static_cast<unsigned long>(timeout)); }
    // Once it has ended.
    void rethrow() const {
        if (m_failure)
            std::rethrow_exception(m_failure);
    }

private:
    void run(const qrb::Context* context, const AsideJob& job) {
        try {
            std::optional<qrb::InterruptGuard> interruptible;
            if (context)
                interruptible.emplace(*context, [this] { return !m_shared.cancelled; });
            job([this](const std::string& step, double fraction) {
                if (m_shared.cancelled)
                    throw Cancelled();
                const std::lock_guard lock(m_shared.mutex);
                m_shared.step = step;
                m_shared.fraction = fraction;
            });
        } catch (const qrb::Error& failure) {
            const bool isWished = m_shared.cancelled && failure.code() == QRB_ERROR_CANCELLED;
            m_failure = isWished ? std::make_exception_ptr(Cancelled()) : std::current_exception();
        } catch (...) {
            m_failure = std::current_exception();
        }
    }

    Shared m_shared;
    std::exception_ptr m_failure;
    std::unique_ptr<QThread> m_thread;
};

// It is there from the beginning, so that the window counts as busy, and comes up later.
class AsideDialog {
public:
    AsideDialog(QWidget* parent, const QString& text, Shared& shared)
        : m_text(text),
          m_shared(shared),
          m_dialog(QString(), QObject::tr("Cancel"), 0, 100, parent) {
        auto* label = new QLabel(&m_dialog);
        label->setTextFormat(Qt::PlainText);
        m_dialog.setLabel(label);
        m_dialog.setWindowModality(Qt::WindowModal);
        m_dialog.setWindowTitle("qrbadmin");
        m_dialog.setAutoClose(false);
        m_dialog.setAutoReset(false);
        m_dialog.setMinimumDuration(std::numeric_limits<int>::max());
        m_dialog.setMinimumWidth(labelWidth + 60);
        // It stays until the work has ended: the window must take no input before.
        QObject::disconnect(&m_dialog, &QProgressDialog::canceled, &m_dialog,
                            &QProgressDialog::cancel);
        QObject::connect(&m_dialog, &QProgressDialog::canceled, &m_dialog, [this] {
            m_shared.cancelled = true;
            if (auto* button = m_dialog.findChild<QPushButton*>())
                button->setEnabled(false);
            update();
        });
    }

    void show() {
        update();
        m_dialog.show();
        QObject::connect(&m_updates, &QTimer::timeout, &m_dialog, [this] { update(); });
        m_updates.start(interval);
    }

private:
    void update() {
        std::string step;
        double fraction = 0;
        {
            const std::lock_guard lock(m_shared.mutex);
            step = m_shared.step;
            fraction = m_shared.fraction;
        }
        const QString shown =
            m_dialog.fontMetrics().elidedText(translatedMessage(step), Qt::ElideMiddle, labelWidth);
        const QString below = m_shared.cancelled ? QObject::tr("Cancelling ...") : shown;
        m_dialog.setLabelText(below.isEmpty() ? m_text : m_text + '\n' + below);
        m_dialog.setValue(static_cast<int>(fraction * 100));
    }

    QString m_text;
    Shared& m_shared;
    QProgressDialog m_dialog;
    QTimer m_updates;
};

void work(QWidget* parent, const QString& text, const qrb::Context* context, const AsideJob& job) {
    Worker worker(context, job);
    if (!worker.ended(atOnce)) {
        AsideDialog dialog(parent, text, worker.shared());
        QEventLoop waiting;
        // Queued: the thread may end before the loop begins.
        QObject::connect(&worker.thread(), &QThread::finished, &waiting, &QEventLoop::quit,
                         Qt::QueuedConnection);
        // Input waits, and goes to the dialog where that comes up.
        {
            const WaitCursor cursor;
            QTimer::singleShot(milliseconds - atOnce, &waiting, &QEventLoop::quit);
            if (!worker.thread().isFinished())
                waiting.exec(QEventLoop::ExcludeUserInputEvents);
        }
        if (!worker.thread().isFinished()) {
            dialog.show();
            while (!worker.thread().isFinished())
                waiting.exec();
        }
        worker.ended(-1);
    }
    worker.rethrow();
}

}  // namespace

void workAside(QWidget* parent, const QString& text, const AsideJob& job) {
    work(parent, text, nullptr, job);
}

void workAside(QWidget* parent, const QString& text, const qrb::Context& context,
               const AsideJob& job) {
    work(parent, text, &context, job);
}

// A progress dialog may be hidden and its work still go on.
bool isBusy(const QWidget* window) {
    if (window->findChild<QProgressDialog*>())
        return true;
    const auto dialogs = window->findChildren<QDialog*>();
    return std::any_of(dialogs.begin(), dialogs.end(), [](const QDialog* dialog) {
        return dialog->isVisible() && dialog->isModal();
    });
}

}  // namespace tarvo::window
