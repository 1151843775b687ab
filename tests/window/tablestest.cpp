// The lists of what a database holds beside its points, cell by cell, against what the layer tells.

#include "tests/window/guitestmain.h"
#include "tests/window/sampletest.h"
#include "tests/window/treecells.h"
#include "window/panels/databasesummary.h"

#include <QComboBox>
#include <QDateTime>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QTextBrowser>
#include <QTextDocument>
#include <QTreeWidget>
#include <QtTest>
#include <algorithm>
#include <map>

using namespace tarvo::window;

namespace pointcloud = tarvo::qrb::pointcloud;

namespace {

constexpr auto left = Qt::AlignLeft;
constexpr auto centre = Qt::AlignHCenter;
constexpr auto right = Qt::AlignRight;

QString text(const std::string& utf8) {
    return QString::fromStdString(utf8);
}

}  // namespace

class TablesTest : public SampleTest {
    Q_OBJECT

private slots:
    void databaseTabTellsWhatTheFileIs();
    void transactionsShowTheirDetails();
    void numbersOfTransactionsSortAsNumbers();
    void metaDataShowsItsItems();
    void attributesShowTheirDefinitions();
    void reportsAreThoseOfTheLibrary();
};

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
