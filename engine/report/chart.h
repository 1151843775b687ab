// Histograms as pictures, in colours that stand out on light and dark ground.
#pragma once

#include "drawing/image.h"
#include "engine/report/histogram.h"

namespace tarvo::engine::report {

// A bar per bin, side by side, the highest as high as the picture, with a line below them.
drawing::Image drawBars(const Histogram& histogram);

// One pixel, to be scaled to a bar.
drawing::Image drawBarPixel();

}  // namespace tarvo::engine::report
