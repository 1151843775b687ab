#include "tests/window/modalanswer.h"

#include "tests/window/modalscript.h"

#include <QAbstractButton>
#include <QApplication>
#include <QMessageBox>
#include <QtTest>

namespace {

void press(QDialog* dialog, const QString& text) {
    for (auto* button : dialog->findChildren<QAbstractButton*>()) {
        if (button->text().remove('&') == text) {
            QTest::mouseClick(button, Qt::LeftButton);
            return;
        }
    }
    qCritical("the dialog has no button %s", qUtf8Printable(text));
    dialog->reject();
}

}  // namespace

ModalAnswer::ModalAnswer(std::function<void(QDialog*)> action) : m_action(std::move(action)) {
    QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { poll(); });
    m_timer.start(10);
}

ModalAnswer::ModalAnswer(const QString& button)
    : ModalAnswer([button](QDialog* dialog) { press(dialog, button); }) {}

void ModalAnswer::poll() {
    auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    if (!dialog || !takesKeys(dialog))
        return;
    m_timer.stop();
    m_came = true;
    if (const auto* box = qobject_cast<QMessageBox*>(dialog))
        m_text = box->text();
    m_action(dialog);
}
