// No event keeps the window from answering, whatever the library is doing. QRB_WATCHDOG_POINTS
// points (300,000; tens of millions are meant, too): the work grows with them, events must not.

#include "qrb/loader.h"
#include "tests/window/guitestmain.h"
#include "tests/window/samplewindow.h"
#include "tests/window/testdatabase.h"
#include "window/view/cloudcanvas.h"

#include <QAction>
#include <QComboBox>
#include <QElapsedTimer>
#include <QFile>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QProgressDialog>
#include <QThread>
#include <QTreeWidget>
#include <QtTest>
#include <algorithm>
#include <ctime>
#include <functional>
#include <memory>
#include <optional>
#include <utility>

using namespace tarvo::window;

constexpr double longestEvent = 100;  // milliseconds of the processor
// Milliseconds with those in which the thread slept, waiting for a disk or a lock: more, because a
// busy disk is nobody's fault.
constexpr double longestStandstill = 250;

static double milliseconds(clockid_t clock) {
    timespec time{};
    clock_gettime(clock, &time);
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

// Milliseconds for which this thread could have run and others had the processor; none where the
// system doesn't tell.
static std::optional<double> delayTime() {
    static QFile schedule("/proc/thread-self/schedstat");
    if (!schedule.isOpen() && !schedule.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        return std::nullopt;
    schedule.seek(0);
    bool isNumber = false;
    const qulonglong delay = schedule.read(100).split(' ').value(1).toULongLong(&isNumber);
    return isNumber ? std::optional(static_cast<double>(delay) / 1e6) : std::nullopt;
}

// Since the thread began, or some moment before.
struct Times {
    double busy = milliseconds(CLOCK_THREAD_CPUTIME_ID);  // other programs' time doesn't count
    double wall = milliseconds(CLOCK_MONOTONIC);
    std::optional<double> delay = delayTime();
};

// Beats as often as events let it.
class Heart {
public:
    Heart() {
        m_timer.callOnTimeout([this] { beat(); });
        m_timer.start(5);
    }
    void restart() {
        m_last = Times();
        m_longest = m_longestStandstill = m_longestWall = 0;
    }
    void beat() {
        const Times now;
        const double wall = now.wall - m_last.wall;
        m_longest = std::max(m_longest, now.busy - m_last.busy);
        m_longestWall = std::max(m_longestWall, wall);
        if (now.delay && m_last.delay)
            m_longestStandstill =
                std::max(m_longestStandstill, wall - (*now.delay - *m_last.delay));
        m_last = now;
    }
    double longest() const { return m_longest; }
    // Busy or asleep.
    double longestStandstill() const { return m_longestStandstill; }
    double longestWall() const { return m_longestWall; }

private:
    QTimer m_timer;
    Times m_last;
    double m_longest = 0;
    double m_longestStandstill = 0;
    double m_longestWall = 0;
};

// None of its terms is decided by what the nodes know.
static QString longFilter(int terms) {
    QStringList parts;
    for (int i = 0; i < terms; ++i)
        parts += QString("tarvo.reflectance == %1").arg(-5 + i * 0.01, 0, 'f', 2);
    return parts.join(" || ");
}

class WatchdogTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase();

    void sleepIsSeen();
    void eventsAreShort();
    void viewOfThePointsMoves();
    void allPointsComeInSteps();
    void escapeStopsWhatTheLibraryDoes();

private:
    using Steps = std::vector<ModalScript::Step>;
    void act(const char* what, const std::function<void()>& action);
    void run(const char* action, Steps steps = {}) {
        act(action, [&] { m_window->run(action, std::move(steps)); });
    }
    void setFilter(const QString& filter) {
        m_window->child<QComboBox>("PointDataFilter")->lineEdit()->setText(filter);
    }

    QTemporaryDir m_folder;
    TestDatabase m_database;
    std::unique_ptr<SampleWindow> m_window;
    std::unique_ptr<Heart> m_heart;
    QStringList m_tooLong;
};

void WatchdogTest::initTestCase() {
    tarvo::qrb::loadLibrary("");
    const int points = qEnvironmentVariableIntValue("QRB_WATCHDOG_POINTS");
    m_database = makeSampleDatabase(m_folder.path(), points > 0 ? points : 300'000);
    QVERIFY2(m_database.error.isEmpty(), qUtf8Printable(m_database.error));
    m_window = std::make_unique<SampleWindow>(QString());
    m_window->window().resize(1200, 800);
    m_heart = std::make_unique<Heart>();
    if (!delayTime())
        qInfo("the system doesn't tell how long threads wait for a processor: sleep is not seen");
}

void WatchdogTest::cleanupTestCase() {
    m_window.reset();
    tarvo::qrb::freeLibrary();
}

void WatchdogTest::act(const char* what, const std::function<void()>& action) {
    QTest::qWait(20);
    m_heart->restart();
    action();
    m_heart->beat();  // what came back without an event between
    QTest::qWait(20);
    const QString figures = QString("%1: %2 ms busy, %3 ms busy or asleep, %4 ms")
                                .arg(what)
                                .arg(m_heart->longest(), 0, 'f', 1)
                                .arg(m_heart->longestStandstill(), 0, 'f', 1)
                                .arg(m_heart->longestWall(), 0, 'f', 1);
    qInfo("%s", qUtf8Printable(figures));
    if (m_heart->longest() > longestEvent || m_heart->longestStandstill() > longestStandstill)
        m_tooLong += figures;
}

// Or nothing else here means anything.
void WatchdogTest::sleepIsSeen() {
    if (!delayTime())
        QSKIP("the system doesn't tell how long threads wait for a processor");
    act("a disk that takes its time", [] { QThread::msleep(500); });
    QVERIFY(m_heart->longestStandstill() >= 500 && m_heart->longest() < longestEvent);
    QCOMPARE(std::exchange(m_tooLong, {}).size(), 1);
}

void WatchdogTest::eventsAreShort() {
    act("open", [&] { m_window->window().openDatabase(m_database.fileName, true); });
    for (const char* tab : {"tabTransactions", "tabMetaData", "tabPointAttributes", "tabPointIndex",
                            "tabChangelog", "tabInspection", "tabPointData"})
        act(tab, [&] { m_window->driver().showTab(tab); });

    m_window->child<QAction>("actionColumnsShowAll")->trigger();
    for (int page = 0; page < 20; ++page)
        run("actionQuerySelectNext");
    auto* points = m_window->child<QTreeWidget>("treePointData");
    QCOMPARE(points->topLevelItemCount(), 2000);
    for (int column : {1, 3})
        act("sort", [&] { points->sortByColumn(column, Qt::DescendingOrder); });
    run("actionQuerySelectNext");
    setFilter(longFilter(400));
    run("actionQuerySelectNext");
    run("actionQuerySelectCount", {ModalScript::press("OK")});
    setFilter("(" + longFilter(400) + ") && tarvo.id < 0");
    run("actionQuerySelectNext", {ModalScript::press("OK")});
    setFilter("");
    run("actionQuerySelectExport",
        {ModalScript::chooseFile(m_folder.filePath("points.csv")), ModalScript::press("OK")});

    m_window->driver().showTab("tabPointIndex");
    auto* nodes = m_window->child<QTreeWidget>("treePointIndexNodes");
    run("actionPointIndexNodeExpand");
    for (auto* node = nodes->topLevelItem(0); node; node = node->child(node->childCount() - 1))
        act("node", [&] { nodes->setCurrentItem(node); });
    run("actionPointIndexStats", {[](QDialog* dialog) { dialog->reject(); }});
    m_window->child<QComboBox>("PointIndexFilter")->lineEdit()->setText(longFilter(400));
    run("actionPointIndexFilterNodes");

    m_window->driver().showTab("tabInspection");
    auto* format = m_window->child<QComboBox>("editInspectionFormat");
    for (int i = 0; i < format->count(); ++i) {
        format->setCurrentIndex(i);
        run("actionInspectionUpdate");
    }

    QFile log(m_folder.filePath("long.txt"));
    QVERIFY(log.open(QIODevice::WriteOnly));
    for (int entry = 1; entry <= 40'000; ++entry)
        log.write(QByteArray("[#") + QByteArray::number(entry) + "] 2020-01-01\n" +
                  QByteArray(900, 'x') + "\n\n");
    log.close();
    const SampleWindow reader{QString()};
    act("a text of 37 MB", [&] { reader.window().openFile(log.fileName()); });
    QCOMPARE(reader.child<QLabel>("labelChangelogEntries")->text(), "Log entries: 40000");

    m_window->driver().showTab("tabTransactions");
    for (const char* commit : {"one", "two"}) {
        act("begin", [&] { m_window->begin(); });
        m_window->database().changelog().appendMessage(commit);
        run("actionTransactionCommit", {ModalScript::press("OK")});
    }
    auto* transactions = m_window->child<QTreeWidget>("treeTransactions");
    transactions->setCurrentItem(transactions->topLevelItem(1));
    run("actionTransactionSize", {ModalScript::press("OK")});
    run("actionManagementFinalize", {ModalScript::press("Yes")});
    run("actionManagementVacuum", {ModalScript::press("Yes")});
    QVERIFY2(m_tooLong.isEmpty(), qUtf8Printable(m_tooLong.join('\n')));
}

// While points come, while they are turned and pointed at, and when the stream is let go.
void WatchdogTest::viewOfThePointsMoves() {
    m_window->window().openDatabase(m_database.fileName, true);
    auto* canvas = m_window->child<CloudCanvas>("cloudCanvas");
    const auto wait = [&] {
        QTRY_VERIFY(canvas->state().value(0).endsWith(" points"));
        QTest::qWait(200);
    };
    act("view: show", [&] {
        m_window->child<QAction>("actionViewPointCloud")->trigger();
        wait();
    });
    run("actionViewCorner");
    act("view: turn", [&] {
        for (int i = 0; i < 40; ++i) {
            QTest::keyClick(canvas, i % 4 < 2 ? Qt::Key_Left : Qt::Key_Up);
            QTest::qWait(5);
        }
    });
    act("view: point at", [&] {
        for (int i = 0; i < 10; ++i) {
            QTest::mouseMove(canvas, QPoint(100 + 10 * i, 150));
            QTest::qWait(80);
        }
    });
    auto* colours = m_window->child<QComboBox>("comboViewColour");
    for (const int i : {colours->findText("tarvo.class"), colours->findText("Height")})
        act("view: colour", [&] {
            colours->setCurrentIndex(i);
            emit colours->activated(i);
            wait();
        });
    act("view: hide", [&] {
        m_window->child<QAction>("actionViewPointCloud")->trigger();
        QTest::qWait(1200);
    });
    QVERIFY2(m_tooLong.isEmpty(), qUtf8Printable(m_tooLong.join('\n')));
}

void WatchdogTest::allPointsComeInSteps() {
    const SampleWindow window(m_database.fileName);
    window.driver().showTab("tabPointData");
    window.child<QAction>("actionColumnsShowAll")->trigger();
    auto* points = window.child<QTreeWidget>("treePointData");
    auto* filter = window.child<QComboBox>("PointDataFilter")->lineEdit();
    const auto* counter = window.child<QLabel>("labelPointRows");
    const auto all = [&](const char* what, Steps steps) {
        act(what, [&] { window.run("actionQuerySelectAll", std::move(steps)); });
    };
    // More than the table takes.
    QString most;
    all("too many", {[&](QDialog* dialog) {
                         const QString text = qobject_cast<QMessageBox*>(dialog)->text();
                         most = text.section("shows ", 1).section(' ', 0, 0);
                         QVERIFY2(text.contains("at most"), qUtf8Printable(text));
                         QVERIFY(ModalScript::pressButton(dialog, "Export ..."));
                     },
                     ModalScript::press("Cancel")});
    QCOMPARE(points->topLevelItemCount(), 0);
    const int rows = QLocale().toInt(most);
    QVERIFY2(rows >= 10'000, qUtf8Printable(most));

    filter->setText(QString("tarvo.id <= %1").arg(rows));
    all("asked in vain", {ModalScript::press("No")});
    QCOMPARE(points->topLevelItemCount(), 0);
    all("all", {ModalScript::press("Yes")});
    QCOMPARE(points->topLevelItemCount(), rows);
    QCOMPARE(points->topLevelItem(rows - 1)->text(0), QString::number(rows));
    QVERIFY2(counter->text().endsWith("of " + most), qUtf8Printable(counter->text()));
    window.run("actionQuerySelectFind", {});
    act("find", [&] { QTest::keyClicks(window.child<QLineEdit>("editFind"), "9"); });
    for (const int column : {2, 2, points->columnCount() - 1})
        act("sort all", [&] {
            QTest::mouseClick(points->header()->viewport(), Qt::LeftButton, {},
                              {points->header()->sectionViewportPosition(column) +
                                   points->header()->sectionSize(column) / 2,
                               points->header()->height() / 2});
        });
    // Rows stay that are there when somebody stops.
    filter->setText(QString("tarvo.id > 0 && tarvo.id <= %1").arg(rows));
    window.run("actionQuerySelectNext", {});
    window.run("actionQuerySelectCount", {ModalScript::press("OK")});
    bool isStopped = false;
    QTimer stopping;
    stopping.callOnTimeout([&] {
        auto* dialog = window.window().findChild<QProgressDialog*>();
        if (dialog && points->topLevelItemCount() > 1000 && !isStopped) {
            isStopped = true;
            dialog->show();
            ModalScript::pressButton(dialog, "Cancel");
        }
    });
    stopping.start(1);
    all("stopped", {ModalScript::press("Yes")});
    QVERIFY(isStopped);
    const int there = points->topLevelItemCount();
    QVERIFY2(there > 1000 && there < rows, qPrintable(QString::number(there)));
    QVERIFY(!window.child<QAction>("actionQuerySelectCancel")->isEnabled());
    QCOMPARE(counter->text(), QString::fromUtf8("1–%1 of %2").arg(QLocale().toString(there), most));

    filter->setText("tarvo.id <= 100");
    act("few again", [&] { window.run("actionQuerySelectNext", {}); });
    QCOMPARE(points->topLevelItemCount(), 100);
    QVERIFY2(m_tooLong.isEmpty(), qUtf8Printable(m_tooLong.join('\n')));
}

void WatchdogTest::escapeStopsWhatTheLibraryDoes() {
    const SampleWindow window(m_database.fileName);
    window.driver().showTab("tabPointData");
    auto* points = window.child<QTreeWidget>("treePointData");
    window.run("actionQuerySelectNext", {});
    QCOMPARE(points->topLevelItemCount(), 100);
    // Calls of the library that find next to nothing, and take long.
    QStringList terms;
    for (int i = 0; i < 1500; ++i)
        terms += QString("tarvo.phi % %1 == 0.123456789").arg(1 + i * 0.001);
    window.child<QComboBox>("PointDataFilter")->lineEdit()->setText(terms.join(" || "));
    for (const char* action : {"actionQuerySelectNext", "actionQuerySelectCount"}) {
        QElapsedTimer sinceEscape;
        bool wasWorking = false;
        const ModalScript script({ModalScript::onProgress([&](QDialog* dialog) {
            wasWorking = qobject_cast<QProgressDialog*>(dialog);
            if (const auto* box = qobject_cast<QMessageBox*>(dialog))
                qCritical("a box in place of the progress: %s", qUtf8Printable(box->text()));
            QTest::keyClick(dialog, Qt::Key_Escape);
            sinceEscape.start();
        })});
        window.child<QAction>(action)->trigger();
        QVERIFY(wasWorking);
        qInfo("%s stopped after %lld ms", action, sinceEscape.elapsed());
        QVERIFY(!QApplication::activeModalWidget() && !QApplication::overrideCursor());
        QVERIFY(!window.child<QAction>("actionQuerySelectCancel")->isEnabled());
        QCOMPARE(points->topLevelItemCount(), 100);
    }
    // The library goes on.
    window.child<QComboBox>("PointDataFilter")->lineEdit()->clear();
    window.run("actionQuerySelectNext", {});
    window.run("actionQuerySelectNext", {});
    QCOMPARE(points->topLevelItemCount(), 200);
}

GUI_TEST_MAIN(WatchdogTest)
#include "watchdogtest.moc"
