#include "window/panels/databasesummary.h"

#include "core/creationsettings.h"
#include "core/referencesystem.h"
#include "core/valueformat.h"
#include "window/common/messages.h"

#include <QLocale>
#include <cmath>

namespace tarvo::window {

namespace pointcloud = qrb::pointcloud;

QString levelOfDetailText(std::uint32_t mode, std::uint32_t size, std::uint32_t dimensions) {
    if (size == 0)
        return QObject::tr("disabled");
    if (mode == 1)
        return QObject::tr("mode: thinout, size: up to %1 % of the original points").arg(size);
    if (mode == 2)
        return QObject::tr("mode: combine, size: %0 (up to %1 points per node)")
            .arg(size)
            .arg(QLocale().toString(std::ldexp(1.0, static_cast<int>(dimensions * size)), 'f', 0));
    return QObject::tr("unknown");
}

QString chunkSizeText(std::uint32_t mode, std::uint32_t size,
                      const pointcloud::PointAttribute& primaryAttribute) {
    if (mode == 1)
        return QObject::tr("mode: point count, size: up to %0 points per chunk")
            .arg(QLocale().toString(size));
    if (mode == 2) {
        const double resolution = primaryAttribute.resolution;
        const QString length = QLocale().toString(std::ldexp(resolution, static_cast<int>(size)),
                                                  'f', core::decimalsOfResolution(resolution));
        const QString unit = QString::fromStdString(primaryAttribute.unitSymbol);
        return QObject::tr("mode: edge length, size: %0 (%1 %2 edge length)")
            .arg(QString::number(size), length, unit.isEmpty() ? QObject::tr("units") : unit);
    }
    return QObject::tr("unknown");
}

DatabaseSummary DatabaseSummary::of(const qrb::Pointcloud& database) {
    DatabaseSummary summary;
    summary.uuid = QString::fromStdString(database.getUuid());

    const pointcloud::IndexNode root = database.stat().root();
    std::int64_t total = root.pointCountTotal;
    summary.pointsTotal = QLocale().toString(static_cast<qlonglong>(total));

    const std::string primaryName = database.pointAttributes().primaryAttributeName();
    const auto primaryAttribute = database.pointAttributes().get(primaryName);
    summary.primaryAttribute = QString::fromStdString(primaryName);
    const auto system = core::referenceSystem(database.metaData());
    summary.referenceSystem =
        system ? translatedMessage(core::describe(*system)).simplified() : QObject::tr("unknown");

    const auto& management = database.management();
    summary.levelOfDetail = levelOfDetailText(management.getLodMode(), management.getChunkSizeLOD(),
                                              primaryAttribute.length);

    const auto ids = database.transactions().list();
    if (ids.empty())
        return summary;
    const auto first = database.transactions().details(ids.front());
    summary.creator = QString::fromStdString(first.agent);
    if (const auto settings = core::creationSettings(database)) {
        summary.chunkSize =
            chunkSizeText(settings->chunkMode, settings->chunkSize, settings->primaryAttribute);
        summary.compressionLevel = QString("%1 %").arg(settings->compressionLevel);
    }
    return summary;
}

}  // namespace tarvo::window
