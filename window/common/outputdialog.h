// Asks for the place of a file to write.
#pragma once

#include <QString>

class QWidget;

namespace tarvo::window {

// Empty: the user gave up. proposed: a name, or a path. A name without extension gets that one, so
// that the dialog that reads such files shows it; what exists is asked about with it.
QString chooseOutput(QWidget* parent, const QString& title, const QString& proposed,
                     const QString& filter, const QString& extension);

}  // namespace tarvo::window
