#include "mainwindow/databasesession.h"

DatabaseSession::FileState DatabaseSession::fileState() const {
    const auto there = tarvo::files::identityOf(fileName.toStdString());
    if (there == identity)
        return FileState::AS_OPENED;
    return there ? FileState::REPLACED : FileState::GONE;
}
