// The window on a database, driven with mouse and keys.

#include "qrb/loader.h"
#include "tests/window/guitestmain.h"
#include "tests/window/modalanswer.h"
#include "tests/window/testdatabase.h"
#include "window/common/recentfiles.h"
#include "window/frame/librarychoice.h"
#include "window/frame/mainwindow.h"
#include "window/panels/panel.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QDialog>
#include <QDropEvent>
#include <QFileOpenEvent>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QSpinBox>
#include <QTabWidget>
#include <QTextBrowser>
#include <QTreeWidget>
#include <QUrl>
#include <QtTest>
#include <memory>

using namespace tarvo::window;

class WindowTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void cleanupTestCase();

    void withoutDatabaseOnlyTwoTabsAreEnabled();
    void actionsAreExplained();
    void databaseTabShowsTheSummary();
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
    void pagesAreAppendedUntilNothingIsLeft();
    void editingTheFilterStartsAfresh();
    void wrongFilterShowsTheLibrarysMessage();
    void wrongNodeListStartsNoQuery();
    void nodeListNarrowsTheSelection();
    void countMatchesTheCloud();
    void doubleClickCopiesTheCell();
    void hiddenColumnsStayHiddenInTheNextDatabase();
    void columnsFollowTheChoosersOrder();
    void exportWritesEveryPointThatMatches();
    void reloadRunsTheSelectionAgain();
    void closeEmptiesThePanels();
    void everyTabSurvivesTheClose();
    void listsOfTheOtherTabsAreFilled();
    void indexNodesAreShownAndSearched();
    void doubleClickOnANodeShowsItsPoints();
    void reportIsMadeOnDemand();
    void geometryIsKept();
    void switchingTheLibraryAsksForARestart();

private:
    template <typename Widget>
    Widget* child(const char* name) const {
        auto* widget = m_window->findChild<Widget*>(name);
        if (!widget)
            qFatal("no child %s", name);
        return widget;
    }
    QAction* action(const char* name) const { return child<QAction>(name); }
    QTreeWidget* points() const { return child<QTreeWidget>("treePointData"); }
    QLineEdit* filter() const { return child<QComboBox>("PointDataFilter")->lineEdit(); }
    QString fieldText(const char* name) const { return child<QLineEdit>(name)->text(); }

    void open();
    void showTab(const char* name);
    void pressKey(Qt::Key key, Qt::KeyboardModifiers modifiers = {});
    void enterFilter(const QString& text);
    int columnOf(const QString& element) const;
    QString copyOfDatabase(const QString& name) const;

    QTemporaryDir m_folder;
    TestDatabase m_database;
    std::unique_ptr<MainWindow> m_window;
};

void WindowTest::initTestCase() {
    tarvo::qrb::loadLibrary("");
    m_database = makeTestDatabase(m_folder.path());
    QVERIFY2(m_database.error.isEmpty(), qUtf8Printable(m_database.error));
    if (!m_database.real)
        qInfo("no folder of real point clouds is known (QRB_TEST_DATA): they were left out");
}

void WindowTest::init() {
    m_window = showFreshWindow();
}

void WindowTest::cleanup() {
    m_window.reset();
}

void WindowTest::cleanupTestCase() {
    tarvo::qrb::freeLibrary();
}

void WindowTest::open() {
    m_window->openDatabase(m_database.fileName, true);
    QVERIFY(child<QTabWidget>("tabWidget")->isTabEnabled(6));
}

void WindowTest::showTab(const char* name) {
    auto* tabs = child<QTabWidget>("tabWidget");
    const int index = tabs->indexOf(child<QWidget>(name));
    QTest::mouseClick(tabs->tabBar(), Qt::LeftButton, {}, tabs->tabBar()->tabRect(index).center());
    QCOMPARE(tabs->currentIndex(), index);
}

// Shortcuts work in the active window only, which the window is a moment after a box was closed.
void WindowTest::pressKey(Qt::Key key, Qt::KeyboardModifiers modifiers) {
    m_window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    QTest::keyClick(m_window.get(), key, modifiers);
}

void WindowTest::enterFilter(const QString& text) {
    filter()->setFocus();
    filter()->selectAll();
    QTest::keyClick(filter(), Qt::Key_Delete);
    QTest::keyClicks(filter(), text);
    // The combo box has the focus and hands its keys on; keys sent to the edit come twice.
    QTest::keyClick(child<QComboBox>("PointDataFilter"), Qt::Key_Return);
}

int WindowTest::columnOf(const QString& element) const {
    for (int column = 0; column < points()->columnCount(); ++column) {
        if (points()->headerItem()->text(column) == element)
            return column;
    }
    return -1;
}

QString WindowTest::copyOfDatabase(const QString& name) const {
    const QString path = m_folder.filePath(name);
    QFile::remove(path);
    QFile::copy(m_database.fileName, path);
    return path;
}

void WindowTest::withoutDatabaseOnlyTwoTabsAreEnabled() {
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

void WindowTest::databaseTabShowsTheSummary() {
    open();
    QCOMPARE(fieldText("editPointsTotal"), QLocale().toString(m_database.pointCount));
    QCOMPARE(fieldText("editDatabaseFile"), m_database.fileName);
    QCOMPARE(fieldText("editPrimaryAttribute"), "tarvo.xyz");
    QCOMPARE(fieldText("editReferenceSystem"),
             m_database.real ? "NAD_1983_HARN_Lambert_Conformal_Conic" : "unknown");
    QVERIFY(!QUuid::fromString(fieldText("editDatabaseUUID")).isNull());
    QVERIFY(fieldText("editDatabaseSize").contains(" B)"));
    QVERIFY(fieldText("editChunkSize").startsWith("mode: "));
    QVERIFY(fieldText("editCompressionLevel").endsWith(" %"));
    QVERIFY(!fieldText("editDatabaseCreator").isEmpty());
    QVERIFY(!fieldText("editLevelOfDetail").isEmpty());
    QCOMPARE(child<QLabel>("labelStatus")->text(), m_database.fileName);
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

void WindowTest::pagesAreAppendedUntilNothingIsLeft() {
    open();
    showTab("tabPointData");
    enterFilter("tarvo.id <= 250");
    QCOMPARE(points()->topLevelItemCount(), 100);
    QVERIFY(action("actionQuerySelectCancel")->isEnabled());
    QVERIFY(child<QLabel>("labelPointData")->text().endsWith(" ms"));
    pressKey(Qt::Key_F3);
    QCOMPARE(points()->topLevelItemCount(), 200);
    pressKey(Qt::Key_F3);
    QCOMPARE(points()->topLevelItemCount(), 250);
    QCOMPARE(points()->topLevelItem(249)->text(0), "250");
    QSet<QString> ids;
    for (int row = 0; row < 250; ++row)
        ids += points()->topLevelItem(row)->text(columnOf("tarvo.id"));
    QCOMPARE(ids.size(), 250);

    ModalAnswer answer;
    pressKey(Qt::Key_F3);
    QVERIFY(answer.came());
    QCOMPARE(answer.text(), "No data received.");
    QVERIFY(!action("actionQuerySelectCancel")->isEnabled());
    QCOMPARE(points()->topLevelItemCount(), 250);
    // The query is over, so the next run starts with row 1.
    pressKey(Qt::Key_F3);
    QCOMPARE(points()->topLevelItemCount(), 100);
    QCOMPARE(points()->topLevelItem(0)->text(0), "1");
}

void WindowTest::editingTheFilterStartsAfresh() {
    open();
    showTab("tabPointData");
    enterFilter("tarvo.id <= 150");
    // Losing the focus is no edit.
    points()->setFocus();
    pressKey(Qt::Key_F3);
    QCOMPARE(points()->topLevelItemCount(), 150);
    QTest::keyClicks(filter(), "0");
    QVERIFY(!action("actionQuerySelectCancel")->isEnabled());
    pressKey(Qt::Key_F3);
    QCOMPARE(points()->topLevelItemCount(), 100);
    pressKey(Qt::Key_Escape);
    QVERIFY(!action("actionQuerySelectCancel")->isEnabled());
    QCOMPARE(child<QComboBox>("PointDataFilter")->itemText(0), "tarvo.id <= 1500");
    QCOMPARE(child<QComboBox>("PointDataFilter")->itemText(1), "tarvo.id <= 150");
}

void WindowTest::wrongFilterShowsTheLibrarysMessage() {
    open();
    showTab("tabPointData");
    enterFilter("tarvo.id <= 120");
    ModalAnswer answer;
    enterFilter("tarvo.id <= )");
    QVERIFY(answer.came());
    QVERIFY2(answer.text().contains(QRegularExpression("\\d")), qUtf8Printable(answer.text()));
    QVERIFY(!answer.text().contains("Unknown error"));
    // What was shown before stays.
    QCOMPARE(points()->topLevelItemCount(), 100);
    QVERIFY(!QApplication::overrideCursor());
}

void WindowTest::wrongNodeListStartsNoQuery() {
    open();
    showTab("tabPointData");
    QTest::keyClicks(child<QLineEdit>("editPointDataNodes"), "1-2-3");
    ModalAnswer answer;
    QTest::keyClick(child<QLineEdit>("editPointDataNodes"), Qt::Key_Return);
    QVERIFY(answer.came());
    QCOMPARE(answer.text(), "Invalid input: \"1-2-3\"");
    QVERIFY(!action("actionQuerySelectCancel")->isEnabled());
    QCOMPARE(points()->topLevelItemCount(), 0);
}

void WindowTest::nodeListNarrowsTheSelection() {
    open();
    showTab("tabPointData");
    // An empty list, given as such, selects nothing.
    QTest::keyClicks(child<QLineEdit>("editPointDataNodes"), "3-1");
    ModalAnswer answer;
    pressKey(Qt::Key_F4);
    QVERIFY(answer.came());
    QCOMPARE(answer.text(), "No points match the current filter expression.");
}

void WindowTest::countMatchesTheCloud() {
    open();
    showTab("tabPointData");
    ModalAnswer all;
    pressKey(Qt::Key_F4);
    QCOMPARE(all.text(), QString("%1 points match the current filter expression.")
                             .arg(QLocale().toString(m_database.pointCount)));
    filter()->setText("tarvo.id == 1");
    ModalAnswer one;
    pressKey(Qt::Key_F4);
    QCOMPARE(one.text(), "One point matches the current filter expression.");
    if (m_database.real) {
        filter()->setText("tarvo.class == 2");
        ModalAnswer ground;
        pressKey(Qt::Key_F4);
        QCOMPARE(ground.text(), "26,107 points match the current filter expression.");
    }
}

void WindowTest::doubleClickCopiesTheCell() {
    open();
    showTab("tabPointData");
    enterFilter("tarvo.id == 7");
    QCOMPARE(points()->topLevelItemCount(), 1);
    const int column = columnOf("tarvo.id");
    QVERIFY(column > 0);
    points()->scrollToItem(points()->topLevelItem(0));
    const QModelIndex index = points()->model()->index(0, column);
    points()->scrollTo(index);
    const QPoint where = points()->visualRect(index).center();
    QTest::mouseClick(points()->viewport(), Qt::LeftButton, {}, where);
    QTest::mouseDClick(points()->viewport(), Qt::LeftButton, {}, where);
    QCOMPARE(QApplication::clipboard()->text(), "tarvo.id = 7");
    QVERIFY(points()->topLevelItem(0)->toolTip(column).startsWith("tarvo.id = 7\n"));
}

void WindowTest::hiddenColumnsStayHiddenInTheNextDatabase() {
    open();
    showTab("tabPointData");
    enterFilter("tarvo.id == 7");
    auto* chooser = child<QListWidget>("listPointAttributes");
    auto* entry = chooser->findItems("tarvo.xyz", Qt::MatchExactly).value(0);
    QVERIFY(entry);
    entry->setCheckState(Qt::Unchecked);
    QTRY_VERIFY(points()->isColumnHidden(columnOf("tarvo.xyz[0]")));
    QVERIFY(points()->isColumnHidden(columnOf("tarvo.xyz[2]")));
    QVERIFY(!points()->isColumnHidden(columnOf("tarvo.id")));

    m_window->openDatabase(copyOfDatabase("copy.qrbx"), true);
    enterFilter("tarvo.id == 8");
    QVERIFY(points()->isColumnHidden(columnOf("tarvo.xyz[0]")));
    action("actionColumnsShowAll")->trigger();
    QTRY_VERIFY(!points()->isColumnHidden(columnOf("tarvo.xyz[0]")));
}

void WindowTest::columnsFollowTheChoosersOrder() {
    open();
    showTab("tabPointData");
    enterFilter("tarvo.id == 7");
    const auto visualOrder = [this] {
        QStringList names;
        for (int i = 1; i < points()->columnCount(); ++i)
            names += points()->headerItem()->text(points()->header()->logicalIndex(i));
        return names;
    };
    const QStringList initial = visualOrder();
    action("actionColumnsSortByName")->trigger();
    QStringList sorted = initial;
    sorted.sort();
    QTRY_COMPARE(visualOrder(), sorted);
    action("actionColumnsSortDefault")->trigger();
    QTRY_COMPARE(visualOrder(), initial);
}

void WindowTest::exportWritesEveryPointThatMatches() {
    open();
    showTab("tabPointData");
    filter()->setText("tarvo.id <= 1200");
    action("actionColumnsHideAll")->trigger();
    for (const char* name : {"tarvo.id", "tarvo.xyz"}) {
        child<QListWidget>("listPointAttributes")
            ->findItems(name, Qt::MatchExactly)
            .value(0)
            ->setCheckState(Qt::Checked);
    }
    action("actionColumnsSortByName")->trigger();
    const QString name = m_folder.filePath("points.csv");
    std::unique_ptr<ModalAnswer> finished;
    ModalAnswer answer([&](QDialog* dialog) {
        auto* edit = dialog->findChild<QLineEdit*>("fileNameEdit");
        edit->setText(name);
        finished = std::make_unique<ModalAnswer>();
        QTest::keyClick(edit, Qt::Key_Return);
    });
    action("actionQuerySelectExport")->trigger();
    QVERIFY(finished && finished->came());
    QCOMPARE(finished->text(), "Export successfully finished.");

    QFile file(name);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArrayList lines = file.readAll().split('\n');
    QCOMPARE(lines.first(), "tarvo.id,tarvo.xyz[0],tarvo.xyz[1],tarvo.xyz[2]");
    QCOMPARE(lines.size(), 1 + 1200 + 1);
    for (int i = 1; i <= 1200; ++i)
        QCOMPARE(lines[i].count(','), 3);
    QVERIFY(!lines[1].split(',')[0].contains('.'));
}

void WindowTest::reloadRunsTheSelectionAgain() {
    open();
    showTab("tabPointData");
    enterFilter("tarvo.id <= 250");
    pressKey(Qt::Key_F3);
    QCOMPARE(points()->topLevelItemCount(), 200);
    pressKey(Qt::Key_F5);
    QCOMPARE(points()->topLevelItemCount(), 100);
    QVERIFY(action("actionQuerySelectCancel")->isEnabled());
    // Opening a file while a selection runs ends it.
    m_window->openDatabase(m_database.fileName, true);
    QVERIFY(!action("actionQuerySelectCancel")->isEnabled());
    QCOMPARE(points()->topLevelItemCount(), 0);
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

void WindowTest::listsOfTheOtherTabsAreFilled() {
    open();
    auto* transactions = child<QTreeWidget>("treeTransactions");
    QVERIFY(transactions->topLevelItemCount() > 0);
    const int last = transactions->topLevelItemCount() - 1;
    QVERIFY(transactions->topLevelItem(last)->text(0).endsWith('*'));
    QVERIFY(!transactions->topLevelItem(last)->text(4).startsWith("failed"));
    QVERIFY(child<QLabel>("labelTransactions")->text().startsWith("Transactions: "));

    auto* attributes = child<QTreeWidget>("treePointAttributes");
    const auto primary =
        attributes->findItems("tarvo.xyz[3]*", Qt::MatchExactly | Qt::MatchRecursive);
    QCOMPARE(primary.size(), 1);
    QVERIFY(primary.first()->parent()->isExpanded());
    QVERIFY(child<QLabel>("labelPointAttributes")->text().endsWith("tarvo.xyz"));
    // A collapsed group stays collapsed.
    attributes->collapseItem(primary.first()->parent());
    action("actionReload")->trigger();
    const auto again =
        attributes->findItems("tarvo.xyz[3]*", Qt::MatchExactly | Qt::MatchRecursive);
    QCOMPARE(again.size(), 1);
    QVERIFY(!again.first()->parent()->isExpanded());

    QVERIFY(child<QLabel>("labelMetaData")->text().startsWith("Meta data items: "));
    if (m_database.real) {
        const auto headers =
            child<QTreeWidget>("treeMetaData")->findItems("las.header", Qt::MatchExactly);
        QCOMPARE(headers.size(), 1);
        QCOMPARE(headers.first()->text(1), "JSON");
        // One line, and numbers stay numbers.
        QVERIFY2(headers.first()->text(3).contains("\"file_source_id\":0,"),
                 qUtf8Printable(headers.first()->text(3)));
    }
    QVERIFY(!child<QPlainTextEdit>("editChangelog")->toPlainText().isEmpty());
}

void WindowTest::indexNodesAreShownAndSearched() {
    open();
    showTab("tabPointIndex");
    auto* nodes = child<QTreeWidget>("treePointIndexNodes");
    const auto leaves = nodes->findItems("leaf", Qt::MatchExactly | Qt::MatchRecursive, 1);
    QVERIFY(leaves.size() > 1);
    qint64 sum = 0;
    const QTreeWidgetItem* fullest = leaves.first();
    for (const QTreeWidgetItem* leaf : leaves) {
        sum += QLocale().toLongLong(leaf->text(3));
        if (QLocale().toLongLong(leaf->text(3)) > QLocale().toLongLong(fullest->text(3)))
            fullest = leaf;
    }
    QCOMPARE(sum, m_database.pointCount);
    QVERIFY(child<QLabel>("labelPointIndex")
                ->text()
                .contains(QString("Leaves: %1,").arg(QLocale().toString(leaves.size()))));
    const QString points = fullest->text(3);

    auto* combo = child<QComboBox>("PointIndexFilter");
    const auto filterNodes = [&](const QString& text) {
        combo->setEditText(text);
        QTest::keyClick(combo, Qt::Key_Return);
        return nodes->findItems("leaf", Qt::MatchExactly | Qt::MatchRecursive, 1);
    };
    const auto found = filterNodes("FIND fullest leaf");
    QCOMPARE(found.size(), 1);
    QCOMPARE(found.first()->text(3), points);
    QVERIFY(found.first()->font(5).bold());
    QVERIFY(!nodes->topLevelItem(0)->font(0).bold());

    const QString id = found.first()->text(0);
    QCOMPARE(filterNodes(id).size(), 1);
    QCOMPARE(filterNodes("tarvo.id < 0").size(), 0);
    QVERIFY(child<QLabel>("labelPointIndex")->text().startsWith("Nodes: 0, Leaves: 0"));
    QCOMPARE(filterNodes("").size(), leaves.size());
    // Both filter fields share one history.
    QCOMPARE(child<QComboBox>("PointDataFilter")->itemText(0), "tarvo.id < 0");
}

void WindowTest::doubleClickOnANodeShowsItsPoints() {
    open();
    showTab("tabPointIndex");
    auto* nodes = child<QTreeWidget>("treePointIndexNodes");
    auto* leaf = nodes->findItems("leaf", Qt::MatchExactly | Qt::MatchRecursive, 1).value(0);
    QVERIFY(leaf);
    const QString id = leaf->text(0);
    const int page = qMin(QLocale().toInt(leaf->text(3)), 100);
    nodes->scrollToItem(leaf);
    const QPoint where = nodes->visualItemRect(leaf).center();
    QTest::mouseClick(nodes->viewport(), Qt::LeftButton, {}, where);
    auto* details = child<QTreeWidget>("treePointIndexDetails");
    const auto heights = details->findItems("tarvo.xyz[2]", Qt::MatchExactly);
    QCOMPARE(heights.size(), 1);
    const double lowest = heights.first()->child(0)->text(1).toDouble();
    const double highest = heights.first()->child(1)->text(1).toDouble();
    QVERIFY(lowest < highest);

    // A second time the points come from the first one on again.
    for (int time = 0; time < 2; ++time) {
        showTab("tabPointIndex");
        QTest::mouseDClick(nodes->viewport(), Qt::LeftButton, {}, where);
        QCOMPARE(child<QTabWidget>("tabWidget")->currentWidget()->objectName(), "tabPointData");
        QCOMPARE(fieldText("editPointDataNodes"), id);
        QCOMPARE(points()->topLevelItemCount(), page);
        QCOMPARE(points()->topLevelItem(0)->text(0), "1");
    }
    for (int row = 0; row < page; ++row) {
        const double height =
            points()->topLevelItem(row)->text(columnOf("tarvo.xyz[2]")).toDouble();
        QVERIFY(height >= lowest && height <= highest);
    }
}

void WindowTest::reportIsMadeOnDemand() {
    open();
    auto* view = child<QTextBrowser>("textInspectionResult");
    QCOMPARE(view->toPlainText(), "");
    showTab("tabInspection");
    action("actionInspectionUpdate")->trigger();
    QVERIFY(!view->toPlainText().isEmpty());
    action("actionReload")->trigger();
    QCOMPARE(view->toPlainText(), "");
}

void WindowTest::geometryIsKept() {
    m_window->resize(777, 555);
    m_window->close();
    MainWindow second;
    QCOMPARE(second.size(), QSize(777, 555));
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
