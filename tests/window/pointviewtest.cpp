// How the points tab shows its points: names of values, one point from top to bottom, the order and
// the widths of the columns, and what of it is there again later; what is copied of a cell and a
// column; ranges of nodes and of values.

#include "tests/window/guitestmain.h"
#include "tests/window/samplewindowtest.h"
#include "window/dialogs/dialograngequery.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QSplitter>
#include <QStatusBar>
#include <QTabWidget>
#include <QTreeWidget>
#include <QtTest>

using namespace tarvo::window;

class PointViewTest : public SampleWindowTest {
    Q_OBJECT

public:
    PointViewTest() : SampleWindowTest("tabPointData") {}

private slots:
    void valuesAreShownWithTheirNames();
    void onePointStandsFromTopToBottom();
    void draggedColumnsStayWhereTheyArePut();
    void chooserIsSearched();
    void viewIsAsItWasAtTheNextStart();
    void selectionsSurviveWhatIsReadAnew();
    void columnsAndValuesAreCopied();
    void rangesOfNodesGoAcrossGaps();
    void rangesOfValuesAreNumbers();

private:
    void run(const char* action) { m_window->run(action, {}); }
    QTreeWidget* table() { return m_window->child<QTreeWidget>("treePointData"); }
    int column(const QString& name) {
        for (int i = 0; i < table()->columnCount(); ++i)
            if (table()->headerItem()->text(i) == name)
                return i;
        return -1;
    }
    QStringList shownOrder() {
        QStringList names;
        for (int visual = 0; visual < table()->header()->count(); ++visual)
            names += table()->headerItem()->text(table()->header()->logicalIndex(visual));
        return names;
    }
    void click(QTreeWidgetItem* row, int column, Qt::KeyboardModifiers modifiers = {}) {
        QTreeWidget* tree = row->treeWidget();
        tree->scrollTo(tree->indexAt({}));
        tree->scrollToItem(row);
        tree->horizontalScrollBar()->setValue(tree->header()->sectionPosition(column));
        const QRect cell(tree->header()->sectionViewportPosition(column),
                         tree->visualItemRect(row).top(), 8, tree->visualItemRect(row).height());
        QTest::mouseClick(tree->viewport(), Qt::LeftButton, modifiers, cell.center());
        QCOMPARE(tree->currentColumn(), column);
    }
    void drag(int from, int to) { dragInHeader(table()->header(), from, to); }
    int middle(const QString& name) {
        const auto* header = table()->header();
        return header->sectionViewportPosition(column(name)) +
               header->sectionSize(column(name)) / 2;
    }
};

void PointViewTest::valuesAreShownWithTheirNames() {
    m_window->child<QComboBox>("PointDataFilter")
        ->lineEdit()
        ->setText("tarvo.class == 2 || tarvo.class == 63");
    run("actionQuerySelectNext");
    const int classes = column("tarvo.class");
    const auto texts = [&] {
        QSet<QString> found;
        for (int row = 0; row < table()->topLevelItemCount(); ++row)
            found += table()->topLevelItem(row)->text(classes);
        return found;
    };
    QCOMPARE(texts(), QSet<QString>({"2", "63"}));
    const int narrow = table()->columnWidth(classes);
    run("actionPointNames");
    QVERIFY(texts().contains("63"));  // without a name
    QVERIFY2(!texts().contains("2"), "the name is missing");
    const QString named = (texts() - QSet<QString>({"63"})).values().value(0);
    QVERIFY(named.startsWith("2 ") && named.contains("ground", Qt::CaseInsensitive));
    QVERIFY(table()->columnWidth(classes) >= narrow);

    // Sorted as numbers, and copied without names.
    table()->sortByColumn(classes, Qt::AscendingOrder);
    QCOMPARE(table()->topLevelItem(0)->text(classes), named);
    click(table()->topLevelItem(0), classes);
    QTest::mouseDClick(table()->viewport(), Qt::LeftButton, {},
                       {table()->header()->sectionViewportPosition(classes) + 4,
                        table()->visualItemRect(table()->topLevelItem(0)).center().y()});
    QCOMPARE(QApplication::clipboard()->text(), "tarvo.class = 2");
    QVERIFY(m_window->child<QStatusBar>("statusBar")->currentMessage().contains("tarvo.class = 2"));
    run("actionQuerySelectCopyCsv");
    QVERIFY(!QApplication::clipboard()->text().contains("ground", Qt::CaseInsensitive));
    QVERIFY(table()->headerItem()->toolTip(column("tarvo.xyz[0]")).contains("Unit: m"));

    MainWindow later;
    QVERIFY(later.findChild<QAction*>("actionPointNames")->isChecked());
}

void PointViewTest::onePointStandsFromTopToBottom() {
    run("actionQuerySelectNext");
    auto* values = m_window->child<QTreeWidget>("treePointValues");
    QVERIFY(!values->isVisible());
    run("actionPointValues");
    run("actionPointNames");
    QVERIFY(values->isVisible());
    QTreeWidgetItem* row = table()->topLevelItem(7);
    click(row, 1);
    QStringList groups;
    int shown = 0;
    for (int i = 0; i < values->topLevelItemCount(); ++i) {
        const QTreeWidgetItem* group = values->topLevelItem(i);
        groups += group->text(0);
        for (int k = 0; k < group->childCount(); ++k, ++shown) {
            const QTreeWidgetItem* value = group->child(k);
            QVERIFY(value->text(0).startsWith(group->text(0) + '.'));
            QCOMPARE(value->text(1), row->text(column(value->text(0))));
        }
    }
    groups.sort();
    QCOMPARE(groups, QStringList({"own", "tarvo"}));
    QCOMPARE(shown, table()->columnCount() - 1);
    table()->setFocus();
    QTest::keyClick(table(), Qt::Key_Down);
    const auto found = values->findItems("own.single", Qt::MatchExactly | Qt::MatchRecursive, 0);
    QCOMPARE(found.value(0)->text(1), table()->topLevelItem(8)->text(column("own.single")));
    run("actionQuerySelectNext");
    m_window->child<QLineEdit>("editPointDataNodes")->setText("3-1");
    m_window->run("actionQuerySelectNext", {ModalScript::press("OK")});
}

void PointViewTest::draggedColumnsStayWhereTheyArePut() {
    run("actionQuerySelectNext");
    // One element in front of the first column: its fellows follow it.
    drag(middle("tarvo.xyz[1]"), middle("#") + 2);
    QTRY_VERIFY(shownOrder().indexOf("tarvo.xyz[0]") == 1);
    const auto* chooser = m_window->child<QListWidget>("listPointAttributes");
    QCOMPARE(chooser->item(0)->text(), "tarvo.xyz");
    const QString second = shownOrder()[4];
    drag(middle(second), middle("tarvo.xyz[0]") - 20);
    QTRY_COMPARE(shownOrder().mid(0, 5),
                 QStringList({"#", second, "tarvo.xyz[0]", "tarvo.xyz[1]", "tarvo.xyz[2]"}));
    QCOMPARE(chooser->item(1)->text(), "tarvo.xyz");
    // More rows change nothing, and neither does a new query of another window.
    run("actionQuerySelectNext");
    QCOMPARE(shownOrder()[1], second);
    SampleWindow* const shown = m_window.get();
    MainWindow later;
    later.openDatabase(m_sample->copy("later.qrbx"), true);
    QCOMPARE(later.findChild<QListWidget*>("listPointAttributes")->item(1)->text(), "tarvo.xyz");
    QVERIFY(shown);
}

void PointViewTest::chooserIsSearched() {
    auto* chooser = m_window->child<QListWidget>("listPointAttributes");
    const auto visible = [&] {
        QStringList names;
        for (int i = 0; i < chooser->count(); ++i)
            if (!chooser->item(i)->isHidden())
                names += chooser->item(i)->text();
        names.sort();
        return names;
    };
    QTest::keyClicks(m_window->child<QLineEdit>("editColumnSearch"), " REFL");
    QCOMPARE(visible(), QStringList("tarvo.reflectance"));
    run("actionColumnsSortByName");
    QCOMPARE(visible(), QStringList("tarvo.reflectance"));
    run("actionReload");
    QCOMPARE(visible(), QStringList("tarvo.reflectance"));
    m_window->child<QLineEdit>("editColumnSearch")->clear();
    QCOMPARE(visible().size(), chooser->count());
}

void PointViewTest::viewIsAsItWasAtTheNextStart() {
    run("actionQuerySelectNext");
    auto* header = table()->header();
    const QString moved = table()->headerItem()->text(header->logicalIndex(1));
    const int section = header->logicalIndex(1);
    const int edge = header->sectionViewportPosition(section) + header->sectionSize(section) - 1;
    drag(edge, edge + 57);
    const int width = header->sectionSize(section);
    QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, {middle("#"), header->height() / 2});
    QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, {middle("#"), header->height() / 2});
    QCOMPARE(table()->topLevelItem(0)->text(0), "100");
    auto* splitter = m_window->child<QSplitter>("splitterPointData");
    const QPoint handle = splitter->handle(1)->rect().center();
    QTest::mousePress(splitter->handle(1), Qt::LeftButton, {}, handle);
    QTest::mouseMove(splitter->handle(1), handle - QPoint(0, 60));
    QTest::mouseRelease(splitter->handle(1), Qt::LeftButton, {}, handle - QPoint(0, 60));
    const int below = splitter->sizes().value(1);
    QTest::qWait(300);
    m_window->window().close();

    MainWindow later;
    later.resize(1400, 800);
    later.show();
    later.openDatabase(m_sample->copy("later.qrbx"), true);
    const WindowDriver driver(later);
    QCOMPARE(driver.child<QTabWidget>("tabWidget")->currentWidget()->objectName(), "tabPointData");
    driver.run("actionQuerySelectNext", {});
    auto* tree = driver.child<QTreeWidget>("treePointData");
    QCOMPARE(tree->header()->sectionSize(section), width);
    QCOMPARE(tree->headerItem()->text(section), moved);
    QCOMPARE(tree->topLevelItem(0)->text(0), "100");
    QVERIFY(std::abs(driver.child<QSplitter>("splitterPointData")->sizes().value(1) - below) < 20);
    later.close();
}

void PointViewTest::selectionsSurviveWhatIsReadAnew() {
    run("actionQuerySelectNext");
    const int ids = column("tarvo.id");
    click(table()->topLevelItem(3), 1);
    click(table()->topLevelItem(5), 1, Qt::ControlModifier);
    const auto selected = [&] {
        QStringList texts;
        for (const auto* row : table()->selectedItems())
            texts += row->text(ids);
        texts.sort();
        return texts;
    };
    const QStringList before = selected();
    QCOMPARE(before.size(), 2);
    m_window->child<QComboBox>("PointDataFilter")->lineEdit()->setText("tarvo.id > 1");
    run("actionQuerySelectNext");
    QCOMPARE(selected(), before);
    run("actionReload");  // a query that is running begins again
    QCOMPARE(table()->topLevelItemCount(), 100);
    QCOMPARE(selected(), before);
    m_window->window().openDatabase(m_window->window().session().fileName, true);
    QCOMPARE(table()->topLevelItemCount(), 0);
    run("actionQuerySelectNext");
    QCOMPARE(selected(), before);
    // What is selected by hand is all that stays.
    click(table()->topLevelItem(9), 1);
    m_window->child<QComboBox>("PointDataFilter")->lineEdit()->setText("tarvo.id > 0");
    run("actionQuerySelectNext");
    QCOMPARE(selected().size(), 1);

    const struct {
        const char *tab, *tree, *row;
    } trees[] = {{"tabPointAttributes", "treePointAttributes", "own.single"},
                 {"tabMetaData", "treeMetaData", "own.note"}};
    for (const auto& [tab, tree, row] : trees) {
        m_window->driver().showTab(tab);
        QVERIFY(m_window->driver().select(tree, row));
        run("actionReload");
        const auto items = m_window->child<QTreeWidget>(tree)->selectedItems();
        QVERIFY2(items.size() == 1 && items.first()->text(0) == row, tree);
    }
    m_window->driver().showTab("tabPointIndex");
    auto* nodes = m_window->child<QTreeWidget>("treePointIndexNodes");
    QTRY_VERIFY(nodes->topLevelItemCount() > 0);
    const QString leaf =
        nodes->findItems("leaf", Qt::MatchExactly | Qt::MatchRecursive, 1).last()->text(0);
    QVERIFY(m_window->driver().select("treePointIndexNodes", leaf));
    run("actionReload");
    QTRY_VERIFY(nodes->currentItem());
    QCOMPARE(nodes->currentItem()->text(0), leaf);
}

void PointViewTest::columnsAndValuesAreCopied() {
    m_window->child<QComboBox>("PointDataFilter")->lineEdit()->setText("tarvo.id <= 50");
    run("actionQuerySelectNext");
    auto* filter = m_window->child<QComboBox>("PointDataFilter")->lineEdit();
    const int x = column("tarvo.xyz[0]");
    QTreeWidgetItem* row = table()->topLevelItem(4);
    const QString id = row->text(column("tarvo.id")), value = row->text(x);
    click(row, x);
    run("actionQuerySelectCopyColumn");
    QStringList lines = QApplication::clipboard()->text().split('\n');
    QCOMPARE(lines.size(), 52);
    QCOMPARE(lines[0], "tarvo.xyz[0]");
    QCOMPARE(lines[5], value);

    run("actionQuerySelectCopyCellFilter");
    const QString expression = QApplication::clipboard()->text();
    QVERIFY2(expression.startsWith("(tarvo.xyz[0] >= ") && expression.contains(") && ("),
             qUtf8Printable(expression));
    filter->setText(expression);
    run("actionQuerySelectNext");
    QVERIFY(table()->topLevelItemCount() >= 1);
    bool isFound = false;
    for (int i = 0; i < table()->topLevelItemCount(); ++i) {
        isFound = isFound || table()->topLevelItem(i)->text(column("tarvo.id")) == id;
        QCOMPARE(table()->topLevelItem(i)->text(x), value);
    }
    QVERIFY(isFound);
    click(table()->topLevelItem(0), column("tarvo.class"));
    run("actionQuerySelectCopyCellFilter");
    QCOMPARE(QApplication::clipboard()->text(),
             "tarvo.class == " + table()->topLevelItem(0)->text(column("tarvo.class")));
    click(table()->topLevelItem(0), 0);
    m_window->run("actionQuerySelectCopyColumn", {ModalScript::press("OK")});
}

void PointViewTest::rangesOfNodesGoAcrossGaps() {
    auto* nodes = m_window->child<QLineEdit>("editPointDataNodes");
    nodes->setText("0-100000");
    m_window->run(
        "actionQuerySelectCount", {[](QDialog* dialog) {
            QVERIFY(dialog->findChild<QLabel*>("qt_msgbox_label")->text().startsWith("600 points"));
            ModalScript::pressButton(dialog, "OK");
        }});
    nodes->setText("99999");
    QCOMPARE(m_window->run("actionQuerySelectNext", {ModalScript::press("OK")}).size(), 1);
    nodes->setText("90000-99999");
    QCOMPARE(m_window->run("actionQuerySelectNext", {ModalScript::press("OK")}),
             QStringList("No data received."));
}

void PointViewTest::rangesOfValuesAreNumbers() {
    std::vector<tarvo::qrb::pointcloud::PointAttribute> attributes = {
        m_window->database().pointAttributes().get("own.single")};
    DialogRangeQuery dialog(attributes, nullptr);
    dialog.show();
    auto* ok = dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok);
    const auto type = [&](const char* name, const QString& text) {
        auto* edit = dialog.findChild<QLineEdit*>(name);
        edit->clear();
        QTest::keyClicks(edit, text);
    };
    const struct {
        int tab;
        QString first, second, told;
    } cases[] = {{0, "nan", "5", "Lower Bound: \"nan\""},
                 {0, "1", "-inf", "Upper Bound: \"-inf\""},
                 {0, "1", "1e300", "Upper Bound: the number"},
                 {0, "1", "1e999", "Upper Bound: the number"},
                 {0, "1e-300", "5", ""},
                 {0, "1", "636.353.5", ""},  // no number, so nothing is known of it
                 {0, "own.single", "5", ""},
                 {1, "1", "-2", "Radius: it is negative"},
                 {1, "1", "-0.5", "Radius: it is negative"},
                 {1, "nan", "2", "Center: \"nan\""},
                 {1, "1e300", "2", "Center: the number"},
                 {1, "1", "0", ""}};
    for (const auto& expected : cases) {
        dialog.findChild<QTabWidget*>("tabWidgetMode")->setCurrentIndex(expected.tab);
        type(expected.tab ? "editCenterValue" : "editLowerBoundValue", expected.first);
        type(expected.tab ? "editRadiusValue" : "editUpperBoundValue", expected.second);
        const auto* label =
            dialog.findChild<QLabel*>(expected.tab ? "labelCenterCheck" : "labelBoundsCheck");
        QVERIFY2(expected.told.isEmpty() ? label->text().isEmpty()
                                         : label->text().startsWith(expected.told),
                 qUtf8Printable(expected.first + '|' + expected.second + '|' + label->text()));
        QCOMPARE(label->isVisible(), !expected.told.isEmpty());
        QCOMPARE(ok->isEnabled(), expected.told.isEmpty());
        QCOMPARE(dialog.expression().isEmpty(), !expected.told.isEmpty());
    }
}

GUI_TEST_MAIN(PointViewTest)
#include "pointviewtest.moc"
