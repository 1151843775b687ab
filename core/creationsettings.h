// The settings that a database was created with.
#pragma once

#include "qrb/pointcloud.h"

#include <optional>

namespace tarvo::core {

// As the database's first transaction keeps them, with the primary attribute and the level of
// detail that it has now; none where the library keeps none. Throws qrb::Error.
std::optional<qrb::pointcloud::CreateSettings> creationSettings(const qrb::Pointcloud& database);

}  // namespace tarvo::core
