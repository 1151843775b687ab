// Points of a database, asked for and shown page by page, driven with mouse and keys.

#include "tests/window/databasewindow.h"
#include "tests/window/guitestmain.h"

#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QDialog>
#include <QFile>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QLocale>
#include <QRegularExpression>
#include <QtTest>
#include <memory>

using namespace tarvo::window;

class PointQueryTest : public DatabaseWindowTest {
    Q_OBJECT

private slots:
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
};

void PointQueryTest::pagesAreAppendedUntilNothingIsLeft() {
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

void PointQueryTest::editingTheFilterStartsAfresh() {
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

void PointQueryTest::wrongFilterShowsTheLibrarysMessage() {
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

void PointQueryTest::wrongNodeListStartsNoQuery() {
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

void PointQueryTest::nodeListNarrowsTheSelection() {
    open();
    showTab("tabPointData");
    // An empty list, given as such, selects nothing.
    QTest::keyClicks(child<QLineEdit>("editPointDataNodes"), "3-1");
    ModalAnswer answer;
    pressKey(Qt::Key_F4);
    QVERIFY(answer.came());
    QCOMPARE(answer.text(), "No points match the current filter expression.");
}

void PointQueryTest::countMatchesTheCloud() {
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

void PointQueryTest::doubleClickCopiesTheCell() {
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

void PointQueryTest::hiddenColumnsStayHiddenInTheNextDatabase() {
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

void PointQueryTest::columnsFollowTheChoosersOrder() {
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

void PointQueryTest::exportWritesEveryPointThatMatches() {
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

void PointQueryTest::reloadRunsTheSelectionAgain() {
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

GUI_TEST_MAIN(PointQueryTest)
#include "pointquerytest.moc"
