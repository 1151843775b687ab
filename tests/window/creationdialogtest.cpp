// The dialogs of a database that is created or opened: fields, limits, and what OK and Cancel do.

#include "catalogue/catalogue.h"
#include "qrb/loader.h"
#include "tests/window/attributesamples.h"
#include "tests/window/dialogprobe.h"
#include "tests/window/guitestmain.h"
#include "tests/window/samplewindow.h"
#include "window/dialogs/dialogcreatesettings.h"
#include "window/dialogs/dialogopensettings.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QSlider>
#include <QSpinBox>
#include <QtTest>
#include <memory>

using namespace tarvo::window;

namespace pointcloud = tarvo::qrb::pointcloud;

namespace {

struct CreateCase {
    std::uint32_t chunkMode, chunkSize, lodMode, lodSize;
    std::uint64_t cacheSize;
    std::uint8_t compression;
    bool optimize;
    const char* insertMode;
};

}  // namespace

class CreationDialogTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase();

    void creationSettingsGoThroughTheFields_data();
    void creationSettingsGoThroughTheFields();
    void membersThatAFileLacksStayAsShown();
    void creationFieldsHaveTheirLimits();
    void reducedCreationDialogHidesTheSchema();
    void openSettingsOfferRecentPlaces();

private:
    std::unique_ptr<SampleDatabase> m_sample;
    std::unique_ptr<tarvo::qrb::Context> m_context;
};

void CreationDialogTest::initTestCase() {
    tarvo::qrb::loadLibrary("");
    m_sample = std::make_unique<SampleDatabase>();
    QVERIFY2(m_sample->error().isEmpty(), qUtf8Printable(m_sample->error()));
    m_context = std::make_unique<tarvo::qrb::Context>("OFF", "");
}

void CreationDialogTest::cleanupTestCase() {
    m_context.reset();
    tarvo::qrb::freeLibrary();
}

void CreationDialogTest::creationSettingsGoThroughTheFields_data() {
    QTest::addColumn<int>("row");
    for (int i = 0; i < 3; ++i)
        QTest::newRow(qPrintable(QString::number(i))) << i;
}

void CreationDialogTest::creationSettingsGoThroughTheFields() {
    static const CreateCase cases[] = {
        {1, 1234567, 1, 33, 4096, 0, false, "single-pass"},
        {2, 17, 2, 0, 0, 77, true, "multi-pass"},
        {2, 63, 2, 16, 2147483647, 100, false, "single-pass"},
    };
    QFETCH(int, row);
    const CreateCase& from = cases[row];
    const CreateCase& to = cases[(row + 1) % 3];
    const auto settingsOf = [&](const CreateCase& each) {
        pointcloud::CreateSettings settings(*m_context);
        settings.primaryAttribute = defaultAttribute("tarvo.xyz");
        settings.chunkMode = each.chunkMode;
        settings.chunkSize = each.chunkSize;
        settings.lodMode = each.lodMode;
        settings.chunkSizeLOD = each.lodSize;
        settings.cacheSize = each.cacheSize;
        settings.compressionLevel = each.compression;
        settings.optimizePointID = each.optimize;
        settings.pointInsertMode = each.insertMode;
        return settings;
    };
    const auto fill = [](QDialog* dialog, const CreateCase& each) {
        in<QComboBox>(dialog, "editChunkMode")->setCurrentIndex(each.chunkMode == 2);
        if (each.chunkMode == 1)
            in<QSpinBox>(dialog, "editChunkSizePts")->setValue(static_cast<int>(each.chunkSize));
        else
            in<QComboBox>(dialog, "editChunkSizeLvl")
                ->setCurrentIndex(static_cast<int>(each.chunkSize));
        in<QComboBox>(dialog, "editLodMode")->setCurrentIndex(each.lodMode == 2);
        if (each.lodMode == 1)
            in<QSpinBox>(dialog, "editLodSizeThinout")->setValue(static_cast<int>(each.lodSize));
        else
            in<QComboBox>(dialog, "editLodSizeCombine")
                ->setCurrentIndex(static_cast<int>(each.lodSize));
        in<QSpinBox>(dialog, "editCacheSize")->setValue(static_cast<int>(each.cacheSize));
        in<QSlider>(dialog, "editCompressionLevel")->setValue(each.compression);
        in<QComboBox>(dialog, "editOptimizePointID")->setCurrentIndex(each.optimize);
        in<QComboBox>(dialog, "editPointInsertMode")
            ->setCurrentIndex(QString(each.insertMode) == "multi-pass");
    };
    for (const char* button : {"Cancel", "OK"}) {
        QString location = "a.dat";
        auto settings = settingsOf(from);
        std::string schema = "{}";
        bool optionals = true;
        // Nothing but OK: what comes in goes out.
        {
            ModalScript script({ModalScript::press("OK")});
            QVERIFY(DialogCreateSettings::edit(*m_context, location, settings, schema, optionals,
                                               nullptr));
            QCOMPARE(settings.toJson(), settingsOf(from).toJson());
            QCOMPARE(schema, std::string("{}"));
            QVERIFY(optionals);
        }
        ModalScript script({[&](QDialog* dialog) {
            const QString shown = in<QLineEdit>(dialog, "editLocation")->text();
            const QStringList disabled =
                disabledOf(dialog, {"editChunkSizePts", "editChunkSizeLvl", "editLodSizeThinout",
                                    "editLodSizeCombine"});
            const QString percent = in<QLabel>(dialog, "labelCompressionLevelValue")->text();
            fill(dialog, to);
            in<QLineEdit>(dialog, "editLocation")->setText("  b.dat ");
            in<QPlainTextEdit>(dialog, "editSchemaText")->setPlainText("[]");
            in<QCheckBox>(dialog, "editSchemaOptionals")->setChecked(false);
            ModalScript::press(button)(dialog);
            QCOMPARE(shown, "a.dat");
            QCOMPARE(
                disabled,
                QStringList({from.chunkMode == 1 ? "editChunkSizeLvl" : "editChunkSizePts",
                             from.lodMode == 1 ? "editLodSizeCombine" : "editLodSizeThinout"}));
            QCOMPARE(percent, QString("%0 %").arg(from.compression));
        }});
        const bool accepted = QString(button) == "OK";
        QCOMPARE(
            DialogCreateSettings::edit(*m_context, location, settings, schema, optionals, nullptr),
            accepted);
        QCOMPARE(settings.toJson(), settingsOf(accepted ? to : from).toJson());
        QCOMPARE(location, accepted ? "b.dat" : "a.dat");
        QCOMPARE(schema, std::string(accepted ? "[]" : "{}"));
        QCOMPARE(optionals, !accepted);
    }
}

void CreationDialogTest::membersThatAFileLacksStayAsShown() {
    // No member as in the defaults, and none as in the other.
    pointcloud::CreateSettings shown(*m_context);
    shown.primaryAttribute = byteAttribute("own.shown");
    shown.chunkMode = 2;
    shown.chunkSize = 17;
    shown.lodMode = 2;
    shown.chunkSizeLOD = 3;
    shown.cacheSize = 4096;
    shown.compressionLevel = 77;
    shown.optimizePointID = true;
    shown.pointInsertMode = "multi-pass";
    pointcloud::CreateSettings other(*m_context);
    other.primaryAttribute = byteAttribute("own.other");
    other.chunkMode = 1;
    other.chunkSize = 21;
    other.lodMode = 1;
    other.chunkSizeLOD = 5;
    other.cacheSize = 8192;
    other.compressionLevel = 55;
    other.optimizePointID = false;
    other.pointInsertMode = "single-pass";
    const auto objectOf = [](const pointcloud::CreateSettings& settings) {
        return QJsonDocument::fromJson(QByteArray::fromStdString(settings.toJson())).object();
    };
    const QJsonObject before = objectOf(shown);
    const QJsonObject wanted = objectOf(other);
    const QJsonObject defaults = objectOf(pointcloud::CreateSettings(*m_context));
    QVERIFY(before.size() >= 9);
    QStringList names = before.keys();
    names += "";  // an object without members
    for (const QString& name : names) {
        QVERIFY2(name.isEmpty() || (before[name] != defaults[name] && before[name] != wanted[name]),
                 qUtf8Printable(name));
        QJsonObject expected = before;
        QJsonObject loaded;
        if (!name.isEmpty())
            expected[name] = loaded[name] = wanted[name];
        QFile file(m_sample->path("some.json"));
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(QJsonDocument(loaded).toJson()) > 0);
        file.close();
        QString location = "a.dat";
        auto settings = shown;
        std::string schema = "{}";
        bool optionals = true;
        ModalScript script({[&](QDialog* dialog) {
                                in<QAction>(dialog, "actionLoad")->trigger();
                                ModalScript::press("OK")(dialog);
                            },
                            ModalScript::chooseFile(file.fileName())});
        QVERIFY(
            DialogCreateSettings::edit(*m_context, location, settings, schema, optionals, nullptr));
        QCOMPARE(script.answered(), 2u);
        QCOMPARE(QJsonDocument(objectOf(settings)).toJson(), QJsonDocument(expected).toJson());
        QCOMPARE(location, "a.dat");
        QCOMPARE(schema, std::string("{}"));
        QVERIFY(optionals);
    }
}

void CreationDialogTest::creationFieldsHaveTheirLimits() {
    const SampleWindow window{QString()};
    window.run("actionNew", {[&](QDialog* dialog) {
                   const auto spin = [&](const char* name) {
                       const auto* box = in<QSpinBox>(dialog, name);
                       return QString("%0 to %1 '%2' '%3' %4 %5")
                           .arg(box->minimum())
                           .arg(box->maximum())
                           .arg(box->prefix(), box->suffix(), box->specialValueText())
                           .arg(box->singleStep());
                   };
                   const QStringList spins = {spin("editChunkSizePts"), spin("editLodSizeThinout"),
                                              spin("editCacheSize")};
                   const auto entries = [&](const char* name) {
                       QStringList texts;
                       const auto* list = in<QComboBox>(dialog, name);
                       for (int i = 0; i < list->count(); ++i)
                           texts += list->itemText(i);
                       return texts;
                   };
                   const QList<QStringList> lists = {
                       entries("editChunkMode"), entries("editLodMode"),
                       entries("editOptimizePointID"), entries("editPointInsertMode")};
                   const auto* slider = in<QSlider>(dialog, "editCompressionLevel");
                   const QPair<int, int> range(slider->minimum(), slider->maximum());
                   const bool primary = in<QLineEdit>(dialog, "editPrimaryAttribute")->isReadOnly();
                   in<QSpinBox>(dialog, "editCacheSize")->setValue(0);
                   const QString noCache = in<QSpinBox>(dialog, "editCacheSize")->text();
                   const auto schemas = in<QComboBox>(dialog, "editSchemaList")->count();
                   const QStringList menu = menuOf(dialog);
                   const QString title = dialog->windowTitle();
                   dialog->reject();
                   QCOMPARE(title, "Database Creation Settings");
                   QCOMPARE(spins, QStringList({"1 to 999999999 'up to ' ' points per chunk'  1",
                                                "0 to 99 'up to ' ' % of the original points' off 1",
                                                "0 to 2147483647 '' ' bytes' no cache 1024"}));
                   QCOMPARE(noCache, "no cache");
                   QCOMPARE(lists[0], QStringList({"point count limit (default)",
                                                   "fixed chunk edge length"}));
                   QCOMPARE(lists[1], QStringList({"thinout points (default)", "combine points"}));
                   QCOMPARE(lists[2], QStringList({"off (point ID reflects point insertion order)",
                                                   "on (can result in smaller files)"}));
                   QCOMPARE(lists[3], QStringList({"single-pass", "multi-pass"}));
                   QCOMPARE(range, qMakePair(0, 100));
                   QVERIFY(primary);
                   QCOMPARE(schemas, static_cast<int>(tarvo::catalogue::schemas().size()) + 1);
                   QCOMPARE(menu, QStringList({"Load defaults...", "-", "Load from file...",
                                               "Save to file...", "-", "Copy to clipboard..."}));
               }});
}

void CreationDialogTest::reducedCreationDialogHidesTheSchema() {
    QString location = "a.sbx";
    pointcloud::CreateSettings settings(*m_context);
    ModalScript script({[](QDialog* dialog) {
        QStringList visible;
        for (const char* name :
             {"labelDatabaseSchema", "editSchemaList", "editSchemaText", "editSchemaOptionals"})
            if (in<QWidget>(dialog, name)->isVisible())
                visible += name;
        const int spare = dialog->height() - dialog->sizeHint().height();
        in<QLineEdit>(dialog, "editLocation")->setText(" other.sbx ");
        in<QSpinBox>(dialog, "editChunkSizePts")->setValue(99);
        ModalScript::press("OK")(dialog);
        QCOMPARE(visible, QStringList());
        QVERIFY2(spare < 10, qPrintable(QString::number(spare)));
    }});
    QVERIFY(DialogCreateSettings::edit(*m_context, location, settings, nullptr));
    QCOMPARE(location, "other.sbx");
    QCOMPARE(settings.chunkSize, 99u);
}

void CreationDialogTest::openSettingsOfferRecentPlaces() {
    const QStringList places = {"/a/one.qrbx", "/b/two.qrbx"};
    struct Case {
        QString location;
        const char* button;
        QString shown;
        QString result;
        std::uint64_t cache;
    };
    const Case cases[] = {{"", "OK", "/a/one.qrbx", "/a/one.qrbx", 5},
                          {"/c/three.qrbx", "OK", "/c/three.qrbx", "/c/three.qrbx", 5},
                          {"/c/three.qrbx", "Cancel", "/c/three.qrbx", "/c/three.qrbx", 2048}};
    for (const Case& each : cases) {
        QString location = each.location;
        std::uint64_t cache = 2048;
        ModalScript script({[&](QDialog* dialog) {
            auto* combo = in<QComboBox>(dialog, "editLocation");
            auto* size = in<QSpinBox>(dialog, "editCacheSize");
            QStringList offered;
            for (int i = 0; i < combo->count(); ++i)
                offered += combo->itemText(i);
            const QString text = combo->currentText();
            const QString selected = combo->lineEdit()->selectedText();
            const bool focused = combo->hasFocus() || combo->lineEdit()->hasFocus();
            const int value = size->value();
            const QStringList limits = {QString::number(size->maximum()), size->suffix(),
                                        size->specialValueText()};
            size->setValue(5);
            ModalScript::press(each.button)(dialog);
            QCOMPARE(offered, places);
            QCOMPARE(text, each.shown);
            QCOMPARE(selected, each.shown);
            QVERIFY(focused);
            QCOMPARE(value, 2048);
            QCOMPARE(limits, QStringList({"2147483647", " bytes", "no cache"}));
        }});
        QCOMPARE(DialogOpenSettings::edit(*m_context, location, cache, places, nullptr),
                 QString(each.button) == "OK");
        QCOMPARE(location, each.result);
        QCOMPARE(cache, each.cache);
    }
    // The window offers what was opened, and the file that is open.
    const SampleWindow window(m_sample->copy("first.qrbx"));
    window.window().openDatabase(m_sample->copy("second.qrbx"), true);
    window.run("actionOpen", {[&](QDialog* dialog) {
                   const auto* combo = in<QComboBox>(dialog, "editLocation");
                   const QStringList offered = {combo->itemText(0), combo->itemText(1)};
                   const QString text = combo->currentText();
                   dialog->reject();
                   QCOMPARE(offered, QStringList({m_sample->path("second.qrbx"),
                                                  m_sample->path("first.qrbx")}));
                   QCOMPARE(text, m_sample->path("second.qrbx"));
               }});
}

GUI_TEST_MAIN(CreationDialogTest)
#include "creationdialogtest.moc"
