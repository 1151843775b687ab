// The fields that search and filter: where they lead, what they remember and offer, and what they
// refuse.

#include "tests/window/filecontents.h"
#include "tests/window/guitestmain.h"
#include "tests/window/sampletest.h"
#include "window/common/programsettings.h"

#include <QAction>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QPlainTextEdit>
#include <QToolButton>
#include <QTreeWidget>
#include <QtTest>

using namespace tarvo::window;

class SearchFieldsTest : public SampleTest {
    Q_OBJECT

private slots:
    void changelogIsSearchedBothWays();
    void findBarCountsAndGoesRound();
    void historyIsSharedAndClearedOnlyOnYes();
    void insertMenuHoldsEveryOperator();
    void wrongNodesAreToldAndChangeNothing();
};

void SearchFieldsTest::changelogIsSearchedBothWays() {
    const SampleWindow window{QString()};
    window.window().openFile(written(
        m_sample->path("log.txt"),
        "[#1] One\nword Alpha\n[#2] Two\nbeta alpha\nSignature: 0a\n[#3] Three\nALPHA 33\n"));
    window.driver().showTab("tabChangelog");
    auto* log = window.child<QPlainTextEdit>("editChangelog");
    auto* search = window.child<QLineEdit>("editChangelogSearch");
    QVERIFY(log->isReadOnly() && log->lineWrapMode() == QPlainTextEdit::NoWrap);
    QCOMPARE(window.child<QLabel>("labelChangelogEntries")->text(), "Log entries: 3");
    const auto step = [&](const char* action) {
        window.run(action, {});
        return log->textCursor().selectedText() + '@' +
               QString::number(log->textCursor().selectionStart());
    };
    const auto next = [&] { return step("actionChangelogNext"); };
    const auto previous = [&] { return step("actionChangelogPrevious"); };
    const QString text = log->toPlainText();
    const auto at = [&](const QString& found) {
        return found + '@' + QString::number(text.indexOf(found));
    };
    log->moveCursor(QTextCursor::Start);
    search->setText("alpha");
    QCOMPARE(next(), at("Alpha"));
    QVERIFY(log->hasFocus());
    QCOMPARE(next(), at("alpha"));
    QCOMPARE(next(), at("ALPHA"));
    QCOMPARE(next(), at("ALPHA"));  // the last one
    QCOMPARE(previous(), at("alpha"));
    QCOMPARE(previous(), at("Alpha"));
    QCOMPARE(previous(), at("Alpha"));
    search->setText(R"(\d\d)");
    QCOMPARE(next(), at("33"));
    search->setText("no such text");
    QCOMPARE(next(), at("33"));
    search->setText("(");  // no expression at all
    QCOMPARE(previous(), at("33"));
    search->clear();
    QCOMPARE(previous(), at("[#3] Three"));
    QCOMPARE(previous(), at("[#2] Two"));
    // Return in the field goes on, too.
    search->setText("signature");
    QTest::keyClick(search, Qt::Key_Return);
    QCOMPARE(log->textCursor().selectedText(), "Signature");
}

void SearchFieldsTest::findBarCountsAndGoesRound() {
    const SampleWindow window(m_sample->copy());
    window.driver().showTab("tabPointData");
    window.run("actionQuerySelectNext", {});
    window.run("actionColumnsHideAll", {});
    auto* chooser = window.child<QListWidget>("listPointAttributes");
    chooser->findItems("tarvo.class", Qt::MatchExactly).first()->setCheckState(Qt::Checked);
    auto* points = window.child<QTreeWidget>("treePointData");
    const int column = points->columnCount() > 0 ? [&] {
        for (int i = 0; i < points->columnCount(); ++i)
            if (points->headerItem()->text(i) == "tarvo.class")
                return i;
        return -1;
    }() : -1;
    QVERIFY(column > 0);
    QTRY_VERIFY(points->isColumnHidden(1) && !points->isColumnHidden(column));
    // Where the text is, in the order of reading.
    QStringList expected;
    for (int row = 0; row < points->topLevelItemCount(); ++row)
        for (const int shown : {0, column})
            if (points->topLevelItem(row)->text(shown).contains("7"))
                expected += QString("%0/%1").arg(row).arg(shown);
    QVERIFY(expected.size() > 5);
    window.run("actionQuerySelectFind", {});
    auto* edit = window.child<QLineEdit>("editFind");
    QTest::keyClicks(edit, "7");
    QStringList found;
    for (qsizetype i = 0; i <= expected.size(); ++i) {
        QCOMPARE(window.child<QLabel>("labelFind")->text(),
                 QString("%0 of %1").arg(i % expected.size() + 1).arg(expected.size()));
        found += QString("%0/%1")
                     .arg(points->indexOfTopLevelItem(points->currentItem()))
                     .arg(points->currentColumn());
        QTest::keyClick(edit, Qt::Key_F3);
    }
    QCOMPARE(found.takeLast(), expected.first());
    QCOMPARE(found, expected);
    QTest::mouseClick(window.child<QToolButton>("buttonFindPrevious"), Qt::LeftButton);
    QTest::mouseClick(window.child<QToolButton>("buttonFindPrevious"), Qt::LeftButton);
    QCOMPARE(window.child<QLabel>("labelFind")->text(), QString("%0 of %0").arg(expected.size()));
    QTest::mouseClick(window.child<QToolButton>("buttonFindNext"), Qt::LeftButton);
    QCOMPARE(window.child<QLabel>("labelFind")->text(), QString("1 of %0").arg(expected.size()));
    // Typing goes on from where one is.
    QTest::keyClick(edit, Qt::Key_F3);
    QTest::keyClick(edit, Qt::Key_Backspace);
    QTest::keyClicks(edit, "7");
    QCOMPARE(window.child<QLabel>("labelFind")->text(), QString("2 of %0").arg(expected.size()));
    QTest::mouseClick(window.child<QToolButton>("buttonFindClose"), Qt::LeftButton);
    QVERIFY(!edit->isVisible());
}

void SearchFieldsTest::historyIsSharedAndClearedOnlyOnYes() {
    const SampleWindow window(m_sample->copy());
    auto* data = window.child<QComboBox>("PointDataFilter");
    auto* index = window.child<QComboBox>("PointIndexFilter");
    const auto entries = [](const QComboBox* combo) {
        QStringList texts;
        for (int i = 0; i < combo->count(); ++i)
            texts += combo->itemText(i);
        return texts;
    };
    window.driver().showTab("tabPointData");
    data->lineEdit()->setText("  tarvo.id < 5 ");
    window.run("actionQuerySelectNext", {});
    QCOMPARE(data->currentText(), "  tarvo.id < 5 ");
    window.driver().showTab("tabPointIndex");
    index->lineEdit()->setText("2");
    window.run("actionPointIndexFilterNodes", {});
    const QStringList both = {"2", "tarvo.id < 5"};
    QCOMPARE(entries(data), both);
    QCOMPARE(entries(index), both);
    QCOMPARE(ProgramSettings().value("RecentFilters").toStringList(), both);
    QCOMPARE(index->insertPolicy(), QComboBox::NoInsert);

    QAction* clear = nullptr;
    QAction* clearFilter = nullptr;
    for (QAction* action : window.child<QToolButton>("buttonFilterMenu")->menu()->actions()) {
        clear = action->text() == "Clear history" ? action : clear;
        clearFilter = action->text() == "Clear filter" ? action : clearFilter;
    }
    QVERIFY(clear && clearFilter);
    window.driver().showTab("tabPointData");
    for (const bool yes : {false, true}) {
        ModalScript script({ModalScript::press(yes ? "Yes" : "No")});
        clear->trigger();
        QCOMPARE(script.texts(), QStringList("Delete all recently used filter strings?"));
        QCOMPARE(entries(data), yes ? QStringList() : both);
        QCOMPARE(entries(index), yes ? QStringList() : both);
    }
    QVERIFY(ProgramSettings().value("RecentFilters").toStringList().isEmpty());
    QCOMPARE(data->currentText(), "  tarvo.id < 5 ");
    QVERIFY(window.child<QAction>("actionQuerySelectCancel")->isEnabled());
    clearFilter->trigger();
    QCOMPARE(data->currentText(), "");
    QVERIFY(!window.child<QAction>("actionQuerySelectCancel")->isEnabled());
    QCOMPARE(data->lineEdit()->placeholderText(),
             "enter filter expression or leave empty to get all points");
    QCOMPARE(index->lineEdit()->placeholderText(),
             "enter filter expression or node id or leave empty to query all nodes");
    QCOMPARE(window.child<QLineEdit>("editPointDataNodes")->placeholderText(),
             "enter node id or leave empty to query all nodes");
}

void SearchFieldsTest::insertMenuHoldsEveryOperator() {
    const SampleWindow window(m_sample->copy());
    window.driver().showTab("tabPointData");
    const auto* menu = window.child<QToolButton>("buttonFilterMenu")->menu();
    const auto entriesOf = [&](int submenu) {
        QStringList entries;
        for (const QAction* action : menu->actions()[submenu]->menu()->actions())
            entries += action->isSeparator() ? QString("-")
                                             : action->text() + '|' + action->data().toString();
        return entries;
    };
    QCOMPARE(entriesOf(1), QStringList({":minimum|:minimum", ":maximum|:maximum",
                                        ":default|:default", ":invalid|:invalid"}));
    QCOMPARE(entriesOf(2), QStringList({"is equal to (==)|==", "not equal to (!=)|!=", "-",
                                        "less than (<)|<", "less than or equal to (<=)|<=", "-",
                                        "greater than (>)|>", "greater than or equal to (>=)|>=",
                                        "-", "and (&&&&)|&&", "or (||)|||", "-", "modulo (%)|%"}));
    QCOMPARE(entriesOf(3),
             QStringList(
                 {"find largest leaf|find largest leaf", "find fullest leaf|find fullest leaf",
                  "find largest node|find largest node", "find fullest node|find fullest node"}));
    // Of attributes that have an invalid value.
    QCOMPARE(entriesOf(4),
             QStringList("tarvo.id != tarvo.id:invalid|tarvo.id != tarvo.id:invalid"));
    // What they insert, one after the other.
    const auto* filter = window.child<QComboBox>("PointDataFilter");
    const auto trigger = [&](int submenu, int entry) {
        menu->actions()[submenu]->menu()->actions()[entry]->trigger();
        return filter->currentText();
    };
    QCOMPARE(trigger(0, 3), "own.single ");
    QCOMPARE(trigger(1, 1), "own.single:maximum ");
    QCOMPARE(trigger(2, 0), "own.single:maximum == ");
    QVERIFY(filter->lineEdit()->hasFocus());
}

void SearchFieldsTest::wrongNodesAreToldAndChangeNothing() {
    const SampleWindow window(m_sample->copy());
    window.driver().showTab("tabPointIndex");
    auto* index = window.child<QComboBox>("PointIndexFilter");
    auto* tree = window.child<QTreeWidget>("treePointIndexNodes");
    const QString summary = window.child<QLabel>("labelPointIndex")->text();
    const int rows = tree->topLevelItem(0)->childCount();
    const std::pair<const char*, const char*> wrong[] = {
        {"1-2-3", "Invalid input: \"1-2-3\""}, {"4294967296", "Failed to parse: \"4294967296\""}};
    for (const auto& [nodes, message] : wrong) {
        index->lineEdit()->setText(nodes);
        QCOMPARE(window.run("actionPointIndexFilterNodes", {ModalScript::press("OK")}),
                 QStringList(message));
        QCOMPARE(window.child<QLabel>("labelPointIndex")->text(), summary);
        QCOMPARE(tree->topLevelItem(0)->childCount(), rows);
    }
    window.driver().showTab("tabPointData");
    window.child<QLineEdit>("editPointDataNodes")->setText("x");
    for (const char* action : {"actionQuerySelectNext", "actionQuerySelectCount"})
        QCOMPARE(window.run(action, {ModalScript::press("OK")}),
                 QStringList("Failed to parse: \"x\""));
    QVERIFY(!window.child<QAction>("actionQuerySelectCancel")->isEnabled());
}

GUI_TEST_MAIN(SearchFieldsTest)
#include "searchfieldstest.moc"
