// The dialogs of a transaction: what they show, what can be used in them, and what becomes of it.

#include "qrb/loader.h"
#include "tests/window/dialogprobe.h"
#include "tests/window/guitestmain.h"
#include "tests/window/samplewindow.h"
#include "window/dialogs/dialogtransaction.h"

#include <QAction>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QRegularExpression>
#include <QTabWidget>
#include <QTreeWidget>
#include <QtTest>
#include <memory>

using namespace tarvo::window;

namespace pointcloud = tarvo::qrb::pointcloud;
using Step = ModalScript::Step;

namespace {

void writeTo(const QString& fileName, const QByteArray& bytes) {
    QFile file(fileName);
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
}

QByteArray contentsOf(const QString& fileName) {
    QFile file(fileName);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("missing");
}

QString proposedIn(QDialog* dialog) {
    return QFileInfo(in<QLineEdit>(dialog, "fileNameEdit")->text()).fileName();
}

const QStringList transactionEdits = {"editID",   "editTitle", "editAgent",    "editStart",
                                      "editStop", "editQRB",   "editComments", "editSettingsRaw"};

pointcloud::Transaction sampleRecord() {
    pointcloud::Transaction record;
    record.id = 12;
    record.qrb = "QRB Library 1.2.3";
    record.title = "A title";
    record.agent = "An agent";
    record.comments = "one\ntwo";
    record.settings = "{\"a\":1}";
    record.start = "2020-01-02T03:04:05.678Z";
    record.stop = "2020-01-02T03:04:06.789Z";
    return record;
}

QStringList fieldsOf(const pointcloud::Transaction& record) {
    QStringList fields = {QString::number(record.id)};
    for (const std::string& text : {record.title, record.agent, record.start, record.stop,
                                    record.qrb, record.comments, record.settings})
        fields += QString::fromStdString(text);
    return fields;
}

QStringList shownIn(QDialog* dialog) {
    QStringList fields;
    for (const QString& name : transactionEdits.mid(0, 6))
        fields += in<QLineEdit>(dialog, qUtf8Printable(name))->text();
    for (const QString& name : transactionEdits.mid(6))
        fields += in<QPlainTextEdit>(dialog, qUtf8Printable(name))->toPlainText();
    return fields;
}

}  // namespace

class TransactionDialogTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase();

    void transactionIsShownWhole();
    void readOnlyTransactionCanOnlyBeSaved();
    void newTransactionTakesWhatTheUserMaySay();
    void transactionTextsGoToFilesAndBack();
    void cancelledTransactionChangesNothing();
    void commitPassesMethodAndKey();

private:
    std::unique_ptr<SampleDatabase> m_sample;
    std::unique_ptr<tarvo::qrb::Context> m_context;
};

void TransactionDialogTest::initTestCase() {
    tarvo::qrb::loadLibrary("");
    m_sample = std::make_unique<SampleDatabase>();
    QVERIFY2(m_sample->error().isEmpty(), qUtf8Printable(m_sample->error()));
    m_context = std::make_unique<tarvo::qrb::Context>("OFF", "");
}

void TransactionDialogTest::cleanupTestCase() {
    m_context.reset();
    tarvo::qrb::freeLibrary();
}

void TransactionDialogTest::transactionIsShownWhole() {
    auto record = sampleRecord();
    ModalScript script({[&](QDialog* dialog) {
        const QStringList shown = shownIn(dialog);
        const QStringList disabled = disabledOf(dialog, transactionEdits);
        const bool focused = in<QLineEdit>(dialog, "editTitle")->hasFocus();
        const QString selected = in<QLineEdit>(dialog, "editTitle")->selectedText();
        const QStringList menu = menuOf(dialog);
        in<QLineEdit>(dialog, "editID")->setText("13");
        in<QLineEdit>(dialog, "editTitle")->setText("Another title");
        in<QLineEdit>(dialog, "editAgent")->setText("Another agent");
        in<QLineEdit>(dialog, "editStart")->setText("begin");
        in<QLineEdit>(dialog, "editStop")->setText("end");
        in<QLineEdit>(dialog, "editQRB")->setText("version");
        in<QPlainTextEdit>(dialog, "editComments")->setPlainText("three");
        in<QPlainTextEdit>(dialog, "editSettingsRaw")->setPlainText("[2]");
        ModalScript::press("OK")(dialog);
        QCOMPARE(dialog->windowTitle(), "Transaction Settings");
        QCOMPARE(shown, fieldsOf(sampleRecord()));
        QCOMPARE(disabled, QStringList());
        QVERIFY(focused);
        QCOMPARE(selected, "A title");
        QCOMPARE(menu, QStringList({"Load comments from file...", "Save comments to file...",
                                    "Clear comments", "-", "Load settings from file...",
                                    "Save settings to file...", "Clear settings"}));
    }});
    QVERIFY(DialogTransaction::edit(*m_context, record, nullptr, false, false));
    QCOMPARE(fieldsOf(record), QStringList({"13", "Another title", "Another agent", "begin", "end",
                                            "version", "three", "[2]"}));
}

void TransactionDialogTest::readOnlyTransactionCanOnlyBeSaved() {
    auto record = sampleRecord();
    ModalScript script({[&](QDialog* dialog) {
        QStringList editable;
        for (const QString& name : transactionEdits)
            if (!in<QWidget>(dialog, qUtf8Printable(name))->property("readOnly").toBool())
                editable += name;
        const bool formattedToo = in<QPlainTextEdit>(dialog, "editSettingsFormatted")->isReadOnly();
        const QStringList shown = shownIn(dialog);
        const QStringList disabled = disabledOf(dialog, transactionEdits);
        const QStringList menu = menuOf(dialog);
        const bool ok = isOkEnabled(dialog);
        dialog->reject();
        QCOMPARE(editable, QStringList());
        QVERIFY(formattedToo);
        QCOMPARE(shown, fieldsOf(sampleRecord()));
        QCOMPARE(disabled, QStringList());
        QVERIFY(!ok);
        QCOMPARE(menu, QStringList({"[Load comments from file...]", "Save comments to file...",
                                    "[Clear comments]", "-", "[Load settings from file...]",
                                    "Save settings to file...", "[Clear settings]"}));
    }});
    QVERIFY(!DialogTransaction::edit(*m_context, record, nullptr, true, false));
    QCOMPARE(fieldsOf(record), fieldsOf(sampleRecord()));

    // So it comes up for a transaction of the list.
    const SampleWindow window(m_sample->copy());
    window.driver().showTab("tabTransactions");
    auto* row = window.driver().select("treeTransactions", "2");
    QVERIFY(row);
    auto details = window.database().transactions().details(2);
    details.qrb = QString::fromStdString(details.qrb).replace('\n', ' ').toStdString();
    ModalScript shown({[&](QDialog* dialog) {
        const QStringList fields = shownIn(dialog);
        const QStringList menu = menuOf(dialog);
        dialog->reject();
        QCOMPARE(fields, fieldsOf(details));
        QCOMPARE(menu.filter("[").size(), 4);
    }});
    doubleClickRow(row);
    QCOMPARE(shown.answered(), 1u);
}

void TransactionDialogTest::newTransactionTakesWhatTheUserMaySay() {
    const SampleWindow window(m_sample->copy());
    window.run(
        "actionTransactionBegin", {[](QDialog* dialog) {
            const QStringList disabled = disabledOf(
                dialog,
                transactionEdits + QStringList({"labelID", "labelQRB", "labelStart", "labelStop"}));
            const QStringList menu = menuOf(dialog);
            const QString title = in<QLineEdit>(dialog, "editTitle")->text();
            const QString agent = in<QLineEdit>(dialog, "editAgent")->text();
            in<QLineEdit>(dialog, "editTitle")->setText("The title");
            in<QLineEdit>(dialog, "editAgent")->setText("The agent");
            in<QPlainTextEdit>(dialog, "editComments")->setPlainText("a\nb");
            in<QPlainTextEdit>(dialog, "editSettingsRaw")->setPlainText("{\"x\": 1}");
            ModalScript::press("OK")(dialog);
            QCOMPARE(disabled, QStringList({"editID", "editStart", "editStop", "editQRB", "labelID",
                                            "labelQRB", "labelStart", "labelStop"}));
            QVERIFY(menu.filter("[").isEmpty());
            QCOMPARE(title, agent);
            QVERIFY(QRegularExpression(R"(\Aqrbadmin \d+\.\d+\.\d+)").match(agent).hasMatch());
        }});
    window.run("actionTransactionCommit", {ModalScript::press("OK")});
    const auto details = window.database().transactions().details(4);
    QCOMPARE(details.title, std::string("The title"));
    QCOMPARE(details.agent, std::string("The agent"));
    QCOMPARE(details.comments, std::string("a\nb"));
    QCOMPARE(details.settings, std::string("{\"x\": 1}"));
}

void TransactionDialogTest::transactionTextsGoToFilesAndBack() {
    const QString comments = m_sample->path("comments.txt");
    const QString settings = m_sample->path("settings.txt");
    auto record = sampleRecord();
    record.comments = "\xc3\xa4\nb";
    const auto save = [](const QString& proposed, const QString& fileName) -> Step {
        return [=](QDialog* dialog) {
            const QString name = proposedIn(dialog);
            ModalScript::chooseFile(fileName)(dialog);
            QCOMPARE(name, proposed);
        };
    };
    const QString nowhere = m_sample->path("no/such/folder/file.txt");
    ModalScript script(
        {[&](QDialog* dialog) {
             const auto act = [&](const char* name) { in<QAction>(dialog, name)->trigger(); };
             // Written as they are, not as they are laid out.
             in<QTabWidget>(dialog, "tabWidgetSettings")->setCurrentIndex(1);
             act("actionSaveComments");
             act("actionSaveSettings");
             act("actionSaveComments");  // nowhere
             act("actionClearComments");
             act("actionClearSettings");
             const QStringList cleared = shownIn(dialog).mid(6);
             auto* formatted = in<QPlainTextEdit>(dialog, "editSettingsFormatted");
             const QString clearedToo = formatted->toPlainText();
             act("actionLoadComments");
             act("actionLoadSettings");
             const QStringList loaded = shownIn(dialog).mid(6);
             const QString loadedToo = formatted->toPlainText();
             ModalScript::press("OK")(dialog);
             QCOMPARE(cleared, QStringList({"", ""}));
             QCOMPARE(clearedToo, "");
             QCOMPARE(loaded, QStringList({"loaded\ncomments", "{\"b\":[2]}"}));
             QVERIFY2(loadedToo.startsWith("{\n    \"b\": "), qUtf8Printable(loadedToo));
         },
         save("transaction-#12-comments.txt", comments),
         save("transaction-#12-settings.txt", settings),
         save("transaction-#12-comments.txt", nowhere), ModalScript::press("OK"),
         [&](QDialog* dialog) {
             QCOMPARE(contentsOf(comments), QByteArray("\xc3\xa4\nb"));
             QCOMPARE(contentsOf(settings), QByteArray("{\"a\":1}"));
             writeTo(comments, "loaded\ncomments");
             writeTo(settings, "{\"b\":[2]}");
             ModalScript::chooseFile(comments)(dialog);
         },
         ModalScript::chooseFile(settings)});
    QVERIFY(DialogTransaction::edit(*m_context, record, nullptr, false, true));
    QCOMPARE(script.answered(), 7u);
    QVERIFY2(script.texts().value(0).startsWith("Failed to open output file!"),
             qUtf8Printable(script.texts().join('|')));
    QCOMPARE(record.comments, std::string("loaded\ncomments"));
    QCOMPARE(record.settings, std::string("{\"b\":[2]}"));
}

void TransactionDialogTest::cancelledTransactionChangesNothing() {
    auto record = sampleRecord();
    ModalScript script({[](QDialog* dialog) {
        in<QLineEdit>(dialog, "editTitle")->setText("changed");
        in<QPlainTextEdit>(dialog, "editSettingsRaw")->setPlainText("changed");
        ModalScript::press("Cancel")(dialog);
    }});
    QVERIFY(!DialogTransaction::edit(*m_context, record, nullptr, false, true));
    QCOMPARE(fieldsOf(record), fieldsOf(sampleRecord()));

    const SampleWindow window(m_sample->copy());
    window.run("actionTransactionBegin", {ModalScript::press("Cancel")});
    QVERIFY(!window.database().transactions().pending());
    window.begin();
    window.run("actionTransactionCommit", {ModalScript::press("Cancel")});
    QVERIFY(window.database().transactions().pending());
    window.run("actionChangelogAppendMessage", {[](QDialog* dialog) {
                   const QString title = dialog->windowTitle();
                   const QString label = in<QLabel>(dialog, "labelMessage")->text().remove('&');
                   in<QPlainTextEdit>(dialog, "editMessage")->setPlainText("not to be said");
                   ModalScript::press("Cancel")(dialog);
                   QCOMPARE(title, "Append Message");
                   QCOMPARE(label, "Text to be added to the log entry of the current transaction:");
               }});
    window.run("actionTransactionCommit", {ModalScript::press("OK")});
    QVERIFY(!window.child<QPlainTextEdit>("editChangelog")->toPlainText().contains("not to be"));
}

void TransactionDialogTest::commitPassesMethodAndKey() {
    const SampleWindow window(m_sample->copy());
    const auto commit = [&](int method, const char* key) {
        window.begin();
        window.run("actionTransactionCommit", {[&](QDialog* dialog) {
                       const QString title = dialog->windowTitle();
                       in<QComboBox>(dialog, "editMethod")->setCurrentIndex(1);
                       in<QPlainTextEdit>(dialog, "editKey")->setPlainText(key);
                       in<QComboBox>(dialog, "editMethod")->setCurrentIndex(method);
                       const QStringList disabled = disabledOf(
                           dialog, {"editKey", "labelKey", "labelKeySize", "buttonRandomKey"});
                       ModalScript::press("OK")(dialog);
                       QCOMPARE(title, "Commit Current Transaction");
                       QCOMPARE(disabled.size(), method == 0 ? 4 : 0);
                   }});
        return window.child<QPlainTextEdit>("editChangelog")
            ->toPlainText()
            .section(QString("[#%0]").arg(window.database().transactions().current()), 1);
    };
    QVERIFY(!commit(0, "01 02").contains("Signature: "));
    // What is no hexadecimal digit is passed over.
    const QString entry = commit(1, "0a, 1b-2c");
    static const QRegularExpression signature("\nSignature: [0-9a-f]+");
    const auto match = signature.match(entry);
    QVERIFY(match.hasMatch());
    const QString whole = QString("[#%0]").arg(window.database().transactions().current()) +
                          entry.left(match.capturedEnd());
    QVERIFY(pointcloud::Changelog::verifyLogEntry(whole.toStdString(), 1, {0x0a, 0x1b, 0x2c}));
}

GUI_TEST_MAIN(TransactionDialogTest)
#include "transactiondialogtest.moc"
