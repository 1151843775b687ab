// The list of points, cell by cell, against what the layer reads, and the widths of its columns.

#include "tests/window/guitestmain.h"
#include "tests/window/sampleattributes.h"
#include "tests/window/sampletest.h"
#include "tests/window/treecells.h"

#include <QHeaderView>
#include <QLabel>
#include <QListWidget>
#include <QProgressBar>
#include <QTreeWidget>
#include <QtTest>
#include <algorithm>
#include <vector>

using namespace tarvo::window;

namespace pointcloud = tarvo::qrb::pointcloud;

namespace {

constexpr auto centre = Qt::AlignHCenter;

QString text(const std::string& utf8) {
    return QString::fromStdString(utf8);
}

}  // namespace

class PointListTest : public SampleTest {
    Q_OBJECT

private slots:
    void pointsShowTheirValues();
    void columnsFitTheirValuesPageByPage();
    void chooserListsTheAttributes();
};

void PointListTest::pointsShowTheirValues() {
    constexpr int page = 100;
    const SampleWindow window(m_sample->copy());
    window.driver().showTab("tabPointData");
    const auto* tree = window.child<QTreeWidget>("treePointData");
    QCOMPARE(headersOf(tree), QStringList("#"));
    struct Column {
        QString name;
        int decimals;
        std::vector<double> values;
    };
    std::vector<Column> columns;
    for (const auto& attribute : attributesOf(window.database()))
        for (const QString& element : elementsOf(attribute, 10))
            columns.push_back({element, decimalsOf(attribute.name), std::vector<double>(page)});
    auto query = window.database().select();
    QStringList headers = {"#"};
    for (Column& column : columns) {
        headers += column.name;
        query.bind(column.name.toStdString(), pointcloud::DataType::DOUBLE, column.values.data(),
                   sizeof(double));
    }
    int shown = 0;
    while (const auto count = static_cast<int>(query.next(page))) {
        window.run("actionQuerySelectNext", {});
        QCOMPARE(tree->topLevelItemCount(), shown + count);
        QCOMPARE(headersOf(tree), headers);
        QCOMPARE(window.child<QProgressBar>("progressPointData")->value(),
                 static_cast<int>(query.progress()));
        QVERIFY(QRegularExpression(R"(\A\d+ ms\z)")
                    .match(window.child<QLabel>("labelPointData")->text())
                    .hasMatch());
        for (int i = 0; i < count; ++i) {
            const QTreeWidgetItem* row = tree->topLevelItem(shown + i);
            QCOMPARE(row->text(0), QString::number(shown + i + 1));
            QCOMPARE(alignmentOf(row, 0), Qt::Alignment(centre));
            for (int c = 1; c < headers.size(); ++c) {
                const Column& column = columns[static_cast<std::size_t>(c) - 1];
                const QString value = QString::number(column.values[static_cast<std::size_t>(i)],
                                                      'f', column.decimals);
                const QString cell = column.name + " = " + value;
                QCOMPARE(row->text(c), value);
                QCOMPARE(row->data(c, Qt::UserRole).toString(), cell);
                QCOMPARE(row->toolTip(c), cell + "\ndouble click to copy to clipboard");
            }
        }
        shown += count;
    }
    QCOMPARE(shown, SampleDatabase::points);
}

void PointListTest::columnsFitTheirValuesPageByPage() {
    const SampleWindow window(m_sample->copy());
    std::vector<std::uint64_t> ids(SampleDatabase::points);
    {
        auto query = window.database().select();
        query.bind("tarvo.id", pointcloud::DataType::UINT64, ids.data(), sizeof(std::uint64_t));
        QCOMPARE(query.next(SampleDatabase::points), std::uint32_t{SampleDatabase::points});
        pointcloud::PointAttribute grows;
        grows.name = "own.g";
        grows.length = 2;
        grows.minimumValue = -1e15;
        grows.maximumValue = 1e15;
        grows.resolution = 1;
        grows.storageClass = 2;
        pointcloud::TransactionGuard guard(window.database().transactions(), "Grow", "tests");
        window.database().pointAttributes().add(grows);
        // Page 1 shows zeros alone, page 2 one wide value, page 3 a wider one.
        for (const auto& [row, value] : {std::pair(150u, 1e12), std::pair(250u, -1e15)}) {
            auto fill = window.database().fill("tarvo.id == " + std::to_string(ids[row]));
            fill.bind("own.g[0]", pointcloud::DataType::DOUBLE, &value);
            while (fill.next(1000) > 0) {
            }
        }
        guard.commit();
    }
    window.run("actionReload", {});
    window.driver().showTab("tabPointData");
    auto* tree = window.child<QTreeWidget>("treePointData");
    const auto column = [tree](const QString& element) {
        return static_cast<int>(headersOf(tree).indexOf(element));
    };
    const auto contents = [tree](int c) {
        int width = tree->header()->sectionSizeHint(c);
        for (int row = 0; row < tree->topLevelItemCount(); ++row)
            width = std::max(
                width,
                tree->sizeHintForIndex(tree->indexFromItem(tree->topLevelItem(row), c)).width());
        return width;
    };
    // The last column also has the rest of the view.
    const auto compareAll = [&] {
        for (int c = 0; c < tree->columnCount(); ++c) {
            if (tree->header()->visualIndex(c) == tree->columnCount() - 1)
                QVERIFY(tree->columnWidth(c) >= contents(c));
            else
                QCOMPARE(tree->columnWidth(c), contents(c));
        }
    };
    const auto next = [&] { window.run("actionQuerySelectNext", {}); };
    next();
    const int grows = column("own.g[0]");
    const int zero = column("own.g[1]");
    const int id = column("tarvo.id");
    QVERIFY(grows > 0 && zero > 0 && id > 0);
    compareAll();

    // The user's widths stay where no value asks for more.
    tree->setColumnWidth(id, 321);
    tree->setColumnWidth(zero, 40);
    int before = tree->columnWidth(grows);
    for (int page = 2; page <= 3; ++page) {
        next();
        QVERIFY(tree->columnWidth(grows) > before);
        before = tree->columnWidth(grows);
        QCOMPARE(before, contents(grows));
    }
    QCOMPARE(tree->columnWidth(id), 321);
    QCOMPARE(tree->columnWidth(zero), 40);

    QFont large = tree->font();
    large.setPointSize(2 * large.pointSize());
    tree->setFont(large);
    next();
    compareAll();

    // Hidden columns are measured, too, and a query that begins anew forgets what was shown.
    tree->setColumnWidth(id, 321);
    window.run("actionColumnsHideAll", {});
    QTRY_VERIFY(tree->isColumnHidden(grows));
    window.run("actionQuerySelectCancel", {});
    for (int page = 1; page <= 2; ++page)
        next();
    window.run("actionColumnsShowAll", {});
    QTRY_VERIFY(!tree->isColumnHidden(grows));
    compareAll();
}

void PointListTest::chooserListsTheAttributes() {
    const SampleWindow window(m_sample->copy());
    window.driver().showTab("tabPointData");
    const auto* chooser = window.child<QListWidget>("listPointAttributes");
    QStringList expected;
    for (const auto& attribute : attributesOf(window.database()))
        expected += text(attribute.name);
    const auto names = [&](bool shownOnly) {
        QStringList result;
        for (int i = 0; i < chooser->count(); ++i)
            if (!shownOnly || chooser->item(i)->checkState() == Qt::Checked)
                result += chooser->item(i)->text();
        return result;
    };
    QCOMPARE(names(false), expected);
    QCOMPARE(names(true), expected);
    window.run("actionColumnsHideAll", {});
    QCOMPARE(names(true), QStringList());
    window.run("actionColumnsShowDefault", {});
    QVERIFY(names(true).contains("tarvo.id") && names(true).contains("tarvo.xyz") &&
            names(true).contains("tarvo.timestamp") && !names(true).contains("own.vector"));
    window.run("actionColumnsShowAll", {});
    QCOMPARE(names(true), expected);
    window.run("actionColumnsSortByName", {});
    QStringList sorted = expected;
    sorted.sort();
    QCOMPARE(names(false), sorted);
    // Hiding and showing is for the selected ones only.
    window.child<QListWidget>("listPointAttributes")->item(1)->setSelected(true);
    window.run("actionColumnsHide", {});
    QCOMPARE(names(true).size(), expected.size() - 1);
    QVERIFY(!names(true).contains(sorted[1]));
    window.run("actionColumnsShow", {});
    QCOMPARE(names(true), sorted);
    window.run("actionColumnsSortDefault", {});
    QCOMPARE(names(false), expected);
}

GUI_TEST_MAIN(PointListTest)
#include "pointlisttest.moc"
