// What draws the points of a view. A renderer is used by one thread, which need not be that of the
// window.
#pragma once

#include "drawing/camera.h"
#include "view/stream.h"

#include <QImage>
#include <functional>
#include <memory>
#include <vector>

namespace tarvo::window {

// A picture that is wanted.
struct DrawingOrder {
    drawing::Camera camera;  // its screen is the picture's size
    std::vector<std::shared_ptr<const view::PointBlock>> blocks;
    drawing::Colour ground;
    unsigned pointSize = 2;  // pixels of the screen
};

class Renderer {
public:
    virtual ~Renderer() = default;

    // Draws what can be drawn at once; points that a filter fades (alpha below 255) lie behind all
    // others. isOutdated: whether another picture is wanted by now, asked now and then; the picture
    // may be left undone then, but not the first one from another place. Returns whether nothing is
    // left to be drawn. Throws std::runtime_error where the means to draw are gone.
    virtual bool draw(const DrawingOrder& order, QImage& image,
                      const std::function<bool()>& isOutdated) = 0;
    // Gives up what is kept for the next picture.
    virtual void drop() {}
};

// The distances from the eye between which the blocks lie, in perspective.
struct Depths {
    double nearest = 0;
    double farthest = 0;
};
Depths depthsOf(const DrawingOrder& order);

}  // namespace tarvo::window
