// Points of other programs that come in through the window: what is shown of the files, where they
// go, and that nothing is left of an import that was stopped or failed.

#include "qrb/loader.h"
#include "tests/window/guitestmain.h"
#include "tests/window/importanswers.h"
#include "tests/window/testdatabase.h"
#include "window/frame/mainwindow.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDropEvent>
#include <QElapsedTimer>
#include <QLabel>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QToolButton>
#include <QTreeWidget>
#include <QUrl>
#include <QtTest>
#include <algorithm>
#include <array>
#include <memory>

using namespace tarvo::window;

namespace {

using Step = ModalScript::Step;
namespace pointcloud = tarvo::qrb::pointcloud;

constexpr int pointCount = 3000;

}  // namespace

class ImportTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void init() { m_window = showFreshWindow(); }
    void cleanup();
    void cleanupTestCase() { tarvo::qrb::freeLibrary(); }

    void lasBecomesANewDatabase();
    void tableGoesIntoTheOpenDatabase();
    void pendingTransactionsAndOtherFilesAreLeftAlone();
    void cancelLeavesNothing_data();
    void cancelLeavesNothing();
    void refusalsAreToldOnceAndCanBeMended();
    void brokenFilesAreToldOnce();
    void pointFilesAreOfferedWhereverTheyComeFrom();
    void samplesAreMadeFromTheStartPage();
    void samplesAreCancelledAtOnce();

private:
    void clickSample();
    tarvo::qrb::Pointcloud& database() const { return *m_window->session().database; }
    WindowDriver driver() { return WindowDriver(*m_window); }
    QString path(const QString& name) const { return m_folder.filePath(name); }
    QString copyOfSource() const;
    void press(Qt::Key key);
    void import(const QString& fileName, Answers& answers);
    void drop(const QStringList& fileNames);

    QTemporaryDir m_folder;
    QString m_source;
    std::vector<Row> m_rows;  // of the source
    std::unique_ptr<MainWindow> m_window;
};

void ImportTest::initTestCase() {
    tarvo::qrb::loadLibrary("");
    const TestDatabase made = makeSampleDatabase(m_folder.path(), pointCount);
    QVERIFY2(made.error.isEmpty(), qUtf8Printable(made.error));
    m_source = made.fileName;
    for (const char* name : {"flight.las", "flight.laz"})
        QCOMPARE(runTool({"export", m_source, path(name)}), QString());
    const tarvo::qrb::Context context("OFF", "");
    tarvo::qrb::Pointcloud cloud(context);
    cloud.open(m_source.toStdString(), pointcloud::OpenSettings(context));
    m_rows = rowsOf(cloud);
}

void ImportTest::cleanup() {
    if (m_window && m_window->session().database && database().transactions().pending())
        database().transactions().rollback();
    m_window.reset();
}

QString ImportTest::copyOfSource() const {
    QFile::remove(path("work.qrbx"));
    return QFile::copy(m_source, path("work.qrbx")) ? path("work.qrbx") : QString();
}

void ImportTest::press(Qt::Key key) {
    m_window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    QTest::keyClick(m_window.get(), key, Qt::ControlModifier);
}

void ImportTest::import(const QString& fileName, Answers& answers) {
    answers.fileName = fileName;
    press(Qt::Key_I);
    QVERIFY(!QApplication::activeModalWidget());
    QVERIFY(!QApplication::overrideCursor());
}

void ImportTest::drop(const QStringList& fileNames) {
    QList<QUrl> urls;
    for (const QString& name : fileNames)
        urls += QUrl::fromLocalFile(name);
    QMimeData data;
    data.setUrls(urls);
    QDragEnterEvent enter(QPoint(10, 10), Qt::CopyAction, &data, Qt::LeftButton, {});
    QApplication::sendEvent(m_window.get(), &enter);
    QVERIFY(enter.isAccepted());
    QDropEvent drop(QPointF(10, 10), Qt::CopyAction, &data, Qt::LeftButton, {});
    QApplication::sendEvent(m_window.get(), &drop);
}

void ImportTest::lasBecomesANewDatabase() {
    Answers answers({importInto(path("new.qrbx"), [this](QDialog* dialog) {
        QCOMPARE(in<QLabel>(dialog, "labelFiles")->text(), "flight.las");
        QCOMPARE(in<QLabel>(dialog, "labelPoints")->text(), QLocale().toString(pointCount));
        QStringList extent;
        for (const std::size_t axis : {0u, 1u, 2u}) {
            const auto [least, greatest] =
                std::ranges::minmax(m_rows, {}, [axis](const Row& row) { return row[axis]; });
            extent += QString("%0: %1 ... %2")
                          .arg(QChar("XYZ"[axis]))
                          .arg(least[axis], 0, 'g', 12)
                          .arg(greatest[axis], 0, 'g', 12);
        }
        QCOMPARE(in<QLabel>(dialog, "labelExtent")->text(), extent.join('\n'));
        QCOMPARE(in<QLineEdit>(dialog, "editLocation")->text(), path("flight.qrbx"));
        QVERIFY(!in<QRadioButton>(dialog, "radioOpen")->isEnabled());
        QCOMPARE(namelessControls(dialog), QStringList());
        QCOMPARE(keysClaimedTwice(dialog), QStringList());
        auto* tree = in<QTreeWidget>(dialog, "treeColumns");
        const auto row = [tree](const char* name) {
            return tree->findItems(name, Qt::MatchExactly, 1).value(0);
        };
        QVERIFY(row("tarvo.xyz[0]") && row("tarvo.reflectance"));
        QCOMPARE(row("tarvo.xyz[0]")->text(0), "X");
        QVERIFY(!(row("tarvo.xyz[0]")->flags() & Qt::ItemIsUserCheckable));
        tree->setCurrentItem(row("tarvo.reflectance"));
        QTest::keyClick(tree, Qt::Key_Space);
        QCOMPARE(row("tarvo.reflectance")->checkState(0), Qt::Unchecked);
    })});
    answers.button = "Yes";
    import(path("flight.las"), answers);
    QVERIFY2(answers.texts.size() == 1 &&
                 answers.texts[0].startsWith(QLocale().toString(pointCount) + " points imported."),
             qUtf8Printable(answers.texts.join('|')));
    QCOMPARE(m_window->session().fileName, path("new.qrbx"));
    QCOMPARE(rowsOf(database()), m_rows);
    QVERIFY(!database().pointAttributes().exists("tarvo.reflectance"));
    const auto& transactions = database().transactions();
    QCOMPARE(transactions.details(transactions.current()).title, std::string("Import"));
    QVERIFY(!transactions.pending());
}

void ImportTest::tableGoesIntoTheOpenDatabase() {
    m_window->openDatabase(copyOfSource(), true);
    const auto before = database().transactions().current();
    const Row& first = m_rows.front();
    const QString line = QString("%0,%1,%2,7,5\n")
                             .arg(first[0], 0, 'g', 12)
                             .arg(first[1], 0, 'g', 12)
                             .arg(first[2], 0, 'g', 12);
    const QString name =
        written(path("more.csv"), ("x,y,z,class,own.score\n" + line + line).toUtf8());
    Answers answers({intoOpen});
    import(name, answers);
    QCOMPARE(answers.texts, QStringList("2 points imported."));
    QCOMPARE(rowsOf(database()).size(), m_rows.size() + 2);
    QVERIFY(!database().transactions().pending());
    QCOMPARE(database().transactions().current(), before + 1);
    // The panels show it.
    driver().showTab("tabPointAttributes");
    QVERIFY(driver().select("treePointAttributes", "own.score"));
}

void ImportTest::pendingTransactionsAndOtherFilesAreLeftAlone() {
    m_window->openDatabase(copyOfSource(), true);
    database().transactions().begin("Mine", "tests");
    const QString other = written(path("other.qrbx"), "no database");
    Answers answers(
        {importInto(other,
                    [](QDialog* dialog) {
                        QVERIFY(!in<QRadioButton>(dialog, "radioOpen")->isEnabled());
                        QVERIFY(in<QLabel>(dialog, "labelOpen")->text().contains("pending"));
                    }),
         importInto(path("work.qrbx")), ModalScript::press("Cancel")});
    import(path("flight.las"), answers);
    QCOMPARE(answers.offered, 3u);
    QCOMPARE(answers.texts.size(), 2);
    QVERIFY2(answers.texts[1].startsWith("This database is open."),
             qUtf8Printable(answers.texts[1]));
    QVERIFY(database().transactions().pending());
    QFile file(other);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), QByteArray("no database"));
}

void ImportTest::cancelLeavesNothing_data() {
    QTest::addColumn<QString>("work");
    QTest::addColumn<bool>("open");
    QTest::newRow("reading") << "Reading" << false;
    QTest::newRow("into a new database") << "Importing" << false;
    QTest::newRow("into the open one") << "Importing" << true;
}

void ImportTest::cancelLeavesNothing() {
    QFETCH(QString, work);
    QFETCH(bool, open);
    const QString name = path("long.csv");
    if (!QFile::exists(name)) {
        QByteArray text = "x,y,z\n";
        for (int i = 0; i < 2'500'000; ++i)
            text += QByteArray::number(i % 1000) + "," + QByteArray::number(i % 777) + "," +
                    QByteArray::number(i % 13) + "\n";
        QVERIFY(!written(name, text).isEmpty());
    }
    m_window->openDatabase(copyOfSource(), true);
    const auto before = database().transactions().list();
    const QStringList files = QDir(m_folder.path()).entryList(QDir::Files | QDir::Hidden);
    Answers answers(
        {open ? intoOpen : importInto(path("cancelled.qrbx")), ModalScript::press("Cancel")});
    answers.cancelled = work;
    import(name, answers);
    QCOMPARE(answers.cancels, 1);
    QCOMPARE(answers.texts, QStringList());
    // With what was typed, until the user gives up.
    QCOMPARE(answers.offered, work == "Reading" ? 0u : 2u);
    QCOMPARE(QDir(m_folder.path()).entryList(QDir::Files | QDir::Hidden), files);
    QVERIFY(!database().transactions().pending());
    QCOMPARE(database().transactions().list(), before);
    QCOMPARE(rowsOf(database()), m_rows);
}

void ImportTest::refusalsAreToldOnceAndCanBeMended() {
    m_window->openDatabase(copyOfSource(), true);
    const Row& first = m_rows.front();
    const QString name = written(path("fine.csv"), QString("x,y,z\n%0,%1,%2\n")
                                                       .arg(first[0] + 1e-9, 0, 'g', 17)
                                                       .arg(first[1])
                                                       .arg(first[2])
                                                       .toUtf8());
    Answers answers({intoOpen, [](QDialog* dialog) {
                         auto* round = in<QCheckBox>(dialog, "checkRound");
                         QVERIFY(round->isEnabled());
                         QTest::mouseClick(round, Qt::LeftButton, {}, QPoint(8, 8));
                         ModalScript::press("Import")(dialog);
                     }});
    import(name, answers);
    QCOMPARE(answers.texts.size(), 2);
    QVERIFY2(answers.texts[0].contains("Check that values are rounded.") &&
                 !answers.texts[0].contains("--round"),
             qUtf8Printable(answers.texts[0]));
    QVERIFY2(answers.texts[1].startsWith("One point imported."), qUtf8Printable(answers.texts[1]));
    QCOMPARE(rowsOf(database()).size(), m_rows.size() + 1);
}

void ImportTest::brokenFilesAreToldOnce() {
    QFile whole(path("flight.laz"));
    QVERIFY(whole.open(QIODevice::ReadOnly));
    const QByteArray bytes = whole.readAll();
    const std::pair<QString, const char*> faults[] = {
        {written(path("cut.laz"), bytes.left(bytes.size() / 2)), "cut.laz"},
        {written(path("empty.las"), ""), "empty.las"},
        {written(path("blind.csv"), "a,b\n1,2\n"), "tarvo.xyz"},
        {m_source, "is a database"},
    };
    for (const auto& [name, words] : faults) {
        Answers answers({});
        import(name, answers);
        QVERIFY2(answers.texts.size() == 1 && answers.texts[0].contains(words),
                 qUtf8Printable(name + answers.texts.join('|')));
        QCOMPARE(answers.offered, 0u);
    }
}

void ImportTest::pointFilesAreOfferedWhereverTheyComeFrom() {
    QStringList shown;
    const Step look = [&shown](QDialog* dialog) {
        shown += in<QLabel>(dialog, "labelFiles")->text();
        ModalScript::press("Cancel")(dialog);
    };
    const QString numbers = written(path("numbers.txt"), "1 2 3\n4 5 6\n");
    {
        Answers answers({look, look, look});
        const std::vector<QStringList> drops = {
            {path("flight.laz")}, {path("flight.las"), path("flight.laz")}, {numbers}};
        for (std::size_t i = 0; i < drops.size(); ++i) {
            drop(drops[i]);
            QTRY_COMPARE(answers.offered, i + 1);
            QTRY_VERIFY(!QApplication::activeModalWidget());
        }
        QCOMPARE(answers.texts, QStringList());
    }
    QCOMPARE(shown, QStringList({"flight.laz", "flight.las, flight.laz", "numbers.txt"}));
    // Ctrl+O: the dialog for databases comes first.
    shown.clear();
    ModalScript script({[this](QDialog* dialog) {
                            auto* edit = in<QComboBox>(dialog, "editLocation")->lineEdit();
                            edit->selectAll();
                            QTest::keyClicks(edit, path("flight.laz"));
                            QTest::keyClick(edit, Qt::Key_Return);
                        },
                        look});
    press(Qt::Key_O);
    QCOMPARE(shown, QStringList("flight.laz"));
    QVERIFY(!m_window->session().database);
    // A changelog stays one.
    drop({written(path("log.txt"), "A changelog, of one line.\n")});
    QTRY_COMPARE(driver().child<QPlainTextEdit>("editChangelog")->toPlainText(),
                 "A changelog, of one line.\n");
}

void ImportTest::clickSample() {
    for (auto* button : m_window->findChildren<QToolButton*>())
        if (button->isVisible() && button->text() == "Sample") {
            QTest::mouseClick(button, Qt::LeftButton);
            return;
        }
    QFAIL("no button");
}

void ImportTest::samplesAreMadeFromTheStartPage() {
    Answers answers({});
    answers.fileName = path("simulated");
    clickSample();
    QCOMPARE(answers.texts, QStringList());
    QCOMPARE(m_window->session().fileName, path("simulated.qrbx"));
    QCOMPARE(database().stat().root().pointCountTotal, 1'000'000);
    QVERIFY(!database().transactions().pending());
}

void ImportTest::samplesAreCancelledAtOnce() {
    const QStringList files = QDir(m_folder.path()).entryList(QDir::Files | QDir::Hidden);
    Answers answers({});
    answers.fileName = path("cancelled.qrbx");
    answers.cancelled = "Making a sample";
    QElapsedTimer time;
    time.start();
    clickSample();
    QCOMPARE(answers.cancels, 1);
    // It comes up after half a second.
    QVERIFY2(time.elapsed() < 2500, qUtf8Printable(QString::number(time.elapsed())));
    QVERIFY(!m_window->session().database);
    QCOMPARE(QDir(m_folder.path()).entryList(QDir::Files | QDir::Hidden), files);
}

GUI_TEST_MAIN(ImportTest)
#include "importtest.moc"
