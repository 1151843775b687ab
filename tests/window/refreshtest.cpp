// What stays as it was when the window shows its database anew, and what begins afresh with another
// one.

#include "qrb/loader.h"
#include "tests/window/guitestmain.h"
#include "tests/window/samplewindow.h"

#include <QAction>
#include <QComboBox>
#include <QFile>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QTabWidget>
#include <QTextBrowser>
#include <QTreeWidget>
#include <QtTest>
#include <memory>

using namespace tarvo::window;

namespace {

// In the tab of the index, which has to be shown.
QString firstLeaf(const SampleWindow& window) {
    const auto leaves = window.child<QTreeWidget>("treePointIndexNodes")
                            ->findItems("leaf", Qt::MatchExactly | Qt::MatchRecursive, 1);
    return leaves.isEmpty() ? QString() : leaves.first()->text(0);
}

}  // namespace

class RefreshTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase() { tarvo::qrb::freeLibrary(); }

    void changesOfOtherTabsEndNoQuery();
    void queryEndsWithWhatItAsksFor();
    void reloadKeepsTheFilterOfTheNodes();
    void removalThatFailsHalfwayIsShown();
    void signatureIsShownAtOnce();
    void closedTextFileIsForgotten();
    void anotherDatabaseBeginsAfresh();
    void commitsOfOthersAreTold();
    void whatOthersWroteIsNotWrittenOverUnasked();

private:
    std::unique_ptr<SampleDatabase> m_sample;
};

void RefreshTest::initTestCase() {
    tarvo::qrb::loadLibrary("");
    m_sample = std::make_unique<SampleDatabase>();
    QVERIFY2(m_sample->error().isEmpty(), qUtf8Printable(m_sample->error()));
}

void RefreshTest::changesOfOtherTabsEndNoQuery() {
    const SampleWindow window(m_sample->copy());
    window.driver().showTab("tabPointData");
    window.child<QComboBox>("PointDataFilter")->lineEdit()->setText("tarvo.id > 0");
    const auto* points = window.child<QTreeWidget>("treePointData");
    window.run("actionQuerySelectNext", {});
    window.begin();
    window.run("actionTransactionRollback", {ModalScript::press("Yes")});
    window.driver().showTab("tabPointIndex");
    window.child<QComboBox>("PointIndexFilter")->lineEdit()->setText("2");
    window.run("actionPointIndexFilterNodes", {});
    QVERIFY(window.child<QAction>("actionQuerySelectCancel")->isEnabled());
    QCOMPARE(points->topLevelItemCount(), 100);
    QCOMPARE(window.child<QComboBox>("PointDataFilter")->currentText(), "tarvo.id > 0");
    window.run("actionQuerySelectNext", {});
    QCOMPARE(points->topLevelItemCount(), 200);  // goes on
}

// Or the next page would go on with points that were not asked for.
void RefreshTest::queryEndsWithWhatItAsksFor() {
    const SampleWindow window(m_sample->copy());
    window.driver().showTab("tabPointIndex");
    const QString leaf = firstLeaf(window);
    window.driver().showTab("tabPointData");
    auto* filter = window.child<QComboBox>("PointDataFilter");
    auto* nodes = window.child<QLineEdit>("editPointDataNodes");
    const auto* points = window.child<QTreeWidget>("treePointData");
    const auto* cancel = window.child<QAction>("actionQuerySelectCancel");
    const struct {
        const char* what;
        std::function<void()> change;
        bool ends;
    } changes[] = {
        {"nodes typed", [&] { QTest::keyClicks(nodes, leaf); }, true},
        {"nodes emptied", [&] { nodes->clear(); }, true},
        {"filter typed", [&] { QTest::keyClicks(filter->lineEdit(), "tarvo.id < 50"); }, true},
        {"filter emptied", [&] { filter->lineEdit()->clear(); }, true},
        {"filter of the history", [&] { filter->setCurrentIndex(0); }, true},
        {"filter emptied again", [&] { filter->lineEdit()->clear(); }, true},
        {"columns hidden", [&] { window.run("actionColumnsHideAll", {}); }, false},
        {"columns sorted", [&] { window.run("actionColumnsSortByName", {}); }, false},
        {"columns shown", [&] { window.run("actionColumnsShowAll", {}); }, false},
        {"canceled", [&] { window.run("actionQuerySelectCancel", {}); }, true},
    };
    for (const auto& [what, change, ends] : changes) {
        if (cancel->isEnabled())
            window.run("actionQuerySelectCancel", {});
        window.run("actionQuerySelectNext", {});
        QVERIFY2(cancel->isEnabled() && points->topLevelItemCount() > 0, what);
        const int before = points->topLevelItemCount();
        change();
        QVERIFY2(cancel->isEnabled() != ends, what);
        // Begins anew or goes on.
        const std::string expression = filter->currentText().toStdString();
        auto query = nodes->text().isEmpty()
                         ? window.database().select(expression)
                         : window.database().select({nodes->text().toUInt()}, expression);
        const int page = static_cast<int>(query.next(100));
        window.run("actionQuerySelectNext", {});
        QVERIFY2(points->topLevelItemCount() == (ends ? page : before + page), what);
    }
}

void RefreshTest::reloadKeepsTheFilterOfTheNodes() {
    const SampleWindow window(m_sample->copy());
    window.driver().showTab("tabPointIndex");
    const auto* label = window.child<QLabel>("labelPointIndex");
    const QString whole = label->text();
    const QString leaf = firstLeaf(window);
    window.child<QComboBox>("PointIndexFilter")->lineEdit()->setText(leaf);
    window.run("actionPointIndexFilterNodes", {});
    const QString narrowed = label->text();
    QVERIFY(narrowed != whole && narrowed.contains("Leaves: 1,"));
    window.run("actionReload", {});
    QCOMPARE(label->text(), narrowed);
    // Neither one that was refused
    window.child<QComboBox>("PointIndexFilter")->lineEdit()->setText("1 +");
    QCOMPARE(window.run("actionPointIndexFilterNodes", {ModalScript::press("OK")}).size(), 1);
    window.run("actionReload", {});
    QCOMPARE(label->text(), narrowed);
    // nor what was typed but not applied yet is the filter.
    window.child<QComboBox>("PointIndexFilter")->lineEdit()->setText("");
    window.run("actionReload", {});
    QCOMPARE(label->text(), narrowed);
    window.run("actionPointIndexFilterNodes", {});
    QCOMPARE(label->text(), whole);
}

// The list shows what is left, not what was there.
void RefreshTest::removalThatFailsHalfwayIsShown() {
    const SampleWindow window(m_sample->copy());
    window.begin();
    window.driver().showTab("tabPointAttributes");
    QVERIFY(window.driver().select("treePointAttributes", "own.single"));
    QVERIFY(window.driver().select("treePointAttributes", "tarvo.xyz[3]*", true));
    window.run("actionPointAttributeRemove", {ModalScript::press("Yes"), ModalScript::press("OK")});
    QVERIFY(!window.database().pointAttributes().exists("own.single"));
    QVERIFY(!window.driver().select("treePointAttributes", "own.single"));
    QVERIFY(window.driver().select("treePointAttributes", "tarvo.xyz[3]*"));
}

void RefreshTest::signatureIsShownAtOnce() {
    const SampleWindow window(m_sample->copy());
    window.begin();
    window.driver().showTab("tabMetaData");
    const auto colour = [&] {
        return window.driver().select("treeMetaData", "own.text")->foreground(0).color();
    };
    const QColor plain = colour();
    for (const char* button : {"Create Signature", "Delete Signature"}) {
        const bool creates = button[0] == 'C';
        std::vector<ModalScript::Step> steps = {[button](QDialog* dialog) {
            in<QPlainTextEdit>(dialog, "editKey")->setPlainText("0a 1b");
            ModalScript::press(button)(dialog);
            ModalScript::press("Close")(dialog);
        }};
        if (!creates)
            steps.push_back(ModalScript::press("Yes"));
        steps.push_back(ModalScript::press("OK"));
        window.run("actionMetaDataSignature", std::move(steps));
        QCOMPARE(colour() != plain, creates);
    }
}

void RefreshTest::closedTextFileIsForgotten() {
    const SampleWindow window{QString()};
    QFile file(m_sample->path("log.txt"));
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write("[#1] one\n") > 0);
    file.close();
    window.window().openFile(file.fileName());
    QCOMPARE(window.child<QLabel>("labelStatus")->text(), file.fileName());
    window.run("actionClose", {});
    QCOMPARE(window.child<QLabel>("labelStatus")->text(), "no database opened");
    QVERIFY(!window.child<QAction>("actionClose")->isEnabled());
    QCOMPARE(window.child<QPlainTextEdit>("editChangelog")->toPlainText(), "");
}

void RefreshTest::anotherDatabaseBeginsAfresh() {
    const SampleWindow window(m_sample->copy("first.qrbx"));
    const QString second = m_sample->copy("second.qrbx");
    for (const bool close : {false, true}) {
        window.driver().showTab("tabPointIndex");
        const QString whole = window.child<QLabel>("labelPointIndex")->text();
        const QString leaf = firstLeaf(window);
        window.child<QComboBox>("PointIndexFilter")->lineEdit()->setText(leaf);
        window.run("actionPointIndexFilterNodes", {});
        window.driver().showTab("tabInspection");
        window.run("actionInspectionUpdate", {});
        window.driver().showTab("tabPointData");
        window.child<QLineEdit>("editPointDataNodes")->setText(leaf);
        window.run("actionQuerySelectNext", {});
        auto* points = window.child<QTreeWidget>("treePointData");
        QVERIFY(points->topLevelItemCount() > 0);
        points->sortByColumn(0, Qt::DescendingOrder);
        if (close)
            window.run("actionClose", {});
        else
            window.window().openDatabase(second, true);
        QCOMPARE(window.child<QLineEdit>("editPointDataNodes")->text(), "");
        QCOMPARE(points->topLevelItemCount(), 0);
        QCOMPARE(points->columnCount(), 1);
        QCOMPARE(points->header()->sortIndicatorSection(), -1);
        QCOMPARE(window.child<QLabel>("labelPointData")->text(), "");
        QCOMPARE(window.child<QProgressBar>("progressPointData")->value(), 0);
        QCOMPARE(window.child<QTextBrowser>("textInspectionResult")->toPlainText(), "");
        QCOMPARE(window.child<QPlainTextEdit>("editChangelog")->toPlainText().isEmpty(), close);
        if (close)
            continue;
        QCOMPARE(window.child<QComboBox>("PointIndexFilter")->currentText(), "");
        window.driver().showTab("tabPointIndex");
        QCOMPARE(window.child<QLabel>("labelPointIndex")->text(), whole);
    }
    for (const char* label : {"labelTransactions", "labelMetaData", "labelPointAttributes",
                              "labelPointIndex", "labelPointData"})
        QCOMPARE(window.child<QLabel>(label)->text(), "");
    QCOMPARE(window.child<QTabWidget>("tabWidget")->currentWidget()->objectName(), "tabDatabase");
}

void RefreshTest::commitsOfOthersAreTold() {
    const QString name = m_sample->copy();
    const SampleWindow window(name);
    const auto* status = window.child<QLabel>("labelStatus");
    const auto* list = window.child<QTreeWidget>("treeTransactions");
    const QString whole = status->text();
    const int shown = list->topLevelItemCount();
    window.window().activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&window.window()));
    // What the window writes itself is none of that.
    window.begin();
    window.database().metaData().set("own.more", "1");
    QEvent look(QEvent::ActivationChange);
    QCoreApplication::sendEvent(&window.window(), &look);
    QCOMPARE(status->text(), whole);
    window.run("actionTransactionRollback", {ModalScript::press("Yes")});
    QCOMPARE(status->text(), whole);
    {
        const tarvo::qrb::Context context("OFF", "");
        tarvo::qrb::Pointcloud other(context);
        other.open(name.toStdString(), tarvo::qrb::pointcloud::OpenSettings(context));
        tarvo::qrb::pointcloud::TransactionGuard change(other.transactions(), "Other", "test");
        other.metaData().set("own.more", "1");
        change.commit();
    }
    window.window().activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&window.window()));
    const QString told = whole + " (written elsewhere since it was read; F5 reads it anew)";
    QTRY_COMPARE_WITH_TIMEOUT(status->text(), told, 10000);
    QCOMPARE(list->topLevelItemCount(), shown);
    window.run("actionReload", {});
    QCOMPARE(status->text(), whole);
    QCOMPARE(list->topLevelItemCount(), shown + 1);
}

void RefreshTest::whatOthersWroteIsNotWrittenOverUnasked() {
    const QString file = m_sample->copy();
    const SampleWindow window(file);
    const auto elsewhere = [&](const std::function<void(tarvo::qrb::Pointcloud&)>& work) {
        const tarvo::qrb::Context context("OFF", "");
        tarvo::qrb::Pointcloud other(context);
        other.open(file.toStdString(), tarvo::qrb::pointcloud::OpenSettings(context));
        tarvo::qrb::pointcloud::TransactionGuard guard(other.transactions(), "meanwhile", "tests");
        work(other);
        guard.commit();
    };
    window.driver().showTab("tabMetaData");
    QVERIFY(window.driver().select("treeMetaData", "own.text"));
    const QStringList asked = window.run(
        "actionMetaDataEdit", {[&](QDialog* dialog) {
                                   elsewhere([](tarvo::qrb::Pointcloud& other) {
                                       other.metaData().set("own.text", "theirs");
                                   });
                                   in<QPlainTextEdit>(dialog, "editValue")->setPlainText("mine {");
                                   ModalScript::press("OK")(dialog);
                               },
                               ModalScript::press("Yes"),  // begin a transaction
                               ModalScript::press("No"), ModalScript::press("Cancel"),
                               ModalScript::press("Yes")});  // drop what was typed
    QVERIFY2(asked.join('|').contains("\"own.text\" was changed elsewhere"),
             qUtf8Printable(asked.join('|')));
    QCOMPARE(window.database().metaData().get("own.text"), std::string("theirs"));
    window.run("actionTransactionRollback", {ModalScript::press("Yes")});

    window.driver().showTab("tabPointAttributes");
    QVERIFY(window.driver().select("treePointAttributes", "own.single"));
    const QStringList again = window.run("actionPointAttributeEdit",
                                         {[&](QDialog* dialog) {
                                              elsewhere([](tarvo::qrb::Pointcloud& other) {
                                                  auto attribute =
                                                      other.pointAttributes().get("own.single");
                                                  attribute.title = "theirs";
                                                  other.pointAttributes().put(attribute);
                                              });
                                              in<QLineEdit>(dialog, "editTitle")->setText("mine");
                                              ModalScript::press("OK")(dialog);
                                          },
                                          ModalScript::press("Yes"), ModalScript::press("Yes")});
    QVERIFY2(again.join('|').contains("\"own.single\" was changed elsewhere"),
             qUtf8Printable(again.join('|')));
    QCOMPARE(window.database().pointAttributes().get("own.single").title, std::string("mine"));
}

GUI_TEST_MAIN(RefreshTest)
#include "refreshtest.moc"
