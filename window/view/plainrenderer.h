// Draws points by the processor, where there is no OpenGL.
#pragma once

#include "window/view/renderer.h"

namespace tarvo::window {

class PlainRenderer : public Renderer {
public:
    // Of very many points first a part, so that what moves is seen to move.
    bool draw(const DrawingOrder& order, QImage& image,
              const std::function<bool()>& isOutdated) override;

private:
    drawing::Camera m_camera;  // of the picture before
    std::vector<float> m_depths;
};

}  // namespace tarvo::window
