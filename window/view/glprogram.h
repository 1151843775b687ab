// What the graphics card runs for each point, and where that puts it.
#pragma once

#include "window/view/renderer.h"

#include <QMatrix4x4>
#include <memory>

class QOpenGLContext;
class QOpenGLShaderProgram;

namespace tarvo::window {

enum PointInput { PLACE, COLOUR };  // of a point: three floats, and red, green, blue and alpha

// In the context that is current: with the values "matrix", "ground" (0 to 1) and "size" (pixels).
// Throws std::runtime_error.
std::unique_ptr<QOpenGLShaderProgram> makeProgram(const QOpenGLContext& context);

// From places about a block's origin to the screen, made in doubles as far as they are large.
QMatrix4x4 matrixOf(const drawing::Camera& camera, const Depths& depths,
                    const drawing::Vector& origin);

}  // namespace tarvo::window
