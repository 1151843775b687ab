// The about box: versions of the program, its definitions, the layer and the library.
#pragma once

#include "qrb/context.h"

#include <QString>

class QWidget;

QString aboutText(const QString& windowTitle, const tarvo::qrb::Context& context);
void showAboutBox(QWidget* parent, const tarvo::qrb::Context& context);
