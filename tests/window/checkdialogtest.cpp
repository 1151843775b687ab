// The dialogs that work on an open database: what they begin with, and what can be used in them.

#include "catalogue/catalogue.h"
#include "qrb/loader.h"
#include "tests/window/dialogprobe.h"
#include "tests/window/guitestmain.h"
#include "tests/window/samplewindow.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QSpinBox>
#include <QTabWidget>
#include <QtTest>
#include <memory>

using namespace tarvo::window;

namespace pointcloud = tarvo::qrb::pointcloud;
using Step = ModalScript::Step;

class CheckDialogTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase();

    void levelOfDetailShowsWhatIsStored();
    void levelOfDetailWritesWhatIsChosen();
    void validationBeginsWithTheMatchingSchema();
    void validationHasAStrictWay();
    void namedValueButtonsFollowTheRow();
    void metaDataEditorTellsWhatHoldsForTheItem();

private:
    std::unique_ptr<SampleDatabase> m_sample;
};

void CheckDialogTest::initTestCase() {
    tarvo::qrb::loadLibrary("");
    m_sample = std::make_unique<SampleDatabase>();
    QVERIFY2(m_sample->error().isEmpty(), qUtf8Printable(m_sample->error()));
}

void CheckDialogTest::cleanupTestCase() {
    tarvo::qrb::freeLibrary();
}

void CheckDialogTest::levelOfDetailShowsWhatIsStored() {
    const struct { std::uint32_t mode, size; } stored[] = {{1, 35}, {2, 0}, {2, 4}};
    const SampleWindow window(m_sample->copy());
    for (const auto& each : stored) {
        {
            auto& database = window.database();
            pointcloud::TransactionGuard guard(database.transactions(), "LOD", "tests");
            database.management().setLodMode(each.mode);
            database.management().setChunkSizeLOD(each.size);
            guard.commit();
        }
        window.window().refreshPanels();
        window.run(
            "actionManagementLevelOfDetail", {[&](QDialog* dialog) {
                const int mode = in<QComboBox>(dialog, "editLodMode")->currentIndex();
                const int percent = in<QSpinBox>(dialog, "editLodSizeThinout")->value();
                const auto* combine = in<QComboBox>(dialog, "editLodSizeCombine");
                const int level = combine->currentIndex();
                const QStringList texts = {combine->itemText(0), combine->itemText(2)};
                const int levels = combine->count();
                const QStringList disabled =
                    disabledOf(dialog, {"editLodSizeThinout", "editLodSizeCombine"});
                const QString hint = in<QLabel>(dialog, "labelLodSizeHint")->text();
                const bool working = in<QProgressBar>(dialog, "progressBar")->isVisible();
                const QString title = dialog->windowTitle();
                ModalScript::press("Close")(dialog);
                QCOMPARE(title, "Level of Detail Settings");
                QCOMPARE(mode, static_cast<int>(each.mode) - 1);
                QCOMPARE(each.mode == 1 ? percent : level, static_cast<int>(each.size));
                QCOMPARE(disabled,
                         QStringList(each.mode == 1 ? "editLodSizeCombine" : "editLodSizeThinout"));
                QCOMPARE(levels, 17);
                QCOMPARE(texts, QStringList({"0 (off)", "2 (up to 64 points per node)"}));
                QCOMPARE(hint, "Set size to 0 (off) to delete any existing level of detail data.");
                QVERIFY(!working);
            }});
        const QString shown = window.child<QLineEdit>("editLevelOfDetail")->text();
        QCOMPARE(shown, each.size == 0   ? "disabled"
                        : each.mode == 1 ? "mode: thinout, size: up to 35 % of the original points"
                                         : "mode: combine, size: 4 (up to 4,096 points per node)");
    }
}

void CheckDialogTest::levelOfDetailWritesWhatIsChosen() {
    const SampleWindow window(m_sample->copy());
    const auto apply = [&](int mode, const char* field, int size) {
        window.run("actionManagementLevelOfDetail",
                   {[&](QDialog* dialog) {
                        in<QComboBox>(dialog, "editLodMode")->setCurrentIndex(mode);
                        if (mode == 0)
                            in<QSpinBox>(dialog, field)->setValue(size);
                        else
                            in<QComboBox>(dialog, field)->setCurrentIndex(size);
                        ModalScript::press("Apply")(dialog);
                        ModalScript::press("Close")(dialog);
                    },
                    ModalScript::press("OK")});
        const auto& database = window.database();
        const auto details = database.transactions().details(database.transactions().current());
        return QStringList({QString::number(database.management().getLodMode()),
                            QString::number(database.management().getChunkSizeLOD()),
                            QString::fromStdString(details.title),
                            QString::fromStdString(details.comments),
                            QString::fromStdString(details.settings),
                            QString::fromStdString(details.agent).section(' ', 0, 0)});
    };
    QCOMPARE(apply(1, "editLodSizeCombine", 3),
             QStringList({"2", "3", "Update LOD", "LOD mode: 2\nLOD size: 3",
                          "{\"lodMode\":2,\"chunkSizeLOD\":3}", "qrbadmin"}));
    QCOMPARE(apply(0, "editLodSizeThinout", 12),
             QStringList({"1", "12", "Update LOD", "LOD mode: 1\nLOD size: 12",
                          "{\"lodMode\":1,\"chunkSizeLOD\":12}", "qrbadmin"}));
    QCOMPARE(apply(1, "editLodSizeCombine", 0).mid(0, 2), QStringList({"2", "0"}));
}

void CheckDialogTest::validationBeginsWithTheMatchingSchema() {
    const QMap<QString, QString> expected = {
        {"any.qrbx", "qrbx"}, {"any.AVG.sbx", "avg.sbx"}, {"any.sp3", "sp{C}"}, {"any.dat", ""}};
    for (const QString& name : expected.keys()) {
        const SampleWindow window(m_sample->copy(name));
        window.run("actionValidate", {[&](QDialog* dialog) {
                       const auto* list = in<QComboBox>(dialog, "listSchema");
                       auto* schema = in<QPlainTextEdit>(dialog, "editSchema");
                       const QString title = dialog->windowTitle();
                       const QString chosen = list->currentText();
                       const int index = list->currentIndex();
                       const int count = list->count();
                       const QString text = schema->toPlainText();
                       const QString page =
                           in<QTabWidget>(dialog, "tabWidget")->currentWidget()->objectName();
                       const bool strict = in<QCheckBox>(dialog, "editStrict")->isChecked();
                       const bool readOnly = in<QPlainTextEdit>(dialog, "editResult")->isReadOnly();
                       const bool isDefault =
                           in<QPushButton>(dialog, "buttonValidate")->isDefault();
                       ModalScript::press("Close")(dialog);
                       QCOMPARE(title, "Validate Database");
                       QCOMPARE(chosen, expected[name]);
                       QCOMPARE(index < 0, expected[name].isEmpty());
                       QCOMPARE(count, static_cast<int>(tarvo::catalogue::schemas().size()));
                       QCOMPARE(text.isEmpty(), expected[name].isEmpty());
                       QCOMPARE(page, "tabSchema");
                       QVERIFY(!strict && readOnly && isDefault);
                   }});
        window.run("actionClose", {});
        QFile::remove(m_sample->path(name));
    }
}

void CheckDialogTest::validationHasAStrictWay() {
    const SampleWindow window(m_sample->copy());
    QStringList attributes;
    for (const std::string& name : window.database().pointAttributes().list())
        if (name != "own.single")
            attributes += '"' + QString::fromStdString(name) + '"';
    const QString schema = QString(R"({"identifier":"own","extension":"own","attributes":[%0],)"
                                   R"("metadata":[]})")
                               .arg(attributes.join(','));
    const auto validate = [&](bool strict, std::vector<Step> after) {
        QString result;
        QString page;
        after.insert(after.begin(), [&](QDialog* dialog) {
            in<QPlainTextEdit>(dialog, "editSchema")->setPlainText(schema);
            in<QPlainTextEdit>(dialog, "editResult")->setPlainText("from before");
            in<QCheckBox>(dialog, "editStrict")->setChecked(strict);
            ModalScript::press("Validate")(dialog);
            result = in<QPlainTextEdit>(dialog, "editResult")->toPlainText();
            page = in<QTabWidget>(dialog, "tabWidget")->currentWidget()->objectName();
            ModalScript::press("Close")(dialog);
        });
        window.run("actionValidate", std::move(after));
        return page + ": " + result;
    };
    QCOMPARE(validate(false, {}), "tabResult: No problems detected!");
    const QString strict = validate(true, {ModalScript::press("OK")});
    QVERIFY2(strict.contains("own.single") && !strict.contains("No problems detected!") &&
                 !strict.contains("from before"),
             qUtf8Printable(strict));
}

void CheckDialogTest::namedValueButtonsFollowTheRow() {
    const SampleWindow window(m_sample->copy());
    window.begin();
    window.driver().showTab("tabPointAttributes");
    QVERIFY(window.driver().select("treePointAttributes", "own.single"));
    QStringList states;
    window.run(
        "actionPointAttributeEdit",
        {[&](QDialog* dialog) {
             ModalScript::pressButton(
                 dialog, in<QPushButton>(dialog, "buttonNamedValues")->text().remove('&'));
             dialog->reject();
         },
         [&](QDialog* dialog) {
             const auto state = [&] {
                 QString enabled;
                 for (const char* name :
                      {"actionAdd", "actionRemove", "actionMoveUp", "actionMoveDown", "actionSort",
                       "actionImport", "actionExport"})
                     enabled += in<QAction>(dialog, name)->isEnabled() ? '1' : '0';
                 states += enabled;
             };
             const auto add = [&](const char* value) {
                 in<QAction>(dialog, "actionAdd")->trigger();
                 auto* editor = in<QWidget>(dialog, "tableNamedValues")->findChild<QLineEdit*>();
                 QVERIFY(editor);
                 QTest::keyClick(editor, Qt::Key_A, Qt::ControlModifier);
                 QTest::keyClicks(editor, value);
                 QTest::keyClick(editor, Qt::Key_Return);
                 QTRY_VERIFY(!in<QWidget>(dialog, "tableNamedValues")->findChild<QLineEdit*>());
             };
             state();  // nothing there
             add("1");
             state();  // one row
             add("2");
             state();  // the last of two
             in<QAction>(dialog, "actionMoveUp")->trigger();
             state();  // the first of two
             dialog->reject();
         }});
    QCOMPARE(states, QStringList({"1000010", "1100011", "1110111", "1101111"}));
    QVERIFY(window.database().pointAttributes().get("own.single").namedValues.empty());
}

void CheckDialogTest::metaDataEditorTellsWhatHoldsForTheItem() {
    const SampleWindow window(m_sample->copy());
    window.driver().showTab("tabMetaData");
    const auto visible = [&](const char* item) {
        QStringList labels;
        window.driver().select("treeMetaData", item);
        window.run("actionMetaDataEdit", {[&](QDialog* dialog) {
                       for (const char* name :
                            {"labelTransaction", "labelSigned", "labelBytes", "labelHeld"})
                           if (in<QLabel>(dialog, name)->isVisible())
                               labels += name;
                       const QString title = dialog->windowTitle();
                       const bool named = in<QComboBox>(dialog, "editName")->isEnabled();
                       dialog->reject();
                       QCOMPARE(title, QString("Meta Data Item - %0").arg(item));
                       QVERIFY(!named);
                   }});
        return labels;
    };
    QCOMPARE(visible("own.note"), QStringList("labelTransaction"));
    QCOMPARE(visible("own.signed"), QStringList({"labelTransaction", "labelSigned"}));
    window.begin();
    window.driver().showTab("tabMetaData");
    QCOMPARE(visible("own.note"), QStringList());
    QCOMPARE(visible("own.signed"), QStringList("labelSigned"));
    window.run("actionMetaDataAdd", {[](QDialog* dialog) {
                   auto* name = in<QComboBox>(dialog, "editName");
                   QList<bool> ok = {isOkEnabled(dialog)};
                   for (const char* text : {"own.note", "own.new", "  "}) {
                       name->setEditText(text);
                       ok += isOkEnabled(dialog);
                   }
                   const QString title = dialog->windowTitle();
                   name->setEditText("");
                   dialog->reject();
                   QCOMPARE(title, "New Meta Data Item");
                   QCOMPARE(ok, QList<bool>({false, false, true, false}));
               }});
}

GUI_TEST_MAIN(CheckDialogTest)
#include "checkdialogtest.moc"
