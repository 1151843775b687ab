// Values in the editor of metadata items: they keep every byte, go to files and back, and are as
// long as anybody makes them.

#include "tests/window/guitestmain.h"
#include "tests/window/metadataediting.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QLineEdit>
#include <QTextBlock>
#include <QtTest>

using namespace tarvo::window;

class MetaDataValuesTest : public MetaDataEditingTest {
    Q_OBJECT

private slots:
    void unchangedItemKeepsBytesAndSignature();
    void charactersStayAsTheyAre();
    void valuesGoToFilesAndBack();
    void hugeValuesAreShown();
    void valuesBeyondThePaneAreHeldWhole();
};

void MetaDataValuesTest::unchangedItemKeepsBytesAndSignature() {
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

void MetaDataValuesTest::charactersStayAsTheyAre() {
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

void MetaDataValuesTest::valuesGoToFilesAndBack() {
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

void MetaDataValuesTest::hugeValuesAreShown() {
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

void MetaDataValuesTest::valuesBeyondThePaneAreHeldWhole() {
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

GUI_TEST_MAIN(MetaDataValuesTest)
#include "metadatavaluestest.moc"
