// Metadata items and points that go into files and come from them, and values that go to the
// clipboard.

#include "tests/window/filecontents.h"
#include "tests/window/guitestmain.h"
#include "tests/window/samplestate.h"
#include "tests/window/sampletest.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QMessageBox>
#include <QProgressDialog>
#include <QTreeWidget>
#include <QtTest>

using namespace tarvo::window;

namespace {

void doubleClick(QTreeWidget* tree, QTreeWidgetItem* item, int column) {
    const QModelIndex index = tree->indexFromItem(item, column);
    tree->scrollTo(index);
    const QPoint place = tree->visualRect(index).center();
    QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, place);
    QTest::mouseDClick(tree->viewport(), Qt::LeftButton, {}, place);
}

}  // namespace

class TransferTest : public SampleTest {
    Q_OBJECT

private slots:
    void cancelledImportTakesEverythingBack();
    void failedImportKeepsWhatCameBefore();
    void importWithoutTransactionIsRefusedOnce();
    void exportedItemsAreJsonInTheirOrder();
    void importTellsEveryName();
    void exportedPointsHaveEveryElement();
    void exportThatFailsIsTold();
    void doubleClicksCopyWhatTheyHit();
};

void TransferTest::cancelledImportTakesEverythingBack() {
    const SampleWindow window(m_sample->copy());
    window.begin();
    window.database().metaData().createSignature("own.note", 1, {1, 2, 3});
    window.run("actionTransactionCommit", {ModalScript::press("OK")});
    window.begin();
    window.driver().showTab("tabMetaData");
    const QStringList before = stateOf(window);
    // The dialog comes up after a while only: as many items as that takes.
    bool came = false;
    for (int items = 20'000; !came && items < 3'000'000; items *= 3) {
        QByteArray text = "{\"own.note\":\"changed\",\"own.twice\":\"1\",\"own.twice\":\"2\"";
        for (int i = 0; i < items; ++i)
            text += ",\"own.item." + QByteArray::number(i) + "\":\"" + QByteArray::number(i) + '"';
        const QString file = written(m_sample->path("many.json"), text + '}');
        ModalScript script(
            {ModalScript::chooseFile(file), ModalScript::onProgress([&](QDialog* dialog) {
                 came = qobject_cast<QProgressDialog*>(dialog);
                 ModalScript::press(came ? "Cancel" : "OK")(dialog);
             })});
        window.child<QAction>("actionMetaDataImport")->trigger();
        QCOMPARE(script.answered(), 2u);
        QCOMPARE(script.texts().isEmpty(), came);  // nothing is told about what the user did
        if (!came) {
            // Begin anew.
            window.run("actionTransactionRollback", {ModalScript::press("Yes")});
            window.begin();
        }
    }
    QVERIFY(came);
    QVERIFY(!QApplication::activeModalWidget() && !QApplication::overrideCursor());
    QCOMPARE(stateOf(window), before);
    QCOMPARE(window.child<QTreeWidget>("treeMetaData")->topLevelItemCount(), 8);
    QVERIFY(window.database().metaData().verifySignature("own.note", 1, {1, 2, 3}));
}

void TransferTest::failedImportKeepsWhatCameBefore() {
    const SampleWindow window(m_sample->copy());
    window.begin();
    window.driver().showTab("tabMetaData");
    const QString file = written(m_sample->path("part.json"),
                                 R"({"own.first": "1", "": "no name", "own.last": "2"})");
    const QStringList texts = window.run("actionMetaDataImport",
                                         {ModalScript::chooseFile(file), ModalScript::press("OK")});
    QCOMPARE(texts.size(), 1);
    QVERIFY(!texts[0].startsWith("Import successfully"));
    QVERIFY(window.driver().select("treeMetaData", "own.first"));
    QVERIFY(!window.driver().select("treeMetaData", "own.last"));
}

void TransferTest::importWithoutTransactionIsRefusedOnce() {
    const SampleWindow window(m_sample->copy());
    window.driver().showTab("tabMetaData");
    const QStringList before = stateOf(window);
    const QString file = written(m_sample->path("two.json"), R"({"own.a": "1", "own.b": "2"})");
    const QStringList texts = window.run("actionMetaDataImport",
                                         {ModalScript::chooseFile(file), ModalScript::press("OK")});
    QVERIFY2(texts.value(0).contains("transaction"), qUtf8Printable(texts.value(0)));
    QCOMPARE(stateOf(window), before);
}

void TransferTest::exportedItemsAreJsonInTheirOrder() {
    const SampleWindow window(m_sample->copy());
    select(window, "tabMetaData", "treeMetaData", {"own.text", "own.note", "own.empty"});
    const QString file = m_sample->path("items.json");
    QFile::remove(file);
    QCOMPARE(window.run("actionMetaDataExport",
                        {ModalScript::chooseFile(file), ModalScript::press("OK")}),
             QStringList("Export successfully finished."));
    const QByteArray text = contentsOf(file);
    QByteArray compact = text;
    QCOMPARE(compact.replace('\n', "").replace(" ", ""),
             QByteArray(R"({"own.text":"no{JSON","own.note":{"a":[1,2.50]},"own.empty":""})"));
    QVERIFY2(text.contains("\n    \"own.note\""), text.constData());  // indented

    // And back.
    window.begin();
    select(window, "tabMetaData", "treeMetaData", {"own.text", "own.empty"});
    window.run("actionMetaDataRemove", {ModalScript::press("Yes")});
    QCOMPARE(window.run("actionMetaDataImport",
                        {ModalScript::chooseFile(file), ModalScript::press("OK")}),
             QStringList("Import successfully finished.\n\nItems added: own.text, own.empty\n"
                         "Items updated: (none)\nItems unchanged: own.note"));
    const auto& metaData = window.database().metaData();
    QCOMPARE(metaData.get("own.text"), std::string("no { JSON"));
    QCOMPARE(metaData.get("own.empty", "missing"), std::string());
    window.run("actionTransactionCommit", {ModalScript::press("OK")});
    QVERIFY(!window.database().transactions().pending());
}

// The box those that it has room for, and the details all.
void TransferTest::importTellsEveryName() {
    const SampleWindow window(m_sample->copy());
    window.begin();
    window.driver().showTab("tabMetaData");
    for (const int items : {30, 31, 40}) {
        QByteArray text = "{\"own.signed\": \"" + QByteArray::number(items) + '"';
        QStringList names;
        for (int i = 0; i < items; ++i) {
            names += QString("own.%0.%1").arg(items).arg(i);
            text += ", \"" + names.last().toUtf8() + "\": \"\"";
        }
        QString details;
        const QStringList told =
            window.run("actionMetaDataImport",
                       {ModalScript::chooseFile(written(m_sample->path("names.json"), text + '}')),
                        [&](QDialog* dialog) {
                            details = qobject_cast<QMessageBox*>(dialog)->detailedText();
                            ModalScript::press("OK")(dialog);
                        }});
        const QString more = items > 30 ? QString(" and %0 more").arg(items - 30) : QString();
        // Its signature is gone with the first one.
        const QString lost = items == 30 ? "\nItems no longer signed: own.signed" : "";
        QCOMPARE(told, QStringList("Import successfully finished.\n\nItems added: " +
                                   names.mid(0, 30).join(", ") + more +
                                   "\nItems updated: own.signed" + lost));
        QCOMPARE(details, items > 30 ? "Items added:\n" + names.join('\n') + '\n' : QString());
    }
}

// Also those beyond what the table shows.
void TransferTest::exportedPointsHaveEveryElement() {
    const SampleWindow window(m_sample->copy());
    window.driver().showTab("tabPointData");
    window.run("actionColumnsShowAll", {});
    const QString file = m_sample->path("elements.csv");
    window.run("actionQuerySelectExport",
               {ModalScript::chooseFile(file), ModalScript::press("OK")});
    const QByteArrayList lines = contentsOf(file).split('\n');
    for (int i = 0; i < 12; ++i)
        QVERIFY(lines[0].split(',').contains(QString("own.vector[%0]").arg(i).toUtf8()));
    QCOMPARE(lines[1].count(','), lines[0].count(','));
}

void TransferTest::exportThatFailsIsTold() {
    const SampleWindow window(m_sample->copy());
    select(window, "tabMetaData", "treeMetaData", {"own.text"});
    const QString nowhere = m_sample->path("no/such/folder/file");
    for (const char* action : {"actionMetaDataExport", "actionQuerySelectExport"}) {
        const QStringList texts =
            window.run(action, {ModalScript::chooseFile(nowhere), ModalScript::press("OK")});
        QVERIFY2(texts.value(0).startsWith("Failed to open export file."),
                 qUtf8Printable(texts.value(0)));
    }
    QVERIFY(!QApplication::overrideCursor());
}

void TransferTest::doubleClicksCopyWhatTheyHit() {
    const SampleWindow window(m_sample->copy());
    window.driver().showTab("tabPointIndex");
    auto* details = window.child<QTreeWidget>("treePointIndexDetails");
    QVERIFY(window.driver().select("treePointIndexDetails", "tarvo.id"));
    auto* id = details->findItems("tarvo.id", Qt::MatchExactly).value(0);
    QVERIFY(id);
    doubleClick(details, id->child(1), 1);
    QCOMPARE(QApplication::clipboard()->text(), id->child(1)->text(1));
    doubleClick(details, id->child(1), 0);
    QCOMPARE(QApplication::clipboard()->text(), "Maximum:");

    window.driver().showTab("tabPointData");
    window.run("actionQuerySelectNext", {});
    auto* points = window.child<QTreeWidget>("treePointData");
    doubleClick(points, points->topLevelItem(2), 0);
    QCOMPARE(QApplication::clipboard()->text(), "3");
    doubleClick(points, points->topLevelItem(2), 2);
    QCOMPARE(QApplication::clipboard()->text(),
             "tarvo.xyz[1] = " + points->topLevelItem(2)->text(2));
}

GUI_TEST_MAIN(TransferTest)
#include "transfertest.moc"
