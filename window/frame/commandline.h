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

// The language that the last "--lang NAME" or "--lang=NAME" wants; empty where the name is missing.
std::optional<QString> languageOption(const QStringList& arguments);

// The arguments that are no options, nor their values. arguments: without the program's name.
QStringList fileArguments(const QStringList& arguments);

// What the program answers at the terminal, in place of opening a window: to --help and --version.
std::optional<QString> answerToCommandLine(const QStringList& arguments);

}  // namespace tarvo::window
