// The export of points as text, through every separator and every way in which it may end, and the
// limit up to which the tab of the index shows nodes.

#include "qrb/loader.h"
#include "qrb/pointcloud.h"
#include "tests/window/guitestmain.h"
#include "tests/window/modalscript.h"
#include "tests/window/testdatabase.h"
#include "tests/window/windowdriver.h"
#include "window/frame/mainwindow.h"
#include "window/panels/indexsearch.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QLocale>
#include <QMessageBox>
#include <QProgressDialog>
#include <QRandomGenerator>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>
#include <QtTest>
#include <array>
#include <memory>

using namespace tarvo::window;

namespace {

using Step = ModalScript::Step;
namespace pointcloud = tarvo::qrb::pointcloud;

constexpr int itemLimit = 10000;

// The dialogs of the export: the file dialog, and what comes after it.
std::vector<Step> exportTo(const QString& fileName, std::vector<Step> after) {
    after.insert(after.begin(), ModalScript::chooseFile(fileName));
    return after;
}

QByteArray contentOf(const QString& fileName) {
    QFile file(fileName);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("can't be read");
}

// Items of a tree widget, as a user would count its rows with all branches open.
int itemCount(QTreeWidget* tree) {
    int count = 0;
    for (QTreeWidgetItemIterator item(tree); *item; ++item)
        ++count;
    return count;
}

int nodeCount(const pointcloud::IndexNode& node) {
    int count = node.id == 0 ? 0 : 1;
    for (const pointcloud::IndexNode& child : node.children)
        count += nodeCount(child);
    return count;
}

std::uint32_t lastLeaf(const pointcloud::IndexNode& node) {
    return node.children.empty() ? node.id : lastLeaf(node.children.back());
}

// A database whose leaves hold one point each, so that few points have many nodes.
class NodeDatabase {
public:
    explicit NodeDatabase(const QString& fileName) {
        pointcloud::CreateSettings settings(m_context);
        settings.primaryAttribute.name = "tarvo.xyz";
        settings.primaryAttribute.title = "XYZ";
        settings.primaryAttribute.length = 3;
        settings.primaryAttribute.minimumValue = 0;
        settings.primaryAttribute.maximumValue = 65535;
        settings.primaryAttribute.storageClass = pointcloud::PointAttribute::VARIABLE;
        settings.chunkMode = 1;
        settings.chunkSize = 1;
        settings.chunkSizeLOD = 0;
        m_cloud.create(fileName.toStdString(), settings);
    }

    // Adds points until there are exactly so many nodes.
    void fill(int nodes) {
        pointcloud::TransactionGuard transaction(m_cloud.transactions(), "Fill", "tests");
        for (int missing = nodes - count(); missing != 0; missing = nodes - count()) {
            if (missing > 0)
                add(std::max(1, missing / 4));
            else
                removeLast();  // it brought an inner node along
        }
        transaction.commit();
    }

    pointcloud::IndexNode root() const {
        pointcloud::IndexNode result;
        m_cloud.stat().index(result);
        return result;
    }
    int count() const { return nodeCount(root()); }

private:
    // At random places, the same in each run.
    void add(int count) {
        std::vector<std::array<double, 3>> points(static_cast<std::size_t>(count));
        for (auto& point : points)
            for (double& value : point)
                value = static_cast<double>(m_random.bounded(65536));
        std::vector<std::uint64_t> ids(points.size());
        auto query = m_cloud.insert();
        query.bind("tarvo.xyz", pointcloud::DataType::DOUBLE, points.data(), sizeof points[0]);
        query.bindId(pointcloud::DataType::UINT64, ids.data(), sizeof ids[0]);
        query.next(static_cast<std::uint32_t>(count));
        m_last = ids.back();
    }
    void removeLast() {
        auto query = m_cloud.remove();
        query.bind(pointcloud::DataType::UINT64, &m_last, sizeof m_last);
        query.next(1);
    }

    tarvo::qrb::Context m_context{"OFF", ""};
    tarvo::qrb::Pointcloud m_cloud{m_context};
    QRandomGenerator m_random{1};
    std::uint64_t m_last = 0;  // id of the point added last
};

}  // namespace

class ExportTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void cleanupTestCase() { tarvo::qrb::freeLibrary(); }

    void separatorFollowsTheChosenFilter_data();
    void separatorFollowsTheChosenFilter();
    void withoutColumnsEachPointIsAnEmptyLine();
    void cancelLeavesWhatWasThere();
    void exportOfNothingReplacesNothing();
    void failuresAreToldOnce_data();
    void failuresAreToldOnce();
    void indexIsShownUpToItsLimit();

private:
    WindowDriver driver() { return WindowDriver(*m_window); }
    QStringList run(const char* action, std::vector<Step> steps) {
        return driver().run(action, std::move(steps));
    }
    void openPointData();
    void showColumns(const QStringList& names);
    void expectUsable();

    QTemporaryDir m_folder;
    TestDatabase m_source;
    std::unique_ptr<MainWindow> m_window;
};

void ExportTest::initTestCase() {
    tarvo::qrb::loadLibrary("");
    m_source = makeTestDatabase(m_folder.path());
    QVERIFY2(m_source.error.isEmpty(), qUtf8Printable(m_source.error));
}

void ExportTest::init() {
    m_window = showFreshWindow();
}

void ExportTest::cleanup() {
    m_window.reset();
}

void ExportTest::openPointData() {
    m_window->openDatabase(m_source.fileName, true);
    driver().showTab("tabPointData");
}

void ExportTest::showColumns(const QStringList& names) {
    driver().child<QAction>("actionColumnsHideAll")->trigger();
    auto* list = driver().child<QListWidget>("listPointAttributes");
    for (const QString& name : names)
        list->findItems(name, Qt::MatchExactly).value(0)->setCheckState(Qt::Checked);
}

// No box is left open, and a page of points can be read.
void ExportTest::expectUsable() {
    QVERIFY(!QApplication::activeModalWidget());
    QVERIFY(!QApplication::overrideCursor());
    QVERIFY(m_window->isEnabled());
    driver().child<QAction>("actionQuerySelectNext")->trigger();
    QVERIFY(driver().child<QTreeWidget>("treePointData")->topLevelItemCount() > 0);
}

void ExportTest::separatorFollowsTheChosenFilter_data() {
    QTest::addColumn<int>("row");
    QTest::addColumn<QString>("separator");
    QTest::newRow("commas") << 0 << ",";
    QTest::newRow("semicolons") << 1 << ";";
    QTest::newRow("tabs") << 2 << "\t";
}

void ExportTest::separatorFollowsTheChosenFilter() {
    QFETCH(int, row);
    QFETCH(QString, separator);
    openPointData();
    showColumns({"tarvo.id", "tarvo.xyz", "tarvo.class"});
    const std::string filter = "tarvo.class == 2";
    // A leaf that holds points of the class.
    const tarvo::qrb::Context context("OFF", "");
    tarvo::qrb::Pointcloud cloud(context);
    cloud.open(m_source.fileName.toStdString(), pointcloud::OpenSettings(context));
    pointcloud::IndexNode root;
    cloud.stat().index(root, filter);
    std::uint32_t leaf = 0;
    using Row = std::array<double, 5>;
    std::vector<Row> expected;
    for (const std::uint32_t candidate : leavesOf(root)) {
        Row values{};
        auto query = cloud.select({candidate}, filter);
        const char* const names[] = {"tarvo.xyz[0]", "tarvo.xyz[1]", "tarvo.xyz[2]", "tarvo.id",
                                     "tarvo.class"};
        for (std::size_t i = 0; i < values.size(); ++i)
            query.bind(names[i], pointcloud::DataType::DOUBLE, &values[i], 0);
        while (query.next(1) == 1)
            expected.push_back(values);
        leaf = candidate;
        if (!expected.empty())
            break;
    }
    QVERIFY(!expected.empty());

    QTest::keyClicks(driver().child<QComboBox>("PointDataFilter")->lineEdit(),
                     QString::fromStdString(filter));
    QTest::keyClicks(driver().child<QLineEdit>("editPointDataNodes"), QString::number(leaf));
    const QString name = m_folder.filePath(QString("points%0.csv").arg(row));
    const Step choose = [&](QDialog* dialog) {
        QCOMPARE(dialog->windowTitle(), "Export");
        QCOMPARE(in<QLineEdit>(dialog, "fileNameEdit")->text(),
                 QFileInfo(m_source.fileName + ".csv").fileName());
        auto* types = in<QComboBox>(dialog, "fileTypeCombo");
        QCOMPARE(types->count(), 3);
        for (int i = 0; i < row; ++i)
            QTest::keyClick(types, Qt::Key_Down);
        QCOMPARE(types->currentIndex(), row);
        ModalScript::chooseFile(name)(dialog);
    };
    QCOMPARE(run("actionQuerySelectExport", {choose, ModalScript::press("OK")}),
             QStringList("Export successfully finished."));

    const QStringList lines = QString::fromUtf8(contentOf(name)).split('\n');
    QCOMPARE(lines.size(), static_cast<qsizetype>(expected.size()) + 2);
    QVERIFY(lines.last().isEmpty());
    QCOMPARE(
        lines.first().split(separator),
        QStringList({"tarvo.xyz[0]", "tarvo.xyz[1]", "tarvo.xyz[2]", "tarvo.id", "tarvo.class"}));
    for (std::size_t i = 0; i < expected.size(); ++i) {
        const QStringList cells = lines[static_cast<qsizetype>(i) + 1].split(separator);
        QCOMPARE(cells.size(), 5);
        for (int column = 0; column < 5; ++column)
            QCOMPARE(cells[column].toDouble(), expected[i][static_cast<std::size_t>(column)]);
        QVERIFY(!cells[3].contains('.') && !cells[4].contains('.'));
    }
    expectUsable();
}

void ExportTest::withoutColumnsEachPointIsAnEmptyLine() {
    openPointData();
    showColumns({});
    driver().child<QComboBox>("PointDataFilter")->setEditText("tarvo.id <= 7");
    const QString name = m_folder.filePath("empty.csv");
    run("actionQuerySelectExport", exportTo(name, {ModalScript::press("OK")}));
    QCOMPARE(contentOf(name), QByteArray(8, '\n'));
    // The dialog of the file cancelled: nothing is written, nothing is said.
    QFile::remove(name);
    run("actionQuerySelectExport", {[&](QDialog* dialog) {
            in<QLineEdit>(dialog, "fileNameEdit")->setText(name);
            QTest::keyClick(dialog, Qt::Key_Escape);
        }});
    QVERIFY(!QFileInfo::exists(name));
}

void ExportTest::cancelLeavesWhatWasThere() {
    const QTemporaryDir folder;
    const TestDatabase large = makeLongExport(folder.path());
    QVERIFY2(large.error.isEmpty(), qUtf8Printable(large.error));
    m_window->openDatabase(large.fileName, true);
    driver().showTab("tabPointData");
    driver().child<QAction>("actionColumnsShowAll")->trigger();
    const QString name = m_folder.filePath("large.csv");
    QFile file(name);
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write("last week") == 9);
    file.close();
    int percent = -1;
    const QStringList texts = run(
        "actionQuerySelectExport",
        exportTo(name, {ModalScript::press("Yes"), ModalScript::onProgress([&](QDialog* dialog) {
                            auto* progress = qobject_cast<QProgressDialog*>(dialog);
                            QVERIFY(progress);
                            percent = progress->value();
                            ModalScript::press("Cancel")(dialog);
                        })}));
    QCOMPARE(texts.size(), 1);  // the question of the file dialog
    QVERIFY2(percent >= 0 && percent < 100, "the export was done before it could be cancelled");

    // Nothing of it is left, and what was there is.
    QCOMPARE(contentOf(name), QByteArray("last week"));
    QVERIFY(QDir(m_folder.path()).entryList({"large.csv*"}) == QStringList("large.csv"));
    expectUsable();
}

void ExportTest::exportOfNothingReplacesNothing() {
    openPointData();
    driver().child<QComboBox>("PointDataFilter")->setEditText("tarvo.id < 0");
    const QString name = m_folder.filePath("nothing.csv");
    run("actionQuerySelectExport", exportTo(name, {ModalScript::press("OK")}));
    const QByteArray header = contentOf(name);
    QCOMPARE(header.count('\n'), 1);
    QFile file(name);
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write("last week") == 9);
    file.close();
    const QStringList texts =
        run("actionQuerySelectExport",
            exportTo(name, {ModalScript::press("Yes"), ModalScript::press("OK")}));
    QCOMPARE(texts.last(), QString("No points are selected; \"%0\" was left as it was.").arg(name));
    QCOMPARE(contentOf(name), QByteArray("last week"));
}

void ExportTest::failuresAreToldOnce_data() {
    QTest::addColumn<QString>("target");
    QTest::addColumn<QString>("filter");
    QTest::addColumn<QString>("nodes");
    QTest::addColumn<QString>("text");
    if (QFileInfo::exists("/dev/full")) {
        const QString full = "\"/dev/full\" can't be written: No space left on device.";
        QTest::newRow("full disk, at once") << "/dev/full"
                                            << ""
                                            << "" << full;
        QTest::newRow("full disk, at the end") << "/dev/full"
                                               << "tarvo.id < 3"
                                               << "" << full;
    }
    QTest::newRow("no folder") << "no/such/folder/a.csv"
                               << ""
                               << ""
                               << "Failed to open export file.";
    QTest::newRow("no expression") << "a.csv"
                                   << "tarvo.class ==="
                                   << ""
                                   << "Found \"=\"";
    QTest::newRow("no nodes") << "a.csv"
                              << ""
                              << "1-2-3"
                              << "Invalid input: \"1-2-3\"";
}

void ExportTest::failuresAreToldOnce() {
    QFETCH(QString, target);
    QFETCH(QString, filter);
    QFETCH(QString, nodes);
    QFETCH(QString, text);
    openPointData();
    auto* filterBox = driver().child<QComboBox>("PointDataFilter");
    auto* nodesEdit = driver().child<QLineEdit>("editPointDataNodes");
    filterBox->setEditText(filter);
    nodesEdit->setText(nodes);
    const QString name = target.startsWith('/') ? target : m_folder.filePath(target);
    // A device is there already.
    std::vector<Step> boxes;
    if (QFileInfo::exists(name))
        boxes.push_back(ModalScript::press("Yes"));
    boxes.push_back([](QDialog* dialog) {
        QVERIFY(qobject_cast<QMessageBox*>(dialog));
        QCOMPARE(qobject_cast<QMessageBox*>(dialog)->icon(), QMessageBox::Critical);
        ModalScript::press("OK")(dialog);
    });
    const QStringList texts = run("actionQuerySelectExport", exportTo(name, boxes));
    QVERIFY2(texts.value(texts.size() - 1).startsWith(text),
             qUtf8Printable(texts.value(texts.size() - 1)));
    filterBox->clearEditText();
    nodesEdit->clear();
    expectUsable();
}

void ExportTest::indexIsShownUpToItsLimit() {
    const QString name = m_folder.filePath("nodes.qrbx");
    auto* tree = driver().child<QTreeWidget>("treePointIndexNodes");
    auto* label = driver().child<QLabel>("labelPointIndex");
    auto* filter = driver().child<QComboBox>("PointIndexFilter");
    const auto enter = [&](const QString& text) {
        filter->lineEdit()->selectAll();
        QTest::keyClicks(filter->lineEdit(), text);
        QTest::keyClick(filter->lineEdit(), Qt::Key_Return);
    };
    NodeDatabase database(name);
    database.fill(itemLimit);
    QCOMPARE(database.count(), itemLimit);
    m_window->openDatabase(name, true);
    driver().showTab("tabPointIndex");
    QCOMPARE(itemCount(tree), itemLimit);
    QVERIFY2(label->text().contains(QString("Total: %0,").arg(QLocale().toString(itemLimit))),
             qUtf8Printable(label->text()));
    // Too many to open all branches.
    int expanded = 0;
    for (QTreeWidgetItemIterator it(tree); *it; ++it)
        expanded += (*it)->isExpanded();
    QCOMPARE(expanded, 1);

    // One more item, and many more.
    for (const int nodes : {itemLimit + 1, 2 * itemLimit}) {
        database.fill(nodes);
        QCOMPARE(database.count(), nodes);
        driver().child<QAction>("actionReload")->trigger();
        QCOMPARE(itemCount(tree), itemLimit + 1);
        QCOMPARE(label->text(), "Index too large,\nView truncated!");
    }
    // A filter reaches what the view leaves out, with its ancestors.
    const std::uint32_t leaf = lastLeaf(database.root());
    QVERIFY(
        tree->findItems(QString::number(leaf), Qt::MatchExactly | Qt::MatchRecursive).isEmpty());
    enter(QString::number(leaf));
    const auto found =
        tree->findItems(QString::number(leaf), Qt::MatchExactly | Qt::MatchRecursive);
    QCOMPARE(found.size(), 1);
    QVERIFY(found.first()->font(0).bold());
    QVERIFY2(label->text().contains("Leaves: 1,"), qUtf8Printable(label->text()));
    QVERIFY(itemCount(tree) < 20);
    // A filter that picks all of them is cut off too, perhaps within a node that shows none of its
    // leaves then.
    enter("tarvo.xyz[0] >= 0");
    QCOMPARE(label->text(), "Index too large,\nView truncated!");
    QVERIFY(itemCount(tree) > itemLimit - 10 && itemCount(tree) <= itemLimit + 1);

    // The statistics know all nodes, and a truncated tree works like any other.
    QStringList total;
    run("actionPointIndexStats", {[&](QDialog* dialog) {
            const auto* levels = in<QTreeWidget>(dialog, "treeStatistics");
            const auto* sum = levels->topLevelItem(levels->topLevelItemCount() - 1);
            for (int column = 0; column < levels->columnCount(); ++column)
                total += sum->text(column);
            dialog->accept();
        }});
    QCOMPARE(total.size(), 5);
    QCOMPARE(QLocale().toInt(total[3]) + QLocale().toInt(total[4]), 2 * itemLimit);
    driver().child<QAction>("actionPointIndexNodeExpand")->trigger();
    driver().child<QAction>("actionPointIndexNodeCollapse")->trigger();
    QTreeWidgetItem* item = tree->topLevelItem(0);
    while (item->childCount() > 0) {
        item->setExpanded(true);
        item = item->child(item->childCount() - 1);
    }
    clickRow(item);
    QVERIFY(driver().child<QTreeWidget>("treePointIndexDetails")->topLevelItemCount() > 0);
    doubleClickRow(item);
    QCOMPARE(driver().child<QLineEdit>("editPointDataNodes")->text(), item->text(0));
    QCOMPARE(driver().child<QTreeWidget>("treePointData")->topLevelItemCount(), 1);
}

GUI_TEST_MAIN(ExportTest)
#include "exporttest.moc"
