// For long work of the window's own thread that is done in short steps: a dialog "Cancel" that
// comes up once it has taken half a second. Until then the window takes no input.
#pragma once

#include <QElapsedTimer>
#include <QProgressDialog>

namespace tarvo::window {

class StepDialog {
public:
    // text: what is being done.
    StepDialog(QWidget* parent, const QString& text);

    // Behind each step: lets the window paint and the user cancel. fraction: of the work that is
    // done, 0 to 1. Returns whether to go on.
    bool goesOn(double fraction);

private:
    QProgressDialog m_dialog;  // there from the beginning, so that the window counts as busy
    QElapsedTimer m_elapsed;
};

}  // namespace tarvo::window
