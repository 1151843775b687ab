// What dialogs and the window remember from one time to the next, and what they do not.

#include "qrb/loader.h"
#include "tests/window/alldialogs.h"
#include "tests/window/attributesamples.h"
#include "tests/window/dialogprobe.h"
#include "tests/window/guitestmain.h"
#include "tests/window/samplewindow.h"
#include "window/common/programsettings.h"
#include "window/dialogs/attribute/dialognamedvalues.h"
#include "window/dialogs/attribute/dialogpointattributelod.h"
#include "window/dialogs/dialograngequery.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSplitter>
#include <QTabWidget>
#include <QTreeWidget>
#include <QtTest>
#include <map>
#include <memory>

using namespace tarvo::window;

using Step = ModalScript::Step;

namespace {

// A size that no dialog begins with.
QSize sizeOf(const QDialog* dialog) {
    return dialog->minimumSizeHint().expandedTo(dialog->minimumSize()) + QSize(31, 23);
}

void showTransaction(const SampleWindow& window, const char* id, Step step) {
    window.driver().showTab("tabTransactions");
    auto* row = window.driver().select("treeTransactions", id);
    QVERIFY(row);
    ModalScript script({std::move(step)});
    QMetaObject::invokeMethod(window.child<QTreeWidget>("treeTransactions"), "itemDoubleClicked",
                              Q_ARG(QTreeWidgetItem*, row), Q_ARG(int, 0));
    QCOMPARE(script.answered(), 1u);
}

}  // namespace

class DialogSettingsTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase() { tarvo::qrb::freeLibrary(); }

    void dialogsComeBackInTheirSize_data();
    void dialogsComeBackInTheirSize();
    void eachSignatureDialogKeepsItsOwnKey();
    void transactionKeepsThePageOfItsSettings();
    void checkBoxesOfDialogsAreKept();
    void rangeQueryKeepsWhatWasAccepted();
    void rangeQueryKeepsEachBoxForItself();
    void rangeQueryCountsDecimalsFromTheResolution_data();
    void rangeQueryCountsDecimalsFromTheResolution();
    void rangeQueryBeginsWithClosedBoundsAndNamesTheUnit();
    void columnsAndGroupsAreKeptByName();
    void splitterOfTheMetaDataEditorIsKept();

private:
    std::unique_ptr<SampleDatabase> m_sample;
};

void DialogSettingsTest::initTestCase() {
    tarvo::qrb::loadLibrary("");
    m_sample = std::make_unique<SampleDatabase>();
    QVERIFY2(m_sample->error().isEmpty(), qUtf8Printable(m_sample->error()));
}

void DialogSettingsTest::dialogsComeBackInTheirSize_data() {
    QTest::addColumn<QString>("group");
    for (const auto& [group, open] : allDialogs())
        QTest::newRow(qUtf8Printable(group)) << group;
}

void DialogSettingsTest::dialogsComeBackInTheirSize() {
    QFETCH(QString, group);
    const OpenDialog& open = allDialogs().at(group);
    // The one that keeps its settings at the top level.
    const QString place = group == "DialogValidate" ? QString() : group;
    const SampleWindow window(m_sample->copy());
    QSize size;
    open(window, [&](QDialog* dialog) {
        QCOMPARE(kindOf(dialog), group);
        QVERIFY(!DialogSettings(place).contains("Geometry"));
        size = sizeOf(dialog);
        QVERIFY(size != dialog->size());
        dialog->resize(size);
        dialog->reject();  // remembered however it is left
    });
    QVERIFY(DialogSettings(place).contains("Geometry"));
    open(window, [&](QDialog* dialog) {
        const QSize again = dialog->size();
        dialog->reject();
        QCOMPARE(again, size);
    });
}

void DialogSettingsTest::eachSignatureDialogKeepsItsOwnKey() {
    const SampleWindow window(m_sample->copy());
    const QMap<QString, QString> keys = {{"DialogTransactionCommit", "01 02"},
                                         {"DialogChangelogSignature", "0x3 nonsense"},
                                         {"DialogMetaDataSignature", "ff\nfe"}};
    for (const QString& group : keys.keys()) {
        allDialogs().at(group)(window, [&](QDialog* dialog) {
            auto* key = in<QPlainTextEdit>(dialog, "editKey");
            auto* method = in<QComboBox>(dialog, "editMethod");
            const bool commit = group == "DialogTransactionCommit";
            const QString before = key->toPlainText();
            const QString bytes = in<QLabel>(dialog, "labelKeySize")->text();
            QStringList methods;
            for (int i = 0; i < method->count(); ++i)
                methods += method->itemText(i);
            method->setCurrentIndex(method->count() - 1);
            key->setPlainText(keys[group]);
            // No key is lost where no signature is wanted for once.
            if (commit)
                method->setCurrentIndex(0);
            dialog->reject();
            QCOMPARE(before, "");
            QCOMPARE(bytes, "(0 bytes)");
            QCOMPARE(methods, commit ? QStringList({"0 (none)", "1 (default)"})
                                     : QStringList("1 (default)"));
        });
        QCOMPARE(DialogSettings(group).value("SignatureKey").toByteArray(), keys[group].toUtf8());
        QCOMPARE(DialogSettings(group).value("SignatureMethod").toInt(), 0);
    }
    for (const QString& group : keys.keys())
        allDialogs().at(group)(window, [&](QDialog* dialog) {
            const QString key = in<QPlainTextEdit>(dialog, "editKey")->toPlainText();
            dialog->reject();
            QCOMPARE(key, keys[group]);
        });
    const auto keyFieldsEnabled = [](QDialog* dialog) {
        int count = 0;
        for (const char* name : {"labelKey", "editKey", "labelKeySize", "buttonRandomKey"})
            count += in<QWidget>(dialog, name)->isEnabled();
        return count;
    };
    allDialogs().at("DialogTransactionCommit")(window, [&](QDialog* dialog) {
        const int enabled = keyFieldsEnabled(dialog);
        in<QComboBox>(dialog, "editMethod")->setCurrentIndex(1);
        dialog->reject();
        QCOMPARE(enabled, 0);
    });
    allDialogs().at("DialogTransactionCommit")(window, [&](QDialog* dialog) {
        const int method = in<QComboBox>(dialog, "editMethod")->currentIndex();
        const int enabled = keyFieldsEnabled(dialog);
        dialog->reject();
        QCOMPARE(method, 1);
        QCOMPARE(enabled, 4);
    });
    // A method of another library, or of a damaged settings file.
    for (const QString& group : keys.keys())
        for (const int gone : {7, -3}) {
            DialogSettings(group).setValue("SignatureMethod", gone);
            allDialogs().at(group)(window, [&](QDialog* dialog) {
                const int method = in<QComboBox>(dialog, "editMethod")->currentIndex();
                dialog->reject();
                QCOMPARE(method, 0);
            });
        }
}

void DialogSettingsTest::transactionKeepsThePageOfItsSettings() {
    const SampleWindow window(m_sample->copy());
    showTransaction(window, "2", [](QDialog* dialog) {
        auto* pages = in<QTabWidget>(dialog, "tabWidgetSettings");
        const int page = pages->currentIndex();
        pages->setCurrentIndex(1);
        const QString text = in<QPlainTextEdit>(dialog, "editSettingsFormatted")->toPlainText();
        dialog->reject();
        QCOMPARE(page, 0);
        QVERIFY2(text.startsWith("{\n"), qUtf8Printable(text));  // laid out at once
    });
    QCOMPARE(DialogSettings("DialogTransaction").value("SettingsPage").toInt(), 1);
    showTransaction(window, "2", [](QDialog* dialog) {
        const int page = in<QTabWidget>(dialog, "tabWidgetSettings")->currentIndex();
        const QString text = in<QPlainTextEdit>(dialog, "editSettingsFormatted")->toPlainText();
        dialog->reject();
        QCOMPARE(page, 1);
        QVERIFY2(text.startsWith("{\n") && text.contains("\"b\": 1.50"), qUtf8Printable(text));
    });
    window.run("actionTransactionBegin", {[](QDialog* dialog) {
                   const int page = in<QTabWidget>(dialog, "tabWidgetSettings")->currentIndex();
                   dialog->reject();
                   QCOMPARE(page, 0);  // settings that are to be written
               }});
}

void DialogSettingsTest::checkBoxesOfDialogsAreKept() {
    const struct {
        const char* action;
        const char* box;
        const char* group;
        const char* key;
    } boxes[] = {{"actionValidate", "editStrict", "", "Strict"},
                 {"actionExportAsQRB", "editChangelog", "DialogExportAsQRB", "Changelog"}};
    const SampleWindow window(m_sample->copy());
    for (const auto& each : boxes)
        for (const bool before : {false, true, false}) {
            window.run(each.action, {[&](QDialog* dialog) {
                           auto* box = in<QCheckBox>(dialog, each.box);
                           const bool checked = box->isChecked();
                           box->setChecked(!checked);
                           dialog->reject();
                           QCOMPARE(checked, before);
                       }});
            QCOMPARE(DialogSettings(each.group).value(each.key).toBool(), !before);
        }
}

void DialogSettingsTest::rangeQueryKeepsWhatWasAccepted() {
    ProgramSettings("DialogRangeQuery").remove("");
    const std::vector<PointAttribute> attributes = {byteAttribute("own.a"), byteAttribute("own.b"),
                                                    byteAttribute("own.c")};
    const char* const texts[] = {"LowerBoundValue", "UpperBoundValue", "CenterValue",
                                 "RadiusValue"};
    const char* const boxes[] = {"LowerBoundInclusive", "UpperBoundInclusive", "RadiusInclusive"};
    const auto field = [](const char* key) { return "edit" + QByteArray(key); };
    const auto change = [&](QDialog* dialog) {
        in<QComboBox>(dialog, "editPointAttribute")->setCurrentIndex(1);
        in<QTabWidget>(dialog, "tabWidgetMode")->setCurrentIndex(1);
        int number = 10;
        for (const char* key : texts)
            in<QLineEdit>(dialog, field(key))->setText(QString::number(++number));
        for (const char* key : boxes)
            in<QCheckBox>(dialog, field(key))->setChecked(false);
        dialog->resize(sizeOf(dialog));
    };
    {
        DialogRangeQuery dialog(attributes, nullptr);
        change(&dialog);
        dialog.reject();
    }
    QVERIFY(ProgramSettings("DialogRangeQuery").allKeys().isEmpty());
    {
        DialogRangeQuery dialog(attributes, nullptr);
        change(&dialog);
        dialog.accept();
    }
    QStringList keys = ProgramSettings("DialogRangeQuery").allKeys();
    keys.sort();
    QCOMPARE(keys, QStringList({"CenterValue", "Geometry", "LowerBoundInclusive", "LowerBoundValue",
                                "Mode", "PointAttribute", "RadiusInclusive", "RadiusValue",
                                "UpperBoundInclusive", "UpperBoundValue"}));
    DialogRangeQuery dialog(attributes, nullptr);
    QCOMPARE(in<QComboBox>(&dialog, "editPointAttribute")->currentText(), "own.b");
    QCOMPARE(in<QTabWidget>(&dialog, "tabWidgetMode")->currentIndex(), 1);
    int number = 10;
    for (const char* key : texts)
        QCOMPARE(in<QLineEdit>(&dialog, field(key))->text(), QString::number(++number));
    for (const char* key : boxes)
        QVERIFY2(!in<QCheckBox>(&dialog, field(key))->isChecked(), key);
    QCOMPARE(dialog.size(), sizeOf(&dialog));
    QCOMPARE(dialog.expression(), "(own.b > -1) && (own.b < 27)");
}

void DialogSettingsTest::rangeQueryKeepsEachBoxForItself() {
    ProgramSettings("DialogRangeQuery").remove("");
    const std::vector<PointAttribute> attributes = {byteAttribute("own.a")};
    const char* const boxes[] = {"editLowerBoundInclusive", "editUpperBoundInclusive",
                                 "editRadiusInclusive"};
    for (const int mode : {1, 0})
        for (std::size_t bits = 0; bits < 8; ++bits) {
            {
                DialogRangeQuery dialog(attributes, nullptr);
                in<QTabWidget>(&dialog, "tabWidgetMode")->setCurrentIndex(mode);
                for (std::size_t i = 0; i < 3; ++i)
                    in<QCheckBox>(&dialog, boxes[i])->setChecked(bits >> i & 1);
                dialog.accept();
            }
            DialogRangeQuery dialog(attributes, nullptr);
            QCOMPARE(in<QTabWidget>(&dialog, "tabWidgetMode")->currentIndex(), mode);
            for (std::size_t i = 0; i < 3; ++i)
                QVERIFY2(in<QCheckBox>(&dialog, boxes[i])->isChecked() == bool(bits >> i & 1),
                         boxes[i]);
        }
}

void DialogSettingsTest::rangeQueryCountsDecimalsFromTheResolution_data() {
    QTest::addColumn<double>("resolution");
    QTest::addColumn<QString>("center");
    QTest::addColumn<QString>("radius");
    QTest::addColumn<bool>("inclusive");
    QTest::addColumn<QString>("expression");
    const QString unreadable = "failed to parse center and/or radius!";
    QTest::newRow("hundredths") << 0.01 << "1.5"
                                << "0.25" << true << "(own.a >= 1.25) && (own.a <= 1.75)";
    QTest::newRow("five decimals") << 0.00025 << "1.5"
                                   << "0.25" << false << "(own.a > 1.25000) && (own.a < 1.75000)";
    QTest::newRow("none") << 1.0 << "1.5"
                          << "0.25" << true << "(own.a >= 1) && (own.a <= 2)";
    QTest::newRow("whole numbers stay whole") << 0.01 << "10"
                                              << "2" << true << "(own.a >= 8) && (own.a <= 12)";
    QTest::newRow("one is whole") << 0.01 << "10"
                                  << "2.5" << true << "(own.a >= 7.50) && (own.a <= 12.50)";
    QTest::newRow("below zero") << 1.0 << "-3"
                                << "4" << false << "(own.a > -7) && (own.a < 1)";
    QTest::newRow("another base") << 1.0 << "0x10"
                                  << "1" << true << "(own.a >= 15) && (own.a <= 17)";
    QTest::newRow("groups of digits")
        << 0.01 << "1,000.5"
        << "0.5" << true << "(own.a >= 1000.00) && (own.a <= 1001.00)";
    QTest::newRow("no radius") << 1.0 << "3"
                               << "" << true << unreadable;
    QTest::newRow("no center") << 1.0 << "x"
                               << "1" << true << unreadable;
}

void DialogSettingsTest::rangeQueryCountsDecimalsFromTheResolution() {
    ProgramSettings("DialogRangeQuery").remove("");
    QFETCH(double, resolution);
    QFETCH(QString, center);
    QFETCH(QString, radius);
    QFETCH(bool, inclusive);
    QFETCH(QString, expression);
    auto attribute = byteAttribute("own.a");
    attribute.resolution = resolution;
    DialogRangeQuery dialog({attribute}, nullptr);
    in<QTabWidget>(&dialog, "tabWidgetMode")->setCurrentIndex(1);
    in<QLineEdit>(&dialog, "editCenterValue")->setText(center);
    in<QLineEdit>(&dialog, "editRadiusValue")->setText(radius);
    in<QCheckBox>(&dialog, "editRadiusInclusive")->setChecked(inclusive);
    QCOMPARE(dialog.expression(), expression);
}

void DialogSettingsTest::rangeQueryBeginsWithClosedBoundsAndNamesTheUnit() {
    ProgramSettings("DialogRangeQuery").remove("");
    auto length = byteAttribute("own.length");
    length.unitSymbol = "m";
    auto vector = byteAttribute("own.vector");
    vector.length = 2;
    vector.unitSymbol = "dB";
    DialogRangeQuery dialog({length, vector}, nullptr);
    QCOMPARE(dialog.windowTitle(), "Insert Range Query...");
    auto* attribute = in<QComboBox>(&dialog, "editPointAttribute");
    QStringList names;
    for (int i = 0; i < attribute->count(); ++i)
        names += attribute->itemText(i);
    QCOMPARE(names, QStringList({"own.length", "own.vector[0]", "own.vector[1]"}));
    const auto labels = [&] {
        QStringList result;
        for (const char* name :
             {"labelLowerBound", "labelUpperBound", "labelCenter", "labelRadius"})
            result += in<QLabel>(&dialog, name)->text().remove('&');
        return result;
    };
    QCOMPARE(labels(),
             QStringList({"Lower Bound [m]:", "Upper Bound [m]:", "Center [m]:", "Radius [m]:"}));
    attribute->setCurrentIndex(2);
    QCOMPARE(
        labels(),
        QStringList({"Lower Bound [dB]:", "Upper Bound [dB]:", "Center [dB]:", "Radius [dB]:"}));
    const auto* pages = in<QTabWidget>(&dialog, "tabWidgetMode");
    QCOMPARE(pages->currentIndex(), 0);
    QCOMPARE(pages->tabText(0).remove('&'), "Lower + Upper Bound");
    QCOMPARE(pages->tabText(1).remove('&'), "Center + Radius");
    auto* lower = in<QLineEdit>(&dialog, "editLowerBoundValue");
    auto* upper = in<QLineEdit>(&dialog, "editUpperBoundValue");
    lower->setText("1");
    upper->setText("5");
    QCOMPARE(dialog.expression(), "(own.vector[1] >= 1) && (own.vector[1] <= 5)");
    in<QCheckBox>(&dialog, "editLowerBoundInclusive")->setChecked(false);
    QCOMPARE(dialog.expression(), "(own.vector[1] > 1) && (own.vector[1] <= 5)");
    in<QCheckBox>(&dialog, "editLowerBoundInclusive")->setChecked(true);
    in<QCheckBox>(&dialog, "editUpperBoundInclusive")->setChecked(false);
    QCOMPARE(dialog.expression(), "(own.vector[1] >= 1) && (own.vector[1] < 5)");
    // As typed.
    lower->setText("abc");
    QVERIFY(dialog.expression().startsWith("(own.vector[1] >= abc)"));
}

void DialogSettingsTest::columnsAndGroupsAreKeptByName() {
    const QString file = m_sample->copy();
    const SampleWindow window(file);
    window.driver().showTab("tabPointData");
    auto* chooser = window.child<QListWidget>("listPointAttributes");
    // Of a database that is not open now.
    const QStringList others = {"other.hidden=hidden", "other.shown=visible"};
    ProgramSettings().setValue("Attributes", others);
    const QStringList expected = {"own.constant=visible",    "own.single=hidden",
                                  "own.vector=visible",      "tarvo.class=visible",
                                  "tarvo.id=visible",        "tarvo.reflectance=visible",
                                  "tarvo.timestamp=visible", "tarvo.xyz=hidden"};
    window.run("actionColumnsSortByName", {});
    for (const char* name : {"own.single", "tarvo.xyz"})
        chooser->findItems(name, Qt::MatchExactly).first()->setCheckState(Qt::Unchecked);
    QCOMPARE(ProgramSettings().value("Attributes").toStringList(), expected + others);

    auto* tree = window.child<QTreeWidget>("treePointAttributes");
    const QString group = tree->topLevelItem(1)->text(0);
    tree->topLevelItem(1)->setExpanded(false);
    QVERIFY(ProgramSettings().value("AttributeGroups").toStringList().contains(group + "=0"));
    ProgramSettings().setValue("AttributeGroups",
                               ProgramSettings().value("AttributeGroups").toStringList() +
                                   QStringList({"Other folded=0", "Other open=1"}));

    // Who only looks at a database changes nothing, not even the order.
    ProgramSettings().setValue("Attributes", others + expected);
    MainWindow second;
    second.openDatabase(file, true);
    QCOMPARE(ProgramSettings().value("Attributes").toStringList(), others + expected);
    const auto* again = in<QListWidget>(&second, "listPointAttributes");
    QStringList entries;
    for (int i = 0; i < again->count(); ++i)
        entries += again->item(i)->text() + '=' +
                   (again->item(i)->checkState() == Qt::Checked ? "visible" : "hidden");
    QCOMPARE(entries, expected);
    const auto* groups = in<QTreeWidget>(&second, "treePointAttributes");
    for (int i = 0; i < groups->topLevelItemCount(); ++i)
        QCOMPARE(groups->topLevelItem(i)->isExpanded(), groups->topLevelItem(i)->text(0) != group);
    in<QTreeWidget>(&second, "treePointAttributes")->topLevelItem(1)->setExpanded(true);
    QVERIFY(ProgramSettings().value("AttributeGroups").toStringList().contains(group + "=1"));
    for (const char* entry : {"Other folded=0", "Other open=1"})
        QVERIFY(ProgramSettings().value("AttributeGroups").toStringList().contains(entry));
}

void DialogSettingsTest::splitterOfTheMetaDataEditorIsKept() {
    const SampleWindow window(m_sample->copy());
    const OpenDialog& open = allDialogs().at("DialogMetaData");
    QList<int> sizes;
    open(window, [&](QDialog* dialog) {
        auto* splitter = in<QSplitter>(dialog, "splitter");
        const int whole = splitter->sizes().value(0) + splitter->sizes().value(1);
        splitter->setSizes({whole / 2, whole - whole / 2});
        sizes = splitter->sizes();
        dialog->reject();
    });
    open(window, [&](QDialog* dialog) {
        const QList<int> again = in<QSplitter>(dialog, "splitter")->sizes();
        dialog->reject();
        QCOMPARE(again, sizes);
    });
}

GUI_TEST_MAIN(DialogSettingsTest)
#include "dialogsettingstest.moc"
