#include "window/view/glprogram.h"

#include <QOpenGLContext>
#include <QOpenGLShaderProgram>
#include <stdexcept>

namespace tarvo::window {

namespace {

// What faded points lie behind is made by depth: theirs is the farther half.
const char* const vertexSource = R"(
ATTRIBUTE vec3 place;
ATTRIBUTE vec4 colour;
uniform mat4 matrix;
uniform vec3 ground;
uniform float size;
TO_FRAGMENT vec3 shade;
void main() {
    gl_Position = matrix * vec4(place, 1.0);
    gl_Position.z = 0.5 * gl_Position.z + (colour.a < 1.0 ? 0.5 : -0.5) * gl_Position.w;
    gl_PointSize = size;
    shade = mix(ground, colour.rgb, colour.a);
}
)";
const char* const fragmentSource = R"(
FROM_VERTEX vec3 shade;
void main() {
    RESULT = vec4(shade, 1.0);
}
)";

// The words that differ between the versions of the language.
QByteArray sourceOf(const char* source, const QOpenGLContext& context) {
    const bool isNew = context.format().profile() == QSurfaceFormat::CoreProfile;
    QByteArray head = isNew                  ? "#version 330 core\n"
                      : context.isOpenGLES() ? "#version 100\nprecision mediump float;\n"
                                             : "#version 120\n";
    head += isNew ? "#define ATTRIBUTE in\n#define TO_FRAGMENT out\n#define FROM_VERTEX in\n"
                  : "#define ATTRIBUTE attribute\n#define TO_FRAGMENT varying\n"
                    "#define FROM_VERTEX varying\n#define RESULT gl_FragColor\n";
    if (isNew && QByteArray(source).contains("RESULT"))
        head += "out vec4 RESULT;\n";
    return head + source;
}

}  // namespace

std::unique_ptr<QOpenGLShaderProgram> makeProgram(const QOpenGLContext& context) {
    auto program = std::make_unique<QOpenGLShaderProgram>();
    const bool isReady =
        program->addShaderFromSourceCode(QOpenGLShader::Vertex, sourceOf(vertexSource, context)) &&
        program->addShaderFromSourceCode(QOpenGLShader::Fragment,
                                         sourceOf(fragmentSource, context));
    program->bindAttributeLocation("place", PLACE);
    program->bindAttributeLocation("colour", COLOUR);
    if (!isReady || !program->link())
        throw std::runtime_error(program->log().toStdString());
    return program;
}

QMatrix4x4 matrixOf(const drawing::Camera& camera, const Depths& depths,
                    const drawing::Vector& origin) {
    const drawing::Vector way = origin - camera.middle();
    const double away = camera.distance();
    const drawing::Vector* const axes[] = {&camera.right(), &camera.up(), &camera.back()};
    double eye[3][4];
    for (int row = 0; row < 3; ++row) {
        for (int column = 0; column < 3; ++column)
            eye[row][column] = (*axes[row])[static_cast<std::size_t>(column)];
        eye[row][3] = dot(way, *axes[row]);
    }
    eye[2][3] -= away;
    const double high = 2 / camera.extent();
    const double wide = high * camera.height() / camera.width();
    const double span = depths.farthest - depths.nearest;
    const double sum = depths.farthest + depths.nearest;
    QMatrix4x4 matrix;
    for (int column = 0; column < 4; ++column) {
        const double one = column == 3 ? 1 : 0;
        const double z = eye[2][column];
        // In perspective what lies at the middle's distance has the size that parallel rays give
        // it.
        const double factor = camera.isPerspective() ? away : 1;
        matrix(0, column) = static_cast<float>(eye[0][column] * wide * factor);
        matrix(1, column) = static_cast<float>(eye[1][column] * high * factor);
        matrix(2, column) = static_cast<float>(
            camera.isPerspective() ? (-z * sum - one * 2 * depths.farthest * depths.nearest) / span
                                   : (-z * 2 - one * sum) / span);
        matrix(3, column) = static_cast<float>(camera.isPerspective() ? -z : one);
    }
    return matrix;
}

}  // namespace tarvo::window
