#include "window/view/drawingthread.h"

#include <exception>
#include <utility>

namespace tarvo::window {

DrawingThread::DrawingThread(std::unique_ptr<Renderer> renderer, QObject* parent)
    : QObject(parent),
      m_renderer(std::move(renderer)),
      m_thread(QThread::create([this] { run(); })) {
    m_thread->start();
}

DrawingThread::~DrawingThread() {
    {
        const std::lock_guard lock(m_mutex);
        m_isStopped = true;
    }
    m_wake.notify_one();
    m_thread->wait();
}

void DrawingThread::draw(DrawingOrder order) {
    {
        const std::lock_guard lock(m_mutex);
        m_order = std::move(order);
    }
    m_wake.notify_one();
}

void DrawingThread::drop() {
    {
        const std::lock_guard lock(m_mutex);
        m_order.reset();
        m_picture = {};
        m_isDropping = true;
    }
    m_wake.notify_one();
}

DrawnPicture DrawingThread::picture() const {
    const std::lock_guard lock(m_mutex);
    return m_picture;
}

QString DrawingThread::failure() const {
    const std::lock_guard lock(m_mutex);
    return QString::fromStdString(m_failure);
}

bool DrawingThread::isOutdated() const {
    const std::lock_guard lock(m_mutex);
    return m_order || m_isDropping || m_isStopped;
}

void DrawingThread::run() {
    std::optional<DrawingOrder> order;  // that is being drawn
    while (true) {
        {
            std::unique_lock lock(m_mutex);
            m_wake.wait(lock, [&] { return order || m_order || m_isDropping || m_isStopped; });
            if (m_isStopped)
                break;
            if (std::exchange(m_isDropping, false)) {
                order.reset();
                lock.unlock();
                m_renderer->drop();
                continue;
            }
            if (m_order)
                order = std::exchange(m_order, std::nullopt);
            if (!m_failure.empty()) {
                order.reset();
                continue;
            }
        }
        try {
            QImage image;
            const bool isWhole = m_renderer->draw(*order, image, [this] { return isOutdated(); });
            finish(std::move(image), order->camera);
            if (isWhole)
                order.reset();
        } catch (const std::exception& error) {
            order.reset();
            m_renderer->drop();
            const std::lock_guard lock(m_mutex);
            m_failure = error.what();
            emit drawn();
        }
    }
    m_renderer->drop();
}

void DrawingThread::finish(QImage image, const drawing::Camera& camera) {
    const std::lock_guard lock(m_mutex);
    if (image.isNull() || m_isDropping)
        return;
    m_picture = {std::move(image), camera};
    emit drawn();
}

}  // namespace tarvo::window
