// New database files: created from settings, and exported from another database.

#include "qrb/loader.h"
#include "qrb/pointcloud.h"
#include "tests/window/guitestmain.h"
#include "tests/window/modalscript.h"
#include "tests/window/pointtable.h"
#include "tests/window/testdatabase.h"
#include "tests/window/windowdriver.h"
#include "window/common/filterhistory.h"
#include "window/frame/mainwindow.h"
#include "window/widgets/elided.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QDialog>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QLocale>
#include <QMenu>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QSlider>
#include <QSpinBox>
#include <QToolButton>
#include <QTreeWidget>
#include <QtTest>
#include <memory>

using namespace tarvo::window;

namespace {

using Step = ModalScript::Step;

}  // namespace

class NewDatabaseTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void cleanupTestCase() { tarvo::qrb::freeLibrary(); }

    void databaseIsCreatedAndOpened();
    void schemaFollowsTheLocation();
    void sizesFollowModeAndPrimaryAttribute();
    void settingsGoToFilesAndBack();
    void settingsThatCantBeShownAreNamed();
    void creationThatFailsKeepsWhatWasTyped();
    void exportCopiesWhatTheFilterPicks();
    void exportKeepsToNodesAndAttributes();
    void exportCanBeCancelled();
    void exportThatFailsLeavesNothing();

private:
    WindowDriver driver() { return WindowDriver(*m_window); }
    QStringList run(const char* action, std::vector<Step> steps) {
        return driver().run(action, std::move(steps));
    }
    QString field(const char* name) { return driver().child<QLineEdit>(name)->text(); }
    // Triggers an action of the menu that hangs on a dialog's button.
    static void choose(QDialog* dialog, const char* name) {
        QAction* action = in<QAction>(dialog, name);
        QVERIFY(in<QToolButton>(dialog, "buttonMenu")->menu()->actions().contains(action));
        action->trigger();
    }
    std::unique_ptr<tarvo::qrb::Pointcloud> opened(const QString& fileName) const;
    QStringList files() const { return QDir(m_work.path()).entryList(QDir::Files); }

    QTemporaryDir m_folder;
    QTemporaryDir m_work;  // holds nothing but what the window writes
    TestDatabase m_source;
    QString m_new;
    std::unique_ptr<MainWindow> m_window;
};

void NewDatabaseTest::initTestCase() {
    tarvo::qrb::loadLibrary("");
    m_source = makeTestDatabase(m_folder.path());
    QVERIFY2(m_source.error.isEmpty(), qUtf8Printable(m_source.error));
    const auto cloud = opened(m_source.fileName);
    tarvo::qrb::pointcloud::TransactionGuard guard(cloud->transactions(), "Notes", "tests");
    cloud->metaData().set("own.note", "{\"a\": 1}");
    cloud->metaData().set("own.text", "plain");
    guard.commit();
}

void NewDatabaseTest::init() {
    for (const QString& name : files())
        QFile::remove(m_work.filePath(name));
    m_new = m_work.filePath("new.qrbx");
    m_window = showFreshWindow();
}

void NewDatabaseTest::cleanup() {
    m_window.reset();
}

std::unique_ptr<tarvo::qrb::Pointcloud> NewDatabaseTest::opened(const QString& fileName) const {
    const tarvo::qrb::Context context("OFF", "");
    auto cloud = std::make_unique<tarvo::qrb::Pointcloud>(context);
    cloud->open(fileName.toStdString(), tarvo::qrb::pointcloud::OpenSettings(context));
    return cloud;
}

void NewDatabaseTest::databaseIsCreatedAndOpened() {
    const QString sdcx = m_work.filePath("scan.sdcx");
    run("actionNew", {[&](QDialog* dialog) {
            QTest::keyClicks(in<QLineEdit>(dialog, "editLocation"), " " + sdcx + " ");
            in<QComboBox>(dialog, "editChunkMode")->setCurrentIndex(1);
            in<QComboBox>(dialog, "editChunkSizeLvl")->setCurrentIndex(17);
            QTest::keyClick(in<QSlider>(dialog, "editCompressionLevel"), Qt::Key_Home);
            QTest::keyClick(in<QSlider>(dialog, "editCompressionLevel"), Qt::Key_Right);
            QCOMPARE(in<QLabel>(dialog, "labelCompressionLevelValue")->text(), "1 %");
            in<QSpinBox>(dialog, "editLodSizeThinout")->setValue(12);
            in<QCheckBox>(dialog, "editSchemaOptionals")->setChecked(true);
            ModalScript::press("OK")(dialog);
        }});
    QCOMPARE(files(), QStringList("scan.sdcx"));
    QCOMPARE(field("editDatabaseFile"), QDir::toNativeSeparators(sdcx));
    QCOMPARE(field("editCompressionLevel"), "1 %");
    QVERIFY(field("editChunkSize").startsWith("mode: edge length, size: 17 ("));
    QCOMPARE(field("editLevelOfDetail"), "mode: thinout, size: up to 12 % of the original points");
    QCOMPARE(field("editPointsTotal"), "0");
    // What the schema lists is there, also what may be left out, and it validates.
    QVERIFY(driver().child<QTreeWidget>("treePointAttributes")->topLevelItemCount() > 0);
    QVERIFY(m_window->session().database->pointAttributes().exists("tarvo.shot_id"));
    run("actionValidate", {[](QDialog* dialog) {
            ModalScript::press("Validate")(dialog);
            // What is only an example is named behind it.
            const QStringList lines =
                in<QPlainTextEdit>(dialog, "editResult")->toPlainText().split('\n');
            QCOMPARE(lines.value(0), "No problems detected!");
            QCOMPARE(lines.value(1), "");
            QCOMPARE(lines.value(2),
                     "The metadata item \"tarvo.atmosphere\" holds the example of "
                     "the catalogue: replace it by what is true.");
            ModalScript::press("Close")(dialog);
        }});
}

void NewDatabaseTest::schemaFollowsTheLocation() {
    run("actionNew", {[&](QDialog* dialog) {
            auto* location = in<QLineEdit>(dialog, "editLocation");
            auto* list = in<QComboBox>(dialog, "editSchemaList");
            auto* text = in<QPlainTextEdit>(dialog, "editSchemaText");
            QCOMPARE(list->currentText(), "(none)");
            location->setText("a.sbx");
            QCOMPARE(list->currentText(), "sbx");
            location->setText("a.AVG.SBX");
            QCOMPARE(list->currentText(), "avg.sbx");
            QVERIFY(text->toPlainText().startsWith("{\n    \"identifier\": \"avg.sbx\""));
            location->setText("a.sp12");
            QCOMPARE(list->currentText(), "sp{C}");
            location->setText("a.dat");
            QCOMPARE(list->currentText(), "(none)");
            QVERIFY(text->toPlainText().isEmpty());
            ModalScript::press("Cancel")(dialog);
        }});
    QVERIFY(files().isEmpty());
    QCOMPARE(driver().child<QLabel>("labelStatus")->text(), "no database opened");
}

void NewDatabaseTest::sizesFollowModeAndPrimaryAttribute() {
    run("actionNew", {[&](QDialog* dialog) {
                          auto* points = in<QSpinBox>(dialog, "editChunkSizePts");
                          auto* lengths = in<QComboBox>(dialog, "editChunkSizeLvl");
                          auto* combine = in<QComboBox>(dialog, "editLodSizeCombine");
                          QVERIFY(points->isEnabled() && !lengths->isEnabled());
                          in<QComboBox>(dialog, "editChunkMode")->setCurrentIndex(1);
                          QVERIFY(!points->isEnabled() && lengths->isEnabled());
                          in<QComboBox>(dialog, "editLodMode")->setCurrentIndex(1);
                          QVERIFY(combine->isEnabled());
                          QCOMPARE(lengths->count(), 64);
                          QCOMPARE(lengths->currentIndex(), 15);
                          QCOMPARE(lengths->itemText(2), "2 (0.00100 m edge length)");
                          QCOMPARE(combine->itemText(0), "0 (off)");
                          QCOMPARE(combine->itemText(1), "1 (up to 8 points per node)");
                          QCOMPARE(combine->itemText(2), "2 (up to 64 points per node)");
                          QCOMPARE(combine->currentIndex(), 8);
                          combine->setCurrentIndex(3);
                          ModalScript::press("Edit ...")(dialog);
                          QCOMPARE(lengths->itemText(2), "2 (2.0 units edge length)");
                          QCOMPARE(combine->itemText(1), "1 (up to 4 points per node)");
                          QCOMPARE(combine->currentIndex(), 3);
                          ModalScript::press("Cancel")(dialog);
                      },
                      [](QDialog* dialog) {
                          const auto type = [&](const char* name, const QString& text) {
                              auto* edit = in<QLineEdit>(dialog, name);
                              edit->selectAll();
                              QTest::keyClicks(edit, text);
                          };
                          in<QSpinBox>(dialog, "editLength")->setValue(2);
                          type("editResolution", "0.5");
                          in<QComboBox>(dialog, "editUnitSymbol")->setEditText("");
                          ModalScript::press("OK")(dialog);
                      }});
}

void NewDatabaseTest::settingsGoToFilesAndBack() {
    const QString json = m_work.filePath("settings.json");
    run("actionNew",
        {[&](QDialog* dialog) {
             in<QSpinBox>(dialog, "editChunkSizePts")->setValue(1234);
             in<QComboBox>(dialog, "editPointInsertMode")->setCurrentIndex(1);
             in<QComboBox>(dialog, "editOptimizePointID")->setCurrentIndex(1);
             choose(dialog, "actionSave");
             for (QAction* action : dialog->findChildren<QAction*>())
                 if (action->text() == "...as Python string")
                     action->trigger();
             QVERIFY(QApplication::clipboard()->text().startsWith("\"\"\"\n{"));
             QVERIFY(QApplication::clipboard()->text().contains("1234"));

             in<QLineEdit>(dialog, "editLocation")->setText("kept.sbx");
             choose(dialog, "actionDefaults");
             QCOMPARE(in<QLineEdit>(dialog, "editLocation")->text(), "kept.sbx");
             QCOMPARE(in<QComboBox>(dialog, "editSchemaList")->currentText(), "(none)");
             QVERIFY(in<QSpinBox>(dialog, "editChunkSizePts")->value() != 1234);
             QCOMPARE(in<QComboBox>(dialog, "editPointInsertMode")->currentIndex(), 0);

             in<QPlainTextEdit>(dialog, "editSchemaText")->setPlainText("{}");
             choose(dialog, "actionLoad");
             QCOMPARE(in<QSpinBox>(dialog, "editChunkSizePts")->value(), 1234);
             QCOMPARE(in<QComboBox>(dialog, "editPointInsertMode")->currentIndex(), 1);
             QCOMPARE(in<QComboBox>(dialog, "editOptimizePointID")->currentIndex(), 1);
             QCOMPARE(in<QLineEdit>(dialog, "editLocation")->text(), "kept.sbx");
             QCOMPARE(in<QPlainTextEdit>(dialog, "editSchemaText")->toPlainText(), "{}");
             ModalScript::press("Cancel")(dialog);
         },
         [&](QDialog* dialog) {
             QCOMPARE(in<QLineEdit>(dialog, "fileNameEdit")->text(), "create-settings.json");
             ModalScript::chooseFile(json)(dialog);
         },
         ModalScript::chooseFile(json)});
}

void NewDatabaseTest::settingsThatCantBeShownAreNamed() {
    const auto write = [](const QString& name, const QByteArray& text) {
        QFile file(name);
        return file.open(QIODevice::WriteOnly) && file.write(text) == text.size();
    };
    const QString odd = m_work.filePath("odd.json");
    QVERIFY(write(odd, R"({"chunk_mode": 1, "chunk_size": 77, "lod_mode": 3, "lod_size": 5,
                           "compression_level": 5, "point_insert_mode": "multi-pass"})"));
    const QString broken = m_work.filePath("broken.json");
    QVERIFY(write(broken, "{\"chunk_mode\": "));
    const Step ok = ModalScript::press("OK");
    const QStringList texts = run(
        "actionNew", {[&](QDialog* dialog) {
                          in<QLineEdit>(dialog, "editLocation")->setText("kept.dat");
                          const int level = in<QSlider>(dialog, "editCompressionLevel")->value();
                          choose(dialog, "actionLoad");
                          QCOMPARE(in<QSpinBox>(dialog, "editChunkSizePts")->value(), 77);
                          QCOMPARE(in<QSlider>(dialog, "editCompressionLevel")->value(), level);
                          QCOMPARE(in<QComboBox>(dialog, "editPointInsertMode")->currentIndex(), 0);
                          choose(dialog, "actionLoad");
                          QCOMPARE(in<QSpinBox>(dialog, "editChunkSizePts")->value(), 77);
                          ModalScript::press("Cancel")(dialog);
                      },
                      ModalScript::chooseFile(odd), ok, ModalScript::chooseFile(broken), ok});
    QCOMPARE(texts.size(), 2);
    QCOMPARE(texts.value(0), "Invalid LOD mode: 3");
    QVERIFY(!texts.value(1).isEmpty());

    struct Sizes {
        const char* json;
        QStringList errors;
        QStringList fields;  // what they show, as settings
    };
    const Sizes sizes[] = {
        {R"({"chunk_mode": 2, "chunk_size": 4294967295, "lod_mode": 2, "chunk_size_lod": 17})",
         {"Invalid chunk size: 4294967295", "Invalid LOD size: 17"},
         {"2", "9", "2", "4"}},
        {R"({"chunk_mode": 1, "chunk_size": 0, "lod_mode": 1, "chunk_size_lod": 4000000000})",
         {"Invalid chunk size: 0", "Invalid LOD size: 4000000000"},
         {"1", "77", "1", "33"}},
    };
    for (const Sizes& one : sizes) {
        QVERIFY(write(odd, one.json));
        QStringList fields;
        const QStringList told =
            run("actionNew", {[&](QDialog* dialog) {
                                  in<QSpinBox>(dialog, "editChunkSizePts")->setValue(77);
                                  in<QComboBox>(dialog, "editChunkSizeLvl")->setCurrentIndex(9);
                                  in<QSpinBox>(dialog, "editLodSizeThinout")->setValue(33);
                                  in<QComboBox>(dialog, "editLodSizeCombine")->setCurrentIndex(4);
                                  in<QSlider>(dialog, "editCompressionLevel")->setValue(11);
                                  choose(dialog, "actionLoad");
                                  choose(dialog, "actionSave");
                                  ModalScript::press("Cancel")(dialog);
                              },
                              ModalScript::chooseFile(odd), ok, ok,
                              ModalScript::chooseFile(m_work.filePath("saved.json"))});
        QCOMPARE(told, one.errors);
        QFile saved(m_work.filePath("saved.json"));
        QVERIFY(saved.open(QIODevice::ReadOnly));
        const QJsonObject object = QJsonDocument::fromJson(saved.readAll()).object();
        for (const char* const name : {"chunk_mode", "chunk_size", "lod_mode", "chunk_size_lod"})
            fields += QString::number(object[name].toInteger(-1));
        QCOMPARE(fields, one.fields);
        QFile::remove(saved.fileName());
    }
}

void NewDatabaseTest::creationThatFailsKeepsWhatWasTyped() {
    m_window->openDatabase(m_source.fileName, true);
    const QString there = m_work.filePath("there.qrbx");
    QVERIFY(QFile::copy(m_source.fileName, there));
    const auto type = [](const QString& location) -> Step {
        return [location](QDialog* dialog) {
            in<QLineEdit>(dialog, "editLocation")->setText(location);
            ModalScript::press("OK")(dialog);
        };
    };
    const Step ok = ModalScript::press("OK");
    const QStringList texts =
        run("actionNew",
            {[&](QDialog* dialog) {
                 QTest::keyClicks(in<QLineEdit>(dialog, "editLocation"), "  ");
                 ModalScript::press("OK")(dialog);
                 in<QSpinBox>(dialog, "editChunkSizePts")->setValue(4711);
                 type(m_work.filePath("no/such/folder.qrbx"))(dialog);
             },
             ok, ok,
             [&](QDialog* dialog) {
                 QCOMPARE(in<QSpinBox>(dialog, "editChunkSizePts")->value(), 4711);
                 type(m_source.fileName)(dialog);
             },
             ok, type(there), ModalScript::press("No"), type(there), ModalScript::press("Yes")});
    QCOMPARE(texts.size(), 5);
    QCOMPARE(texts.value(0), "Location missing.");
    QVERIFY(texts.value(1).startsWith("There is no folder"));
    QCOMPARE(texts.value(2), "This database is open.\nClose it first, or choose another location.");
    QVERIFY(texts.value(3).endsWith("exists already.\nReplace it?"));
    QCOMPARE(files(), QStringList("there.qrbx"));
    QCOMPARE(field("editDatabaseFile"), QDir::toNativeSeparators(there));
    QCOMPARE(field("editChunkSize"), "mode: point count, size: up to 4,711 points per chunk");
}

void NewDatabaseTest::exportCopiesWhatTheFilterPicks() {
    m_window->openDatabase(m_source.fileName, true);
    const std::string filter = "tarvo.class == 2";
    driver().showTab("tabPointData");
    driver().child<QComboBox>("PointDataFilter")->setEditText(QString::fromStdString(filter));
    const QStringList texts =
        run("actionExportAsQRB",
            {[&](QDialog* dialog) {
                 QCOMPARE(in<QComboBox>(dialog, "editFilter")->currentText(),
                          QString::fromStdString(filter));
                 ModalScript::press("Settings ...")(dialog);
                 QCOMPARE(in<ElidedLineEdit>(dialog, "editTarget")->text(), m_new);
                 // All metadata items but one.
                 auto* items = in<QWidget>(dialog, "listMetaData");
                 auto* list = in<QListWidget>(items, "listEntries");
                 QTest::keyClicks(in<QLineEdit>(items, "editSearch"), "own.note");
                 QVERIFY(ModalScript::pressButton(items, "None"));
                 QCOMPARE(in<QLabel>(items, "labelCount")->text(),
                          QString("%0 of %1").arg(list->count() - 1).arg(list->count()));
                 in<QCheckBox>(dialog, "editChangelog")->setChecked(true);
                 ModalScript::press("Export")(dialog);
             },
             [&](QDialog* dialog) {
                 QVERIFY(!in<QComboBox>(dialog, "editSchemaList")->isVisible());
                 QVERIFY(!in<QLabel>(dialog, "labelDatabaseSchema")->isVisible());
                 in<QLineEdit>(dialog, "editLocation")->setText(m_new);
                 in<QSlider>(dialog, "editCompressionLevel")->setValue(3);
                 ModalScript::press("OK")(dialog);
             },
             ModalScript::press("Yes")});
    QCOMPARE(field("editDatabaseFile"), QDir::toNativeSeparators(m_new));
    QCOMPARE(field("editCompressionLevel"), "3 %");
    QCOMPARE(files(), QStringList("new.qrbx"));

    const auto source = opened(m_source.fileName);
    const auto copy = opened(m_new);
    const auto attributes = source->pointAttributes().list();
    QCOMPARE(copy->pointAttributes().list(), attributes);
    const Table expected = tableOf(*source, attributes, filter);
    QVERIFY(!expected.empty() && expected.size() < static_cast<std::size_t>(m_source.pointCount));
    QVERIFY(tableOf(*copy, attributes) == expected);
    QVERIFY2(texts.value(0).startsWith(QString("Successfully finished!\n\nPoints: %0\nDuration: ")
                                           .arg(QLocale().toString(expected.size()))),
             qUtf8Printable(texts.value(0)));
    QVERIFY(copy->metaData().exists("own.text") && !copy->metaData().exists("own.note"));
    // What was done is written down.
    const auto details = copy->transactions().details(copy->transactions().current());
    const auto listOf = [](const std::vector<std::string>& names, const QString& without = {}) {
        QStringList list;
        for (const std::string& name : names)
            list += QString::fromStdString(name);
        list.removeOne(without);
        return QJsonArray::fromStringList(list);
    };
    QCOMPARE(QJsonDocument::fromJson(QByteArray::fromStdString(details.settings)).object(),
             QJsonObject({{"source", QFileInfo(m_source.fileName).fileName()},
                          {"uuid", QString::fromStdString(source->getUuid())},
                          {"filter", QString::fromStdString(filter)},
                          {"nodes", ""},
                          {"attributes", listOf(attributes)},
                          {"metadata", listOf(source->metaData().list(), "own.note")},
                          {"changelog", true}}));
    QCOMPARE(FilterHistory::list(), QStringList(QString::fromStdString(filter)));
    QCOMPARE(driver().child<QComboBox>("PointIndexFilter")->itemText(0),
             QString::fromStdString(filter));
    // The changelog of the source, and the entry of the export.
    const QString log = driver().child<QPlainTextEdit>("editChangelog")->toPlainText();
    QVERIFY(log.contains("Notes") && log.contains("Export"));
}

void NewDatabaseTest::exportKeepsToNodesAndAttributes() {
    m_window->openDatabase(m_source.fileName, true);
    const auto source = opened(m_source.fileName);
    tarvo::qrb::pointcloud::IndexNode root;
    source->stat().index(root);
    const auto* leaf = &root;
    while (!leaf->children.empty())
        leaf = &leaf->children.back();
    QVERIFY(leaf != &root);
    driver().showTab("tabPointData");
    driver().child<QLineEdit>("editPointDataNodes")->setText(QString::number(leaf->id));
    const QStringList texts =
        run("actionExportAsQRB",
            {[&](QDialog* dialog) {
                 const QString nodes = in<QLineEdit>(dialog, "editNodes")->text();
                 in<QLineEdit>(dialog, "editTarget")->setText(m_new);
                 auto* attributes = in<QWidget>(dialog, "listAttributes");
                 QTest::keyClicks(in<QLineEdit>(attributes, "editSearch"), "tarvo.class");
                 QVERIFY(ModalScript::pressButton(attributes, "None"));
                 ModalScript::press("Export")(dialog);
                 ModalScript::press("Close")(dialog);
                 QCOMPARE(nodes, QString::number(leaf->id));
             },
             ModalScript::press("No")});
    QVERIFY2(texts.value(0).contains(
                 QString("Points: %0\n").arg(QLocale().toString(leaf->pointCountNode))),
             qUtf8Printable(texts.value(0)));
    QVERIFY(FilterHistory::list().isEmpty());
    // Not opened.
    QCOMPARE(field("editDatabaseFile"), QDir::toNativeSeparators(m_source.fileName));
    const auto copy = opened(m_new);
    auto attributes = source->pointAttributes().list();
    QCOMPARE(std::erase(attributes, "tarvo.class"), 1u);
    QVERIFY(copy->pointAttributes().list() == attributes);
    const Table table = tableOf(*copy, {"tarvo.id"});
    auto query = source->select({leaf->id}, "");
    std::uint64_t id = 0;
    query.bind("tarvo.id", tarvo::qrb::pointcloud::DataType::UINT64, &id, sizeof id);
    std::size_t count = 0;
    for (; query.next(1) == 1; ++count)
        QVERIFY(table.contains(id));
    QCOMPARE(table.size(), count);
}

void NewDatabaseTest::exportCanBeCancelled() {
    m_window->openDatabase(m_source.fileName, true);
    const auto attributes = opened(m_source.fileName)->pointAttributes().list();
    const Table before = tableOf(*opened(m_source.fileName), attributes);
    QVERIFY(QFile::copy(m_source.fileName, m_new));
    const QStringList texts = run(
        "actionExportAsQRB", {[&](QDialog* dialog) {
                                  in<QLineEdit>(dialog, "editTarget")->setText(m_new);
                                  // As a close request in the middle of the work.
                                  connect(dialog, SIGNAL(update_progress(int)), dialog,
                                          SLOT(reject()), Qt::DirectConnection);
                                  ModalScript::press("Export")(dialog);
                                  QVERIFY(dialog->isVisible() && dialog->isEnabled());
                                  QVERIFY(!in<QProgressBar>(dialog, "progressBar")->isVisible());
                                  dialog->disconnect(SIGNAL(update_progress(int)));
                                  ModalScript::press("Close")(dialog);
                              },
                              ModalScript::press("Yes"), ModalScript::press("OK")});
    QCOMPARE(texts.value(1), "Export cancelled.");
    QCOMPARE(files(), QStringList("new.qrbx"));
    QVERIFY(tableOf(*opened(m_new), attributes) == before);
    QVERIFY(tableOf(*opened(m_source.fileName), attributes) == before);
    QCOMPARE(field("editDatabaseFile"), QDir::toNativeSeparators(m_source.fileName));
    driver().showTab("tabPointData");
    driver().child<QAction>("actionQuerySelectNext")->trigger();
    QCOMPARE(driver().child<QTreeWidget>("treePointData")->topLevelItemCount(), 100);
}

void NewDatabaseTest::exportThatFailsLeavesNothing() {
    m_window->openDatabase(m_source.fileName, true);
    const Step ok = ModalScript::press("OK");
    const QStringList texts =
        run("actionExportAsQRB",
            {[&](QDialog* dialog) {
                 auto* target = in<QLineEdit>(dialog, "editTarget");
                 auto* filter = in<QComboBox>(dialog, "editFilter");
                 const auto attempt = [&] { ModalScript::press("Export")(dialog); };
                 target->setText(m_source.fileName);
                 attempt();
                 target->setText(m_work.filePath("no/such/folder.qrbx"));
                 attempt();
                 target->setText(m_new);
                 filter->setEditText("tarvo.class === 2");
                 attempt();
                 filter->setEditText("");
                 in<QLineEdit>(dialog, "editNodes")->setText("one");
                 attempt();
                 in<QLineEdit>(dialog, "editNodes")->clear();
                 QVERIFY(ModalScript::pressButton(in<QWidget>(dialog, "listAttributes"), "None"));
                 attempt();
                 ModalScript::press("Close")(dialog);
             },
             ok, ok, ok, ok, ok});
    QVERIFY(texts.value(0).startsWith("The copy can't replace the database"));
    QVERIFY(texts.value(1).startsWith("There is no folder"));
    QVERIFY(texts.value(2).contains("==="));
    QVERIFY(texts.value(4).startsWith("The primary attribute \"tarvo.xyz\" is not among"));
    QVERIFY(files().isEmpty());

    // A name beside the file is proposed, with all that tells it from others.
    const QString versioned = m_work.filePath("scan.v2.qrbx");
    QVERIFY(QFile::copy(m_source.fileName, versioned));
    m_window->openDatabase(versioned, true);
    run("actionExportAsQRB", {[&](QDialog* dialog) {
            const QString target = in<QLineEdit>(dialog, "editTarget")->text();
            QCOMPARE(QDir::fromNativeSeparators(target), m_work.filePath("scan.v2-export.qrbx"));
            ModalScript::press("Close")(dialog);
        }});
}

GUI_TEST_MAIN(NewDatabaseTest)
#include "newdatabasetest.moc"
