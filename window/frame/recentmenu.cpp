#include "window/frame/recentmenu.h"

#include "window/common/recentfiles.h"
#include "window/common/textformat.h"

#include <QAction>
#include <QDir>
#include <QFileInfo>
#include <QFontMetrics>
#include <QMenu>

namespace tarvo::window {

namespace {

// Characters of average width that a name and a folder may take each.
constexpr int longestPart = 60;

}  // namespace

QString recentFileText(const QString& fileName, const QFontMetrics& metrics) {
    const QFileInfo info(fileName);
    const auto part = [&](const QString& text) {
        return metrics.elidedText(oneLine(text), Qt::ElideMiddle,
                                  longestPart * metrics.averageCharWidth());
    };
    return QString("%1 (%2)")
        .arg(part(info.fileName()), part(QDir::toNativeSeparators(info.path())))
        .replace('&', "&&");
}

QMenu* createRecentMenu(QWidget* window, const std::function<void(const QString&)>& open) {
    auto* menu = new QMenu(QObject::tr("Open Recent"), window);
    menu->setObjectName("menuRecent");
    menu->setToolTipsVisible(true);
    // Another window may have opened files.
    QObject::connect(menu, &QMenu::aboutToShow, menu, [menu, open] {
        menu->clear();
        for (const QString& fileName : RecentFiles::list()) {
            QAction* action = menu->addAction(recentFileText(fileName, menu->fontMetrics()));
            action->setToolTip(plainToolTip(fileName));
            action->setEnabled(QFileInfo::exists(fileName));
            QObject::connect(action, &QAction::triggered, menu,
                             [open, fileName] { open(fileName); });
        }
        if (menu->isEmpty())
            menu->addAction(QObject::tr("No file was opened yet"))->setEnabled(false);
    });
    return menu;
}

}  // namespace tarvo::window
