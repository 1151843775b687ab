#include "tests/window/databasewindow.h"

#include "qrb/loader.h"
#include "tests/window/guitestmain.h"

#include <QFile>
#include <QTabBar>
#include <QTabWidget>
#include <QtTest>

using namespace tarvo::window;

void DatabaseWindowTest::initTestCase() {
    tarvo::qrb::loadLibrary("");
    m_database = makeTestDatabase(m_folder.path());
    QVERIFY2(m_database.error.isEmpty(), qUtf8Printable(m_database.error));
    if (!m_database.real)
        qInfo("no folder of real point clouds is known (QRB_TEST_DATA): they were left out");
}

void DatabaseWindowTest::init() {
    m_window = showFreshWindow();
}

void DatabaseWindowTest::cleanup() {
    m_window.reset();
}

void DatabaseWindowTest::cleanupTestCase() {
    tarvo::qrb::freeLibrary();
}

void DatabaseWindowTest::open() {
    m_window->openDatabase(m_database.fileName, true);
    QVERIFY(child<QTabWidget>("tabWidget")->isTabEnabled(6));
}

void DatabaseWindowTest::showTab(const char* name) {
    auto* tabs = child<QTabWidget>("tabWidget");
    const int index = tabs->indexOf(child<QWidget>(name));
    QTest::mouseClick(tabs->tabBar(), Qt::LeftButton, {}, tabs->tabBar()->tabRect(index).center());
    QCOMPARE(tabs->currentIndex(), index);
}

// Shortcuts work in the active window only, which the window is a moment after a box was closed.
void DatabaseWindowTest::pressKey(Qt::Key key, Qt::KeyboardModifiers modifiers) {
    m_window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    QTest::keyClick(m_window.get(), key, modifiers);
}

void DatabaseWindowTest::enterFilter(const QString& text) {
    filter()->setFocus();
    filter()->selectAll();
    QTest::keyClick(filter(), Qt::Key_Delete);
    QTest::keyClicks(filter(), text);
    // The combo box has the focus and hands its keys on; keys sent to the edit come twice.
    QTest::keyClick(child<QComboBox>("PointDataFilter"), Qt::Key_Return);
}

int DatabaseWindowTest::columnOf(const QString& element) const {
    for (int column = 0; column < points()->columnCount(); ++column) {
        if (points()->headerItem()->text(column) == element)
            return column;
    }
    return -1;
}

QString DatabaseWindowTest::copyOfDatabase(const QString& name) const {
    const QString path = m_folder.filePath(name);
    QFile::remove(path);
    QFile::copy(m_database.fileName, path);
    return path;
}
