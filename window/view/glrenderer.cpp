#include "window/view/glrenderer.h"

#include "window/view/glprogram.h"

#include <QGuiApplication>
#include <QObject>
#include <QOffscreenSurface>
#include <QOpenGLBuffer>
#include <QOpenGLContext>
#include <QOpenGLFramebufferObject>
#include <QOpenGLFunctions>
#include <QOpenGLShaderProgram>
#include <QOpenGLVertexArrayObject>
#include <algorithm>
#include <map>
#include <stdexcept>

namespace tarvo::window {

namespace {

constexpr std::size_t bytesOfPlace = sizeof(std::array<float, 3>);
constexpr std::size_t bytesOfPoint = bytesOfPlace + sizeof(drawing::Colour);
// That go to the graphics card with one picture.
constexpr std::size_t bytesAtOnce = 24 << 20U;

std::unique_ptr<QOpenGLContext> contextOn(const QSurfaceFormat& format) {
    auto context = std::make_unique<QOpenGLContext>();
    context->setFormat(format);
    return context->create() ? std::move(context) : nullptr;
}

QSurfaceFormat wantedFormat() {
    QSurfaceFormat format;
    format.setVersion(3, 3);
    format.setProfile(QSurfaceFormat::CoreProfile);
    format.setDepthBufferSize(24);
    return format;
}

}  // namespace

// A context with what belongs to it.
class GlRenderer::Device {
public:
    explicit Device(QOffscreenSurface& surface)
        : m_surface(surface), m_context(contextOn(surface.requestedFormat())) {
        activate();
        m_program = makeProgram(*m_context);
        m_array = std::make_unique<QOpenGLVertexArrayObject>();
        m_array->create();
    }
    ~Device() {
        if (m_context && m_context->makeCurrent(&m_surface)) {
            m_buffers.clear();
            m_target.reset();
            m_array.reset();
            m_program.reset();
            m_context->doneCurrent();
        }
    }
    Device(const Device&) = delete;
    Device& operator=(const Device&) = delete;

    bool draw(const DrawingOrder& order, QImage& image) {
        activate();
        dropUnused(order);
        prepare(order);
        const Depths depths = depthsOf(order);
        std::size_t left = bytesAtOnce;
        bool isWhole = true;
        for (const auto& block : order.blocks) {
            if (!order.camera.mayShow(block->box) || block->places.empty())
                continue;
            if (!m_buffers.contains(block.get())) {
                if (left == 0) {
                    isWhole = false;
                    continue;
                }
                const std::size_t bytes = block->places.size() * bytesOfPoint;
                left -= std::min(left, bytes);
                upload(block);
            }
            drawBlock(*block, matrixOf(order.camera, depths, block->origin));
        }
        m_program->release();
        image = m_target->toImage().convertToFormat(QImage::Format_RGB32);
        if (image.isNull() || gl().glGetError() != GL_NO_ERROR)
            throw std::runtime_error(QObject::tr("OpenGL could not draw").toStdString());
        return isWhole;
    }

private:
    // The block is kept, so that no other one takes its address.
    struct Buffer {
        std::shared_ptr<const view::PointBlock> block;
        QOpenGLBuffer buffer{QOpenGLBuffer::VertexBuffer};
    };

    QOpenGLFunctions& gl() { return *m_context->functions(); }

    void activate() {
        if (!m_context || !m_context->isValid() || !m_context->makeCurrent(&m_surface))
            throw std::runtime_error(QObject::tr("OpenGL gave no context").toStdString());
    }

    void dropUnused(const DrawingOrder& order) {
        std::map<const view::PointBlock*, bool> wanted;
        for (const auto& block : order.blocks)
            wanted[block.get()] = true;
        std::erase_if(m_buffers, [&](const auto& one) { return !wanted.contains(one.first); });
    }

    void prepare(const DrawingOrder& order) {
        const QSize size(static_cast<int>(order.camera.width()),
                         static_cast<int>(order.camera.height()));
        if (!m_target || m_target->size() != size)
            m_target =
                std::make_unique<QOpenGLFramebufferObject>(size, QOpenGLFramebufferObject::Depth);
        if (!m_target->isValid() || !m_target->bind())
            throw std::runtime_error(
                QObject::tr("OpenGL has no room for the picture").toStdString());
        const float red = static_cast<float>(order.ground.red) / 255;
        const float green = static_cast<float>(order.ground.green) / 255;
        const float blue = static_cast<float>(order.ground.blue) / 255;
        gl().glViewport(0, 0, size.width(), size.height());
        gl().glClearColor(red, green, blue, 1);
        gl().glEnable(GL_DEPTH_TEST);
        gl().glDepthFunc(GL_LESS);
        gl().glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        if (!m_context->isOpenGLES()) {
            constexpr GLenum programPointSize = 0x8642;
            constexpr GLenum pointSprite = 0x8861;
            gl().glEnable(programPointSize);
            if (m_context->format().profile() != QSurfaceFormat::CoreProfile)
                gl().glEnable(pointSprite);
        }
        m_program->bind();
        m_program->setUniformValue("ground", red, green, blue);
        m_program->setUniformValue("size", static_cast<float>(order.pointSize));
    }

    void upload(const std::shared_ptr<const view::PointBlock>& block) {
        Buffer& made = m_buffers[block.get()];
        made.block = block;
        const int places = static_cast<int>(block->places.size() * bytesOfPlace);
        const int colours = static_cast<int>(block->colours.size() * sizeof(drawing::Colour));
        made.buffer.create();
        made.buffer.bind();
        made.buffer.allocate(places + colours);
        made.buffer.write(0, block->places.data(), places);
        made.buffer.write(places, block->colours.data(), colours);
        made.buffer.release();
    }

    void drawBlock(const view::PointBlock& block, const QMatrix4x4& matrix) {
        QOpenGLBuffer& buffer = m_buffers[&block].buffer;
        const QOpenGLVertexArrayObject::Binder binder(m_array.get());
        buffer.bind();
        m_program->setUniformValue("matrix", matrix);
        m_program->enableAttributeArray(PLACE);
        m_program->enableAttributeArray(COLOUR);
        m_program->setAttributeBuffer(PLACE, GL_FLOAT, 0, 3);
        gl().glVertexAttribPointer(
            COLOUR, 4, GL_UNSIGNED_BYTE, GL_TRUE, 0,
            reinterpret_cast<const void*>(block.places.size() * bytesOfPlace));
        gl().glDrawArrays(GL_POINTS, 0, static_cast<GLsizei>(block.places.size()));
        buffer.release();
    }

    QOffscreenSurface& m_surface;
    std::unique_ptr<QOpenGLContext> m_context;
    std::unique_ptr<QOpenGLShaderProgram> m_program;
    std::unique_ptr<QOpenGLVertexArrayObject> m_array;
    std::unique_ptr<QOpenGLFramebufferObject> m_target;
    std::map<const view::PointBlock*, Buffer> m_buffers;
};

GlRenderer::GlRenderer(std::unique_ptr<QOffscreenSurface> surface)
    : m_surface(std::move(surface)) {}

GlRenderer::~GlRenderer() = default;

std::unique_ptr<GlRenderer> GlRenderer::make(QString& reason) {
    const QString platform = QGuiApplication::platformName();
    if (platform == "offscreen" || platform == "minimal") {
        reason = QObject::tr("the platform \"%1\" has none").arg(platform);
        return nullptr;
    }
    reason = QObject::tr("this computer offers none");
    auto context = contextOn(wantedFormat());
    // Where it has no profile it is a version that was there before profiles.
    if (!context)
        context = contextOn({});
    if (!context)
        return nullptr;
    auto surface = std::make_unique<QOffscreenSurface>();
    surface->setFormat(context->format());
    surface->create();
    if (!surface->isValid() || !context->makeCurrent(surface.get()))
        return nullptr;
    const auto [major, minor] = context->format().version();
    context->doneCurrent();
    if (major < 2) {
        reason = QObject::tr("this computer offers version %1.%2, and 2.0 is needed")
                     .arg(major)
                     .arg(minor);
        return nullptr;
    }
    if (!QOpenGLContext::supportsThreadedOpenGL()) {
        reason = QObject::tr("the driver can't draw beside the window");
        return nullptr;
    }
    reason.clear();
    return std::unique_ptr<GlRenderer>(new GlRenderer(std::move(surface)));
}

bool GlRenderer::draw(const DrawingOrder& order, QImage& image, const std::function<bool()>&) {
    try {
        if (!m_device)
            m_device = std::make_unique<Device>(*m_surface);
        return m_device->draw(order, image);
    } catch (const std::runtime_error&) {
        // The context may be lost; a new one has what the old one had, once.
        m_device.reset();
        m_device = std::make_unique<Device>(*m_surface);
        return m_device->draw(order, image);
    }
}

void GlRenderer::drop() {
    m_device.reset();
}

}  // namespace tarvo::window
