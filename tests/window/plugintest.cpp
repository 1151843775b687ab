// Plugins in the window, with scripts that a real Python runs: the menu, the form, the consent, the
// run, its results, and what becomes of the open database.

#include "qrb/loader.h"
#include "tests/window/guitestmain.h"
#include "tests/window/pluginwindow.h"
#include "window/common/filterhistory.h"
#include "window/common/programsettings.h"
#include "window/dialogs/plugin/outputpane.h"
#include "window/dialogs/plugin/outputtext.h"

#include <QAbstractItemView>
#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QCompleter>
#include <QHeaderView>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QScrollArea>
#include <QTabWidget>
#include <QTableView>
#include <QTextBrowser>
#include <QToolButton>
#include <QTreeWidget>
#include <QtTest>
#include <memory>

using namespace tarvo::window;

using Step = ModalScript::Step;

namespace {

const char* const writes = R"(, "writes": true)";

QByteArray contentOf(const QString& fileName) {
    QFile file(fileName);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("can't be read");
}

// Chooses a plugin that nobody has agreed to yet, agrees, and closes it when it has ended.
Step runTo(const std::function<void(QDialog*)>& look) {
    return [look](QDialog* dialog) {
        runToEnd(dialog);
        look(dialog);
        click(dialog, "buttonClose");
    };
}

}  // namespace

class PluginTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup() { m_window.reset(); }
    void cleanupTestCase() { tarvo::qrb::freeLibrary(); }

    void menuShowsWhatIsInTheFolder();
    void settingsTellWhichPythonAnswers();
    void formTakesWhatEachParameterTakes();
    void formBeginsWithTheLastRunAndThePresentSelection();
    void formLeavesOutWhatWasKeptAndIsWrongNow();
    void outputFileIsReplacedOnlyWhenAgreed();
    void nothingRunsWithoutConsent();
    void escapeCancelsWhatIsShownLive();
    void closingWhileItRunsIsAsked();
    void floodLeavesTheWindowAnswering();
    void resultsAreShownCopiedAndSaved();
    void whatFailsTellsWhyAndChangesNothing();
    void writingTakesThePlaceOfAPendingTransaction();
    void databaseThatIsGoneBehindTheRunIsTold();

private:
    std::uint32_t currentTransaction() const {
        return m_window->database().transactions().current();
    }

    std::unique_ptr<SampleDatabase> m_sample;
    std::unique_ptr<PluginWindow> m_window;
    QString m_file;
};

void PluginTest::initTestCase() {
    tarvo::qrb::loadLibrary("");
    m_sample = std::make_unique<SampleDatabase>();
    QVERIFY2(m_sample->error().isEmpty(), qUtf8Printable(m_sample->error()));
}

void PluginTest::init() {
    m_file = m_sample->copy();
    m_window = std::make_unique<PluginWindow>(m_file);
}

void PluginTest::menuShowsWhatIsInTheFolder() {
    QCOMPARE(m_window->entries(),
             QStringList({"[No plugins in " + m_window->folder() + ']', "-", "Settings ..."}));
    m_window->add("second", "    pass", R"(, "description": "What <b>it</b> does")");
    m_window->add("first", "    pass");
    m_window->add("wrong", "    pass", R"(, "colour": "red")");
    m_window->write(
        "script.py",
        "# /// plugin\n# {\"name\": \"s\", \"title\": \"Cut & fill\", \"version\": \"1\"}\n"
        "# ///\n");
    QCOMPARE(m_window->entries(),
             QStringList({"Cut && fill", "first", "second", "[wrong]", "-", "Settings ..."}));
    QMenu* menu = m_window->openMenu();
    QVERIFY(menu->toolTipsVisible());
    QCOMPARE(in<QAction>(menu, "actionPlugin_second")->toolTip(),
             "<html>What &lt;b&gt;it&lt;/b&gt; does</html>");
    QVERIFY2(menu->actions()[3]->toolTip().contains("colour"),
             qUtf8Printable(menu->actions()[3]->toolTip()));
    QTest::keyClick(menu, Qt::Key_Escape);

    m_window->run("actionClose", {});
    QCOMPARE(m_window->entries(),
             QStringList({"[Cut && fill]", "[first]", "[second]", "[wrong]", "-", "Settings ..."}));
    ProgramSettings().setValue("plugin_path", m_window->path("nowhere"));
    QCOMPARE(m_window->entries().first(), "[No plugins in " + m_window->path("nowhere") + ']');
}

void PluginTest::settingsTellWhichPythonAnswers() {
    m_window->add("one", "    pass");
    m_window->write("wrong.py", "# /// plugin\n# {}\n# ///\n");
    const auto settings = [&](const Step& step) {
        QMenu* menu = m_window->openMenu();
        auto* action = in<QAction>(menu, "actionPluginSettings");
        ModalScript script({closing(step)});
        QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(action).center());
        QCOMPARE(script.answered(), 1u);
    };
    settings([&](QDialog* dialog) {
        auto* python = in<QLabel>(dialog, "labelPythonState");
        QTRY_VERIFY2(python->text().startsWith("Python 3."), qUtf8Printable(python->text()));
        QCOMPARE(in<QLabel>(dialog, "labelFolderState")->text(),
                 "1 plugin in " + m_window->folder() + ", and 1 that can't be run");
        typeInto(dialog, "editPython", "/bin/true");
        QTest::keyClick(in<QLineEdit>(dialog, "editPython"), Qt::Key_Tab);
        QTRY_VERIFY2(python->text().contains("is no Python"), qUtf8Printable(python->text()));
        typeInto(dialog, "editFolder", "/nowhere");
        QTest::keyClick(in<QLineEdit>(dialog, "editFolder"), Qt::Key_Tab);
        QVERIFY(in<QLabel>(dialog, "labelFolderState")->text().startsWith("There is no folder"));
        QVERIFY2(namelessControls(dialog).isEmpty(),
                 qPrintable(namelessControls(dialog).join(' ')));
        QTest::keyClick(dialog, Qt::Key_Escape);
    });
    QVERIFY(!ProgramSettings().contains("python_path"));
    settings([&](QDialog* dialog) {
        typeInto(dialog, "editPython", "/bin/true");
        QTest::keyClick(in<QLineEdit>(dialog, "editPython"), Qt::Key_Return);
    });
    QCOMPARE(ProgramSettings().value("python_path").toString(), "/bin/true");
    const QStringList texts = m_window->choose(
        "one", {runTo([](QDialog* dialog) { QCOMPARE(stateOf(dialog), "Failed."); }),
                ModalScript::press("Yes"), ModalScript::press("OK")});
    QVERIFY2(texts.last().contains("is no Python"), qUtf8Printable(texts.last()));
}

void PluginTest::formTakesWhatEachParameterTakes() {
    m_window->write("input.txt", "there");
    m_window->add("form", "    report.text(json.dumps(parameters), title='Heard')",
                  R"(, "parameters": [
        {"name": "t", "type": "text", "title": "A & B"},
        {"name": "i", "type": "integer", "minimum": 1, "maximum": 10, "default": 3},
        {"name": "n", "type": "number", "minimum": 0, "unit": "m", "default": 0.5,
         "description": "How <b>far</b>"},
        {"name": "b", "type": "boolean", "default": true},
        {"name": "c", "type": "choice", "choices": ["x", {"value": "y", "title": "Why"}]},
        {"name": "a", "type": "attribute"},
        {"name": "l", "type": "attributes", "default": []},
        {"name": "f", "type": "filter", "default": ""},
        {"name": "d", "type": "nodes", "default": ""},
        {"name": "r", "type": "input file"},
        {"name": "w", "type": "output file", "suffix": "csv", "default": ""}])");
    m_window->driver().showTab("tabPointData");
    m_window->child<QComboBox>("PointDataFilter")->setEditText("tarvo.class == 2");
    const Step fill = [&](QDialog* dialog) {
        const auto* run = in<QPushButton>(dialog, "buttonRun");
        const auto* problem = in<QLabel>(dialog, "labelProblem");
        const auto isMarked = [&](const char* name) {
            return in<QWidget>(dialog, name)->property("invalid").toBool();
        };
        // One after the other, in the order of the form.
        QVERIFY(!run->isEnabled() && run->toolTip() == problem->text());
        QCOMPARE(problem->text(), "\"A & B\" has no value.");
        typeInto(dialog, "edit_t", "text");
        // What is only missing is no mistake yet.
        QVERIFY(!isMarked("edit_c") && !isMarked("edit_t") && !isMarked("edit_i"));
        for (const char* wrong : {"11", "0", "1.5", "x", ""}) {
            typeInto(dialog, "edit_i", wrong);
            QVERIFY2(isMarked("edit_i"), wrong);
            QCOMPARE(problem->text(), *wrong
                                          ? "The parameter \"i\" takes a whole number from 1 to 10."
                                          : problem->text());
        }
        typeInto(dialog, "edit_i", "10");
        typeInto(dialog, "edit_n", "-1");
        QVERIFY(isMarked("edit_n"));
        typeInto(dialog, "edit_n", "1e-3");
        QVERIFY(in<QLineEdit>(dialog, "edit_n")->toolTip().contains("How &lt;b&gt;far"));
        QTest::mouseClick(in<QCheckBox>(dialog, "edit_b"), Qt::LeftButton, {}, {8, 8});
        QTest::keyClick(in<QComboBox>(dialog, "edit_c"), Qt::Key_Down);
        QTest::keyClick(in<QComboBox>(dialog, "edit_c"), Qt::Key_Down);
        typeInto(dialog, "edit_a", "tarvo.ref");
        QCOMPARE(in<QComboBox>(dialog, "edit_a")->completer()->completionCount(), 1);
        typeInto(dialog, "edit_l", "tarvo.class,own.new");
        QCOMPARE(in<QComboBox>(dialog, "edit_f")->currentText(), "tarvo.class == 2");
        typeInto(dialog, "edit_f", "tarvo.class == 2 && (!tarvo.REF");
        const auto* completer = in<QCompleter>(dialog, "filterCompletion");
        QCOMPARE(completer->completionCount(), 1);
        QCOMPARE(completer->completionModel()->index(0, 0).data().toString(), "tarvo.reflectance");
        completer->popup()->hide();
        typeInto(dialog, "edit_f", "tarvo.class == gruond");
        QVERIFY2(problem->text().contains("Did you mean \"ground\""),
                 qUtf8Printable(problem->text()));
        typeInto(dialog, "edit_f", "tarvo.class == ground");
        completer->popup()->hide();
        typeInto(dialog, "edit_d", "1,x");
        QVERIFY(isMarked("edit_d"));
        typeInto(dialog, "edit_d", "1,4-6");
        typeInto(dialog, "edit_r", "/nowhere/file");
        QCOMPARE(problem->text(), "There is no file \"/nowhere/file\".");
        QTest::mouseClick(in<QToolButton>(dialog, "button_r"), Qt::LeftButton);
        QTest::mouseClick(in<QToolButton>(dialog, "button_w"), Qt::LeftButton);
        QVERIFY2(run->isEnabled(), qUtf8Printable(problem->text()));
        QVERIFY(problem->isHidden());
        QVERIFY2(namelessControls(dialog).isEmpty(),
                 qPrintable(namelessControls(dialog).join(' ')));
        QVERIFY2(keysClaimedTwice(dialog).isEmpty(),
                 qPrintable(keysClaimedTwice(dialog).join(' ')));
        runToEnd(dialog);
        const auto* page = pageOf(dialog, "Heard");
        QVERIFY2(page, qUtf8Printable(stateOf(dialog)));
        const QJsonObject heard =
            QJsonDocument::fromJson(page->findChild<QPlainTextEdit*>()->toPlainText().toUtf8())
                .object();
        const QJsonObject expected =
            QJsonDocument::fromJson(
                QString(
                    R"({"t": "text", "i": 10, "n": 0.001, "b": false, "c": "y", "a": "tarvo.ref",
                "l": ["tarvo.class", "own.new"], "f": "tarvo.class == 2", "d": [1, 4, 5, 6],
                "r": "%0", "w": "%1"})")
                    .arg(m_window->path("input.txt"), m_window->path("output.csv"))
                    .toUtf8())
                .object();
        QCOMPARE(heard, expected);
    };
    m_window->choose(
        "form", {fill, ModalScript::chooseFile(m_window->path("input.txt")),
                 ModalScript::chooseFile(m_window->path("output")), ModalScript::press("Yes")});
}

void PluginTest::formBeginsWithTheLastRunAndThePresentSelection() {
    const QString parameters = R"(, "parameters": [{"name": "i", "type": "integer", "default": 3},
        {"name": "f", "type": "filter"}, {"name": "g", "type": "filter", "default": "tarvo.id > 0"},
        {"name": "d", "type": "nodes"}])";
    m_window->add("kept", "    pass", parameters);
    const auto values = [](QDialog* dialog) {
        return QStringList({in<QLineEdit>(dialog, "edit_i")->text(),
                            in<QComboBox>(dialog, "edit_f")->currentText(),
                            in<QComboBox>(dialog, "edit_g")->currentText(),
                            in<QLineEdit>(dialog, "edit_d")->text()});
    };
    const auto begin = [&](const QStringList& expected, bool runs) {
        std::vector<Step> steps{[&, runs](QDialog* dialog) {
            const QStringList shown = values(dialog);
            typeInto(dialog, "edit_i", "7");
            typeInto(dialog, "edit_f", "tarvo.id > 5");
            typeInto(dialog, "edit_g", "tarvo.id > 6");
            if (runs)
                runToEnd(dialog);
            dialog->reject();
            QCOMPARE(shown, expected);
        }};
        if (runs)
            steps.push_back(ModalScript::press("Yes"));
        m_window->choose("kept", steps);
    };
    const auto select = [&](const QString& filter, const QString& nodes) {
        m_window->child<QComboBox>("PointDataFilter")->setEditText(filter);
        m_window->child<QLineEdit>("editPointDataNodes")->setText(nodes);
    };
    select("one", "1");
    begin({"3", "one", "tarvo.id > 0", "1"}, false);
    begin({"3", "one", "tarvo.id > 0", "1"}, true);
    select("two", "2");
    begin({"7", "two", "tarvo.id > 6", "2"}, false);
    QCOMPARE(FilterHistory::list(), QStringList({"tarvo.id > 6", "tarvo.id > 5"}));
    QCOMPARE(m_window->child<QComboBox>("PointDataFilter")->itemText(0), "tarvo.id > 6");
    // What was kept is of another type now.
    m_window->add("kept", "    pass",
                  QString(parameters).replace("\"integer\", \"default\": 3", "\"boolean\""));
    m_window->choose("kept", {[](QDialog* dialog) {
                         QVERIFY(in<QPushButton>(dialog, "buttonRun")->isEnabled());
                         dialog->reject();
                     }});
}

// The plugin changed meanwhile, and what the last run was given is gone: each of it by itself,
// while what is still right stays.
void PluginTest::formLeavesOutWhatWasKeptAndIsWrongNow() {
    m_window->write("first.txt", "default");
    m_window->write("second.txt", "kept");
    const auto add = [&](int maximum, const char* choices) {
        m_window->add("kept", "    pass",
                      QString(R"(, "parameters": [
            {"name": "i", "type": "integer", "maximum": %0, "default": 3},
            {"name": "n", "type": "number", "maximum": %0, "default": 0.5},
            {"name": "c", "type": "choice", "choices": [%1], "default": "x"},
            {"name": "o", "type": "choice", "choices": [%1]},
            {"name": "d", "type": "nodes", "default": "1"},
            {"name": "r", "type": "input file", "default": "%2"},
            {"name": "t", "type": "text", "default": "t"},
            {"name": "b", "type": "boolean", "default": true}])")
                          .arg(maximum)
                          .arg(choices, m_window->path("first.txt")));
    };
    const auto shown = [](QDialog* dialog) {
        QStringList texts;
        for (const char* name : {"edit_i", "edit_n", "edit_d", "edit_r", "edit_t"})
            texts += in<QLineEdit>(dialog, name)->text();
        for (const char* name : {"edit_c", "edit_o"})
            texts += in<QComboBox>(dialog, name)->currentText();
        texts += in<QCheckBox>(dialog, "edit_b")->isChecked() ? "true" : "false";
        return texts.join('|').replace(QFileInfo(texts[3]).path() + '/', "");
    };
    add(100, R"("x", "y")");
    m_window->choose("kept", {[&](QDialog* dialog) {
                                  QCOMPARE(shown(dialog), "3|0.5|1|first.txt|t|x||true");
                                  typeInto(dialog, "edit_i", "50");
                                  typeInto(dialog, "edit_n", "60");
                                  typeInto(dialog, "edit_d", "1,2");
                                  typeInto(dialog, "edit_r", m_window->path("second.txt"));
                                  typeInto(dialog, "edit_t", "own");
                                  in<QComboBox>(dialog, "edit_c")->setCurrentText("y");
                                  in<QComboBox>(dialog, "edit_o")->setCurrentText("y");
                                  in<QCheckBox>(dialog, "edit_b")->click();
                                  runToEnd(dialog);
                                  dialog->reject();
                              },
                              ModalScript::press("Yes")});
    const auto begin = [&](const char* expected, bool complete) {
        m_window->choose("kept", {closing([&](QDialog* dialog) {
                             QCOMPARE(shown(dialog), expected);
                             QCOMPARE(in<QPushButton>(dialog, "buttonRun")->isEnabled(), complete);
                             dialog->reject();
                         })});
    };
    begin("50|60|1,2|second.txt|own|y|y|false", true);
    add(55, R"("x", "y")");
    begin("50|0.5|1,2|second.txt|own|y|y|false", true);
    add(20, R"("x", "z")");
    begin("3|0.5|1,2|second.txt|own|x||false", false);
    QVERIFY(QFile::remove(m_window->path("second.txt")));
    begin("3|0.5|1,2|first.txt|own|x||false", false);
    // Who only looked at it has kept it all the same.
    m_window->write("second.txt", "again");
    add(100, R"("y", "x")");
    begin("50|60|1,2|second.txt|own|y|y|false", true);
}

void PluginTest::outputFileIsReplacedOnlyWhenAgreed() {
    m_window->add("out", "    open(parameters['w'], 'w').write('new')",
                  R"(, "parameters": [{"name": "w", "type": "output file"}])");
    m_window->write("there.txt", "old");
    const QString there = m_window->path("there.txt");
    const QStringList texts =
        m_window->choose("out", {[&](QDialog* dialog) {
                                     typeInto(dialog, "edit_w", m_file);
                                     click(dialog, "buttonRun");
                                     typeInto(dialog, "edit_w", there);
                                     click(dialog, "buttonRun");
                                     QVERIFY(!isRunning(dialog));
                                     QCOMPARE(contentOf(there), "old");
                                     runToEnd(dialog);
                                     QCOMPARE(contentOf(there), "new");
                                     dialog->reject();
                                 },
                                 ModalScript::press("OK"), ModalScript::press("No"),
                                 ModalScript::press("Yes"), ModalScript::press("Yes")});
    QVERIFY2(texts[1].contains("exists already"), qUtf8Printable(texts[1]));
}

void PluginTest::nothingRunsWithoutConsent() {
    const QString marker = m_window->path("marker");
    const auto body = [&](const char* text) {
        return QString("    open('%0', 'w').write('%1')").arg(marker, text);
    };
    m_window->add("consent", body("1"), writes);
    const Step byReturn = [](QDialog* box) { QTest::keyClick(box, Qt::Key_Return); };
    const QStringList texts = m_window->choose(
        "consent", {[&](QDialog* dialog) {
                        click(dialog, "buttonRun");
                        QVERIFY(!isRunning(dialog) && m_window->window().session().database);
                        dialog->reject();
                    },
                    byReturn});
    for (const QString& part :
         {QString("never run the plugin \"consent\""), m_window->path("consent"),
          QString("Version: 1"), QString("changes the database"), QString("Fingerprint: ")})
        QVERIFY2(texts[0].contains(part), qUtf8Printable(texts[0]));
    QVERIFY(!QFile::exists(marker));
    const Step look = runTo([](QDialog* dialog) {
        QVERIFY2(stateOf(dialog).startsWith("Done."), qUtf8Printable(stateOf(dialog)));
    });
    m_window->choose("consent", {look, ModalScript::press("Yes")});
    QCOMPARE(contentOf(marker), "1");
    m_window->choose("consent", {look});
    m_window->add("consent", body("2"));
    const QStringList again = m_window->choose("consent", {look, ModalScript::press("Yes")});
    QVERIFY2(again[0].contains("has changed since") && again[0].contains("only reads"),
             qUtf8Printable(again[0]));
    QCOMPARE(contentOf(marker), "2");
}

void PluginTest::escapeCancelsWhatIsShownLive() {
    m_window->add("slow", R"(    print("begun", len(db.transactions))
    report.progress(0.25, "reading")
    time.sleep(1000))",
                  writes);
    const auto before = currentTransaction();
    m_window->choose("slow", {[](QDialog* dialog) {
                                  click(dialog, "buttonRun");
                                  QTRY_VERIFY(outputOf(dialog).startsWith("begun"));
                                  const auto* bar = in<QProgressBar>(dialog, "progressBar");
                                  QTRY_COMPARE(stateOf(dialog), "reading");
                                  QVERIFY(bar->isVisible());
                                  QCOMPARE(bar->value() * 4, bar->maximum());
                                  QVERIFY(!in<QPushButton>(dialog, "buttonRun")->isEnabled());
                                  QTest::keyClick(dialog, Qt::Key_Escape);
                                  QTRY_VERIFY_WITH_TIMEOUT(!isRunning(dialog), 30'000);
                                  QCOMPARE(stateOf(dialog), "Cancelled. Nothing is changed.");
                                  QVERIFY(outputOf(dialog).startsWith("begun"));
                                  QTest::keyClick(dialog, Qt::Key_Escape);
                              },
                              ModalScript::press("Yes")});
    QCOMPARE(currentTransaction(), before);
}

void PluginTest::closingWhileItRunsIsAsked() {
    m_window->add("slow", "    print('begun')\n    time.sleep(1000)");
    QPointer<QDialog> plugin;
    const QStringList texts = m_window->choose(
        "slow", {[&](QDialog* dialog) {
                     plugin = dialog;
                     click(dialog, "buttonRun");
                     QTRY_VERIFY(outputOf(dialog).startsWith("begun"));
                     dialog->close();
                     QVERIFY(dialog->isVisible() && isRunning(dialog));
                     click(dialog, "buttonClose");
                 },
                 ModalScript::press("Yes"), ModalScript::press("No"), ModalScript::press("Yes")});
    QVERIFY2(texts[2].contains("still runs"), qUtf8Printable(texts[2]));
    QVERIFY(!plugin);
}

void PluginTest::floodLeavesTheWindowAnswering() {
    m_window->add("flood",
                  R"(    line = "\x1b[31mred\x1b[0m \x07\x00 \u202eevil \ufffd " + "x" * 5000
    while True:
        print(line)
        report.progress(0.5)
        report.text("t"))");
    m_window->choose("flood", {[](QDialog* dialog) {
                                   click(dialog, "buttonRun");
                                   const auto* pane = in<OutputPane>(dialog, "editOutput");
                                   auto* tabs = in<QTabWidget>(dialog, "tabWidget");
                                   QTRY_VERIFY(pane->document()->characterCount() > 500'000);
                                   // Each click is seen while it goes on.
                                   for (int i = 0; i < 10; ++i) {
                                       tabs->setCurrentIndex(i % 2);
                                       QTest::qWait(20);
                                       QVERIFY(isRunning(dialog));
                                   }
                                   QTRY_COMPARE(tabs->count(), 102);
                                   QTest::keyClick(dialog, Qt::Key_Escape);
                                   QTRY_VERIFY_WITH_TIMEOUT(!isRunning(dialog), 30'000);
                                   QVERIFY2(
                                       stateOf(dialog).startsWith("Cancelled.\nThe first 100 "),
                                       qUtf8Printable(stateOf(dialog)));
                                   const QString text = outputOf(dialog);
                                   QVERIFY(text.size() < 2.5 * OutputPane::keptCharacters);
                                   QVERIFY(text.contains("\nred \ufffd\ufffd \ufffdevil "));
                                   QVERIFY(!text.contains('\x1b') && !text.contains(QChar(0x202e)));
                                   for (const QString& line : text.split('\n'))
                                       QVERIFY(line.size() <= longestOutputLine);
                                   dialog->reject();
                               },
                               ModalScript::press("Yes")});
}

void PluginTest::resultsAreShownCopiedAndSaved() {
    const QString page = m_window->path("secret.html");
    m_window->write("secret.html", "secret");
    m_window->add("results", QString(R"(
    import struct, zlib
    def chunk(kind, data):
        body = kind + data
        return struct.pack(">I", len(data)) + body + struct.pack(">I", zlib.crc32(body))
    png = b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", struct.pack(">IIBBBBB", 3000, 2, 8, 0, 0, 0, 0))
    png += chunk(b"IDAT", zlib.compress((b"\0" + b"\x80" * 3000) * 2)) + chunk(b"IEND", b"")
    report.text("a\nb", title="Words & more")
    report.html("<h1>Head</h1><a href='file://%0'>link</a><img src='file://%0'>", title="Page")
    report.picture(png, title="Image")
    report.table(["n", "s"], [[9, "a,b"], [10, "c"], [(-1.5, 2), "d\te"]], title="Rows")
    report.file("%0", title="Made")
    report.text("untitled"))")
                                 .arg(page));
    const auto save = [&](QWidget* shown, const QString& name) {
        const QString place = m_window->path(name);
        ModalScript chooser({ModalScript::chooseFile(place)});
        QTest::mouseClick(in<QPushButton>(shown, "buttonSave"), Qt::LeftButton);
        return contentOf(place);
    };
    const auto copied = [](QWidget* shown) {
        QApplication::clipboard()->clear();
        QTest::mouseClick(in<QPushButton>(shown, "buttonCopy"), Qt::LeftButton);
        return QApplication::clipboard()->text();
    };
    m_window->choose(
        "results",
        {runTo([&](QDialog* dialog) {
             QVERIFY2(stateOf(dialog) == "Done.", qUtf8Printable(stateOf(dialog)));
             const auto* tabs = in<QTabWidget>(dialog, "tabWidget");
             QCOMPARE(tabs->currentIndex(), 2);
             QVERIFY(pageOf(dialog, "Text"));
             auto* words = pageOf(dialog, "Words && more");
             QCOMPARE(copied(words), "a\nb");
             QCOMPARE(save(words, "a.txt"), "a\nb");
             auto* html = pageOf(dialog, "Page");
             auto* view = html->findChild<QTextBrowser*>();
             view->setFocus();
             QTest::keyClick(view, Qt::Key_Tab);
             QTest::keyClick(view, Qt::Key_Return);
             QVERIFY(view->toPlainText().startsWith("Head\nlink"));
             QVERIFY(save(html, "a.html").startsWith("<h1>Head</h1>"));
             auto* picture = pageOf(dialog, "Image");
             const auto* image = picture->findChild<QScrollArea*>()->widget();
             QVERIFY(image->width() < dialog->width());
             QTest::mouseClick(in<QToolButton>(picture, "buttonFit"), Qt::LeftButton);
             QCOMPARE(image->size(), QSize(3000, 2));
             QCOMPARE(QImage::fromData(save(picture, "a.png")).size(), QSize(3000, 2));
             auto* table = pageOf(dialog, "Rows");
             auto* rows = table->findChild<QTableView*>();
             const auto first = [&] { return rows->model()->index(0, 0).data().toString(); };
             QCOMPARE(copied(table), "n\ts\n9\ta,b\n10\tc\n-1.50\td e\n");
             const QPoint title(rows->columnViewportPosition(0) + 5, 5);
             // Rows keep their numbers wherever they stand.
             using Top = std::pair<const char*, int>;
             for (const auto& [value, number] : {Top{"-1.50", 3}, {"10", 2}, {"9", 1}}) {
                 QTest::mouseClick(rows->horizontalHeader()->viewport(), Qt::LeftButton, {}, title);
                 QCOMPARE(first(), value);
                 QCOMPARE(rows->model()->headerData(0, Qt::Vertical).toInt(), number);
             }
             QTest::mouseClick(rows->viewport(), Qt::LeftButton, {},
                               rows->visualRect(rows->model()->index(1, 0)).center());
             rows->selectRow(1);
             QTest::keySequence(rows, QKeySequence::Copy);
             QCOMPARE(QApplication::clipboard()->text(), "n\ts\n10\tc\n");
             QCOMPARE(save(table, "a.csv"), "n,s\n9,\"a,b\"\n10,c\n-1.50,d\te\n");
             QCOMPARE(copied(pageOf(dialog, "Made")), page);
         }),
         ModalScript::press("Yes")});
}

void PluginTest::whatFailsTellsWhyAndChangesNothing() {
    m_window->add("fails", R"(    print("so far")
    report.transaction.metadata["own.note"] = "changed"
    raise ValueError("it\ndoes not work"))",
                  writes);
    const auto before = currentTransaction();
    const QStringList texts = m_window->choose(
        "fails", {[](QDialog* dialog) {
                      runToEnd(dialog);
                      QCOMPARE(stateOf(dialog), "Failed. Nothing is changed. ValueError: it");
                      QVERIFY(outputOf(dialog).startsWith("so far"));
                      QVERIFY(in<QPushButton>(dialog, "buttonRun")->isEnabled());
                      dialog->reject();
                  },
                  ModalScript::press("Yes"),
                  [](QDialog* box) {
                      // The run's end is told while the box is shown.
                      ModalScript::press("OK")(box);
                  }});
    QVERIFY2(texts[1].contains("does not work"), qUtf8Printable(texts[1]));
    QVERIFY(m_window->window().session().database);
    QCOMPARE(currentTransaction(), before);
    QCOMPARE(m_window->database().metaData().get("own.note"), "{\"a\": [1, 2.50]}");
}

void PluginTest::writingTakesThePlaceOfAPendingTransaction() {
    m_window->add("writes", R"(    report.transaction.metadata["own.plugin"] = parameters["t"])",
                  QString(writes) + R"(, "parameters": [{"name": "t", "type": "text",
                                       "default": "v"}])");
    m_window->add("reads", "    report.text(str('own.pending' in db.metadata), title='Seen')");
    m_window->driver().showTab("tabMetaData");
    m_window->begin();
    m_window->database().metaData().set("own.pending", "1");
    const auto isPending = [&] { return m_window->database().transactions().pending(); };
    m_window->choose("reads", {runTo([](QDialog* dialog) {
                                   QVERIFY(in<QLabel>(dialog, "labelPending")->isVisible());
                                   const auto* page = pageOf(dialog, "Seen");
                                   QVERIFY2(page, qUtf8Printable(stateOf(dialog)));
                                   QCOMPARE(page->findChild<QPlainTextEdit*>()->toPlainText(),
                                            "False");
                               }),
                               ModalScript::press("Yes")});
    QVERIFY(isPending());
    const QStringList texts = m_window->choose(
        "writes", {[&](QDialog* dialog) {
                       click(dialog, "buttonRun");
                       QVERIFY(!isRunning(dialog) && isPending());
                       runToEnd(dialog);
                       QVERIFY2(stateOf(dialog).endsWith("is committed."),
                                qUtf8Printable(stateOf(dialog)));
                       // Once more, on the database that was opened again.
                       typeInto(dialog, "edit_t", "w");
                       runToEnd(dialog);
                       dialog->reject();
                   },
                   ModalScript::press("Yes"), ModalScript::press("No"), ModalScript::press("Yes")});
    QVERIFY2(texts[1].contains("A transaction is pending"), qUtf8Printable(texts[1]));
    QVERIFY(!isPending());
    const auto details = m_window->database().transactions().details(currentTransaction());
    QCOMPARE(details.title, "writes");
    QVERIFY(QString::fromStdString(details.agent).startsWith("qrbadmin "));
    QCOMPARE(m_window->database().metaData().get("own.plugin"), "w");
    QVERIFY(!m_window->database().metaData().exists("own.pending"));
    // Shown, and the tab is the one that was.
    QCOMPARE(m_window->child<QTabWidget>("tabWidget")->currentWidget()->objectName(),
             "tabMetaData");
    QVERIFY(m_window->driver().select("treeMetaData", "own.plugin"));
    QVERIFY(m_window->child<QLabel>("labelTransactions")
                ->text()
                .endsWith(QString::number(currentTransaction())));
}

void PluginTest::databaseThatIsGoneBehindTheRunIsTold() {
    const QString go = m_window->path("go");
    m_window->add("waits",
                  QString(R"(    print("begun")
    while not os.path.exists("%0"):
        time.sleep(0.02))")
                      .arg(go),
                  writes);
    const QString moved = m_window->path("moved.qrbx");
    QString problem;
    m_window->choose(
        "waits", {[&](QDialog* dialog) {
                      click(dialog, "buttonRun");
                      QTRY_VERIFY(outputOf(dialog).startsWith("begun"));
                      QVERIFY(QFile::rename(m_file, moved));
                      m_window->write("go", "");
                      QTRY_VERIFY_WITH_TIMEOUT(!isRunning(dialog), 30'000);
                      problem = in<QLabel>(dialog, "labelProblem")->text();
                      dialog->reject();
                  },
                  ModalScript::press("Yes"), ModalScript::press("OK"), ModalScript::press("OK")});
    QCOMPARE(problem, "No database is open.");
    QVERIFY(!m_window->window().session().database);
}

GUI_TEST_MAIN(PluginTest)
#include "plugintest.moc"
