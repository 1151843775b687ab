// A small picture within HTML.
#pragma once

#include "drawing/image.h"

#include <string>

namespace tarvo::engine::report {

// "data:image/png;base64,...": the picture as part of the text. Throws Failure.
std::string dataUri(const drawing::Image& image);

}  // namespace tarvo::engine::report
