#include "core/creationsettings.h"

#include "qrb/error.h"

namespace tarvo::core {

std::optional<qrb::pointcloud::CreateSettings> creationSettings(const qrb::Pointcloud& database) {
    const auto ids = database.transactions().list();
    if (ids.empty())
        return std::nullopt;
    const std::string json = database.transactions().details(ids.front()).settings;
    if (json.empty())
        return std::nullopt;
    qrb::pointcloud::CreateSettings settings(database.context());
    try {
        settings.fromJson(json);
    } catch (const qrb::Error&) {  // some other text
        return std::nullopt;
    }
    const auto& attributes = database.pointAttributes();
    settings.primaryAttribute = attributes.get(attributes.primaryAttributeName());
    settings.lodMode = database.management().getLodMode();
    settings.chunkSizeLOD = database.management().getChunkSizeLOD();
    return settings;
}

}  // namespace tarvo::core
