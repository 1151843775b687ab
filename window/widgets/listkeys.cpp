#include "window/widgets/listkeys.h"

#include <QAction>
#include <QShortcut>
#include <QTreeWidget>

namespace tarvo::window {

void useListKeys(QTreeWidget* list, QAction* edit, QAction* remove) {
    const auto use = [&](Qt::Key key, QAction* action) {
        auto* shortcut = new QShortcut(QKeySequence(key), list);
        shortcut->setContext(Qt::WidgetShortcut);
        QObject::connect(shortcut, &QShortcut::activated, action, &QAction::trigger);
    };
    use(Qt::Key_Return, edit);
    use(Qt::Key_Enter, edit);
    use(Qt::Key_Delete, remove);
}

}  // namespace tarvo::window
