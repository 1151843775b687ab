// The helpers that need no database.

#include "tests/window/guitestmain.h"
#include "window/common/clipboard.h"
#include "window/common/filefilter.h"
#include "window/common/filterhistory.h"
#include "window/common/guard.h"
#include "window/common/programsettings.h"
#include "window/common/recentfiles.h"
#include "window/common/textformat.h"
#include "window/common/theme.h"
#include "window/dialogs/filterinsertmenu.h"
#include "window/frame/commandline.h"
#include "window/frame/librarychoice.h"
#include "window/frame/mimefile.h"
#include "window/panels/databasesummary.h"
#include "window/panels/indexsearch.h"
#include "window/panels/valuenames.h"
#include "window/widgets/numerictreewidgetitem.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QLineEdit>
#include <QMenu>
#include <QMimeData>
#include <QTemporaryFile>
#include <QTextDocument>
#include <QToolButton>
#include <QToolTip>
#include <QTreeWidget>
#include <QUrl>
#include <QtTest>

using namespace tarvo::window;

class HelpersTest : public QObject {
    Q_OBJECT

private slots:
    void init();
    void sizesKeepTwoDecimalsFromKilobytesOn();
    void libraryVersionWithoutHashIsUnknown();
    void toolTipsShowTagsAsText();
    void quotedTextsReadBackInTheirLanguage_data();
    void quotedTextsReadBackInTheirLanguage();
    void copyMenuQuotesAsTheActionSays();
    void fileDialogFilterStartsWithAllPatterns();
    void numericItemsSortByNumber();
    void filterHistoryMovesAndDropsEntries();
    void showingTheHistoryKeepsTextAndSignalsNothing();
    void recentFilesKeepTheNewestTen();
    void settingsFilesArePrivate();
    void windowRectangleTakesTheFirstThatConverts();
    void helpNeedsNoWindow();
    void mimeFileTakesTheFirstUrlOrAnExistingName();
    void librariesAskedForInARowAreTakenBack();
    void filterInsertions_data();
    void filterInsertions();
    void insertionsReplaceWhatIsSelected();
    void commandsAndNodeListsAreTold();
    void summaryTexts();
    void textsOfSeveralLinesBecomeOne();
    void largeWholeNumbersHaveTheirOwnNames();
    void annotationColourFollowsThePalette();

public slots:
    void onCopy() { copyToClipboard("a\"b", qobject_cast<QAction*>(sender())); }
};

void HelpersTest::init() {
    ProgramSettings().remove("");
}

void HelpersTest::sizesKeepTwoDecimalsFromKilobytesOn() {
    QCOMPARE(durationText(59'999), "0:00:59.999");
    QCOMPARE(durationText(3'600'000 + 65 * 60'000 + 7'005), "2:05:07.005");
    QCOMPARE(durationText(100 * 3'600'000), "100:00:00.000");
    QCOMPARE(humanReadableSize(0), "0 B");
    QCOMPARE(humanReadableSize(1023), "1023 B");
    QCOMPARE(humanReadableSize(1536), "1.50 KB");
    QCOMPARE(humanReadableSize(1048576), "1.00 MB");
    QCOMPARE(humanReadableSize(std::uint64_t{5000} << 40), "5000.00 TB");
}

void HelpersTest::libraryVersionWithoutHashIsUnknown() {
    QCOMPARE(shortLibraryVersion("QRB Library 1.2.3-0aF9 (x)\nsecond line"), "1.2.3-0aF9");
    QCOMPARE(shortLibraryVersion("QRB Library 1.2.3"), "2.x.x");
    QCOMPARE(shortLibraryVersion("my QRB Library 1.2.3-0aF9"), "2.x.x");
}

void HelpersTest::toolTipsShowTagsAsText() {
    QCOMPARE(plainToolTip("tarvo.xyz[0] < 3\nx"), "tarvo.xyz[0] < 3\nx");
    QTextDocument shown;
    shown.setHtml(plainToolTip("<img src=\"/etc/x.png\">\n<b>name</b>"));
    QCOMPARE(shown.toPlainText(), "<img src=\"/etc/x.png\">\n<b>name</b>");
}

void HelpersTest::quotedTextsReadBackInTheirLanguage_data() {
    QTest::addColumn<int>("quoting");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("quoted");
    const auto row = [](const char* tag, Quoting quoting, const QString& text,
                        const QString& quoted) {
        QTest::newRow(tag) << static_cast<int>(quoting) << text << quoted;
    };
    row("json", Quoting::JSON, "a\"\\\n\x01", R"("a\"\\\n\u0001")");
    row("c++", Quoting::CPP,
        "a\"\\\n\x01"
        "7",
        R"("a\"\\\n\0017")");
    row("pascal", Quoting::PASCAL, "it's\r\nso", "'it''s'#13#10'so'");
    row("pascal empty", Quoting::PASCAL, "", "''");
    row("python", Quoting::PYTHON, "a\"\\", "\"\"\"\na\"\\\n\"\"\"");
    row("python empty", Quoting::PYTHON, "", "\"\"\"\n\n\"\"\"");
}

void HelpersTest::quotedTextsReadBackInTheirLanguage() {
    QFETCH(int, quoting);
    QFETCH(QString, text);
    QTEST(quoted(text, static_cast<Quoting>(quoting)), "quoted");
}

void HelpersTest::copyMenuQuotesAsTheActionSays() {
    QWidget parent;
    QMenu* menu = createCopyMenu(&parent, this, SLOT(onCopy()));
    QCOMPARE(menu->actions().size(), 4);
    menu->actions()[0]->trigger();
    QCOMPARE(QApplication::clipboard()->text(), R"("a\"b")");
    menu->actions()[3]->trigger();
    QCOMPARE(QApplication::clipboard()->text(), "\"\"\"\na\"b\n\"\"\"");
}

void HelpersTest::fileDialogFilterStartsWithAllPatterns() {
    const QString filter = databaseFileDialogFilter();
    const QStringList entries = filter.split(";;");
    QVERIFY(entries.first().startsWith("All supported types (*.qrbx *.wdcx *.sdcx *.sodx"));
    QVERIFY(entries.first().endsWith("*.wex *.\?\?x *.\?\?\?x)"));
    QCOMPARE(entries.last(), "All files (*.*)");
    QCOMPARE(entries.size(), 13);
}

void HelpersTest::numericItemsSortByNumber() {
    QTreeWidget tree;
    for (const char* text : {"b", "100", "10*", "9", "a", "11", "-1.5", "2*"})
        new NumericTreeWidgetItem(&tree, QStringList(text));
    tree.sortByColumn(0, Qt::AscendingOrder);
    QStringList order;
    for (int i = 0; i < tree.topLevelItemCount(); ++i)
        order += tree.topLevelItem(i)->text(0);
    QCOMPARE(order, QStringList({"-1.5", "2*", "9", "10*", "11", "100", "a", "b"}));
}

void HelpersTest::filterHistoryMovesAndDropsEntries() {
    for (int i = 1; i <= 11; ++i)
        FilterHistory::add(QString("f%1").arg(i));
    FilterHistory::add("  f5 ");
    const QStringList list = FilterHistory::list();
    QCOMPARE(list.size(), 10);
    QCOMPARE(list.mid(0, 3), QStringList({"f5", "f11", "f10"}));
    QCOMPARE(list.last(), "f2");
    QCOMPARE(list.count("f5"), 1);
}

void HelpersTest::showingTheHistoryKeepsTextAndSignalsNothing() {
    FilterHistory::add("first");
    FilterHistory::add("second");
    QComboBox combo;
    combo.setEditable(true);
    combo.setEditText("first");
    QSignalSpy changes(&combo, &QComboBox::currentIndexChanged);
    QSignalSpy edits(combo.lineEdit(), &QLineEdit::textChanged);
    FilterHistory::show(&combo);
    QCOMPARE(edits.size(), 0);
    QCOMPARE(combo.currentText(), "first");
    QCOMPARE(combo.count(), 2);
    // Losing the focus must not count as a choice.
    emit combo.lineEdit()->editingFinished();
    QCOMPARE(changes.size(), 0);
}

void HelpersTest::recentFilesKeepTheNewestTen() {
    for (int i = 1; i <= 11; ++i)
        RecentFiles::add(QString("/data/%1.qrbx").arg(i));
    RecentFiles::add("/data/4.qrbx");
    const QStringList list = RecentFiles::list();
    QCOMPARE(list.size(), 10);
    QCOMPARE(list[0], "/data/4.qrbx");
    QCOMPARE(list[1], "/data/11.qrbx");
    QVERIFY(!list.contains("/data/1.qrbx"));
}

// Whoever else it is that was let in.
void HelpersTest::settingsFilesArePrivate() {
    const auto write = [](auto settings) {
        settings->setValue("python_path", "x");
        return settings->fileName();
    };
    for (const auto permission :
         {QFile::ReadGroup, QFile::WriteGroup, QFile::ReadOther, QFile::WriteOther})
        for (const bool ofDialogs : {false, true}) {
            const auto change = [&] {
                return ofDialogs ? write(std::make_unique<DialogSettings>("own"))
                                 : write(std::make_unique<ProgramSettings>());
            };
            const QString fileName = change();
            QVERIFY(
                QFile::setPermissions(fileName, QFile::ReadOwner | QFile::WriteOwner | permission));
            QCOMPARE(change(), fileName);
            QVERIFY2(!(QFile::permissions(fileName) & permission), qUtf8Printable(fileName));
        }
}

void HelpersTest::windowRectangleTakesTheFirstThatConverts() {
    QVERIFY(!windowRectangle({"qrbadmin", "x--window=1,2,3,4", "--window=1,2,3"}));
    QCOMPARE(windowRectangle(
                 {"--window=99999999999,0,1,1", "--window=-10,20,800,600", "--window=1,2,3,4"}),
             QRect(-10, 20, 800, 600));
}

void HelpersTest::helpNeedsNoWindow() {
    QVERIFY(!answerToCommandLine({"--help", "flight.qrbx", "--window=1,2,3,4"}));
    QVERIFY(answerToCommandLine({"qrbadmin", "a", "--help"})->contains("--window="));
    QVERIFY(answerToCommandLine({"qrbadmin", "--version"})->startsWith("qrbadmin "));
}

void HelpersTest::mimeFileTakesTheFirstUrlOrAnExistingName() {
    QTemporaryFile file;
    QVERIFY(file.open());
    QMimeData data;
    QCOMPARE(localFileIn(&data), QString());
    data.setText(file.fileName());
    QCOMPARE(localFileIn(&data), file.fileName());
    data.setUrls({QUrl("https://example.org/x"), QUrl::fromLocalFile(file.fileName())});
    QCOMPARE(localFileIn(&data), QString());
    data.setUrls({QUrl::fromLocalFile(file.fileName()), QUrl("https://example.org/x")});
    QCOMPARE(localFileIn(&data), file.fileName());
}

void HelpersTest::librariesAskedForInARowAreTakenBack() {
    LibraryChoice choice;
    choice.fileName = "used";
    for (int i = 0; i < 2; ++i) {
        choice.ask("first");
        choice.ask("second");
        QVERIFY(choice.restart);
        QCOMPARE(choice.fileName, "second");
        choice.takeBack();
        choice.takeBack();
        QVERIFY(!choice.restart);
        QCOMPARE(choice.fileName, "used");
    }
}

void HelpersTest::filterInsertions_data() {
    QTest::addColumn<QString>("before");
    QTest::addColumn<QString>("inserted");
    QTest::addColumn<QString>("after");
    QTest::newRow("into nothing") << ""
                                  << "=="
                                  << "== ";
    QTest::newRow("blank is added") << "a"
                                    << "=="
                                    << "a == ";
    QTest::newRow("blank is there") << "a "
                                    << "=="
                                    << "a == ";
    QTest::newRow("property is glued") << "tarvo.xyz[0] "
                                       << ":minimum"
                                       << "tarvo.xyz[0]:minimum ";
    QTest::newRow("property after a colon") << "a: "
                                            << ":invalid"
                                            << "a:invalid ";
}

void HelpersTest::filterInsertions() {
    QFETCH(QString, before);
    QFETCH(QString, inserted);
    QLineEdit edit;
    edit.setText(before);
    if (inserted.startsWith(':'))
        insertPropertyIntoFilter(&edit, inserted);
    else
        insertIntoFilter(&edit, inserted);
    QTEST(edit.text(), "after");
}

// As typing does.
void HelpersTest::insertionsReplaceWhatIsSelected() {
    const std::pair<const char*, const char*> insertions[] = {{"==", "a == c"},
                                                              {":minimum", "a:minimum c"}};
    for (const auto& [inserted, after] : insertions) {
        QLineEdit edit("a bc");
        edit.setSelection(2, 1);
        if (*inserted == ':')
            insertPropertyIntoFilter(&edit, inserted);
        else
            insertIntoFilter(&edit, inserted);
        QCOMPARE(edit.text(), after);
    }
}

void HelpersTest::commandsAndNodeListsAreTold() {
    for (const char* command :
         {"find largest leaf", "FIND FULLEST LEAF", " Find Largest Node ", "find fullest node"})
        QVERIFY2(isIndexCommand(command), command);
    for (const char* other :
         {"", "find", "find largest", "find  largest leaf", "find largest leaf 2"})
        QVERIFY2(!isIndexCommand(other), other);
    for (const char* list : {"7", " 1, 4-7 ,", "-3"})
        QVERIFY2(isNodeList(list), list);
    for (const char* other : {"", " , ", "-", "1 == 1", "x", "1;2"})
        QVERIFY2(!isNodeList(other), other);
}

void HelpersTest::summaryTexts() {
    tarvo::qrb::pointcloud::PointAttribute attribute;
    attribute.resolution = 0.00025;
    QCOMPARE(chunkSizeText(2, 2, attribute),
             "mode: edge length, size: 2 (0.00100 units edge length)");
    attribute.unitSymbol = std::string("m");
    QCOMPARE(chunkSizeText(2, 2, attribute), "mode: edge length, size: 2 (0.00100 m edge length)");
    QCOMPARE(chunkSizeText(7, 2, attribute), "unknown");
    QCOMPARE(chunkSizeText(1, 10000, attribute),
             "mode: point count, size: up to 10,000 points per chunk");
    QCOMPARE(levelOfDetailText(1, 0, 3), "disabled");
    QCOMPARE(levelOfDetailText(2, 0, 3), "disabled");
    QCOMPARE(levelOfDetailText(1, 20, 3), "mode: thinout, size: up to 20 % of the original points");
    QCOMPARE(levelOfDetailText(2, 2, 3), "mode: combine, size: 2 (up to 64 points per node)");
    QCOMPARE(levelOfDetailText(7, 2, 3), "unknown");
}

void HelpersTest::textsOfSeveralLinesBecomeOne() {
    QCOMPARE(oneLine("a\r\nb\nc\td"), QString("a%1b%1c d").arg(QChar(0x21b5)));
    QCOMPARE(firstLine("one"), "one");
    QCOMPARE(firstLine("one\r\ntwo"), "one...");
    QCOMPARE(firstLine("\ntwo"), "...");
}

void HelpersTest::largeWholeNumbersHaveTheirOwnNames() {
    tarvo::qrb::pointcloud::PointAttribute attribute;
    attribute.name = "u";
    attribute.maximumValue = 18446744073709551615.0;
    attribute.resolution = 1;
    attribute.namedValues =
        "18446744073709551615=max\n18446744073709551614=max1\n9007199254740993=odd\n2=two";
    const ValueNames names({"#", "u"}, {attribute});
    for (const auto& [value, name] :
         {std::pair("18446744073709551615", "max"), std::pair("18446744073709551614", "max1"),
          std::pair("9007199254740993", "odd"), std::pair("9007199254740992", ""),
          std::pair("2", "two")})
        QCOMPARE(names.of(1, value), QString(name));
}

void HelpersTest::annotationColourFollowsThePalette() {
    QPalette dark;
    dark.setColor(QPalette::Base, QColor("#2b2b2b"));
    dark.setColor(QPalette::Text, Qt::white);
    QVERIFY(isDark(dark));
    const QColor blue = Qt::darkBlue;
    QVERIFY(readable(blue, dark).lightness() > 150);
    QPalette light;
    light.setColor(QPalette::Base, Qt::white);
    light.setColor(QPalette::Text, Qt::black);
    QCOMPARE(readable(blue, light), blue);

    // So do the tooltips of actions and of widgets.
    QWidget window;
    QAction action(&window);
    QToolButton button(&window);
    const QPalette before = QToolTip::palette();
    const std::pair<QPalette, QString> toolTips[] = {{QPalette(Qt::white, Qt::black), "#9db8ff"},
                                                     {QPalette(Qt::black, Qt::white), "#0000a3"}};
    action.setToolTip("<font color='#0000a3'>open</font>");
    button.setToolTip(action.toolTip());
    for (auto [palette, colour] : toolTips) {
        palette.setColor(QPalette::ToolTipText, palette.color(QPalette::WindowText));
        palette.setColor(QPalette::ToolTipBase, palette.color(QPalette::Window));
        QToolTip::setPalette(palette);
        adaptToolTips(&window);
        QVERIFY2(action.toolTip().contains(colour), qUtf8Printable(action.toolTip()));
        QCOMPARE(button.toolTip(), action.toolTip());
    }
    QToolTip::setPalette(before);
}

GUI_TEST_MAIN(HelpersTest)
#include "helperstest.moc"
