// Actions that stand in the menus already and that a coming release fills.
#pragma once

#include <initializer_list>

class QAction;

namespace tarvo::common {

// Disables the actions for good and says so in their tooltips.
void announceForLater(std::initializer_list<QAction*> actions);

}  // namespace tarvo::common
