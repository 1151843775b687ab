// What is asked and told before something is done, and that nothing happens where the user does not
// want it after all.

#include "tests/window/guitestmain.h"
#include "tests/window/samplestate.h"
#include "tests/window/sampletest.h"

#include <QAbstractButton>
#include <QApplication>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QtTest>

using namespace tarvo::window;

using Step = ModalScript::Step;

class QuestionsTest : public SampleTest {
    Q_OBJECT

private slots:
    void fileDialogsProposeAndCanBeCancelled_data();
    void fileDialogsProposeAndCanBeCancelled();
    void questionsAreAskedAndNoIsNo_data();
    void questionsAreAskedAndNoIsNo();
    void sizesAreThoseOfTheLibrary();
};

void QuestionsTest::fileDialogsProposeAndCanBeCancelled_data() {
    QTest::addColumn<QByteArray>("action");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("proposed");
    QTest::addColumn<QStringList>("filters");
    const QStringList json = {"JSON files (*.json)"};
    const QStringList text = {"Text files (*.txt)"};
    const auto row = [](const char* action, const char* title, const char* proposed,
                        const QStringList& filters) {
        QTest::newRow(action) << QByteArray(action) << QString(title) << QString(proposed)
                              << filters;
    };
    row("actionMetaDataExport", "Export", "work.qrbx.meta.json", json);
    row("actionMetaDataImport", "Import", "work.qrbx.meta.json", json);
    row("actionQuerySelectExport", "Export", "work.qrbx.csv",
        {"Comma-separated values (*.csv)", "Semicolon-separated values (*.csv)",
         "Tab-separated values (*.csv)"});
    row("actionChangelogLoadFromTextfile", "Load changelog from textfile", "", text);
    row("actionChangelogExportToTextfile", "Export changelog to textfile", "changelog.txt", text);
    row("actionChangelogImportFromDatabase", "Import changelog from database", "", {});
    row("actionSwitchLibrary", "Switch QRB Library...", "", {"QRB Library (*.so)"});
}

void QuestionsTest::fileDialogsProposeAndCanBeCancelled() {
    QFETCH(QByteArray, action);
    QFETCH(QString, title);
    QFETCH(QString, proposed);
    QFETCH(QStringList, filters);
    const SampleWindow window(m_sample->copy());
    window.begin();
    window.driver().showTab("tabMetaData");
    select(window, "tabMetaData", "treeMetaData", {"own.note"});
    const QStringList before = stateOf(window);
    const QStringList files = QDir(m_sample->path("")).entryList();
    window.run(action, {[&](QDialog* dialog) {
                   const auto* files = qobject_cast<QFileDialog*>(dialog);
                   const QString shown = dialog->windowTitle();
                   const QString name =
                       QFileInfo(in<QLineEdit>(dialog, "fileNameEdit")->text()).fileName();
                   const QStringList offered = files ? files->nameFilters() : QStringList();
                   const bool saves = files && files->acceptMode() == QFileDialog::AcceptSave;
                   dialog->reject();
                   QCOMPARE(shown, title);
                   QCOMPARE(name, proposed);
                   if (filters.isEmpty()) {
                       QVERIFY(offered.first().startsWith("All supported types (*.qrbx "));
                       QCOMPARE(offered.last(), "All files (*.*)");
                   } else {
                       QCOMPARE(offered, filters);
                   }
                   QCOMPARE(saves, action.contains("Export"));
               }});
    QVERIFY(!QApplication::activeModalWidget());
    QVERIFY(window.window().isVisible());
    QCOMPARE(stateOf(window), before);
    QCOMPARE(QDir(m_sample->path("")).entryList(), files);
}

void QuestionsTest::questionsAreAskedAndNoIsNo_data() {
    QTest::addColumn<QByteArray>("action");
    QTest::addColumn<bool>("pending");
    QTest::addColumn<QString>("question");
    const auto row = [](const char* action, bool pending, const QString& question) {
        QTest::newRow(action) << QByteArray(action) << pending << question;
    };
    row("actionTransactionRollback", true,
        "Rollback current transaction?\nAll changes will be lost.");
    row("actionTransactionRestore", false,
        "Restore transaction \"" + QString(99, 'n') + QString::fromUtf8("\xc3\xa4\" (2)?"));
    row("actionTransactionDiscard", false,
        "Delete selected transactions (2)?\n\nPlease note, that the first transaction (1) and \n"
        "the current transaction (3) can not be deleted.");
    row("actionManagementFinalize", false,
        "Delete all transactions except the first and current/last?");
    row("actionManagementVacuum", false, "Reorganize database file to release unused disk space?");
    row("actionMetaDataRemove", true, "Remove 2 entries?");
    row("actionPointAttributeRemove", true, "Remove 2 attributes?");
    row("actionClose", true,
        "A transaction is pending in \"FILE\".\nAll its changes will be lost. Go on?");
}

void QuestionsTest::questionsAreAskedAndNoIsNo() {
    QFETCH(QByteArray, action);
    QFETCH(bool, pending);
    QFETCH(QString, question);
    // The library's decision.
    const bool refused = action == "actionTransactionDiscard";
    const SampleWindow window(m_sample->copy());
    if (pending)
        window.begin();
    select(window, "tabMetaData", "treeMetaData", {"own.note", "own.text"});
    select(window, "tabPointAttributes", "treePointAttributes", {"own.single", "own.vector[12]"});
    select(window, "tabTransactions", "treeTransactions", {"1", "2"});
    const QStringList before = stateOf(window);
    for (const bool yes : {false, true}) {
        std::vector<Step> steps = {[&](QDialog* dialog) {
            auto* box = qobject_cast<QMessageBox*>(dialog);
            QStringList buttons;
            for (const auto* button : box->buttons())
                buttons += button->text().remove('&');
            buttons.sort();
            const QString title = dialog->windowTitle();
            ModalScript::press(yes ? "Yes" : "No")(dialog);
            QCOMPARE(title, "Confirmation");
            QCOMPARE(buttons, QStringList({"No", "Yes"}));
        }};
        if (yes && refused)
            steps.push_back(ModalScript::press("OK"));
        const QString text = window.run(action, std::move(steps)).value(0);
        const QString asked = QString(question).replace(
            "FILE", QDir::toNativeSeparators(m_sample->path("work.qrbx")));
        // What will be gone may stand behind it.
        QCOMPARE(text.left(asked.size()), asked);
        QVERIFY(text.size() == asked.size() || text.mid(asked.size()).startsWith("\n\n"));
        if (action == "actionManagementVacuum")
            QVERIFY(text.endsWith("\n\nThat releases about 0 B."));
        if (!yes)
            QCOMPARE(stateOf(window), before);
    }
    if (window.window().session().database)
        QCOMPARE(stateOf(window) == before, refused || action == "actionManagementVacuum");
}

void QuestionsTest::sizesAreThoseOfTheLibrary() {
    const SampleWindow window(m_sample->copy());
    const auto expected = [&](const QString& name, const std::vector<std::uint32_t>& ids) {
        const std::uint64_t bytes = window.database().transactions().size(ids);
        const double kilobytes = static_cast<double>(bytes) / 1024;
        const QString readable =
            bytes < 1024 ? QString("%0 B").arg(bytes) : QString::number(kilobytes, 'f', 2) + " KB";
        return QStringList(QString("Size of %0:\n\n%1 (%2 B)").arg(name, readable).arg(bytes));
    };
    const Step ok = ModalScript::press("OK");
    select(window, "tabTransactions", "treeTransactions", {"3*"});
    QCOMPARE(window.run("actionTransactionSize", {ok}), expected("transaction 3", {3}));
    select(window, "tabTransactions", "treeTransactions", {"1", "2", "3*"});
    QCOMPARE(window.run("actionTransactionSize", {ok}),
             expected("selected transactions (3)", {1, 2, 3}));
}

GUI_TEST_MAIN(QuestionsTest)
#include "questionstest.moc"
