// The frame of the window, driven with mouse and keys: opening and closing databases in all ways.

#include "tests/window/databasewindow.h"
#include "tests/window/guitestmain.h"
#include "window/common/recentfiles.h"
#include "window/frame/librarychoice.h"
#include "window/panels/panel.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QDialog>
#include <QDropEvent>
#include <QFile>
#include <QFileOpenEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QScreen>
#include <QSpinBox>
#include <QTabWidget>
#include <QTreeWidget>
#include <QUrl>
#include <QtTest>
#include <memory>

using namespace tarvo::window;

class WindowTest : public DatabaseWindowTest {
    Q_OBJECT

private slots:
    void withoutDatabaseOnlyTwoTabsAreEnabled();
    void actionsAreExplained();
    void openDialogOpensTheFileTypedIn();
    void openDialogRefusesAnEmptyLocation();
    void cancelledOpenDialogKeepsTheDatabase();
    void failedOpenLeavesNoDatabase();
    void clipboardNameIsOpened();
    void clipboardWithoutDatabaseIsExplained();
    void droppedFileIsOpened();
    void fileOpenEventOpensDatabasesAndChangelogs();
    void reopeningMovesTheFileToTheFrontOfTheRecentOnes();
    void fileActionsCopyTheParts();
    void closeEmptiesThePanels();
    void everyTabSurvivesTheClose();
    void geometryIsKept();
    void fullScreenIsForgotten();
    void switchingTheLibraryAsksForARestart();
};

void WindowTest::withoutDatabaseOnlyTwoTabsAreEnabled() {
    const QSize room = m_window->screen()->availableSize();
    QCOMPARE(m_window->size().boundedTo(room), m_window->size());
    auto* tabs = child<QTabWidget>("tabWidget");
    QStringList enabled;
    for (int i = 0; i < tabs->count(); ++i) {
        if (tabs->isTabEnabled(i))
            enabled += tabs->tabText(i);
    }
    QCOMPARE(enabled, QStringList({"Database", "Changelog"}));
    QCOMPARE(child<QLabel>("labelStatus")->text(), "no database opened");
    QVERIFY(!fieldText("editCurrentLibrary").isEmpty());
    QVERIFY(!action("actionQuerySelectNext")->isEnabled());
    QVERIFY(!action("actionProgramSettings")->isVisible());
}

void WindowTest::actionsAreExplained() {
    QMap<QKeySequence, QStringList> shortcuts;
    for (const QAction* each : m_window->findChildren<QAction*>()) {
        if (!each->objectName().startsWith("action"))
            continue;
        QVERIFY2(!each->text().isEmpty(), qUtf8Printable(each->objectName()));
        QVERIFY2(each->toolTip().startsWith("<html>"), qUtf8Printable(each->objectName()));
        if (!each->shortcut().isEmpty())
            shortcuts[each->shortcut()] += each->objectName();
    }
    // Two actions with one shortcut would both be dead.
    for (const QStringList& names : shortcuts)
        QVERIFY2(names.size() == 1, qUtf8Printable(names.join(", ")));
}

void WindowTest::openDialogOpensTheFileTypedIn() {
    ModalAnswer answer([this](QDialog* dialog) {
        auto* location = dialog->findChild<QComboBox*>("editLocation")->lineEdit();
        QCOMPARE(dialog->windowTitle(), "Database Open Settings");
        QVERIFY(dialog->findChild<QSpinBox*>("editCacheSize")->value() > 0);
        QTest::keyClicks(location, m_database.fileName + "  ");
        QTest::keyClick(location->parentWidget(), Qt::Key_Return);
    });
    pressKey(Qt::Key_O, Qt::ControlModifier);
    QVERIFY(answer.came());
    QCOMPARE(child<QLabel>("labelStatus")->text(), m_database.fileName);
    QCOMPARE(RecentFiles::list(), QStringList(m_database.fileName));
}

void WindowTest::openDialogRefusesAnEmptyLocation() {
    std::unique_ptr<ModalAnswer> refusal;
    ModalAnswer answer([&](QDialog* dialog) {
        auto* location = dialog->findChild<QComboBox*>("editLocation")->lineEdit();
        QTest::keyClicks(location, "   ");
        refusal = std::make_unique<ModalAnswer>();
        QTest::keyClick(location->parentWidget(), Qt::Key_Return);
        QVERIFY(dialog->isVisible());
        dialog->reject();
    });
    action("actionOpen")->trigger();
    QVERIFY(refusal && refusal->came());
    QCOMPARE(refusal->text(), "Location missing.");
}

void WindowTest::cancelledOpenDialogKeepsTheDatabase() {
    open();
    ModalAnswer answer([](QDialog* dialog) { QTest::keyClick(dialog, Qt::Key_Escape); });
    action("actionOpen")->trigger();
    QVERIFY(answer.came());
    QCOMPARE(child<QLabel>("labelStatus")->text(), m_database.fileName);
}

void WindowTest::failedOpenLeavesNoDatabase() {
    open();
    const QString other = m_folder.filePath("<b>other.qrbx");
    QFile file(other);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("not a database");
    file.close();
    ModalAnswer answer;
    m_window->openDatabase(other, true);
    QVERIFY(answer.came());
    QVERIFY(!answer.text().isEmpty());
    QCOMPARE(child<QLabel>("labelStatus")->text(), "no database opened");
    QVERIFY(!child<QTabWidget>("tabWidget")->isTabEnabled(6));
    QVERIFY(!RecentFiles::list().contains(other));
}

void WindowTest::clipboardNameIsOpened() {
    QApplication::clipboard()->setText(m_database.fileName);
    pressKey(Qt::Key_V, Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(child<QLabel>("labelStatus")->text(), m_database.fileName);
}

void WindowTest::clipboardWithoutDatabaseIsExplained() {
    QFile text(m_folder.filePath("some.txt"));
    QVERIFY(text.open(QIODevice::WriteOnly));
    text.write("text");
    text.close();
    for (const QString& name : {QString("/no/such/file.qrbx"), text.fileName()}) {
        QApplication::clipboard()->setText(name);
        ModalAnswer answer;
        action("actionOpenClipboard")->trigger();
        QVERIFY(answer.came());
        QVERIFY(answer.text().startsWith("No&nbsp;database&nbsp;file&nbsp;name"));
        QVERIFY(answer.text().contains("<br>"));
    }
}

void WindowTest::droppedFileIsOpened() {
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(m_database.fileName)});
    QDragEnterEvent enter(QPoint(10, 10), Qt::CopyAction, &data, Qt::LeftButton, {});
    QApplication::sendEvent(m_window.get(), &enter);
    QVERIFY(enter.isAccepted());
    QDropEvent drop(QPointF(10, 10), Qt::CopyAction, &data, Qt::LeftButton, {});
    QApplication::sendEvent(m_window.get(), &drop);
    QTRY_COMPARE(child<QLabel>("labelStatus")->text(), m_database.fileName);
}

void WindowTest::fileOpenEventOpensDatabasesAndChangelogs() {
    QFile text(m_folder.filePath("log.TXT"));
    QVERIFY(text.open(QIODevice::WriteOnly));
    text.write("[#1] one\nx\n[#2] two\n");
    text.close();
    QFileOpenEvent changelog(text.fileName());
    QApplication::sendEvent(qApp, &changelog);
    QCOMPARE(child<QLabel>("labelStatus")->text(), text.fileName());
    QCOMPARE(child<QLabel>("labelChangelogEntries")->text(), "Log entries: 2");

    QFileOpenEvent missing(m_folder.filePath("missing.txt"));
    QApplication::sendEvent(qApp, &missing);
    QCOMPARE(child<QLabel>("labelStatus")->text(), text.fileName());

    QFileOpenEvent database(m_database.fileName);
    QApplication::sendEvent(qApp, &database);
    QCOMPARE(child<QLabel>("labelStatus")->text(), m_database.fileName);

    // While a dialog may be at work on the database, it stays.
    const QString other = copyOfDatabase("other.qrbx");
    QFileOpenEvent later(other);
    ModalAnswer dialog([&](QDialog* open) {
        QApplication::sendEvent(qApp, &later);
        QCOMPARE(child<QLabel>("labelStatus")->text(), m_database.fileName);
        open->reject();
    });
    action("actionManagementLevelOfDetail")->trigger();
    QVERIFY(dialog.came());
    QTRY_COMPARE(child<QLabel>("labelStatus")->text(), other);
}

void WindowTest::reopeningMovesTheFileToTheFrontOfTheRecentOnes() {
    const QString copy = copyOfDatabase("copy.qrbx");
    m_window->openDatabase(m_database.fileName, true);
    m_window->openDatabase(copy, true);
    m_window->openDatabase(m_database.fileName, true);
    QCOMPARE(RecentFiles::list(), QStringList({m_database.fileName, copy}));
    pressKey(Qt::Key_W, Qt::ControlModifier);
    QCOMPARE(child<QLabel>("labelStatus")->text(), "no database opened");
    pressKey(Qt::Key_O, Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(child<QLabel>("labelStatus")->text(), m_database.fileName);
}

void WindowTest::fileActionsCopyTheParts() {
    QApplication::clipboard()->setText("untouched");
    action("actionDatabaseFileCopyName")->trigger();
    QCOMPARE(QApplication::clipboard()->text(), "untouched");
    open();
    action("actionDatabaseFileCopyName")->trigger();
    QCOMPARE(QApplication::clipboard()->text(), "test.qrbx");
    action("actionDatabaseFileCopyFolder")->trigger();
    QCOMPARE(QApplication::clipboard()->text(), m_folder.path());
    action("actionDatabaseFileCopyPath")->trigger();
    QCOMPARE(QApplication::clipboard()->text(), m_database.fileName);
}

void WindowTest::closeEmptiesThePanels() {
    open();
    showTab("tabPointData");
    enterFilter("tarvo.id <= 5");
    action("actionClose")->trigger();
    for (const QTreeWidget* tree : m_window->findChildren<QTreeWidget*>())
        QVERIFY2(tree->topLevelItemCount() == 0, qUtf8Printable(tree->objectName()));
    QCOMPARE(child<QPlainTextEdit>("editChangelog")->toPlainText(), "");
    QCOMPARE(child<QListWidget>("listPointAttributes")->count(), 0);
    for (const auto* edit : child<QWidget>("tabDatabase")->findChildren<QLineEdit*>())
        QVERIFY2(edit->text().isEmpty() != (edit->objectName() == "editCurrentLibrary"),
                 qUtf8Printable(edit->objectName()));
}

// A tab that was never shown has nothing to load any more.
void WindowTest::everyTabSurvivesTheClose() {
    auto* tabs = child<QTabWidget>("tabWidget");
    for (int i = 0; i < tabs->count(); ++i) {
        open();
        tabs->setCurrentIndex(i);
        const QWidget* shown = tabs->currentWidget();
        action("actionClose")->trigger();
        QVERIFY(!QApplication::activeModalWidget());
        QCOMPARE(tabs->currentWidget(), tabs->isTabEnabled(i) ? shown : tabs->widget(0));
        QCOMPARE(child<QTreeWidget>("treePointIndexNodes")->topLevelItemCount(), 0);
    }
}

void WindowTest::geometryIsKept() {
    m_window->resize(777, 555);
    m_window->close();
    MainWindow second;
    QCOMPARE(second.size(), QSize(777, 555));
}

void WindowTest::fullScreenIsForgotten() {
    m_window->setGeometry(60, 50, 900, 600);
    for (const bool full : {true, false}) {
        pressKey(Qt::Key_F11);
        QTRY_COMPARE(m_window->isFullScreen(), full);
        QCOMPARE(action("actionFullScreen")->isChecked(), full);
    }
    pressKey(Qt::Key_F11);
    QTRY_VERIFY(m_window->isFullScreen());
    m_window->close();
    const MainWindow next;
    QVERIFY(!next.isFullScreen());
    QCOMPARE(next.geometry(), QRect(60, 50, 900, 600));
}

void WindowTest::switchingTheLibraryAsksForARestart() {
    ModalAnswer answer([](QDialog* dialog) {
        auto* edit = dialog->findChild<QLineEdit*>("fileNameEdit");
        edit->setText(QCoreApplication::applicationDirPath() + "/qrblib.so");
        QTest::keyClick(edit, Qt::Key_Return);
    });
    action("actionSwitchLibrary")->trigger();
    QVERIFY(answer.came());
    QVERIFY(!m_window->isVisible());
    QVERIFY(libraryChoice().restart);
    QCOMPARE(libraryChoice().fileName, QCoreApplication::applicationDirPath() + "/qrblib.so");
    libraryChoice() = {};
}

GUI_TEST_MAIN(WindowTest)
#include "windowtest.moc"
