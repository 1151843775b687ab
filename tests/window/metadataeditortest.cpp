// The editor of metadata items, and the text pane in it.

#include "catalogue/catalogue.h"
#include "core/json.h"
#include "qrb/loader.h"
#include "qrb/pointcloud.h"
#include "tests/window/guitestmain.h"
#include "tests/window/modalscript.h"
#include "tests/window/testdatabase.h"
#include "tests/window/windowdriver.h"
#include "window/common/appearance.h"
#include "window/frame/mainwindow.h"
#include "window/widgets/jsonpositions.h"
#include "window/widgets/jsontextedit.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QCompleter>
#include <QDialog>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QTextBlock>
#include <QTreeWidget>
#include <QtTest>
#include <memory>

using namespace tarvo::window;

namespace {

using Step = ModalScript::Step;

}  // namespace

class MetaDataEditorTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void cleanupTestCase() { tarvo::qrb::freeLibrary(); }

    void itemIsAddedFromTheExample();
    void itemIsEditedAndChecked();
    void findingsAreListedWholeAndLeadToTheirLines();
    void brokenValueOfDefaultItemIsAskedAbout();
    void unchangedItemKeepsBytesAndSignature();
    void charactersStayAsTheyAre();
    void textsAndOwnSchemasAreTakenAsTheyAre();
    void changesAreNotDroppedUnasked();
    void refusedItemComesUpAgain();
    void valuesGoToFilesAndBack();
    void everyExampleSatisfiesItsSchema();
    void hugeValuesAreShown();
    void valuesBeyondThePaneAreHeldWhole();
    void paneIndentsAndUndoes();
    void placesAreFound();

private:
    WindowDriver driver() { return WindowDriver(*m_window); }
    QStringList run(const char* action, std::vector<Step> steps) {
        return driver().run(action, std::move(steps));
    }
    void begin() {
        run("actionTransactionBegin", {ModalScript::press("OK")});
        driver().showTab("tabMetaData");
    }
    // Sees what was committed only.
    std::string committed(const char* name);
    void commit() { run("actionTransactionCommit", {ModalScript::press("OK")}); }
    static QString state(QDialog* dialog) { return in<QLabel>(dialog, "labelState")->text(); }
    static QTreeWidget* findings(QDialog* dialog) {
        return in<QTreeWidget>(dialog, "treeFindings");
    }
    static JsonTextEdit* pane(QDialog* dialog) { return in<JsonTextEdit>(dialog, "editValue"); }
    static void type(QDialog* dialog, const QString& text) {
        pane(dialog)->setFocus();
        pane(dialog)->selectAll();
        QTest::keyClicks(pane(dialog), text);
    }

    QTemporaryDir m_folder;
    QString m_file;
    std::unique_ptr<MainWindow> m_window;
};

void MetaDataEditorTest::initTestCase() {
    tarvo::qrb::loadLibrary("");
}

void MetaDataEditorTest::init() {
    m_file = m_folder.filePath("work.qrbx");
    QFile::remove(m_file);
    QVERIFY(QFile::copy(QRB_GOLDEN "/latin1.qrbx", m_file));  // has "own.bytes"
    QVERIFY(QFile::setPermissions(m_file, QFile::ReadOwner | QFile::WriteOwner));
    const tarvo::qrb::Context context("OFF", "");
    tarvo::qrb::Pointcloud cloud(context);
    cloud.open(m_file.toStdString(), tarvo::qrb::pointcloud::OpenSettings(context));
    tarvo::qrb::pointcloud::TransactionGuard guard(cloud.transactions(), "Items", "tests");
    cloud.metaData().set("tarvo.geo_tag", R"({"crs":{"epsg":5,"name":"x"},"pose":[[1,2],"y"]})");
    cloud.metaData().set("own.signed", "{\"b\":1.50}");
    cloud.metaData().set("own.text", "no { JSON");
    cloud.metaData().set("own.lines", "one\r\ntwo\xe2\x80\xa9three");
    cloud.metaData().set("own.blanks",
                         "1\xc2\xa0"
                         "000 m");
    cloud.metaData().createSignature("own.signed", 1, {1, 2});
    guard.commit();
    cloud.close();
    m_window = showFreshWindow();
    m_window->openDatabase(m_file, true);
}

void MetaDataEditorTest::cleanup() {
    ModalScript drop({ModalScript::press("Yes")});  // only where a transaction is pending
    m_window->close();
    m_window.reset();
}

std::string MetaDataEditorTest::committed(const char* name) {
    const tarvo::qrb::Context context("OFF", "");
    tarvo::qrb::Pointcloud cloud(context);
    cloud.open(m_file.toStdString(), tarvo::qrb::pointcloud::OpenSettings(context));
    return cloud.metaData().get(name, "(none)");
}

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

void MetaDataEditorTest::unchangedItemKeepsBytesAndSignature() {
    begin();
    QVERIFY(driver().select("treeMetaData", "own.signed"));
    run("actionMetaDataEdit", {[](QDialog* dialog) {
            QVERIFY(in<QLabel>(dialog, "labelSigned")->isVisible());
            QVERIFY(!in<QLabel>(dialog, "labelTransaction")->isVisible());
            QCOMPARE(pane(dialog)->toPlainText(), "{\n    \"b\": 1.50\n}");
            ModalScript::press("Compact")(dialog);
            QCOMPARE(pane(dialog)->toPlainText(), "{\"b\":1.50}");
            QTest::keyClick(pane(dialog), Qt::Key_Z, Qt::ControlModifier);
            QCOMPARE(pane(dialog)->toPlainText(), "{\n    \"b\": 1.50\n}");
            ModalScript::press("OK")(dialog);
        }});
    QVERIFY(driver().select("treeMetaData", "own.bytes"));
    run("actionMetaDataEdit", {[](QDialog* dialog) {
            QVERIFY(in<QLabel>(dialog, "labelBytes")->isVisible());
            ModalScript::press("OK")(dialog);
        }});
    commit();
    QCOMPARE(committed("own.signed"), std::string("{\"b\":1.50}"));
    QCOMPARE(committed("own.bytes"), std::string("{\"a\": \"\xff\"}"));
    QCOMPARE(driver().select("treeMetaData", "own.signed")->foreground(0).color(),
             QColor(Qt::darkBlue));
}

void MetaDataEditorTest::charactersStayAsTheyAre() {
    begin();
    QVERIFY(driver().select("treeMetaData", "own.lines"));
    run("actionMetaDataEdit", {[](QDialog* dialog) {
            QVERIFY(in<QLabel>(dialog, "labelBytes")->isVisible());
            ModalScript::press("OK")(dialog);
        }});
    QVERIFY(driver().select("treeMetaData", "own.blanks"));
    run("actionMetaDataEdit", {[](QDialog* dialog) {
            QVERIFY(!in<QLabel>(dialog, "labelBytes")->isVisible());
            QTest::keyClick(pane(dialog), Qt::Key_End);
            QTest::keyClicks(pane(dialog), "m");
            ModalScript::press("OK")(dialog);
        }});
    commit();
    QCOMPARE(committed("own.lines"), std::string("one\r\ntwo\xe2\x80\xa9three"));
    QCOMPARE(committed("own.blanks"), std::string("1\xc2\xa0"
                                                  "000 mm"));
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

void MetaDataEditorTest::valuesGoToFilesAndBack() {
    begin();
    const QString file = m_folder.filePath("value.json");
    const QString good = m_folder.filePath("good.json");
    QFile source(good);
    QVERIFY(source.open(QIODevice::WriteOnly));
    source.write("{\"new\": \"\xc3\xa4\"}");
    source.close();
    QVERIFY(driver().select("treeMetaData", "own.bytes"));
    const QStringList texts = run(
        "actionMetaDataEdit",
        {[](QDialog* dialog) {
             auto* save = in<QAction>(dialog, "actionSave");
             auto* load = in<QAction>(dialog, "actionLoad");
             const QString before = pane(dialog)->text();
             for (QAction* action : {save, save, load})
                 action->trigger();
             for (QAction* action : dialog->findChildren<QAction*>())
                 if (action->text() == "...as JSON string")
                     action->trigger();
             QVERIFY(QApplication::clipboard()->text().startsWith("\"{\\n"));
             QCOMPARE(pane(dialog)->text(), before);
             load->trigger();
             QCOMPARE(pane(dialog)->text(), QString::fromUtf8("{\"new\": \"\xc3\xa4\"}"));
             QTest::keyClick(pane(dialog), Qt::Key_Z, Qt::ControlModifier);
             QCOMPARE(pane(dialog)->text(), before);
             QTest::keyClick(dialog, Qt::Key_Escape);  // nothing is changed
         },
         [&](QDialog* dialog) {
             QCOMPARE(in<QLineEdit>(dialog, "fileNameEdit")->text(), "own.bytes.json");
             ModalScript::chooseFile(file)(dialog);
         },
         ModalScript::chooseFile("/proc/value.json"), ModalScript::press("OK"),
         ModalScript::chooseFile(file), ModalScript::press("OK"), ModalScript::chooseFile(good)});
    QVERIFY(texts.value(0).startsWith("Failed to open output file!"));
    QVERIFY(texts.value(1).startsWith("The file is not a text in UTF-8."));
    QFile written(file);
    QVERIFY(written.open(QIODevice::ReadOnly));
    QCOMPARE(written.readAll(), QByteArray("{\"a\": \"\xff\"}"));
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

void MetaDataEditorTest::hugeValuesAreShown() {
    begin();
    run("actionMetaDataAdd",
        {[](QDialog* dialog) {
             in<QComboBox>(dialog, "editName")->setEditText("own.deep");
             pane(dialog)->setPlainText(QString(100'000, '[') + QString(100'000, ']'));
             ModalScript::press("Check")(dialog);
             QCOMPARE(state(dialog), "JSON. There is no schema to check it against.");
             ModalScript::press("Format")(dialog);  // would fill the memory
             QCOMPARE(pane(dialog)->blockCount(), 1);
             // Each key would colour the whole line anew.
             QVERIFY(pane(dialog)->document()->firstBlock().layout()->formats().isEmpty());
             QString lines = "[\n";
             for (int i = 0; i < 200'000; ++i)
                 lines += "{\"a\": 1},\n";
             pane(dialog)->setPlainText(lines + "0]");
             QTRY_VERIFY(state(dialog).startsWith("Press \"Check\""));
             ModalScript::press("Check")(dialog);
             QCOMPARE(state(dialog), "JSON. There is no schema to check it against.");
             // A key touches what it types, and nothing is checked for it.
             int touched = 0;
             connect(pane(dialog)->document(), &QTextDocument::contentsChange, dialog,
                     [&](int, int removed, int added) { touched += removed + added; });
             QTest::keyClicks(pane(dialog), "12");
             QVERIFY2(touched <= 10, qUtf8Printable(QString::number(touched)));
             QTRY_VERIFY(state(dialog).startsWith("Press \"Check\""));
             QTest::keyClick(dialog, Qt::Key_Escape);
         },
         ModalScript::press("Yes")});
}

void MetaDataEditorTest::valuesBeyondThePaneAreHeldWhole() {
    std::string value = "[";
    while (value.size() < 10'000'000)
        value += "{\"name\":\"value\",\"n\":[1.5,22,-3e7]},";
    value += "7]";
    const QString file = m_folder.filePath("long.json");
    QFile source(file);
    QVERIFY(source.open(QIODevice::WriteOnly));
    source.write(value.data(), static_cast<qint64>(value.size()));
    source.close();
    const QString shortFile = m_folder.filePath("short.json");
    QFile other(shortFile);
    QVERIFY(other.open(QIODevice::WriteOnly) && other.write("[7]") == 3);
    other.close();
    begin();
    // What the pane has to lay out.
    const auto shown = [](QDialog* dialog) { return pane(dialog)->document()->characterCount(); };
    constexpr int few = 150'000;
    const QStringList texts = run(
        "actionMetaDataAdd", {[&](QDialog* dialog) {
                                  in<QComboBox>(dialog, "editName")->setEditText("own.long");
                                  QApplication::clipboard()->setText(QString::fromStdString(value));
                                  pane(dialog)->paste();
                                  QVERIFY(pane(dialog)->text().isEmpty());
                                  in<QAction>(dialog, "actionLoad")->trigger();
                                  QVERIFY(in<QLabel>(dialog, "labelHeld")->isVisible());
                                  QVERIFY(pane(dialog)->isReadOnly());
                                  QVERIFY(shown(dialog) < few);
                                  in<JsonTextEdit>(dialog, "editSchema")
                                      ->setPlainText("{\"items\": {\"type\": \"object\"}}");
                                  ModalScript::press("Format")(dialog);
                                  QVERIFY(shown(dialog) < few);
                                  ModalScript::press("Check")(dialog);
                                  auto* list = findings(dialog);
                                  QCOMPARE(list->topLevelItemCount(), 1);
                                  QVERIFY(list->topLevelItem(0)->text(0).toInt() > 1'000'000);
                                  clickRow(list->topLevelItem(0));
                                  ModalScript::press("Compact")(dialog);
                                  // No undo leads to what was but the beginning of the value.
                                  in<QAction>(dialog, "actionLoad")->trigger();
                                  QTest::keyClick(pane(dialog), Qt::Key_Z, Qt::ControlModifier);
                                  QCOMPARE(pane(dialog)->text(), "[7]");
                                  in<QAction>(dialog, "actionLoad")->trigger();
                                  ModalScript::press("OK")(dialog);
                              },
                              ModalScript::press("OK"), ModalScript::chooseFile(file),
                              ModalScript::chooseFile(shortFile), ModalScript::chooseFile(file),
                              ModalScript::press("Yes")});
    QVERIFY(texts.value(0).startsWith("The text is too long to be pasted here."));
    QCOMPARE(texts.value(1), "The value does not satisfy the schema.\nSave it anyway?");
    run("actionMetaDataEdit", {[&](QDialog* dialog) {
            QVERIFY(in<QLabel>(dialog, "labelHeld")->isVisible());
            QVERIFY(shown(dialog) < few);
            QTest::keyClicks(pane(dialog), "x");
            ModalScript::press("OK")(dialog);
        }});
    commit();
    QVERIFY(committed("own.long") == value);
}

void MetaDataEditorTest::paneIndentsAndUndoes() {
    JsonTextEdit edit;
    edit.show();
    QTest::keyClicks(&edit, "{");
    QTest::keyClick(&edit, Qt::Key_Return);
    QTest::keyClicks(&edit, "\"a\": 1,");
    QTest::keyClick(&edit, Qt::Key_Return);
    QCOMPARE(edit.toPlainText(), "{\n    \"a\": 1,\n    ");
    edit.replaceText("{}");
    QTest::keyClick(&edit, Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(edit.toPlainText(), "{\n    \"a\": 1,\n    ");
    // Names, texts, numbers and what is wrong look different.
    edit.setPlainText("{\"a\": \"b\", \"c\": 1, \"d\": true, x");
    QSet<QRgb> colours;
    for (const auto& range : edit.document()->firstBlock().layout()->formats())
        colours.insert(range.format.foreground().color().rgb());
    QCOMPARE(colours.size(), 5);
    edit.setColoured(false);
    QVERIFY(edit.document()->firstBlock().layout()->formats().isEmpty());

    edit.setColoured(true);
    edit.setPlainText("\"a\" : \"a\"");
    const auto formats = edit.document()->firstBlock().layout()->formats();
    QCOMPARE(formats.size(), 2);
    QVERIFY(formats[0].format != formats[1].format);
    edit.setPlainText("  [");
    QTest::keyClick(&edit, Qt::Key_End);
    QTest::keyClick(&edit, Qt::Key_Enter, Qt::KeypadModifier);
    QCOMPARE(edit.toPlainText(), "  [\n      ");
    // Brackets in texts are no partners.
    edit.setPlainText("[\"\\\"]\", \"[\"]");
    QList<int> brackets;
    for (const auto& selection : edit.extraSelections())
        if (selection.cursor.hasSelection())
            brackets += selection.cursor.selectionStart();
    QCOMPARE(brackets, QList<int>({0, int(edit.toPlainText().size()) - 1}));
    // Line numbers get the room that they need.
    const int margin = edit.viewport()->x();
    setTextSize(textSize() + 10);
    QVERIFY(edit.viewport()->x() > margin);
    resetTextSize();
}

void MetaDataEditorTest::placesAreFound() {
    const QString json = QString::fromUtf8(
        "{\"\xc3\xa4\": [1, {\"b~/\": \"\xf0\x9f\x98\x80 x\"}],\n \"c\": null, \"d\":[[ ] ,{}, "
        "[]]}");
    const auto places = placesOf(
        json, {"", QString::fromUtf8("/\xc3\xa4/1/b~0~1"), QString::fromUtf8("/\xc3\xa4/0"), "/c",
               QString::fromUtf8("/\xc3\xa4/7/x"), "/e", "/d/2", "/d/0"});
    const auto textAt = [&](std::size_t i) {
        return places[i] ? json.mid(places[i]->begin, places[i]->end - places[i]->begin)
                         : QString("(none)");
    };
    QCOMPARE(textAt(0), json);
    QCOMPARE(textAt(1), QString::fromUtf8("\"\xf0\x9f\x98\x80 x\""));
    QCOMPARE(textAt(2), "1");
    QCOMPARE(textAt(3), "null");
    QVERIFY(textAt(4).startsWith('[') && textAt(4).endsWith(']'));  // the value around it
    QCOMPARE(textAt(5), json);
    QCOMPARE(textAt(6), "[]");  // what comes behind brackets
    QCOMPARE(textAt(7), "[ ]");
    const auto at = lineAndColumn(json, places[3]->begin);
    QCOMPARE(at.line, 2);
    QCOMPARE(at.column, 7);
    QVERIFY(!jsonFaultOf(json));
    const auto fault = jsonFaultOf(QString::fromUtf8("[\"\xf0\x9f\x98\x80\", }"));
    QVERIFY(fault);
    QCOMPARE(fault->position, 7);
    const QString deep = QString(200'000, '[');
    QCOMPARE(placesOf(deep, {"/0/0"}).size(), 1u);
    QVERIFY(jsonFaultOf(deep));
    // Escapes are undone once; of members with the same name the last one counts.
    const QString names = "{\"~1\": 1, \"/\": 2, \"a\": {\"b\": 3}, \"a\": {\"b\": [4]}}";
    const std::pair<const char*, const char*> values[] = {
        {"/~01", "1"}, {"/~1", "2"}, {"/a", "{\"b\": [4]}"}, {"/a/b", "[4]"}};
    for (const auto& [pointer, value] : values) {
        const auto place = placesOf(names, {pointer}).front();
        QVERIFY(place);
        QCOMPARE(names.mid(place->begin, place->end - place->begin), value);
    }
}

GUI_TEST_MAIN(MetaDataEditorTest)
#include "metadataeditortest.moc"
