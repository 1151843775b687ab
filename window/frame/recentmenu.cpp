#include "window/frame/recentmenu.h"

#include "window/common/recentfiles.h"

#include <QAction>
#include <QDir>
#include <QFileInfo>
#include <QMenu>

namespace tarvo::window {

namespace {

// A file name is no text with access keys.
QString entryText(const QString& fileName) {
    const QFileInfo info(fileName);
    return QString("%1 (%2)")
        .arg(info.fileName(), QDir::toNativeSeparators(info.path()))
        .replace('&', "&&");
}

}  // namespace

QMenu* createRecentMenu(QWidget* window, const std::function<void(const QString&)>& open) {
    auto* menu = new QMenu("Open Recent", window);
    menu->setObjectName("menuRecent");
    menu->setToolTipsVisible(true);
    // Another window may have opened files.
    QObject::connect(menu, &QMenu::aboutToShow, menu, [menu, open] {
        menu->clear();
        for (const QString& fileName : RecentFiles::list()) {
            QAction* action = menu->addAction(entryText(fileName));
            action->setToolTip(fileName);
            action->setEnabled(QFileInfo::exists(fileName));
            QObject::connect(action, &QAction::triggered, menu,
                             [open, fileName] { open(fileName); });
        }
        if (menu->isEmpty())
            menu->addAction("No file was opened yet")->setEnabled(false);
    });
    return menu;
}

}  // namespace tarvo::window
