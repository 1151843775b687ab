// The editor of point attribute definitions as the tab opens it: what it adds to the database, and
// what it changes there only when that is agreed to.

#include "qrb/loader.h"
#include "tests/window/attributeediting.h"
#include "tests/window/guitestmain.h"
#include "tests/window/testdatabase.h"
#include "tests/window/windowdriver.h"
#include "window/common/programsettings.h"
#include "window/frame/mainwindow.h"

#include <QAction>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QTreeWidget>
#include <QtTest>

using namespace tarvo::core;
using namespace tarvo::window;

class AttributeTabTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanupTestCase();

    void attributeIsAddedToTheDatabase();
    void refusedEditComesUpAgainWithWhatWasTyped();
    void valuesChangeOnlyWhenThatIsAgreedTo();
    void unchangedEditWritesNothing();
    void doubleClickEditsAttributesOnly();

private:
    void withWindow(bool transaction,
                    const std::function<void(WindowDriver&, MainWindow&)>& action);

    QTemporaryDir m_folder;
    TestDatabase m_original;
};

void AttributeTabTest::initTestCase() {
    tarvo::qrb::loadLibrary("");
    m_original = makeTestDatabase(m_folder.path());
    QVERIFY2(m_original.error.isEmpty(), qUtf8Printable(m_original.error));
}

void AttributeTabTest::init() {
    QTest::failOnWarning(QRegularExpression("No matching signal|QMetaObject|QObject::connect"));
    ProgramSettings().remove("");
    DialogSettings("").clear();
}

void AttributeTabTest::cleanupTestCase() {
    tarvo::qrb::freeLibrary();
}

void AttributeTabTest::withWindow(bool transaction,
                                  const std::function<void(WindowDriver&, MainWindow&)>& action) {
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

void AttributeTabTest::attributeIsAddedToTheDatabase() {
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
}

void AttributeTabTest::refusedEditComesUpAgainWithWhatWasTyped() {
    withWindow(true, [](WindowDriver& driver, MainWindow&) {
        const QString name = "tarvo.target_index";
        QVERIFY(driver.select("treePointAttributes", name));
        // Points differ, so that the library takes no constant.
        const auto texts = driver.run(
            "actionPointAttributeEdit",
            {[](QDialog* dialog) {
                 typeInto(dialog, "editTitle", "Typed");
                 typeInto(dialog, "editMaximumValue", "3");
                 auto* storage = in<QComboBox>(dialog, "editStorageClass");
                 storage->setFocus();
                 QTest::keyClicks(storage, "constant");
                 ModalScript::press("OK")(dialog);
             },
             ModalScript::press("Convert"), ModalScript::press("OK"),
             [](QDialog* dialog) {
                 QCOMPARE(in<QLineEdit>(dialog, "editTitle")->text(), "Typed");
                 QCOMPARE(in<QComboBox>(dialog, "editStorageClass")->currentText(), "constant");
                 auto* storage = in<QComboBox>(dialog, "editStorageClass");
                 storage->setFocus();
                 QTest::keyClicks(storage, "dynamic");
                 // As against what is stored, not what was typed before.
                 QVERIFY(!shown(dialog, "labelConversion").isEmpty());
                 ModalScript::press("OK")(dialog);
             },
             ModalScript::press("Convert")});
        QVERIFY(texts.value(1).contains("can't become constant"));
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
                       QVERIFY(shown(dialog, "checkRange")
                                   .startsWith("The library may refuse this: Points are found by"));
                       dialog->reject();
                   }});
    });
}

void AttributeTabTest::valuesChangeOnlyWhenThatIsAgreedTo() {
    withWindow(true, [](WindowDriver& driver, MainWindow&) {
        const QString name = "tarvo.target_index";
        const auto* tree = driver.child<QTreeWidget>("treePointAttributes");
        QVERIFY(driver.select("treePointAttributes", name));
        const auto setMaximum = [](const QString& maximum) {
            return [maximum](QDialog* dialog) {
                typeInto(dialog, "editMaximumValue", maximum);
                ModalScript::press("OK")(dialog);
            };
        };
        QCOMPARE(driver.run("actionPointAttributeEdit", {setMaximum("100000")}), QStringList());
        QCOMPARE(tree->currentItem()->text(2), "UINT32");
        const auto texts =
            driver.run("actionPointAttributeEdit",
                       {setMaximum("1"),
                        [](QDialog* dialog) {  // what Return does
                            QTest::keyClick(qobject_cast<QMessageBox*>(dialog)->defaultButton(),
                                            Qt::Key_Return);
                        },
                        [](QDialog* dialog) {
                            QCOMPARE(in<QLineEdit>(dialog, "editMaximumValue")->text(), "1");
                            ModalScript::press("OK")(dialog);
                        },
                        ModalScript::press("Convert")});
        QCOMPARE(texts.size(), 2);
        QVERIFY2(
            texts[0].contains(" values of \"tarvo.target_index\" lie outside 1 to 1 and would"),
            qPrintable(texts[0]));
        QCOMPARE(tree->currentItem()->text(2), "UINT8");
    });
}

void AttributeTabTest::unchangedEditWritesNothing() {
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
                        ModalScript::press("No"),
                        [](QDialog* dialog) {
                            QCOMPARE(in<QLineEdit>(dialog, "editTitle")->text(), "Typed");
                            ModalScript::press("Cancel")(dialog);
                        }});
        QVERIFY(texts.value(0).startsWith("No transaction is pending."));
    });
}

void AttributeTabTest::doubleClickEditsAttributesOnly() {
    withWindow(false, [](WindowDriver& driver, MainWindow&) {
        auto* tree = driver.child<QTreeWidget>("treePointAttributes");
        auto* group = tree->topLevelItem(0);
        const bool expanded = group->isExpanded();
        doubleClickRow(group);
        QCOMPARE(group->isExpanded(), !expanded);
        QVERIFY(!driver.child<QAction>("actionPointAttributeEdit")->isEnabled());
        group->setExpanded(true);
        ModalScript script({[](QDialog* dialog) {
            QCOMPARE(dialog->windowTitle(), "Edit Point Attribute");
            dialog->reject();
        }});
        doubleClickRow(group->child(0));
        QCOMPARE(script.answered(), 1u);
        // Several rows can't be edited at once.
        tree->selectAll();
        QVERIFY(!driver.child<QAction>("actionPointAttributeEdit")->isEnabled());
    });
}

GUI_TEST_MAIN(AttributeTabTest)
#include "attributetabtest.moc"
