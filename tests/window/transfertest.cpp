// What goes into files and comes from them, what is asked before something is lost, and that
// nothing happens where the user does not want it after all.

#include "qrb/loader.h"
#include "tests/window/guitestmain.h"
#include "tests/window/samplewindow.h"
#include "window/common/filterhistory.h"
#include "window/common/programsettings.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QProgressDialog>
#include <QToolButton>
#include <QTreeWidget>
#include <QtTest>
#include <memory>

using namespace tarvo::window;

using Step = ModalScript::Step;

namespace {

QByteArray contentsOf(const QString& fileName) {
    QFile file(fileName);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("missing");
}

QString written(const QString& fileName, const QByteArray& bytes) {
    QFile file(fileName);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() ? fileName
                                                                                : QString();
}

// What a change would change.
QStringList stateOf(const SampleWindow& window) {
    const auto& database = window.database();
    QStringList state = {QString::number(database.transactions().pending()),
                         QString::number(database.transactions().current()),
                         window.child<QLabel>("labelStatus")->text(),
                         window.child<QPlainTextEdit>("editChangelog")->toPlainText()};
    for (const std::string& name : database.metaData().list())
        state += QString::fromStdString(name + '=' + database.metaData().get(name));
    for (const std::uint32_t id : database.transactions().list())
        state += QString::number(id);
    for (const std::string& name : database.pointAttributes().list())
        state += QString::fromStdString(name);
    return state;
}

void select(const SampleWindow& window, const char* tab, const char* tree,
            const QStringList& rows) {
    window.driver().showTab(tab);
    for (const QString& row : rows)
        QVERIFY2(window.driver().select(tree, row, row != rows.first()), qUtf8Printable(row));
}

void doubleClick(QTreeWidget* tree, QTreeWidgetItem* item, int column) {
    const QModelIndex index = tree->indexFromItem(item, column);
    tree->scrollTo(index);
    const QPoint place = tree->visualRect(index).center();
    QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, place);
    QTest::mouseDClick(tree->viewport(), Qt::LeftButton, {}, place);
}

}  // namespace

class TransferTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase() { tarvo::qrb::freeLibrary(); }

    void fileDialogsProposeAndCanBeCancelled_data();
    void fileDialogsProposeAndCanBeCancelled();
    void questionsAreAskedAndNoIsNo_data();
    void questionsAreAskedAndNoIsNo();
    void cancelledImportTakesEverythingBack();
    void failedImportKeepsWhatCameBefore();
    void importWithoutTransactionIsRefusedOnce();
    void exportedItemsAreJsonInTheirOrder();
    void importTellsEveryName();
    void exportedPointsHaveEveryElement();
    void exportThatFailsIsTold();
    void sizesAreThoseOfTheLibrary();
    void doubleClicksCopyWhatTheyHit();
    void changelogIsSearchedBothWays();
    void findBarCountsAndGoesRound();
    void historyIsSharedAndClearedOnlyOnYes();
    void insertMenuHoldsEveryOperator();
    void wrongNodesAreToldAndChangeNothing();

private:
    std::unique_ptr<SampleDatabase> m_sample;
};

void TransferTest::initTestCase() {
    tarvo::qrb::loadLibrary("");
    m_sample = std::make_unique<SampleDatabase>();
    QVERIFY2(m_sample->error().isEmpty(), qUtf8Printable(m_sample->error()));
}

void TransferTest::fileDialogsProposeAndCanBeCancelled_data() {
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

void TransferTest::fileDialogsProposeAndCanBeCancelled() {
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

void TransferTest::questionsAreAskedAndNoIsNo_data() {
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

void TransferTest::questionsAreAskedAndNoIsNo() {
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

void TransferTest::cancelledImportTakesEverythingBack() {
    const SampleWindow window(m_sample->copy());
    window.begin();
    window.database().metaData().createSignature("own.note", 1, {1, 2, 3});
    window.run("actionTransactionCommit", {ModalScript::press("OK")});
    window.begin();
    window.driver().showTab("tabMetaData");
    const QStringList before = stateOf(window);
    // The dialog comes up after a while only: as many items as that takes.
    bool came = false;
    for (int items = 20'000; !came && items < 3'000'000; items *= 3) {
        QByteArray text = "{\"own.note\":\"changed\",\"own.twice\":\"1\",\"own.twice\":\"2\"";
        for (int i = 0; i < items; ++i)
            text += ",\"own.item." + QByteArray::number(i) + "\":\"" + QByteArray::number(i) + '"';
        const QString file = written(m_sample->path("many.json"), text + '}');
        ModalScript script(
            {ModalScript::chooseFile(file), ModalScript::onProgress([&](QDialog* dialog) {
                 came = qobject_cast<QProgressDialog*>(dialog);
                 ModalScript::press(came ? "Cancel" : "OK")(dialog);
             })});
        window.child<QAction>("actionMetaDataImport")->trigger();
        QCOMPARE(script.answered(), 2u);
        QCOMPARE(script.texts().isEmpty(), came);  // nothing is told about what the user did
        if (!came) {
            // Begin anew.
            window.run("actionTransactionRollback", {ModalScript::press("Yes")});
            window.begin();
        }
    }
    QVERIFY(came);
    QVERIFY(!QApplication::activeModalWidget() && !QApplication::overrideCursor());
    QCOMPARE(stateOf(window), before);
    QCOMPARE(window.child<QTreeWidget>("treeMetaData")->topLevelItemCount(), 8);
    QVERIFY(window.database().metaData().verifySignature("own.note", 1, {1, 2, 3}));
}

void TransferTest::failedImportKeepsWhatCameBefore() {
    const SampleWindow window(m_sample->copy());
    window.begin();
    window.driver().showTab("tabMetaData");
    const QString file = written(m_sample->path("part.json"),
                                 R"({"own.first": "1", "": "no name", "own.last": "2"})");
    const QStringList texts = window.run("actionMetaDataImport",
                                         {ModalScript::chooseFile(file), ModalScript::press("OK")});
    QCOMPARE(texts.size(), 1);
    QVERIFY(!texts[0].startsWith("Import successfully"));
    QVERIFY(window.driver().select("treeMetaData", "own.first"));
    QVERIFY(!window.driver().select("treeMetaData", "own.last"));
}

void TransferTest::importWithoutTransactionIsRefusedOnce() {
    const SampleWindow window(m_sample->copy());
    window.driver().showTab("tabMetaData");
    const QStringList before = stateOf(window);
    const QString file = written(m_sample->path("two.json"), R"({"own.a": "1", "own.b": "2"})");
    const QStringList texts = window.run("actionMetaDataImport",
                                         {ModalScript::chooseFile(file), ModalScript::press("OK")});
    QVERIFY2(texts.value(0).contains("transaction"), qUtf8Printable(texts.value(0)));
    QCOMPARE(stateOf(window), before);
}

void TransferTest::exportedItemsAreJsonInTheirOrder() {
    const SampleWindow window(m_sample->copy());
    select(window, "tabMetaData", "treeMetaData", {"own.text", "own.note", "own.empty"});
    const QString file = m_sample->path("items.json");
    QFile::remove(file);
    QCOMPARE(window.run("actionMetaDataExport",
                        {ModalScript::chooseFile(file), ModalScript::press("OK")}),
             QStringList("Export successfully finished."));
    const QByteArray text = contentsOf(file);
    QByteArray compact = text;
    QCOMPARE(compact.replace('\n', "").replace(" ", ""),
             QByteArray(R"({"own.text":"no{JSON","own.note":{"a":[1,2.50]},"own.empty":""})"));
    QVERIFY2(text.contains("\n    \"own.note\""), text.constData());  // indented

    // And back.
    window.begin();
    select(window, "tabMetaData", "treeMetaData", {"own.text", "own.empty"});
    window.run("actionMetaDataRemove", {ModalScript::press("Yes")});
    QCOMPARE(window.run("actionMetaDataImport",
                        {ModalScript::chooseFile(file), ModalScript::press("OK")}),
             QStringList("Import successfully finished.\n\nItems added: own.text, own.empty\n"
                         "Items updated: (none)\nItems unchanged: own.note"));
    const auto& metaData = window.database().metaData();
    QCOMPARE(metaData.get("own.text"), std::string("no { JSON"));
    QCOMPARE(metaData.get("own.empty", "missing"), std::string());
    window.run("actionTransactionCommit", {ModalScript::press("OK")});
    QVERIFY(!window.database().transactions().pending());
}

// The box those that it has room for, and the details all.
void TransferTest::importTellsEveryName() {
    const SampleWindow window(m_sample->copy());
    window.begin();
    window.driver().showTab("tabMetaData");
    for (const int items : {30, 31, 40}) {
        QByteArray text = "{\"own.signed\": \"" + QByteArray::number(items) + '"';
        QStringList names;
        for (int i = 0; i < items; ++i) {
            names += QString("own.%0.%1").arg(items).arg(i);
            text += ", \"" + names.last().toUtf8() + "\": \"\"";
        }
        QString details;
        const QStringList told =
            window.run("actionMetaDataImport",
                       {ModalScript::chooseFile(written(m_sample->path("names.json"), text + '}')),
                        [&](QDialog* dialog) {
                            details = qobject_cast<QMessageBox*>(dialog)->detailedText();
                            ModalScript::press("OK")(dialog);
                        }});
        const QString more = items > 30 ? QString(" and %0 more").arg(items - 30) : QString();
        // Its signature is gone with the first one.
        const QString lost = items == 30 ? "\nItems no longer signed: own.signed" : "";
        QCOMPARE(told, QStringList("Import successfully finished.\n\nItems added: " +
                                   names.mid(0, 30).join(", ") + more +
                                   "\nItems updated: own.signed" + lost));
        QCOMPARE(details, items > 30 ? "Items added:\n" + names.join('\n') + '\n' : QString());
    }
}

// Also those beyond what the table shows.
void TransferTest::exportedPointsHaveEveryElement() {
    const SampleWindow window(m_sample->copy());
    window.driver().showTab("tabPointData");
    window.run("actionColumnsShowAll", {});
    const QString file = m_sample->path("elements.csv");
    window.run("actionQuerySelectExport",
               {ModalScript::chooseFile(file), ModalScript::press("OK")});
    const QByteArrayList lines = contentsOf(file).split('\n');
    for (int i = 0; i < 12; ++i)
        QVERIFY(lines[0].split(',').contains(QString("own.vector[%0]").arg(i).toUtf8()));
    QCOMPARE(lines[1].count(','), lines[0].count(','));
}

void TransferTest::exportThatFailsIsTold() {
    const SampleWindow window(m_sample->copy());
    select(window, "tabMetaData", "treeMetaData", {"own.text"});
    const QString nowhere = m_sample->path("no/such/folder/file");
    for (const char* action : {"actionMetaDataExport", "actionQuerySelectExport"}) {
        const QStringList texts =
            window.run(action, {ModalScript::chooseFile(nowhere), ModalScript::press("OK")});
        QVERIFY2(texts.value(0).startsWith("Failed to open export file."),
                 qUtf8Printable(texts.value(0)));
    }
    QVERIFY(!QApplication::overrideCursor());
}

void TransferTest::sizesAreThoseOfTheLibrary() {
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

void TransferTest::doubleClicksCopyWhatTheyHit() {
    const SampleWindow window(m_sample->copy());
    window.driver().showTab("tabPointIndex");
    auto* details = window.child<QTreeWidget>("treePointIndexDetails");
    QVERIFY(window.driver().select("treePointIndexDetails", "tarvo.id"));
    auto* id = details->findItems("tarvo.id", Qt::MatchExactly).value(0);
    QVERIFY(id);
    doubleClick(details, id->child(1), 1);
    QCOMPARE(QApplication::clipboard()->text(), id->child(1)->text(1));
    doubleClick(details, id->child(1), 0);
    QCOMPARE(QApplication::clipboard()->text(), "Maximum:");

    window.driver().showTab("tabPointData");
    window.run("actionQuerySelectNext", {});
    auto* points = window.child<QTreeWidget>("treePointData");
    doubleClick(points, points->topLevelItem(2), 0);
    QCOMPARE(QApplication::clipboard()->text(), "3");
    doubleClick(points, points->topLevelItem(2), 2);
    QCOMPARE(QApplication::clipboard()->text(),
             "tarvo.xyz[1] = " + points->topLevelItem(2)->text(2));
}

void TransferTest::changelogIsSearchedBothWays() {
    const SampleWindow window{QString()};
    window.window().openFile(written(
        m_sample->path("log.txt"),
        "[#1] One\nword Alpha\n[#2] Two\nbeta alpha\nSignature: 0a\n[#3] Three\nALPHA 33\n"));
    window.driver().showTab("tabChangelog");
    auto* log = window.child<QPlainTextEdit>("editChangelog");
    auto* search = window.child<QLineEdit>("editChangelogSearch");
    QVERIFY(log->isReadOnly() && log->lineWrapMode() == QPlainTextEdit::NoWrap);
    QCOMPARE(window.child<QLabel>("labelChangelogEntries")->text(), "Log entries: 3");
    const auto step = [&](const char* action) {
        window.run(action, {});
        return log->textCursor().selectedText() + '@' +
               QString::number(log->textCursor().selectionStart());
    };
    const auto next = [&] { return step("actionChangelogNext"); };
    const auto previous = [&] { return step("actionChangelogPrevious"); };
    const QString text = log->toPlainText();
    const auto at = [&](const QString& found) {
        return found + '@' + QString::number(text.indexOf(found));
    };
    log->moveCursor(QTextCursor::Start);
    search->setText("alpha");
    QCOMPARE(next(), at("Alpha"));
    QVERIFY(log->hasFocus());
    QCOMPARE(next(), at("alpha"));
    QCOMPARE(next(), at("ALPHA"));
    QCOMPARE(next(), at("ALPHA"));  // the last one
    QCOMPARE(previous(), at("alpha"));
    QCOMPARE(previous(), at("Alpha"));
    QCOMPARE(previous(), at("Alpha"));
    search->setText(R"(\d\d)");
    QCOMPARE(next(), at("33"));
    search->setText("no such text");
    QCOMPARE(next(), at("33"));
    search->setText("(");  // no expression at all
    QCOMPARE(previous(), at("33"));
    search->clear();
    QCOMPARE(previous(), at("[#3] Three"));
    QCOMPARE(previous(), at("[#2] Two"));
    // Return in the field goes on, too.
    search->setText("signature");
    QTest::keyClick(search, Qt::Key_Return);
    QCOMPARE(log->textCursor().selectedText(), "Signature");
}

void TransferTest::findBarCountsAndGoesRound() {
    const SampleWindow window(m_sample->copy());
    window.driver().showTab("tabPointData");
    window.run("actionQuerySelectNext", {});
    window.run("actionColumnsHideAll", {});
    auto* chooser = window.child<QListWidget>("listPointAttributes");
    chooser->findItems("tarvo.class", Qt::MatchExactly).first()->setCheckState(Qt::Checked);
    auto* points = window.child<QTreeWidget>("treePointData");
    const int column = points->columnCount() > 0 ? [&] {
        for (int i = 0; i < points->columnCount(); ++i)
            if (points->headerItem()->text(i) == "tarvo.class")
                return i;
        return -1;
    }() : -1;
    QVERIFY(column > 0);
    QTRY_VERIFY(points->isColumnHidden(1) && !points->isColumnHidden(column));
    // Where the text is, in the order of reading.
    QStringList expected;
    for (int row = 0; row < points->topLevelItemCount(); ++row)
        for (const int shown : {0, column})
            if (points->topLevelItem(row)->text(shown).contains("7"))
                expected += QString("%0/%1").arg(row).arg(shown);
    QVERIFY(expected.size() > 5);
    window.run("actionQuerySelectFind", {});
    auto* edit = window.child<QLineEdit>("editFind");
    QTest::keyClicks(edit, "7");
    QStringList found;
    for (qsizetype i = 0; i <= expected.size(); ++i) {
        QCOMPARE(window.child<QLabel>("labelFind")->text(),
                 QString("%0 of %1").arg(i % expected.size() + 1).arg(expected.size()));
        found += QString("%0/%1")
                     .arg(points->indexOfTopLevelItem(points->currentItem()))
                     .arg(points->currentColumn());
        QTest::keyClick(edit, Qt::Key_F3);
    }
    QCOMPARE(found.takeLast(), expected.first());
    QCOMPARE(found, expected);
    QTest::mouseClick(window.child<QToolButton>("buttonFindPrevious"), Qt::LeftButton);
    QTest::mouseClick(window.child<QToolButton>("buttonFindPrevious"), Qt::LeftButton);
    QCOMPARE(window.child<QLabel>("labelFind")->text(), QString("%0 of %0").arg(expected.size()));
    QTest::mouseClick(window.child<QToolButton>("buttonFindNext"), Qt::LeftButton);
    QCOMPARE(window.child<QLabel>("labelFind")->text(), QString("1 of %0").arg(expected.size()));
    // Typing goes on from where one is.
    QTest::keyClick(edit, Qt::Key_F3);
    QTest::keyClick(edit, Qt::Key_Backspace);
    QTest::keyClicks(edit, "7");
    QCOMPARE(window.child<QLabel>("labelFind")->text(), QString("2 of %0").arg(expected.size()));
    QTest::mouseClick(window.child<QToolButton>("buttonFindClose"), Qt::LeftButton);
    QVERIFY(!edit->isVisible());
}

void TransferTest::historyIsSharedAndClearedOnlyOnYes() {
    const SampleWindow window(m_sample->copy());
    auto* data = window.child<QComboBox>("PointDataFilter");
    auto* index = window.child<QComboBox>("PointIndexFilter");
    const auto entries = [](const QComboBox* combo) {
        QStringList texts;
        for (int i = 0; i < combo->count(); ++i)
            texts += combo->itemText(i);
        return texts;
    };
    window.driver().showTab("tabPointData");
    data->lineEdit()->setText("  tarvo.id < 5 ");
    window.run("actionQuerySelectNext", {});
    QCOMPARE(data->currentText(), "  tarvo.id < 5 ");
    window.driver().showTab("tabPointIndex");
    index->lineEdit()->setText("2");
    window.run("actionPointIndexFilterNodes", {});
    const QStringList both = {"2", "tarvo.id < 5"};
    QCOMPARE(entries(data), both);
    QCOMPARE(entries(index), both);
    QCOMPARE(ProgramSettings().value("RecentFilters").toStringList(), both);
    QCOMPARE(index->insertPolicy(), QComboBox::NoInsert);

    QAction* clear = nullptr;
    QAction* clearFilter = nullptr;
    for (QAction* action : window.child<QToolButton>("buttonFilterMenu")->menu()->actions()) {
        clear = action->text() == "Clear history" ? action : clear;
        clearFilter = action->text() == "Clear filter" ? action : clearFilter;
    }
    QVERIFY(clear && clearFilter);
    window.driver().showTab("tabPointData");
    for (const bool yes : {false, true}) {
        ModalScript script({ModalScript::press(yes ? "Yes" : "No")});
        clear->trigger();
        QCOMPARE(script.texts(), QStringList("Delete all recently used filter strings?"));
        QCOMPARE(entries(data), yes ? QStringList() : both);
        QCOMPARE(entries(index), yes ? QStringList() : both);
    }
    QVERIFY(ProgramSettings().value("RecentFilters").toStringList().isEmpty());
    QCOMPARE(data->currentText(), "  tarvo.id < 5 ");
    QVERIFY(window.child<QAction>("actionQuerySelectCancel")->isEnabled());
    clearFilter->trigger();
    QCOMPARE(data->currentText(), "");
    QVERIFY(!window.child<QAction>("actionQuerySelectCancel")->isEnabled());
    QCOMPARE(data->lineEdit()->placeholderText(),
             "enter filter expression or leave empty to get all points");
    QCOMPARE(index->lineEdit()->placeholderText(),
             "enter filter expression or node id or leave empty to query all nodes");
    QCOMPARE(window.child<QLineEdit>("editPointDataNodes")->placeholderText(),
             "enter node id or leave empty to query all nodes");
}

void TransferTest::insertMenuHoldsEveryOperator() {
    const SampleWindow window(m_sample->copy());
    window.driver().showTab("tabPointData");
    const auto* menu = window.child<QToolButton>("buttonFilterMenu")->menu();
    const auto entriesOf = [&](int submenu) {
        QStringList entries;
        for (const QAction* action : menu->actions()[submenu]->menu()->actions())
            entries += action->isSeparator() ? QString("-")
                                             : action->text() + '|' + action->data().toString();
        return entries;
    };
    QCOMPARE(entriesOf(1), QStringList({":minimum|:minimum", ":maximum|:maximum",
                                        ":default|:default", ":invalid|:invalid"}));
    QCOMPARE(entriesOf(2), QStringList({"is equal to (==)|==", "not equal to (!=)|!=", "-",
                                        "less than (<)|<", "less than or equal to (<=)|<=", "-",
                                        "greater than (>)|>", "greater than or equal to (>=)|>=",
                                        "-", "and (&&&&)|&&", "or (||)|||", "-", "modulo (%)|%"}));
    QCOMPARE(entriesOf(3),
             QStringList(
                 {"find largest leaf|find largest leaf", "find fullest leaf|find fullest leaf",
                  "find largest node|find largest node", "find fullest node|find fullest node"}));
    // Of attributes that have an invalid value.
    QCOMPARE(entriesOf(4),
             QStringList("tarvo.id != tarvo.id:invalid|tarvo.id != tarvo.id:invalid"));
    // What they insert, one after the other.
    const auto* filter = window.child<QComboBox>("PointDataFilter");
    const auto trigger = [&](int submenu, int entry) {
        menu->actions()[submenu]->menu()->actions()[entry]->trigger();
        return filter->currentText();
    };
    QCOMPARE(trigger(0, 3), "own.single ");
    QCOMPARE(trigger(1, 1), "own.single:maximum ");
    QCOMPARE(trigger(2, 0), "own.single:maximum == ");
    QVERIFY(filter->lineEdit()->hasFocus());
}

void TransferTest::wrongNodesAreToldAndChangeNothing() {
    const SampleWindow window(m_sample->copy());
    window.driver().showTab("tabPointIndex");
    auto* index = window.child<QComboBox>("PointIndexFilter");
    auto* tree = window.child<QTreeWidget>("treePointIndexNodes");
    const QString summary = window.child<QLabel>("labelPointIndex")->text();
    const int rows = tree->topLevelItem(0)->childCount();
    const std::pair<const char*, const char*> wrong[] = {
        {"1-2-3", "Invalid input: \"1-2-3\""}, {"4294967296", "Failed to parse: \"4294967296\""}};
    for (const auto& [nodes, message] : wrong) {
        index->lineEdit()->setText(nodes);
        QCOMPARE(window.run("actionPointIndexFilterNodes", {ModalScript::press("OK")}),
                 QStringList(message));
        QCOMPARE(window.child<QLabel>("labelPointIndex")->text(), summary);
        QCOMPARE(tree->topLevelItem(0)->childCount(), rows);
    }
    window.driver().showTab("tabPointData");
    window.child<QLineEdit>("editPointDataNodes")->setText("x");
    for (const char* action : {"actionQuerySelectNext", "actionQuerySelectCount"})
        QCOMPARE(window.run(action, {ModalScript::press("OK")}),
                 QStringList("Failed to parse: \"x\""));
    QVERIFY(!window.child<QAction>("actionQuerySelectCancel")->isEnabled());
}

GUI_TEST_MAIN(TransferTest)
#include "transfertest.moc"
