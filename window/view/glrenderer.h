// Draws points by OpenGL, into a picture that the window's widget shows: so the window itself needs
// no OpenGL, and a driver that fails takes nothing but the speed of the view along.
#pragma once

#include "window/view/renderer.h"

#include <QString>
#include <memory>

class QOffscreenSurface;

namespace tarvo::window {

class GlRenderer : public Renderer {
public:
    // Looks for OpenGL 2 or OpenGL ES 2 at least; null where there is none, reason says why in
    // words for the user. GUI thread, as the destructor; between them any one thread that called
    // drop() in the end.
    static std::unique_ptr<GlRenderer> make(QString& reason);
    ~GlRenderer() override;

    // Points of a few blocks go to the graphics card with each picture.
    bool draw(const DrawingOrder& order, QImage& image,
              const std::function<bool()>& isOutdated) override;
    // Buffers and context; the next picture makes them again.
    void drop() override;

private:
    class Device;

    explicit GlRenderer(std::unique_ptr<QOffscreenSurface> surface);

    std::unique_ptr<QOffscreenSurface> m_surface;
    std::unique_ptr<Device> m_device;  // null: none yet
};

}  // namespace tarvo::window
