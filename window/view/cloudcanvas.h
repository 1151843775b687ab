// The picture of a point cloud, moved by mouse, touchpad and keys.
#pragma once

#include "window/view/drawingthread.h"
#include "window/view/overlay.h"
#include "window/view/picking.h"

#include <QTimer>
#include <QWidget>
#include <memory>
#include <optional>

class QNativeGestureEvent;

namespace tarvo::window {

class CloudCanvas : public QWidget {
    Q_OBJECT

public:
    enum class Area { None, Rectangle, Polygon };

    explicit CloudCanvas(QWidget* parent);
    // Before it is drawn to, and in place of the renderer before.
    void setRenderer(std::unique_ptr<Renderer> renderer);

    using Blocks = std::vector<std::shared_ptr<const view::PointBlock>>;
    void setBlocks(Blocks blocks);
    // Gives up all points.
    void dropBlocks();
    // Of all points; unit: of its lengths; places: decimal ones of coordinates. Another extent than
    // before is shown whole.
    void setSpace(const drawing::Box& extent, const QString& unit, int places);
    void setLegend(const Legend& legend);
    void setState(const QStringList& lines);
    void setGround(const QColor& ground);
    void setPointSize(int pixels);
    // Is marked by a ring.
    void setMarked(const std::optional<drawing::Vector>& place);
    // Its edges are shown.
    void setNodeBox(const drawing::Box& box);

    // Its screen has the pixels of the device.
    const drawing::Camera& camera() const { return m_camera; }
    const QColor& ground() const { return m_ground; }
    const QStringList& state() const { return m_state; }
    Area area() const { return m_area; }
    // Whether the eye looks straight down, in parallel.
    bool isTop() const;

    void look(drawing::Side side);
    void setPerspective(bool on);
    void showAll() { show(m_extent); }
    // Nothing where it is empty.
    void show(const drawing::Box& box);
    void zoom(double factor);
    // Lets the user choose an area from above.
    void choose(Area area);

signals:
    void looked();
    // By a click; none: nothing is near.
    void picked(const std::optional<tarvo::window::PickedPoint>& point);
    // Opposite corners of a rectangle, or a polygon's.
    void areaChosen(tarvo::window::CloudCanvas::Area area,
                    const std::vector<std::array<double, 2>>& corners);
    void areaEnded();
    // The renderer draws no more.
    void failed(const QString& reason);

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void leaveEvent(QEvent* event) override;

private:
    enum class Drag { None, Click, Orbit, Pan, Rectangle };

    void cameraMoved();
    void order();
    void fitScreen();
    void onDrawn();
    void showPlaceUnderCursor();
    std::optional<PickedPoint> pick(const QPointF& at) const;
    void zoomAt(double factor, const QPointF& at);
    void drag(const QPointF& by);
    bool keyOfArea(int key);
    void addCorner(const QPointF& at);
    void endArea(bool isChosen);
    drawing::Vector placeAt(const QPointF& at) const;
    void paintOver(QPainter& painter, const drawing::Camera& camera) const;

    std::unique_ptr<DrawingThread> m_thread;
    drawing::Camera m_camera;
    drawing::Box m_extent;
    Blocks m_blocks;
    QString m_unit;
    int m_places = 3;
    Legend m_legend;
    QStringList m_state;
    QString m_placeText;
    QColor m_ground = Qt::white;
    int m_pointSize = 2;
    std::optional<drawing::Vector> m_marked;
    drawing::Box m_nodeBox;

    Drag m_drag = Drag::None;
    QPointF m_pressed;
    QPointF m_cursor;
    QTimer m_resting;  // the cursor
    QTimer m_clicked;  // until no second click can follow
    Area m_area = Area::None;
    std::vector<drawing::Vector> m_corners;  // of the area, the last one under the cursor
};

}  // namespace tarvo::window
