// Points in the formats of other programs.
#pragma once

#include "core/pointpages.h"
#include "window/panels/databasesession.h"

#include <QStringList>

class QWidget;

namespace tarvo::window {

// Asks for a file, writes the selected points with these attributes in the format that its
// extension says, or else the chosen type, and tells how it ended. The session has a database open.
// Throws Cancelled, Failure, files::FileError and qrb::Error; what was there is left then.
void exportPointsAs(const DatabaseSession& session, const core::PointSelection& selection,
                    const QStringList& attributes, QWidget* parent);

}  // namespace tarvo::window
