// Texts on the clipboard: plain, or quoted as a literal of a programming language.
#pragma once

#include <QString>

class QAction;
class QMenu;
class QObject;
class QWidget;

namespace tarvo::window {

enum class Quoting { JSON, CPP, PASCAL, PYTHON };

// The text as a literal, quotes included. JSON: escapes of RFC 8259. C++: backslash escapes; bytes
// outside of ASCII stay UTF-8. Pascal: single quotes, control characters as #NN between the quoted
// pieces. Python: triple-quoted, the text on lines of its own and not escaped.
QString quoted(const QString& text, Quoting quoting);

// The menu "Copy to clipboard...", owned by parent. Each of its four actions is connected to the
// receiver's slot, given as with SLOT(); there copyToClipboard() serves the action that came.
QMenu* createCopyMenu(QWidget* parent, QObject* receiver, const char* slot);

void copyToClipboard(const QString& text);
// Quotes the text as the action of a copy menu says. Does nothing for other actions.
void copyToClipboard(const QString& text, const QAction* action);

}  // namespace tarvo::window
