// Measures in pictures of widgets how well texts and icons stand out from their ground.
#pragma once

#include <QColor>
#include <QStringList>

class QImage;
class QRect;
class QWidget;

constexpr double textContrast = 4.5;
constexpr double iconContrast = 3.0;

// From 1, the same luminance, to 21, black and white; as accessibility guidelines define it.
double contrast(QColor one, QColor other);

// The colour of most pixels.
QColor groundOf(const QImage& picture, const QRect& part);

// What of the window's texts and icons is fainter than the limits above, each with its place and
// its contrast. Words are measured one by one, cells of tables each on its own ground. Icons of
// buttons that can't be used are left out.
QStringList faintParts(QWidget* window);
