// Asks before a plugin runs that nobody has agreed to yet.
#pragma once

#include "plugin/package.h"

class QWidget;

namespace tarvo::window {

// Whether the plugin may run; what is agreed to is kept. Throws core::Failure, files::FileError.
bool isPluginTrusted(const plugin::Package& package, QWidget* parent);

}  // namespace tarvo::window
