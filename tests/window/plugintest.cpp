// Plugins in the window: the menu that shows them, their settings, and the consent without which
// none runs.

#include "tests/window/guitestmain.h"
#include "tests/window/pluginwindowtest.h"
#include "window/common/programsettings.h"

#include <QAction>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QtTest>

using namespace tarvo::window;

using Step = ModalScript::Step;

class PluginTest : public PluginWindowTest {
    Q_OBJECT

private slots:
    void menuShowsWhatIsInTheFolder();
    void settingsTellWhichPythonAnswers();
    void nothingRunsWithoutConsent();
};

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

GUI_TEST_MAIN(PluginTest)
#include "plugintest.moc"
