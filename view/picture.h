// A picture of a database, drawn by the processor: the same on every machine.
#pragma once

#include "drawing/camera.h"
#include "drawing/image.h"
#include "qrb/pointcloud.h"
#include "view/colouring.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace tarvo::view {

struct PictureSettings {
    drawing::Side from = drawing::Side::Top;
    unsigned width = 1600;  // pixels
    unsigned height = 1200;
    std::optional<ColourChoice> colour;  // none: the first of colourChoices()
    std::string filter;                  // empty: all points
    bool everyPoint = false;             // also where the level of detail is as fine as the pixels
};

struct Picture {
    drawing::Image image;  // transparent where nothing is
    Colouring colouring;
    std::uint64_t points = 0;  // read
    double unitsPerPixel = 0;
};

// Most pixels of a picture.
constexpr std::uint64_t mostPixels = 40'000'000;

// Looks in parallel at the whole extent of the points. What lies nearest to the eye is seen.
// progress: called with the part done, 0 to 1; what it throws ends the work. Throws Failure and
// qrb::Error.
Picture drawPicture(const qrb::Pointcloud& database, const PictureSettings& settings,
                    const std::function<void(double)>& progress = {});

// The picture on a ground that is not transparent.
drawing::Image onGround(const drawing::Image& image, const drawing::Colour& ground);

}  // namespace tarvo::view
