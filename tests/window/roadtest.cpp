// The life of a database as a user leads it: made, filled, changed, signed, checked and exported,
// all through the window, but for the points, which qrbtool brings in beside it.

#include "catalogue/catalogue.h"
#include "qrb/loader.h"
#include "qrb/pointcloud.h"
#include "tests/window/guitestmain.h"
#include "tests/window/modalscript.h"
#include "tests/window/pointtable.h"
#include "tests/window/testdatabase.h"
#include "tests/window/windowdriver.h"
#include "window/frame/mainwindow.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QTreeWidget>
#include <QtTest>
#include <memory>

using namespace tarvo::window;

namespace {

using Step = ModalScript::Step;

const char* const key = "01 23 45 67 89 ab cd ef";

void retype(QLineEdit* edit, const QString& text) {
    edit->selectAll();
    QTest::keyClicks(edit, text);
}

}  // namespace

class RoadTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase();

    // In this order; each goes on where the one before it ended.
    void newDatabase();
    void attributesAreAdded();
    void pointsComeIn();
    void metadataIsWrittenAndSigned();
    void signatureIsVerified();
    void levelOfDetailIsBuilt();
    void databaseIsValidated();
    void copyIsExportedAndOpened();

private:
    WindowDriver driver() { return WindowDriver(*m_window); }
    QStringList run(const char* action, std::vector<Step> steps) {
        return driver().run(action, std::move(steps));
    }
    QString field(const char* name) { return driver().child<QLineEdit>(name)->text(); }
    std::unique_ptr<tarvo::qrb::Pointcloud> opened(const QString& fileName) const;

    QTemporaryDir m_folder;
    TestDatabase m_source;  // made of the same points by qrbtool alone
    QString m_points;       // the file with them
    QString m_file;
    QString m_copy;
    std::unique_ptr<MainWindow> m_window;
};

void RoadTest::initTestCase() {
    tarvo::qrb::loadLibrary("");
    m_source = makeTestDatabase(m_folder.path());
    QVERIFY2(m_source.error.isEmpty(), qUtf8Printable(m_source.error));
    m_points = QDir(QRB_TEST_DATA).filePath("autzen_trim.las");
    if (!m_source.real) {
        m_points = m_folder.filePath("points.csv");
        const QString error = runTool({"select", m_source.fileName, "-a",
                                       "tarvo.id,tarvo.xyz,tarvo.class,tarvo.reflectance",
                                       "--format", "csv", "-o", m_points});
        QVERIFY2(error.isEmpty(), qUtf8Printable(error));
    }
    m_file = m_folder.filePath("road.qrbx");
    m_copy = m_folder.filePath("copy.qrbx");
    m_window = showFreshWindow();
}

void RoadTest::cleanupTestCase() {
    m_window.reset();
    tarvo::qrb::freeLibrary();
}

std::unique_ptr<tarvo::qrb::Pointcloud> RoadTest::opened(const QString& fileName) const {
    const tarvo::qrb::Context context("OFF", "");
    auto cloud = std::make_unique<tarvo::qrb::Pointcloud>(context);
    cloud->open(fileName.toStdString(), tarvo::qrb::pointcloud::OpenSettings(context));
    return cloud;
}

void RoadTest::newDatabase() {
    run("actionNew", {[&](QDialog* dialog) {
                          QTest::keyClicks(in<QLineEdit>(dialog, "editLocation"), m_file);
                          QCOMPARE(in<QComboBox>(dialog, "editSchemaList")->currentText(), "qrbx");
                          ModalScript::press("Edit ...")(dialog);
                          ModalScript::press("OK")(dialog);
                      },
                      [](QDialog* dialog) {  // room for map coordinates
                          retype(in<QLineEdit>(dialog, "editMinimumValue"), "-10000000");
                          retype(in<QLineEdit>(dialog, "editMaximumValue"), "10000000");
                          retype(in<QLineEdit>(dialog, "editResolution"), "0.00005");
                          ModalScript::press("OK")(dialog);
                      }});
    QCOMPARE(field("editDatabaseFile"), QDir::toNativeSeparators(m_file));
    QCOMPARE(field("editPointsTotal"), "0");
}

void RoadTest::attributesAreAdded() {
    run("actionTransactionBegin", {ModalScript::press("OK")});
    driver().showTab("tabPointAttributes");
    run("actionPointAttributeAdd", {[](QDialog* dialog) {
            QTest::keyClicks(in<QLineEdit>(dialog, "editSuggestionFilter"), "tarvo.selected");
            QTest::keyClick(in<QLineEdit>(dialog, "editSuggestionFilter"), Qt::Key_Return);
            QCOMPARE(in<QLineEdit>(dialog, "editName")->text(), "tarvo.selected");
            ModalScript::press("OK")(dialog);
        }});
    run("actionPointAttributeAdd", {[](QDialog* dialog) {
            retype(in<QLineEdit>(dialog, "editName"), "own.quality");
            in<QSpinBox>(dialog, "editLength")->setValue(2);
            retype(in<QLineEdit>(dialog, "editMinimumValue"), "0");
            retype(in<QLineEdit>(dialog, "editMaximumValue"), "1");
            retype(in<QLineEdit>(dialog, "editResolution"), "0.01");
            retype(in<QLineEdit>(dialog, "editDefaultValue"), "0.25");
            in<QComboBox>(dialog, "editStorageClass")->setCurrentIndex(1);
            ModalScript::press("OK")(dialog);
        }});
    run("actionTransactionCommit", {ModalScript::press("OK")});
    const auto cloud = opened(m_file);
    QVERIFY(cloud->pointAttributes().exists("tarvo.selected"));
    QCOMPARE(cloud->pointAttributes().get("own.quality").length, 2u);
}

void RoadTest::pointsComeIn() {
    const QString error = runTool({"import", m_points, m_file, "--append"});
    QVERIFY2(error.isEmpty(), qUtf8Printable(error));
    driver().child<QAction>("actionReload")->trigger();
    QCOMPARE(field("editPointsTotal"), QLocale().toString(m_source.pointCount));
}

void RoadTest::metadataIsWrittenAndSigned() {
    run("actionTransactionBegin", {[](QDialog* dialog) {
            retype(in<QLineEdit>(dialog, "editTitle"), "Surveyed");
            ModalScript::press("OK")(dialog);
        }});
    driver().showTab("tabMetaData");
    run("actionMetaDataAdd", {[](QDialog* dialog) {
            QTest::keyClicks(in<QComboBox>(dialog, "editName")->lineEdit(), "tarvo.atmosphere");
            ModalScript::press("Use Example")(dialog);
            ModalScript::press("OK")(dialog);
        }});
    run("actionTransactionCommit", {[](QDialog* dialog) {
            in<QComboBox>(dialog, "editMethod")->setCurrentIndex(1);
            QTest::keyClicks(in<QPlainTextEdit>(dialog, "editKey"), key);
            ModalScript::press("OK")(dialog);
        }});
    QVERIFY(opened(m_file)->metaData().exists("tarvo.atmosphere"));
}

void RoadTest::signatureIsVerified() {
    driver().showTab("tabChangelog");
    auto* log = driver().child<QPlainTextEdit>("editChangelog");
    QVERIFY(log->toPlainText().contains("Surveyed"));
    log->moveCursor(QTextCursor::End);
    QCOMPARE(run("actionChangelogVerifyLogEntry",
                 {[](QDialog* dialog) {
                      QVERIFY(in<QLineEdit>(dialog, "editName")->text().contains("Surveyed"));
                      in<QPlainTextEdit>(dialog, "editKey")->setPlainText(key);
                      ModalScript::press("Verify Signature")(dialog);
                  },
                  ModalScript::press("OK")}),
             QStringList("Signature successfully verified."));
}

void RoadTest::levelOfDetailIsBuilt() {
    QVERIFY(run("actionManagementLevelOfDetail",
                {[](QDialog* dialog) {
                     in<QSpinBox>(dialog, "editLodSizeThinout")->setValue(10);
                     ModalScript::press("Apply")(dialog);
                     ModalScript::press("Close")(dialog);
                 },
                 ModalScript::press("OK")})
                .value(0)
                .startsWith("Successfully finished!"));
    QCOMPARE(field("editLevelOfDetail"), "mode: thinout, size: up to 10 % of the original points");
    QCOMPARE(field("editPointsTotal"), QLocale().toString(m_source.pointCount));
}

void RoadTest::databaseIsValidated() {
    QString result;
    const auto validate = [&result](const QString& schema) -> Step {
        return [&result, schema](QDialog* dialog) {
            QCOMPARE(in<QComboBox>(dialog, "listSchema")->currentText(), "qrbx");
            if (!schema.isEmpty())
                in<QPlainTextEdit>(dialog, "editSchema")->setPlainText(schema);
            ModalScript::press("Validate")(dialog);
            result = in<QPlainTextEdit>(dialog, "editResult")->toPlainText();
            ModalScript::press("Close")(dialog);
        };
    };
    if (m_source.real) {
        // Map coordinates go beyond what files of this type hold, and are in feet.
        run("actionValidate", {validate({}), ModalScript::press("OK")});
        QVERIFY(result.contains("\"tarvo.xyz[0]\" has values up to 637179.22"));
        QVERIFY(result.contains("\"tarvo.xyz\" has the unit \"ft\", not \"m\""));
        QCOMPARE(result.count("\nThe point attribute "), 3);
    } else {
        run("actionValidate", {validate({})});
        QCOMPARE(result, "No problems detected!");
    }
    run("actionValidate", {validate(R"({"identifier": "road", "extension": "qrbx",
        "attributes": ["tarvo.id", "tarvo.class", "own.quality"], "metadata": ["tarvo.atmosphere"]})")});
    // Behind it stands what is only an example.
    QCOMPARE(result.section('\n', 0, 1), "No problems detected!\n");
}

void RoadTest::copyIsExportedAndOpened() {
    run("actionExportAsQRB", {[&](QDialog* dialog) {
                                  ModalScript::press("Settings ...")(dialog);
                                  in<QCheckBox>(dialog, "editChangelog")->setChecked(true);
                                  ModalScript::press("Export")(dialog);
                              },
                              [&](QDialog* dialog) {
                                  retype(in<QLineEdit>(dialog, "editLocation"), m_copy);
                                  ModalScript::press("OK")(dialog);
                              },
                              ModalScript::press("Yes")});
    QCOMPARE(field("editDatabaseFile"), QDir::toNativeSeparators(m_copy));
    QCOMPARE(field("editPointsTotal"), QLocale().toString(m_source.pointCount));
    QVERIFY(driver().child<QPlainTextEdit>("editChangelog")->toPlainText().contains("Surveyed"));

    // Nothing got lost on the way: what qrbtool reads from the points at once, and what was added.
    const auto copy = opened(m_copy);
    const auto road = opened(m_file);
    const auto attributes = road->pointAttributes().list();
    QCOMPARE(copy->pointAttributes().list(), attributes);
    QVERIFY(tableOf(*copy, attributes) == tableOf(*road, attributes));
    const std::vector<std::string> shared{"tarvo.xyz", "tarvo.class"};
    const Table expected = tableOf(*opened(m_source.fileName), shared);
    const Table values = tableOf(*copy, shared);
    QCOMPARE(values.size(), expected.size());
    for (const auto& [id, point] : expected) {
        const auto found = values.find(id);
        QVERIFY(found != values.end() && found->second.size() == point.size());
        for (std::size_t i = 0; i < point.size(); ++i)
            QVERIFY(std::abs(found->second[i] - point[i]) < 1e-5);
    }
    QCOMPARE(tableOf(*copy, {"own.quality"}).begin()->second, std::vector<double>({0.25, 0.25}));
    QVERIFY(copy->metaData().exists("tarvo.atmosphere"));
}

GUI_TEST_MAIN(RoadTest)
#include "roadtest.moc"
