// Texts of many megabytes in a pane.
#pragma once

#include <QString>

class QPlainTextEdit;

namespace tarvo::window {

// Shows the text in place of what is there, piece by piece, while the window paints; a dialog with
// "Cancel" comes up once it has taken half a second. The pane tells textChanged() once, at the end.
// Throws Cancelled (window/common/aside.h); the pane is empty then.
void showLongText(QPlainTextEdit* pane, const QString& text);

}  // namespace tarvo::window
