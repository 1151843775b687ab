// What moves the eye of the view at once, for its toolbar and the menu.
#pragma once

#include <QList>

class QAction;

namespace tarvo::window {

class CloudCanvas;

struct ViewActions {
    QAction* top;
    QAction* front;
    QAction* side;
    QAction* corner;
    QAction* perspective;  // checkable
    QAction* all;
    QAction* chosen;
    QAction* zoomIn;
    QAction* zoomOut;
    QAction* rectangle;  // checkable, as the next one
    QAction* polygon;

    QList<QAction*> list() const {
        return {top,    front,  side,    corner,    perspective, all,
                chosen, zoomIn, zoomOut, rectangle, polygon};
    }
};

// Owned by the canvas; their keys work while it has the focus. What "chosen" does is the caller's.
ViewActions createViewActions(CloudCanvas* canvas);

}  // namespace tarvo::window
