// The editor of point attribute definitions: its fields and suggestions, the dialogs that it opens,
// and the tab from which it comes.

#include "common/clipboard.h"
#include "common/programsettings.h"
#include "dialogs/attribute/attributechecks.h"
#include "dialogs/attribute/attributesuggestions.h"
#include "dialogs/attribute/dialognamedvalues.h"
#include "dialogs/attribute/dialogpointattribute.h"
#include "dialogs/attribute/dialogpointattributelod.h"
#include "dialogs/attribute/lodsettings.h"
#include "dialogs/attribute/namedvalues.h"
#include "dialogs/attribute/numberedit.h"
#include "qrb/error.h"
#include "qrb/loader.h"
#include "qrb/pointcloud.h"
#include "tests/gui/attributesamples.h"
#include "tests/gui/guitestmain.h"
#include "tests/gui/modalscript.h"
#include "tests/gui/testdatabase.h"
#include "tests/gui/windowdriver.h"

#include <QAccessible>
#include <QAction>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QTableWidget>
#include <QToolButton>
#include <QTreeWidget>
#include <QtTest>
#include <memory>

namespace dialogs = tarvo::dialogs;
using tarvo::qrb::pointcloud::PointAttribute;
using Purpose = DialogPointAttribute::Purpose;
using Step = ModalScript::Step;

namespace {

QPushButton* okButton(QDialog* dialog) {
    return in<QDialogButtonBox>(dialog, "buttonBox")->button(QDialogButtonBox::Ok);
}

// As a user does: click, select all, type.
void type(QWidget* field, const QString& text) {
    field->setFocus();
    QTest::keyClick(field, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(field, Qt::Key_Delete);
    QTest::keyClicks(field, text);
}

void typeInto(QDialog* dialog, const char* field, const QString& text) {
    type(in<QWidget>(dialog, field), text);
}

QString shown(QDialog* dialog, const char* label) {
    const auto* check = in<QLabel>(dialog, label);
    return check->isVisible() ? check->text() : QString();
}

// Steps after which no dialog stays open where one of them failed.
std::vector<Step> ending(std::vector<Step> steps) {
    for (Step& step : steps)
        step = [inner = step](QDialog* dialog) {
            inner(dialog);
            if (QTest::currentTestFailed())
                dialog->reject();
        };
    return steps;
}

QByteArray contentsOf(const QString& fileName) {
    QFile file(fileName);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("missing");
}

void writeTo(const QString& fileName, const QByteArray& bytes) {
    QFile file(fileName);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(bytes);
}

}  // namespace

class AttributeEditorTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanupTestCase();

    void defaultAttributesComeBackUnchanged();
    void valuesThatNoFieldCanShowAreKept();
    void wrongInputIsToldWhereItStands();
    void arrowKeysStepByTheResolution();
    void suggestionsAreFoundByWordsAndTakenByKey();
    void typedTextsAreNotReplacedUnasked();
    void definitionsAreCopiedPastedLoadedAndSaved();
    void namedValuesComeBackByteForByte();
    void namedValuesAreEditedAsATable();
    void namedValuesGoThroughCsvFiles();
    void lodSettingsAreChosen();
    void attributeIsAddedToTheDatabase();
    void refusedEditComesUpAgainWithWhatWasTyped();
    void unchangedEditWritesNothing();
    void doubleClickEditsAttributesOnly();
    void everyFieldHasANameAndAKey();

private:
    // Runs the editor while the steps answer it and what it opens.
    bool edit(PointAttribute& attribute, Purpose purpose, std::vector<Step> steps,
              const QStringList& takenNames = {}, QStringList* texts = nullptr);
    void withWindow(bool transaction,
                    const std::function<void(WindowDriver&, MainWindow&)>& action);

    QTemporaryDir m_folder;
    TestDatabase m_original;
};

void AttributeEditorTest::initTestCase() {
    tarvo::qrb::loadLibrary("");
    m_original = makeTestDatabase(m_folder.path());
    QVERIFY2(m_original.error.isEmpty(), qUtf8Printable(m_original.error));
}

void AttributeEditorTest::init() {
    QTest::failOnWarning(QRegularExpression("No matching signal|QMetaObject|QObject::connect"));
    tarvo::common::ProgramSettings().remove("");
    tarvo::common::DialogSettings("").clear();
}

void AttributeEditorTest::cleanupTestCase() {
    tarvo::qrb::freeLibrary();
}

bool AttributeEditorTest::edit(PointAttribute& attribute, Purpose purpose, std::vector<Step> steps,
                               const QStringList& takenNames, QStringList* texts) {
    const std::size_t expected = steps.size();
    ModalScript script(ending(std::move(steps)));
    const bool accepted = DialogPointAttribute::edit(attribute, purpose, takenNames, nullptr);
    if (script.answered() != expected)
        QTest::qFail(
            qPrintable(QString("of %1 dialogs %2 came").arg(expected).arg(script.answered())),
            __FILE__, __LINE__);
    if (texts)
        *texts = script.texts();
    return accepted;
}

void AttributeEditorTest::withWindow(
    bool transaction, const std::function<void(WindowDriver&, MainWindow&)>& action) {
    const QString file = m_folder.filePath("work.qrbx");
    QFile::remove(file);
    QVERIFY(QFile::copy(m_original.fileName, file));
    MainWindow window;
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    window.activateWindow();
    window.openDatabase(file, true);
    WindowDriver driver(window);
    if (transaction) {
        driver.showTab("tabTransactions");
        driver.run("actionTransactionBegin", {ModalScript::press("OK")});
    }
    driver.showTab("tabPointAttributes");
    action(driver, window);
    ModalScript drop({ModalScript::press("Yes")});  // only where a transaction is pending
    window.close();
}

void AttributeEditorTest::defaultAttributesComeBackUnchanged() {
    QCOMPARE(tarvo::qrb::defaults::attributes().size(), 247u);
    for (const auto& entry : tarvo::qrb::defaults::attributes()) {
        const PointAttribute before = dialogs::suggestedAttribute(entry);
        PointAttribute attribute = before;
        bool wrong = false;
        const bool accepted = edit(attribute, Purpose::PRIMARY, {[&](QDialog* dialog) {
                                       // Those of the point id's kind only are told of when they
                                       // aren't one number.
                                       wrong = !okButton(dialog)->isEnabled();
                                       ModalScript::press(wrong ? "Cancel" : "OK")(dialog);
                                   }});
        QVERIFY2(accepted && !wrong, entry.name.c_str());
        QVERIFY2(dialogs::sameAttribute(before, attribute), entry.name.c_str());
        QCOMPARE(attribute.toJson(), before.toJson());
    }
}

void AttributeEditorTest::valuesThatNoFieldCanShowAreKept() {
    PointAttribute before = byteAttribute("own.a");
    before.title = "two\nlines";
    before.description = "line\r\nline\xff";  // no UTF-8
    before.lodSettings = "{\n  \"method\": \"first\"\n}";
    before.namedValues = "1=one\r\n\nwhat\n2 = two \n";
    before.minimumValue = -0.0;
    before.defaultValue = 0.1 + 0.2;
    before.resolution = 0;
    PointAttribute attribute = before;
    QVERIFY(edit(attribute, Purpose::EDIT, {ModalScript::press("OK")}));
    QVERIFY(dialogs::sameAttribute(before, attribute));
    QVERIFY(std::signbit(attribute.minimumValue));

    attribute.storageClass = 0;
    attribute.compressionOptions = 9;
    QVERIFY(!edit(
        attribute, Purpose::EDIT, {[](QDialog* dialog) {
            QCOMPARE(in<QComboBox>(dialog, "editStorageClass")->currentText(), "unknown (0)");
            QCOMPARE(in<QComboBox>(dialog, "editCompressionOptions")->currentText(), "unknown (9)");
            QVERIFY(!okButton(dialog)->isEnabled());
            ModalScript::press("Cancel")(dialog);
        }}));
    QCOMPARE(int(attribute.storageClass), 0);
}

void AttributeEditorTest::wrongInputIsToldWhereItStands() {
    PointAttribute attribute = byteAttribute("");
    const PointAttribute before = attribute;
    const auto check = [](QDialog* dialog) {
        const auto expect = [dialog](const char* field, const QString& text, const char* label,
                                     const QString& message) {
            typeInto(dialog, field, text);
            QCOMPARE(shown(dialog, label), message);
            QCOMPARE(shown(dialog, "labelSummary"), message);
            QVERIFY(!okButton(dialog)->isEnabled());
        };
        QCOMPARE(shown(dialog, "checkName"), "Give the attribute a name.");
        expect("editName", "tarvo.xyz", "checkName", "This name exists already.");
        expect("editName", "9a", "checkName", "A name begins with a letter or \"_\".");
        typeInto(dialog, "editName", "own.a");
        QVERIFY(okButton(dialog)->isEnabled());
        QCOMPARE(shown(dialog, "labelSummary"), "");

        expect("editMinimumValue", "300", "checkRange", "Minimum is greater than maximum.");
        expect("editMinimumValue", "1,5", "checkRange",
               "\"1,5\" is no number; the decimal mark is a point.");
        expect("editMinimumValue", "", "checkRange", "A number is missing.");
        QCOMPARE(in<QLabel>(dialog, "labelDataTypeValue")->text(), "unknown");
        typeInto(dialog, "editMinimumValue", "-1");
        QCOMPARE(in<QLabel>(dialog, "labelDataTypeValue")->text(), "INT16 (2 bytes)");
        expect("editDefaultValue", "1000", "checkDefault",
               "The default value is neither in the range nor the invalid value.");
        QTest::mouseClick(in<QCheckBox>(dialog, "boxNoInvalidValue"), Qt::LeftButton);
        typeInto(dialog, "editInvalidValue", "1000");
        QVERIFY(okButton(dialog)->isEnabled());
        typeInto(dialog, "editResolution", "1e-15");
        QVERIFY(shown(dialog, "checkRange").startsWith("The range has more than 2^53 steps"));
        typeInto(dialog, "editResolution", "1");

        typeInto(dialog, "editTags", "b,,c");
        QCOMPARE(shown(dialog, "checkTags"), "Note: There is an empty tag.");
        QVERIFY(okButton(dialog)->isEnabled());
        typeInto(dialog, "editLodSettings", "thinout");
        QVERIFY(shown(dialog, "checkLodSettings").contains("\"thinout\" is unknown"));
        // A return in a field must not get past an error.
        QTest::keyClick(in<QLineEdit>(dialog, "editLodSettings"), Qt::Key_Return);
        QVERIFY(dialog->isVisible());
        dialog->reject();
    };
    QVERIFY(!edit(attribute, Purpose::ADD, {check}, {"tarvo.xyz"}));
    QVERIFY(dialogs::sameAttribute(attribute, before));
}

void AttributeEditorTest::arrowKeysStepByTheResolution() {
    PointAttribute attribute = byteAttribute("own.a");
    attribute.resolution = 0.1;
    QVERIFY(edit(
        attribute, Purpose::EDIT, {[](QDialog* dialog) {
            auto* field = in<dialogs::NumberEdit>(dialog, "editDefaultValue");
            field->setFocus();
            for (int i = 0; i < 3; ++i)
                QTest::keyClick(field, Qt::Key_Up);
            QCOMPARE(field->text(), "0.3");
            QTest::keyClick(field, Qt::Key_Up, Qt::ControlModifier);
            QCOMPARE(field->text(), "1.3");
            QTest::keyClick(field, Qt::Key_Down);
            QTest::keyClick(field, Qt::Key_Z, Qt::ControlModifier);
            QCOMPARE(field->text(), "1.3");
            auto* resolution = in<dialogs::NumberEdit>(dialog, "editResolution");
            typeInto(dialog, "editResolution", "0.25");
            QTest::keyClick(resolution, Qt::Key_Up);
            QCOMPARE(resolution->text(), "0.26");
            typeInto(dialog, "editResolution", "0.1");
            QVERIFY(shown(dialog, "labelConversion").isEmpty());
            typeInto(dialog, "editMaximumValue", "100");
            QCOMPARE(shown(dialog, "labelConversion"),
                     "Stored values are converted; those outside the new range become the default "
                     "value.");
            ModalScript::press("OK")(dialog);
        }}));
    QCOMPARE(attribute.defaultValue, 1.3);
    QCOMPARE(attribute.maximumValue, 100.0);
}

void AttributeEditorTest::suggestionsAreFoundByWordsAndTakenByKey() {
    PointAttribute attribute = byteAttribute("");
    QVERIFY(edit(
        attribute, Purpose::ADD, {[](QDialog* dialog) {
            auto* filter = in<QLineEdit>(dialog, "editSuggestionFilter");
            auto* tree = in<QTreeWidget>(dialog, "treeSuggestions");
            QCOMPARE(tree->topLevelItemCount(), 247);
            QCOMPARE(tree->columnCount(), 5);
            QCOMPARE(dialog->focusWidget(), filter);
            const auto visible = [tree] {
                QStringList names;
                for (int i = 0; i < tree->topLevelItemCount(); ++i)
                    if (!tree->topLevelItem(i)->isHidden())
                        names += tree->topLevelItem(i)->text(0);
                return names;
            };
            QTest::keyClick(filter, Qt::Key_Return);  // takes nothing before words were typed
            QVERIFY(in<QLineEdit>(dialog, "editName")->text().isEmpty());
            QTest::keyClicks(filter, "XYZ  socs");
            QCOMPARE(visible(), QStringList("tarvo.xyz_socs (exists already)"));
            // What is there already can be taken neither by key nor by mouse.
            QTest::keyClick(filter, Qt::Key_Return);
            QTest::mouseClick(
                tree->viewport(), Qt::LeftButton, {},
                tree->visualItemRect(tree->findItems("tarvo.xyz_socs", Qt::MatchStartsWith).first())
                    .center());
            QVERIFY(in<QLineEdit>(dialog, "editName")->text().isEmpty());
            type(filter, "noSuchWordAnywhere");
            QCOMPARE(visible(), QStringList());
            QTest::keyClick(filter, Qt::Key_Return);
            type(filter, "timestamp direction");
            QVERIFY(!visible().contains("tarvo.timestamp"));
            type(filter, "tarvo.reflectance");
            QTest::keyClick(filter, Qt::Key_Down);
            QCOMPARE(dialog->focusWidget(), tree);
            QTest::keyClick(tree, Qt::Key_Return);
            QVERIFY(dialog->isVisible());
            QCOMPARE(in<QLineEdit>(dialog, "editName")->text(), "tarvo.reflectance");
            QCOMPARE(in<QComboBox>(dialog, "editUnitSymbol")->currentText(), "dB");
            ModalScript::press("OK")(dialog);
        }},
        {"tarvo.xyz_socs"}));
    QVERIFY(dialogs::sameAttribute(attribute, defaultAttribute("tarvo.reflectance")));
}

void AttributeEditorTest::typedTextsAreNotReplacedUnasked() {
    PointAttribute attribute = byteAttribute("");
    QStringList texts;
    const auto click = [](QDialog* dialog, const QString& name) {
        auto* tree = in<QTreeWidget>(dialog, "treeSuggestions");
        auto* row = tree->findItems(name, Qt::MatchExactly).first();
        tree->scrollToItem(row);
        QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, tree->visualItemRect(row).center());
    };
    QVERIFY(edit(attribute, Purpose::ADD,
                 {[&](QDialog* dialog) {
                      // Nothing was typed: no question, then one after typing.
                      click(dialog, "tarvo.range");
                      click(dialog, "tarvo.theta");
                      QCOMPARE(in<QLineEdit>(dialog, "editName")->text(), "tarvo.theta");
                      typeInto(dialog, "editTitle", "Mine");
                      click(dialog, "tarvo.phi");
                      QCOMPARE(in<QLineEdit>(dialog, "editTitle")->text(), "Mine");
                      click(dialog, "tarvo.phi");
                      QCOMPARE(in<QLineEdit>(dialog, "editName")->text(), "tarvo.phi");
                      ModalScript::press("OK")(dialog);
                  },
                  ModalScript::press("No"), ModalScript::press("Yes")},
                 {}, &texts));
    QCOMPARE(texts, QStringList(2, "Replace what was typed by the definition of \"tarvo.phi\"?"));
    QVERIFY(dialogs::sameAttribute(attribute, defaultAttribute("tarvo.phi")));

    // An attribute that is there keeps its name.
    attribute = byteAttribute("own.a");
    QVERIFY(edit(attribute, Purpose::EDIT, {[&](QDialog* dialog) {
                     auto* tree = in<QTreeWidget>(dialog, "treeSuggestions");
                     QVERIFY(!tree->isVisible());
                     QVERIFY(in<QLineEdit>(dialog, "editName")->isReadOnly());
                     QTest::mouseClick(in<QToolButton>(dialog, "buttonSuggestions"),
                                       Qt::LeftButton);
                     QVERIFY(tree->isVisible());
                     QCoreApplication::processEvents();  // the list gets its size
                     click(dialog, "tarvo.phi");
                     ModalScript::press("OK")(dialog);
                 }}));
    PointAttribute expected = defaultAttribute("tarvo.phi");
    expected.name = "own.a";
    QVERIFY(dialogs::sameAttribute(attribute, expected));
}

void AttributeEditorTest::definitionsAreCopiedPastedLoadedAndSaved() {
    const QString file = m_folder.filePath("attribute.json");
    const auto menuOf = [](QDialog* dialog) {
        return in<QToolButton>(dialog, "buttonMenu")->menu();
    };
    const auto openMenu = [&](QDialog* dialog) { emit menuOf(dialog)->aboutToShow(); };
    PointAttribute attribute = defaultAttribute("tarvo.class");
    QApplication::clipboard()->setText("{\"a\": 1}");
    edit(attribute, Purpose::ADD,
         {[&](QDialog* dialog) {
              openMenu(dialog);
              QVERIFY(!in<QAction>(dialog, "actionPaste")->isEnabled());
              auto* copies = menuOf(dialog)->actions().first()->menu();
              QVERIFY(copies);
              copies->actions().first()->trigger();
              in<QAction>(dialog, "actionSave")->trigger();
              dialog->reject();
          },
          ModalScript::chooseFile(file)});
    QCOMPARE(QApplication::clipboard()->text(),
             tarvo::common::quoted(QString::fromStdString(attribute.toJson()),
                                   tarvo::common::Quoting::JSON));

    PointAttribute pasted = byteAttribute("");
    QVERIFY(edit(pasted, Purpose::ADD, {[&](QDialog* dialog) {
                     openMenu(dialog);
                     QVERIFY(in<QAction>(dialog, "actionPaste")->isEnabled());
                     in<QAction>(dialog, "actionPaste")->trigger();
                     ModalScript::press("OK")(dialog);
                 }}));
    QVERIFY(dialogs::sameAttribute(pasted, attribute));

    PointAttribute loaded = byteAttribute("");
    QVERIFY(edit(loaded, Purpose::ADD,
                 {[&](QDialog* dialog) {
                      in<QAction>(dialog, "actionLoad")->trigger();
                      ModalScript::press("OK")(dialog);
                  },
                  ModalScript::chooseFile(file)}));
    QVERIFY(dialogs::sameAttribute(loaded, attribute));

    // Files that hold something else leave the form as it is.
    for (const char* text : {"{}", "[1]", "no JSON", "{\"name\": 5}", ""}) {
        writeTo(file, text);
        QVERIFY(!edit(loaded, Purpose::ADD,
                      {[&](QDialog* dialog) {
                           in<QAction>(dialog, "actionLoad")->trigger();
                           QCOMPARE(in<QLineEdit>(dialog, "editName")->text(), "tarvo.class");
                           dialog->reject();
                       },
                       ModalScript::chooseFile(file), ModalScript::press("OK")}));
    }
}

void AttributeEditorTest::namedValuesComeBackByteForByte() {
    for (const char* text :
         {"0=no\n1=yes", "0=no\n1=yes\n", " 0 = no \r\n\r\nwhat\n=\nx=1\n0.5==\xff", "", "\n"}) {
        std::string values = text;
        ModalScript script({ModalScript::press("OK")});
        QVERIFY(DialogNamedValues::edit(values, nullptr, nullptr) == true);
        QCOMPARE(values, std::string(text));
    }
    // What changed is written anew, the other lines stay.
    auto values = dialogs::readNamedValues("0 = no \nwhat\n2=b");
    QCOMPARE(values.size(), 3u);
    QVERIFY(!values[1].understood);
    values[2].name = "c";
    values[2].line.clear();
    QCOMPARE(dialogs::writeNamedValues(values), std::string("0 = no \nwhat\n2=c"));
    for (const auto& entry : tarvo::qrb::defaults::attributes())
        QCOMPARE(dialogs::writeNamedValues(dialogs::readNamedValues(entry.namedValues)),
                 entry.namedValues);
}

void AttributeEditorTest::namedValuesAreEditedAsATable() {
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

void AttributeEditorTest::namedValuesGoThroughCsvFiles() {
    const std::vector<dialogs::NamedValue> values{
        {"0", "plain"}, {"-1.5", "a, \"b\""}, {"1e3", "\xc3\xa4=\xe2\x82\xac"}, {"7", ""}};
    const QByteArray csv = dialogs::namedValuesToCsv(values);
    QVERIFY(csv.startsWith("value,name\r\n0,plain\r\n-1.5,\"a, \"\"b\"\"\"\r\n"));
    QCOMPARE(dialogs::writeNamedValues(dialogs::namedValuesFromCsv(csv)),
             dialogs::writeNamedValues(values));
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
        {"1,\xff", "The file is no UTF-8 text."},
    };
    for (const auto& fault : faults) {
        const QByteArray text(fault.first);
        QCOMPARE(messageOf([&] { (void)dialogs::namedValuesFromCsv(text); }),
                 QString(fault.second));
    }
    QCOMPARE(dialogs::namedValuesFromCsv("\xef\xbb\xbfvalue,name\n+2,two").at(0).value, "2");

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

void AttributeEditorTest::lodSettingsAreChosen() {
    PointAttribute attribute = byteAttribute("own.a");
    const auto choose = [](QDialog* dialog) {
        auto* method = in<QComboBox>(dialog, "editMethod");
        QCOMPARE(method->count(), 6);
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

void AttributeEditorTest::attributeIsAddedToTheDatabase() {
    withWindow(true, [](WindowDriver& driver, MainWindow&) {
        QVERIFY(!driver.child<QAction>("actionPointAttributeEdit")->isEnabled());
        driver.run("actionPointAttributeAdd", {[](QDialog* dialog) {
                       typeInto(dialog, "editName", "own.quality");
                       typeInto(dialog, "editTitle", "Quality");
                       typeInto(dialog, "editMaximumValue", "1000");
                       QCOMPARE(in<QLabel>(dialog, "labelDataTypeValue")->text(),
                                "UINT16 (2 bytes)");
                       ModalScript::press("OK")(dialog);
                   }});
        auto* tree = driver.child<QTreeWidget>("treePointAttributes");
        QVERIFY(tree->currentItem());
        QCOMPARE(tree->currentItem()->text(0), "own.quality");
        QCOMPARE(tree->currentItem()->text(2), "UINT16");
        QVERIFY(driver.child<QAction>("actionPointAttributeEdit")->isEnabled());
        // The name is taken now.
        driver.run("actionPointAttributeAdd", {[](QDialog* dialog) {
                       typeInto(dialog, "editName", "own.quality");
                       QVERIFY(!okButton(dialog)->isEnabled());
                       dialog->reject();
                   }});
    });
    withWindow(false, [](WindowDriver& driver, MainWindow&) {
        const auto texts = driver.run("actionPointAttributeAdd", {ModalScript::press("OK")});
        QVERIFY(texts.value(0).startsWith("No transaction is pending."));
    });
}

void AttributeEditorTest::refusedEditComesUpAgainWithWhatWasTyped() {
    withWindow(true, [](WindowDriver& driver, MainWindow&) {
        const QString name = "tarvo.target_index";
        QVERIFY(driver.select("treePointAttributes", name));
        // Points differ, so that the library takes no constant.
        const auto texts = driver.run(
            "actionPointAttributeEdit",
            {[](QDialog* dialog) {
                 typeInto(dialog, "editTitle", "Typed");
                 auto* storage = in<QComboBox>(dialog, "editStorageClass");
                 storage->setFocus();
                 QTest::keyClicks(storage, "constant");
                 ModalScript::press("OK")(dialog);
             },
             ModalScript::press("OK"),
             [](QDialog* dialog) {
                 QCOMPARE(in<QLineEdit>(dialog, "editTitle")->text(), "Typed");
                 QCOMPARE(in<QComboBox>(dialog, "editStorageClass")->currentText(), "constant");
                 auto* storage = in<QComboBox>(dialog, "editStorageClass");
                 storage->setFocus();
                 QTest::keyClicks(storage, "dynamic");
                 typeInto(dialog, "editMaximumValue", "3");
                 QVERIFY(!shown(dialog, "labelConversion").isEmpty());
                 ModalScript::press("OK")(dialog);
             }});
        QVERIFY(texts.value(0).contains("can't become constant"));
        auto* row = driver.child<QTreeWidget>("treePointAttributes")->currentItem();
        QVERIFY(row);
        QCOMPARE(row->text(0), name);
        QCOMPARE(row->text(1), "Typed");
        QCOMPARE(row->text(3), "dynamic");

        // Points are found by the primary attribute: that is said before the library is asked.
        QVERIFY(driver.select("treePointAttributes", "tarvo.xyz[3]*"));
        driver.run("actionPointAttributeEdit", {[](QDialog* dialog) {
                       QVERIFY(okButton(dialog)->isEnabled());
                       QTest::keyClick(in<QLineEdit>(dialog, "editMaximumValue"), Qt::Key_Up);
                       QCOMPARE(shown(dialog, "checkRange").left(32),
                                "Points are found by these values");
                       dialog->reject();
                   }});
    });
}

void AttributeEditorTest::unchangedEditWritesNothing() {
    // Without a transaction any writing is refused with a message box.
    withWindow(false, [](WindowDriver& driver, MainWindow&) {
        QVERIFY(driver.select("treePointAttributes", "tarvo.target_index"));
        driver.run("actionPointAttributeEdit", {ModalScript::press("OK")});
        const auto texts =
            driver.run("actionPointAttributeEdit",
                       {[](QDialog* dialog) {
                            typeInto(dialog, "editTitle", "Typed");
                            ModalScript::press("OK")(dialog);
                        },
                        ModalScript::press("OK"),
                        [](QDialog* dialog) {
                            QCOMPARE(in<QLineEdit>(dialog, "editTitle")->text(), "Typed");
                            ModalScript::press("Cancel")(dialog);
                        }});
        QVERIFY(texts.value(0).startsWith("No transaction is pending."));
    });
}

void AttributeEditorTest::doubleClickEditsAttributesOnly() {
    withWindow(false, [](WindowDriver& driver, MainWindow&) {
        auto* tree = driver.child<QTreeWidget>("treePointAttributes");
        auto* group = tree->topLevelItem(0);
        const bool expanded = group->isExpanded();
        const auto doubleClick = [tree](QTreeWidgetItem* row) {
            const QPoint at = tree->visualItemRect(row).center();
            QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, at);
            QTest::mouseDClick(tree->viewport(), Qt::LeftButton, {}, at);
        };
        doubleClick(group);
        QCOMPARE(group->isExpanded(), !expanded);
        QVERIFY(!driver.child<QAction>("actionPointAttributeEdit")->isEnabled());
        group->setExpanded(true);
        ModalScript script({[](QDialog* dialog) {
            QCOMPARE(dialog->windowTitle(), "Edit Point Attribute");
            dialog->reject();
        }});
        doubleClick(group->child(0));
        QCOMPARE(script.answered(), 1u);
        // Several rows can't be edited at once.
        tree->selectAll();
        QVERIFY(!driver.child<QAction>("actionPointAttributeEdit")->isEnabled());
    });
}

void AttributeEditorTest::everyFieldHasANameAndAKey() {
    const auto check = [](QDialog* dialog) {
        QStringList nameless;
        for (QWidget* widget : dialog->findChildren<QWidget*>()) {
            if (!(widget->focusPolicy() & Qt::TabFocus) || widget->objectName().isEmpty() ||
                widget->objectName().startsWith("qt_") ||
                qobject_cast<QComboBox*>(widget->parentWidget()) ||
                qobject_cast<QAbstractScrollArea*>(widget->parentWidget()) ||
                qobject_cast<QAbstractSpinBox*>(widget->parentWidget()) ||
                widget->objectName() == "scrollForm")
                continue;
            auto* accessible = QAccessible::queryAccessibleInterface(widget);
            if (!accessible || accessible->text(QAccessible::Name).isEmpty())
                nameless += widget->objectName();
        }
        QCOMPARE(nameless, QStringList());
        // No two labels or buttons claim the same key.
        QStringList keys;
        const auto add = [&](const QString& text) {
            const auto key = QKeySequence::mnemonic(text).toString();
            if (!key.isEmpty()) {
                QVERIFY2(!keys.contains(key), qPrintable(text));
                keys += key;
            }
        };
        for (const auto* label : dialog->findChildren<QLabel*>())
            if (label->buddy())
                add(label->text());
        for (const auto* button : dialog->findChildren<QAbstractButton*>())
            add(button->text());
        dialog->reject();
    };
    PointAttribute attribute = byteAttribute("own.a");
    edit(attribute, Purpose::ADD, {check});
    std::string text = "0=no";
    ModalScript named({check});
    DialogNamedValues::edit(text, &attribute, nullptr);
    ModalScript lod({check});
    DialogPointAttributeLod::edit(text, nullptr);
}

GUI_TEST_MAIN(AttributeEditorTest)
#include "attributeeditortest.moc"
