#include "window/dialogs/checklabel.h"

#include "window/common/theme.h"

#include <QApplication>
#include <QLabel>

namespace tarvo::window {

void showCheck(QLabel* label, const QString& text, CheckKind kind) {
    const QString front = kind == CheckKind::NOTE      ? "Note: "
                          : kind == CheckKind::REFUSAL ? "The library may refuse this: "
                                                       : "";
    label->setText(text.isEmpty() ? text : front + text);
    const QColor colour =
        kind == CheckKind::ERROR ? QColor(0xb0, 0x00, 0x20) : QColor(0x7a, 0x50, 0x00);
    QPalette palette = QApplication::palette(label);
    if (kind != CheckKind::MISSING)
        palette.setColor(QPalette::WindowText, readable(colour, palette));
    label->setPalette(palette);
    label->setVisible(!text.isEmpty());
}

}  // namespace tarvo::window
