#include "window/common/iconengine.h"

#include "window/common/theme.h"

#include <QApplication>
#include <QPainter>
#include <QPixmapCache>
#include <QStyle>
#include <QStyleOption>
#include <algorithm>
#include <cmath>

namespace tarvo::window {

namespace {

const char* const iconFolder = ":/resources/gui/";
constexpr int iconSide = 24;  // pixels, of screens of single density

// The most that an icon is drawn in, in pixels of the screen.
int largestSide() {
    return static_cast<int>(std::ceil(iconSide * qApp->devicePixelRatio()));
}

int sideIn(const QSize& size) {
    return std::clamp(std::min(size.width(), size.height()), 0, largestSide());
}

// The shape in one colour; what is light in the picture, as signs on discs are, lets the ground
// through.
QImage shapeOf(QImage picture, const QColor& colour) {
    picture = picture.convertToFormat(QImage::Format_ARGB32);
    for (int y = 0; y < picture.height(); ++y) {
        auto* line = reinterpret_cast<QRgb*>(picture.scanLine(y));
        for (int x = 0; x < picture.width(); ++x) {
            const int cover = std::min(255, (255 - qGray(line[x])) * 2);
            line[x] =
                qRgba(colour.red(), colour.green(), colour.blue(), qAlpha(line[x]) * cover / 255);
        }
    }
    return picture;
}

}  // namespace

IconEngine::IconEngine(const QString& fileName) : m_fileName(fileName) {}

QImage IconEngine::picture(bool onDark, int side) const {
    QString name = m_fileName;
    if (onDark)
        name.insert(name.lastIndexOf('/'), "/dark");
    if (side > iconSide)
        name.insert(name.lastIndexOf('.'), "@2x");
    QImage picture(name);
    picture.setDevicePixelRatio(1);
    if (picture.width() != side)
        picture = picture.scaled(side, side, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    return picture;
}

QPixmap IconEngine::scaledPixmap(const QSize& size, QIcon::Mode mode, QIcon::State, qreal) {
    const int side = sideIn(size);
    if (side == 0)
        return {};
    const QPalette palette = QApplication::palette();
    const bool onDark = isDark(palette);
    const QColor text = palette.color(QPalette::HighlightedText);
    const QString key = QString("icon %1 %2 %3 %4 %5")
                            .arg(m_fileName)
                            .arg(side)
                            .arg(static_cast<int>(mode))
                            .arg(palette.cacheKey())
                            .arg(QApplication::style()->objectName());
    QPixmap pixmap;
    if (QPixmapCache::find(key, &pixmap))
        return pixmap;
    if (mode == QIcon::Selected) {
        pixmap = QPixmap::fromImage(shapeOf(picture(false, side), text));
    } else {
        pixmap = QPixmap::fromImage(picture(onDark, side));
        if (mode == QIcon::Disabled) {
            QStyleOption option;
            option.palette = palette;
            pixmap = QApplication::style()->generatedIconPixmap(mode, pixmap, &option);
        }
    }
    QPixmapCache::insert(key, pixmap);
    return pixmap;
}

QPixmap IconEngine::pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) {
    return scaledPixmap(size, mode, state, 1);
}

void IconEngine::paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) {
    const qreal scale = painter->device()->devicePixelRatioF();
    painter->drawPixmap(rect, scaledPixmap(rect.size() * scale, mode, state, scale));
}

QSize IconEngine::actualSize(const QSize& size, QIcon::Mode, QIcon::State) {
    return {sideIn(size), sideIn(size)};
}

QList<QSize> IconEngine::availableSizes(QIcon::Mode, QIcon::State) {
    return {QSize(largestSide(), largestSide())};
}

QIconEngine* IconEnginePlugin::create(const QString& fileName) {
    return fileName.startsWith(iconFolder) ? new IconEngine(fileName) : nullptr;
}

}  // namespace tarvo::window
