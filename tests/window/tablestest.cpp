// Every list of the window, cell by cell, against what the layer tells about the database.

#include "qrb/loader.h"
#include "tests/window/guitestmain.h"
#include "tests/window/samplewindow.h"
#include "window/panels/databasesummary.h"

#include <QAction>
#include <QComboBox>
#include <QDateTime>
#include <QFileInfo>
#include <QHeaderView>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QLocale>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QTextBrowser>
#include <QTextDocument>
#include <QTreeWidget>
#include <QtTest>
#include <algorithm>
#include <map>
#include <memory>
#include <vector>

using namespace tarvo::window;

namespace pointcloud = tarvo::qrb::pointcloud;

namespace {

constexpr auto left = Qt::AlignLeft;
constexpr auto centre = Qt::AlignHCenter;
constexpr auto right = Qt::AlignRight;

QStringList textsOf(const QTreeWidgetItem* row) {
    QStringList texts;
    for (int column = 0; column < row->columnCount(); ++column)
        texts += row->text(column);
    return texts;
}

QStringList headersOf(const QTreeWidget* tree) {
    QStringList texts;
    for (int column = 0; column < tree->columnCount(); ++column)
        texts += tree->headerItem()->text(column);
    return texts;
}

// Horizontally; what is not set is left.
Qt::Alignment alignmentOf(const QTreeWidgetItem* row, int column) {
    const auto set = Qt::Alignment(row->textAlignment(column)) & Qt::AlignHorizontal_Mask;
    return set == 0 ? Qt::Alignment(Qt::AlignLeft) : set;
}

void compareAlignments(const QTreeWidgetItem* row, const QList<Qt::Alignment>& expected) {
    for (int column = 0; column < expected.size(); ++column)
        QVERIFY2(alignmentOf(row, column) == expected[column],
                 qPrintable(QString("column %0 of %1").arg(column).arg(row->text(0))));
}

bool shows(const QTreeWidgetItem* row, int column, const char* icon) {
    const QIcon expected(QString(":/resources/gui/%0.png").arg(icon));
    return row->icon(column).pixmap(32).toImage() == expected.pixmap(32).toImage();
}

QString text(const std::string& utf8) {
    return QString::fromStdString(utf8);
}

// Of the attributes of the sample; those of 1 are left out.
int decimalsOf(const std::string& name) {
    static const std::map<std::string, int> decimals = {
        {"tarvo.xyz", 5}, {"tarvo.reflectance", 2}, {"tarvo.timestamp", 8}, {"own.vector", 2}};
    const auto found = decimals.find(name);
    return found == decimals.end() ? 0 : found->second;
}

// The elements that lists show, at most so many.
QStringList elementsOf(const pointcloud::PointAttribute& attribute, std::uint32_t most) {
    if (attribute.length == 1)
        return {text(attribute.name)};
    QStringList names;
    for (std::uint32_t i = 0; i < std::min(attribute.length, most); ++i)
        names += QString("%0[%1]").arg(text(attribute.name)).arg(i);
    return names;
}

std::vector<pointcloud::PointAttribute> attributesOf(const tarvo::qrb::Pointcloud& database) {
    std::vector<pointcloud::PointAttribute> result;
    for (const std::string& name : database.pointAttributes().list())
        result.push_back(database.pointAttributes().get(name));
    return result;
}

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

class TablesTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase() { tarvo::qrb::freeLibrary(); }

    void databaseTabTellsWhatTheFileIs();
    void transactionsShowTheirDetails();
    void numbersOfTransactionsSortAsNumbers();
    void metaDataShowsItsItems();
    void attributesShowTheirDefinitions();
    void nodesShowTheIndex();
    void detailsShowTheExtremesOfTheNode();
    void statisticsShowEveryLevel();
    void pointsShowTheirValues();
    void columnsFitTheirValuesPageByPage();
    void chooserListsTheAttributes();
    void reportsAreThoseOfTheLibrary();

private:
    std::unique_ptr<SampleDatabase> m_sample;
};

void TablesTest::initTestCase() {
    tarvo::qrb::loadLibrary("");
    m_sample = std::make_unique<SampleDatabase>();
    QVERIFY2(m_sample->error().isEmpty(), qUtf8Printable(m_sample->error()));
}

void TablesTest::databaseTabTellsWhatTheFileIs() {
    const SampleWindow window(m_sample->copy());
    const auto& database = window.database();
    const auto field = [&](const char* name) {
        const auto* edit = window.child<QLineEdit>(name);
        return edit->isReadOnly() ? edit->text() : QString("can be edited");
    };
    const QString fileName = m_sample->path("work.qrbx");
    const qint64 bytes = QFileInfo(fileName).size();
    QCOMPARE(field("editDatabaseUUID"), text(database.getUuid()));
    QVERIFY2(field("editDatabaseSize").endsWith(QString("(%0 B)").arg(QLocale().toString(bytes))),
             qUtf8Printable(field("editDatabaseSize")));
    QVERIFY(field("editDatabaseSize")
                .startsWith(
                    bytes < 1024 * 1024
                        ? QString::number(static_cast<double>(bytes) / 1024, 'f', 2) + " KB ("
                        : QString::number(static_cast<double>(bytes) / 1048576, 'f', 2) + " MB ("));
    QCOMPARE(field("editPointsTotal"), "600");
    QCOMPARE(field("editChunkSize"), "mode: point count, size: up to 40 points per chunk");
    QCOMPARE(field("editCompressionLevel"), "30 %");
    QCOMPARE(field("editDatabaseCreator"), text(database.transactions().details(1).agent));
    QCOMPARE(field("editPrimaryAttribute"), "tarvo.xyz");
    QCOMPARE(field("editDatabaseFile"), QDir::toNativeSeparators(fileName));
    {
        const pointcloud::TransactionGuard transaction(database.transactions(), "T", "test");
        database.metaData().set("tarvo.geo_tag", R"({"crs":{"epsg":4326,"name":"WGS 84"}})");
        QCOMPARE(DatabaseSummary::of(database).referenceSystem, "WGS 84 (EPSG:4326)");
    }
    QCOMPARE(field("editLevelOfDetail"), "disabled");
    const tarvo::qrb::Context& context = window.window().session().context;
    // The file, and the version with its hash.
    const QString file = QDir::toNativeSeparators(text(context.libraryFilename()));
    const QString library = field("editCurrentLibrary");
    QVERIFY2(library.startsWith(file + " (") && library.endsWith(')'), qUtf8Printable(library));
    const QString version = library.mid(file.size() + 2).chopped(1);
    QVERIFY2(QRegularExpression(R"(\A\d+\.\d+\.\d+-[0-9a-fA-F]+\z)").match(version).hasMatch() &&
                 text(context.libraryVersion()).contains(version),
             qUtf8Printable(version));
}

void TablesTest::transactionsShowTheirDetails() {
    const SampleWindow window(m_sample->copy());
    const auto& transactions = window.database().transactions();
    const auto* tree = window.child<QTreeWidget>("treeTransactions");
    QCOMPARE(headersOf(tree),
             QStringList({"ID", "Title", "Agent", "QRB", "Duration", "Start", "Stop"}));
    QVERIFY(!tree->rootIsDecorated() && tree->alternatingRowColors() && tree->isSortingEnabled());
    QCOMPARE(tree->selectionMode(), QAbstractItemView::ExtendedSelection);
    const auto ids = transactions.list();
    QCOMPARE(tree->topLevelItemCount(), static_cast<int>(ids.size()));
    for (int i = 0; i < tree->topLevelItemCount(); ++i) {
        const auto details = transactions.details(ids[static_cast<std::size_t>(i)]);
        const QTreeWidgetItem* row = tree->topLevelItem(i);
        const QString version = QRegularExpression(R"(QRB Library (\d+\.\d+\.\d+-[0-9a-fA-F]+))")
                                    .match(text(details.qrb))
                                    .captured(1);
        QVERIFY(!version.isEmpty());
        QCOMPARE(
            textsOf(row).mid(0, 4),
            QStringList(
                {QString::number(details.id) + (details.id == transactions.current() ? "*" : ""),
                 text(details.title).left(100), text(details.agent).left(100), version}));
        QCOMPARE(textsOf(row).mid(5), QStringList({text(details.start), text(details.stop)}));
        QCOMPARE(row->data(0, Qt::UserRole).toUInt(), details.id);
        compareAlignments(row, {left, left, left, left, right, left, left});
        const auto time = [](const std::string& iso) {
            return QDateTime::fromString(text(iso), Qt::ISODateWithMs);
        };
        const qint64 duration = time(details.start).msecsTo(time(details.stop));
        const QStringList parts = row->text(4).split(':');
        QCOMPARE(parts.size(), 3);
        QCOMPARE(
            qRound64((parts[0].toDouble() * 3600 + parts[1].toDouble() * 60 + parts[2].toDouble()) *
                     1000),
            duration);
        QCOMPARE(row->toolTip(4), QString("%0 s").arg(static_cast<double>(duration) / 1000.0));
    }
    QCOMPARE(tree->topLevelItem(1)->text(1).size(), 100);
    QCOMPARE(window.child<QLabel>("labelTransactions")->text(),
             "Transactions: 3, Current transaction: 3");
    QVERIFY(window.child<QLabel>("labelTransactions")
                ->toolTip()
                .contains("tarvo::qrb::pointcloud::Transactions::list()<br />"
                          "tarvo::qrb::pointcloud::Transactions::current()"));
}

void TablesTest::numbersOfTransactionsSortAsNumbers() {
    const SampleWindow window(m_sample->copy());
    for (int i = 0; i < 8; ++i) {
        window.database().transactions().begin("more", "tests");
        window.database().transactions().commit();
    }
    window.window().refreshPanels();
    auto* tree = window.child<QTreeWidget>("treeTransactions");
    const auto first = [&](Qt::SortOrder order) {
        tree->sortByColumn(0, order);
        return tree->topLevelItem(0)->text(0) + ' ' + tree->topLevelItem(1)->text(0);
    };
    QCOMPARE(tree->topLevelItem(0)->text(0), "1");  // ascending at first
    QCOMPARE(first(Qt::DescendingOrder), "11* 10");
    QCOMPARE(first(Qt::AscendingOrder), "1 2");
    // The current one is not always the last one.
    window.database().transactions().restore(2);
    window.window().refreshPanels();
    for (const auto order : {Qt::AscendingOrder, Qt::DescendingOrder}) {
        tree->sortByColumn(0, order);
        const int last = tree->topLevelItemCount();
        QStringList ids;
        for (int id = 1; id <= last; ++id)
            ids.insert(order == Qt::AscendingOrder ? id - 1 : 0,
                       QString("%0%1").arg(id).arg(id == 2 ? "*" : ""));
        QCOMPARE(last, 11);
        for (int i = 0; i < last; ++i)
            QCOMPARE(tree->topLevelItem(i)->text(0), ids[i]);
    }
}

void TablesTest::metaDataShowsItsItems() {
    const SampleWindow window(m_sample->copy());
    auto* tree = window.child<QTreeWidget>("treeMetaData");
    QCOMPARE(headersOf(tree), QStringList({"Name", "Format", "Size", "Value"}));
    const struct {
        const char* name;
        const char* format;
        const char* size;
        QString value;
    } expected[] = {
        {"own.1023", "text", "1023 B", QString(1023, 'x')},
        {"own.1024", "text", "1.00 KB", QString(1024, 'x')},
        {"own.8192", "text", "8.00 KB", QString(8192, 'x')},
        {"own.8193", "text", "8.00 KB", QString(8192, 'x') + "..."},
        {"own.empty", "text", "0 B", ""},
        {"own.note", "JSON", "16 B", "{\"a\":[1,2.50]}"},
        {"own.signed", "JSON", "6 B", "[true]"},
        {"own.text", "text", "9 B", "no { JSON"},
    };
    QCOMPARE(tree->topLevelItemCount(), static_cast<int>(std::size(expected)));
    QCOMPARE(window.database().metaData().list().size(), std::size(expected));
    for (int i = 0; i < tree->topLevelItemCount(); ++i) {
        const QTreeWidgetItem* row = tree->topLevelItem(i);
        QCOMPARE(textsOf(row), QStringList({expected[i].name, expected[i].format, expected[i].size,
                                            expected[i].value}));
        const bool locked = row->text(0) == "own.signed";
        QCOMPARE(window.database().metaData().verifySignature(expected[i].name, 0, {}), locked);
        QVERIFY(shows(row, 0, locked ? "object-locked" : "object-unlocked"));
        const QBrush brush = row->foreground(0);
        QCOMPARE(brush.style() == Qt::NoBrush ? QColor(Qt::black) : brush.color(),
                 QColor(locked ? Qt::darkBlue : Qt::black));
        compareAlignments(row, {left, centre, right, left});
    }
    QVERIFY(tree->isSortingEnabled());
    tree->sortByColumn(2, Qt::AscendingOrder);
    QCOMPARE(tree->topLevelItem(0)->text(0), "own.empty");
    QCOMPARE(tree->topLevelItem(7)->text(0), "own.8193");
    QCOMPARE(window.child<QLabel>("labelMetaData")->text(), "Meta data items: 8");
    QVERIFY(window.child<QLabel>("labelMetaData")
                ->toolTip()
                .contains("tarvo::qrb::pointcloud::MetaData::list()<br />"
                          "tarvo::qrb::pointcloud::MetaData::exists()"));
    // Sorted by name again after each refresh.
    window.run("actionReload", {});
    QCOMPARE(tree->topLevelItem(0)->text(0), "own.1023");
    // One line, cut between characters.
    window.begin();
    window.database().metaData().set("own.lines", "a\nb\tc\rd");
    window.database().metaData().set("own.cut", std::string(8191, 'x') + "\xc3\xa4");
    window.window().refreshPanels();
    QCOMPARE(tree->findItems("own.lines", Qt::MatchExactly).value(0)->text(3), "a b c d");
    QCOMPARE(tree->findItems("own.cut", Qt::MatchExactly).value(0)->text(3),
             QString(8191, 'x') + "...");
    // All rows are of one height, and titles of numbers stand above those.
    int height = 0;
    for (int i = 0; i < tree->topLevelItemCount(); ++i) {
        height = std::max(height, tree->visualItemRect(tree->topLevelItem(i)).height());
        QCOMPARE(tree->visualItemRect(tree->topLevelItem(i)).height(), height);
    }
    QCOMPARE(alignmentOf(tree->headerItem(), 2), Qt::Alignment(right));
}

void TablesTest::attributesShowTheirDefinitions() {
    const SampleWindow window(m_sample->copy());
    const auto& attributes = window.database().pointAttributes();
    const auto* tree = window.child<QTreeWidget>("treePointAttributes");
    QCOMPARE(headersOf(tree), QStringList({"Name", "Title", "Data Type", "Storage", "Compression",
                                           "LOD Settings", "Tags", "Description", "Rank"}));
    const std::map<int, const char*> toolTips = {{0, "Unique attribute name"},
                                                 {1, "Attribute title"},
                                                 {2, "Suggested buffer data type"},
                                                 {3, "Storage class"},
                                                 {4, "Options additional to default compression"},
                                                 {7, "Attribute description"}};
    for (const auto& [column, toolTip] : toolTips)
        QVERIFY2(tree->headerItem()->toolTip(column).contains(QString("<p>%0</p>").arg(toolTip)),
                 toolTip);
    const std::map<int, const char*> types = {
        {0, "NONE"},  {1, "UINT8"},  {2, "INT8"},  {3, "UINT16"}, {4, "INT16"},  {5, "UINT32"},
        {6, "INT32"}, {7, "UINT64"}, {8, "INT64"}, {9, "SINGLE"}, {10, "DOUBLE"}};
    const QStringList storages = {"", "constant", "variable", "dynamic"};
    const QStringList compressions = {"default", "delta", "shuffle", "delta+shuffle"};
    const auto shortened = [](const std::string& whole, int most) {
        return text(whole).size() > most ? text(whole).left(most) + "..." : text(whole);
    };
    int rows = 0;
    QStringList groups;
    for (int g = 0; g < tree->topLevelItemCount(); ++g) {
        const QTreeWidgetItem* group = tree->topLevelItem(g);
        groups += group->text(0);
        QVERIFY(group->font(0).bold() && group->isExpanded());
        std::uint32_t rankBefore = 0;
        for (int i = 0; i < group->childCount(); ++i, ++rows) {
            const QTreeWidgetItem* row = group->child(i);
            const std::string name = row->text(0).section('[', 0, 0).remove('*').toStdString();
            const auto definition = attributes.get(name);
            const auto place = attributes.group(name);
            QCOMPARE(text(place.name), group->text(0));
            QVERIFY(i == 0 || place.rank >= rankBefore);
            rankBefore = place.rank;
            const QString shownName =
                text(name) +
                (definition.length == 1 ? QString() : QString("[%0]").arg(definition.length)) +
                (name == "tarvo.xyz" ? "*" : "");
            QCOMPARE(textsOf(row),
                     QStringList({shownName, text(definition.title),
                                  types.at(static_cast<int>(definition.dataType())),
                                  storages[definition.storageClass],
                                  compressions[definition.compressionOptions],
                                  text(definition.lodSettings), shortened(definition.tags, 30),
                                  shortened(definition.description, 150).simplified(),
                                  QString::number(place.rank)}));
            QVERIFY(!row->font(0).bold());
            QTextDocument shownToolTip;
            for (const auto& [column, whole] :
                 {std::pair(6, definition.tags), std::pair(7, definition.description)}) {
                shownToolTip.setPlainText(row->toolTip(column));
                if (Qt::mightBeRichText(row->toolTip(column)))
                    shownToolTip.setHtml(row->toolTip(column));
                QCOMPARE(shownToolTip.toPlainText().simplified(), text(whole).simplified());
            }
        }
    }
    QCOMPARE(rows, static_cast<int>(attributes.list().size()));
    QStringList sorted = groups;
    sorted.sort();
    QCOMPARE(groups, sorted);
    QCOMPARE(window.child<QLabel>("labelPointAttributes")->text(),
             QString("Point attributes: %0, Primary point attribute: tarvo.xyz").arg(rows));
    QVERIFY(window.child<QLabel>("labelPointAttributes")
                ->toolTip()
                .contains("tarvo::qrb::pointcloud::PointAttributes::list()<br />"
                          "tarvo::qrb::pointcloud::PointAttributes::exists()<br />"
                          "tarvo::qrb::pointcloud::PointAttributes::primaryAttributeName()"));
}

void TablesTest::nodesShowTheIndex() {
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

void TablesTest::detailsShowTheExtremesOfTheNode() {
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

void TablesTest::statisticsShowEveryLevel() {
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

void TablesTest::pointsShowTheirValues() {
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

void TablesTest::columnsFitTheirValuesPageByPage() {
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

void TablesTest::chooserListsTheAttributes() {
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

void TablesTest::reportsAreThoseOfTheLibrary() {
    const SampleWindow window(m_sample->copy());
    window.driver().showTab("tabInspection");
    auto* view = window.child<QTextBrowser>("textInspectionResult");
    auto* format = window.child<QComboBox>("editInspectionFormat");
    QVERIFY(view->isReadOnly());
    const QStringList entries = {"database report (plaintext)", "database report (JSON)",
                                 "database report (HTML)", "attribute histograms (CSV)"};
    QCOMPARE(format->count(), 4);
    QCOMPARE(format->currentIndex(), 0);
    for (int i = 0; i < 4; ++i) {
        QCOMPARE(format->itemText(i), entries[i]);
        QCOMPARE(format->itemData(i).toInt(), i + 1);
        const QString before = view->toPlainText();
        format->setCurrentIndex(i);
        QCOMPARE(view->toPlainText(), before);  // on demand only
        window.run("actionInspectionUpdate", {});
        const QString report = text(window.database().inspect(static_cast<std::uint8_t>(i + 1)));
        QTextDocument document;
        i < 2 ? document.setPlainText(report) : document.setHtml(report);
        // Reports may tell the time at which they were made.
        static const QRegularExpression time(R"(\d\d:\d\d:\d\d(\.\d+)?)");
        QCOMPARE(view->toPlainText().remove(time), document.toPlainText().remove(time));
        QVERIFY(!view->toPlainText().isEmpty());
    }
}

GUI_TEST_MAIN(TablesTest)
#include "tablestest.moc"
