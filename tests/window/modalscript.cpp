#include "tests/window/modalscript.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCoreApplication>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QProgressDialog>
#include <QtTest>

bool takesKeys(QDialog* dialog) {
    if (!dialog->isVisible())
        return false;
    if (!dialog->isActiveWindow())
        dialog->activateWindow();
    return dialog->isActiveWindow();
}

namespace {

struct OnProgress {
    ModalScript::Step step;
    void operator()(QDialog* dialog) const { step(dialog); }
};

}  // namespace

ModalScript::ModalScript(std::vector<Step> steps) : m_steps(std::move(steps)) {
    if (auto* open = qobject_cast<QDialog*>(QApplication::activeModalWidget()))
        m_seen += open;
    arm();
}

void ModalScript::arm() {
    if (m_answered == m_steps.size())
        return;
    m_timers.push_back(std::make_unique<QTimer>());
    QTimer* timer = m_timers.back().get();
    QObject::connect(timer, &QTimer::timeout, timer, [this, timer] {
        auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        if (!dialog || m_seen.contains(dialog) || !takesKeys(dialog))
            return;
        if (qobject_cast<QProgressDialog*>(dialog) && !m_steps[m_answered].target<OnProgress>())
            return;
        timer->stop();
        m_seen += dialog;
        const Step step = m_steps[m_answered++];
        if (const auto* box = qobject_cast<QMessageBox*>(dialog))
            m_texts += box->text();
        arm();
        step(dialog);
    });
    timer->start(10);
}

bool ModalScript::pressButton(QWidget* parent, const QString& button) {
    // The toolkit's own buttons are named in the language that is used.
    QStringList names(button);
    for (const QString& own : {button, '&' + button})
        names += QCoreApplication::translate("QPlatformTheme", qPrintable(own)).remove('&');
    for (auto* each : parent->findChildren<QAbstractButton*>()) {
        if (names.contains(each->text().remove('&'))) {
            QTest::mouseClick(each, Qt::LeftButton);
            return true;
        }
    }
    const auto* box = qobject_cast<QMessageBox*>(parent);
    qCritical("there is no button %s: %s", qUtf8Printable(button),
              qUtf8Printable(box ? box->text() : parent->objectName()));
    return false;
}

ModalScript::Step ModalScript::press(const QString& button) {
    return [button](QDialog* dialog) {
        if (!pressButton(dialog, button))
            dialog->reject();
    };
}

ModalScript::Step ModalScript::chooseFile(const QString& fileName) {
    return [fileName](QDialog* dialog) {
        auto* edit = dialog->findChild<QLineEdit*>("fileNameEdit");
        if (!edit) {
            qCritical("not a file dialog");
            dialog->reject();
            return;
        }
        edit->setText(fileName);
        QTest::keyClick(edit, Qt::Key_Return);
    };
}

ModalScript::Step ModalScript::with(const Step& first, const QString& button) {
    return [first, button](QDialog* dialog) {
        first(dialog);
        press(button)(dialog);
    };
}

ModalScript::Step ModalScript::onProgress(const Step& step) {
    return OnProgress{step};
}
