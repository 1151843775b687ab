#include "window/common/guard.h"

#include "core/error.h"
#include "qrb/error.h"
#include "window/common/aside.h"
#include "window/common/messageboxes.h"
#include "window/common/messages.h"

#include <QApplication>

namespace tarvo::window {

bool guarded(QWidget* parent, const std::function<void()>& action) {
    try {
        action();
        return true;
    } catch (...) {
        reportError(parent, std::current_exception());
        return false;
    }
}

ErrorText describe(const std::exception_ptr& error) {
    try {
        std::rethrow_exception(error);
    } catch (const qrb::Error& failure) {
        return {translatedMessage(failure.what()), translatedMessage(failure.details())};
    } catch (const core::Failure& failure) {
        return {translatedMessage(failure.what()), translatedMessage(failure.details())};
    } catch (const std::exception& failure) {
        return {translatedMessage(failure.what()), {}};
    } catch (...) {
        return {QObject::tr("Unknown error."), {}};
    }
}

void reportError(QWidget* parent, const std::exception_ptr& error) {
    try {
        std::rethrow_exception(error);
    } catch (const Cancelled&) {
        return;
    } catch (...) {
        const auto [text, details] = describe(error);
        showError(parent, text, details);
    }
}

WaitCursor::WaitCursor() {
    QApplication::setOverrideCursor(Qt::WaitCursor);
}

WaitCursor::~WaitCursor() {
    QApplication::restoreOverrideCursor();
}

}  // namespace tarvo::window
