// Points of other programs that come in through the window and go out of it: what is shown of the
// files, where they go, and that nothing is left of an import that was stopped or failed.

#include "qrb/loader.h"
#include "tests/window/guitestmain.h"
#include "tests/window/modalscript.h"
#include "tests/window/testdatabase.h"
#include "tests/window/windowdriver.h"
#include "window/frame/mainwindow.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDropEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QProgressDialog>
#include <QRadioButton>
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
using Row = std::array<double, 4>;

constexpr int pointCount = 3000;

// Place and class of every point, sorted.
std::vector<Row> rowsOf(const tarvo::qrb::Pointcloud& cloud) {
    std::vector<Row> rows;
    Row values{};
    auto query = cloud.select();
    const char* const names[] = {"tarvo.xyz[0]", "tarvo.xyz[1]", "tarvo.xyz[2]", "tarvo.class"};
    for (std::size_t i = 0; i < values.size(); ++i)
        query.bind(names[i], pointcloud::DataType::DOUBLE, &values[i], 0);
    while (query.next(1) == 1)
        rows.push_back(values);
    std::sort(rows.begin(), rows.end());
    return rows;
}

QString written(const QString& fileName, const QByteArray& bytes) {
    QFile file(fileName);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() ? fileName
                                                                                : QString();
}

// Answers what an import brings up, in whatever order: how long work takes decides whether its
// progress is seen.
class Answers {
public:
    explicit Answers(std::vector<Step> offers) : m_offers(std::move(offers)) {
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { look(); });
        m_timer.start(10);
    }

    QString fileName;       // for a file dialog
    QString cancelled;      // the progress whose text begins so is cancelled
    QString button = "OK";  // of boxes
    QStringList texts;      // of boxes
    std::size_t offered = 0;
    int cancels = 0;

private:
    void look() {
        auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        if (!dialog || !takesKeys(dialog) || m_seen.contains(dialog))
            return;
        if (const auto* progress = qobject_cast<QProgressDialog*>(dialog)) {
            if (cancelled.isEmpty() || !progress->labelText().startsWith(cancelled))
                return;
            m_seen += dialog;
            ++cancels;
            ModalScript::press("Cancel")(dialog);
            return;
        }
        m_seen += dialog;
        // Boxes open within a step.
        QTimer::singleShot(0, &m_timer, [this, dialog = QPointer<QDialog>(dialog)] {
            if (dialog)
                answer(dialog);
        });
    }
    void answer(QDialog* dialog) {
        if (const auto* box = qobject_cast<QMessageBox*>(dialog)) {
            texts += box->text();
            ModalScript::press(button)(dialog);
        } else if (dialog->objectName() == "DialogImportPoints") {
            const std::size_t i = offered++;
            i < m_offers.size() ? m_offers[i](dialog) : dialog->reject();
            // It comes up again after a refusal.
            m_seen.removeAll(dialog);
        } else {
            ModalScript::chooseFile(fileName)(dialog);
        }
    }

    QTimer m_timer;
    std::vector<Step> m_offers;
    QList<QPointer<QDialog>> m_seen;
};

Step importInto(const QString& location, const Step& before = {}) {
    return [location, before](QDialog* dialog) {
        if (before)
            before(dialog);
        auto* edit = in<QLineEdit>(dialog, "editLocation");
        edit->selectAll();
        QTest::keyClicks(edit, location);
        ModalScript::press("Import")(dialog);
    };
}

const Step intoOpen = [](QDialog* dialog) {
    QTest::mouseClick(in<QRadioButton>(dialog, "radioOpen"), Qt::LeftButton, {}, QPoint(8, 8));
    QVERIFY(in<QRadioButton>(dialog, "radioOpen")->isChecked());
    ModalScript::press("Import")(dialog);
};

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
    void exportedPointsReadBack_data();
    void exportedPointsReadBack();

private:
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
        auto* tree = in<QTreeWidget>(dialog, "treeAttributes");
        const auto row = [tree](const char* name) {
            return tree->findItems(name, Qt::MatchExactly).value(0);
        };
        QVERIFY(row("tarvo.xyz") && row("tarvo.reflectance"));
        QVERIFY(!(row("tarvo.xyz")->flags() & Qt::ItemIsUserCheckable));
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

void ImportTest::exportedPointsReadBack_data() {
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("type");
    QTest::newRow("las") << "out.las" << 0;
    QTest::newRow("laz by the type chosen") << "out" << 1;
    QTest::newRow("ply") << "out.ply" << 0;
}

void ImportTest::exportedPointsReadBack() {
    QFETCH(QString, name);
    QFETCH(int, type);
    m_window->openDatabase(m_source, true);
    driver().showTab("tabPointData");
    driver().child<QAction>("actionColumnsHideAll")->trigger();
    auto* list = driver().child<QListWidget>("listPointAttributes");
    for (const char* shown : {"tarvo.xyz", "tarvo.class"})
        list->findItems(shown, Qt::MatchExactly).value(0)->setCheckState(Qt::Checked);
    auto* filter = driver().child<QComboBox>("PointDataFilter")->lineEdit();
    QTest::keyClicks(filter, "tarvo.class == 2");
    const Step choose = [&](QDialog* dialog) {
        auto* types = in<QComboBox>(dialog, "fileTypeCombo");
        QCOMPARE(types->count(), 4);
        for (int i = 0; i < type; ++i)
            QTest::keyClick(types, Qt::Key_Down);
        ModalScript::chooseFile(path(name))(dialog);
    };
    std::vector<Row> expected;
    std::ranges::copy_if(m_rows, std::back_inserter(expected),
                         [](const Row& row) { return row[3] == 2; });
    const QStringList told =
        driver().run("actionQuerySelectExportPoints", {choose, ModalScript::press("OK")});
    QCOMPARE(told, QStringList(QLocale().toString(static_cast<qulonglong>(expected.size())) +
                               " points exported."));
    const QString place = path(type == 1 ? name + ".laz" : name);
    QCOMPARE(runTool({"import", place, path("back.qrbx"), "--overwrite"}), QString());
    const tarvo::qrb::Context context("OFF", "");
    tarvo::qrb::Pointcloud back(context);
    back.open(path("back.qrbx").toStdString(), pointcloud::OpenSettings(context));
    QCOMPARE(rowsOf(back), expected);
    QVERIFY(!back.pointAttributes().exists("tarvo.reflectance"));
    const qint64 size = QFileInfo(place).size();
    const std::vector<Step> replace = {ModalScript::chooseFile(place), ModalScript::press("Yes"),
                                       ModalScript::press("OK")};
    if (type == 1) {
        // Without a column for them there are no coordinates.
        auto* coordinates = list->findItems("tarvo.xyz", Qt::MatchExactly).value(0);
        coordinates->setCheckState(Qt::Unchecked);
        const QStringList refused = driver().run("actionQuerySelectExportPoints", replace);
        QVERIFY2(refused.last().contains("tarvo.xyz"), qUtf8Printable(refused.last()));
        QCOMPARE(QFileInfo(place).size(), size);
        coordinates->setCheckState(Qt::Checked);
    }
    // Points that nobody selects replace nothing.
    filter->selectAll();
    QTest::keyClicks(filter, "tarvo.class == 250");
    const QStringList kept = driver().run("actionQuerySelectExportPoints", replace);
    QCOMPARE(kept.last(), QString("No points are selected; \"%0\" was left as it was.").arg(place));
    QCOMPARE(QFileInfo(place).size(), size);
}

GUI_TEST_MAIN(ImportTest)
#include "importtest.moc"
