// What the room throws besides the layer's Error.
#pragma once

#include "files/error.h"

namespace tarvo::core {

using files::Failure;

}  // namespace tarvo::core
