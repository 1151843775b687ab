// The changelog, walked, verified, extended, exported and imported with mouse and keys.

#include "tests/window/guitestmain.h"
#include "tests/window/notedwindow.h"

#include <QAction>
#include <QDialog>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QtTest>

using namespace tarvo::window;

class ChangelogTest : public NotedWindowTest {
    Q_OBJECT

private slots:
    void changelogIsWalkedEntryByEntry();
    void signatureOfAnEntryIsVerified();
    void messageIsAppendedToTheEntry();
    void changelogsAreExportedAndImported();
};

void ChangelogTest::changelogIsWalkedEntryByEntry() {
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

void ChangelogTest::signatureOfAnEntryIsVerified() {
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

void ChangelogTest::messageIsAppendedToTheEntry() {
    begin("with a message");
    showTab("tabChangelog");
    run("actionChangelogAppendMessage", {[](QDialog* dialog) {
            QTest::keyClicks(in<QPlainTextEdit>(dialog, "editMessage"), "seen by hand");
            ModalScript::press("OK")(dialog);
        }});
    run("actionTransactionCommit", {ModalScript::press("OK")});
    QVERIFY(log()->toPlainText().endsWith("Message: seen by hand\n"));
}

void ChangelogTest::changelogsAreExportedAndImported() {
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

GUI_TEST_MAIN(ChangelogTest)
#include "changelogtest.moc"
