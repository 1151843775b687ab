#include "tests/window/pluginwindow.h"

#include "window/common/programsettings.h"

#include <QDeadlineTimer>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabBar>
#include <QTabWidget>
#include <QtTest>

using namespace tarvo::window;

PluginWindow::PluginWindow(const QString& database) : SampleWindow(database) {
    ProgramSettings().setValue("plugin_path", m_folder.path());
}

void PluginWindow::add(const QString& name, const QString& body, const QString& members) const {
    QDir(m_folder.path()).mkdir(name);
    QVERIFY(
        write(name + "/plugin.json",
              QString(R"({"name": "%0", "title": "%0", "version": "1"%1})").arg(name, members)));
    QVERIFY(write(name + "/plugin.py",
                  "import json, os, time\ndef run(db, parameters, report):\n" + body + '\n'));
}

bool PluginWindow::write(const QString& name, const QString& text) const {
    QFile file(path(name));
    return file.open(QIODevice::WriteOnly) && file.write(text.toUtf8()) >= 0;
}

QMenu* PluginWindow::openMenu() const {
    auto* menu = child<QMenu>("menuPlugins");
    auto* bar = window().menuBar();
    QTest::mouseClick(bar, Qt::LeftButton, {}, bar->actionGeometry(menu->menuAction()).center());
    if (!QTest::qWaitForWindowExposed(menu))
        qFatal("the menu does not open");
    return menu;
}

QStringList PluginWindow::entries() const {
    QMenu* menu = openMenu();
    QStringList texts;
    for (const QAction* action : menu->actions())
        texts += action->isSeparator() ? QString("-")
                 : action->isEnabled() ? action->text()
                                       : '[' + action->text() + ']';
    QTest::keyClick(menu, Qt::Key_Escape);
    return texts;
}

QStringList PluginWindow::choose(const QString& name, std::vector<ModalScript::Step> steps) const {
    QMenu* menu = openMenu();
    auto* action = in<QAction>(menu, qUtf8Printable("actionPlugin_" + name));
    const std::size_t expected = steps.size();
    steps.front() = closing(steps.front());
    ModalScript script(std::move(steps));
    QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(action).center());
    if (script.answered() != expected)
        QTest::qFail(
            qPrintable(QString("of %1 dialogs %2 came").arg(expected).arg(script.answered())),
            __FILE__, __LINE__);
    return script.texts();
}

ModalScript::Step closing(const ModalScript::Step& step) {
    return [step](QDialog* dialog) {
        const QPointer<QDialog> open = dialog;
        step(dialog);
        if (!open || !open->isVisible())
            return;
        if (auto* cancel = open->findChild<QPushButton*>("buttonCancel")) {
            cancel->click();
            // What the toolkit offers does not wait once the test has failed.
            for (QDeadlineTimer timer(30'000); cancel->isEnabled() && !timer.hasExpired();)
                QCoreApplication::processEvents(QEventLoop::AllEvents, 50);
        }
        open->reject();
    };
}

void click(QDialog* dialog, const char* button) {
    QTest::mouseClick(in<QPushButton>(dialog, button), Qt::LeftButton);
}

void typeInto(QDialog* dialog, const char* field, const QString& text) {
    auto* widget = in<QWidget>(dialog, field);
    auto* edit = qobject_cast<QLineEdit*>(widget);
    if (!edit)
        edit = widget->findChild<QLineEdit*>();
    edit->setFocus();
    edit->selectAll();
    QTest::keyClick(edit, Qt::Key_Delete);
    QTest::keyClicks(edit, text);
}

ModalScript::Step runTo(const std::function<void(QDialog*)>& look) {
    return [look](QDialog* dialog) {
        runToEnd(dialog);
        look(dialog);
        click(dialog, "buttonClose");
    };
}

void runToEnd(QDialog* dialog) {
    click(dialog, "buttonRun");
    QTRY_VERIFY_WITH_TIMEOUT(!isRunning(dialog), 30'000);
}

bool isRunning(QDialog* dialog) {
    return in<QPushButton>(dialog, "buttonCancel")->isEnabled();
}

QString stateOf(QDialog* dialog) {
    return in<QLabel>(dialog, "labelState")->text();
}

QString outputOf(QDialog* dialog) {
    return in<QPlainTextEdit>(dialog, "editOutput")->toPlainText();
}

QWidget* pageOf(QDialog* dialog, const QString& title) {
    auto* tabs = in<QTabWidget>(dialog, "tabWidget");
    for (int i = 0; i < tabs->count(); ++i)
        if (tabs->tabText(i) == title) {
            QTest::mouseClick(tabs->tabBar(), Qt::LeftButton, {},
                              tabs->tabBar()->tabRect(i).center());
            return tabs->widget(i);
        }
    return nullptr;
}
