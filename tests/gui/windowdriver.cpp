#include "tests/gui/windowdriver.h"

#include <QAction>
#include <QTabWidget>
#include <QTreeWidget>
#include <QtTest>

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
    list->scrollToItem(found.first());
    QTest::mouseClick(list->viewport(), Qt::LeftButton, add ? Qt::ControlModifier : Qt::NoModifier,
                      list->visualItemRect(found.first()).center());
    return found.first();
}
