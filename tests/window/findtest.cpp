// The find bars of the tabs: where they find, the keys that lead through the hits, and whose those
// keys are.

#include "tests/window/guitestmain.h"
#include "tests/window/samplewindowtest.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTabBar>
#include <QTabWidget>
#include <QTextEdit>
#include <QToolButton>
#include <QTreeWidget>
#include <QtTest>

using namespace tarvo::window;

class FindTest : public SampleWindowTest {
    Q_OBJECT

public:
    FindTest() : SampleWindowTest("tabMetaData") {}

private slots:
    void metaDataAreFoundInNamesAndValues();
    void attributesAreFoundInTheirGroups();
    void transactionsAreFound();
    void reportsAreFoundIn();
    void returnGoesOnInTheChangelog();
    void keysServeTheListWhileTheBarIsShown();
    void keyFindsInTheTabThatIsShown();
    void editorOfAnItemKeepsItsKeys();
    void barFollowsWhatTheListShows();

private:
    // The bar's part in this tab.
    template <typename Widget>
    Widget* part(const char* name) {
        return m_window->child<Widget>(qPrintable(name + m_suffix));
    }
    QTreeWidget* list() { return m_window->child<QTreeWidget>(qPrintable("tree" + m_suffix)); }
    void open(const QString& suffix, const QString& text) {
        m_suffix = suffix;
        m_window->driver().showTab(qPrintable("tab" + suffix));
        m_window->press(QKeySequence("Ctrl+F"));
        QVERIFY(part<QLineEdit>("editFind")->hasFocus());
        QTest::keyClicks(part<QLineEdit>("editFind"), text);
    }
    // The hit's row and column, and the count beside the line.
    QString found() {
        const QTreeWidgetItem* row = list()->currentItem();
        return QString("%1/%2: %3")
            .arg(row ? row->text(0) : QString())
            .arg(list()->currentColumn())
            .arg(part<QLabel>("labelFind")->text());
    }
    // To whichever widget has the keyboard.
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        m_window->window().activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&m_window->window()));
        QTest::keyClick(QApplication::focusWidget(), key, modifiers);
    }

    QString m_suffix;
};

void FindTest::metaDataAreFoundInNamesAndValues() {
    open("MetaData", "NO");
    QCOMPARE(found(), "own.note/0: 1 of 2");
    QVERIFY(list()->selectedItems().isEmpty());
    press(Qt::Key_Return);
    QCOMPARE(found(), "own.text/3: 2 of 2");
    press(Qt::Key_F3);
    QCOMPARE(found(), "own.note/0: 1 of 2");
    press(Qt::Key_F3, Qt::ShiftModifier);
    QCOMPARE(found(), "own.text/3: 2 of 2");
    press(Qt::Key_Escape);
    QVERIFY(!part<QWidget>("findBar")->isVisible());
    // What was found can be edited at once.
    QVERIFY(list()->hasFocus());
    QCOMPARE(list()->selectedItems(), QList({list()->currentItem()}));
    QString name;
    ModalScript script({[&](QDialog* dialog) {
        name = in<QComboBox>(dialog, "editName")->currentText();
        dialog->reject();
    }});
    press(Qt::Key_Return);
    QCOMPARE(name, "own.text");
}

void FindTest::attributesAreFoundInTheirGroups() {
    m_window->driver().showTab("tabPointAttributes");
    QTreeWidgetItem* group = m_window->child<QTreeWidget>("treePointAttributes")->topLevelItem(0);
    group->setExpanded(false);
    open("PointAttributes", "own.S");
    QCOMPARE(found(), "own.single/0: 1 of 2");
    QVERIFY(list()->currentItem()->parent()->isExpanded());
    press(Qt::Key_Enter);
    QCOMPARE(found(), "own.single/1: 2 of 2");  // its title
    QVERIFY(list()->visualItemRect(list()->currentItem()).isValid());
    QTest::mouseClick(part<QToolButton>("buttonFindClose"), Qt::LeftButton);
    QCOMPARE(list()->selectedItems(), QList({list()->currentItem()}));
    QVERIFY(m_window->child<QAction>("actionPointAttributeEdit")->isEnabled());
}

void FindTest::transactionsAreFound() {
    open("Transactions", "creation");
    QCOMPARE(found(), "1/1: 1 of 1");
    press(Qt::Key_Escape);
    QCOMPARE(list()->selectedItems(), QList({list()->currentItem()}));
}

void FindTest::reportsAreFoundIn() {
    m_window->driver().showTab("tabInspection");
    m_window->run("actionInspectionUpdate", {});
    auto* report = m_window->child<QTextEdit>("textInspectionResult");
    open("Inspection", "CHUNK");
    const QString count = part<QLabel>("labelFind")->text();
    QVERIFY2(count.startsWith("1 of "), qUtf8Printable(count));
    QCOMPARE(report->textCursor().selectedText(), "Chunk");
    const int first = report->textCursor().selectionStart();
    part<QLineEdit>("editFind")->setText("a");
    press(Qt::Key_Return);
    QCOMPARE(report->textCursor().selectedText().toLower(), "a");
    const int second = report->textCursor().selectionStart();
    QVERIFY(second > first);
    press(Qt::Key_Return, Qt::ShiftModifier);
    press(Qt::Key_F3);
    QCOMPARE(report->textCursor().selectionStart(), second);
    // Another report has other hits.
    m_window->window().refreshPanels();
    QCOMPARE(part<QLabel>("labelFind")->text(), "no hits");
    press(Qt::Key_Escape);
    QVERIFY(report->hasFocus() && !part<QWidget>("findBar")->isVisible());
}

void FindTest::returnGoesOnInTheChangelog() {
    m_window->driver().showTab("tabChangelog");
    m_window->press(QKeySequence("Ctrl+F"));
    QTest::keyClicks(m_window->child<QLineEdit>("editChangelogSearch"), "e");
    const auto* log = m_window->child<QPlainTextEdit>("editChangelog");
    std::vector<int> places;
    for (const Qt::KeyboardModifiers& modifiers : {Qt::KeyboardModifiers(), Qt::KeyboardModifiers(),
                                                   Qt::KeyboardModifiers(Qt::ShiftModifier)}) {
        press(Qt::Key_Return, modifiers);
        places.push_back(log->textCursor().selectionStart());
    }
    QVERIFY(places[0] < places[1]);
    QCOMPARE(places[2], places[0]);
    // From the field, too.
    m_window->press(QKeySequence("Ctrl+F"));
    press(Qt::Key_Return);
    m_window->press(QKeySequence("Ctrl+F"));
    press(Qt::Key_Return, Qt::ShiftModifier);
    QCOMPARE(log->textCursor().selectionStart(), places[0]);
}

void FindTest::keysServeTheListWhileTheBarIsShown() {
    const auto* points = m_window->child<QTreeWidget>("treePointData");
    for (const char* suffix : {"MetaData", "PointAttributes"}) {
        open(suffix, "own.");
        const QString first = found();
        list()->setFocus();
        press(Qt::Key_F3);
        QVERIFY2(found() != first && found().contains(": 2 of "), qUtf8Printable(found()));
        press(Qt::Key_F3, Qt::ShiftModifier);
        QCOMPARE(found(), first);
        press(Qt::Key_Escape);
        QVERIFY(!part<QWidget>("findBar")->isVisible());
        // They are nobody's here afterwards.
        press(Qt::Key_F3);
        QCOMPARE(found(), first);
        QCOMPARE(points->topLevelItemCount(), 0);
    }
    m_window->driver().showTab("tabPointData");
    m_window->press(QKeySequence("F3"));
    QCOMPARE(points->topLevelItemCount(), 100);
}

void FindTest::keyFindsInTheTabThatIsShown() {
    m_window->driver().showTab("tabPointData");
    m_window->press(QKeySequence("F3"));
    const auto* tabs = m_window->child<QTabWidget>("tabWidget");
    for (const char* suffix : {"MetaData", "PointAttributes"}) {
        m_suffix = suffix;
        m_window->driver().showTab(qPrintable("tab" + m_suffix));
        tabs->tabBar()->setFocus();
        press(Qt::Key_F, Qt::ControlModifier);
        QCOMPARE(tabs->currentWidget()->objectName(), "tab" + m_suffix);
        QVERIFY(part<QLineEdit>("editFind")->hasFocus());
        // Once more, from the line itself.
        QTest::keyClicks(part<QLineEdit>("editFind"), "x");
        press(Qt::Key_F, Qt::ControlModifier);
        QCOMPARE(part<QLineEdit>("editFind")->selectedText(), "x");
    }
    for (const char* tab : {"tabPointData", "tabDatabase"}) {
        m_window->driver().showTab(tab);
        m_window->press(QKeySequence("Ctrl+F"));
        QCOMPARE(tabs->currentWidget()->objectName(), "tabPointData");
        QVERIFY(m_window->child<QLineEdit>("editFind")->hasFocus());
    }
    // Fields that search or filter.
    m_window->driver().showTab("tabChangelog");
    m_window->press(QKeySequence("Ctrl+F"));
    QVERIFY(m_window->child<QLineEdit>("editChangelogSearch")->hasFocus());
    m_window->driver().showTab("tabPointIndex");
    m_window->press(QKeySequence("Ctrl+F"));
    QVERIFY(m_window->child<QComboBox>("PointIndexFilter")->lineEdit()->hasFocus());
}

void FindTest::editorOfAnItemKeepsItsKeys() {
    open("MetaData", "own.");
    const QString first = found();
    QVERIFY(m_window->driver().select("treeMetaData", "own.note"));
    m_window->run("actionMetaDataEdit", {[&](QDialog* dialog) {
                      auto* value = in<QWidget>(dialog, "editValue");
                      value->setFocus();
                      QTest::keyClick(value, Qt::Key_F, Qt::ControlModifier);
                      QTest::keyClick(value, Qt::Key_F3);
                      QVERIFY(value->hasFocus());
                      QCOMPARE(list()->currentItem()->text(0), "own.note");
                      QTest::keyClick(value, Qt::Key_Escape);
                  }});
    QVERIFY(part<QWidget>("findBar")->isVisible());
}

void FindTest::barFollowsWhatTheListShows() {
    open("MetaData", "own.new");
    QCOMPARE(part<QLabel>("labelFind")->text(), "no hits");
    m_window->begin();
    m_window->database().metaData().set("own.new", "1");
    m_window->window().refreshPanels();
    QVERIFY2(part<QLabel>("labelFind")->text().startsWith('1'),
             qUtf8Printable(part<QLabel>("labelFind")->text()));
    list()->sortByColumn(0, Qt::DescendingOrder);
    list()->setFocus();
    press(Qt::Key_F3);
    QCOMPARE(found(), "own.new/0: 1 of 1");
}

GUI_TEST_MAIN(FindTest)
#include "findtest.moc"
