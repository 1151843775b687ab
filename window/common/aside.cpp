#include "window/common/aside.h"

#include "window/common/guard.h"
#include "window/common/progress.h"

#include <QApplication>
#include <QFontMetrics>
#include <QLabel>
#include <QProgressDialog>
#include <QPushButton>
#include <QThread>
#include <atomic>
#include <exception>
#include <limits>
#include <memory>
#include <mutex>

namespace tarvo::window {

namespace {

constexpr int milliseconds = 500;  // before the dialog comes up
constexpr int interval = 30;       // milliseconds between looks at the work
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
    explicit Worker(const std::function<void(const StepProgress&)>& job)
        : m_thread(QThread::create([this, &job] { run(job); })) {
        m_thread->start();
    }
    ~Worker() {
        m_shared.cancelled = true;
        m_thread->wait();
    }
    Worker(const Worker&) = delete;
    Worker& operator=(const Worker&) = delete;

    Shared& shared() { return m_shared; }
    bool ended(int timeout) { return m_thread->wait(static_cast<unsigned long>(timeout)); }
    // Once it has ended.
    void rethrow() const {
        if (m_failure)
            std::rethrow_exception(m_failure);
    }

private:
    void run(const std::function<void(const StepProgress&)>& job) {
        try {
            job([this](const std::string& step, double fraction) {
                if (m_shared.cancelled)
                    throw Cancelled();
                const std::lock_guard lock(m_shared.mutex);
                m_shared.step = step;
                m_shared.fraction = fraction;
            });
        } catch (...) {
            m_failure = std::current_exception();
        }
    }

    Shared m_shared;
    std::exception_ptr m_failure;
    std::unique_ptr<QThread> m_thread;
};

class AsideDialog {
public:
    AsideDialog(QWidget* parent, const QString& text, Shared& shared)
        : m_text(text), m_shared(shared), m_dialog(QString(), "Cancel", 0, 100, parent) {
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
        });
        update();
        m_dialog.show();
    }

    void update() {
        std::string step;
        double fraction = 0;
        {
            const std::lock_guard lock(m_shared.mutex);
            step = m_shared.step;
            fraction = m_shared.fraction;
        }
        const QString shown = m_dialog.fontMetrics().elidedText(QString::fromStdString(step),
                                                                Qt::ElideMiddle, labelWidth);
        m_dialog.setLabelText(m_text + '\n' + (m_shared.cancelled ? "Cancelling ..." : shown));
        m_dialog.setValue(static_cast<int>(fraction * 100));
        QApplication::processEvents(m_shared.cancelled ? QEventLoop::ExcludeUserInputEvents
                                                       : QEventLoop::AllEvents);
    }

private:
    QString m_text;
    Shared& m_shared;
    QProgressDialog m_dialog;
};

}  // namespace

void workAside(QWidget* parent, const QString& text,
               const std::function<void(const StepProgress&)>& job) {
    Worker worker(job);
    const auto isShort = [&worker] {
        const WaitCursor waiting;
        return worker.ended(milliseconds);
    };
    if (!isShort()) {
        AsideDialog dialog(parent, text, worker.shared());
        while (!worker.ended(interval))
            dialog.update();
    }
    worker.rethrow();
}

}  // namespace tarvo::window
