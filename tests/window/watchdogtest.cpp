// No event keeps the window from answering, whatever the library is doing. QRB_WATCHDOG_POINTS
// points (300,000; tens of millions are meant, too): the work grows with them, events must not.

#include "qrb/loader.h"
#include "tests/window/guitestmain.h"
#include "tests/window/samplewindow.h"
#include "tests/window/testdatabase.h"

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
#include <QTreeWidget>
#include <QtTest>
#include <algorithm>
#include <ctime>
#include <functional>
#include <memory>

using namespace tarvo::window;

namespace {

constexpr double longestEvent = 100;  // milliseconds

// Milliseconds for which this thread was busy; other programs that take the processor don't count.
double busyTime() {
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

// Beats as often as events let it.
class Heart {
public:
    Heart() {
        m_timer.callOnTimeout([this] { beat(); });
        m_timer.start(5);
        m_since.start();
    }
    void restart() {
        m_busy = busyTime();
        m_since.restart();
        m_longest = m_longestWall = 0;
    }
    void beat() {
        const double busy = busyTime();
        m_longest = std::max(m_longest, busy - m_busy);
        m_longestWall = std::max(m_longestWall, m_since.restart());
        m_busy = busy;
    }
    double longest() const { return m_longest; }
    qint64 longestWall() const { return m_longestWall; }

private:
    QTimer m_timer;
    QElapsedTimer m_since;
    double m_busy = busyTime();
    double m_longest = 0;
    qint64 m_longestWall = 0;
};

// None of its terms is decided by what the nodes know.
QString longFilter(int terms) {
    QStringList parts;
    for (int i = 0; i < terms; ++i)
        parts += QString("tarvo.reflectance == %1").arg(-5 + i * 0.01, 0, 'f', 2);
    return parts.join(" || ");
}

}  // namespace

class WatchdogTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase();

    void eventsAreShort();
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
    const QString figures = QString("%1: %2 ms busy, %3 ms")
                                .arg(what)
                                .arg(m_heart->longest(), 0, 'f', 1)
                                .arg(m_heart->longestWall());
    qInfo("%s", qUtf8Printable(figures));
    if (m_heart->longest() > longestEvent)
        m_tooLong += figures;
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
