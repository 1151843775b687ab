#include "window/common/tooltipcolours.h"

#include "window/common/theme.h"

#include <QEvent>
#include <QWidget>

namespace tarvo::window {

bool ToolTipColours::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::ToolTip && watched->isWidgetType())
        adaptToolTips(static_cast<QWidget*>(watched)->window());
    return QObject::eventFilter(watched, event);
}

}  // namespace tarvo::window
