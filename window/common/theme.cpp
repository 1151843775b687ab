#include "window/common/theme.h"

#include <QAction>
#include <QPalette>
#include <QToolTip>
#include <QWidget>

namespace tarvo::window {

namespace {

const char* const lightColour = "#0000a3";
const char* const darkColour = "#9db8ff";

}  // namespace

bool isDark(const QPalette& palette) {
    return palette.color(QPalette::Base).lightness() < palette.color(QPalette::Text).lightness();
}

QColor readable(const QColor& colour, const QPalette& palette) {
    if (!isDark(palette))
        return colour;
    return QColor::fromHsl(colour.hslHue(), colour.hslSaturation() / 2 + 60, 190);
}

void adaptToolTips(QWidget* widget) {
    const QPalette palette = QToolTip::palette();
    const bool dark = palette.color(QPalette::ToolTipBase).lightness() <
                      palette.color(QPalette::ToolTipText).lightness();
    const QString from = dark ? lightColour : darkColour;
    const QString to = dark ? darkColour : lightColour;
    for (QAction* action : widget->findChildren<QAction*>()) {
        // QAction makes a tooltip up from its text where none is set; leave those alone.
        const QString text = action->toolTip();
        if (text.contains(from))
            action->setToolTip(QString(text).replace(from, to));
    }
    for (QWidget* child : widget->findChildren<QWidget*>()) {
        const QString text = child->toolTip();
        if (text.contains(from))
            child->setToolTip(QString(text).replace(from, to));
    }
}

}  // namespace tarvo::window
