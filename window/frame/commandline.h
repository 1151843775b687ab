// What the program's command line says about windows.
#pragma once

#include <QRect>
#include <QString>
#include <QStringList>
#include <optional>

namespace tarvo::window {

// The rectangle of the first argument of the form --window=X,Y,WIDTH,HEIGHT whose numbers are
// integers of 32 bits.
std::optional<QRect> windowRectangle(const QStringList& arguments);

// What the program answers at the terminal, in place of opening a window: to --help and --version.
std::optional<QString> answerToCommandLine(const QStringList& arguments);

}  // namespace tarvo::window
