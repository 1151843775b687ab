// The keys of the window and of its dialogs, pressed.

#include "catalogue/catalogue.h"
#include "qrb/loader.h"
#include "tests/window/dialogprobe.h"
#include "tests/window/guitestmain.h"
#include "tests/window/samplewindow.h"
#include "window/common/appearance.h"
#include "window/frame/openwindows.h"

#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QTabWidget>
#include <QTreeWidget>
#include <QtTest>
#include <memory>

using namespace tarvo::window;

using Step = ModalScript::Step;

class KeysTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void init() { m_window = std::make_unique<SampleWindow>(m_sample->copy()); }
    void cleanup() { m_window.reset(); }
    void cleanupTestCase() { tarvo::qrb::freeLibrary(); }

    void keysOpenTheirDialogs_data();
    void keysOpenTheirDialogs();
    void keysOfTheDialogsReachTheirMenus_data();
    void keysOfTheDialogsReachTheirMenus();
    void aboutBoxNamesTheParts();
    void keysDriveTheQuery();
    void keysOpenAndCloseDatabasesAndWindows();
    void keysWalkTheChangelogWhileItIsShown();
    void keysChangeTheSizeOfTexts();

private:
    // The dialog that comes when the keys are pressed; empty: none.
    QString dialogOn(const QKeySequence& keys);

    std::unique_ptr<SampleDatabase> m_sample;
    std::unique_ptr<SampleWindow> m_window;
};

void KeysTest::initTestCase() {
    tarvo::qrb::loadLibrary("");
    m_sample = std::make_unique<SampleDatabase>();
    QVERIFY2(m_sample->error().isEmpty(), qUtf8Printable(m_sample->error()));
}

QString KeysTest::dialogOn(const QKeySequence& keys) {
    QString name;
    ModalScript script({[&](QDialog* dialog) {
        name = kindOf(dialog);
        if (const auto* box = qobject_cast<QMessageBox*>(dialog))
            name += ": " + box->text();
        QTest::keyClick(dialog, Qt::Key_Escape);
    }});
    m_window->press(keys);
    return name;
}

void KeysTest::keysOpenTheirDialogs_data() {
    QTest::addColumn<QString>("dialog");
    const std::pair<const char*, const char*> keys[] = {
        {"Ctrl+O", "DialogOpenSettings"},
        {"Ctrl+N", "DialogCreateSettings"},
        {"Ctrl+E", "DialogExportAsQRB"},
        {"F9", "DialogValidate"},
        {"F4", "QMessageBox: 600 points match the current filter expression."},
        {"Ctrl+,", ""},  // not offered
    };
    for (const auto& [key, dialog] : keys)
        QTest::newRow(key) << QString(dialog);
}

void KeysTest::keysOpenTheirDialogs() {
    QFETCH(QString, dialog);
    m_window->driver().showTab("tabPointData");
    QCOMPARE(dialogOn(QKeySequence(QTest::currentDataTag())), dialog);
    QVERIFY(m_window->window().session().database);
}

void KeysTest::keysOfTheDialogsReachTheirMenus_data() {
    QTest::addColumn<QByteArray>("action");
    QTest::addColumn<QString>("load");
    QTest::addColumn<QString>("save");
    QTest::newRow("create") << QByteArray("actionNew") << "Load Settings"
                            << "Save Settings";
    QTest::newRow("transaction") << QByteArray("actionTransactionBegin") << "Load Comments"
                                 << "Save Comments";
    QTest::newRow("attribute") << QByteArray("actionPointAttributeEdit") << "Load Point Attribute"
                               << "Save Point Attribute";
    QTest::newRow("metadata") << QByteArray("actionMetaDataEdit") << ""
                              << "";
}

void KeysTest::keysOfTheDialogsReachTheirMenus() {
    QFETCH(QByteArray, action);
    QFETCH(QString, load);
    QFETCH(QString, save);
    m_window->driver().showTab("tabPointAttributes");
    QVERIFY(m_window->driver().select("treePointAttributes", "own.single"));
    m_window->driver().showTab("tabMetaData");
    QVERIFY(m_window->driver().select("treeMetaData", "own.note"));
    QStringList titles;
    const Step note = [&](QDialog* dialog) {
        titles += dialog->windowTitle();
        dialog->reject();
    };
    const auto press = [](QDialog* dialog, Qt::Key key, Qt::KeyboardModifiers modifiers) {
        dialog->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(dialog));
        QTest::keyClick(dialog, key, modifiers);
    };
    m_window->run(action, {[&](QDialog* dialog) {
                               press(dialog, Qt::Key_O, Qt::ControlModifier);
                               press(dialog, Qt::Key_S, Qt::ControlModifier);
                               press(dialog, Qt::Key_Escape, {});
                           },
                           note, note});
    QCOMPARE(titles.size(), 2);
    if (!load.isEmpty())
        QCOMPARE(titles, QStringList({load, save}));
}

void KeysTest::aboutBoxNamesTheParts() {
    const QString text = dialogOn(QKeySequence("F1"));
    QVERIFY2(text.startsWith("QMessageBox: qrbadmin "), qUtf8Printable(text));
    const QStringList lines = text.mid(13).split('\n');
    const auto& context = m_window->window().session().context;
    const auto utf8 = [](const std::string& line) { return QString::fromStdString(line); };
    QVERIFY2(lines.size() > 13, qUtf8Printable(text));
    QCOMPARE(lines[1], "");
    const char* const definitions[] = {"QRB Point Attribute Definitions",
                                       "QRB Meta Data Item Definitions",
                                       "QRB File Schema Definitions"};
    for (int i = 0; i < 3; ++i)
        QVERIFY2(QRegularExpression(QString(R"(\A%0 \S+ \(.+\)\z)").arg(definitions[i]))
                     .match(lines[2 + i])
                     .hasMatch(),
                 qUtf8Printable(lines[2 + i]));
    QCOMPARE(lines[5], "");
    QCOMPARE(lines[6], utf8(tarvo::qrb::Context::interfaceName()) + ' ' +
                           utf8(tarvo::qrb::Context::interfaceVersion()));
    QVERIFY(lines[7].startsWith(utf8(context.libraryName())) &&
            lines[7].contains(utf8(context.libraryVersion())));
    QCOMPARE(lines[8], "Path: " + QDir::toNativeSeparators(utf8(context.libraryFilename())));
    QCOMPARE(lines[9], "");
    QCOMPARE(lines[10], QString("Qt Library ") + qVersion());
    QCOMPARE(lines[11], QString(150, '_'));
    QCOMPARE(lines[12], "");
    QCOMPARE(lines.mid(13).join('\n'), utf8(context.libraryLicense()));
}

void KeysTest::keysDriveTheQuery() {
    m_window->driver().showTab("tabPointData");
    const auto* points = m_window->child<QTreeWidget>("treePointData");
    const auto* cancel = m_window->child<QAction>("actionQuerySelectCancel");
    m_window->press(QKeySequence("F3"));
    QCOMPARE(points->topLevelItemCount(), 100);
    m_window->press(QKeySequence("F3"));
    QCOMPARE(points->topLevelItemCount(), 200);
    m_window->press(QKeySequence("F5"));
    QCOMPARE(points->topLevelItemCount(), 100);
    QVERIFY(cancel->isEnabled());
    m_window->press(QKeySequence("Esc"));
    QVERIFY(!cancel->isEnabled());
    QCOMPARE(points->topLevelItemCount(), 100);
    // From the tab that has nothing to be searched.
    m_window->driver().showTab("tabDatabase");
    m_window->press(QKeySequence("Ctrl+F"));
    QCOMPARE(m_window->child<QTabWidget>("tabWidget")->currentWidget()->objectName(),
             "tabPointData");
    QVERIFY(m_window->child<QLineEdit>("editFind")->hasFocus());
}

void KeysTest::keysOpenAndCloseDatabasesAndWindows() {
    const auto* status = m_window->child<QLabel>("labelStatus");
    const QString file = status->text();
    m_window->press(QKeySequence("Ctrl+W"));
    QCOMPARE(status->text(), "no database opened");
    m_window->press(QKeySequence("Ctrl+Shift+O"));
    QCOMPARE(status->text(), file);
    const auto windows = openWindows();
    m_window->press(QKeySequence("Ctrl+Shift+N"));
    QCOMPARE(openWindows().size(), windows.size() + 1);
    for (MainWindow* window : openWindows())
        if (!windows.contains(window))
            QVERIFY(!window->session().database);
    m_window->press(QKeySequence("Ctrl+Q"));
    QCOMPARE(openWindows().size(), 0);
    QVERIFY(!m_window->window().isVisible());
}

void KeysTest::keysWalkTheChangelogWhileItIsShown() {
    auto* log = m_window->child<QPlainTextEdit>("editChangelog");
    log->moveCursor(QTextCursor::Start);
    const auto selected = [&] { return log->textCursor().selectedText().left(4); };
    m_window->driver().showTab("tabMetaData");
    m_window->press(QKeySequence("Ctrl+PgDown"));
    QCOMPARE(selected(), "");
    m_window->driver().showTab("tabChangelog");
    log->moveCursor(QTextCursor::Start);
    m_window->press(QKeySequence("Ctrl+PgDown"));
    QCOMPARE(selected(), "[#1]");
    m_window->press(QKeySequence("Ctrl+PgDown"));
    QCOMPARE(selected(), "[#2]");
    m_window->press(QKeySequence("Ctrl+PgUp"));
    QCOMPARE(selected(), "[#1]");
    QCOMPARE(m_window->child<QTabWidget>("tabWidget")->currentWidget()->objectName(),
             "tabChangelog");
}

void KeysTest::keysChangeTheSizeOfTexts() {
    resetTextSize();
    const auto size = [&] { return m_window->child<QWidget>("editChangelog")->font().pointSize(); };
    const int usual = size();
    m_window->press(QKeySequence("Ctrl++"));
    m_window->press(QKeySequence("Ctrl+="));
    QCOMPARE(size(), usual + 2);
    m_window->press(QKeySequence("Ctrl+-"));
    QCOMPARE(size(), usual + 1);
    m_window->press(QKeySequence("Ctrl+0"));
    QCOMPARE(size(), usual);
}

GUI_TEST_MAIN(KeysTest)
#include "keystest.moc"
