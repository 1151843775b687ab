// What helps while a filter is typed: names and values that complete it, the check behind the last
// key, filters that are kept under a name.

#include "tests/window/guitestmain.h"
#include "tests/window/samplewindowtest.h"
#include "window/common/aside.h"
#include "window/common/savedfilters.h"
#include "window/dialogs/filterinsertmenu.h"
#include "window/widgets/filterwords.h"

#include <QAbstractItemView>
#include <QAction>
#include <QComboBox>
#include <QCompleter>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTextLayout>
#include <QToolButton>
#include <QTreeWidget>
#include <QtTest>
#include <thread>

using namespace tarvo::window;

class FilterHelpTest : public SampleWindowTest {
    Q_OBJECT

public:
    FilterHelpTest() : SampleWindowTest("tabPointData") {}

private slots:
    void init();

    void wordsAreFoundAtTheCursor();
    void namesAreCompletedWhereTheyStand();
    void valuesAreCompletedByTheirNames();
    void returnRunsTheFilterWhereNothingIsChosen();
    void namesStandForTheirValues();
    void mistakesAreToldBehindTheLastKey();
    void checksWaitForOtherWork();
    void nodeListsAndCommandsAreNoMistakes();
    void filtersAreKeptUnderNames();
    void caretStandsBelowItsPlace();

private:
    QLineEdit* edit(const char* box = "PointDataFilter") {
        return m_window->child<QComboBox>(box)->lineEdit();
    }
    QAbstractItemView* popup() { return in<QCompleter>(edit(), "filterCompletion")->popup(); }
    QStringList offered() {
        QStringList texts;
        if (popup()->isVisible())
            for (int row = 0; row < popup()->model()->rowCount(); ++row)
                texts += popup()->model()->index(row, 0).data().toString();
        return texts;
    }
    void type(const QString& text) {
        edit()->clear();
        QTest::keyClicks(edit(), text);
    }
    QLabel* finding() { return m_window->child<QLabel>("labelPointDataFilter"); }
};

void FilterHelpTest::init() {
    SampleWindowTest::init();
    edit()->setFocus();
}

void FilterHelpTest::wordsAreFoundAtTheCursor() {
    // "|" is the cursor; then what is replaced, what was typed of it, what it is compared with.
    const struct {
        QString filter, replaced, typed, compared;
    } cases[] = {
        {"tar|", "tar", "tar", ""},
        {"a.b == 1 && tarvo.cl| > 2", "tarvo.cl", "tarvo.cl", ""},
        {"(tarvo.re|flectance > 1", "tarvo.reflectance", "tarvo.re", ""},
        {"ta|rvo.xyz[0] < 1", "tarvo.xyz[0]", "ta", ""},
        {"tarvo.xyz[|", "tarvo.xyz[", "tarvo.xyz[", ""},
        {"tarvo.class == |", "", "", "tarvo.class"},
        {"own.vector [ 3 ]>=gr|ou", "grou", "gr", "own.vector"},
        {"a<-|1", "-1", "-", "a"},
        {"tarvo.class == 'hi|gh x' && a", "'high x'", "hi", "tarvo.class"},
        {"tarvo.class!=\"a b|", "\"a b", "a b", "tarvo.class"},
        {"tarvo.class == 'a|b' || x == 'c d'", "'ab'", "a", "tarvo.class"},
        {"tarvo.class == 'a b' && cl|", "cl", "cl", ""},
        {"tarvo.class == 2 |", "none", "", ""},
        {"tarvo.class:mi|", "none", "", ""},
        {"1e|5", "none", "", ""},
        {"|", "none", "", ""},
        {QString("x").repeated(100000) + " < tar|", "tar", "tar", QString("x").repeated(100000)},
    };
    for (const auto& expected : cases) {
        const qsizetype cursor = expected.filter.indexOf('|');
        const QString filter = QString(expected.filter).remove('|');
        const auto word = filterWordAt(filter, cursor);
        const QString about = expected.filter.left(60);
        QVERIFY2(word.has_value() == (expected.replaced != "none"), qUtf8Printable(about));
        if (!word)
            continue;
        QCOMPARE(filter.mid(word->begin, word->end - word->begin), expected.replaced);
        QCOMPARE(word->text, expected.typed);
        if (expected.compared.size() < 100)
            QCOMPARE(word->compared, expected.compared);
    }
}

void FilterHelpTest::namesAreCompletedWhereTheyStand() {
    type("REF");
    QCOMPARE(offered(), QStringList("tarvo.reflectance"));
    QTest::keyClick(popup(), Qt::Key_Tab);
    QCOMPARE(edit()->text(), "tarvo.reflectance");
    QVERIFY(!popup()->isVisible());

    // In the middle, in place of what stands there; nothing else changes.
    edit()->setText("(tarvo.cl == 2) && own.single > 1");
    edit()->setCursorPosition(4);
    QTest::keyClick(edit(), Qt::Key_Q);
    QVERIFY(!popup()->isVisible());
    QTest::keyClick(edit(), Qt::Key_Backspace);
    QVERIFY(offered().contains("tarvo.xyz[2]"));
    QVERIFY(!offered().contains("own.single"));
    edit()->setCursorPosition(9);
    QTRY_COMPARE(offered(), QStringList("tarvo.class"));
    QTest::keyClick(popup(), Qt::Key_Down);
    QTest::keyClick(popup(), Qt::Key_Return);
    QCOMPARE(edit()->text(), "(tarvo.class == 2) && own.single > 1");
    QCOMPARE(edit()->cursorPosition(), 12);

    // Nothing begins by itself; one can ask.
    edit()->clear();
    QVERIFY(!popup()->isVisible());
    edit()->setFocus();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space, Qt::ControlModifier);
    QVERIFY(offered().contains("own.constant[1]") && offered().contains("own.vector"));
    QTest::keyClick(popup(), Qt::Key_Escape);
    QVERIFY(!popup()->isVisible() && edit()->text().isEmpty());
    // Nor does it stay over what a function key shows.
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space, Qt::ControlModifier);
    QVERIFY(popup()->isVisible());
    QTest::keyClick(popup(), Qt::Key_F3);
    QVERIFY(!popup()->isVisible());
}

void FilterHelpTest::valuesAreCompletedByTheirNames() {
    type("tarvo.class ==");
    const QStringList all = offered();
    QVERIFY(all.size() > 3);
    for (const QString& entry : all) {
        bool isNumber = false;
        entry.section(' ', 0, 0).toInt(&isNumber);
        QVERIFY2(isNumber && entry.contains(' '), qUtf8Printable(entry));
    }
    QTest::keyClicks(edit(), " gro");
    QVERIFY(!offered().isEmpty() && offered().first().contains("ground", Qt::CaseInsensitive));
    const QString number = offered().first().section(' ', 0, 0);
    QTest::mouseClick(popup()->viewport(), Qt::LeftButton, {},
                      popup()->visualRect(popup()->model()->index(0, 0)).center());
    QTRY_COMPARE(edit()->text(), "tarvo.class == " + number);
    // Names in quotation marks, too.
    type("tarvo.class == 'gro");
    popup()->setCurrentIndex(popup()->model()->index(0, 0));
    QTest::keyClick(popup(), Qt::Key_Return);
    QCOMPARE(edit()->text(), "tarvo.class == " + number);
    type("own.single == 'tar");
    QVERIFY(!popup()->isVisible());
    // An attribute without named values is compared with others.
    type("own.single < tarvo.refl");
    QCOMPARE(offered(), QStringList("tarvo.reflectance"));
}

void FilterHelpTest::returnRunsTheFilterWhereNothingIsChosen() {
    type("tarvo.id <= 7 && own.sing");
    QVERIFY(popup()->isVisible());
    QTest::keyClick(popup(), Qt::Key_Escape);
    type("tarvo.id > own");
    QVERIFY(popup()->isVisible());
    edit()->setText("tarvo.id <= 7");
    popup()->setCurrentIndex({});
    QTest::keyClick(popup(), Qt::Key_Return);
    QTRY_COMPARE(m_window->child<QTreeWidget>("treePointData")->topLevelItemCount(), 7);
}

void FilterHelpTest::namesStandForTheirValues() {
    const auto rows = [&](const QString& filter) {
        if (m_window->child<QAction>("actionQuerySelectCancel")->isEnabled())
            m_window->run("actionQuerySelectCancel", {});
        edit()->setText(filter);
        m_window->run("actionQuerySelectNext", {});
        return m_window->child<QTreeWidget>("treePointData")->topLevelItemCount();
    };
    const int all = rows("tarvo.id <= 60");
    const int number = rows("tarvo.id <= 60 && tarvo.class <= 20");
    QVERIFY(number > 0 && number < all);
    QCOMPARE(rows("tarvo.id <= 60 && tarvo.class <= 'ignored ground'"), number);
    QTest::qWait(400);
    QVERIFY(!finding()->isVisible());
    edit()->setText("tarvo.class == gruond");
    QTRY_VERIFY(finding()->isVisible());
    QVERIFY2(finding()->text().contains("Did you mean \"ground\"?"),
             qUtf8Printable(finding()->text()));
    edit()->setText("tarvo.class == 'ground' && tarvo.nope");
    QTRY_VERIFY2(finding()->text().contains("position 28"), qUtf8Printable(finding()->text()));
    m_window->driver().showTab("tabPointIndex");
    edit("PointIndexFilter")->setText("tarvo.class == ground");
    QTest::qWait(400);
    QVERIFY(!m_window->child<QLabel>("labelPointIndexFilter")->isVisible());
}

void FilterHelpTest::mistakesAreToldBehindTheLastKey() {
    type("tarvo.id > 1 && tarvo.nope == 3");
    QVERIFY(!finding()->isVisible());
    QTRY_VERIFY(finding()->isVisible());
    QVERIFY2(finding()->text().contains("tarvo.nope"), qUtf8Printable(finding()->text()));
    QVERIFY(!m_window->child<QLabel>("labelPointIndexFilter")->text().contains("nope"));
    QTest::keyClicks(edit(), "0");  // goes on where it was
    QCOMPARE(edit()->text(), "tarvo.id > 1 && tarvo.nope == 30");

    // Marked is what the caret of the error stands below; that is seen.
    const auto reds = [&] {
        const QImage picture = edit()->grab().toImage();
        int left = picture.width(), right = -1;
        for (int x = 0; x < picture.width(); ++x)
            for (int y = 0; y < picture.height(); ++y)
                if (const QColor c = picture.pixelColor(x, y);
                    c.red() > c.green() + 80 && c.red() > c.blue() + 60) {
                    left = std::min(left, x);
                    right = std::max(right, x);
                }
        return std::make_pair(left, right);
    };
    const auto [left, right] = reds();
    const auto advance = [&](const QString& text) {
        return edit()->fontMetrics().horizontalAdvance(text);
    };
    QVERIFY(right > left);
    QVERIFY2(left >= advance("tarvo.id > 1 &&") && left <= advance("tarvo.id > 1 && tarvo"),
             qUtf8Printable(QString::number(left)));

    type("tarvo.id > 1");
    QTRY_VERIFY(!finding()->isVisible());
    QVERIFY(reds().second < 0);
    type("tarvo.id > ");  // nothing stands where something is missing
    popup()->hide();
    QTRY_VERIFY(finding()->isVisible());
    QVERIFY(reds().second > 0);
    edit()->clear();
    QTRY_VERIFY(!finding()->isVisible());

    // The query that is there goes on as if nothing had been typed elsewhere.
    m_window->run("actionQuerySelectNext", {});
    edit("PointIndexFilter")->setText("tarvo.id >");
    QTRY_VERIFY(!m_window->child<QLabel>("labelPointIndexFilter")->text().isEmpty());
    m_window->run("actionQuerySelectNext", {});
    QCOMPARE(m_window->child<QTreeWidget>("treePointData")->topLevelItemCount(), 200);
}

void FilterHelpTest::checksWaitForOtherWork() {
    edit()->setText("tarvo.nope");
    bool isWrong = false;
    workAside(&m_window->window(), "Waiting ...", [&](const StepProgress&) {
        for (int i = 0; i < 10; ++i) {
            std::this_thread::sleep_for(std::chrono::milliseconds(100));
            isWrong = isWrong || !finding()->text().isEmpty();
        }
    });
    QVERIFY(!isWrong);
    QTRY_VERIFY(finding()->isVisible());
}

void FilterHelpTest::nodeListsAndCommandsAreNoMistakes() {
    m_window->driver().showTab("tabPointIndex");
    auto* label = m_window->child<QLabel>("labelPointIndexFilter");
    for (const char* filter : {"3,7-12", "Find fullest leaf", "tarvo.id > 3"}) {
        edit("PointIndexFilter")->setText(filter);
        QTest::qWait(400);
        QVERIFY2(!label->isVisible(), filter);
    }
    edit("PointIndexFilter")->setText("3,7-");
    QTRY_VERIFY(label->isVisible());
    QCOMPARE(label->text(), "Invalid input: \"7-\"");
}

void FilterHelpTest::filtersAreKeptUnderNames() {
    auto* menu =
        qobject_cast<FilterInsertMenu*>(m_window->child<QToolButton>("buttonFilterMenu")->menu());
    QVERIFY(menu);
    const auto entry = [](const QMenu* in, const QString& text) -> QAction* {
        for (QAction* action : in->actions())
            if (action->text() == text)
                return action;
        return nullptr;
    };
    const auto choose = [&](const QString& submenu, const QString& text,
                            std::vector<ModalScript::Step> steps = {}) {
        emit menu->aboutToShow();
        const QMenu* in = submenu.isEmpty() ? menu : entry(menu, submenu)->menu();
        QAction* action = entry(in, text);
        QVERIFY(action && action->isEnabled());
        ModalScript script(std::move(steps));
        action->trigger();
    };
    const auto named = [](const QString& name) {
        return [name](QDialog* dialog) {
            auto* line = dialog->findChild<QLineEdit*>();
            line->clear();
            QTest::keyClicks(line, name);
            QTest::keyClick(line, Qt::Key_Return);
        };
    };
    emit menu->aboutToShow();
    QVERIFY(!entry(menu, "Save filter ...")->isEnabled());
    QVERIFY(!entry(menu, "Saved filters")->isEnabled());

    edit()->setText("tarvo.class == 2 && tarvo.id > 5");
    choose("", "Save filter ...", {named("Ground = A & B, low")});
    edit()->setText("own.single < 3");
    choose("", "Save filter ...", {named("  "), ModalScript::press("OK")});
    choose("", "Save filter ...", {named("other")});
    QCOMPARE(SavedFilters::all().size(), 2);
    // The names are those of the program: the tab beside has them, too.
    auto* beside = m_window->child<QToolButton>("buttonPointIndexFilterMenu")->menu();
    emit beside->aboutToShow();
    QCOMPARE(entry(beside, "Saved filters")->menu()->actions().size(), 2);

    choose("Saved filters", "Ground = A && B, low");
    QCOMPARE(edit()->text(), "tarvo.class == 2 && tarvo.id > 5");
    QCOMPARE(m_window->window().focusWidget(), m_window->child<QWidget>("PointDataFilter"));
    choose("", "Save filter ...", {named("other"), ModalScript::press("No")});
    QCOMPARE(SavedFilters::all()["other"], "own.single < 3");
    choose("Remove saved filter", "other", {ModalScript::press("Yes")});
    QCOMPARE(SavedFilters::all().keys(), QStringList("Ground = A & B, low"));
}

void FilterHelpTest::caretStandsBelowItsPlace() {
    for (const int before : {2, 20, 60}) {
        const QString filter =
            QString("tarvo.id > 1 && ").repeated(before / 2).left(16 * before / 2) +
            "tarvo.nope == 3 && " + QString("tarvo.id < 9 && ").repeated(4) + "tarvo.id > 1";
        edit()->setText(filter);
        QStringList lines;
        int room = 0, width = 0;
        m_window->run("actionQuerySelectNext", {[&](QDialog* dialog) {
                          const auto* label = dialog->findChild<QLabel*>("qt_msgbox_label");
                          lines = label->text().split('\n');
                          room = label->contentsRect().width();
                          for (const QString& line : lines.mid(lines.size() - 2))
                              width = std::max(width, label->fontMetrics().horizontalAdvance(line));
                          ModalScript::pressButton(dialog, "OK");
                      }});
        const QString place =
            lines.value(lines.size() - 2).mid(lines.value(lines.size() - 1).indexOf('^'));
        QVERIFY2(place.startsWith("tarvo.nope"), qUtf8Printable(lines.join('\n')));
        // No line is broken.
        QVERIFY2(width <= room, qUtf8Printable(QString("%1 in %2").arg(width).arg(room)));
    }
}

GUI_TEST_MAIN(FilterHelpTest)
#include "filterhelptest.moc"
