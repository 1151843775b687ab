// Transactions, from their beginning to their end, driven with mouse and keys.

#include "tests/window/guitestmain.h"
#include "tests/window/notedwindow.h"
#include "window/common/programsettings.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QtTest>

using namespace tarvo::window;

class TransactionsTest : public NotedWindowTest {
    Q_OBJECT

private slots:
    void transactionIsBegunSignedAndListed();
    void rollbackAsksAndTakesBack();
    void pendingTransactionIsNotDroppedUnasked();
    void oldTransactionsAreMeasuredRestoredAndDeleted();
    void failuresShowOneBoxAndLeaveTheWindowUsable();
    void doubleClickShowsATransaction();
    void signatureKeyIsJudgedCountedAndRemembered();
};

void TransactionsTest::transactionIsBegunSignedAndListed() {
    showTab("tabTransactions");
    QCOMPARE(child<QLabel>("labelTransactions")->text(), "Transactions: 3, Current transaction: 3");
    QVERIFY(!child<QAction>("actionTransactionCommit")->isEnabled());
    run("actionTransactionBegin", {[](QDialog* dialog) {
            // What the database assigns is closed, the title waits for the user.
            QVERIFY(!in<QLineEdit>(dialog, "editID")->isEnabled());
            QVERIFY(in<QLineEdit>(dialog, "editAgent")->text().startsWith("qrbadmin "));
            QCOMPARE(in<QLineEdit>(dialog, "editTitle")->selectedText(),
                     in<QLineEdit>(dialog, "editTitle")->text());
            QTest::keyClicks(in<QLineEdit>(dialog, "editTitle"), "A new state");
            in<QPlainTextEdit>(dialog, "editComments")->setPlainText("because");
            ModalScript::press("OK")(dialog);
        }});
    QCOMPARE(child<QLabel>("labelTransactions")->text(), "Transaction pending...");
    QVERIFY(!child<QAction>("actionTransactionBegin")->isEnabled());
    run("actionTransactionCommit", {[this](QDialog* dialog) {
            auto* method = in<QComboBox>(dialog, "editMethod");
            QCOMPARE(method->count(), 2);
            method->setCurrentIndex(0);
            QVERIFY(!in<QPlainTextEdit>(dialog, "editKey")->isEnabled());
            method->setCurrentIndex(1);
            QVERIFY(in<QPlainTextEdit>(dialog, "editKey")->isEnabled());
            QTest::keyClicks(in<QPlainTextEdit>(dialog, "editKey"), m_key);
            QCOMPARE(in<QLabel>(dialog, "labelKeySize")->text(), "(3 bytes)");
            ModalScript::press("OK")(dialog);
        }});
    QCOMPARE(child<QLabel>("labelTransactions")->text(), "Transactions: 4, Current transaction: 4");
    QVERIFY(log()->toPlainText().contains("[#4] A new state\n"));
    QVERIFY(log()->toPlainText().contains("Comments: because\n"));
    QCOMPARE(log()->toPlainText().count("\nSignature: "), 2);
}

void TransactionsTest::rollbackAsksAndTakesBack() {
    showTab("tabTransactions");
    begin("dropped");
    prepare([](tarvo::qrb::Pointcloud&) {});  // readers are let in
    QCOMPARE(run("actionTransactionRollback", {ModalScript::press("No")}),
             QStringList("Rollback current transaction?\nAll changes will be lost."));
    QVERIFY(child<QAction>("actionTransactionCommit")->isEnabled());
    run("actionTransactionRollback", {ModalScript::press("Yes")});
    QCOMPARE(child<QLabel>("labelTransactions")->text(), "Transactions: 3, Current transaction: 3");
}

void TransactionsTest::pendingTransactionIsNotDroppedUnasked() {
    begin("kept");
    {
        ModalScript stay({ModalScript::press("No")});
        m_window->close();
        QCOMPARE(stay.answered(), 1u);
        QVERIFY(m_window->isVisible());
    }
    ModalScript stay({ModalScript::press("No")});
    child<QAction>("actionClose")->trigger();
    QCOMPARE(stay.answered(), 1u);
    QCOMPARE(child<QLabel>("labelTransactions")->text(), "Transaction pending...");
}

void TransactionsTest::oldTransactionsAreMeasuredRestoredAndDeleted() {
    showTab("tabTransactions");
    QCOMPARE(run("actionTransactionSize", {ModalScript::press("OK")}),
             QStringList("No transaction selected."));
    QVERIFY(select("treeTransactions", "2"));
    const QString size = run("actionTransactionSize", {ModalScript::press("OK")}).value(0);
    QVERIFY2(size.startsWith("Size of transaction 2:\n\n"), qUtf8Printable(size));
    QVERIFY(select("treeTransactions", "3*", true));
    QVERIFY(run("actionTransactionSize", {ModalScript::press("OK")})
                .value(0)
                .startsWith("Size of selected transactions (2):\n\n"));

    QVERIFY(select("treeTransactions", "1"));
    QVERIFY(run("actionTransactionRestore", {ModalScript::press("Yes")})
                .value(0)
                .startsWith("Restore transaction \""));
    QCOMPARE(child<QLineEdit>("editPointsTotal")->text(), "0");
    QVERIFY(select("treeTransactions", "3"));
    run("actionTransactionRestore", {ModalScript::press("Yes")});
    QCOMPARE(child<QLineEdit>("editPointsTotal")->text(),
             QLocale().toString(m_original.pointCount));

    QVERIFY(select("treeTransactions", "2"));
    QVERIFY(run("actionTransactionDiscard", {ModalScript::press("Yes")})
                .value(0)
                .startsWith("Delete transaction 2?\n\nPlease note, that the first transaction (1) "
                            "and \nthe current transaction (3) can not be deleted."));
    QCOMPARE(tree("treeTransactions")->topLevelItemCount(), 2);
    run("actionManagementFinalize", {ModalScript::press("Yes")});
    run("actionManagementVacuum", {ModalScript::press("Yes")});
    QCOMPARE(child<QLabel>("labelTransactions")->text(), "Transactions: 2, Current transaction: 3");
}

void TransactionsTest::failuresShowOneBoxAndLeaveTheWindowUsable() {
    showTab("tabTransactions");
    QVERIFY(select("treeTransactions", "1"));
    const QStringList texts =
        run("actionTransactionDiscard", {ModalScript::press("Yes"), ModalScript::press("OK")});
    QCOMPARE(texts.size(), 2);
    QVERIFY2(texts[1].contains("can't be discarded"), qUtf8Printable(texts[1]));
    QVERIFY(!QApplication::overrideCursor());
    // Another writer has the file.
    const tarvo::qrb::Context context("OFF", "");
    tarvo::qrb::Pointcloud other(context);
    other.open(m_file.toStdString(), tarvo::qrb::pointcloud::OpenSettings(context));
    other.transactions().begin("elsewhere", "tests");
    run("actionTransactionBegin", {ModalScript::press("OK"), ModalScript::press("OK")});
    QVERIFY(child<QAction>("actionTransactionBegin")->isEnabled());
    other.transactions().rollback();
    begin("now it works");
    QCOMPARE(child<QLabel>("labelTransactions")->text(), "Transaction pending...");
}

void TransactionsTest::doubleClickShowsATransaction() {
    showTab("tabTransactions");
    auto* row = select("treeTransactions", "3*");
    QVERIFY(row);
    ModalScript script({[](QDialog* dialog) {
        QCOMPARE(in<QLineEdit>(dialog, "editID")->text(), "3");
        QCOMPARE(in<QLineEdit>(dialog, "editTitle")->text(), "Notes");
        QVERIFY(in<QLineEdit>(dialog, "editTitle")->isReadOnly());
        QVERIFY(!in<QAction>(dialog, "actionClearComments")->isEnabled());
        QVERIFY(in<QAction>(dialog, "actionSaveComments")->isEnabled());
        ModalScript::press("Cancel")(dialog);
    }});
    doubleClickRow(row);
    QCOMPARE(script.answered(), 1u);
}

void TransactionsTest::signatureKeyIsJudgedCountedAndRemembered() {
    begin("keys");
    run("actionTransactionCommit", {[](QDialog* dialog) {
            auto* key = in<QPlainTextEdit>(dialog, "editKey");
            auto* size = in<QLabel>(dialog, "labelKeySize");
            QCOMPARE(size->text(), "(0 bytes)");
            in<QComboBox>(dialog, "editMethod")->setCurrentIndex(1);
            key->setPlainText("ab cd");
            QCOMPARE(size->text(), "(2 bytes)");
            QVERIFY(!key->property("invalid").toBool());
            key->setPlainText("abc");
            QVERIFY(key->property("invalid").toBool());
            QVERIFY(key->toolTip().startsWith("A key is pairs of hexadecimal digits"));
            QTest::mouseClick(in<QPushButton>(dialog, "buttonRandomKey"), Qt::LeftButton);
            QCOMPARE(size->text(), "(32 bytes)");
            QVERIFY(!key->property("invalid").toBool());
            QCOMPARE(key->toPlainText().count('\n'), 3);
            key->setPlainText("12 34");
            ModalScript::press("Cancel")(dialog);
        }});
    run("actionTransactionCommit", {[](QDialog* dialog) {
            QCOMPARE(in<QComboBox>(dialog, "editMethod")->currentIndex(), 1);
            QCOMPARE(in<QPlainTextEdit>(dialog, "editKey")->toPlainText(), "12 34");
            ModalScript::press("Cancel")(dialog);
        }});
    const QFileInfo settings(DialogSettings("").fileName());
    QVERIFY(!(settings.permissions() & (QFile::ReadGroup | QFile::ReadOther)));
}

GUI_TEST_MAIN(TransactionsTest)
#include "transactionstest.moc"
