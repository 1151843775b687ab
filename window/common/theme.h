// Colours that stay readable on light and dark palettes.
#pragma once

#include <QColor>

class QPalette;
class QWidget;

namespace tarvo::window {

bool isDark(const QPalette& palette);

// The colour on light palettes, a lighter one of the same hue on dark ones.
QColor readable(const QColor& colour, const QPalette& palette);

// Gives the interface operations in the tooltips of the widget's actions and children a colour
// that suits the tooltip palette. Call after the form was built and when the palette changed.
void adaptToolTips(QWidget* widget);

}  // namespace tarvo::window
