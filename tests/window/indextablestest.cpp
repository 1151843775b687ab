// The lists of the index, cell by cell, against what the layer tells about its nodes.

#include "tests/window/guitestmain.h"
#include "tests/window/sampleattributes.h"
#include "tests/window/sampletest.h"
#include "tests/window/treecells.h"

#include <QHeaderView>
#include <QLabel>
#include <QTreeWidget>
#include <QtTest>
#include <algorithm>
#include <functional>
#include <vector>

using namespace tarvo::window;

namespace pointcloud = tarvo::qrb::pointcloud;

namespace {

constexpr auto left = Qt::AlignLeft;
constexpr auto centre = Qt::AlignHCenter;
constexpr auto right = Qt::AlignRight;

struct Level {
    std::int64_t leafPoints = 0;
    std::int64_t nodePoints = 0;
    std::int64_t leaves = 0;
    std::int64_t nodes = 0;
};

void addUp(const pointcloud::IndexNode& node, std::size_t level, std::vector<Level>& levels) {
    levels.resize(std::max(levels.size(), level + 1));
    const bool leaf = node.children.empty();
    (leaf ? levels[level].leafPoints : levels[level].nodePoints) += node.pointCountNode;
    (leaf ? levels[level].leaves : levels[level].nodes) += 1;
    for (const auto& child : node.children)
        addUp(child, level + 1, levels);
}

}  // namespace

class IndexTablesTest : public SampleTest {
    Q_OBJECT

private slots:
    void nodesShowTheIndex();
    void detailsShowTheExtremesOfTheNode();
    void statisticsShowEveryLevel();
};

void IndexTablesTest::nodesShowTheIndex() {
    const SampleWindow window(m_sample->copy());
    window.driver().showTab("tabPointIndex");
    const auto* tree = window.child<QTreeWidget>("treePointIndexNodes");
    QCOMPARE(headersOf(tree),
             QStringList({"Node", "Type", "Level", "Points", "Total", "Revision"}));
    pointcloud::IndexNode root;
    window.database().stat().index(root);
    QVERIFY(root.id != 0);
    int nodes = 0;
    int leaves = 0;
    int depth = 0;
    const std::function<void(const pointcloud::IndexNode&, const QTreeWidgetItem*, int)> compare =
        [&](const pointcloud::IndexNode& node, const QTreeWidgetItem* row, int level) {
            const bool leaf = node.children.empty();
            ++(leaf ? leaves : nodes);
            depth = std::max(depth, level);
            QCOMPARE(textsOf(row),
                     QStringList({QString::number(node.id), leaf ? "leaf" : "node",
                                  QString::number(level), QString::number(node.pointCountNode),
                                  QString::number(node.pointCountTotal),
                                  QString::number(node.revision)}));
            QCOMPARE(row->data(0, Qt::UserRole).toUInt(), node.id);
            QVERIFY(shows(row, 1, leaf ? "tree-leaf" : "tree-node"));
            QVERIFY(!row->font(0).bold());
            QCOMPARE(row->toolTip(0),
                     "click to show node details\ndouble click to load point data");
            compareAlignments(row, {left, centre, right, right, right, right});
            QCOMPARE(row->childCount(), static_cast<int>(node.children.size()));
            for (int i = 0; i < row->childCount(); ++i)
                compare(node.children[static_cast<std::size_t>(i)], row->child(i), level + 1);
        };
    QCOMPARE(tree->topLevelItemCount(), 1);
    compare(root, tree->topLevelItem(0), 0);
    QVERIFY(leaves > 10 && depth > 0);
    QCOMPARE(window.child<QLabel>("labelPointIndex")->text(),
             QString("Nodes: %0, Leaves: %1, Total: %2, Depth: %3")
                 .arg(nodes)
                 .arg(leaves)
                 .arg(nodes + leaves)
                 .arg(depth));

    const auto expanded = [&] {
        int count = 0;
        for (QTreeWidgetItemIterator it(const_cast<QTreeWidget*>(tree)); *it; ++it)
            count += (*it)->isExpanded();
        return count;
    };
    QVERIFY(nodes + leaves <= 100);
    QVERIFY(expanded() >= nodes);  // so few at once
    window.run("actionPointIndexNodeCollapse", {});
    QCOMPARE(expanded(), 0);
    window.run("actionPointIndexNodeExpand", {});
    QVERIFY(expanded() >= nodes);
}

void IndexTablesTest::detailsShowTheExtremesOfTheNode() {
    const SampleWindow window(m_sample->copy());
    {
        // The unknown value lies above the range here.
        pointcloud::PointAttribute far;
        far.name = "own.far";
        far.length = 1;
        far.maximumValue = 10;
        far.resolution = 1;
        far.storageClass = 2;
        far.invalidValue = 100;
        far.defaultValue = 100;
        pointcloud::TransactionGuard guard(window.database().transactions(), "Far", "tests");
        window.database().pointAttributes().add(far);
        const double known = 5;
        auto fill = window.database().fill("tarvo.id % 2 == 0");
        fill.bind(far.name, pointcloud::DataType::DOUBLE, &known);
        while (fill.next(1000) > 0) {
        }
        fill.close();
        guard.commit();
    }
    window.run("actionReload", {});
    window.driver().showTab("tabPointIndex");
    const auto* tree = window.child<QTreeWidget>("treePointIndexDetails");
    const auto stat = window.database().stat();
    const auto attributes = attributesOf(window.database());
    auto* nodes = window.child<QTreeWidget>("treePointIndexNodes");
    const auto* leaf = nodes->findItems("leaf", Qt::MatchExactly | Qt::MatchRecursive, 1).value(3);
    QVERIFY(leaf);
    const std::uint32_t node = leaf->text(0).toUInt();
    QVERIFY(window.driver().select("treePointIndexNodes", leaf->text(0)));
    for (const bool cleaned : {false, true}) {
        QCOMPARE(headersOf(tree),
                 QStringList({"Attribute", cleaned ? "Value (cleaned)" : "Value (full)"}));
        QCOMPARE(tree->headerItem()->toolTip(1),
                 "Click here to toggle between \"full\" and \"cleaned\"");
        int next = 0;
        for (const auto& attribute : attributes) {
            const QStringList names = elementsOf(attribute, 1000);
            std::vector<double> least(attribute.length);
            std::vector<double> most(attribute.length);
            bool known = true;
            try {
                stat.minimum(node, attribute.name, pointcloud::DataType::DOUBLE, least.data(),
                             cleaned);
                stat.maximum(node, attribute.name, pointcloud::DataType::DOUBLE, most.data(),
                             cleaned);
            } catch (const std::exception&) {
                known = false;  // no value that is valid
            }
            for (std::size_t i = 0; i < attribute.length; ++i) {
                const QTreeWidgetItem* row = tree->topLevelItem(next++);
                QVERIFY(row);
                QCOMPARE(textsOf(row),
                         QStringList(
                             {names[static_cast<qsizetype>(i)],
                              QString("(revision %0)").arg(stat.revision(node, attribute.name))}));
                const auto value = [&](double number) {
                    return known ? QString::number(number, 'f', decimalsOf(attribute.name))
                                 : QString("-");
                };
                QCOMPARE(row->childCount(), 3);
                QCOMPARE(textsOf(row->child(0)), QStringList({"Minimum:", value(least[i])}));
                QCOMPARE(textsOf(row->child(1)), QStringList({"Maximum:", value(most[i])}));
                QCOMPARE(textsOf(row->child(2)),
                         QStringList({"Max-Min:", value(most[i] - least[i])}));
            }
        }
        QCOMPARE(tree->topLevelItemCount(), next);
        const auto* header = tree->header();
        QTest::mouseClick(header->viewport(), Qt::LeftButton, {},
                          QPoint(header->sectionViewportPosition(1) + 12, header->height() / 2));
    }
    QCOMPARE(tree->headerItem()->text(1), "Value (full)");
}

void IndexTablesTest::statisticsShowEveryLevel() {
    const SampleWindow window(m_sample->copy());
    pointcloud::IndexNode root;
    window.database().stat().index(root);
    std::vector<Level> levels;
    addUp(root, 0, levels);
    Level total;
    for (const Level& level : levels) {
        total.leafPoints += level.leafPoints;
        total.nodePoints += level.nodePoints;
        total.leaves += level.leaves;
        total.nodes += level.nodes;
    }
    window.run(
        "actionPointIndexStats", {[&](QDialog* dialog) {
            const auto* tree = in<QTreeWidget>(dialog, "treeStatistics");
            QCOMPARE(headersOf(tree), QStringList({"Level", "Leaf Points", "Node Points",
                                                   "Leaf Count", "Node Count"}));
            QCOMPARE(tree->topLevelItemCount(), static_cast<int>(levels.size()) + 1);
            for (int i = 0; i < tree->topLevelItemCount(); ++i) {
                const bool last = i == static_cast<int>(levels.size());
                const Level& level = last ? total : levels[static_cast<std::size_t>(i)];
                const QTreeWidgetItem* row = tree->topLevelItem(i);
                QCOMPARE(textsOf(row),
                         QStringList(
                             {last ? QString("Total") : QString::number(i),
                              QString::number(level.leafPoints), QString::number(level.nodePoints),
                              QString::number(level.leaves), QString::number(level.nodes)}));
                for (int column = 0; column < 5; ++column) {
                    QCOMPARE(row->font(column).bold(), last);
                    QCOMPARE(row->background(column).style() != Qt::NoBrush &&
                                 row->background(column).color() == QColor("#daf7a6"),
                             last);
                }
            }
            dialog->reject();
        }});
}

GUI_TEST_MAIN(IndexTablesTest)
#include "indextablestest.moc"
