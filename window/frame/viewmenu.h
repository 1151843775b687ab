// The menu "View": theme, and size of the font of text panes. What it sets holds for all windows.
#pragma once

class QMenu;
class QWidget;

namespace tarvo::window {

// Owned by window, in which its shortcuts work.
QMenu* createViewMenu(QWidget* window);

}  // namespace tarvo::window
