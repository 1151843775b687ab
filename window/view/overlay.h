// What is painted over the points: scale, legend, place under the cursor, state.
#pragma once

#include "drawing/camera.h"
#include "view/colouring.h"

#include <QColor>
#include <QPointF>
#include <QRectF>
#include <QString>
#include <QStringList>
#include <optional>
#include <vector>

class QPainter;

namespace tarvo::window {

// The longest of 1, 2 and 5 times a power of ten that is not longer; of a length larger than 0.
double roundLength(double length);

// Entries of a legend, at most.
constexpr int mostLegendEntries = 20;

struct Legend {
    std::vector<view::LegendEntry> entries;  // of a palette; empty: none
    bool isMore = false;                     // entries were left out
    std::optional<drawing::Range> ramp;
    QString unit;
};

// Of what a colouring says; colours that no point has are left out where used is not empty.
Legend legendOf(const view::Colouring& colouring, const std::vector<drawing::Colour>& used);

// Paints in units of the widget, which is size wide and high. A plate of the ground's colour is
// behind each text.
class Overlay {
public:
    Overlay(QPainter& painter, const QSizeF& size, const QColor& ground);

    // pixelRatio: pixels of the camera's screen in a unit of the widget.
    void paintScale(const drawing::Camera& camera, const QString& unit, double pixelRatio);
    void paintLegend(const Legend& legend);
    // Lower right corner.
    void paintPlace(const QString& text);
    // Upper left corner.
    void paintState(const QStringList& lines);
    void paintRing(const QPointF& middle);
    void paintBox(const drawing::Camera& camera, const drawing::Box& box, double pixelRatio);
    void paintArea(const QList<QPointF>& corners);

private:
    void paintText(const QRectF& place, Qt::Alignment alignment, const QString& text);
    QSizeF sizeOf(const QString& text) const;

    QPainter& m_painter;
    QSizeF m_size;
    QColor m_ground;
    QColor m_ink;
};

}  // namespace tarvo::window
