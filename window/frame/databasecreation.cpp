#include "window/frame/databasecreation.h"

#include "core/newdatabase.h"
#include "window/common/aside.h"
#include "window/common/guard.h"
#include "window/common/messageboxes.h"
#include "window/dialogs/dialogcreatesettings.h"
#include "window/frame/openwindows.h"

#include <QDir>
#include <QFileInfo>

namespace tarvo::window {

namespace {

struct Wish {
    QString location;
    qrb::pointcloud::CreateSettings settings;
    std::string schema;
    bool optionals = false;
};

// Whether the user wants it, seeing what would be replaced.
bool create(const Wish& wish, const DatabaseSession& session, QWidget* parent) {
    const QFileInfo target(wish.location);
    if (target.exists()) {
        refuseOpenDatabase(wish.location, session);
        // Another file is refused anyway.
        if (session.context.databaseFileTypeCheck(wish.location.toStdString()) &&
            !lossConfirmed(
                parent,
                QObject::tr("The file \"%0\" exists already.\nReplace it?").arg(wish.location)))
            return false;
    }
    const bool replaces = target.exists();
    workAside(
        parent, QObject::tr("Creating the database..."), session.context, [&](const StepProgress&) {
            core::NewDatabase database(session.context, wish.location.toStdString(), replaces);
            if (wish.schema.empty())
                database.create(wish.settings);
            else
                database.create(wish.settings, wish.schema, wish.optionals);
            database.publish();
        });
    return true;
}

}  // namespace

QString createDatabase(const DatabaseSession& session, QWidget* parent) {
    Wish wish{{}, qrb::pointcloud::CreateSettings(session.context), {}, false};
    while (DialogCreateSettings::edit(session.context, wish.location, wish.settings, wish.schema,
                                      wish.optionals, parent)) {
        bool created = false;
        guarded(parent, [&] { created = create(wish, session, parent); });
        if (created)
            return QDir::toNativeSeparators(QFileInfo(wish.location).absoluteFilePath());
    }
    return {};
}

}  // namespace tarvo::window
