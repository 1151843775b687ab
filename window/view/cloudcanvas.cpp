#include "window/view/cloudcanvas.h"

#include <QLocale>
#include <QPainter>
#include <algorithm>
#include <cmath>

namespace tarvo::window {

namespace {

constexpr int restingTime = 60;      // milliseconds until the place under the cursor is looked for
constexpr double clickRadius = 6;    // pixels
constexpr QSize smallest(240, 180);  // so that scale and legend have room

}  // namespace

CloudCanvas::CloudCanvas(QWidget* parent) : QWidget(parent) {
    setObjectName("cloudCanvas");
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setMinimumSize(smallest);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setContextMenuPolicy(Qt::ActionsContextMenu);
    grabGesture(Qt::PinchGesture);
    m_resting.setSingleShot(true);
    m_resting.setInterval(restingTime);
    connect(&m_resting, &QTimer::timeout, this, &CloudCanvas::showPlaceUnderCursor);
    m_clicked.setSingleShot(true);
    connect(&m_clicked, &QTimer::timeout, this, [this] { emit picked(pick(m_pressed)); });
}

void CloudCanvas::setRenderer(std::unique_ptr<Renderer> renderer) {
    m_thread.reset();
    m_thread = std::make_unique<DrawingThread>(std::move(renderer));
    connect(m_thread.get(), &DrawingThread::drawn, this, &CloudCanvas::onDrawn,
            Qt::QueuedConnection);
    order();
}

void CloudCanvas::onDrawn() {
    update();
    if (const QString reason = m_thread->failure(); !reason.isEmpty())
        emit failed(reason);
}

void CloudCanvas::setBlocks(Blocks blocks) {
    m_blocks = std::move(blocks);
    order();
}

void CloudCanvas::dropBlocks() {
    m_blocks.clear();
    if (m_thread)
        m_thread->drop();
    update();
}

void CloudCanvas::setSpace(const drawing::Box& extent, const QString& unit, int places) {
    m_unit = unit;
    m_places = places;
    if (extent.least != m_extent.least || extent.most != m_extent.most) {
        m_extent = extent;
        showAll();
    }
    update();
}

void CloudCanvas::setLegend(const Legend& legend) {
    m_legend = legend;
    update();
}

void CloudCanvas::setState(const QStringList& lines) {
    if (lines == m_state)
        return;
    m_state = lines;
    setAccessibleDescription(lines.join('\n'));
    update();
}

void CloudCanvas::setGround(const QColor& ground) {
    m_ground = ground;
    order();
}

void CloudCanvas::setPointSize(int pixels) {
    m_pointSize = pixels;
    order();
}

void CloudCanvas::setMarked(const std::optional<drawing::Vector>& place) {
    m_marked = place;
    update();
}

void CloudCanvas::setNodeBox(const drawing::Box& box) {
    m_nodeBox = box;
    update();
}

bool CloudCanvas::isTop() const {
    return !m_camera.isPerspective() && m_camera.elevation() == 90;
}

void CloudCanvas::look(drawing::Side side) {
    m_camera.look(side);
    cameraMoved();
}

void CloudCanvas::setPerspective(bool on) {
    if (on == m_camera.isPerspective())
        return;
    m_camera.setPerspective(on);
    cameraMoved();
}

void CloudCanvas::show(const drawing::Box& box) {
    if (box.isEmpty())
        return;
    fitScreen();
    m_camera.show(box);
    cameraMoved();
}

void CloudCanvas::zoom(double factor) {
    zoomAt(factor, rect().toRectF().center());
}

void CloudCanvas::fitScreen() {
    const double ratio = devicePixelRatioF();
    m_camera.setScreen(static_cast<unsigned>(std::max(std::lround(width() * ratio), 1L)),
                       static_cast<unsigned>(std::max(std::lround(height() * ratio), 1L)));
}

void CloudCanvas::cameraMoved() {
    // An area is chosen from above only.
    if (m_area != Area::None && !isTop())
        endArea(false);
    order();
    if (underMouse())
        m_resting.start();
    emit looked();
}

void CloudCanvas::order() {
    update();
    if (!m_thread || m_extent.isEmpty())
        return;
    DrawingOrder order;
    order.camera = m_camera;
    order.blocks = m_blocks;
    const auto channel = [](int value) { return static_cast<std::uint8_t>(value); };
    order.ground = {channel(m_ground.red()), channel(m_ground.green()), channel(m_ground.blue())};
    order.pointSize =
        static_cast<unsigned>(std::max(std::lround(m_pointSize * devicePixelRatioF()), 1L));
    m_thread->draw(std::move(order));
}

void CloudCanvas::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    fitScreen();
    cameraMoved();
}

void CloudCanvas::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), m_ground);
    const double ratio = devicePixelRatioF();
    DrawnPicture shown;
    if (m_thread)
        shown = m_thread->picture();
    drawing::Camera camera = m_camera;
    if (!shown.image.isNull()) {
        // Until the picture of the new size is there the old one stays in the middle.
        const QSizeF size = shown.image.size().toSizeF() / ratio;
        const QPointF corner((width() - size.width()) / 2, (height() - size.height()) / 2);
        painter.drawImage(QRectF(corner, size), shown.image);
        const unsigned width = m_camera.width();
        const unsigned height = m_camera.height();
        camera = shown.camera;
        camera.setScreen(width, height);
    }
    painter.setRenderHint(QPainter::Antialiasing);
    paintOver(painter, camera);
}

void CloudCanvas::paintOver(QPainter& painter, const drawing::Camera& camera) const {
    const double ratio = devicePixelRatioF();
    Overlay overlay(painter, size().toSizeF(), m_ground);
    if (!m_extent.isEmpty()) {
        overlay.paintBox(camera, m_nodeBox, ratio);
        if (m_marked)
            if (const auto seen = camera.project(*m_marked))
                overlay.paintRing(QPointF(seen->x, seen->y) / ratio);
        QList<QPointF> corners;
        for (const drawing::Vector& corner : m_corners)
            if (const auto seen = camera.project(corner))
                corners += QPointF(seen->x, seen->y) / ratio;
        if (m_drag == Drag::Rectangle && corners.size() == 2)
            corners = {corners[0],
                       {corners[1].x(), corners[0].y()},
                       corners[1],
                       {corners[0].x(), corners[1].y()}};
        overlay.paintArea(corners);
        overlay.paintScale(camera, m_unit, ratio);
        overlay.paintLegend(m_legend);
        overlay.paintPlace(m_placeText);
    }
    overlay.paintState(m_state);
    if (hasFocus()) {
        painter.setRenderHint(QPainter::Antialiasing, false);
        painter.setPen(palette().color(QPalette::Highlight));
        painter.setBrush(Qt::NoBrush);
        painter.drawRect(rect().adjusted(0, 0, -1, -1));
    }
}

std::optional<PickedPoint> CloudCanvas::pick(const QPointF& at) const {
    const double ratio = devicePixelRatioF();
    return pickPoint(m_blocks, m_camera, at.x() * ratio, at.y() * ratio, clickRadius * ratio);
}

drawing::Vector CloudCanvas::placeAt(const QPointF& at) const {
    const QPointF pixel = at * devicePixelRatioF();
    return m_camera.unproject(pixel.x(), pixel.y());
}

void CloudCanvas::showPlaceUnderCursor() {
    if (m_extent.isEmpty() || !underMouse())
        return;
    const auto point = pick(m_cursor);
    const drawing::Vector place = point ? point->place : placeAt(m_cursor);
    const QLocale locale;
    const auto number = [&](double value) {
        return QString::number(value, 'f', m_places).replace('.', locale.decimalPoint());
    };
    // Seen from above, no height is under the cursor where no point is.
    m_placeText =
        !point && isTop()
            ? tr("x %1, y %2").arg(number(place[0]), number(place[1]))
            : tr("x %1, y %2, z %3").arg(number(place[0]), number(place[1]), number(place[2]));
    update();
}

void CloudCanvas::leaveEvent(QEvent* event) {
    QWidget::leaveEvent(event);
    m_resting.stop();
    m_placeText.clear();
    update();
}

}  // namespace tarvo::window
