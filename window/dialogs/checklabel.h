// Labels that tell what is wrong (errors), what the library may refuse, or what is doubtful
// (notes), by words and colour.
#pragma once

#include <QString>

class QLabel;

namespace tarvo::window {

enum class CheckKind { ERROR, REFUSAL, NOTE };

// Shows the text, with "The library may refuse this: " or
// "Note: " in front where it is no error; hides the label
// where it is empty.
void showCheck(QLabel* label, const QString& text, CheckKind kind);

}  // namespace tarvo::window
