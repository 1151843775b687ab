// What the tabs show of a database, and how one leads to another.

#include "tests/window/databasewindow.h"
#include "tests/window/guitestmain.h"
#include "tests/window/windowdriver.h"
#include "window/panels/panel.h"

#include <QComboBox>
#include <QLabel>
#include <QLocale>
#include <QPlainTextEdit>
#include <QTabWidget>
#include <QTextBrowser>
#include <QTreeWidget>
#include <QtTest>

using namespace tarvo::window;

class ContentsTest : public DatabaseWindowTest {
    Q_OBJECT

private slots:
    void databaseTabShowsTheSummary();
    void listsOfTheOtherTabsAreFilled();
    void indexNodesAreShownAndSearched();
    void doubleClickOnANodeShowsItsPoints();
    void reportIsMadeOnDemand();
};

void ContentsTest::databaseTabShowsTheSummary() {
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

void ContentsTest::listsOfTheOtherTabsAreFilled() {
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

void ContentsTest::indexNodesAreShownAndSearched() {
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

void ContentsTest::doubleClickOnANodeShowsItsPoints() {
    open();
    showTab("tabPointIndex");
    auto* nodes = child<QTreeWidget>("treePointIndexNodes");
    auto* leaf = nodes->findItems("leaf", Qt::MatchExactly | Qt::MatchRecursive, 1).value(0);
    QVERIFY(leaf);
    const QString id = leaf->text(0);
    const int page = qMin(QLocale().toInt(leaf->text(3)), 100);
    clickRow(leaf);
    auto* details = child<QTreeWidget>("treePointIndexDetails");
    const auto heights = details->findItems("tarvo.xyz[2]", Qt::MatchExactly);
    QCOMPARE(heights.size(), 1);
    const double lowest = heights.first()->child(0)->text(1).toDouble();
    const double highest = heights.first()->child(1)->text(1).toDouble();
    QVERIFY(lowest < highest);

    // A second time the points come from the first one on again.
    for (int time = 0; time < 2; ++time) {
        showTab("tabPointIndex");
        doubleClickRow(leaf);
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

void ContentsTest::reportIsMadeOnDemand() {
    open();
    auto* view = child<QTextBrowser>("textInspectionResult");
    QCOMPARE(view->toPlainText(), "");
    showTab("tabInspection");
    action("actionInspectionUpdate")->trigger();
    QVERIFY(!view->toPlainText().isEmpty());
    action("actionReload")->trigger();
    QCOMPARE(view->toPlainText(), "");
}

GUI_TEST_MAIN(ContentsTest)
#include "contentstest.moc"
