// How many points the table shows, of how many, and what is copied of them.

#include "tests/window/guitestmain.h"
#include "tests/window/samplewindowtest.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QStatusBar>
#include <QTreeWidget>
#include <QtTest>

using namespace tarvo::window;

class PointRowsTest : public SampleWindowTest {
    Q_OBJECT

public:
    PointRowsTest() : SampleWindowTest("tabPointData") {}

private slots:
    void counterTellsWhatIsShownOfHowMany();
    void allRowsThatAreLeftAreRead();
    void stoppedAndFailedQueriesPromiseNoMore();
    void selectedRowsAreCopiedAsTextAndAsAFilter();
    void nodesWithoutPointsShowWhatLiesBelow();

private:
    void run(const char* action, std::vector<ModalScript::Step> steps = {}) {
        m_window->run(action, std::move(steps));
    }
    void setFilter(const QString& filter) {
        m_window->child<QComboBox>("PointDataFilter")->lineEdit()->setText(filter);
    }
    QString counter() { return m_window->child<QLabel>("labelPointRows")->text(); }
    QTreeWidget* table() { return m_window->child<QTreeWidget>("treePointData"); }
};

void PointRowsTest::counterTellsWhatIsShownOfHowMany() {
    const QString more = " (more with F3, 1,000 more with Shift+F3, all with Ctrl+F3)";
    QCOMPARE(counter(), "");
    run("actionQuerySelectNext");
    QCOMPARE(counter(), QString::fromUtf8("1–100 of 600") + more);
    m_window->press(QKeySequence("Shift+F3"));
    QTRY_COMPARE(counter(), QString::fromUtf8("1–600 of 600"));
    QCOMPARE(table()->topLevelItem(599)->text(0), "600");

    setFilter("tarvo.id <= 150");
    QCOMPARE(counter(), QString::fromUtf8("1–600 of 600"));  // of the rows that are still there
    run("actionQuerySelectNext");
    QCOMPARE(counter(), QString::fromUtf8("1–100") + more);
    run("actionQuerySelectCount", {ModalScript::press("OK")});
    QCOMPARE(counter(), QString::fromUtf8("1–100 of 150") + more);
    QCOMPARE(m_window->child<QLabel>("labelPointRows")->toolTip(),
             "Nodes of the index so far: 0 skipped, 0 taken whole, 14 read point by point");
    run("actionQuerySelectNext");
    QCOMPARE(counter(), QString::fromUtf8("1–150 of 150"));
    // Another query begins at its first row.
    table()->scrollToBottom();
    setFilter("tarvo.id <= 300");
    run("actionQuerySelectNext");
    QCOMPARE(table()->itemAt(5, 5), table()->topLevelItem(0));
    setFilter("tarvo.id <= 150");
    run("actionQuerySelectNext");
    run("actionQuerySelectNext");
    // What comes is what one sees.
    QVERIFY(table()->visualItemRect(table()->topLevelItem(100)).top() < 40);
}

void PointRowsTest::allRowsThatAreLeftAreRead() {
    m_window->press(QKeySequence("Ctrl+F3"));
    QTRY_COMPARE(counter(), QString::fromUtf8("1–600 of 600"));
    m_window->press(QKeySequence("Ctrl+F3"));
    QCOMPARE(m_window->child<QStatusBar>("statusBar")->currentMessage(), "All points are shown.");
    // A query that runs goes on, in the order that was clicked.
    setFilter("tarvo.id <= 250");
    run("actionQuerySelectNext");
    table()->sortByColumn(0, Qt::DescendingOrder);
    run("actionQuerySelectAll");
    QCOMPARE(counter(), QString::fromUtf8("1–250 of 250"));
    QCOMPARE(table()->topLevelItem(0)->text(0), "250");
    QCOMPARE(table()->topLevelItem(249)->text(0), "1");
    setFilter("tarvo.id <");
    run("actionQuerySelectAll", {ModalScript::press("OK")});
    QCOMPARE(table()->topLevelItemCount(), 250);
    setFilter("tarvo.id < 0");
    run("actionQuerySelectAll", {ModalScript::press("OK")});
}

void PointRowsTest::stoppedAndFailedQueriesPromiseNoMore() {
    run("actionQuerySelectNext");
    setFilter("tarvo.id >");
    run("actionQuerySelectNext", {ModalScript::press("OK")});
    QCOMPARE(counter(), QString::fromUtf8("1–100 of 600"));
    QCOMPARE(table()->topLevelItemCount(), 100);
    m_window->window().openDatabase(m_sample->copy("other.qrbx"), true);
    QCOMPARE(counter(), "");
    QCOMPARE(m_window->child<QLabel>("labelPointRows")->toolTip(), "");
}

void PointRowsTest::selectedRowsAreCopiedAsTextAndAsAFilter() {
    setFilter("tarvo.id >= 11 && tarvo.id <= 40");
    run("actionQuerySelectNext");
    const auto rowOf = [&](int id) {
        int column = 1;
        while (table()->headerItem()->text(column) != "tarvo.id")
            ++column;
        return table()->findItems(QString::number(id), Qt::MatchExactly, column).value(0);
    };
    clickRow(rowOf(20));
    for (const int id : {12, 21, 22})
        clickRow(rowOf(id), Qt::ControlModifier);
    QTest::keyClick(table(), Qt::Key_C, Qt::ControlModifier);
    const QStringList lines = QApplication::clipboard()->text().split('\n', Qt::SkipEmptyParts);
    QCOMPARE(lines.size(), 5);
    QVERIFY(lines[0].split('\t').contains("tarvo.id"));
    for (const QString& line : lines)
        QCOMPARE(line.split('\t').size(), lines[0].split('\t').size());
    QVERIFY(m_window->child<QStatusBar>("statusBar")->currentMessage().contains("4 points"));

    run("actionQuerySelectCopyCsv");
    QVERIFY(QApplication::clipboard()->text().startsWith(lines[0].split('\t').join(',')));
    run("actionQuerySelectCopyFilter");
    setFilter(QApplication::clipboard()->text());
    QCOMPARE(QApplication::clipboard()->text(),
             "tarvo.id == 12 || (tarvo.id >= 20 && tarvo.id <= 22)");
    run("actionQuerySelectNext");
    QCOMPARE(counter(), QString::fromUtf8("1–4 of 4"));
}

void PointRowsTest::nodesWithoutPointsShowWhatLiesBelow() {
    m_window->driver().showTab("tabPointIndex");
    auto* nodes = m_window->child<QTreeWidget>("treePointIndexNodes");
    QTreeWidgetItem* inner = nodes->topLevelItem(0);
    while (inner && (inner->text(3) != "0" || inner == nodes->topLevelItem(0)))
        inner = nodes->itemBelow(inner);
    QVERIFY(inner);
    const QString total = inner->text(4);
    doubleClickRow(inner);
    QTRY_VERIFY(m_window->child<QLineEdit>("editPointDataNodes")->text().contains(','));
    m_window->press(QKeySequence("Shift+F3"));
    QTRY_COMPARE(counter(), QString::fromUtf8("1–%1 of %1").arg(total));
}

GUI_TEST_MAIN(PointRowsTest)
#include "pointrowstest.moc"
