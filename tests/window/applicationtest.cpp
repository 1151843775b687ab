// What holds for the whole program: the menu "View", and the report of errors that escape.

#include "qrb/error.h"
#include "qrb/loader.h"
#include "tests/window/guitestmain.h"
#include "tests/window/modalscript.h"
#include "window/common/appearance.h"
#include "window/common/theme.h"
#include "window/frame/mainwindow.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QDialog>
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTextBrowser>
#include <QtTest>
#include <memory>
#include <stdexcept>

using namespace tarvo::window;

namespace {

// Can't be painted.
class Unpaintable : public QWidget {
public:
    int attempts = 0;
    const char* failure = "No paint left.";

protected:
    void paintEvent(QPaintEvent*) override {
        ++attempts;
        throw std::runtime_error(failure);
    }
};

}  // namespace

class ApplicationTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { tarvo::qrb::loadLibrary(""); }
    void init();
    void cleanup();
    void cleanupTestCase() { tarvo::qrb::freeLibrary(); }

    void themeHoldsAtOnceAndLater();
    void textSizeHoldsForAllPanes();
    void errorsOfSlotsAreReportedAndCanBeCopied();
    void errorsOfEventHandlersAreReportedOnce();

private:
    void choose(const QString& text);
    static int sizeOf(const MainWindow& window, const char* pane) {
        return window.findChild<QWidget*>(pane)->font().pointSize();
    }

    std::unique_ptr<MainWindow> m_window;
};

void ApplicationTest::init() {
    m_window = showFreshWindow();
}

void ApplicationTest::cleanup() {
    m_window.reset();
    setTheme(Theme::SYSTEM);
    resetTextSize();
}

// Clicks an entry of the menu "View".
void ApplicationTest::choose(const QString& text) {
    auto* bar = m_window->menuBar();
    auto* menu = m_window->findChild<QMenu*>("menuView");
    QTest::mouseClick(bar, Qt::LeftButton, {}, bar->actionGeometry(menu->menuAction()).center());
    QTRY_VERIFY(menu->isVisible());
    for (QAction* action : menu->actions()) {
        if (action->text() == text)
            QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(action).center());
    }
    QTRY_VERIFY(!menu->isVisible());
}

void ApplicationTest::themeHoldsAtOnceAndLater() {
    const QPalette system = m_window->palette();
    choose("Dark");
    QVERIFY(isDark(m_window->palette()));
    QVERIFY(isDark(m_window->findChild<QPlainTextEdit*>("editChangelog")->palette()));
    // As a start of the program that finds the setting.
    QApplication::setPalette(QPalette());
    applyTheme();
    QVERIFY(isDark(m_window->palette()));
    // What can't be used looks so.
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        QVERIFY(m_window->palette().color(QPalette::Disabled, role) !=
                m_window->palette().color(QPalette::Active, role));
    choose("Light");
    QVERIFY(!isDark(m_window->palette()));
    choose("System colours");
    QCOMPARE(m_window->palette().color(QPalette::Base), system.color(QPalette::Base));
    QVERIFY(m_window->findChild<QAction*>("actionThemeSystem")->isChecked());
    // As another window does.
    setTheme(Theme::DARK);
    choose("Larger text");
    QVERIFY(m_window->findChild<QAction*>("actionThemeDark")->isChecked());
}

void ApplicationTest::textSizeHoldsForAllPanes() {
    MainWindow other;
    const int normal = sizeOf(*m_window, "editChangelog");
    QCOMPARE(sizeOf(*m_window, "textInspectionResult"), normal);
    QTest::keyClick(m_window.get(), Qt::Key_Plus, Qt::ControlModifier);
    choose("Larger text");
    for (const MainWindow* window : {m_window.get(), static_cast<MainWindow*>(&other)})
        for (const char* pane : {"editChangelog", "textInspectionResult"})
            QCOMPARE(sizeOf(*window, pane), normal + 2);
    QCOMPARE(sizeOf(*m_window, "treeMetaData"), QApplication::font().pointSize());
    const MainWindow later;
    QCOMPARE(sizeOf(later, "editChangelog"), normal + 2);
    for (int i = 0; i < 100; ++i)
        QTest::keyClick(m_window.get(), Qt::Key_Minus, Qt::ControlModifier);
    QCOMPARE(sizeOf(*m_window, "editChangelog"), smallestTextSize);
    QTest::keyClick(m_window.get(), Qt::Key_0, Qt::ControlModifier);
    QCOMPARE(sizeOf(*m_window, "editChangelog"), normal);
}

void ApplicationTest::errorsOfSlotsAreReportedAndCanBeCopied() {
    QPushButton button("Fail");
    connect(&button, &QPushButton::clicked, &button,
            [] { throw tarvo::qrb::ErrorImpl(1, "The disk is full.", "Free\nsome space."); });
    button.show();
    QTest::mouseClick(&button, Qt::LeftButton);
    ModalScript script({[](QDialog* dialog) {
        ModalScript::press("Copy")(dialog);
        QVERIFY(dialog->isVisible());
        ModalScript::press("OK")(dialog);
    }});
    QTRY_COMPARE(script.answered(), 1u);
    QCOMPARE(script.texts(), QStringList("The disk is full.\n\nFree\nsome space."));
    QCOMPARE(QApplication::clipboard()->text(), "The disk is full.\n\nFree\nsome space.");
    choose("Light");  // the window still works
}

void ApplicationTest::errorsOfEventHandlersAreReportedOnce() {
    Unpaintable widget;
    widget.resize(50, 50);
    ModalScript script({ModalScript::press("OK")});
    widget.show();
    QTRY_COMPARE(script.texts(), QStringList("No paint left."));
    QTRY_VERIFY(!QApplication::activeModalWidget());
    // Another box would make it paint again, and so on.
    const int before = widget.attempts;
    widget.update();
    QTRY_VERIFY(widget.attempts > before);
    QTest::qWait(50);
    QVERIFY(!QApplication::activeModalWidget());
    // Something else that goes wrong is told, too.
    widget.failure = "The brush is gone.";
    ModalScript another({ModalScript::press("OK")});
    widget.update();
    QTRY_COMPARE(another.texts(), QStringList("The brush is gone."));
    // And the same of another widget.
    QTRY_VERIFY(!QApplication::activeModalWidget());
    Unpaintable second;
    second.failure = widget.failure;
    second.resize(50, 50);
    ModalScript third({ModalScript::press("OK")});
    second.show();
    QTRY_COMPARE(third.texts(), QStringList("The brush is gone."));
}

GUI_TEST_MAIN(ApplicationTest)
#include "applicationtest.moc"
