#include "window/common/progress.h"

#include <QApplication>
#include <QProgressDialog>
#include <limits>

namespace tarvo::window {

namespace {

constexpr int milliseconds = 500;  // before the dialog comes up
constexpr int eventInterval = 30;  // milliseconds

}  // namespace

Progress::Progress(QWidget* parent, const QString& text)
    : m_text(text), m_dialog(std::make_unique<QProgressDialog>(text, "Cancel", 0, 100, parent)) {
    m_dialog->setWindowModality(Qt::WindowModal);
    m_dialog->setWindowTitle("qrbadmin");
    m_dialog->setAutoClose(false);
    m_dialog->setAutoReset(false);
    // Shown by update().
    m_dialog->setMinimumDuration(std::numeric_limits<int>::max());
    m_elapsed.start();
    m_sinceEvents.start();
}

Progress::~Progress() = default;

void Progress::update(int percent) {
    update(percent, QString());
}

void Progress::update(int percent, const QString& state) {
    if (m_elapsed.elapsed() < milliseconds)
        return;
    if (m_dialog->isVisible() && m_sinceEvents.elapsed() < eventInterval)
        return;
    m_dialog->setLabelText(state.isEmpty() ? m_text : m_text + '\n' + state);
    m_dialog->setValue(percent);
    if (!m_dialog->isVisible() && !m_dialog->wasCanceled())
        m_dialog->show();
    QApplication::processEvents();
    m_sinceEvents.restart();
    if (m_dialog->wasCanceled())
        throw Cancelled();
}

}  // namespace tarvo::window
