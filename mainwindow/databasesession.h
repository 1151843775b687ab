// What the panels of one window share: the library context and the database that is open. The
// window owns and changes it; panels only read it.
#pragma once

#include "qrb/pointcloud.h"

#include <QString>
#include <memory>

struct DatabaseSession {
    tarvo::qrb::Context context{"TRACE", ""};
    std::shared_ptr<tarvo::qrb::Pointcloud> database;  // null: none is open
    QString fileName;                                  // native separators; empty: none is open
};
