// Points that go out of the window in the formats of other programs, read back by an import; an
// export that is stopped; names and formats that agree.

#include "qrb/loader.h"
#include "tests/window/guitestmain.h"
#include "tests/window/importanswers.h"
#include "tests/window/testdatabase.h"
#include "window/frame/mainwindow.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QtTest>
#include <algorithm>
#include <memory>

using namespace tarvo::window;

namespace {

using Step = ModalScript::Step;
namespace pointcloud = tarvo::qrb::pointcloud;

QByteArray contentOf(const QString& fileName) {
    QFile file(fileName);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("can't be read");
}

}  // namespace

class PointExportTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void init() { m_window = showFreshWindow(); }
    void cleanup() { m_window.reset(); }
    void cleanupTestCase() { tarvo::qrb::freeLibrary(); }

    void exportedPointsReadBack_data();
    void exportedPointsReadBack();
    void nameFollowsTheTypeThatIsChosen();
    void cancelLeavesWhatWasThere_data();
    void cancelLeavesWhatWasThere();

private:
    WindowDriver driver() { return WindowDriver(*m_window); }
    QString path(const QString& name) const { return m_folder.filePath(name); }

    QTemporaryDir m_folder;
    QString m_source;
    std::vector<Row> m_rows;  // of the source
    std::unique_ptr<MainWindow> m_window;
};

void PointExportTest::initTestCase() {
    tarvo::qrb::loadLibrary("");
    const TestDatabase made = makeSampleDatabase(m_folder.path(), 3000);
    QVERIFY2(made.error.isEmpty(), qUtf8Printable(made.error));
    m_source = made.fileName;
    const tarvo::qrb::Context context("OFF", "");
    tarvo::qrb::Pointcloud cloud(context);
    cloud.open(m_source.toStdString(), pointcloud::OpenSettings(context));
    m_rows = rowsOf(cloud);
}

void PointExportTest::exportedPointsReadBack_data() {
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("type");
    QTest::newRow("las") << "out.las" << 0;
    QTest::newRow("laz by the type chosen") << "out" << 1;
    QTest::newRow("ply") << "out.ply" << 0;
    QTest::newRow("xyz") << "out.xyz" << 0;
}

void PointExportTest::exportedPointsReadBack() {
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
    QStringList words = {"import", place, path("back.qrbx"), "--overwrite"};
    if (place.endsWith(".xyz"))
        words += {"--columns", "x,y,z,tarvo.class"};
    QCOMPARE(runTool(words), QString());
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

// The question whether a file may be replaced comes once, for the name that is written.
void PointExportTest::nameFollowsTheTypeThatIsChosen() {
    m_window->openDatabase(m_source, true);
    driver().showTab("tabPointData");
    QFile old(path("test.ply"));
    QVERIFY(old.open(QIODevice::WriteOnly) && old.write("last week") == 9);
    old.close();
    QString proposed;
    const Step choose = [&](QDialog* dialog) {
        auto* name = in<QLineEdit>(dialog, "fileNameEdit");
        proposed = name->text();
        auto* types = in<QComboBox>(dialog, "fileTypeCombo");
        QTest::keyClick(types, Qt::Key_Down);
        QTest::keyClick(types, Qt::Key_Down);
        QCOMPARE(name->text(), "test.ply");
        QTest::keyClick(name, Qt::Key_Return);
    };
    const QStringList told =
        driver().run("actionQuerySelectExportPoints",
                     {choose, ModalScript::press("Yes"), ModalScript::press("OK")});
    QCOMPARE(proposed, "test.las");
    QCOMPARE(told.size(), 2);
    QVERIFY2(told[0].contains("test.ply"), qUtf8Printable(told[0]));
    QVERIFY(contentOf(path("test.ply")).startsWith("ply\n"));
    QVERIFY(!QFile::exists(path("test.las")) && !QFile::exists(path("test.ply.las")));
}

void PointExportTest::cancelLeavesWhatWasThere_data() {
    QTest::addColumn<QString>("name");
    for (const char* name : {"large.laz", "large.xyz"})
        QTest::newRow(name) << name;
}

void PointExportTest::cancelLeavesWhatWasThere() {
    QFETCH(QString, name);
    const QTemporaryDir folder;
    const TestDatabase large = makeLongExport(folder.path());
    QVERIFY2(large.error.isEmpty(), qUtf8Printable(large.error));
    m_window->openDatabase(large.fileName, true);
    driver().showTab("tabPointData");
    driver().child<QAction>("actionColumnsShowAll")->trigger();
    const QStringList before = QDir(m_folder.path()).entryList(QDir::Files | QDir::Hidden);
    for (const bool exists : {false, true}) {
        if (exists) {
            QFile file(path(name));
            QVERIFY(file.open(QIODevice::WriteOnly) && file.write("last week") == 9);
        }
        int percent = -1;
        std::vector<Step> steps = {ModalScript::chooseFile(path(name))};
        if (exists)
            steps.push_back(ModalScript::press("Yes"));
        steps.push_back(ModalScript::onProgress([&](QDialog* dialog) {
            auto* progress = qobject_cast<QProgressDialog*>(dialog);
            if (!progress) {
                const auto* box = qobject_cast<QMessageBox*>(dialog);
                const QString told = box ? box->text() : dialog->objectName();
                dialog->reject();
                QFAIL(qUtf8Printable(told));
            }
            percent = progress->value();
            ModalScript::press("Cancel")(dialog);
        }));
        driver().run("actionQuerySelectExportPoints", steps);
        QVERIFY2(percent >= 0 && percent < 100, "the export was done before it could be cancelled");
        QVERIFY(!QApplication::activeModalWidget() && !QApplication::overrideCursor());
    }
    QCOMPARE(contentOf(path(name)), QByteArray("last week"));
    QVERIFY(QFile::remove(path(name)));
    QCOMPARE(QDir(m_folder.path()).entryList(QDir::Files | QDir::Hidden), before);
}

GUI_TEST_MAIN(PointExportTest)
#include "pointexporttest.moc"
