// Labels that tell what is wrong (errors), what the library may refuse, what is doubtful (notes), or
// what is still to be given (missing), by words and colour.
#pragma once

#include <QString>

class QLabel;

namespace tarvo::window {

enum class CheckKind { ERROR, REFUSAL, NOTE, MISSING };

// Shows the text, with "The library may refuse this: " or "Note: " in front of the one and the
// other; hides the label where it is empty. What is missing has the colour of any text.
void showCheck(QLabel* label, const QString& text, CheckKind kind);

}  // namespace tarvo::window
