#include "window/view/overlay.h"

#include "window/common/localnumbers.h"

#include <QFontMetricsF>
#include <QLinearGradient>
#include <QLocale>
#include <QObject>
#include <QPainter>
#include <algorithm>
#include <cmath>

namespace tarvo::window {

namespace {

constexpr double margin = 8;   // pixels
constexpr double padding = 3;  // around texts
constexpr double longestScale = 160;
constexpr double rampHeight = 140;
constexpr double swatch = 12;
constexpr double ring = 8;  // its radius

QString lengthText(double length, const QString& unit) {
    const QString number = localNumber(length);
    return unit.isEmpty() ? number : QObject::tr("%1 %2").arg(number, unit);
}

// Four digits tell the ends of a ramp apart.
QString endText(double value, const drawing::Range& range, const QString& unit) {
    const double span = std::abs(range.high - range.low);
    const int places =
        span > 0 ? std::clamp(3 - static_cast<int>(std::floor(std::log10(span))), 0, 9) : 3;
    const QString number = QLocale().toString(value, 'f', places);
    return unit.isEmpty() ? number : QObject::tr("%1 %2").arg(number, unit);
}

QColor colourOf(const drawing::Colour& colour) {
    return {colour.red, colour.green, colour.blue};
}

}  // namespace

double roundLength(double length) {
    const double power = std::pow(10, std::floor(std::log10(length)));
    for (const double digit : {5, 2})
        if (digit * power <= length)
            return digit * power;
    return power;
}

Legend legendOf(const view::Colouring& colouring, const std::vector<drawing::Colour>& used) {
    Legend legend;
    legend.unit = QString::fromStdString(colouring.unit());
    if (colouring.isRamp()) {
        legend.ramp = colouring.range();
        return legend;
    }
    for (const view::LegendEntry& entry : colouring.legend()) {
        if (!used.empty() && std::find(used.begin(), used.end(), entry.colour) == used.end())
            continue;
        legend.isMore = static_cast<int>(legend.entries.size()) == mostLegendEntries;
        if (legend.isMore)
            break;
        legend.entries.push_back(entry);
    }
    return legend;
}

Overlay::Overlay(QPainter& painter, const QSizeF& size, const QColor& ground)
    : m_painter(painter),
      m_size(size),
      m_ground(ground),
      m_ink(ground.lightness() < 128 ? QColor("#e2e4e8") : QColor("#1b1b1b")) {}

QSizeF Overlay::sizeOf(const QString& text) const {
    const QFontMetricsF metrics(m_painter.font());
    return {metrics.horizontalAdvance(text) + 2 * padding, metrics.height() + 2 * padding};
}

void Overlay::paintText(const QRectF& place, Qt::Alignment alignment, const QString& text) {
    QColor plate = m_ground;
    plate.setAlpha(215);
    m_painter.fillRect(place, plate);
    m_painter.setPen(m_ink);
    const QRectF inner = place.adjusted(padding, padding, -padding, -padding);
    m_painter.drawText(inner, static_cast<int>(alignment | Qt::TextSingleLine),
                       m_painter.fontMetrics().elidedText(text, Qt::ElideRight,
                                                          static_cast<int>(inner.width() + 1)));
}

void Overlay::paintScale(const drawing::Camera& camera, const QString& unit, double pixelRatio) {
    const double units = camera.unitsPerPixel() * pixelRatio;
    const double room = std::min(longestScale, m_size.width() / 3);
    if (!(units > 0) || room < 20)
        return;
    const double length = roundLength(room * units);
    const double pixels = length / units;
    const QString text = lengthText(length, unit);
    const QSizeF size = sizeOf(text);
    const double bottom = m_size.height() - margin;
    paintText({margin, bottom - size.height() - 6, std::max(pixels, size.width()), size.height()},
              Qt::AlignLeft | Qt::AlignVCenter, text);
    m_painter.setPen(QPen(m_ink, 2));
    m_painter.drawPolyline(QList<QPointF>{{margin, bottom - 6},
                                          {margin, bottom},
                                          {margin + pixels, bottom},
                                          {margin + pixels, bottom - 6}});
}

void Overlay::paintLegend(const Legend& legend) {
    double top = margin;
    if (legend.ramp) {
        const double height = std::min(rampHeight, m_size.height() / 2);
        const QRectF bar(m_size.width() - margin - swatch, top, swatch, height);
        QLinearGradient colours(bar.bottomLeft(), bar.topLeft());
        for (int i = 0; i <= 10; ++i)
            colours.setColorAt(i / 10.0, colourOf(drawing::rampColour(i / 10.0)));
        m_painter.fillRect(bar, colours);
        m_painter.setPen(m_ink);
        m_painter.drawRect(bar);
        const auto addEnd = [&](double value, bool isTop) {
            const QString text = endText(value, *legend.ramp, legend.unit);
            const QSizeF size = sizeOf(text);
            paintText({bar.left() - size.width() - 2, isTop ? top : bar.bottom() - size.height(),
                       size.width(), size.height()},
                      Qt::AlignRight | Qt::AlignVCenter, text);
        };
        addEnd(legend.ramp->high, true);
        addEnd(legend.ramp->low, false);
        return;
    }
    double width = 0;
    for (const auto& entry : legend.entries)
        width = std::max(width, sizeOf(QString::fromStdString(entry.text)).width());
    width = std::min(width, m_size.width() / 2);
    for (const auto& entry : legend.entries) {
        const QString text = QString::fromStdString(entry.text);
        const double height = sizeOf(text).height();
        const double left = m_size.width() - margin - width - swatch;
        // What would lie on the scale is left out.
        if (top + 2 * height > m_size.height() - margin)
            break;
        paintText({left + swatch, top, width, height}, Qt::AlignLeft | Qt::AlignVCenter, text);
        m_painter.fillRect(QRectF(left, top + (height - swatch) / 2, swatch, swatch),
                           colourOf(entry.colour));
        top += height;
    }
    if (legend.isMore) {
        const QString text = QObject::tr("and others");
        const QSizeF size = sizeOf(text);
        paintText({m_size.width() - margin - size.width(), top, size.width(), size.height()},
                  Qt::AlignRight | Qt::AlignVCenter, text);
    }
}

void Overlay::paintPlace(const QString& text) {
    if (text.isEmpty())
        return;
    const QSizeF size = sizeOf(text);
    const double width = std::min(size.width(), m_size.width() / 2);
    paintText({m_size.width() - margin - width, m_size.height() - margin - size.height(), width,
               size.height()},
              Qt::AlignRight | Qt::AlignVCenter, text);
}

void Overlay::paintState(const QStringList& lines) {
    double top = margin;
    for (const QString& line : lines) {
        const QSizeF size = sizeOf(line);
        paintText({margin, top, std::min(size.width(), m_size.width() * 0.7), size.height()},
                  Qt::AlignLeft | Qt::AlignVCenter, line);
        top += size.height();
    }
}

void Overlay::paintRing(const QPointF& middle) {
    m_painter.setBrush(Qt::NoBrush);
    m_painter.setPen(QPen(m_ground, 4));
    m_painter.drawEllipse(middle, ring, ring);
    m_painter.setPen(QPen(QColor("#e8308a"), 2));
    m_painter.drawEllipse(middle, ring, ring);
}

void Overlay::paintBox(const drawing::Camera& camera, const drawing::Box& box, double pixelRatio) {
    if (box.isEmpty())
        return;
    m_painter.setPen(QPen(QColor("#e8308a"), 1.5));
    for (unsigned corner = 0; corner < 8; ++corner)
        for (unsigned axis = 0; axis < 3; ++axis) {
            if (corner >> axis & 1U)
                continue;
            const auto from = camera.project(box.corner(corner));
            const auto to = camera.project(box.corner(corner | 1U << axis));
            // Lines that come from behind the eye are left out.
            if (from && to)
                m_painter.drawLine(QPointF(from->x, from->y) / pixelRatio,
                                   QPointF(to->x, to->y) / pixelRatio);
        }
}

void Overlay::paintArea(const QList<QPointF>& corners) {
    if (corners.size() < 2)
        return;
    QColor fill("#e8308a");
    m_painter.setPen(QPen(fill, 1.5, Qt::DashLine));
    fill.setAlpha(40);
    m_painter.setBrush(fill);
    m_painter.drawPolygon(corners);
    m_painter.setBrush(Qt::NoBrush);
}

}  // namespace tarvo::window
