// Every dialog that opens without input of the user.
#pragma once

#include "tests/window/samplewindow.h"

#include <functional>
#include <map>

// Opens the dialog in the window, which shows the sample; the step has to close it.
using OpenDialog = std::function<void(const SampleWindow&, ModalScript::Step)>;

// How each dialog opens, by the group of its settings.
const std::map<QString, OpenDialog>& allDialogs();
