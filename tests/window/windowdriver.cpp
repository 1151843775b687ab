#include "tests/window/windowdriver.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPlainTextEdit>
#include <QSpinBox>
#include <QTabWidget>
#include <QTextEdit>
#include <QTreeWidget>
#include <QtTest>

using namespace tarvo::window;

void WindowDriver::showTab(const char* name) const {
    auto* tabs = child<QTabWidget>("tabWidget");
    const int index = tabs->indexOf(child<QWidget>(name));
    QTest::mouseClick(tabs->tabBar(), Qt::LeftButton, {}, tabs->tabBar()->tabRect(index).center());
    QCOMPARE(tabs->currentIndex(), index);
}

QStringList WindowDriver::run(const char* action, std::vector<ModalScript::Step> steps) const {
    auto* wanted = child<QAction>(action);
    if (!wanted->isEnabled()) {
        QTest::qFail(qPrintable(QString("the action %1 is disabled").arg(action)), __FILE__,
                     __LINE__);
        return {};
    }
    const std::size_t expected = steps.size();
    ModalScript script(std::move(steps));
    wanted->trigger();
    if (script.answered() != expected)
        QTest::qFail(
            qPrintable(QString("of %1 dialogs %2 came").arg(expected).arg(script.answered())),
            __FILE__, __LINE__);
    return script.texts();
}

QTreeWidgetItem* WindowDriver::select(const char* tree, const QString& text, bool add) const {
    auto* list = child<QTreeWidget>(tree);
    const auto found = list->findItems(text, Qt::MatchExactly | Qt::MatchRecursive, 0);
    if (found.isEmpty())
        return nullptr;
    clickRow(found.first(), add ? Qt::ControlModifier : Qt::NoModifier);
    return found.first();
}

void clickRow(QTreeWidgetItem* row, Qt::KeyboardModifiers modifiers) {
    QTreeWidget* tree = row->treeWidget();
    tree->scrollToItem(row);
    const QRect seen = tree->visualItemRect(row) & tree->viewport()->rect();
    QTest::mouseClick(tree->viewport(), Qt::LeftButton, modifiers, seen.center());
}

void doubleClickRow(QTreeWidgetItem* row) {
    clickRow(row);
    const QTreeWidget* tree = row->treeWidget();
    const QRect seen = tree->visualItemRect(row) & tree->viewport()->rect();
    QTest::mouseDClick(tree->viewport(), Qt::LeftButton, {}, seen.center());
}

void dragInHeader(QHeaderView* header, int from, int to) {
    QWidget* viewport = header->viewport();
    const int y = viewport->height() / 2;
    QTest::mousePress(viewport, Qt::LeftButton, {}, {from, y});
    for (const int x : {from + (to - from) / 2, to}) {
        QMouseEvent move(QEvent::MouseMove, QPointF(x, y), viewport->mapToGlobal(QPointF(x, y)),
                         Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(viewport, &move);
    }
    QTest::mouseRelease(viewport, Qt::LeftButton, {}, {to, y});
}

QStringList namelessControls(QWidget* parent) {
    QStringList nameless;
    for (QWidget* widget : parent->findChildren<QWidget*>()) {
        const bool control =
            qobject_cast<QAbstractButton*>(widget) || qobject_cast<QLineEdit*>(widget) ||
            qobject_cast<QComboBox*>(widget) || qobject_cast<QAbstractItemView*>(widget) ||
            qobject_cast<QTextEdit*>(widget) || qobject_cast<QPlainTextEdit*>(widget) ||
            qobject_cast<QAbstractSpinBox*>(widget);
        const bool part = qobject_cast<QComboBox*>(widget->parentWidget()) ||
                          qobject_cast<QLineEdit*>(widget->parentWidget());
        if (!control || part || widget->objectName().startsWith("qt_") ||
            widget->objectName().isEmpty())
            continue;
        auto* accessible = QAccessible::queryAccessibleInterface(widget);
        if (!accessible || accessible->text(QAccessible::Name).isEmpty())
            nameless += widget->objectName();
    }
    return nameless;
}

QStringList keysClaimedTwice(QWidget* parent) {
    QMap<QString, QStringList> owners;
    const auto claim = [&](const QWidget* widget, const QString& text) {
        const QKeySequence key = QKeySequence::mnemonic(text);
        if (widget->isVisibleTo(parent) && !key.isEmpty())
            owners[key.toString()] += widget->objectName();
    };
    for (const auto* button : parent->findChildren<QAbstractButton*>())
        claim(button, button->text());
    for (const auto* label : parent->findChildren<QLabel*>())
        if (label->buddy())
            claim(label, label->text());
    for (const auto* tabs : parent->findChildren<QTabWidget*>())
        for (int i = 0; i < tabs->count(); ++i)
            claim(tabs, tabs->tabText(i));
    QStringList twice;
    for (const QStringList& names : owners)
        twice += names.size() > 1 ? QStringList(names.join(" and ")) : QStringList();
    return twice;
}
