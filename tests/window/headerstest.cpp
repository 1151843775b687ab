// What the user does to the headers of the lists is there again at the next start.

#include "qrb/loader.h"
#include "tests/window/guitestmain.h"
#include "tests/window/samplewindow.h"

#include <QHeaderView>
#include <QTreeWidget>
#include <QtTest>
#include <memory>

using namespace tarvo::window;

namespace {

QStringList orderOf(const QTreeWidget* tree) {
    QStringList names;
    for (int place = 0; place < tree->columnCount(); ++place)
        names += tree->headerItem()->text(tree->header()->logicalIndex(place));
    return names;
}

int middleOf(const QTreeWidget* tree, int column) {
    return tree->header()->sectionViewportPosition(column) +
           tree->header()->sectionSize(column) / 2;
}

}  // namespace

class HeadersTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase() { tarvo::qrb::freeLibrary(); }

    void listIsAsItWasAtTheNextStart_data();
    void listIsAsItWasAtTheNextStart();
    void firstClickSortsUpwards();

private:
    std::unique_ptr<SampleDatabase> m_sample;
};

void HeadersTest::initTestCase() {
    tarvo::qrb::loadLibrary("");
    m_sample = std::make_unique<SampleDatabase>();
    QVERIFY2(m_sample->error().isEmpty(), qUtf8Printable(m_sample->error()));
}

void HeadersTest::listIsAsItWasAtTheNextStart_data() {
    QTest::addColumn<QByteArray>("tab");
    QTest::addColumn<QByteArray>("list");
    QTest::addColumn<int>("clicked");
    QTest::newRow("transactions") << QByteArray("tabTransactions") << QByteArray("treeTransactions")
                                  << 2;
    QTest::newRow("metadata") << QByteArray("tabMetaData") << QByteArray("treeMetaData") << 2;
    QTest::newRow("attributes") << QByteArray("tabPointAttributes")
                                << QByteArray("treePointAttributes") << 2;
}

void HeadersTest::listIsAsItWasAtTheNextStart() {
    QFETCH(QByteArray, tab);
    QFETCH(QByteArray, list);
    QFETCH(int, clicked);
    const SampleWindow window(m_sample->copy());
    window.window().resize(1400, 800);
    window.driver().showTab(tab);
    auto* tree = window.child<QTreeWidget>(list);
    auto* header = tree->header();
    const int edge = header->sectionViewportPosition(1) + header->sectionSize(1) - 1;
    dragInHeader(header, edge, header->sectionViewportPosition(1) + 157);
    const int width = header->sectionSize(1);
    const QStringList untouched = orderOf(tree);
    // The first column stays where it is.
    dragInHeader(header, middleOf(tree, clicked), header->sectionViewportPosition(1) + 8);
    const QStringList order = orderOf(tree);
    QCOMPARE(order[1], untouched[clicked]);
    // Twice: in the other direction, which no list has by itself.
    for (int click = 0; click < 2; ++click)
        QTest::mouseClick(header->viewport(), Qt::LeftButton, {},
                          {middleOf(tree, clicked), header->height() / 2});
    const Qt::SortOrder sorted = header->sortIndicatorOrder();
    const auto rows = [](const QTreeWidget* of) {
        QStringList names;
        for (QTreeWidgetItemIterator row(const_cast<QTreeWidget*>(of)); *row; ++row)
            names += (*row)->text(0);
        return names;
    };
    const QStringList shown = rows(tree);
    // Not undone by what is read anew.
    window.run("actionReload", {});
    QCOMPARE(orderOf(tree), order);
    QCOMPARE(header->sectionSize(1), width);

    MainWindow later;
    later.resize(1400, 800);
    later.show();
    later.openDatabase(m_sample->copy("later.qrbx"), true);
    const auto* again = in<QTreeWidget>(&later, list);
    QCOMPARE(orderOf(again), order);
    QCOMPARE(again->header()->sectionSize(1), width);
    QCOMPARE(again->header()->sortIndicatorSection(), clicked);
    QCOMPARE(again->header()->sortIndicatorOrder(), sorted);
    QCOMPARE(rows(again), shown);
    later.close();
}

void HeadersTest::firstClickSortsUpwards() {
    const SampleWindow window(m_sample->copy());
    window.driver().showTab("tabPointAttributes");
    const auto* tree = window.child<QTreeWidget>("treePointAttributes");
    auto* header = tree->header();
    QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, {20, header->height() / 2});
    QCOMPARE(header->sortIndicatorSection(), 0);
    QCOMPARE(header->sortIndicatorOrder(), Qt::AscendingOrder);
    int compared = 0;
    for (int i = 0; i < tree->topLevelItemCount(); ++i)
        for (int k = 1; k < tree->topLevelItem(i)->childCount(); ++k, ++compared) {
            const QString before = tree->topLevelItem(i)->child(k - 1)->text(0);
            const QString after = tree->topLevelItem(i)->child(k)->text(0);
            QVERIFY2(before < after, qUtf8Printable(before + ' ' + after));
        }
    QVERIFY(compared > 1);
}

GUI_TEST_MAIN(HeadersTest)
#include "headerstest.moc"
