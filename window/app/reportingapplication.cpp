#include "window/app/reportingapplication.h"

#include "window/common/guard.h"

#include <QEvent>
#include <typeinfo>

namespace tarvo::window {

namespace {

// Tells errors apart.
QString signatureOf(const std::exception_ptr& error, const QObject* receiver) {
    try {
        std::rethrow_exception(error);
    } catch (const std::exception& failure) {
        return QString("%1 %2 %3")
            .arg(quintptr(receiver))
            .arg(typeid(failure).name(), failure.what());
    } catch (...) {
        return QString::number(quintptr(receiver));
    }
}

}  // namespace

bool ReportingApplication::notify(QObject* receiver, QEvent* event) {
    const bool painting = event->type() == QEvent::Paint || event->type() == QEvent::UpdateRequest;
    try {
        return QApplication::notify(receiver, event);
    } catch (...) {
        const std::exception_ptr error = std::current_exception();
        // A box makes what lies behind it paint again, which would fail again.
        if (painting) {
            const QString signature = signatureOf(error, receiver);
            if (m_reportedWhilePainting.contains(signature))
                return false;
            m_reportedWhilePainting.insert(signature);
        }
        // Later, and on this object's thread: the handler may have been called from anywhere.
        QMetaObject::invokeMethod(
            this, [this, error] { report(error); }, Qt::QueuedConnection);
        return false;
    }
}

void ReportingApplication::report(const std::exception_ptr& error) {
    // One box at a time: a handler that fails again and again must not fill the screen.
    if (m_reporting)
        return;
    m_reporting = true;
    reportError(activeWindow(), error);
    m_reporting = false;
}

}  // namespace tarvo::window
