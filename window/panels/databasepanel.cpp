#include "window/panels/databasepanel.h"

#include "ui_databasepanel.h"
#include "window/common/clipboard.h"
#include "window/common/filemanager.h"
#include "window/common/librarydialog.h"
#include "window/common/textformat.h"
#include "window/panels/databasesummary.h"

#include <QDir>
#include <QFileInfo>
#include <QFormLayout>
#include <QLocale>
#include <QMenu>

namespace tarvo::window {

DatabasePanel::DatabasePanel(const DatabaseSession& session, QWidget* parent)
    : Panel(session, parent), m_ui(std::make_unique<Ui::DatabasePanel>()) {
    m_ui->setupUi(this);
    auto* menu = new QMenu(m_ui->toolButtonDatabaseFile);
    menu->addActions({m_ui->actionDatabaseFileCopyPath, m_ui->actionDatabaseFileCopyName,
                      m_ui->actionDatabaseFileCopyFolder, m_ui->actionDatabaseFileLocateFile});
    m_ui->toolButtonDatabaseFile->setMenu(menu);
    m_ui->toolButtonCurrentLibrary->setToolTip(m_ui->actionSwitchLibrary->toolTip());
    connect(m_ui->toolButtonCurrentLibrary, &QToolButton::clicked, m_ui->actionSwitchLibrary,
            &QAction::trigger);
}

DatabasePanel::~DatabasePanel() = default;

void DatabasePanel::refresh() {
    clear();
    updateActions();
    // Without a database there is the library alone.
    auto* form = qobject_cast<QFormLayout*>(layout());
    for (int row = 0; row < form->rowCount() - 1; ++row)
        form->setRowVisible(row, database() != nullptr);
    showLibrary();
    if (database())
        showDatabase();
}

void DatabasePanel::clear() {
    for (QLineEdit* edit : findChildren<QLineEdit*>())
        edit->clear();
}

void DatabasePanel::showLibrary() {
    const auto& context = m_session.context;
    const QString version =
        shortLibraryVersion(libraryTitle(QString::fromStdString(context.libraryName()),
                                         QString::fromStdString(context.libraryVersion())));
    const QString fileName =
        QDir::toNativeSeparators(QString::fromStdString(context.libraryFilename()));
    m_ui->editCurrentLibrary->setText(QString("%2 (%1)").arg(version, fileName));
}

void DatabasePanel::showDatabase() {
    m_ui->editDatabaseFile->setText(m_session.fileName);
    m_ui->editDatabaseSize->setText(sizeText());

    const auto summary = DatabaseSummary::of(*database());
    m_ui->editDatabaseUUID->setText(summary.uuid);
    m_ui->editPointsTotal->setText(summary.pointsTotal);
    m_ui->editChunkSize->setText(summary.chunkSize);
    m_ui->editCompressionLevel->setText(summary.compressionLevel);
    m_ui->editDatabaseCreator->setText(summary.creator);
    m_ui->editPrimaryAttribute->setText(summary.primaryAttribute);
    m_ui->editLevelOfDetail->setText(summary.levelOfDetail);
    m_ui->editReferenceSystem->setText(summary.referenceSystem);
    for (QLineEdit* edit : findChildren<QLineEdit*>())
        edit->setCursorPosition(0);
}

// Of the file that was opened: another one under its name has nothing to do with what is shown.
QString DatabasePanel::sizeText() const {
    const qint64 bytes = QFileInfo(m_session.fileName).size();
    if (m_session.fileState() != DatabaseSession::FileState::AS_OPENED)
        return tr("unknown");
    return QString("%1 (%2 B)")
        .arg(humanReadableSize(static_cast<std::uint64_t>(bytes)), QLocale().toString(bytes));
}

void DatabasePanel::updateActions() {
    const bool open = database() && !m_session.fileName.isEmpty();
    m_ui->toolButtonDatabaseFile->setEnabled(open);
    for (QAction* action : {m_ui->actionDatabaseFileCopyPath, m_ui->actionDatabaseFileCopyName,
                            m_ui->actionDatabaseFileCopyFolder, m_ui->actionDatabaseFileLocateFile})
        action->setEnabled(open);
}

void DatabasePanel::on_actionDatabaseFileCopyPath_triggered() {
    if (database())
        copyToClipboard(m_session.fileName);
}

void DatabasePanel::on_actionDatabaseFileCopyName_triggered() {
    if (database())
        copyToClipboard(QFileInfo(m_session.fileName).fileName());
}

void DatabasePanel::on_actionDatabaseFileCopyFolder_triggered() {
    if (database())
        copyToClipboard(QDir::toNativeSeparators(QFileInfo(m_session.fileName).absolutePath()));
}

void DatabasePanel::on_actionDatabaseFileLocateFile_triggered() {
    if (database())
        showInFileManager(m_session.fileName);
}

void DatabasePanel::on_actionSwitchLibrary_triggered() {
    const QString name = chooseLibrary(this);
    if (!name.isEmpty())
        emit libraryChosen(name);
}

}  // namespace tarvo::window
