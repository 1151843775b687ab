// The about box: versions of the program, its definitions, the layer and the library.
#pragma once

#include "qrb/context.h"

#include <QString>

class QWidget;

namespace tarvo::window {

QString aboutText(const QString& windowTitle, const qrb::Context& context);
void showAboutBox(QWidget* parent, const qrb::Context& context);

}  // namespace tarvo::window
