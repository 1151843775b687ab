#include "window/dialogs/checklabel.h"

#include "window/common/theme.h"

#include <QApplication>
#include <QLabel>

namespace tarvo::window {

void showCheck(QLabel* label, const QString& text, CheckKind kind) {
    const QString sentence = kind == CheckKind::NOTE ? QObject::tr("Note: %1")
                             : kind == CheckKind::REFUSAL
                                 ? QObject::tr("The library may refuse this: %1")
                                 : "%1";
    label->setText(text.isEmpty() ? text : sentence.arg(text));
    const QColor colour =
        kind == CheckKind::ERROR ? QColor(0xb0, 0x00, 0x20) : QColor(0x7a, 0x50, 0x00);
    QPalette palette = QApplication::palette(label);
    if (kind != CheckKind::MISSING)
        palette.setColor(QPalette::WindowText, readable(colour, palette));
    label->setPalette(palette);
    label->setVisible(!text.isEmpty());
}

}  // namespace tarvo::window
