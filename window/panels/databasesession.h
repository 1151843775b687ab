// What the panels of one window share: the library context and the database that is open. The
// window owns and changes it; panels only read it.
#pragma once

#include "files/identity.h"
#include "qrb/pointcloud.h"

#include <QDateTime>
#include <QString>
#include <memory>
#include <optional>

namespace tarvo::window {

struct DatabaseSession {
    enum class FileState { AS_OPENED, REPLACED, GONE };

    // What became of the file under the name of the open database. GONE also where it can't be
    // looked at. A look at the folder, no more: cheap.
    FileState fileState() const;
    // The file is about to be read, so that what it holds now is what is going to be shown.
    void noteReading();
    // Whether somebody else wrote to the file since it was read; once that was seen it stays. The
    // same look. A pending transaction, which writes itself, hides it.
    bool isOutdated(bool pending);
    // Whether the file is the one that was opened, but was written over with another database. Asks
    // the library, which tells it by its error; a pending transaction hides it until it is
    // committed.
    bool isOverwritten() const;

    qrb::Context context{"TRACE", ""};
    std::shared_ptr<qrb::Pointcloud> database;  // null: none is open
    QString fileName;                           // native separators; empty: none is open
    std::optional<files::Identity> identity;    // of the file that was opened
    bool readOnly = false;                      // it was opened for reading only

private:
    // What changes when a file is written.
    struct Stamp {
        QDateTime modified;
        qint64 size = 0;
        bool operator==(const Stamp&) const = default;
    };
    Stamp stamp() const;

    Stamp m_read;
    bool m_isOutdated = false;
};

}  // namespace tarvo::window
