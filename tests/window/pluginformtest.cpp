// The form of a plugin: what its fields take, and what they begin with.

#include "tests/window/guitestmain.h"
#include "tests/window/pluginwindowtest.h"
#include "window/common/filterhistory.h"

#include <QAbstractItemView>
#include <QCheckBox>
#include <QComboBox>
#include <QCompleter>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QToolButton>
#include <QtTest>

using namespace tarvo::window;

using Step = ModalScript::Step;

class PluginFormTest : public PluginWindowTest {
    Q_OBJECT

private slots:
    void formTakesWhatEachParameterTakes();
    void formBeginsWithTheLastRunAndThePresentSelection();
    void formLeavesOutWhatWasKeptAndIsWrongNow();
    void outputFileIsReplacedOnlyWhenAgreed();
};

void PluginFormTest::formTakesWhatEachParameterTakes() {
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

void PluginFormTest::formBeginsWithTheLastRunAndThePresentSelection() {
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
void PluginFormTest::formLeavesOutWhatWasKeptAndIsWrongNow() {
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

void PluginFormTest::outputFileIsReplacedOnlyWhenAgreed() {
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

GUI_TEST_MAIN(PluginFormTest)
#include "pluginformtest.moc"
