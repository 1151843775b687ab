// The keys of a list whose rows can be edited and removed.
#pragma once

class QAction;
class QTreeWidget;

namespace tarvo::window {

// Return edits, Delete removes, while the list has the keyboard.
void useListKeys(QTreeWidget* list, QAction* edit, QAction* remove);

}  // namespace tarvo::window
