// The editor of metadata items: what is typed is checked, and not dropped unasked.

#include "catalogue/catalogue.h"
#include "core/json.h"
#include "tests/window/guitestmain.h"
#include "tests/window/metadataediting.h"

#include <QComboBox>
#include <QCompleter>
#include <QDialogButtonBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QTextBlock>
#include <QtTest>

using namespace tarvo::window;

class MetaDataEditorTest : public MetaDataEditingTest {
    Q_OBJECT

private slots:
    void itemIsAddedFromTheExample();
    void itemIsEditedAndChecked();
    void findingsAreListedWholeAndLeadToTheirLines();
    void brokenValueOfDefaultItemIsAskedAbout();
    void textsAndOwnSchemasAreTakenAsTheyAre();
    void changesAreNotDroppedUnasked();
    void refusedItemComesUpAgain();
    void everyExampleSatisfiesItsSchema();
};

void MetaDataEditorTest::itemIsAddedFromTheExample() {
    driver().showTab("tabMetaData");
    begin();
    run("actionMetaDataAdd", {[](QDialog* dialog) {
            auto* name = in<QComboBox>(dialog, "editName");
            auto* ok = dialog->findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok);
            QVERIFY(!ok->isEnabled());
            QTest::keyClicks(name->lineEdit(), "tarvo.geo_tag");
            QCOMPARE(in<QLabel>(dialog, "labelName")->text(), "This item exists already.");
            QVERIFY(!ok->isEnabled());
            name->lineEdit()->selectAll();
            QTest::keyClicks(name->lineEdit(), "own.x");
            QCOMPARE(in<QLabel>(dialog, "labelTitle")->text(),
                     "Not a TARVO default metadata entry.");
            // Completion finds the middle of a name.
            name->completer()->setCompletionPrefix("mosph");
            QCOMPARE(name->completer()->currentCompletion(), "tarvo.atmosphere");
            name->completer()->setCompletionPrefix("tarvo.geo_tag");  // exists already
            QCOMPARE(name->completer()->currentCompletion(), "");
            name->lineEdit()->selectAll();
            QTest::keyClicks(name->lineEdit(), "tarvo.atmosphere");
            QVERIFY(in<QLabel>(dialog, "labelDescription")->isVisible());
            QVERIFY(in<JsonTextEdit>(dialog, "editSchema")->isReadOnly());
            in<QTabWidget>(dialog, "tabWidget")->setCurrentIndex(1);
            ModalScript::press("Use Example")(dialog);
            QTRY_COMPARE(state(dialog), "The value satisfies the schema.");
            ModalScript::press("OK")(dialog);
        }});
    const auto* tree = driver().child<QTreeWidget>("treeMetaData");
    QVERIFY(tree->currentItem());
    QCOMPARE(tree->currentItem()->text(0), "tarvo.atmosphere");
    commit();
    QCOMPARE(
        committed("tarvo.atmosphere"),
        tarvo::core::formattedJson(tarvo::catalogue::findMetaData("tarvo.atmosphere")->example));
}

void MetaDataEditorTest::itemIsEditedAndChecked() {
    begin();
    auto* item = driver().select("treeMetaData", "tarvo.geo_tag");
    QVERIFY(item);
    ModalScript script({[](QDialog* dialog) {
                            QVERIFY(!in<QComboBox>(dialog, "editName")->isEnabled());
                            // Shown formatted; each finding leads to its place.
                            auto* list = findings(dialog);
                            QCOMPARE(list->topLevelItemCount(), 4);
                            QCOMPARE(list->topLevelItem(0)->text(0), "3");
                            QCOMPARE(list->topLevelItem(0)->text(1), "/crs/epsg");
                            clickRow(list->topLevelItem(0));
                            QCOMPARE(pane(dialog)->textCursor().selectedText(), "5");
                            QTest::keyClicks(pane(dialog), "4978");
                            QTRY_COMPARE(list->topLevelItemCount(), 3);
                            QCOMPARE(list->topLevelItem(0)->text(1), "/pose");
                            ModalScript::press("OK")(dialog);
                            QVERIFY(dialog->isVisible());  // after "No"
                            type(dialog, "{\"crs\": {\"epsg\": 4978}");
                            QTRY_COMPARE(state(dialog).left(29), "Not JSON: line 1, column 23: ");
                            pane(dialog)->moveCursor(QTextCursor::Start);
                            ModalScript::press("Go there")(dialog);
                            QCOMPARE(pane(dialog)->textCursor().position(), 22);
                            QTest::keyClicks(pane(dialog), "}");
                            QTRY_COMPARE(state(dialog), "The value satisfies the schema.");
                            QVERIFY(!findings(dialog)->isVisible());
                            ModalScript::press("OK")(dialog);
                        },
                        ModalScript::press("No")});
    doubleClickRow(item);
    QCOMPARE(script.texts(),
             QStringList("The value does not satisfy the schema.\nSave it anyway?"));
    commit();
    QCOMPARE(committed("tarvo.geo_tag"), std::string("{\"crs\": {\"epsg\": 4978}}"));
}

void MetaDataEditorTest::findingsAreListedWholeAndLeadToTheirLines() {
    begin();
    run("actionMetaDataAdd", {[](QDialog* dialog) {
                                  in<QComboBox>(dialog, "editName")->setEditText("own.list");
                                  in<JsonTextEdit>(dialog, "editSchema")
                                      ->setPlainText(R"({"type": "array", "maxItems": 10,
                     "items": {"type": "object", "required": ["x"]}})");
                                  QStringList lines;
                                  for (int i = 0; i < 300; ++i)
                                      lines += i % 3 == 0 ? "{\"y\":\n1}" : "5";
                                  pane(dialog)->setPlainText("[" + lines.join(",\n") + "]");
                                  QTRY_COMPARE(state(dialog), "301 violations of the schema.");
                                  auto* list = findings(dialog);
                                  QCOMPARE(list->topLevelItemCount(), 301);
                                  QCOMPARE(list->topLevelItem(0)->text(1), "(whole value)");
                                  // Of a value of several lines only the first is marked. Return
                                  // leads to it and leaves the dialog open.
                                  QCOMPARE(list->topLevelItem(4)->text(1), "/3");
                                  QCOMPARE(list->topLevelItem(4)->text(0), "5");
                                  list->setCurrentItem(list->topLevelItem(4));
                                  list->setFocus();
                                  QTest::keyClick(list, Qt::Key_Return);
                                  QCOMPARE(pane(dialog)->textCursor().selectedText(), "{\"y\":");
                                  QCOMPARE(pane(dialog)->textCursor().blockNumber(), 4);
                                  QVERIFY(pane(dialog)->hasFocus());
                                  for (int i = 0; i < 1000; ++i)
                                      lines += "5";
                                  pane(dialog)->setPlainText("[" + lines.join(",\n") + "]");
                                  // Where the library stops, it says so.
                                  QTRY_COMPARE(list->topLevelItem(0)->text(2),
                                               "has more faults than those listed here");
                                  QVERIFY(list->topLevelItemCount() >= 400);
                                  QTest::keyClick(dialog, Qt::Key_Escape);
                              },
                              ModalScript::press("Yes")});
}

void MetaDataEditorTest::brokenValueOfDefaultItemIsAskedAbout() {
    begin();
    const QStringList texts =
        run("actionMetaDataAdd",
            {[](QDialog* dialog) {
                 auto* name = in<QComboBox>(dialog, "editName")->lineEdit();
                 QTest::keyClicks(name, "tarvo.atmosphere");
                 type(dialog, "epoch 5");
                 in<QTabWidget>(dialog, "tabWidget")->setCurrentIndex(1);
                 ModalScript::press("Use Example")(dialog);
                 QCOMPARE(pane(dialog)->text(), "epoch 5");  // after "No"
                 ModalScript::press("OK")(dialog);
                 QVERIFY(dialog->isVisible());
                 ModalScript::press("OK")(dialog);
             },
             ModalScript::press("No"), ModalScript::press("No"), ModalScript::press("Yes")});
    QCOMPARE(texts, QStringList({"Replace the value by the example?",
                                 "The value is not JSON.\nSave it as text?",
                                 "The value is not JSON.\nSave it as text?"}));
    commit();
    QCOMPARE(committed("tarvo.atmosphere"), std::string("epoch 5"));
}

void MetaDataEditorTest::textsAndOwnSchemasAreTakenAsTheyAre() {
    begin();
    QVERIFY(driver().select("treeMetaData", "own.text"));
    run("actionMetaDataEdit", {[](QDialog* dialog) {
            QVERIFY(state(dialog).endsWith(" The item will be kept as text."));
            type(dialog, "still no { JSON");
            ModalScript::press("OK")(dialog);
        }});
    run("actionMetaDataAdd", {[](QDialog* dialog) {
            QTest::keyClicks(in<QComboBox>(dialog, "editName")->lineEdit(), "own.list");
            type(dialog, "[1, \"a\"]");
            QTRY_COMPARE(state(dialog), "JSON. There is no schema to check it against.");
            auto* schema = in<JsonTextEdit>(dialog, "editSchema");
            QVERIFY(!schema->isReadOnly());
            schema->setPlainText("{\"items\": {\"type\": \"number\"}}");
            QTRY_COMPARE(findings(dialog)->topLevelItemCount(), 1);
            QCOMPARE(findings(dialog)->topLevelItem(0)->text(1), "/1");
            QTest::keyClicks(in<QComboBox>(dialog, "editName")->lineEdit(), "s");
            QVERIFY(!schema->text().isEmpty());
            // A name may hold what separates the place from the words in a line of text.
            schema->setPlainText(R"({"items": {"required": ["a: b"]}, "properties": {"x: /y":
                {"format": "iri", "type": "null"}}})");
            type(dialog, R"({"x: /y": 1})");
            QTRY_COMPARE(state(dialog),
                         "1 violation of the schema. The format \"iri\" is not checked.");
            QCOMPARE(findings(dialog)->topLevelItem(0)->text(1), "/x: ~1y");
            QCOMPARE(findings(dialog)->topLevelItem(0)->text(2), "expected null, found 1");
            type(dialog, "[1, \"a\"]");
            schema->setPlainText("{\"items\": 5}");
            QTRY_VERIFY(state(dialog).startsWith("The value can't be checked. The JSON schema "));
            QVERIFY(!findings(dialog)->isVisible());
            schema->setPlainText("{\"items\": ");
            QTRY_VERIFY(state(dialog).startsWith("The schema is not JSON: line 1, column 11: "));
            schema->setPlainText("{\"items\": {\"type\": [\"number\", \"string\"]}}");
            QTRY_COMPARE(state(dialog), "The value satisfies the schema.");
            ModalScript::press("OK")(dialog);
        }});
    commit();
    QCOMPARE(committed("own.text"), std::string("still no { JSON"));
    QCOMPARE(committed("own.lists"), std::string("[1, \"a\"]"));
}

void MetaDataEditorTest::changesAreNotDroppedUnasked() {
    begin();
    QVERIFY(driver().select("treeMetaData", "own.text"));
    const QStringList texts =
        run("actionMetaDataEdit", {[](QDialog* dialog) {
                                       type(dialog, "x");
                                       QTest::keyClick(dialog, Qt::Key_Escape);
                                       QVERIFY(dialog->isVisible());
                                       dialog->close();
                                   },
                                   ModalScript::press("No"), ModalScript::press("Yes")});
    QCOMPARE(texts, QStringList({"Discard the changes?", "Discard the changes?"}));
    run("actionMetaDataEdit", {ModalScript::press("Cancel")});
    // A value without a name, a name without a value.
    for (const bool named : {false, true}) {
        const auto typed = [named](QDialog* dialog) {
            if (named)
                QTest::keyClicks(in<QComboBox>(dialog, "editName")->lineEdit(), "own.new");
            else
                type(dialog, "x");
            QTest::keyClick(dialog, Qt::Key_Escape);
        };
        QCOMPARE(run("actionMetaDataAdd", {typed, ModalScript::press("Yes")}),
                 QStringList("Discard the changes?"));
    }
    commit();
    QCOMPARE(committed("own.text"), std::string("no { JSON"));
}

void MetaDataEditorTest::refusedItemComesUpAgain() {
    driver().showTab("tabMetaData");
    QVERIFY(driver().select("treeMetaData", "own.text"));
    const QStringList texts =
        run("actionMetaDataEdit", {[](QDialog* dialog) {
                                       QVERIFY(in<QLabel>(dialog, "labelTransaction")->isVisible());
                                       type(dialog, "typed with care");
                                       ModalScript::press("OK")(dialog);
                                   },
                                   ModalScript::press("No"),
                                   [](QDialog* dialog) {
                                       QCOMPARE(pane(dialog)->toPlainText(), "typed with care");
                                       ModalScript::press("Cancel")(dialog);
                                   },
                                   ModalScript::press("Yes")});
    QVERIFY(texts.value(0).startsWith("No transaction is pending."));
    QCOMPARE(texts.value(1), "Discard the changes?");
    QCOMPARE(committed("own.text"), std::string("no { JSON"));
}

void MetaDataEditorTest::everyExampleSatisfiesItsSchema() {
    begin();
    run("actionMetaDataAdd", {[](QDialog* dialog) {
            for (const auto& entry : tarvo::catalogue::metaData()) {
                in<QComboBox>(dialog, "editName")->setEditText(QString::fromStdString(entry.name));
                pane(dialog)->setPlainText(QString::fromStdString(entry.example));
                ModalScript::press("Check")(dialog);
                QVERIFY2(state(dialog) == "The value satisfies the schema.", entry.name.c_str());
            }
            pane(dialog)->clear();
            in<QComboBox>(dialog, "editName")->setEditText("");
            ModalScript::press("Cancel")(dialog);
        }});
}

GUI_TEST_MAIN(MetaDataEditorTest)
#include "metadataeditortest.moc"
