// The menu "Open Recent": the databases that were opened last, by any window.
#pragma once

#include <QString>
#include <functional>

class QMenu;
class QWidget;

namespace tarvo::window {

// Owned by window. open is called with the file that is chosen.
QMenu* createRecentMenu(QWidget* window, const std::function<void(const QString&)>& open);

}  // namespace tarvo::window
