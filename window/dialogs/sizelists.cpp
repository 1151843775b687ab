#include "window/dialogs/sizelists.h"

#include "core/valueformat.h"

#include <QComboBox>
#include <QLocale>
#include <QSignalBlocker>
#include <QSpinBox>
#include <cmath>

namespace tarvo::window {

namespace {

constexpr int edgeLengths = 64;
constexpr int usualEdgeLength = 15;
constexpr int largestCombineLevel = 16;
constexpr int usualCombineLevel = 8;

void replaceEntries(QComboBox* list, const QStringList& entries, int usual) {
    const int before = list->currentIndex();
    const QSignalBlocker filling(list);
    list->clear();
    list->addItems(entries);
    list->setCurrentIndex(before >= 0 && before < entries.size() ? before : usual);
}

}  // namespace

void fillEdgeLengths(QComboBox* list, const qrb::pointcloud::PointAttribute& primaryAttribute) {
    const int decimals = core::decimalsOfResolution(primaryAttribute.resolution);
    const QString unit = primaryAttribute.unitSymbol.empty()
                             ? QObject::tr("units")
                             : QString::fromStdString(primaryAttribute.unitSymbol);
    QStringList entries;
    for (int level = 0; level < edgeLengths; ++level) {
        const double length = std::ldexp(primaryAttribute.resolution, level);
        entries +=
            QObject::tr("%0 (%1 %2 edge length)")
                .arg(QString::number(level), QLocale().toString(length, 'f', decimals), unit);
    }
    replaceEntries(list, entries, usualEdgeLength);
}

void fillCombineLevels(QComboBox* list, std::uint32_t length) {
    QStringList entries(QObject::tr("0 (off)"));
    for (int level = 1; level <= largestCombineLevel; ++level) {
        const double points = std::ldexp(1.0, static_cast<int>(length) * level);
        entries += QObject::tr("%0 (up to %1 points per node)")
                       .arg(QString::number(level), QLocale().toString(points, 'f', 0));
    }
    replaceEntries(list, entries, usualCombineLevel);
}

bool showSize(QComboBox* list, std::uint32_t level) {
    if (level >= static_cast<std::uint32_t>(list->count()))
        return false;
    list->setCurrentIndex(static_cast<int>(level));
    return true;
}

bool showSize(QSpinBox* box, std::uint32_t size) {
    if (size < static_cast<std::uint32_t>(box->minimum()) ||
        size > static_cast<std::uint32_t>(box->maximum()))
        return false;
    box->setValue(static_cast<int>(size));
    return true;
}

}  // namespace tarvo::window
