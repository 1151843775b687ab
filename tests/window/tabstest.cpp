// The tabs that change a database, driven with mouse and keys: transactions, changelog, metadata,
// attributes, and what opens from the index and the points.

#include "core/jsonvalues.h"
#include "qrb/loader.h"
#include "qrb/pointcloud.h"
#include "tests/window/guitestmain.h"
#include "tests/window/modalscript.h"
#include "tests/window/testdatabase.h"
#include "tests/window/windowdriver.h"
#include "window/common/guard.h"
#include "window/common/programsettings.h"
#include "window/dialogs/workingdialog.h"
#include "window/frame/mainwindow.h"

#include <QAccessible>
#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPlainTextEdit>
#include <QProgressDialog>
#include <QPushButton>
#include <QScrollBar>
#include <QSpinBox>
#include <QTabWidget>
#include <QTextBrowser>
#include <QThread>
#include <QToolButton>
#include <QTreeWidget>
#include <QtTest>
#include <algorithm>
#include <memory>

using namespace tarvo::window;

namespace {

using Step = ModalScript::Step;

}  // namespace

class TabsTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void cleanupTestCase();

    void transactionIsBegunSignedAndListed();
    void rollbackAsksAndTakesBack();
    void pendingTransactionIsNotDroppedUnasked();
    void oldTransactionsAreMeasuredRestoredAndDeleted();
    void failuresShowOneBoxAndLeaveTheWindowUsable();
    void doubleClickShowsATransaction();
    void changelogIsWalkedEntryByEntry();
    void signatureOfAnEntryIsVerified();
    void messageIsAppendedToTheEntry();
    void changelogsAreExportedAndImported();
    void signatureKeyIsJudgedCountedAndRemembered();
    void metadataIsRemovedExportedAndImported();
    void metadataFilesThatAreWrongAreExplained();
    void metadataItemIsSignedAndUnsigned();
    void attributesAreRemovedAfterAsking();
    void reportsShowPicturesAndAskBeforeLinks();
    void statisticsAddUpToTheIndex();
    void commandsFindNodesOfTheIndex();
    void rangeQueryGoesIntoTheFilter();
    void findBarGoesThroughTheHits();
    void headersSortAndLeadBack();
    void levelOfDetailIsBuiltAndCanBeCancelled();
    void validationTellsWhatItFinds();
    void everyControlHasANameAndAWayToIt();
    void dialogsCanBeUsedWithoutSightAndMouse();
    void methodTextsAreTakenApart();

private:
    template <typename Widget>
    Widget* child(const char* name) const {
        return in<Widget>(m_window.get(), name);
    }
    QTreeWidget* tree(const char* name) const { return child<QTreeWidget>(name); }
    QPlainTextEdit* log() const { return child<QPlainTextEdit>("editChangelog"); }

    void showTab(const char* name) { driver().showTab(name); }
    QStringList run(const char* action, std::vector<Step> steps) {
        return driver().run(action, std::move(steps));
    }
    void begin(const QString& title);
    QTreeWidgetItem* select(const char* treeName, const QString& text, bool add = false) {
        return driver().select(treeName, text, add);
    }
    WindowDriver driver() { return WindowDriver(*m_window); }
    // A second handle on the file that the window shows, for preparing it.
    void prepare(const std::function<void(tarvo::qrb::Pointcloud&)>& change);

    QTemporaryDir m_folder;
    TestDatabase m_original;
    QString m_file;
    std::unique_ptr<MainWindow> m_window;
    const QString m_key = "0a 1b 2c";
};

void TabsTest::initTestCase() {
    tarvo::qrb::loadLibrary("");
    m_original = makeTestDatabase(m_folder.path());
    QVERIFY2(m_original.error.isEmpty(), qUtf8Printable(m_original.error));
}

void TabsTest::cleanupTestCase() {
    tarvo::qrb::freeLibrary();
}

void TabsTest::prepare(const std::function<void(tarvo::qrb::Pointcloud&)>& change) {
    const tarvo::qrb::Context context("OFF", "");
    tarvo::qrb::Pointcloud cloud(context);
    cloud.open(m_file.toStdString(), tarvo::qrb::pointcloud::OpenSettings(context));
    change(cloud);
}

void TabsTest::init() {
    m_file = m_folder.filePath("work.qrbx");
    QFile::remove(m_file);
    QVERIFY(QFile::copy(m_original.fileName, m_file));
    prepare([](tarvo::qrb::Pointcloud& cloud) {
        tarvo::qrb::pointcloud::TransactionGuard guard(cloud.transactions(), "Notes", "tests");
        cloud.metaData().set("own.note", "{\"a\": [1, 2.50]}");
        cloud.metaData().set("own.text", "no { JSON");
        guard.commit({1, {0x0a, 0x1b, 0x2c}});
    });
    m_window = showFreshWindow();
    m_window->openDatabase(m_file, true);
}

void TabsTest::cleanup() {
    ModalScript drop({ModalScript::press("Yes")});  // only where a transaction is pending
    m_window->close();
    m_window.reset();
}

void TabsTest::begin(const QString& title) {
    run("actionTransactionBegin", {[&](QDialog* dialog) {
            QTest::keyClicks(in<QLineEdit>(dialog, "editTitle"), title);
            ModalScript::press("OK")(dialog);
        }});
}

void TabsTest::transactionIsBegunSignedAndListed() {
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

void TabsTest::rollbackAsksAndTakesBack() {
    showTab("tabTransactions");
    begin("dropped");
    prepare([](tarvo::qrb::Pointcloud&) {});  // readers are let in
    QCOMPARE(run("actionTransactionRollback", {ModalScript::press("No")}),
             QStringList("Rollback current transaction?\nAll changes will be lost."));
    QVERIFY(child<QAction>("actionTransactionCommit")->isEnabled());
    run("actionTransactionRollback", {ModalScript::press("Yes")});
    QCOMPARE(child<QLabel>("labelTransactions")->text(), "Transactions: 3, Current transaction: 3");
}

void TabsTest::pendingTransactionIsNotDroppedUnasked() {
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

void TabsTest::oldTransactionsAreMeasuredRestoredAndDeleted() {
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

void TabsTest::failuresShowOneBoxAndLeaveTheWindowUsable() {
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

void TabsTest::doubleClickShowsATransaction() {
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
    auto* list = tree("treeTransactions");
    QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, list->visualItemRect(row).center());
    QCOMPARE(script.answered(), 1u);
}

void TabsTest::changelogIsWalkedEntryByEntry() {
    showTab("tabChangelog");
    QCOMPARE(child<QLabel>("labelChangelogEntries")->text(), "Log entries: 3");
    log()->moveCursor(QTextCursor::Start);
    QStringList headers;
    for (int i = 0; i < 4; ++i) {
        child<QAction>("actionChangelogNext")->trigger();
        headers += log()->textCursor().selectedText();
    }
    QVERIFY(headers[0].startsWith("[#1] ") && headers[1].startsWith("[#2] "));
    QCOMPARE(headers[2], "[#3] Notes");
    QCOMPARE(headers[3], headers[2]);  // nothing after the last
    child<QAction>("actionChangelogPrevious")->trigger();
    QCOMPARE(log()->textCursor().selectedText(), headers[1]);
    QTest::keyClicks(child<QLineEdit>("editChangelogSearch"), "signature:");
    child<QAction>("actionChangelogNext")->trigger();
    QCOMPARE(log()->textCursor().selectedText(), "Signature:");
}

void TabsTest::signatureOfAnEntryIsVerified() {
    showTab("tabChangelog");
    log()->moveCursor(QTextCursor::Start);
    QCOMPARE(run("actionChangelogVerifyLogEntry", {ModalScript::press("OK")}),
             QStringList("Please select (double click) a signature first."));
    // Letters of two bytes and more stand before the entry.
    log()->insertPlainText(QString::fromUtf8("\u00e4\u20ac").repeated(500) + "\n");
    log()->moveCursor(QTextCursor::End);
    const auto verify = [this](const QString& key) -> Step {
        return [=, this](QDialog* dialog) {
            QCOMPARE(in<QLineEdit>(dialog, "editName")->text(), "[#3] Notes");
            in<QPlainTextEdit>(dialog, "editKey")->setPlainText(key);
            ModalScript::press("Verify Signature")(dialog);
            if (key != m_key)
                ModalScript::press("Close")(dialog);
        };
    };
    // The end of the text is behind the signature, but still in its entry.
    QCOMPARE(run("actionChangelogVerifyLogEntry", {verify("ff"), ModalScript::press("OK")}),
             QStringList("No valid signature found or wrong key given."));
    QCOMPARE(run("actionChangelogVerifyLogEntry", {verify(m_key), ModalScript::press("OK")}),
             QStringList("Signature successfully verified."));
}

void TabsTest::messageIsAppendedToTheEntry() {
    begin("with a message");
    showTab("tabChangelog");
    run("actionChangelogAppendMessage", {[](QDialog* dialog) {
            QTest::keyClicks(in<QPlainTextEdit>(dialog, "editMessage"), "seen by hand");
            ModalScript::press("OK")(dialog);
        }});
    run("actionTransactionCommit", {ModalScript::press("OK")});
    QVERIFY(log()->toPlainText().endsWith("Message: seen by hand\n"));
}

void TabsTest::changelogsAreExportedAndImported() {
    showTab("tabChangelog");
    const QString text = m_folder.filePath("log.txt");
    run("actionChangelogExportToTextfile", {ModalScript::chooseFile(text)});
    QFile file(text);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(QString::fromUtf8(file.readAll()), log()->toPlainText());
    begin("import");
    run("actionChangelogImportFromDatabase", {ModalScript::chooseFile(m_original.fileName)});
    QVERIFY(child<QLabel>("labelChangelogEntries")->text() == "Log entries: 5");
}

void TabsTest::signatureKeyIsJudgedCountedAndRemembered() {
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

void TabsTest::metadataIsRemovedExportedAndImported() {
    showTab("tabMetaData");
    QVERIFY(!child<QAction>("actionMetaDataRemove")->isEnabled());
    QVERIFY(select("treeMetaData", "own.note"));
    auto* text = select("treeMetaData", "own.text", true);
    QVERIFY(text);
    QCOMPARE(text->text(1), "text");
    const QString file = m_folder.filePath("items.json");
    QCOMPARE(run("actionMetaDataExport", {ModalScript::chooseFile(file), ModalScript::press("OK")}),
             QStringList("Export successfully finished."));
    begin("remove");
    QVERIFY(select("treeMetaData", "own.note"));
    QVERIFY(select("treeMetaData", "own.text", true));
    QCOMPARE(run("actionMetaDataRemove", {ModalScript::press("Yes")}),
             QStringList("Remove 2 entries?"));
    QVERIFY(!select("treeMetaData", "own.note"));
    QCOMPARE(run("actionMetaDataImport", {ModalScript::chooseFile(file), ModalScript::press("OK")}),
             QStringList("Import successfully finished.\n\nItems added: own.note, own.text\n"
                         "Items updated: (none)"));
    run("actionTransactionCommit", {ModalScript::press("OK")});
    prepare([](tarvo::qrb::Pointcloud& cloud) {
        QCOMPARE(cloud.metaData().get("own.text"), std::string("no { JSON"));
        QCOMPARE(cloud.metaData().get("own.note"), std::string("{\"a\":[1,2.50]}"));
    });
}

void TabsTest::metadataFilesThatAreWrongAreExplained() {
    showTab("tabMetaData");
    begin("import");
    const auto import = [this](const QByteArray& text) {
        QFile file(m_folder.filePath("wrong.json"));
        if (!file.open(QIODevice::WriteOnly))
            return QString("the file can't be made");
        file.write(text);
        file.close();
        return run("actionMetaDataImport",
                   {ModalScript::chooseFile(file.fileName()), ModalScript::press("OK")})
            .value(0);
    };
    QCOMPARE(import("[1, 2]"), "The top-level element is expected to be an object.");
    QVERIFY(import("{\"a\": ").startsWith("Failed to parse JSON string: "));
    QVERIFY(import("{\"a\": ").contains(" Position: "));
    QCOMPARE(import("{\"x.a\": \"one\", \"x.b\": 2, \"own.note\": {\"c\": 3}}"),
             "Import successfully finished.\n\nItems added: x.a\nItems updated: own.note\n"
             "Members skipped: x.b (number)");
    QVERIFY(!select("treeMetaData", "x.b"));
}

void TabsTest::metadataItemIsSignedAndUnsigned() {
    showTab("tabMetaData");
    begin("sign");
    const auto withKey = [this](const QString& button, bool close = true) -> Step {
        return [=, this](QDialog* dialog) {
            in<QPlainTextEdit>(dialog, "editKey")->setPlainText(m_key);
            ModalScript::press(button)(dialog);
            if (close)
                ModalScript::press("Close")(dialog);
        };
    };
    const Step ok = ModalScript::press("OK");
    const auto act = [&](std::vector<Step> steps) {
        select("treeMetaData", "own.note");
        return run("actionMetaDataSignature", std::move(steps));
    };
    QCOMPARE(act({withKey("Delete Signature"), ok}), QStringList("The item is not signed."));
    QCOMPARE(act({withKey("Create Signature"), ok}),
             QStringList("Signature successfully created."));
    QCOMPARE(act({withKey("Verify Signature", false), ok}),
             QStringList("Signature successfully verified."));
    QCOMPARE(act({withKey("Create Signature"), ModalScript::press("No")}),
             QStringList("The item is already signed.\nOverwrite existing signature?"));
    QCOMPARE(act({withKey("Delete Signature"), ModalScript::press("Yes"), ok}),
             QStringList({"Delete signature?", "Signature successfully deleted."}));
}

void TabsTest::attributesAreRemovedAfterAsking() {
    showTab("tabPointAttributes");
    begin("remove");
    auto* row = select("treePointAttributes", "tarvo.target_index");
    QVERIFY(row);
    QCOMPARE(run("actionPointAttributeRemove", {ModalScript::press("Yes")}),
             QStringList("Remove attribute \"tarvo.target_index\"?"));
    QVERIFY(!select("treePointAttributes", "tarvo.target_index"));
    // The primary one can't go: one box, and it is still there.
    QVERIFY(select("treePointAttributes", "tarvo.xyz[3]*"));
    QCOMPARE(
        run("actionPointAttributeRemove", {ModalScript::press("Yes"), ModalScript::press("OK")})
            .size(),
        2);
    QVERIFY(select("treePointAttributes", "tarvo.xyz[3]*"));
}

void TabsTest::reportsShowPicturesAndAskBeforeLinks() {
    showTab("tabInspection");
    auto* view = child<QTextBrowser>("textInspectionResult");
    auto* format = child<QComboBox>("editInspectionFormat");
    for (int i = 0; i < format->count(); ++i) {
        format->setCurrentIndex(i);
        child<QAction>("actionInspectionUpdate")->trigger();
        QVERIFY2(view->toPlainText().contains("tarvo.xyz"), qUtf8Printable(format->currentText()));
    }
    format->setCurrentIndex(2);
    child<QAction>("actionInspectionUpdate")->trigger();
    QVERIFY(view->toHtml().contains("data:image/png"));
    ModalScript refused({ModalScript::press("OK")});
    QMetaObject::invokeMethod(view, "anchorClicked", Q_ARG(QUrl, QUrl("file:///etc/passwd")));
    QCOMPARE(refused.answered(), 1u);
    ModalScript asked({ModalScript::press("No")});
    QMetaObject::invokeMethod(view, "anchorClicked", Q_ARG(QUrl, QUrl("https://example.org/")));
    QCOMPARE(asked.answered(), 1u);
    QCOMPARE(asked.texts().value(0), "Open this page in the web browser?\nhttps://example.org/");
    // Within the report nothing is asked.
    view->setHtml(QString("<p>line</p>").repeated(1000) + "<a name='end'>the end</a>");
    QCOMPARE(view->verticalScrollBar()->value(), 0);
    ModalScript never({ModalScript::press("OK")});
    QMetaObject::invokeMethod(view, "anchorClicked", Q_ARG(QUrl, QUrl("#end")));
    QCOMPARE(never.answered(), 0u);
    QVERIFY(view->verticalScrollBar()->value() > 0);
}

void TabsTest::statisticsAddUpToTheIndex() {
    showTab("tabPointIndex");
    run("actionPointIndexStats", {[this](QDialog* dialog) {
            QCOMPARE(dialog->windowTitle(), "Point Index Tree Statistics");
            auto* levels = in<QTreeWidget>(dialog, "treeStatistics");
            const auto* total = levels->topLevelItem(levels->topLevelItemCount() - 1);
            QCOMPARE(total->text(0), "Total");
            QCOMPARE(total->text(1), QLocale().toString(m_original.pointCount));
            QVERIFY(total->font(0).bold());
            ModalScript::press("OK")(dialog);
        }});
}

void TabsTest::commandsFindNodesOfTheIndex() {
    showTab("tabPointIndex");
    auto* filter = child<QComboBox>("PointIndexFilter");
    const auto boldItems = [this] {
        int count = 0;
        for (QTreeWidgetItemIterator it(tree("treePointIndexNodes")); *it; ++it)
            count += (*it)->font(0).bold();
        return count;
    };
    for (const char* command : {"FIND LARGEST LEAF", "find fullest leaf", "find largest node"}) {
        filter->lineEdit()->setText(command);
        child<QAction>("actionPointIndexFilterNodes")->trigger();
        QCOMPARE(boldItems(), 1);
    }
    // The same command selects the points of that leaf.
    showTab("tabPointData");
    child<QComboBox>("PointDataFilter")->lineEdit()->setText("find fullest leaf");
    const QString text = run("actionQuerySelectCount", {ModalScript::press("OK")}).value(0);
    QVERIFY2(text.endsWith(" points match the current filter expression."), qUtf8Printable(text));
    QVERIFY(!text.startsWith(QLocale().toString(m_original.pointCount)));
}

void TabsTest::rangeQueryGoesIntoTheFilter() {
    showTab("tabPointData");
    auto* menu = child<QToolButton>("buttonFilterMenu")->menu();
    QAction* range = nullptr;
    for (QAction* each : menu->actions())
        if (each->text() == "Insert range query...")
            range = each;
    QVERIFY(range && range->isEnabled());
    ModalScript script({[](QDialog* dialog) {
        auto* attribute = in<QComboBox>(dialog, "editPointAttribute");
        attribute->setCurrentIndex(attribute->findText("tarvo.xyz[2]"));
        auto* preview = in<QPlainTextEdit>(dialog, "editPreview");
        auto* tabs = in<QTabWidget>(dialog, "tabWidgetMode");
        tabs->setCurrentIndex(1);
        in<QLineEdit>(dialog, "editCenterValue")->setText("1.5");
        in<QLineEdit>(dialog, "editRadiusValue")->setText("x");
        QCOMPARE(preview->toPlainText(), "failed to parse center and/or radius!");
        in<QLineEdit>(dialog, "editCenterValue")->setText("10");
        in<QLineEdit>(dialog, "editRadiusValue")->setText("2");
        QCOMPARE(preview->toPlainText(), "(tarvo.xyz[2] >= 8) && (tarvo.xyz[2] <= 12)");
        tabs->setCurrentIndex(0);
        QTest::keyClicks(in<QLineEdit>(dialog, "editLowerBoundValue"), "1");
        QTest::keyClicks(in<QLineEdit>(dialog, "editUpperBoundValue"), "5");
        QTest::mouseClick(
            in<QCheckBox>(dialog, "editUpperBoundInclusive"), Qt::LeftButton, {},
            QPoint(8, in<QCheckBox>(dialog, "editUpperBoundInclusive")->height() / 2));
        QCOMPARE(preview->toPlainText(), "(tarvo.xyz[2] >= 1) && (tarvo.xyz[2] < 5)");
        ModalScript::press("OK")(dialog);
    }});
    range->trigger();
    QCOMPARE(script.answered(), 1u);
    QCOMPARE(child<QComboBox>("PointDataFilter")->currentText(),
             "(tarvo.xyz[2] >= 1) && (tarvo.xyz[2] < 5) ");
}

void TabsTest::findBarGoesThroughTheHits() {
    showTab("tabPointData");
    child<QAction>("actionQuerySelectNext")->trigger();
    QCOMPARE(tree("treePointData")->topLevelItemCount(), 100);
    child<QAction>("actionQuerySelectFind")->trigger();
    auto* edit = child<QLineEdit>("editFind");
    QTRY_VERIFY(edit->isVisible());
    QTest::keyClicks(edit, "no such text");
    QCOMPARE(child<QLabel>("labelFind")->text(), "no hits");
    edit->clear();
    // The row numbers 42 is in: hidden columns left out, at least that one cell.
    QTest::keyClicks(edit, "42");
    const QString first = child<QLabel>("labelFind")->text();
    QVERIFY2(first.startsWith("1 of ") || first.contains(" of "), qUtf8Printable(first));
    const QModelIndex start = tree("treePointData")->currentIndex();
    QTest::keyClick(edit, Qt::Key_Return);
    QTest::keyClick(edit, Qt::Key_F3, Qt::ShiftModifier);
    QCOMPARE(tree("treePointData")->currentIndex(), start);
    QVERIFY(tree("treePointData")->currentItem()->text(start.column()).contains("42"));
    QTest::keyClick(edit, Qt::Key_Escape);
    QVERIFY(!edit->isVisible());
    QVERIFY(child<QAction>("actionQuerySelectCancel")->isEnabled());  // the query goes on
}

void TabsTest::headersSortAndLeadBack() {
    showTab("tabPointData");
    child<QAction>("actionQuerySelectNext")->trigger();
    auto* points = tree("treePointData");
    const auto click = [](QTreeWidget* list, int column) {
        auto* header = list->header();
        QTest::mouseClick(
            header->viewport(), Qt::LeftButton, {},
            QPoint(header->sectionViewportPosition(column) + 12, header->height() / 2));
    };
    const auto height = [points](int row) { return points->topLevelItem(row)->text(3).toDouble(); };
    QCOMPARE(points->headerItem()->text(3), "tarvo.xyz[2]");
    QCOMPARE(points->topLevelItem(0)->text(0), "1");
    click(points, 3);
    const bool ascending = height(0) <= height(99);
    for (int row = 1; row < 100; ++row)
        QVERIFY(ascending ? height(row - 1) <= height(row) : height(row - 1) >= height(row));
    click(points, 3);
    QVERIFY(ascending ? height(0) >= height(99) : height(0) <= height(99));
    click(points, 0);
    if (points->topLevelItem(0)->text(0) != "1")
        click(points, 0);
    QCOMPARE(points->topLevelItem(0)->text(0), "1");
    QCOMPARE(points->topLevelItem(99)->text(0), "100");

    showTab("tabPointIndex");
    auto* details = tree("treePointIndexDetails");
    QCOMPARE(details->headerItem()->text(1), "Value (full)");
    click(details, 1);
    QCOMPARE(details->headerItem()->text(1), "Value (cleaned)");
    click(details, 1);
    QCOMPARE(details->headerItem()->text(1), "Value (full)");

    // Within their groups, until they are shown anew.
    showTab("tabPointAttributes");
    auto* attributes = tree("treePointAttributes");
    const auto texts = [attributes](int column) {
        QList<QStringList> groups;
        for (int i = 0; i < attributes->topLevelItemCount(); ++i) {
            groups += QStringList();
            for (int k = 0; k < attributes->topLevelItem(i)->childCount(); ++k)
                groups.last() += attributes->topLevelItem(i)->child(k)->text(column);
        }
        return groups;
    };
    const QList<QStringList> ranked = texts(0);
    for (const bool descending : {false, true}) {
        click(attributes, 1);
        for (const QStringList& group : texts(1)) {
            QStringList sorted = group;
            sorted.sort(Qt::CaseInsensitive);
            if (descending)
                std::reverse(sorted.begin(), sorted.end());
            QCOMPARE(group, sorted);
        }
        QVERIFY(texts(0) != ranked);
    }
    run("actionReload", {});
    QCOMPARE(texts(0), ranked);
}

void TabsTest::levelOfDetailIsBuiltAndCanBeCancelled() {
    constexpr int never = 101;
    const auto apply = [](int cancelAt, int size) -> Step {
        return [=](QDialog* dialog) {
            in<QComboBox>(dialog, "editLodMode")->setCurrentIndex(0);
            QVERIFY(!in<QComboBox>(dialog, "editLodSizeCombine")->isEnabled());
            in<QSpinBox>(dialog, "editLodSizeThinout")->setValue(size);
            // As a close request in the middle of the work.
            auto* working = static_cast<WorkingDialog*>(dialog);
            connect(
                working, &WorkingDialog::update_progress, working,
                [=](int percent) {
                    if (percent >= cancelAt)
                        working->reject();
                },
                Qt::DirectConnection);
            ModalScript::press("Apply")(dialog);
            QVERIFY(dialog->isVisible());
            dialog->disconnect(SIGNAL(update_progress(int)));
            ModalScript::press("Close")(dialog);
        };
    };
    const Step ok = ModalScript::press("OK");
    QCOMPARE(run("actionManagementLevelOfDetail", {apply(0, 30), ok}),
             QStringList("Update cancelled."));
    QCOMPARE(child<QLineEdit>("editLevelOfDetail")->text(), "disabled");
    QCOMPARE(child<QLabel>("labelTransactions")->text(), "Transactions: 3, Current transaction: 3");
    QVERIFY(run("actionManagementLevelOfDetail", {apply(never, 30), ok})
                .value(0)
                .startsWith("Successfully finished!\n\nDuration: "));
    QCOMPARE(child<QLineEdit>("editLevelOfDetail")->text(),
             "mode: thinout, size: up to 30 % of the original points");
    QCOMPARE(child<QLineEdit>("editPointsTotal")->text(),
             QLocale().toString(m_original.pointCount));

    // A request that comes when the change is made can't cancel it.
    QVERIFY(run("actionManagementLevelOfDetail", {apply(100, 20), ok})
                .value(0)
                .startsWith("Successfully finished!"));
    QCOMPARE(child<QLineEdit>("editLevelOfDetail")->text(),
             "mode: thinout, size: up to 20 % of the original points");
}

void TabsTest::validationTellsWhatItFinds() {
    const auto validate = [](const QString& schema, QString* result) -> Step {
        return [=](QDialog* dialog) {
            QVERIFY(in<QComboBox>(dialog, "listSchema")->currentText() == "qrbx");
            QVERIFY(in<QPlainTextEdit>(dialog, "editSchema")->toPlainText().contains("tarvo.xyz"));
            if (!schema.isEmpty())
                in<QPlainTextEdit>(dialog, "editSchema")->setPlainText(schema);
            ModalScript::press("Validate")(dialog);
            *result = in<QPlainTextEdit>(dialog, "editResult")->toPlainText();
            ModalScript::press("Close")(dialog);
        };
    };
    QString result;
    run("actionValidate", {validate(R"({"identifier": "own", "extension": "own",
        "attributes": ["tarvo.id"], "metadata": ["own.note"]})",
                                    &result)});
    QCOMPARE(result, "No problems detected!");
    run("actionValidate", {validate(R"({"identifier": "own", "extension": "own",
        "attributes": ["tarvo.xyz*", "tarvo.temperature"], "metadata": ["tarvo.device"]})",
                                    &result),
                           ModalScript::press("OK")});
    QVERIFY(result.contains("tarvo.temperature") && result.contains("tarvo.device"));
    QVERIFY(!result.contains("No problems detected!"));
    run("actionValidate", {validate("{", &result), ModalScript::press("OK")});
}

// For those who can't see the window, and those who use no mouse.
void TabsTest::everyControlHasANameAndAWayToIt() {
    const QStringList nameless = namelessControls(m_window.get());
    QVERIFY2(nameless.isEmpty(), qUtf8Printable(nameless.join(", ")));

    QStringList unreachable;
    for (const QAction* action : m_window->findChildren<QAction*>()) {
        if (!action->objectName().startsWith("action") || !action->isVisible())
            continue;
        bool reachable = !action->shortcut().isEmpty();
        // Behind a button of the database tab.
        if (action->objectName() == "actionSwitchLibrary")
            reachable =
                child<QToolButton>("toolButtonCurrentLibrary")->focusPolicy() & Qt::TabFocus;
        for (const QObject* place : action->associatedObjects()) {
            const auto* widget = qobject_cast<const QWidget*>(place);
            reachable = reachable || qobject_cast<const QMenu*>(place) ||
                        (widget && widget->focusPolicy() != Qt::NoFocus);
        }
        unreachable += reachable ? QStringList() : QStringList(action->objectName());
    }
    QVERIFY2(unreachable.isEmpty(), qUtf8Printable(unreachable.join(", ")));
}

void TabsTest::dialogsCanBeUsedWithoutSightAndMouse() {
    showTab("tabPointAttributes");
    QVERIFY(select("treePointAttributes", "tarvo.class"));
    showTab("tabMetaData");
    QVERIFY(select("treeMetaData", "own.note"));
    for (const char* action :
         {"actionPointAttributeEdit", "actionMetaDataEdit", "actionMetaDataSignature", "actionNew",
          "actionOpen", "actionExportAsQRB", "actionValidate", "actionPointIndexStats",
          "actionManagementLevelOfDetail", "actionTransactionBegin"})
        run(action, {[action](QDialog* dialog) {
                const QStringList nameless = namelessControls(dialog);
                const QStringList taken = keysClaimedTwice(dialog);
                dialog->reject();
                QVERIFY2(nameless.isEmpty(), qPrintable(action + (": " + nameless.join(", "))));
                QVERIFY2(taken.isEmpty(), qPrintable(action + (": " + taken.join(", "))));
            }});
}

void TabsTest::methodTextsAreTakenApart() {
    using namespace tarvo::core;
    QCOMPARE(parseLodMethod("").method, std::string("default"));
    QCOMPARE(parseLodMethod("thinout").method, std::string("thinout"));
    QCOMPARE(parseLodMethod("{\"method\": \"first\"} rest").method, std::string("first"));
    QCOMPARE(parseLodMethod("\"first\" rest").remainder, std::string(" rest"));
    const auto messageOf = [](const std::string& text) {
        try {
            parseLodMethod(text);
        } catch (const std::exception& error) {
            return std::string(error.what());
        }
        return std::string();
    };
    QCOMPARE(messageOf("[1,2]"), std::string("JSON object or JSON string expected"));
    QCOMPARE(messageOf("{\"method\": 5}"),
             std::string("Failed to convert field \"method\" from number to string value"));
    QVERIFY(
        QString::fromStdString(messageOf("{\"a\"")).startsWith("Failed to parse JSON string: "));
    tarvo::rapidjson::Document object;
    object.SetObject();
    QCOMPARE(jsonTypeName(object), std::string("unknown type"));
}

GUI_TEST_MAIN(TabsTest)
#include "tabstest.moc"
