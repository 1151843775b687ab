#include "window/common/attributewords.h"

#include "qrb/pointattribute.h"

#include <QCoreApplication>

namespace tarvo::window {

namespace {

using qrb::pointcloud::PointAttribute;

// What the layer calls them.
[[maybe_unused]] const char* const words[] = {
    QT_TRANSLATE_NOOP("PointAttribute", "constant"),
    QT_TRANSLATE_NOOP("PointAttribute", "variable"),
    QT_TRANSLATE_NOOP("PointAttribute", "dynamic"),
    QT_TRANSLATE_NOOP("PointAttribute", "default"),
    QT_TRANSLATE_NOOP("PointAttribute", "delta"),
    QT_TRANSLATE_NOOP("PointAttribute", "shuffle"),
    QT_TRANSLATE_NOOP("PointAttribute", "delta+shuffle"),
    QT_TRANSLATE_NOOP("PointAttribute", "unknown"),
};

}  // namespace

QString storageClassText(std::uint8_t storageClass) {
    return QCoreApplication::translate("PointAttribute",
                                       PointAttribute::storageClassName(storageClass));
}

QString compressionText(std::uint8_t options) {
    return QCoreApplication::translate("PointAttribute",
                                       PointAttribute::compressionOptionsName(options));
}

}  // namespace tarvo::window
