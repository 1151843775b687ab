// The life of databases in windows: what a hurried user, a second window or another program does to
// files that are open must not cost what was committed, nor what is pending, unasked.

#include "qrb/error.h"
#include "qrb/loader.h"
#include "qrb/pointcloud.h"
#include "tests/window/guitestmain.h"
#include "tests/window/modalscript.h"
#include "tests/window/testdatabase.h"
#include "tests/window/windowdriver.h"
#include "window/common/textfiles.h"
#include "window/frame/librarychoice.h"
#include "window/frame/mainwindow.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QDropEvent>
#include <QFileOpenEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QProgressDialog>
#include <QTreeWidget>
#include <QUrl>
#include <QtTest>
#include <cstdio>
#include <functional>
#include <memory>
#include <tuple>

using namespace tarvo::window;

namespace {

using Step = ModalScript::Step;

const Step yes = ModalScript::press("Yes");
const Step no = ModalScript::press("No");
const Step ok = ModalScript::press("OK");

QByteArray contentOf(const QString& fileName) {
    QFile file(fileName);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("can't be read");
}

bool write(const QString& fileName, const QByteArray& bytes) {
    QFile file(fileName);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

// Does it while the steps answer the dialogs; returns the texts of the message boxes.
QStringList answering(std::vector<Step> steps, const std::function<void()>& action) {
    const std::size_t expected = steps.size();
    ModalScript script(std::move(steps));
    action();
    if (script.answered() != expected)
        QTest::qFail(
            qPrintable(QString("of %1 dialogs %2 came").arg(expected).arg(script.answered())),
            __FILE__, __LINE__);
    return script.texts();
}

}  // namespace

class LifetimeTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void cleanupTestCase() { tarvo::qrb::freeLibrary(); }

    void outputsSpareDatabases();
    void noDatabaseIsReadOrWrittenAsText();
    void newDatabasesSpareThoseOfOtherWindows();
    void closedWindowLetsGo();
    void twoWindowsShareAFile();
    void filesGoToAnOpenWindow();
    void quitAsksAllWindowsFirst();
    void quitEndsNoWorkOnADatabase();
    void switchOfTheLibraryWaitsOrIsTakenBack();
    void replacedFileIsNoticed_data();
    void replacedFileIsNoticed();
    void fileThatIsWrittenOverIsNoticed();
    void returnLosesNothing();
    void deletedFileIsNoticed();
    void copyOfADeletedFileCanBeSaved();
    void pendingTransactionOfALostFileIsNotDroppedUnasked();
    void fileThatCannotBeOpenedCostsNoTransaction_data();
    void fileThatCannotBeOpenedCostsNoTransaction();
    void damagedFileIsReportedOnce();
    void textFileTakesNoDatabasesPlace();

private:
    static QString field(const MainWindow& window, const char* name) {
        return window.findChild<QLineEdit*>(name)->text();
    }
    static QString status(const MainWindow& window) {
        return window.findChild<QLabel*>("labelStatus")->text();
    }
    static void begin(MainWindow& window) {
        WindowDriver(window).run("actionTransactionBegin", {ok});
        QVERIFY(isPending(window));
    }
    static bool isPending(const MainWindow& window) {
        return window.session().database && window.session().database->transactions().pending();
    }
    // Whether somebody else, in this program and outside, can begin a transaction.
    static bool isFree(const QString& fileName);
    QString copyOf(const TestDatabase& database, const QString& name) const;
    QStringList trigger(MainWindow& window, const char* action, std::vector<Step> steps) {
        return WindowDriver(window).run(action, std::move(steps));
    }

    QTemporaryDir m_folder;
    TestDatabase m_small;
    TestDatabase m_large;
    std::unique_ptr<QTemporaryDir> m_work;
    QString m_file;   // a copy of the small one
    QString m_other;  // a copy of the large one
    std::unique_ptr<MainWindow> m_window;
    std::unique_ptr<MainWindow> m_second;
};

void LifetimeTest::initTestCase() {
    tarvo::qrb::loadLibrary("");
    for (const auto& [database, name, points] :
         {std::tuple(&m_small, "small", 1000), std::tuple(&m_large, "large", 2500)}) {
        QDir(m_folder.path()).mkdir(name);
        *database = makeSampleDatabase(m_folder.filePath(name), points);
        QVERIFY2(database->error.isEmpty(), qUtf8Printable(database->error));
        const tarvo::qrb::Context context("OFF", "");
        tarvo::qrb::Pointcloud cloud(context);
        cloud.open(database->fileName.toStdString(), tarvo::qrb::pointcloud::OpenSettings(context));
        tarvo::qrb::pointcloud::TransactionGuard guard(cloud.transactions(), "Notes", "tests");
        cloud.metaData().set("own.note", "a note");
        guard.commit();
    }
}

void LifetimeTest::init() {
    m_work = std::make_unique<QTemporaryDir>();
    m_file = copyOf(m_small, "file.qrbx");
    m_other = copyOf(m_large, "other.qrbx");
    m_window = showFreshWindow();
    m_second = std::make_unique<MainWindow>();
    m_second->show();
}

void LifetimeTest::cleanup() {
    libraryChoice() = {};
    m_second.reset();
    m_window.reset();
}

QString LifetimeTest::copyOf(const TestDatabase& database, const QString& name) const {
    const QString path = m_work->filePath(name);
    if (!QFile::copy(database.fileName, path))
        qFatal("no copy %s", qUtf8Printable(path));
    return path;
}

bool LifetimeTest::isFree(const QString& fileName) {
    const tarvo::qrb::Context context("OFF", "");
    tarvo::qrb::Pointcloud cloud(context);
    cloud.open(fileName.toStdString(), tarvo::qrb::pointcloud::OpenSettings(context));
    try {
        cloud.transactions().begin("Another", "tests");
    } catch (const tarvo::qrb::Error&) {
        cloud.close();
        if (runTool({"changelog", fileName, "append", "by another program"}).isEmpty())
            QTest::qFail("the lock holds in this program only", __FILE__, __LINE__);
        return false;
    }
    cloud.transactions().rollback();
    cloud.close();
    return runTool({"changelog", fileName, "append", "by another program"}).isEmpty();
}

void LifetimeTest::outputsSpareDatabases() {
    m_window->openDatabase(m_file, true);
    m_second->openDatabase(m_other, true);
    const QString link = m_work->filePath("link.csv");
    QVERIFY(QFile::link(m_file, link));
    WindowDriver(*m_window).select("treeMetaData", "own.note");
    const QString uuid = field(*m_window, "editDatabaseUUID");
    for (const char* action :
         {"actionQuerySelectExport", "actionChangelogExportToTextfile", "actionMetaDataExport"}) {
        for (const QString& target : {m_file, link, m_other}) {
            WindowDriver driver(*m_window);
            driver.showTab("tabMetaData");
            driver.select("treeMetaData", "own.note");
            const QStringList texts =
                trigger(*m_window, action, {ModalScript::chooseFile(target), yes, ok});
            QVERIFY2(texts.last().startsWith("The output can't go to"),
                     qUtf8Printable(texts.last()));
        }
    }
    QVERIFY(QFileInfo(link).isSymLink());
    trigger(*m_window, "actionReload", {});
    QCOMPARE(field(*m_window, "editDatabaseUUID"), uuid);
    begin(*m_second);
    m_second->findChild<QAction*>("actionReload")->trigger();
    QVERIFY(isPending(*m_second));
}

// A file that is opened and closed aside loses its locks.
void LifetimeTest::noDatabaseIsReadOrWrittenAsText() {
    QVERIFY_THROWS_EXCEPTION(tarvo::qrb::Error, writeFile(m_file, "text"));
    QVERIFY_THROWS_EXCEPTION(tarvo::qrb::Error, readFile(m_file));
    const QString text = m_work->filePath("some.txt");
    writeFile(text, "text");
    QCOMPARE(readFile(text), std::string("text"));
    m_window->openDatabase(m_file, true);
    begin(*m_window);
    trigger(*m_window, "actionMetaDataImport", {ModalScript::chooseFile(m_file), ok});
    trigger(*m_window, "actionChangelogLoadFromTextfile", {ModalScript::chooseFile(m_other), ok});
    QVERIFY(!isFree(m_file));
    QVERIFY(isPending(*m_window));
}

void LifetimeTest::newDatabasesSpareThoseOfOtherWindows() {
    m_second->openDatabase(m_other, true);
    begin(*m_second);
    const QString link = m_work->filePath("link.qrbx");
    QVERIFY(QFile::link(m_other, link));
    const QStringList texts = trigger(*m_window, "actionNew",
                                      {[&](QDialog* dialog) {
                                           in<QLineEdit>(dialog, "editLocation")->setText(link);
                                           ModalScript::press("OK")(dialog);
                                       },
                                       ok, ModalScript::press("Cancel")});
    QVERIFY2(texts.value(0).startsWith("This database is open in another window."),
             qUtf8Printable(texts.value(0)));

    m_window->openDatabase(m_file, true);
    const QStringList refusal = trigger(*m_window, "actionExportAsQRB",
                                        {[&](QDialog* dialog) {
                                             in<QLineEdit>(dialog, "editTarget")->setText(m_other);
                                             ModalScript::press("Export")(dialog);
                                             ModalScript::press("Close")(dialog);
                                         },
                                         ok});
    QVERIFY(refusal.value(0).startsWith("This database is open in another window."));
    QVERIFY(isPending(*m_second));
    trigger(*m_second, "actionTransactionCommit", {ModalScript::press("OK")});
    QVERIFY(!isPending(*m_second));
    QCOMPARE(field(*m_second, "editPointsTotal"), "2,500");
}

void LifetimeTest::closedWindowLetsGo() {
    m_window->openDatabase(m_file, true);
    begin(*m_window);
    QVERIFY(!isFree(m_file));
    // Return, pressed in a hurry, loses nothing.
    answering({[](QDialog* dialog) { QTest::keyClick(dialog, Qt::Key_Return); }},
              [&] { m_window->close(); });
    QVERIFY(m_window->isVisible() && isPending(*m_window));
    answering({yes}, [&] { m_window->close(); });
    QVERIFY(!m_window->isVisible());
    QVERIFY(!m_window->session().database);
    QVERIFY(isFree(m_file));
}

void LifetimeTest::twoWindowsShareAFile() {
    m_window->openDatabase(m_file, true);
    m_second->openDatabase(m_file, true);
    begin(*m_window);
    // One writes at a time; the file is named twice, and opened again in its own window.
    trigger(*m_second, "actionTransactionBegin", {ok, ok});
    QVERIFY(isPending(*m_window) && !isPending(*m_second));
    m_second->close();
    QVERIFY(isPending(*m_window) && !isFree(m_file));
    answering({no}, [&] { m_window->openDatabase(m_file, true); });
    QVERIFY(isPending(*m_window) && !isFree(m_file));
    trigger(*m_window, "actionTransactionCommit", {ok});
    m_second->show();
    m_second->openDatabase(m_file, true);
    QCOMPARE(m_second->findChild<QTreeWidget*>("treeTransactions")->topLevelItemCount(),
             m_window->findChild<QTreeWidget*>("treeTransactions")->topLevelItemCount());
}

void LifetimeTest::filesGoToAnOpenWindow() {
    m_window->close();
    m_window->openFile(m_file);  // as a drop that came too late
    QVERIFY(!m_window->session().database);
    QFileOpenEvent event(m_file);
    QApplication::sendEvent(qApp, &event);
    QCOMPARE(status(*m_second), m_file);
    // With no window open it waits for the next one.
    m_second->close();
    QFileOpenEvent early(m_other);
    QApplication::sendEvent(qApp, &early);
    m_second = std::make_unique<MainWindow>();
    m_second->show();
    QTRY_COMPARE(status(*m_second), m_other);
}

void LifetimeTest::quitAsksAllWindowsFirst() {
    m_window->openDatabase(m_file, true);
    m_second->openDatabase(m_other, true);
    begin(*m_window);
    begin(*m_second);
    trigger(*m_window, "actionQuit", {yes, no});
    QVERIFY(m_window->isVisible() && isPending(*m_window));
    QVERIFY(m_second->isVisible() && isPending(*m_second));
    trigger(*m_window, "actionQuit", {yes, yes});
    QVERIFY(!m_window->isVisible() && !m_second->isVisible());
    QVERIFY(isFree(m_file) && isFree(m_other));
}

void LifetimeTest::quitEndsNoWorkOnADatabase() {
    const QTemporaryDir folder;
    const TestDatabase large = makeLongExport(folder.path());
    QVERIFY2(large.error.isEmpty(), qUtf8Printable(large.error));
    m_window->openDatabase(large.fileName, true);
    m_window->findChild<QAction*>("actionColumnsShowAll")->trigger();
    bool refused = false;
    QPointer<MainWindow> window = m_window.get();
    trigger(*m_window, "actionQuerySelectExport",
            {ModalScript::chooseFile(m_work->filePath("large.csv")),
             ModalScript::onProgress([&](QDialog* dialog) {
                 QVERIFY(qobject_cast<QProgressDialog*>(dialog));
                 QFileOpenEvent event(m_file);
                 QApplication::sendEvent(qApp, &event);
                 m_second->findChild<QAction*>("actionQuit")->trigger();
                 refused = window->isVisible() && m_second->isVisible() && dialog->isVisible();
                 // Hidden at once, and its work still on the stack.
                 ModalScript::press("Cancel")(dialog);
                 m_window->close();
                 refused = refused && window->isVisible();
             })});
    QVERIFY(refused);
    QVERIFY(!QFileInfo::exists(m_work->filePath("large.csv")));
    QVERIFY(!m_window->session().database || status(*m_window) == large.fileName);
    // What the desktop wanted opened was opened afterwards.
    QTRY_VERIFY(status(*m_window) == m_file || status(*m_second) == m_file);
}

void LifetimeTest::switchOfTheLibraryWaitsOrIsTakenBack() {
    const QString library = QCoreApplication::applicationDirPath() + "/qrblib.so";
    m_window->openDatabase(m_file, true);
    m_second->openDatabase(m_other, true);
    begin(*m_window);
    begin(*m_second);
    // Who asks for it refuses to close.
    trigger(*m_window, "actionSwitchLibrary", {ModalScript::chooseFile(library), no});
    QVERIFY(m_window->isVisible() && isPending(*m_window));
    QVERIFY(!libraryChoice().restart);
    QCOMPARE(libraryChoice().fileName, QString());

    const QStringList texts =
        trigger(*m_window, "actionSwitchLibrary", {ModalScript::chooseFile(library), yes, ok});
    QVERIFY(texts.last().startsWith("The library is switched as soon as"));
    QVERIFY(!m_window->isVisible() && libraryChoice().restart);
    // Another one refuses: it goes on waiting.
    answering({no, yes}, [&] { m_second->close(); });
    QVERIFY(m_second->isVisible() && libraryChoice().restart);
    QCOMPARE(libraryChoice().fileName, library);
    // Or does no more.
    answering({no, no}, [&] { m_second->close(); });
    QVERIFY(m_second->isVisible() && isPending(*m_second) && !libraryChoice().restart);
    QCOMPARE(libraryChoice().fileName, QString());

    trigger(*m_second, "actionSwitchLibrary", {ModalScript::chooseFile(library), yes});
    QVERIFY(!m_second->isVisible() && libraryChoice().restart);

    // Who quits wants no fresh window.
    m_window->show();
    m_second->show();
    trigger(*m_window, "actionSwitchLibrary", {ModalScript::chooseFile(library), ok});
    QVERIFY(libraryChoice().restart);
    trigger(*m_second, "actionQuit", {});
    QVERIFY(!m_second->isVisible() && !libraryChoice().restart);
}

void LifetimeTest::replacedFileIsNoticed_data() {
    QTest::addColumn<QByteArray>("action");
    for (const char* action : {"actionReload", "actionTransactionBegin", "actionManagementVacuum"})
        QTest::newRow(action) << QByteArray(action);
}

void LifetimeTest::replacedFileIsNoticed() {
    QFETCH(QByteArray, action);
    m_window->openDatabase(m_file, true);
    m_window->findChild<QAction*>("actionQuerySelectNext")->trigger();
    const QString uuid = field(*m_window, "editDatabaseUUID");
    QCOMPARE(std::rename(qPrintable(m_other), qPrintable(m_file)), 0);
    QApplication::setActiveWindow(m_second.get());
    QApplication::setActiveWindow(m_window.get());
    QTRY_VERIFY(status(*m_window).endsWith("(replaced by another file since it was opened)"));
    QStringList texts = trigger(*m_window, action, {no});
    QVERIFY2(texts.value(0).contains("was replaced by another file"),
             qUtf8Printable(texts.value(0)));
    QVERIFY(texts.value(0).contains(m_file) && !texts.value(0).contains("pending"));
    // Figures of one file only.
    QCOMPARE(field(*m_window, "editDatabaseUUID"), uuid);
    QCOMPARE(field(*m_window, "editPointsTotal"), "1,000");
    if (action == "actionReload") {
        QCOMPARE(field(*m_window, "editDatabaseSize"), "unknown");
        QVERIFY(m_window->findChild<QAction*>("actionQuerySelectCancel")->isEnabled());
    }
    QVERIFY(!isPending(*m_window));
    // What is there now is opened; the query of the old file is over.
    trigger(*m_window, action, {yes});
    QVERIFY(field(*m_window, "editDatabaseUUID") != uuid);
    QCOMPARE(field(*m_window, "editPointsTotal"), "2,500");
    QVERIFY(field(*m_window, "editDatabaseSize").contains(" B)"));
    QCOMPARE(status(*m_window), m_file);
    QVERIFY(!m_window->findChild<QAction*>("actionQuerySelectCancel")->isEnabled());
    begin(*m_window);
}

void LifetimeTest::returnLosesNothing() {
    m_window->openDatabase(m_file, true);
    const Step inAHurry = [](QDialog* dialog) { QTest::keyClick(dialog, Qt::Key_Return); };
    const auto transactions = [this] {
        return m_window->session().database->transactions().list();
    };
    for (int i = 0; i < 2; ++i) {
        begin(*m_window);
        m_window->session().database->transactions().commit({});
        m_window->refreshPanels();
    }
    const auto all = transactions();
    trigger(*m_window, "actionManagementFinalize", {inAHurry});
    QCOMPARE(transactions(), all);
    begin(*m_window);
    trigger(*m_window, "actionTransactionRollback", {inAHurry});
    QVERIFY(isPending(*m_window));
    // Asked before there is a dialog for a new file, and before there is one.
    const QStringList texts = trigger(*m_window, "actionNew", {inAHurry});
    QVERIFY2(texts.value(0).startsWith("A transaction is pending in "),
             qUtf8Printable(texts.value(0)));
    QVERIFY(isPending(*m_window));
}

// As by a copy onto it: the same file with other contents.
void LifetimeTest::fileThatIsWrittenOverIsNoticed() {
    m_window->openDatabase(m_file, true);
    const QString uuid = field(*m_window, "editDatabaseUUID");
    QFile from(m_other);
    QFile onto(m_file);
    QVERIFY(from.open(QIODevice::ReadOnly) &&
            onto.open(QIODevice::WriteOnly | QIODevice::Truncate) &&
            onto.write(from.readAll()) == from.size());
    onto.close();
    const QStringList begun = trigger(*m_window, "actionTransactionBegin", {no});
    QVERIFY2(begun.value(0).contains("was written over with another database"),
             qUtf8Printable(begun.value(0)));
    QVERIFY(!isPending(*m_window));
    trigger(*m_window, "actionReload", {yes});
    QVERIFY(field(*m_window, "editDatabaseUUID") != uuid);
    QCOMPARE(field(*m_window, "editPointsTotal"), "2,500");
    begin(*m_window);
}

void LifetimeTest::deletedFileIsNoticed() {
    m_window->openDatabase(m_file, true);
    QVERIFY(QFile::remove(m_file));
    const QStringList texts = trigger(*m_window, "actionReload", {no});
    QVERIFY(texts.value(0).contains("was deleted or renamed"));
    QVERIFY(status(*m_window).endsWith("(deleted or renamed since it was opened)"));
    QCOMPARE(field(*m_window, "editPointsTotal"), "1,000");
    QCOMPARE(field(*m_window, "editDatabaseSize"), "unknown");
    trigger(*m_window, "actionTransactionBegin", {yes});
    QVERIFY(!m_window->session().database);
    QCOMPARE(status(*m_window), "no database opened");
}

void LifetimeTest::copyOfADeletedFileCanBeSaved() {
    m_window->openDatabase(m_file, true);
    QVERIFY(QFile::remove(m_file));
    const QStringList texts =
        trigger(*m_window, "actionExportAsQRB",
                {[&](QDialog* dialog) {
                     in<QLineEdit>(dialog, "editTarget")->setText(m_file);
                     auto* changelog = in<QAbstractButton>(dialog, "editChangelog");
                     changelog->setChecked(true);
                     ModalScript::press("Export")(dialog);  // the changelog is only in the file
                     changelog->setChecked(false);
                     ModalScript::press("Export")(dialog);
                 },
                 ok, yes});
    QVERIFY2(texts.value(0).startsWith("The changelog can't be taken over"),
             qUtf8Printable(texts.value(0)));
    QCOMPARE(status(*m_window), m_file);
    QCOMPARE(field(*m_window, "editPointsTotal"), "1,000");
    QVERIFY(isFree(m_file));
}

void LifetimeTest::pendingTransactionOfALostFileIsNotDroppedUnasked() {
    m_window->openDatabase(m_file, true);
    begin(*m_window);
    const QString moved = m_work->filePath("moved.qrbx");
    QVERIFY(QFile::rename(m_file, moved));
    const QStringList texts = trigger(*m_window, "actionTransactionCommit", {no});
    QVERIFY2(texts.value(0).contains("The pending transaction can only be committed"),
             qUtf8Printable(texts.value(0)));
    QVERIFY(isPending(*m_window));
    // What took its place can't be opened.
    QVERIFY(write(m_file, "no database"));
    trigger(*m_window, "actionReload", {yes, ok});
    QVERIFY(isPending(*m_window));
    // It comes back.
    QVERIFY(QFile::remove(m_file) && QFile::rename(moved, m_file));
    trigger(*m_window, "actionReload", {});
    QCOMPARE(status(*m_window), m_file);
    trigger(*m_window, "actionTransactionCommit", {ModalScript::press("OK")});
    QVERIFY(!isPending(*m_window));
    QVERIFY(isFree(m_file));
}

void LifetimeTest::fileThatCannotBeOpenedCostsNoTransaction_data() {
    QTest::addColumn<QString>("name");
    QTest::newRow("missing") << "missing.qrbx";
    QTest::newRow("no database") << "text.qrbx";
    QTest::newRow("truncated") << "truncated.qrbx";
}

void LifetimeTest::fileThatCannotBeOpenedCostsNoTransaction() {
    QFETCH(QString, name);
    QVERIFY(write(m_work->filePath("text.qrbx"), "text"));
    QVERIFY(write(m_work->filePath("truncated.qrbx"), contentOf(m_small.fileName).left(20'000)));
    m_window->openDatabase(m_file, true);
    begin(*m_window);
    const auto open = [&] { m_window->openDatabase(m_work->filePath(name), true); };
    const QStringList texts = answering({ok}, open);
    QVERIFY2(!texts.value(0).contains("A transaction is pending"), qUtf8Printable(texts.value(0)));
    QVERIFY(isPending(*m_window));
    QCOMPARE(status(*m_window), m_file);
    // With nothing to lose, a failed open leaves no database.
    trigger(*m_window, "actionTransactionRollback", {yes});
    answering({ok}, open);
    QCOMPARE(status(*m_window), "no database opened");
}

void LifetimeTest::damagedFileIsReportedOnce() {
    m_window->openDatabase(m_file, true);
    QFile file(m_file);
    QVERIFY(file.resize(file.size() / 2));
    const QStringList texts = trigger(*m_window, "actionReload", {ok});
    QVERIFY2(texts.value(0).startsWith("What could not be read: "), qUtf8Printable(texts.value(0)));
    QVERIFY(texts.value(0).contains("Meta Data"));
    QStringList reasons = texts.value(0).split("\n\n");
    QVERIFY(reasons.size() > 1);
    QCOMPARE(reasons.removeDuplicates(), 0);
    QVERIFY(!QApplication::activeModalWidget());
}

void LifetimeTest::textFileTakesNoDatabasesPlace() {
    const QString text = m_work->filePath("log.txt");
    QVERIFY(write(text, "[#1] one\nx\n[#2] two\n"));
    m_window->openDatabase(m_file, true);
    auto* shown = m_window->findChild<QPlainTextEdit*>("editChangelog");
    const QString before = shown->toPlainText();
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(text)});
    QDragEnterEvent enter(QPoint(10, 10), Qt::CopyAction, &data, Qt::LeftButton, {});
    QApplication::sendEvent(m_window.get(), &enter);
    QDropEvent drop(QPointF(10, 10), Qt::CopyAction, &data, Qt::LeftButton, {});
    {
        ModalScript script({no});
        QApplication::sendEvent(m_window.get(), &drop);
        QTRY_COMPARE(script.answered(), 1u);
        QVERIFY(script.texts().first().contains(text));
        QTRY_VERIFY(!QApplication::activeModalWidget());
    }
    QCOMPARE(shown->toPlainText(), before);
    m_second.reset();
    answering({yes}, [&] { m_window->openFile(text); });
    QCOMPARE(shown->toPlainText(), before);
    MainWindow* fresh = nullptr;
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        auto* window = qobject_cast<MainWindow*>(widget);
        fresh = window && window != m_window.get() ? window : fresh;
    }
    QVERIFY(fresh && fresh->isVisible());
    QCOMPARE(status(*fresh), text);
    QCOMPARE(fresh->findChild<QLabel*>("labelChangelogEntries")->text(), "Log entries: 2");
    QPointer<MainWindow> closed = fresh;
    fresh->close();
    QTRY_VERIFY(!closed);
}

GUI_TEST_MAIN(LifetimeTest)
#include "lifetimetest.moc"
