// How mouse, touchpad and keys move the eye, and choose points and areas.
#include "window/view/cloudcanvas.h"

#include <QApplication>
#include <QGestureEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QNativeGestureEvent>
#include <QPinchGesture>
#include <QWheelEvent>
#include <cmath>

namespace tarvo::window {

namespace {

constexpr double degreesPerPixel = 0.4;
constexpr double zoomPerStep = 1.25;    // of a wheel
constexpr double stepsPerPixel = 0.01;  // of a touchpad
constexpr double keyDegrees = 5;
constexpr double keyPart = 0.1;   // of the screen
constexpr double dragBegins = 4;  // pixels from where the button was pressed

}  // namespace

bool CloudCanvas::event(QEvent* event) {
    if (event->type() == QEvent::NativeGesture) {
        const auto* gesture = static_cast<QNativeGestureEvent*>(event);
        if (gesture->gestureType() == Qt::ZoomNativeGesture) {
            zoomAt(1 + gesture->value(), gesture->position());
            return true;
        }
    } else if (event->type() == QEvent::Gesture) {
        const auto* gestures = static_cast<QGestureEvent*>(event);
        if (auto* pinch = static_cast<QPinchGesture*>(gestures->gesture(Qt::PinchGesture))) {
            if (pinch->changeFlags() & QPinchGesture::ScaleFactorChanged)
                zoomAt(pinch->scaleFactor(), mapFromGlobal(pinch->centerPoint()));
            return true;
        }
    } else if (event->type() == QEvent::ShortcutOverride &&
               static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape &&
               (m_area != Area::None || m_drag == Drag::Rectangle)) {
        // The window's actions know this key, too.
        event->accept();
        return true;
    } else if (event->type() == QEvent::ScreenChangeInternal) {
        fitScreen();
        cameraMoved();
    }
    return QWidget::event(event);
}

void CloudCanvas::zoomAt(double factor, const QPointF& at) {
    if (m_extent.isEmpty() || !(factor > 0))
        return;
    // What is under the cursor stays there; in perspective that depends on how far away it is.
    const auto point = m_camera.isPerspective() ? pick(at) : std::nullopt;
    const QPointF pixel = at * devicePixelRatioF();
    m_camera.zoom(factor, pixel.x(), pixel.y(), point ? point->depth : 0);
    cameraMoved();
}

void CloudCanvas::wheelEvent(QWheelEvent* event) {
    const double steps = !event->pixelDelta().isNull() && event->phase() != Qt::NoScrollPhase
                             ? event->pixelDelta().y() * stepsPerPixel
                             : event->angleDelta().y() / 120.0;
    if (steps != 0)
        zoomAt(std::pow(zoomPerStep, steps), event->position());
    event->accept();
}

void CloudCanvas::mousePressEvent(QMouseEvent* event) {
    m_pressed = m_cursor = event->position();
    m_resting.stop();
    if (event->button() == Qt::MiddleButton)
        m_drag = Drag::Pan;
    else if (event->button() == Qt::LeftButton)
        m_drag = Drag::Click;
    else
        QWidget::mousePressEvent(event);
}

void CloudCanvas::mouseMoveEvent(QMouseEvent* event) {
    const QPointF at = event->position();
    const QPointF by = at - m_cursor;
    m_cursor = at;
    if (m_drag == Drag::Click && (at - m_pressed).manhattanLength() >= dragBegins) {
        const bool isSwapped = event->modifiers() & Qt::ShiftModifier;
        const bool isRectangle =
            m_area == Area::Rectangle ||
            (m_area == Area::None && isTop() && event->modifiers() & Qt::ControlModifier);
        m_drag = isRectangle                                         ? Drag::Rectangle
                 : (isTop() || m_area == Area::Polygon) != isSwapped ? Drag::Pan
                                                                     : Drag::Orbit;
        if (m_drag == Drag::Rectangle)
            m_corners = {placeAt(m_pressed), placeAt(at)};
        else
            drag(at - m_pressed);
        update();
        return;
    }
    if (m_drag == Drag::Rectangle)
        m_corners.back() = placeAt(at);
    else if (m_drag == Drag::Orbit || m_drag == Drag::Pan)
        drag(by);
    else if (m_drag == Drag::None && m_area == Area::Polygon && !m_corners.empty())
        m_corners.back() = placeAt(at);
    if (m_drag == Drag::None)
        m_resting.start();
    update();
}

void CloudCanvas::drag(const QPointF& by) {
    if (m_extent.isEmpty())
        return;
    if (m_drag == Drag::Orbit)
        m_camera.orbit(-by.x() * degreesPerPixel, by.y() * degreesPerPixel);
    else
        m_camera.pan(by.x() * devicePixelRatioF(), by.y() * devicePixelRatioF());
    cameraMoved();
}

void CloudCanvas::mouseReleaseEvent(QMouseEvent* event) {
    const Drag ended = std::exchange(m_drag, Drag::None);
    if (ended == Drag::Rectangle) {
        m_area = Area::Rectangle;
        endArea(true);
    } else if (ended == Drag::Click && event->button() == Qt::LeftButton && !m_extent.isEmpty()) {
        if (m_area == Area::Polygon)
            addCorner(event->position());
        else if (m_area == Area::None)
            // What is told of the point may take room from the picture: not between two clicks.
            m_clicked.start(QApplication::doubleClickInterval());
    }
    m_resting.start();
}

void CloudCanvas::mouseDoubleClickEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton || m_extent.isEmpty())
        return;
    if (m_area == Area::Polygon) {
        endArea(true);
        return;
    }
    m_clicked.stop();
    const auto point = pick(event->position());
    m_camera.setMiddle(point ? point->place : placeAt(event->position()));
    cameraMoved();
}

void CloudCanvas::addCorner(const QPointF& at) {
    // The last one follows the cursor.
    if (m_corners.empty())
        m_corners.push_back(placeAt(at));
    else
        m_corners.back() = placeAt(at);
    m_corners.push_back(placeAt(at));
    update();
}

void CloudCanvas::choose(Area area) {
    if (m_area != Area::None)
        endArea(false);
    if (area == Area::None || m_extent.isEmpty()) {
        emit areaEnded();
        return;
    }
    if (!isTop()) {
        m_camera.setPerspective(false);
        m_camera.look(drawing::Side::Top);
        cameraMoved();
    }
    m_area = area;
    setCursor(Qt::CrossCursor);
    setFocus();
}

void CloudCanvas::endArea(bool isChosen) {
    const Area area = std::exchange(m_area, Area::None);
    std::vector<std::array<double, 2>> corners;
    if (area == Area::Polygon && !m_corners.empty())
        m_corners.pop_back();
    for (const drawing::Vector& corner : m_corners)
        corners.push_back({corner[0], corner[1]});
    m_corners.clear();
    unsetCursor();
    update();
    emit areaEnded();
    if (isChosen && corners.size() >= (area == Area::Polygon ? 3U : 2U))
        emit areaChosen(area, corners);
}

bool CloudCanvas::keyOfArea(int key) {
    if (m_area == Area::None && m_drag != Drag::Rectangle)
        return false;
    if (key == Qt::Key_Escape) {
        m_drag = Drag::None;
        endArea(false);
    } else if (m_area == Area::Polygon && (key == Qt::Key_Return || key == Qt::Key_Enter)) {
        endArea(true);
    } else if (m_area == Area::Polygon && key == Qt::Key_Backspace && m_corners.size() > 1) {
        m_corners.erase(m_corners.end() - 2);
        if (m_corners.size() == 1)
            m_corners.clear();
        update();
    } else {
        return false;
    }
    return true;
}

void CloudCanvas::keyPressEvent(QKeyEvent* event) {
    if (keyOfArea(event->key()))
        return;
    double right = 0;
    double up = 0;
    switch (event->key()) {
        case Qt::Key_Left:
            right = -1;
            break;
        case Qt::Key_Right:
            right = 1;
            break;
        case Qt::Key_Up:
            up = 1;
            break;
        case Qt::Key_Down:
            up = -1;
            break;
        default:
            QWidget::keyPressEvent(event);
            return;
    }
    const bool isSwapped = event->modifiers() & Qt::ShiftModifier;
    if (m_extent.isEmpty())
        return;
    // What is looked at lies where the key points, and the eye goes there.
    if (isTop() != isSwapped)
        m_camera.pan(-right * keyPart * m_camera.width(), up * keyPart * m_camera.height());
    else
        m_camera.orbit(right * keyDegrees, up * keyDegrees);
    cameraMoved();
}

}  // namespace tarvo::window
