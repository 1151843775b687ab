#include "window/common/stepdialog.h"

#include <QApplication>
#include <limits>

namespace tarvo::window {

namespace {

constexpr int dialogAfter = 500;  // milliseconds

}  // namespace

StepDialog::StepDialog(QWidget* parent, const QString& text)
    : m_dialog(text, QObject::tr("Cancel"), 0, 100, parent->window()) {
    m_dialog.setWindowModality(Qt::WindowModal);
    m_dialog.setWindowTitle(QCoreApplication::applicationName());
    m_dialog.setAutoClose(false);
    m_dialog.setAutoReset(false);
    m_dialog.setMinimumDuration(std::numeric_limits<int>::max());
    m_elapsed.start();
}

bool StepDialog::goesOn(double fraction) {
    if (m_elapsed.elapsed() > dialogAfter && !m_dialog.isVisible())
        m_dialog.show();
    if (m_dialog.isVisible())
        m_dialog.setValue(static_cast<int>(fraction * 100));
    QApplication::processEvents(m_dialog.isVisible() ? QEventLoop::AllEvents
                                                     : QEventLoop::ExcludeUserInputEvents);
    return !m_dialog.wasCanceled();
}

}  // namespace tarvo::window
