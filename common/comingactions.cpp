#include "common/comingactions.h"

#include <QAction>

namespace tarvo::common {

void announceForLater(std::initializer_list<QAction*> actions) {
    for (QAction* action : actions) {
        action->setEnabled(false);
        action->setToolTip(action->toolTip().replace(
            "</body>", "<p>Not available yet; a coming release brings it.</p></body>"));
    }
}

}  // namespace tarvo::common
