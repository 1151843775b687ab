// What the program's command line says about windows.
#pragma once

#include <QRect>
#include <QStringList>
#include <optional>

namespace tarvo::window {

// The rectangle of the first argument of the form --window=X,Y,WIDTH,HEIGHT whose numbers are
// integers of 32 bits.
std::optional<QRect> windowRectangle(const QStringList& arguments);

}  // namespace tarvo::window
