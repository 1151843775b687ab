// MainWindow: the life of the open database.
#include "window/frame/mainwindow.h"

#include "core/namedfilter.h"
#include "qrb/error.h"
#include "window/common/aside.h"
#include "window/common/guard.h"
#include "window/common/messageboxes.h"
#include "window/common/recentfiles.h"
#include "window/dialogs/dialogopensettings.h"
#include "window/frame/commandline.h"
#include "window/frame/givenfiles.h"
#include "window/panels/changelogpanel.h"
#include "window/panels/pointdatapanel.h"
#include "window/view/cloudview.h"

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QProgressDialog>
#include <QTimer>
#include <algorithm>
#include <stdexcept>

namespace tarvo::window {

namespace {

constexpr int retryDelay = 200;  // milliseconds

}  // namespace

void MainWindow::openArguments(const QStringList& arguments, bool isFirst) {
    GivenFiles given = sortFiles(fileArguments(arguments), m_session.context);
    if (!isFirst) {
        given.points.clear();
        given.refusals.clear();
    }
    openGiven(given);
    if (!given.refusals.isEmpty())
        showWarning(this, given.refusals.join("\n\n"));
}

void MainWindow::openGiven(const GivenFiles& given) {
    if (!given.database.isEmpty())
        openDatabase(given.database, true);
    if (!given.points.isEmpty())
        importPoints(given.points, !given.database.isEmpty());
    if (!given.text.isEmpty())
        openTextFile(given.text);
}

void MainWindow::openDatabase(QString fileName, bool skipDialog) {
    guarded(this, [&] {
        qrb::pointcloud::OpenSettings settings(m_session.context);
        if (!skipDialog &&
            !DialogOpenSettings::edit(m_session.context, fileName, settings.cacheSize,
                                      RecentFiles::list(), this, &settings.readOnly))
            return;
        fileName = QDir::toNativeSeparators(QFileInfo(fileName).absoluteFilePath());
        if (!skipDialog && isImportable(fileName)) {
            importPoints({fileName}, false);
            return;
        }
        tryToOpen(fileName, settings);
        if (mayDropDatabase())
            replaceDatabase(fileName, settings);
    });
}

// Throws for a file that can't be opened while that would cost a pending transaction.
void MainWindow::tryToOpen(const QString& fileName, const qrb::pointcloud::OpenSettings& settings) {
    if (!isPending() || files::identityOf(fileName.toStdString()) == m_session.identity)
        return;
    workAside(this, tr("Opening the database..."), m_session.context, [&](const StepProgress&) {
        qrb::Pointcloud(m_session.context).open(fileName.toStdString(), settings);
    });
}

void MainWindow::replaceDatabase(const QString& fileName,
                                 const qrb::pointcloud::OpenSettings& settings) {
    try {
        dropDatabase();
        auto database = std::make_shared<qrb::Pointcloud>(m_session.context);
        const auto identity = files::identityOf(fileName.toStdString());
        workAside(this, tr("Opening the database..."), m_session.context,
                  [&](const StepProgress&) { database->open(fileName.toStdString(), settings); });
        if (files::identityOf(fileName.toStdString()) != identity)
            throw std::runtime_error(
                tr("The file was replaced while it was opened.\nOpen it again.").toStdString());
        core::takeNamesInFilters(*database);
        m_session.database = std::move(database);
        m_session.identity = identity;
        m_session.readOnly = settings.readOnly;
    } catch (...) {
        refreshPanels();
        throw;
    }
    RecentFiles::add(fileName);
    m_session.fileName = fileName;
    refreshPanels();
}

// Tells when the file under the open database's name is not the one that was opened any more, and
// opens what is there now, or closes the database, if the user wants that.
void MainWindow::checkFile() {
    guarded(this, [this] {
        if (!m_session.database || isAsOpened())
            return;
        const auto state = m_session.fileState();
        const bool overwritten = state == DatabaseSession::FileState::AS_OPENED;
        updateStatus();
        const bool replaced = overwritten || state == DatabaseSession::FileState::REPLACED;
        const bool pending = isPending();
        QString text =
            (overwritten ? tr("\"%0\" was written over with another database since it was "
                              "opened.\nWhat was opened is not there any more.")
             : replaced  ? tr("\"%0\" was replaced by another file since it was opened.")
                         : tr("\"%0\" was deleted or renamed since it was opened."))
                .arg(m_session.fileName) +
            '\n';
        if (!overwritten)
            text += tr("What the window shows is as it was; it can be read and exported, but not "
                       "changed.") +
                    '\n';
        if (pending)
            text += tr("The pending transaction can only be committed once the file is back in its "
                       "place.\nAll its changes will be lost if you go on.") +
                    '\n';
        text +=
            '\n' + (replaced ? tr("Open the file that is there now?") : tr("Close the database?"));
        // What the window shows may be the last copy there is.
        if (!lossConfirmed(this, text))
            return;
        if (replaced) {
            const QString fileName = m_session.fileName;
            qrb::pointcloud::OpenSettings settings(m_session.context);
            settings.readOnly = m_session.readOnly;
            tryToOpen(fileName, settings);
            replaceDatabase(fileName, settings);
        } else {
            dropDatabase();
            refreshPanels();
        }
    });
}

bool MainWindow::isPending() const {
    return m_session.database && m_session.database->transactions().pending();
}

// Whether the changes of a pending transaction, if there is one, may get lost.
bool MainWindow::mayDropDatabase() {
    if (!isPending())
        return true;
    // There may be several windows.
    if (isVisible()) {
        raise();
        activateWindow();
    }
    return lossConfirmed(
        this, tr("A transaction is pending in \"%0\".\nAll its changes will be lost. Go on?")
                  .arg(m_session.fileName));
}

// Ends what works on the database and drops the handle.
void MainWindow::dropDatabase() {
    m_view->drop();
    m_pointData->cancelAction()->trigger();
    m_changelog->clear();
    const auto database = std::move(m_session.database);
    m_session.database.reset();
    m_session.fileName.clear();
    m_session.identity.reset();
    m_session.readOnly = false;
    if (database && database->isOpen())
        database->close();
}

bool MainWindow::isBusy() const {
    return window::isBusy(this);
}

void MainWindow::openFile(const QString& fileName) {
    openFiles({fileName});
}

void MainWindow::openFiles(const QStringList& fileNames) {
    const QString fileName = fileNames.value(0);
    if (m_closed || !QFileInfo(fileName).isFile())
        return;
    // A dialog may be at work on the database that would be dropped.
    if (QApplication::activeModalWidget() || isBusy()) {
        QTimer::singleShot(retryDelay, this, [this, fileNames] { openFiles(fileNames); });
        return;
    }
    openGiven(sortFiles(fileNames, m_session.context));
}

// The changelog of a database that is open must not be mistaken for that of a text file.
void MainWindow::openTextFile(const QString& fileName) {
    guarded(this, [&] {
        if (!m_session.database) {
            m_changelog->loadTextFile(fileName);
            return;
        }
        if (!confirmed(this, tr("The window shows the changelog of the database that "
                                "is open.\nShow \"%0\" in a new window?")
                                 .arg(QDir::toNativeSeparators(fileName))))
            return;
        showBeside(new MainWindow(fileName));
    });
}

bool MainWindow::isOpenable(const QString& fileName) const {
    return isDatabaseFile(fileName) || isTextFileName(fileName) || isPointFile(fileName);
}

bool MainWindow::isDatabaseFile(const QString& fileName) const {
    return window::isDatabaseFile(fileName, m_session.context);
}

}  // namespace tarvo::window
