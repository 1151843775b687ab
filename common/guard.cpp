#include "common/guard.h"

#include "common/messageboxes.h"
#include "common/progress.h"
#include "qrb/error.h"

#include <QApplication>

namespace tarvo::common {

bool guarded(QWidget* parent, const std::function<void()>& action) {
    try {
        action();
        return true;
    } catch (...) {
        reportError(parent, std::current_exception());
        return false;
    }
}

void reportError(QWidget* parent, const std::exception_ptr& error) {
    QString text = "Unknown error.";
    QString details;
    try {
        std::rethrow_exception(error);
    } catch (const Cancelled&) {
        return;
    } catch (const qrb::Error& failure) {
        text = QString::fromUtf8(failure.what());
        details = QString::fromUtf8(failure.details());
    } catch (const std::exception& failure) {
        text = QString::fromUtf8(failure.what());
    } catch (...) {
    }
    showError(parent, text, details);
}

WaitCursor::WaitCursor() {
    QApplication::setOverrideCursor(Qt::WaitCursor);
}

WaitCursor::~WaitCursor() {
    QApplication::restoreOverrideCursor();
}

}  // namespace tarvo::common
