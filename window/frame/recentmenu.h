// The menu "Open Recent": the databases that were opened last, by any window.
#pragma once

#include <QString>
#include <functional>

class QFontMetrics;
class QMenu;
class QWidget;

namespace tarvo::window {

// Name and folder, for a menu or a button: cut where they are long, with & as it is.
QString recentFileText(const QString& fileName, const QFontMetrics& metrics);

// Owned by window. open is called with the file that is chosen.
QMenu* createRecentMenu(QWidget* window, const std::function<void(const QString&)>& open);

}  // namespace tarvo::window
