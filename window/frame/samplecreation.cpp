#include "window/frame/samplecreation.h"

#include "core/newdatabase.h"
#include "simulation/sampledatabase.h"
#include "window/common/aside.h"
#include "window/common/filefilter.h"
#include "window/common/outputdialog.h"
#include "window/common/recentfiles.h"
#include "window/common/textformat.h"
#include "window/frame/openwindows.h"

#include <QDir>
#include <QFileInfo>
#include <QObject>

namespace tarvo::window {

namespace {

// Beside the database that is open, or that was opened last.
QString proposedName(const DatabaseSession& session) {
    const QString beside =
        session.fileName.isEmpty() ? RecentFiles::list().value(0) : session.fileName;
    return QFileInfo(beside).absoluteDir().filePath("sample.qrbx");
}

}  // namespace

QString createSample(const DatabaseSession& session, QWidget* parent) {
    const QString chosen = chooseOutput(parent, QObject::tr("Sample"), proposedName(session),
                                        databaseFileDialogFilter(), "qrbx");
    if (chosen.isEmpty())
        return {};
    const QString location = QDir::toNativeSeparators(QFileInfo(chosen).absoluteFilePath());
    refuseOpenDatabase(location, session);
    const std::string place = location.toStdString();
    // The dialog has asked whether it may be replaced; another file than a database is refused.
    const bool replaces = QFileInfo::exists(location);
    workAside(parent, QObject::tr("Making a sample ..."), session.context,
              [&](const StepProgress& progress) {
                  core::NewDatabase database(session.context, place, replaces);
                  simulation::makeSample(database, place, {}, transactionAgentText().toStdString(),
                                         progress);
                  // The last chance to cancel: the file isn't in its place yet.
                  progress(QObject::tr("Writing %1").arg(location).toStdString(), 1);
                  database.publish();
              });
    return location;
}

}  // namespace tarvo::window
