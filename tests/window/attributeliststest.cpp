// What the editor of point attribute definitions opens: the table of named values with its CSV
// files, and the choice of level-of-detail settings.

#include "core/namedvalues.h"
#include "qrb/loader.h"
#include "tests/window/attributeediting.h"
#include "tests/window/guitestmain.h"
#include "window/common/programsettings.h"
#include "window/dialogs/attribute/attributesuggestions.h"
#include "window/dialogs/attribute/dialognamedvalues.h"
#include "window/dialogs/attribute/dialogpointattributelod.h"
#include "window/dialogs/attribute/namedvaluescsv.h"

#include <QAction>
#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QToolButton>

using namespace tarvo::core;
using namespace tarvo::window;

class AttributeListsTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { tarvo::qrb::loadLibrary(""); }
    void init();
    void cleanupTestCase() { tarvo::qrb::freeLibrary(); }

    void namedValuesComeBackByteForByte();
    void eachChangeAloneIsTakenOver();
    void namedValuesAreEditedAsATable();
    void namedValuesGoThroughCsvFiles();
    void lodSettingsAreChosen();

private:
    QTemporaryDir m_folder;
};

void AttributeListsTest::init() {
    QTest::failOnWarning(QRegularExpression("No matching signal|QMetaObject|QObject::connect"));
    DialogSettings("").clear();
}

void AttributeListsTest::namedValuesComeBackByteForByte() {
    for (const char* text :
         {"0=no\n1=yes", "0=no\n1=yes\n", " 0 = no \r\n\r\nwhat\n=\nx=1\n0.5==\xff", "", "\n"}) {
        std::string values = text;
        ModalScript script({ModalScript::press("OK")});
        QVERIFY(DialogNamedValues::edit(values, nullptr, nullptr) == true);
        QCOMPARE(values, std::string(text));
    }
    std::string sorted = "5=five\n3=three";
    ModalScript sorting({[](QDialog* dialog) {
        in<QAction>(dialog, "actionSort")->trigger();
        ModalScript::press("OK")(dialog);
    }});
    QVERIFY(DialogNamedValues::edit(sorted, nullptr, nullptr) == true);
    QCOMPARE(sorted, std::string("3=three\n5=five"));
    // What changed is written anew, the other lines stay.
    auto values = readNamedValues("0 = no \nwhat\n2=b");
    QCOMPARE(values.size(), 3u);
    QVERIFY(!values[1].understood);
    values[2].name = "c";
    values[2].line.clear();
    QCOMPARE(writeNamedValues(values), std::string("0 = no \nwhat\n2=c"));
    for (const auto& entry : tarvo::catalogue::attributes())
        QCOMPARE(writeNamedValues(readNamedValues(entry.namedValues)), entry.namedValues);
}

// What nothing else changes: it alone is to be noticed, and to be gone with Cancel.
void AttributeListsTest::eachChangeAloneIsTakenOver() {
    using Change = std::function<void(QDialog*)>;
    const auto at = [](int row, const char* action) {
        return Change([row, action](QDialog* dialog) {
            in<QTableWidget>(dialog, "tableNamedValues")->setCurrentCell(row, 0);
            in<QAction>(dialog, action)->trigger();
        });
    };
    const auto write = [](int column, const char* text) {
        return Change([column, text](QDialog* dialog) {
            in<QTableWidget>(dialog, "tableNamedValues")->item(1, column)->setText(text);
        });
    };
    const std::string before = " 5=five\nwhat\n3=three";
    const std::pair<Change, const char*> changes[] = {
        {at(2, "actionMoveUp"), " 5=five\n3=three\nwhat"},
        {at(0, "actionMoveDown"), "what\n 5=five\n3=three"},
        {at(1, "actionRemove"), " 5=five\n3=three"},
        {at(0, "actionSort"), "3=three\n 5=five\nwhat"},
    };
    const auto check = [](const std::string& text, const Change& change, const std::string& after) {
        for (const char* button : {"OK", "Cancel"}) {
            std::string values = text;
            const bool accepts = *button == 'O';
            ModalScript script({ModalScript::with(change, button)});
            QCOMPARE(DialogNamedValues::edit(values, nullptr, nullptr), accepts);
            QCOMPARE(QByteArray::fromStdString(values),
                     QByteArray::fromStdString(accepts ? after : text));
        }
    };
    for (const auto& [change, after] : changes)
        check(before, change, after);
    check("5=five\n3=three", write(0, "4"), "5=five\n4=three");
    check("5=five\n3=three", write(1, "drei"), "5=five\n3=drei");
    check("5=five\n3=three", write(1, " three "), "5=five\n3=three");

    const std::string settings = "{\"method\": \"first\", \"weight\": 1}";
    const std::pair<Change, std::string> lod[] = {
        {[](QDialog*) {}, settings},
        {[](QDialog* dialog) { in<QComboBox>(dialog, "editMethod")->setCurrentText("maximum"); },
         "{\"method\":\"maximum\",\"weight\":1}"},
        {[](QDialog* dialog) {
             in<QPlainTextEdit>(dialog, "editMembers")->setPlainText("{\"weight\": 2}");
         },
         "{\"method\":\"first\",\"weight\":2}"},
        {[](QDialog* dialog) { in<QPlainTextEdit>(dialog, "editMembers")->clear(); }, "first"},
    };
    for (const auto& [change, after] : lod)
        for (const char* button : {"OK", "Cancel"}) {
            std::string text = settings;
            const bool accepts = *button == 'O';
            ModalScript script({ModalScript::with(change, button)});
            QCOMPARE(DialogPointAttributeLod::edit(text, nullptr), accepts);
            QCOMPARE(text, accepts ? after : settings);
        }
}

void AttributeListsTest::namedValuesAreEditedAsATable() {
    PointAttribute attribute = byteAttribute("own.a");
    attribute.namedValues = "5=five\nnot understood\n3=three";
    // Types into the cell that is being edited.
    const auto typeCell = [](QTableWidget* table, const QString& text) {
        auto* editor = table->viewport()->findChild<QLineEdit*>();
        QVERIFY(editor);
        QTest::keyClick(editor, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(editor, text);
        QTest::keyClick(editor, Qt::Key_Return);
        QTRY_VERIFY(!table->viewport()->findChild<QLineEdit*>());
    };
    const auto work = [&](QDialog* dialog) {
        auto* table = in<QTableWidget>(dialog, "tableNamedValues");
        QCOMPARE(table->rowCount(), 3);
        QVERIFY(!(table->item(1, 0)->flags() & Qt::ItemIsEditable));
        table->setFocus();
        QTest::keyClick(table, Qt::Key_Insert);
        QCOMPARE(table->rowCount(), 4);
        QVERIFY(!okButton(dialog)->isEnabled());
        typeCell(table, "5.0");
        QCOMPARE(shown(dialog, "labelCheck"), "Row 2: 5.0 has a name already. (And 2 more.)");
        QVERIFY(!okButton(dialog)->isEnabled());
        table->setCurrentCell(1, 0);
        QTest::keyClick(table, Qt::Key_F2);
        typeCell(table, "5.2");  // is stored as 5
        QVERIFY(!okButton(dialog)->isEnabled());
        QTest::keyClick(table, Qt::Key_F2);
        typeCell(table, "+300");
        QVERIFY(okButton(dialog)->isEnabled());
        QVERIFY(table->item(1, 0)->toolTip().contains("300 is out of the range."));
        table->setCurrentCell(1, 1);
        QTest::keyClick(table, Qt::Key_F2);
        typeCell(table, "far, \"away\"");
        QTest::mouseClick(in<QToolButton>(dialog, "buttonSort"), Qt::LeftButton);
        QCOMPARE(table->item(0, 0)->text(), "3");
        QTest::keyClick(table, Qt::Key_Down, Qt::ControlModifier);
        QCOMPARE(table->item(1, 0)->text(), "3");
        QTest::keyClick(table, Qt::Key_Up, Qt::ControlModifier);
        QCOMPARE(table->item(0, 0)->text(), "3");
        // There is no way beyond either end, from wherever one comes.
        for (const int row : {3, 0, 3}) {
            const QRect cell = table->visualItemRect(table->item(row, 1));
            QTest::mouseClick(table->viewport(), Qt::LeftButton, {}, cell.center());
            QCOMPARE(in<QToolButton>(dialog, "buttonMoveUp")->isEnabled(), row > 0);
            QCOMPARE(in<QToolButton>(dialog, "buttonMoveDown")->isEnabled(), row < 3);
            QTest::keyClick(table, row > 0 ? Qt::Key_Down : Qt::Key_Up, Qt::ControlModifier);
            QCOMPARE(table->item(0, 0)->text(), "3");
        }
        table->setCurrentCell(0, 0);
        // The row that was moved is the one that is removed.
        QTest::keyClick(table, Qt::Key_Down, Qt::ControlModifier);
        QTest::keyClick(table, Qt::Key_Delete);
        QCOMPARE(table->rowCount(), 3);
        // Of several that are removed, the place of the first is kept.
        for (int i = 0; i < 4; ++i)
            in<QAction>(dialog, "actionAdd")->trigger();
        for (const int first : {2, 2}) {
            table->clearSelection();
            table->setRangeSelected({first, 0, first + 1, 1}, true);
            in<QAction>(dialog, "actionRemove")->trigger();
            QCOMPARE(table->currentRow(), first);
        }
        QCOMPARE(table->rowCount(), 3);
        ModalScript::press("OK")(dialog);
    };
    const auto open = [](QDialog* dialog) {
        QTest::mouseClick(in<QPushButton>(dialog, "buttonNamedValues"), Qt::LeftButton);
        QVERIFY(in<QLineEdit>(dialog, "editNamedValues")->text().contains("300=far"));
        QVERIFY(shown(dialog, "checkNamedValues").startsWith("Note: 300 is out of the range."));
        ModalScript::press("OK")(dialog);
    };
    QVERIFY(edit(attribute, Purpose::ADD, {open, work}));
    QCOMPARE(attribute.namedValues, std::string("5=five\n300=far, \"away\"\nnot understood"));
}

void AttributeListsTest::namedValuesGoThroughCsvFiles() {
    const std::vector<NamedValue> values{
        {"0", "plain"}, {"-1.5", "a, \"b\""}, {"1e3", "\xc3\xa4=\xe2\x82\xac"}, {"7", ""}};
    const QByteArray csv = namedValuesToCsv(values);
    QVERIFY(csv.startsWith("value,name\r\n0,plain\r\n-1.5,\"a, \"\"b\"\"\"\r\n"));
    QCOMPARE(writeNamedValues(namedValuesFromCsv(csv)), writeNamedValues(values));
    const std::pair<const char*, const char*> faults[] = {
        {"value,name\n1,a\nx,b\n", "Line 3: \"x\" is no number."},
        {"1,a\n1.0,b\n", "Line 2: 1.0 has a name already."},
        {"1,a\n2\n", "Line 2: expected a value and a name, found 1 fields."},
        {"1,a,b\n", "Line 1: expected a value and a name, found 3 fields."},
        {"1,\"a\nb\"\n", "Line 1: a name can't hold a line break."},
        {"1,\"a\n", "Line 1: a quoted field does not end."},
        {"1,\"a\"b\n", "Line 1: expected a comma or the end of the line behind a quoted field."},
        {"1,a\"b\n", "Line 1: a quote stands within a field that does not begin with one."},
        {"\n\n,b", "Line 3: \"\" is no number."},
        {"\"1\n\",a\nx,b\n", "Line 3: \"x\" is no number."},
        {"1,\xff", "The file is no UTF-8 text."},
    };
    for (const auto& fault : faults) {
        const QByteArray text(fault.first);
        QCOMPARE(messageOf([&] { (void)namedValuesFromCsv(text); }), QString(fault.second));
    }
    QCOMPARE(namedValuesFromCsv("\xef\xbb\xbfvalue,name\n+2,two").at(0).value, "2");

    const QString file = m_folder.filePath("values.csv");
    writeTo(file, "value,name\r\n1,one\r\nx,two\r\n");
    std::string text = "5=five\nwhat";
    QStringList messages;
    {
        ModalScript script({[&](QDialog* dialog) {
                                auto* table = in<QTableWidget>(dialog, "tableNamedValues");
                                in<QAction>(dialog, "actionImport")->trigger();
                                QCOMPARE(table->rowCount(), 2);  // a faulty file changes nothing
                                in<QAction>(dialog, "actionExport")->trigger();
                                QCOMPARE(contentsOf(file), QByteArray("value,name\r\n5,five\r\n"));
                                writeTo(file, "1,one\n2,two\n");
                                in<QAction>(dialog, "actionImport")->trigger();
                                QCOMPARE(table->rowCount(), 2);
                                QCOMPARE(table->item(1, 1)->text(), "two");
                                ModalScript::press("OK")(dialog);
                            },
                            ModalScript::chooseFile(file), ModalScript::press("OK"),
                            ModalScript::press("Yes"), ModalScript::chooseFile(file),
                            // The file is there already.
                            ModalScript::press("Yes"), ModalScript::chooseFile(file),
                            ModalScript::press("Yes")});
        QVERIFY(DialogNamedValues::edit(text, nullptr, nullptr));
        messages = script.texts();
    }
    QVERIFY(messages.value(0).startsWith("Line 3: \"x\" is no number."));
    QCOMPARE(text, std::string("1=one\n2=two"));
}

void AttributeListsTest::lodSettingsAreChosen() {
    PointAttribute attribute = byteAttribute("own.a");
    const auto choose = [](QDialog* dialog) {
        auto* method = in<QComboBox>(dialog, "editMethod");
        QCOMPARE(method->count(), 7);
        method->setFocus();
        QTest::keyClicks(method, "maj");
        QCOMPARE(method->currentText(), "majority");
        QVERIFY(in<QLabel>(dialog, "labelMeaning")->text().startsWith("Most frequent value"));
        typeInto(dialog, "editMembers", "{\"weight\": 1.50");
        QVERIFY(!okButton(dialog)->isEnabled());
        QVERIFY(!shown(dialog, "labelCheck").isEmpty());
        QTest::keyClicks(in<QWidget>(dialog, "editMembers"), "}");
        ModalScript::press("OK")(dialog);
    };
    const auto open = [](QDialog* dialog) {
        QTest::mouseClick(in<QPushButton>(dialog, "buttonLodSettings"), Qt::LeftButton);
        ModalScript::press("OK")(dialog);
    };
    QVERIFY(edit(attribute, Purpose::ADD, {open, choose}));
    QCOMPARE(attribute.lodSettings, std::string("{\"method\":\"majority\",\"weight\":1.50}"));

    const std::pair<const char*, const char*> cases[] = {
        {" \"first\" ", " \"first\" "},             // not changed
        {"{\"method\": \"first\"} tail", "first"},  // what is lost is told
        {"{broken", "default"},
    };
    for (const auto& [before, after] : cases) {
        std::string settings = before;
        const bool lost = settings != after;
        ModalScript script({[lost](QDialog* dialog) {
            QCOMPARE(!shown(dialog, "labelLost").isEmpty(), lost);
            ModalScript::press("OK")(dialog);
        }});
        QVERIFY(DialogPointAttributeLod::edit(settings, nullptr));
        QCOMPARE(settings, std::string(after));
    }
}

GUI_TEST_MAIN(AttributeListsTest)
#include "attributeliststest.moc"
