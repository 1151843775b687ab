// Keeps the colours in tooltips readable.
#pragma once

#include <QObject>

namespace tarvo::window {

// An event filter of the application: gives the tooltips of a window the colours that suit the
// theme at the moment one of them is asked for, whatever window it is and whenever it was made.
class ToolTipColours : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    bool eventFilter(QObject* watched, QEvent* event) override;
};

}  // namespace tarvo::window
