// What the tabs tell about the points and what opens from them: reports, statistics, ranges,
// sorting, level of detail, validation.

#include "core/jsonvalues.h"
#include "tests/window/guitestmain.h"
#include "tests/window/notedwindow.h"
#include "window/dialogs/workingdialog.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QMenu>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QSpinBox>
#include <QTabWidget>
#include <QTextBrowser>
#include <QToolButton>
#include <QTreeWidget>
#include <QUrl>
#include <QtTest>

using namespace tarvo::window;

class TabsTest : public NotedWindowTest {
    Q_OBJECT

private slots:
    void reportsShowPicturesAndAskBeforeLinks();
    void statisticsAddUpToTheIndex();
    void commandsFindNodesOfTheIndex();
    void rangeQueryGoesIntoTheFilter();
    void findBarGoesThroughTheHits();
    void headersSortAndLeadBack();
    void levelOfDetailIsBuiltAndCanBeCancelled();
    void validationTellsWhatItFinds();
    void methodTextsAreTakenApart();
};

void TabsTest::reportsShowPicturesAndAskBeforeLinks() {
    showTab("tabInspection");
    auto* view = child<QTextBrowser>("textInspectionResult");
    auto* format = child<QComboBox>("editInspectionFormat");
    for (int i = 0; i < format->count(); ++i) {
        format->setCurrentIndex(i);
        child<QAction>("actionInspectionUpdate")->trigger();
        QVERIFY2(view->toPlainText().contains("tarvo.xyz"), qUtf8Printable(format->currentText()));
    }
    format->setCurrentIndex(2);
    child<QAction>("actionInspectionUpdate")->trigger();
    QVERIFY(view->toHtml().contains("data:image/png"));
    ModalScript refused({ModalScript::press("OK")});
    QMetaObject::invokeMethod(view, "anchorClicked", Q_ARG(QUrl, QUrl("file:///etc/passwd")));
    QCOMPARE(refused.answered(), 1u);
    ModalScript asked({ModalScript::press("No")});
    QMetaObject::invokeMethod(view, "anchorClicked", Q_ARG(QUrl, QUrl("https://example.org/")));
    QCOMPARE(asked.answered(), 1u);
    QCOMPARE(asked.texts().value(0), "Open this page in the web browser?\nhttps://example.org/");
    // Within the report nothing is asked.
    view->setHtml(QString("<p>line</p>").repeated(1000) + "<a name='end'>the end</a>");
    QCOMPARE(view->verticalScrollBar()->value(), 0);
    ModalScript never({ModalScript::press("OK")});
    QMetaObject::invokeMethod(view, "anchorClicked", Q_ARG(QUrl, QUrl("#end")));
    QCOMPARE(never.answered(), 0u);
    QVERIFY(view->verticalScrollBar()->value() > 0);
}

void TabsTest::statisticsAddUpToTheIndex() {
    showTab("tabPointIndex");
    run("actionPointIndexStats", {[this](QDialog* dialog) {
            QCOMPARE(dialog->windowTitle(), "Point Index Tree Statistics");
            auto* levels = in<QTreeWidget>(dialog, "treeStatistics");
            const auto* total = levels->topLevelItem(levels->topLevelItemCount() - 1);
            QCOMPARE(total->text(0), "Total");
            QCOMPARE(total->text(1), QLocale().toString(m_original.pointCount));
            QVERIFY(total->font(0).bold());
            ModalScript::press("OK")(dialog);
        }});
}

void TabsTest::commandsFindNodesOfTheIndex() {
    showTab("tabPointIndex");
    auto* filter = child<QComboBox>("PointIndexFilter");
    const auto boldItems = [this] {
        int count = 0;
        for (QTreeWidgetItemIterator it(tree("treePointIndexNodes")); *it; ++it)
            count += (*it)->font(0).bold();
        return count;
    };
    for (const char* command : {"FIND LARGEST LEAF", "find fullest leaf", "find largest node"}) {
        filter->lineEdit()->setText(command);
        child<QAction>("actionPointIndexFilterNodes")->trigger();
        QCOMPARE(boldItems(), 1);
    }
    // The same command selects the points of that leaf.
    showTab("tabPointData");
    child<QComboBox>("PointDataFilter")->lineEdit()->setText("find fullest leaf");
    const QString text = run("actionQuerySelectCount", {ModalScript::press("OK")}).value(0);
    QVERIFY2(text.endsWith(" points match the current filter expression."), qUtf8Printable(text));
    QVERIFY(!text.startsWith(QLocale().toString(m_original.pointCount)));
}

void TabsTest::rangeQueryGoesIntoTheFilter() {
    showTab("tabPointData");
    auto* menu = child<QToolButton>("buttonFilterMenu")->menu();
    QAction* range = nullptr;
    for (QAction* each : menu->actions())
        if (each->text() == "Insert range query...")
            range = each;
    QVERIFY(range && range->isEnabled());
    ModalScript script({[](QDialog* dialog) {
        auto* attribute = in<QComboBox>(dialog, "editPointAttribute");
        attribute->setCurrentIndex(attribute->findText("tarvo.xyz[2]"));
        auto* preview = in<QPlainTextEdit>(dialog, "editPreview");
        auto* tabs = in<QTabWidget>(dialog, "tabWidgetMode");
        tabs->setCurrentIndex(1);
        in<QLineEdit>(dialog, "editCenterValue")->setText("1.5");
        in<QLineEdit>(dialog, "editRadiusValue")->setText("x");
        QCOMPARE(preview->toPlainText(), "failed to parse center and/or radius!");
        in<QLineEdit>(dialog, "editCenterValue")->setText("10");
        in<QLineEdit>(dialog, "editRadiusValue")->setText("2");
        QCOMPARE(preview->toPlainText(), "(tarvo.xyz[2] >= 8) && (tarvo.xyz[2] <= 12)");
        tabs->setCurrentIndex(0);
        QTest::keyClicks(in<QLineEdit>(dialog, "editLowerBoundValue"), "1");
        QTest::keyClicks(in<QLineEdit>(dialog, "editUpperBoundValue"), "5");
        QTest::mouseClick(
            in<QCheckBox>(dialog, "editUpperBoundInclusive"), Qt::LeftButton, {},
            QPoint(8, in<QCheckBox>(dialog, "editUpperBoundInclusive")->height() / 2));
        QCOMPARE(preview->toPlainText(), "(tarvo.xyz[2] >= 1) && (tarvo.xyz[2] < 5)");
        ModalScript::press("OK")(dialog);
    }});
    range->trigger();
    QCOMPARE(script.answered(), 1u);
    QCOMPARE(child<QComboBox>("PointDataFilter")->currentText(),
             "(tarvo.xyz[2] >= 1) && (tarvo.xyz[2] < 5) ");
}

void TabsTest::findBarGoesThroughTheHits() {
    showTab("tabPointData");
    child<QAction>("actionQuerySelectNext")->trigger();
    QCOMPARE(tree("treePointData")->topLevelItemCount(), 100);
    child<QAction>("actionQuerySelectFind")->trigger();
    auto* edit = child<QLineEdit>("editFind");
    QTRY_VERIFY(edit->isVisible());
    QTest::keyClicks(edit, "no such text");
    QCOMPARE(child<QLabel>("labelFind")->text(), "no hits");
    edit->clear();
    // The row numbers 42 is in: hidden columns left out, at least that one cell.
    QTest::keyClicks(edit, "42");
    const QString first = child<QLabel>("labelFind")->text();
    QVERIFY2(first.startsWith("1 of ") || first.contains(" of "), qUtf8Printable(first));
    const QModelIndex start = tree("treePointData")->currentIndex();
    QTest::keyClick(edit, Qt::Key_Return);
    QTest::keyClick(edit, Qt::Key_F3, Qt::ShiftModifier);
    QCOMPARE(tree("treePointData")->currentIndex(), start);
    QVERIFY(tree("treePointData")->currentItem()->text(start.column()).contains("42"));
    QTest::keyClick(edit, Qt::Key_Escape);
    QVERIFY(!edit->isVisible());
    QVERIFY(child<QAction>("actionQuerySelectCancel")->isEnabled());  // the query goes on
}

void TabsTest::headersSortAndLeadBack() {
    showTab("tabPointData");
    child<QAction>("actionQuerySelectNext")->trigger();
    auto* points = tree("treePointData");
    const auto click = [](QTreeWidget* list, int column) {
        auto* header = list->header();
        QTest::mouseClick(
            header->viewport(), Qt::LeftButton, {},
            QPoint(header->sectionViewportPosition(column) + 12, header->height() / 2));
    };
    const auto height = [points](int row) { return points->topLevelItem(row)->text(3).toDouble(); };
    QCOMPARE(points->headerItem()->text(3), "tarvo.xyz[2]");
    QCOMPARE(points->topLevelItem(0)->text(0), "1");
    click(points, 3);
    const bool ascending = height(0) <= height(99);
    for (int row = 1; row < 100; ++row)
        QVERIFY(ascending ? height(row - 1) <= height(row) : height(row - 1) >= height(row));
    click(points, 3);
    QVERIFY(ascending ? height(0) >= height(99) : height(0) <= height(99));
    click(points, 0);
    if (points->topLevelItem(0)->text(0) != "1")
        click(points, 0);
    QCOMPARE(points->topLevelItem(0)->text(0), "1");
    QCOMPARE(points->topLevelItem(99)->text(0), "100");

    showTab("tabPointIndex");
    auto* details = tree("treePointIndexDetails");
    QCOMPARE(details->headerItem()->text(1), "Value (full)");
    click(details, 1);
    QCOMPARE(details->headerItem()->text(1), "Value (cleaned)");
    click(details, 1);
    QCOMPARE(details->headerItem()->text(1), "Value (full)");

    // Within their groups, until they are shown anew.
    showTab("tabPointAttributes");
    auto* attributes = tree("treePointAttributes");
    const auto texts = [attributes](int column) {
        QList<QStringList> groups;
        for (int i = 0; i < attributes->topLevelItemCount(); ++i) {
            groups += QStringList();
            for (int k = 0; k < attributes->topLevelItem(i)->childCount(); ++k)
                groups.last() += attributes->topLevelItem(i)->child(k)->text(column);
        }
        return groups;
    };
    const QList<QStringList> ranked = texts(0);
    for (const bool descending : {false, true}) {
        click(attributes, 1);
        for (const QStringList& group : texts(1)) {
            QStringList sorted = group;
            sorted.sort(Qt::CaseInsensitive);
            if (descending)
                std::reverse(sorted.begin(), sorted.end());
            QCOMPARE(group, sorted);
        }
        QVERIFY(texts(0) != ranked);
    }
    run("actionReload", {});
    QCOMPARE(texts(0), ranked);
}

void TabsTest::levelOfDetailIsBuiltAndCanBeCancelled() {
    constexpr int never = 101;
    const auto apply = [](int cancelAt, int size) -> Step {
        return [=](QDialog* dialog) {
            in<QComboBox>(dialog, "editLodMode")->setCurrentIndex(0);
            QVERIFY(!in<QComboBox>(dialog, "editLodSizeCombine")->isEnabled());
            in<QSpinBox>(dialog, "editLodSizeThinout")->setValue(size);
            // As a close request in the middle of the work.
            auto* working = static_cast<WorkingDialog*>(dialog);
            connect(
                working, &WorkingDialog::update_progress, working,
                [=](int percent) {
                    if (percent >= cancelAt)
                        working->reject();
                },
                Qt::DirectConnection);
            ModalScript::press("Apply")(dialog);
            QVERIFY(dialog->isVisible());
            dialog->disconnect(SIGNAL(update_progress(int)));
            ModalScript::press("Close")(dialog);
        };
    };
    const Step ok = ModalScript::press("OK");
    QCOMPARE(run("actionManagementLevelOfDetail", {apply(0, 30), ok}),
             QStringList("Update cancelled."));
    QCOMPARE(child<QLineEdit>("editLevelOfDetail")->text(), "disabled");
    QCOMPARE(child<QLabel>("labelTransactions")->text(), "Transactions: 3, Current transaction: 3");
    QVERIFY(run("actionManagementLevelOfDetail", {apply(never, 30), ok})
                .value(0)
                .startsWith("Successfully finished!\n\nDuration: "));
    QCOMPARE(child<QLineEdit>("editLevelOfDetail")->text(),
             "mode: thinout, size: up to 30 % of the original points");
    QCOMPARE(child<QLineEdit>("editPointsTotal")->text(),
             QLocale().toString(m_original.pointCount));

    // A request that comes when the change is made can't cancel it.
    QVERIFY(run("actionManagementLevelOfDetail", {apply(100, 20), ok})
                .value(0)
                .startsWith("Successfully finished!"));
    QCOMPARE(child<QLineEdit>("editLevelOfDetail")->text(),
             "mode: thinout, size: up to 20 % of the original points");
}

void TabsTest::validationTellsWhatItFinds() {
    const auto validate = [](const QString& schema, QString* result) -> Step {
        return [=](QDialog* dialog) {
            QVERIFY(in<QComboBox>(dialog, "listSchema")->currentText() == "qrbx");
            QVERIFY(in<QPlainTextEdit>(dialog, "editSchema")->toPlainText().contains("tarvo.xyz"));
            if (!schema.isEmpty())
                in<QPlainTextEdit>(dialog, "editSchema")->setPlainText(schema);
            ModalScript::press("Validate")(dialog);
            *result = in<QPlainTextEdit>(dialog, "editResult")->toPlainText();
            ModalScript::press("Close")(dialog);
        };
    };
    QString result;
    run("actionValidate", {validate(R"({"identifier": "own", "extension": "own",
        "attributes": ["tarvo.id"], "metadata": ["own.note"]})",
                                    &result)});
    QCOMPARE(result, "No problems detected!");
    run("actionValidate", {validate(R"({"identifier": "own", "extension": "own",
        "attributes": ["tarvo.xyz*", "tarvo.temperature"], "metadata": ["tarvo.device"]})",
                                    &result),
                           ModalScript::press("OK")});
    QVERIFY(result.contains("tarvo.temperature") && result.contains("tarvo.device"));
    QVERIFY(!result.contains("No problems detected!"));
    run("actionValidate", {validate("{", &result), ModalScript::press("OK")});
}

void TabsTest::methodTextsAreTakenApart() {
    using namespace tarvo::core;
    QCOMPARE(parseLodMethod("").method, std::string("default"));
    QCOMPARE(parseLodMethod("thinout").method, std::string("thinout"));
    QCOMPARE(parseLodMethod("{\"method\": \"first\"} rest").method, std::string("first"));
    QCOMPARE(parseLodMethod("\"first\" rest").remainder, std::string(" rest"));
    const auto messageOf = [](const std::string& text) {
        try {
            parseLodMethod(text);
        } catch (const std::exception& error) {
            return std::string(error.what());
        }
        return std::string();
    };
    QCOMPARE(messageOf("[1,2]"), std::string("JSON object or JSON string expected"));
    QCOMPARE(messageOf("{\"method\": 5}"),
             std::string("Failed to convert field \"method\" from number to string value"));
    QVERIFY(
        QString::fromStdString(messageOf("{\"a\"")).startsWith("Failed to parse JSON string: "));
    tarvo::rapidjson::Document object;
    object.SetObject();
    QCOMPARE(jsonTypeName(object), std::string("unknown type"));
}

GUI_TEST_MAIN(TabsTest)
#include "tabstest.moc"
