// Labels that tell what is wrong (errors) or doubtful (notes), by words and colour.
#pragma once

#include <QString>

class QLabel;

namespace tarvo::window {

enum class CheckKind { ERROR, NOTE };

// Shows the text, a note with "Note: " in front; hides the label where it is empty.
void showCheck(QLabel* label, const QString& text, CheckKind kind);

}  // namespace tarvo::window
