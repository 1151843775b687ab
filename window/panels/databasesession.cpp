#include "window/panels/databasesession.h"

#include "qrb/error.h"
#include "qrb/qrb.h"

namespace tarvo::window {

DatabaseSession::FileState DatabaseSession::fileState() const {
    const auto there = files::identityOf(fileName.toStdString());
    if (there == identity)
        return FileState::AS_OPENED;
    return there ? FileState::REPLACED : FileState::GONE;
}

bool DatabaseSession::isOverwritten() const {
    try {
        if (database)
            (void)database->transactions().current();
        return false;
    } catch (const qrb::Error& error) {
        return error.code() == QRB_ERROR_STATE;
    }
}

}  // namespace tarvo::window
