// Asks for the file of a database library.
#pragma once

#include <QString>

class QWidget;

namespace tarvo::window {

// With native separators; empty: the user gave up. start: the file or folder to begin with.
QString chooseLibrary(QWidget* parent, const QString& start = {});

}  // namespace tarvo::window
