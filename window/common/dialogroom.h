// Dialogs on small screens and with large letters: what has no room scrolls, and the buttons below it
// stay in sight.
#pragma once

class QDialog;
class QSize;

namespace tarvo::window {

// From now on each dialog that comes up is no larger than its screen; needs the application. Of those
// with a vertical layout all but the last row scrolls, which is where our dialogs have their buttons.
void keepDialogsOnScreen();

// The same for one dialog and a room of this size, before it is shown.
void fitInto(QDialog* dialog, const QSize& room);

}  // namespace tarvo::window
