// The run of a plugin: how it is followed and stopped, its results, and what becomes of the open
// database.

#include "tests/window/guitestmain.h"
#include "tests/window/pluginwindowtest.h"
#include "window/dialogs/plugin/outputpane.h"
#include "window/dialogs/plugin/outputtext.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QLabel>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QScrollArea>
#include <QTabWidget>
#include <QTableView>
#include <QTextBrowser>
#include <QToolButton>
#include <QtTest>

using namespace tarvo::window;

class PluginRunTest : public PluginWindowTest {
    Q_OBJECT

private slots:
    void escapeCancelsWhatIsShownLive();
    void closingWhileItRunsIsAsked();
    void floodLeavesTheWindowAnswering();
    void resultsAreShownCopiedAndSaved();
    void whatFailsTellsWhyAndChangesNothing();
    void writingTakesThePlaceOfAPendingTransaction();
    void databaseThatIsGoneBehindTheRunIsTold();

private:
    std::uint32_t currentTransaction() const {
        return m_window->database().transactions().current();
    }
};

void PluginRunTest::escapeCancelsWhatIsShownLive() {
    m_window->add("slow", R"(    print("begun", len(db.transactions))
    report.progress(0.25, "reading")
    time.sleep(1000))",
                  writes);
    const auto before = currentTransaction();
    m_window->choose("slow", {[](QDialog* dialog) {
                                  click(dialog, "buttonRun");
                                  QTRY_VERIFY(outputOf(dialog).startsWith("begun"));
                                  const auto* bar = in<QProgressBar>(dialog, "progressBar");
                                  QTRY_COMPARE(stateOf(dialog), "reading");
                                  QVERIFY(bar->isVisible());
                                  QCOMPARE(bar->value() * 4, bar->maximum());
                                  QVERIFY(!in<QPushButton>(dialog, "buttonRun")->isEnabled());
                                  QTest::keyClick(dialog, Qt::Key_Escape);
                                  QTRY_VERIFY_WITH_TIMEOUT(!isRunning(dialog), 30'000);
                                  QCOMPARE(stateOf(dialog), "Cancelled. Nothing is changed.");
                                  QVERIFY(outputOf(dialog).startsWith("begun"));
                                  QTest::keyClick(dialog, Qt::Key_Escape);
                              },
                              ModalScript::press("Yes")});
    QCOMPARE(currentTransaction(), before);
}

void PluginRunTest::closingWhileItRunsIsAsked() {
    m_window->add("slow", "    print('begun')\n    time.sleep(1000)");
    QPointer<QDialog> plugin;
    const QStringList texts = m_window->choose(
        "slow", {[&](QDialog* dialog) {
                     plugin = dialog;
                     click(dialog, "buttonRun");
                     QTRY_VERIFY(outputOf(dialog).startsWith("begun"));
                     dialog->close();
                     QVERIFY(dialog->isVisible() && isRunning(dialog));
                     click(dialog, "buttonClose");
                 },
                 ModalScript::press("Yes"), ModalScript::press("No"), ModalScript::press("Yes")});
    QVERIFY2(texts[2].contains("still runs"), qUtf8Printable(texts[2]));
    QVERIFY(!plugin);
}

void PluginRunTest::floodLeavesTheWindowAnswering() {
    m_window->add("flood",
                  R"(    line = "\x1b[31mred\x1b[0m \x07\x00 \u202eevil \ufffd " + "x" * 5000
    while True:
        print(line)
        report.progress(0.5)
        report.text("t"))");
    m_window->choose("flood", {[](QDialog* dialog) {
                                   click(dialog, "buttonRun");
                                   const auto* pane = in<OutputPane>(dialog, "editOutput");
                                   auto* tabs = in<QTabWidget>(dialog, "tabWidget");
                                   QTRY_VERIFY(pane->document()->characterCount() > 500'000);
                                   // Each click is seen while it goes on.
                                   for (int i = 0; i < 10; ++i) {
                                       tabs->setCurrentIndex(i % 2);
                                       QTest::qWait(20);
                                       QVERIFY(isRunning(dialog));
                                   }
                                   QTRY_COMPARE(tabs->count(), 102);
                                   QTest::keyClick(dialog, Qt::Key_Escape);
                                   QTRY_VERIFY_WITH_TIMEOUT(!isRunning(dialog), 30'000);
                                   QVERIFY2(
                                       stateOf(dialog).startsWith("Cancelled.\nThe first 100 "),
                                       qUtf8Printable(stateOf(dialog)));
                                   const QString text = outputOf(dialog);
                                   QVERIFY(text.size() < 2.5 * OutputPane::keptCharacters);
                                   QVERIFY(text.contains("\nred \ufffd\ufffd \ufffdevil "));
                                   QVERIFY(!text.contains('\x1b') && !text.contains(QChar(0x202e)));
                                   for (const QString& line : text.split('\n'))
                                       QVERIFY(line.size() <= longestOutputLine);
                                   dialog->reject();
                               },
                               ModalScript::press("Yes")});
}

void PluginRunTest::resultsAreShownCopiedAndSaved() {
    const QString page = m_window->path("secret.html");
    m_window->write("secret.html", "secret");
    m_window->add("results", QString(R"(
    import struct, zlib
    def chunk(kind, data):
        body = kind + data
        return struct.pack(">I", len(data)) + body + struct.pack(">I", zlib.crc32(body))
    png = b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", struct.pack(">IIBBBBB", 3000, 2, 8, 0, 0, 0, 0))
    png += chunk(b"IDAT", zlib.compress((b"\0" + b"\x80" * 3000) * 2)) + chunk(b"IEND", b"")
    report.text("a\nb", title="Words & more")
    report.html("<h1>Head</h1><a href='file://%0'>link</a><img src='file://%0'>", title="Page")
    report.picture(png, title="Image")
    report.table(["n", "s"], [[9, "a,b"], [10, "c"], [(-1.5, 2), "d\te"]], title="Rows")
    report.file("%0", title="Made")
    report.text("untitled"))")
                                 .arg(page));
    const auto save = [&](QWidget* shown, const QString& name) {
        const QString place = m_window->path(name);
        ModalScript chooser({ModalScript::chooseFile(place)});
        QTest::mouseClick(in<QPushButton>(shown, "buttonSave"), Qt::LeftButton);
        return contentOf(place);
    };
    const auto copied = [](QWidget* shown) {
        QApplication::clipboard()->clear();
        QTest::mouseClick(in<QPushButton>(shown, "buttonCopy"), Qt::LeftButton);
        return QApplication::clipboard()->text();
    };
    m_window->choose(
        "results",
        {runTo([&](QDialog* dialog) {
             QVERIFY2(stateOf(dialog) == "Done.", qUtf8Printable(stateOf(dialog)));
             const auto* tabs = in<QTabWidget>(dialog, "tabWidget");
             QCOMPARE(tabs->currentIndex(), 2);
             QVERIFY(pageOf(dialog, "Text"));
             auto* words = pageOf(dialog, "Words && more");
             QCOMPARE(copied(words), "a\nb");
             QCOMPARE(save(words, "a.txt"), "a\nb");
             auto* html = pageOf(dialog, "Page");
             auto* view = html->findChild<QTextBrowser*>();
             view->setFocus();
             QTest::keyClick(view, Qt::Key_Tab);
             QTest::keyClick(view, Qt::Key_Return);
             QVERIFY(view->toPlainText().startsWith("Head\nlink"));
             QVERIFY(save(html, "a.html").startsWith("<h1>Head</h1>"));
             auto* picture = pageOf(dialog, "Image");
             const auto* image = picture->findChild<QScrollArea*>()->widget();
             QVERIFY(image->width() < dialog->width());
             QTest::mouseClick(in<QToolButton>(picture, "buttonFit"), Qt::LeftButton);
             QCOMPARE(image->size(), QSize(3000, 2));
             QCOMPARE(QImage::fromData(save(picture, "a.png")).size(), QSize(3000, 2));
             auto* table = pageOf(dialog, "Rows");
             auto* rows = table->findChild<QTableView*>();
             const auto first = [&] { return rows->model()->index(0, 0).data().toString(); };
             QCOMPARE(copied(table), "n\ts\n9\ta,b\n10\tc\n-1.50\td e\n");
             const QPoint title(rows->columnViewportPosition(0) + 5, 5);
             // Rows keep their numbers wherever they stand.
             using Top = std::pair<const char*, int>;
             for (const auto& [value, number] : {Top{"-1.50", 3}, {"10", 2}, {"9", 1}}) {
                 QTest::mouseClick(rows->horizontalHeader()->viewport(), Qt::LeftButton, {}, title);
                 QCOMPARE(first(), value);
                 QCOMPARE(rows->model()->headerData(0, Qt::Vertical).toInt(), number);
             }
             QTest::mouseClick(rows->viewport(), Qt::LeftButton, {},
                               rows->visualRect(rows->model()->index(1, 0)).center());
             rows->selectRow(1);
             QTest::keySequence(rows, QKeySequence::Copy);
             QCOMPARE(QApplication::clipboard()->text(), "n\ts\n10\tc\n");
             QCOMPARE(save(table, "a.csv"), "n,s\n9,\"a,b\"\n10,c\n-1.50,d\te\n");
             QCOMPARE(copied(pageOf(dialog, "Made")), page);
         }),
         ModalScript::press("Yes")});
}

void PluginRunTest::whatFailsTellsWhyAndChangesNothing() {
    m_window->add("fails", R"(    print("so far")
    report.transaction.metadata["own.note"] = "changed"
    raise ValueError("it\ndoes not work"))",
                  writes);
    const auto before = currentTransaction();
    const QStringList texts = m_window->choose(
        "fails", {[](QDialog* dialog) {
                      runToEnd(dialog);
                      QCOMPARE(stateOf(dialog), "Failed. Nothing is changed. ValueError: it");
                      QVERIFY(outputOf(dialog).startsWith("so far"));
                      QVERIFY(in<QPushButton>(dialog, "buttonRun")->isEnabled());
                      dialog->reject();
                  },
                  ModalScript::press("Yes"),
                  [](QDialog* box) {
                      // The run's end is told while the box is shown.
                      ModalScript::press("OK")(box);
                  }});
    QVERIFY2(texts[1].contains("does not work"), qUtf8Printable(texts[1]));
    QVERIFY(m_window->window().session().database);
    QCOMPARE(currentTransaction(), before);
    QCOMPARE(m_window->database().metaData().get("own.note"), "{\"a\": [1, 2.50]}");
}

void PluginRunTest::writingTakesThePlaceOfAPendingTransaction() {
    m_window->add("writes", R"(    report.transaction.metadata["own.plugin"] = parameters["t"])",
                  QString(writes) + R"(, "parameters": [{"name": "t", "type": "text",
                                       "default": "v"}])");
    m_window->add("reads", "    report.text(str('own.pending' in db.metadata), title='Seen')");
    m_window->driver().showTab("tabMetaData");
    m_window->begin();
    m_window->database().metaData().set("own.pending", "1");
    const auto isPending = [&] { return m_window->database().transactions().pending(); };
    m_window->choose("reads", {runTo([](QDialog* dialog) {
                                   QVERIFY(in<QLabel>(dialog, "labelPending")->isVisible());
                                   const auto* page = pageOf(dialog, "Seen");
                                   QVERIFY2(page, qUtf8Printable(stateOf(dialog)));
                                   QCOMPARE(page->findChild<QPlainTextEdit*>()->toPlainText(),
                                            "False");
                               }),
                               ModalScript::press("Yes")});
    QVERIFY(isPending());
    const QStringList texts = m_window->choose(
        "writes", {[&](QDialog* dialog) {
                       click(dialog, "buttonRun");
                       QVERIFY(!isRunning(dialog) && isPending());
                       runToEnd(dialog);
                       QVERIFY2(stateOf(dialog).endsWith("is committed."),
                                qUtf8Printable(stateOf(dialog)));
                       // Once more, on the database that was opened again.
                       typeInto(dialog, "edit_t", "w");
                       runToEnd(dialog);
                       dialog->reject();
                   },
                   ModalScript::press("Yes"), ModalScript::press("No"), ModalScript::press("Yes")});
    QVERIFY2(texts[1].contains("A transaction is pending"), qUtf8Printable(texts[1]));
    QVERIFY(!isPending());
    const auto details = m_window->database().transactions().details(currentTransaction());
    QCOMPARE(details.title, "writes");
    QVERIFY(QString::fromStdString(details.agent).startsWith("qrbadmin "));
    QCOMPARE(m_window->database().metaData().get("own.plugin"), "w");
    QVERIFY(!m_window->database().metaData().exists("own.pending"));
    // Shown, and the tab is the one that was.
    QCOMPARE(m_window->child<QTabWidget>("tabWidget")->currentWidget()->objectName(),
             "tabMetaData");
    QVERIFY(m_window->driver().select("treeMetaData", "own.plugin"));
    QVERIFY(m_window->child<QLabel>("labelTransactions")
                ->text()
                .endsWith(QString::number(currentTransaction())));
}

void PluginRunTest::databaseThatIsGoneBehindTheRunIsTold() {
    const QString go = m_window->path("go");
    m_window->add("waits",
                  QString(R"(    print("begun")
    while not os.path.exists("%0"):
        time.sleep(0.02))")
                      .arg(go),
                  writes);
    const QString moved = m_window->path("moved.qrbx");
    QString problem;
    m_window->choose(
        "waits", {[&](QDialog* dialog) {
                      click(dialog, "buttonRun");
                      QTRY_VERIFY(outputOf(dialog).startsWith("begun"));
                      QVERIFY(QFile::rename(m_file, moved));
                      m_window->write("go", "");
                      QTRY_VERIFY_WITH_TIMEOUT(!isRunning(dialog), 30'000);
                      problem = in<QLabel>(dialog, "labelProblem")->text();
                      dialog->reject();
                  },
                  ModalScript::press("Yes"), ModalScript::press("OK"), ModalScript::press("OK")});
    QCOMPARE(problem, "No database is open.");
    QVERIFY(!m_window->window().session().database);
}

GUI_TEST_MAIN(PluginRunTest)
#include "pluginruntest.moc"
