// Draws beside the window, on a thread of its own: of several orders the newest, and no event of
// the window waits for it.
#pragma once

#include "window/view/renderer.h"

#include <QImage>
#include <QObject>
#include <QThread>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

namespace tarvo::window {

struct DrawnPicture {
    QImage image;            // null: nothing was drawn yet
    drawing::Camera camera;  // from where it is seen
};

class DrawingThread : public QObject {
    Q_OBJECT

public:
    explicit DrawingThread(std::unique_ptr<Renderer> renderer, QObject* parent = nullptr);
    // Waits for the picture that is being drawn.
    ~DrawingThread() override;

    void draw(DrawingOrder order);
    // Gives up what the renderer keeps, and the picture with its points.
    void drop();
    DrawnPicture picture() const;
    // Draws no more: the means are gone. Why; empty: they are not.
    QString failure() const;

signals:
    // picture() or failure() has something new.
    void drawn();

private:
    void run();
    bool isOutdated() const;
    void finish(QImage image, const drawing::Camera& camera);

    mutable std::mutex m_mutex;
    std::condition_variable m_wake;
    std::optional<DrawingOrder> m_order;  // the newest, not begun
    bool m_isDropping = false;
    bool m_isStopped = false;
    DrawnPicture m_picture;
    std::string m_failure;

    std::unique_ptr<Renderer> m_renderer;
    std::unique_ptr<QThread> m_thread;
};

}  // namespace tarvo::window
