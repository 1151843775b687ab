// The editor of point attribute definitions: its fields and suggestions.

#include "core/attributerules.h"
#include "core/defaultattribute.h"
#include "qrb/loader.h"
#include "tests/window/attributeediting.h"
#include "tests/window/attributesamples.h"
#include "tests/window/guitestmain.h"
#include "window/common/clipboard.h"
#include "window/common/programsettings.h"
#include "window/dialogs/attribute/dialognamedvalues.h"
#include "window/dialogs/attribute/dialogpointattribute.h"
#include "window/dialogs/attribute/dialogpointattributelod.h"
#include "window/dialogs/attribute/numberedit.h"

#include <QAccessible>
#include <QAction>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QToolButton>
#include <QTreeWidget>
#include <QtTest>

using namespace tarvo::core;
using namespace tarvo::window;

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
    void everyFieldCountsAsTyped();
    void definitionsAreCopiedPastedLoadedAndSaved();
    void everyFieldHasANameAndAKey();

private:
    QTemporaryDir m_folder;
};

void AttributeEditorTest::initTestCase() {
    tarvo::qrb::loadLibrary("");
}

void AttributeEditorTest::init() {
    QTest::failOnWarning(QRegularExpression("No matching signal|QMetaObject|QObject::connect"));
    ProgramSettings().remove("");
    DialogSettings("").clear();
}

void AttributeEditorTest::cleanupTestCase() {
    tarvo::qrb::freeLibrary();
}

void AttributeEditorTest::defaultAttributesComeBackUnchanged() {
    QCOMPARE(tarvo::catalogue::attributes().size(), 247u);
    for (const auto& entry : tarvo::catalogue::attributes()) {
        const PointAttribute before = tarvo::core::defaultAttribute(entry);
        PointAttribute attribute = before;
        bool wrong = false;
        const bool accepted = edit(attribute, Purpose::PRIMARY, {[&](QDialog* dialog) {
                                       // Those of the point id's kind only are told of when they
                                       // aren't one number.
                                       wrong = !okButton(dialog)->isEnabled();
                                       ModalScript::press(wrong ? "Cancel" : "OK")(dialog);
                                   }});
        QVERIFY2(accepted && !wrong, entry.name.c_str());
        QVERIFY2(sameAttribute(before, attribute), entry.name.c_str());
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
    QVERIFY(sameAttribute(before, attribute));
    QVERIFY(std::signbit(attribute.minimumValue));

    attribute.storageClass = 0;
    attribute.compressionOptions = 9;
    QVERIFY(!edit(
        attribute, Purpose::EDIT, {[](QDialog* dialog) {
            QCOMPARE(in<QComboBox>(dialog, "editStorageClass")->currentText(), "unknown (0)");
            QCOMPARE(in<QComboBox>(dialog, "editCompressionOptions")->currentText(), "unknown (9)");
            QVERIFY(shown(dialog, "checkStorage").endsWith("The storage class 0 is unknown."));
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
        // What another library might take is told, and can be tried.
        const auto warn = [dialog](const char* field, const QString& text, const char* label,
                                   const QString& message) {
            typeInto(dialog, field, text);
            QCOMPARE(shown(dialog, label), "The library may refuse this: " + message);
            QCOMPARE(shown(dialog, "labelSummary"), shown(dialog, label));
            QVERIFY(okButton(dialog)->isEnabled());
        };
        warn("editName", "9a", "checkName", "A name begins with a letter or \"_\".");
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
        warn("editDefaultValue", "1000", "checkDefault",
             "The default value is neither in the range nor the invalid value.");
        QTest::mouseClick(in<QCheckBox>(dialog, "boxNoInvalidValue"), Qt::LeftButton);
        typeInto(dialog, "editInvalidValue", "1000");
        QVERIFY(okButton(dialog)->isEnabled());
        // Without an invalid value its text does not count, whatever it is.
        const auto turn = [dialog] {
            QTest::mouseClick(in<QCheckBox>(dialog, "boxNoInvalidValue"), Qt::LeftButton);
            return shown(dialog, "checkDefault").isEmpty();
        };
        QVERIFY(!turn());
        QVERIFY(turn());
        typeInto(dialog, "editDefaultValue", "5");
        expect("editInvalidValue", "x", "checkDefault", "\"x\" is no number.");
        QVERIFY(turn());
        typeInto(dialog, "editResolution", "1e-15");
        QVERIFY(shown(dialog, "checkRange").contains("a range of more than 2^53 steps"));
        typeInto(dialog, "editResolution", "1");

        typeInto(dialog, "editTags", "b,,c");
        QCOMPARE(shown(dialog, "checkTags"), "Note: There is an empty tag.");
        QVERIFY(okButton(dialog)->isEnabled());
        typeInto(dialog, "editLodSettings", "guess");
        QVERIFY(shown(dialog, "checkLodSettings").contains("\"guess\" is unknown"));
        // A return in a field must not get past an error.
        typeInto(dialog, "editLodSettings", "{");
        QTest::keyClick(in<QLineEdit>(dialog, "editLodSettings"), Qt::Key_Return);
        QVERIFY(dialog->isVisible());
        dialog->reject();
    };
    QVERIFY(!edit(attribute, Purpose::ADD, {check}, {"tarvo.xyz"}));
    QVERIFY(sameAttribute(attribute, before));
}

void AttributeEditorTest::arrowKeysStepByTheResolution() {
    PointAttribute attribute = byteAttribute("own.a");
    attribute.resolution = 0.1;
    QVERIFY(edit(
        attribute, Purpose::EDIT, {[](QDialog* dialog) {
            auto* field = in<NumberEdit>(dialog, "editDefaultValue");
            field->setFocus();
            for (int i = 0; i < 3; ++i)
                QTest::keyClick(field, Qt::Key_Up);
            QCOMPARE(field->text(), "0.3");
            QTest::keyClick(field, Qt::Key_Up, Qt::ControlModifier);
            QCOMPARE(field->text(), "1.3");
            QTest::keyClick(field, Qt::Key_Down);
            QTest::keyClick(field, Qt::Key_Z, Qt::ControlModifier);
            QCOMPARE(field->text(), "1.3");
            auto* resolution = in<NumberEdit>(dialog, "editResolution");
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
    QVERIFY(edit(attribute, Purpose::ADD, {[](QDialog* dialog) {
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
                     QTest::keyClick(filter,
                                     Qt::Key_Return);  // takes nothing before words were typed
                     QVERIFY(in<QLineEdit>(dialog, "editName")->text().isEmpty());
                     QTest::keyClicks(filter, "XYZ  socs");
                     QCOMPARE(visible(), QStringList("tarvo.xyz_socs (exists already)"));
                     // What is there already can be taken neither by key nor by mouse.
                     QTest::keyClick(filter, Qt::Key_Return);
                     clickRow(tree->findItems("tarvo.xyz_socs", Qt::MatchStartsWith).first());
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
    QVERIFY(sameAttribute(attribute, defaultAttribute("tarvo.reflectance")));
}

void AttributeEditorTest::typedTextsAreNotReplacedUnasked() {
    PointAttribute attribute = byteAttribute("");
    QStringList texts;
    const auto click = [](QDialog* dialog, const QString& name) {
        auto* tree = in<QTreeWidget>(dialog, "treeSuggestions");
        clickRow(tree->findItems(name, Qt::MatchExactly).first());
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
    QVERIFY(sameAttribute(attribute, defaultAttribute("tarvo.phi")));

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
    QVERIFY(sameAttribute(attribute, expected));
}

void AttributeEditorTest::everyFieldCountsAsTyped() {
    const std::pair<const char*, const char*> fields[] = {{"editName", "own.b"},
                                                          {"editTitle", "b"},
                                                          {"editTags", "b"},
                                                          {"editDescription", "b"},
                                                          {"editUnitSymbol", "b"},
                                                          {"editLength", "2"},
                                                          {"editMinimumValue", "1"},
                                                          {"editMaximumValue", "9"},
                                                          {"editResolution", "0.5"},
                                                          {"editScaleFactor", "2"},
                                                          {"editDefaultValue", "3"},
                                                          {"editStorageClass", "dynamic"},
                                                          {"editCompressionOptions", "shuffle"},
                                                          {"editLodSettings", "first"}};
    for (const auto& [field, text] : fields) {
        PointAttribute attribute = byteAttribute("");
        QVERIFY2(!edit(attribute, Purpose::ADD,
                       {[field = field, text = text](QDialog* dialog) {
                            auto* widget = in<QWidget>(dialog, field);
                            widget->setFocus();
                            QTest::keyClicks(widget, text);
                            auto* filter = in<QLineEdit>(dialog, "editSuggestionFilter");
                            type(filter, "tarvo.reflectance");
                            QTest::keyClick(filter, Qt::Key_Return);
                            dialog->reject();
                        },
                        ModalScript::press("No")}),
                 field);
        QVERIFY2(!QTest::currentTestFailed(), field);
    }
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
             quoted(QString::fromStdString(attribute.toJson()), Quoting::JSON));

    PointAttribute pasted = byteAttribute("");
    QVERIFY(edit(pasted, Purpose::ADD, {[&](QDialog* dialog) {
                     openMenu(dialog);
                     QVERIFY(in<QAction>(dialog, "actionPaste")->isEnabled());
                     in<QAction>(dialog, "actionPaste")->trigger();
                     ModalScript::press("OK")(dialog);
                 }}));
    QVERIFY(sameAttribute(pasted, attribute));

    PointAttribute loaded = byteAttribute("");
    QVERIFY(edit(loaded, Purpose::ADD,
                 {[&](QDialog* dialog) {
                      in<QAction>(dialog, "actionLoad")->trigger();
                      ModalScript::press("OK")(dialog);
                  },
                  ModalScript::chooseFile(file)}));
    QVERIFY(sameAttribute(loaded, attribute));

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
