// Numbers in English and German: what is shown, what is typed, and what stays as it is for filters.

#include "qrb/loader.h"
#include "tests/window/attributesamples.h"
#include "tests/window/guitestmain.h"
#include "tests/window/samplewindow.h"
#include "window/app/language.h"
#include "window/common/localnumbers.h"
#include "window/common/programsettings.h"
#include "window/common/textformat.h"
#include "window/dialogs/attribute/numberedit.h"
#include "window/dialogs/dialogimportpoints.h"
#include "window/dialogs/dialograngequery.h"
#include "window/frame/importfiles.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QLabel>
#include <QLineEdit>
#include <QTabWidget>
#include <QTemporaryFile>
#include <QTreeWidget>
#include <QtTest>

using namespace tarvo::window;

class NumbersTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { tarvo::qrb::loadLibrary(""); }
    void cleanup() { useLanguage("en"); }
    void cleanupTestCase() { tarvo::qrb::freeLibrary(); }

    void sizesAndDurationsHaveTheMarkOfTheLanguage();
    void typedNumbersAreReadWithCommaAndPoint_data();
    void typedNumbersAreReadWithCommaAndPoint();
    void rangesBecomeFiltersWithPoints();
    void numberFieldsTakeBothMarks();
    void importsShowNumbersInOneWay();
    void copiesKeepThePoint();
};

void NumbersTest::sizesAndDurationsHaveTheMarkOfTheLanguage() {
    useLanguage("de");
    QCOMPARE(humanReadableSize(1536), "1,50 KB");
    QCOMPARE(humanReadableSize(1023), "1023 B");
    QCOMPARE(durationText(3'600'000 + 65 * 60'000 + 7'005), "2:05:07,005");
    QCOMPARE(localNumber(-0.25), "-0,25");
    useLanguage("de-CH");
    QCOMPARE(humanReadableSize(1536), "1.50 KB");
}

void NumbersTest::typedNumbersAreReadWithCommaAndPoint_data() {
    QTest::addColumn<QString>("german");
    for (const auto& [typed, german] : std::initializer_list<std::pair<const char*, const char*>>{
             {"1,5", "1.5"},
             {"-0,001", "-0.001"},
             {"1,5e-3", "1.5e-3"},
             {"1.234,5", "1234.5"},
             {"1.234.567", "1.234.567"},
             {"1.234", "1.234"},  // a coordinate, as the table of points shows it
             {"1.5", "1.5"},
             {"1e5", "1e5"},
             {"0x10", "0x10"},
             {"1,2,3", "1,2,3"},
             {"1,234.5", "1,234.5"},
             {"own.element[0]", "own.element[0]"},
             {"tarvo.xyz:minimum", "tarvo.xyz:minimum"},
             {"", ""}})
        QTest::newRow(typed) << QString(german);
}

void NumbersTest::typedNumbersAreReadWithCommaAndPoint() {
    QFETCH(QString, german);
    const QString typed = QTest::currentDataTag();
    for (const char* language : {"en", "de-CH"}) {
        useLanguage(language);
        QCOMPARE(withPoint(typed), typed);
    }
    useLanguage("de");
    QCOMPARE(withPoint(typed), german);
}

void NumbersTest::rangesBecomeFiltersWithPoints() {
    auto attribute = byteAttribute("own.a");
    attribute.resolution = 0.01;
    for (const auto& [language, lower, upper, center] :
         std::initializer_list<std::array<const char*, 4>>{{"en", "1.5", "1.234", "1,000.5"},
                                                           {"de", "1,5", "1.234", "1.000,5"}}) {
        useLanguage(language);
        ProgramSettings("DialogRangeQuery").remove("");
        DialogRangeQuery dialog({attribute}, nullptr);
        in<QLineEdit>(&dialog, "editLowerBoundValue")->setText(lower);
        in<QLineEdit>(&dialog, "editUpperBoundValue")->setText(upper);
        QCOMPARE(dialog.expression(), "(own.a >= 1.5) && (own.a <= 1.234)");
        in<QTabWidget>(&dialog, "tabWidgetMode")->setCurrentIndex(1);
        in<QLineEdit>(&dialog, "editCenterValue")->setText(center);
        in<QLineEdit>(&dialog, "editRadiusValue")->setText(lower);
        QCOMPARE(dialog.expression(), "(own.a >= 999.00) && (own.a <= 1002.00)");
        // A point is no mark of groups, also where the language has it for one.
        in<QLineEdit>(&dialog, "editCenterValue")->setText("1.000");
        in<QLineEdit>(&dialog, "editRadiusValue")->setText("1");
        QCOMPARE(dialog.expression(), "(own.a >= 0.00) && (own.a <= 2.00)");
        dialog.accept();
        QCOMPARE(ProgramSettings("DialogRangeQuery").value("LowerBoundValue").toString(), "1.5");
    }
}

void NumbersTest::numberFieldsTakeBothMarks() {
    useLanguage("de");
    NumberEdit edit;
    edit.setNumber(0.25);
    QCOMPARE(edit.text(), "0,25");
    QCOMPARE(edit.number().value_or(-1), 0.25);
    for (const char* text : {"0,125", "0.125", " 0,125 "}) {
        edit.setText(text);
        QCOMPARE(edit.number().value_or(-1), 0.125);
    }
    QTest::keyClick(&edit, Qt::Key_Up);
    QCOMPARE(edit.text(), "0,126");
    edit.setText("1,2,3");
    QVERIFY(!edit.number());
    ImportShape shape{1, "0,05", {}};
    QCOMPARE(shape.shape().distance, 0.05);
    shape.distance = "0.05";
    QCOMPARE(shape.shape().distance, 0.05);
}

void NumbersTest::importsShowNumbersInOneWay() {
    useLanguage("de");
    QTemporaryFile table("XXXXXX.csv");
    QVERIFY(table.open() && table.write("x,y,z\n636001.76,2.5,3\n637177.98,nan,3\n") > 0);
    table.close();
    ImportFiles files;
    files.read({table.fileName()}, [](const std::string&, double) {});
    ImportFindings findings;
    files.describe(findings);
    QCOMPARE(findings.columns.at(0).range, "636001,76 ... 637177,98");
    QCOMPARE(findings.columns.at(0).first, "636001,76   637177,98");
    QCOMPARE(findings.columns.at(1).first, "2,5   nan");
}

void NumbersTest::copiesKeepThePoint() {
    useLanguage("de");
    const SampleDatabase sample;
    QVERIFY2(sample.error().isEmpty(), qUtf8Printable(sample.error()));
    const SampleWindow window(sample.copy());
    QVERIFY2(window.child<QLineEdit>("editDatabaseSize")
                 ->text()
                 .contains(QRegularExpression(R"(^\d+,\d\d KB \([\d.]+ B\)$)")),
             qUtf8Printable(window.child<QLineEdit>("editDatabaseSize")->text()));
    window.driver().showTab("tabPointData");
    window.child<QAction>("actionQuerySelectNext")->trigger();
    QVERIFY2(window.child<QLabel>("labelPointRows")->text().contains("(mehr mit F3"),
             qUtf8Printable(window.child<QLabel>("labelPointRows")->text()));
    auto* tree = window.child<QTreeWidget>("treePointData");
    tree->setCurrentItem(tree->topLevelItem(0), 1);
    const QString value = tree->topLevelItem(0)->text(1);
    QVERIFY2(value.contains('.'), qUtf8Printable(value));
    window.child<QAction>("actionQuerySelectCopyCsv")->trigger();
    QVERIFY(QApplication::clipboard()->text().contains(value + ','));
    window.child<QAction>("actionQuerySelectCopyCellFilter")->trigger();
    const QString filter = QApplication::clipboard()->text();
    QVERIFY2(filter.contains('.') && !filter.contains(','), qUtf8Printable(filter));
}

GUI_TEST_MAIN(NumbersTest)
#include "numberstest.moc"
