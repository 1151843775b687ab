// The program's start: the library is loaded, exchanged while it runs, or missing.

#include "qrb/loader.h"
#include "tests/window/guitestmain.h"
#include "tests/window/modalanswer.h"
#include "tests/window/modalscript.h"
#include "tests/window/testdatabase.h"
#include "window/app/startup.h"
#include "window/frame/librarychoice.h"
#include "window/frame/mainwindow.h"

#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QFile>
#include <QLineEdit>
#include <QTemporaryDir>
#include <QtTest>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

using namespace tarvo::window;

class StartupTest : public QObject {
    Q_OBJECT

private slots:
    void cleanup();
    void missingLibraryIsReportedAndCanBeGivenUp();
    void missingLibraryEndsTheProgramOnNo();
    void anotherLibraryCanBeChosenForAMissingOne();
    void switchedLibraryRunsInAFreshWindow();
    void switchWaitsForAWindowThatRefusedAtFirst();
    void furtherWindowsKeepTheLoopRunning();

private:
    static QList<MainWindow*> windows();
    // Takes the steps one after another, each as soon as the number of windows shown is right.
    void whileRunning(const QList<std::pair<int, std::function<void()>>>& steps);
};

void StartupTest::cleanup() {
    libraryChoice() = {};
    tarvo::qrb::freeLibrary();
}

QList<MainWindow*> StartupTest::windows() {
    QList<MainWindow*> result;
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        if (auto* window = qobject_cast<MainWindow*>(widget); window && window->isVisible())
            result += window;
    }
    return result;
}

void StartupTest::whileRunning(const QList<std::pair<int, std::function<void()>>>& steps) {
    auto* timer = new QTimer(this);
    connect(timer, &QTimer::timeout, this, [timer, steps, next = qsizetype{0}]() mutable {
        if (QApplication::activeModalWidget() || windows().size() != steps[next].first)
            return;
        const auto step = steps[next++].second;
        if (next == steps.size())
            timer->deleteLater();
        step();
    });
    timer->start(30);
}

void StartupTest::missingLibraryIsReportedAndCanBeGivenUp() {
    libraryChoice().fileName = "/no/such/library.so";
    ModalAnswer answer("Default Library");
    whileRunning({{1, [] { windows().first()->close(); }}});
    QCOMPARE(runWindows(), 0);
    QVERIFY(answer.came());
    QVERIFY(answer.text().startsWith("Failed to load QRB library."));
    QVERIFY(answer.text().contains("/no/such/library.so"));
    QCOMPARE(libraryChoice().fileName, QString());
}

void StartupTest::missingLibraryEndsTheProgramOnNo() {
    libraryChoice().fileName = "/no/such/library.so";
    ModalAnswer answer("Quit");
    QCOMPARE(runWindows(), EXIT_FAILURE);
    QVERIFY(answer.came());
}

void StartupTest::anotherLibraryCanBeChosenForAMissingOne() {
    const QString library = QCoreApplication::applicationDirPath() + "/qrblib.so";
    libraryChoice().fileName = "/no/such/library.so";
    // Giving up in the file dialog asks again.
    ModalScript script({ModalScript::press("Browse ..."), ModalScript::press("Cancel"),
                        ModalScript::press("Browse ..."), ModalScript::chooseFile(library)});
    whileRunning({{1, [] { windows().first()->close(); }}});
    QCOMPARE(runWindows(), 0);
    QCOMPARE(script.answered(), std::size_t(4));
    QCOMPARE(libraryChoice().fileName, library);
}

void StartupTest::switchedLibraryRunsInAFreshWindow() {
    const QTemporaryDir folder;
    const QString library = folder.filePath("other.so");
    QVERIFY(QFile::copy(QCoreApplication::applicationDirPath() + "/qrblib.so", library));
    const MainWindow* first = nullptr;
    std::unique_ptr<ModalAnswer> answer;
    whileRunning({{1,
                   [&] {
                       first = windows().first();
                       answer = std::make_unique<ModalAnswer>([&](QDialog* dialog) {
                           auto* edit = dialog->findChild<QLineEdit*>("fileNameEdit");
                           edit->setText(library);
                           QTest::keyClick(edit, Qt::Key_Return);
                       });
                       windows().first()->findChild<QAction*>("actionSwitchLibrary")->trigger();
                   }},
                  {1, [&] {
                       QVERIFY(!libraryChoice().restart);
                       QFile maps("/proc/self/maps");
                       QVERIFY(maps.open(QIODevice::ReadOnly));
                       QVERIFY(maps.readAll().contains(library.toUtf8()));
                       QCOMPARE(windows()
                                    .first()
                                    ->findChild<QLineEdit*>("editCurrentLibrary")
                                    ->text()
                                    .section(" (", 0, 0),
                                library);
                       windows().first()->close();
                   }}});
    QCOMPARE(runWindows(), 0);
    QVERIFY(first && answer && answer->came());
    QCOMPARE(libraryChoice().fileName, library);
}

void StartupTest::switchWaitsForAWindowThatRefusedAtFirst() {
    const QTemporaryDir folder;
    const TestDatabase database = makeSampleDatabase(folder.path(), 100);
    QVERIFY2(database.error.isEmpty(), qUtf8Printable(database.error));
    const QString library = QCoreApplication::applicationDirPath() + "/qrblib.so";
    const auto press = [](const QString& button) { return ModalScript::press(button); };
    std::vector<std::unique_ptr<ModalScript>> answers;
    const auto answer = [&](std::vector<ModalScript::Step> steps) {
        answers.push_back(std::make_unique<ModalScript>(std::move(steps)));
    };
    MainWindow* second = nullptr;
    bool switched = false;
    whileRunning({{1, [] { windows().first()->findChild<QAction*>("actionWindowNew")->trigger(); }},
                  {2,
                   [&] {
                       MainWindow* first = windows().first();
                       second = windows().last();
                       second->openDatabase(database.fileName, true);
                       second->session().database->transactions().begin("Pending", "tests");
                       answer({ModalScript::chooseFile(library), press("OK")});
                       first->findChild<QAction*>("actionSwitchLibrary")->trigger();
                   }},
                  {1,
                   [&] {
                       QCOMPARE(windows().first(), second);
                       answer({press("No"), press("Yes")});
                       second->close();
                   }},
                  {1,
                   [&] {
                       QCOMPARE(windows().first(), second);
                       answer({press("Yes")});
                       second->close();
                   }},
                  {1, [&] {
                       QCOMPARE(windows()
                                    .first()
                                    ->findChild<QLineEdit*>("editCurrentLibrary")
                                    ->text()
                                    .section(" (", 0, 0),
                                library);
                       switched = true;
                       windows().first()->close();
                   }}});
    QCOMPARE(runWindows(), 0);
    QVERIFY(switched);
    for (const auto& [script, boxes] : {std::pair(0, 2u), std::pair(1, 2u), std::pair(2, 1u)})
        QCOMPARE(answers.at(script)->answered(), boxes);
    QCOMPARE(libraryChoice().fileName, library);
}

void StartupTest::furtherWindowsKeepTheLoopRunning() {
    whileRunning({{1, [] { windows().first()->findChild<QAction*>("actionWindowNew")->trigger(); }},
                  {2, [] { windows().last()->close(); }},
                  {1, [] { windows().first()->findChild<QAction*>("actionQuit")->trigger(); }}});
    QCOMPARE(runWindows(), 0);
    QVERIFY(windows().isEmpty());
}

GUI_TEST_MAIN(StartupTest)
#include "startuptest.moc"
