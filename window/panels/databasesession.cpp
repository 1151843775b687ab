#include "window/panels/databasesession.h"

#include "qrb/error.h"
#include "qrb/qrb.h"

#include <QFileInfo>

namespace tarvo::window {

DatabaseSession::FileState DatabaseSession::fileState() const {
    const auto there = files::identityOf(fileName.toStdString());
    if (there == identity)
        return FileState::AS_OPENED;
    return there ? FileState::REPLACED : FileState::GONE;
}

DatabaseSession::Stamp DatabaseSession::stamp() const {
    const QFileInfo file(fileName);
    return {file.lastModified(), file.size()};
}

void DatabaseSession::noteReading() {
    m_read = stamp();
    m_isOutdated = false;
}

bool DatabaseSession::isOutdated(bool pending) {
    m_isOutdated = m_isOutdated || (!pending && stamp() != m_read);
    return m_isOutdated;
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
