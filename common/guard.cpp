#include "common/guard.h"

#include "common/messageboxes.h"
#include "common/progress.h"
#include "qrb/error.h"

#include <QApplication>

namespace tarvo::common {

bool guarded(QWidget* parent, const std::function<void()>& action) {
    QString text;
    QString details;
    try {
        action();
        return true;
    } catch (const Cancelled&) {
        return false;
    } catch (const qrb::Error& error) {
        text = QString::fromUtf8(error.what());
        details = QString::fromUtf8(error.details());
    } catch (const std::exception& error) {
        text = QString::fromUtf8(error.what());
    } catch (...) {
        text = "Unknown error.";
    }
    showError(parent, text, details);
    return false;
}

WaitCursor::WaitCursor() {
    QApplication::setOverrideCursor(Qt::WaitCursor);
}

WaitCursor::~WaitCursor() {
    QApplication::restoreOverrideCursor();
}

}  // namespace tarvo::common
