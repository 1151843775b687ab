#include "mainwindow/mainwindow.h"

#include "common/guard.h"
#include "common/messageboxes.h"
#include "common/programsettings.h"
#include "common/recentfiles.h"
#include "common/theme.h"
#include "dialogs/dialogexportasqrb.h"
#include "dialogs/dialogopensettings.h"
#include "dialogs/dialogvalidate.h"
#include "mainwindow/aboutbox.h"
#include "mainwindow/changelogpanel.h"
#include "mainwindow/commandline.h"
#include "mainwindow/databasecreation.h"
#include "mainwindow/databasepanel.h"
#include "mainwindow/inspectionpanel.h"
#include "mainwindow/librarychoice.h"
#include "mainwindow/metadatapanel.h"
#include "mainwindow/mimefile.h"
#include "mainwindow/openwindows.h"
#include "mainwindow/pointattributespanel.h"
#include "mainwindow/pointdatapanel.h"
#include "mainwindow/pointindexpanel.h"
#include "mainwindow/transactionspanel.h"
#include "mainwindow/viewmenu.h"
#include "qrb/error.h"
#include "ui_mainwindow.h"

#include <QApplication>
#include <QClipboard>
#include <QCloseEvent>
#include <QDir>
#include <QDragEnterEvent>
#include <QFileInfo>
#include <QLabel>
#include <QMimeData>
#include <QProgressDialog>
#include <QTimer>
#include <QToolBar>
#include <QToolButton>
#include <algorithm>
#include <exception>
#include <stdexcept>

namespace common = tarvo::common;

namespace {

constexpr int retryDelay = 200;  // milliseconds

bool isTextFileName(const QString& fileName) {
    return fileName.endsWith(".txt", Qt::CaseInsensitive);
}

// What the status line adds to the file's name.
QString remarkOn(DatabaseSession::FileState state) {
    switch (state) {
        case DatabaseSession::FileState::REPLACED:
            return " (replaced by another file since it was opened)";
        case DatabaseSession::FileState::GONE:
            return " (deleted or renamed since it was opened)";
        default:
            return {};
    }
}

}  // namespace

MainWindow::MainWindow(const QString& textFileName) : m_ui(std::make_unique<Ui::MainWindow>()) {
    m_ui->setupUi(this);
    // After the form, whose automatic connection would reach into the panels.
    createPanels();
    createStatusLabel();
    m_ui->menuBar->insertMenu(m_ui->menuWindow->menuAction(), createViewMenu(this));
    m_ui->tabWidget->setCurrentWidget(m_ui->tabDatabase);
    addAction(m_pointData->findAction());
    refreshPanels();
    restoreWindowGeometry();

    m_ui->actionProgramSettings->setEnabled(false);
    m_ui->actionProgramSettings->setVisible(false);
    m_ui->actionFactoryMode->setEnabled(false);
    m_ui->actionFactoryMode->setVisible(false);
    common::adaptToolTips(this);
    evaluateCommandLine(textFileName);
}

MainWindow::~MainWindow() {
    // Queries of the panels must be gone before the context.
    for (Panel* panel : m_panels)
        delete panel;
}

void MainWindow::createPanels() {
    auto* database = new DatabasePanel(m_session, m_ui->tabDatabase);
    connect(database, &DatabasePanel::libraryChosen, this, &MainWindow::switchLibrary);
    addPanel(m_ui->tabDatabase, database);

    auto* transactions = new TransactionsPanel(m_session, m_ui->tabTransactions);
    connect(transactions, &TransactionsPanel::fileLost, this, &MainWindow::checkFile);
    addPanel(m_ui->tabTransactions, transactions);

    m_changelog = new ChangelogPanel(m_session, m_ui->tabChangelog);
    connect(m_changelog, &ChangelogPanel::textFileLoaded, this, [this] {
        updateTabs();
        updateActions();
    });
    addPanel(m_ui->tabChangelog, m_changelog);

    addPanel(m_ui->tabMetaData, new MetaDataPanel(m_session, m_ui->tabMetaData));
    addPanel(m_ui->tabPointAttributes,
             new PointAttributesPanel(m_session, m_ui->tabPointAttributes));
    auto* index = new PointIndexPanel(m_session, m_ui->tabPointIndex);
    addPanel(m_ui->tabPointIndex, index);

    m_pointData = new PointDataPanel(m_session, m_ui->tabPointData);
    connect(m_pointData, &PointDataPanel::shown, this,
            [this] { m_ui->tabWidget->setCurrentWidget(m_ui->tabPointData); });
    connect(index, &PointIndexPanel::nodeChosen, m_pointData, &PointDataPanel::showNode);
    connect(index, &PointIndexPanel::historyChanged, m_pointData, &PointDataPanel::refreshHistory);
    connect(m_pointData, &PointDataPanel::historyChanged, index, &PointIndexPanel::refreshHistory);
    addPanel(m_ui->tabPointData, m_pointData);

    addPanel(m_ui->tabInspection, new InspectionPanel(m_session, m_ui->tabInspection));
}

void MainWindow::addPanel(QWidget* tab, Panel* panel) {
    tab->layout()->addWidget(panel);
    // Toolbars leave their buttons out of the tab order, and many actions stand nowhere else.
    for (const QToolBar* toolBar : panel->findChildren<QToolBar*>())
        for (QToolButton* button : toolBar->findChildren<QToolButton*>())
            button->setFocusPolicy(Qt::TabFocus);
    connect(panel, &Panel::databaseChanged, this, &MainWindow::refreshPanels);
    m_panels.push_back(panel);
}

void MainWindow::createStatusLabel() {
    m_statusLabel = new QLabel(this);
    m_statusLabel->setObjectName("labelStatus");
    m_statusLabel->setTextFormat(Qt::PlainText);
    m_statusLabel->setTextInteractionFlags(Qt::TextSelectableByMouse);
    // A long file name must not widen the window.
    m_statusLabel->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    m_ui->statusBar->addWidget(m_statusLabel, 1);
}

void MainWindow::restoreWindowGeometry() {
    const common::ProgramSettings settings;
    if (settings.contains("Geometry"))
        restoreGeometry(settings.value("Geometry").toByteArray());
}

void MainWindow::evaluateCommandLine(const QString& textFileName) {
    const QStringList arguments = QCoreApplication::arguments();
    if (const auto rectangle = windowRectangle(arguments))
        setGeometry(*rectangle);
    if (!textFileName.isEmpty()) {
        common::guarded(this, [&] { m_changelog->loadTextFile(textFileName); });
        return;
    }
    for (const QString& argument : arguments) {
        if (isDatabaseFile(argument)) {
            openDatabase(argument, true);
            return;
        }
        if (isTextFileName(argument)) {
            common::guarded(this, [&] { m_changelog->loadTextFile(argument); });
            return;
        }
    }
}

void MainWindow::openDatabase(QString fileName, bool skipDialog) {
    common::guarded(this, [&] {
        tarvo::qrb::pointcloud::OpenSettings settings(m_session.context);
        if (!skipDialog &&
            !DialogOpenSettings::edit(m_session.context, fileName, settings.cacheSize,
                                      common::RecentFiles::list(), this))
            return;
        fileName = QDir::toNativeSeparators(QFileInfo(fileName).absoluteFilePath());
        tryToOpen(fileName, settings);
        if (mayDropDatabase())
            replaceDatabase(fileName, settings);
    });
}

// Throws for a file that can't be opened while that would cost a pending transaction.
void MainWindow::tryToOpen(const QString& fileName,
                           const tarvo::qrb::pointcloud::OpenSettings& settings) const {
    if (!isPending() || tarvo::files::identityOf(fileName.toStdString()) == m_session.identity)
        return;
    const common::WaitCursor waiting;
    tarvo::qrb::Pointcloud(m_session.context).open(fileName.toStdString(), settings);
}

void MainWindow::replaceDatabase(const QString& fileName,
                                 const tarvo::qrb::pointcloud::OpenSettings& settings) {
    try {
        dropDatabase();
        const common::WaitCursor waiting;
        auto database = std::make_shared<tarvo::qrb::Pointcloud>(m_session.context);
        const auto identity = tarvo::files::identityOf(fileName.toStdString());
        database->open(fileName.toStdString(), settings);
        if (tarvo::files::identityOf(fileName.toStdString()) != identity)
            throw std::runtime_error("The file was replaced while it was opened.\nOpen it again.");
        m_session.database = std::move(database);
        m_session.identity = identity;
    } catch (...) {
        refreshPanels();
        throw;
    }
    common::RecentFiles::add(fileName);
    m_session.fileName = fileName;
    refreshPanels();
}

// Tells when the file under the open database's name is not the one that was opened any more, and
// opens what is there now, or closes the database, if the user wants that.
void MainWindow::checkFile() {
    common::guarded(this, [this] {
        const auto state = m_session.fileState();
        if (!m_session.database || state == DatabaseSession::FileState::AS_OPENED)
            return;
        updateStatus();
        const bool replaced = state == DatabaseSession::FileState::REPLACED;
        const bool pending = isPending();
        QString text =
            QString(replaced ? "\"%0\" was replaced by another file since it was opened.\n"
                             : "\"%0\" was deleted or renamed since it was opened.\n")
                .arg(m_session.fileName);
        text +=
            "What the window shows is as it was; it can be read and exported, but not changed.\n";
        if (pending)
            text +=
                "The pending transaction can only be committed once the file is back in its "
                "place.\nAll its changes will be lost if you go on.\n";
        text += replaced ? "\nOpen the file that is there now?" : "\nClose the database?";
        if (!(pending ? common::lossConfirmed(this, text) : common::confirmed(this, text)))
            return;
        if (replaced) {
            const QString fileName = m_session.fileName;
            const tarvo::qrb::pointcloud::OpenSettings settings(m_session.context);
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
    return common::lossConfirmed(this,
                                 "A transaction is pending.\nAll its changes will be lost. Go on?");
}

// Ends what works on the database and drops the handle.
void MainWindow::dropDatabase() {
    m_pointData->cancelAction()->trigger();
    m_changelog->clear();
    const auto database = std::move(m_session.database);
    m_session.database.reset();
    m_session.fileName.clear();
    m_session.identity.reset();
    if (database && database->isOpen())
        database->close();
}

// Whether something of this window is at work on the database, or waits for an answer. A progress
// dialog may be hidden and its work still go on.
bool MainWindow::isBusy() const {
    if (findChild<QProgressDialog*>())
        return true;
    const auto dialogs = findChildren<QDialog*>();
    return std::any_of(dialogs.begin(), dialogs.end(), [](const QDialog* dialog) {
        return dialog->isVisible() && dialog->isModal();
    });
}

void MainWindow::openFile(const QString& fileName) {
    if (m_closed || !QFileInfo(fileName).isFile())
        return;
    // A dialog may be at work on the database that would be dropped.
    if (QApplication::activeModalWidget() || isBusy()) {
        QTimer::singleShot(retryDelay, this, [this, fileName] { openFile(fileName); });
        return;
    }
    if (isDatabaseFile(fileName))
        openDatabase(fileName, true);
    else if (isTextFileName(fileName))
        openTextFile(fileName);
}

// The changelog of a database that is open must not be mistaken for that of a text file.
void MainWindow::openTextFile(const QString& fileName) {
    common::guarded(this, [&] {
        if (!m_session.database) {
            m_changelog->loadTextFile(fileName);
            return;
        }
        if (!common::confirmed(this, QString("The window shows the changelog of the database that "
                                             "is open.\nShow \"%0\" in a new window?")
                                         .arg(QDir::toNativeSeparators(fileName))))
            return;
        auto* window = new MainWindow(fileName);
        window->setAttribute(Qt::WA_DeleteOnClose);
        window->show();
    });
}

bool MainWindow::isOpenable(const QString& fileName) const {
    return isDatabaseFile(fileName) || isTextFileName(fileName);
}

bool MainWindow::isDatabaseFile(const QString& fileName) const {
    if (!QFileInfo(fileName).isFile())
        return false;
    try {
        return m_session.context.databaseFileTypeCheck(fileName.toStdString());
    } catch (const tarvo::qrb::Error&) {
        return false;
    }
}

void MainWindow::refreshPanels() {
    updateTabs();
    QStringList unread;
    QStringList reasons;
    for (Panel* panel : m_panels) {
        // Each on its own: what one can't read keeps nothing from the others.
        try {
            const common::WaitCursor waiting;
            panel->refresh();
        } catch (...) {
            const auto [text, details] = common::describe(std::current_exception());
            unread += m_ui->tabWidget->tabText(m_ui->tabWidget->indexOf(panel->parentWidget()));
            reasons += details.isEmpty() ? text : text + '\n' + details;
        }
    }
    updateActions();
    reasons.removeDuplicates();
    if (!unread.isEmpty())
        common::showError(this, "What could not be read: " + unread.join(", ") + ".",
                          reasons.join("\n\n"));
}

void MainWindow::updateTabs() {
    const bool open = m_session.database != nullptr;
    // Else each tab that is disabled would bring up the next one, for nothing.
    if (!open && m_ui->tabWidget->currentWidget() != m_ui->tabChangelog)
        m_ui->tabWidget->setCurrentWidget(m_ui->tabDatabase);
    for (int i = 0; i < m_ui->tabWidget->count(); ++i) {
        const QWidget* tab = m_ui->tabWidget->widget(i);
        m_ui->tabWidget->setTabEnabled(
            i, open || tab == m_ui->tabDatabase || tab == m_ui->tabChangelog);
    }
    updateStatus();
}

void MainWindow::updateStatus() {
    QString status = "no database opened";
    if (m_session.database)
        status = m_session.fileName + remarkOn(m_session.fileState());
    else if (!m_changelog->textFileName().isEmpty())
        status = m_changelog->textFileName();
    m_statusLabel->setText(status);
}

void MainWindow::updateActions() {
    const bool open = m_session.database != nullptr;
    m_ui->actionReload->setEnabled(open);
    m_ui->actionValidate->setEnabled(open);
    m_ui->actionExportAsQRB->setEnabled(open);
    m_ui->actionClose->setEnabled(open || !m_changelog->textFileName().isEmpty());
    m_ui->actionOpenLastUsed->setEnabled(!common::RecentFiles::list().isEmpty());
}

void MainWindow::on_actionNew_triggered() {
    common::guarded(this, [this] {
        const QString fileName = createDatabase(m_session, this);
        if (!fileName.isEmpty())
            openDatabase(fileName, true);
    });
}

void MainWindow::on_actionExportAsQRB_triggered() {
    common::guarded(this, [this] {
        if (!m_session.database)
            return;
        const QString fileName = DialogExportAsQRB::run(
            {*m_session.database, m_session.fileName, m_session.identity},
            m_pointData->filterText(), m_pointData->nodesText(),
            [this](const QString& place) { refuseOpenDatabase(place, m_session); }, this);
        m_pointData->refreshHistory();
        if (!fileName.isEmpty())
            openDatabase(fileName, true);
    });
}

void MainWindow::on_actionOpen_triggered() {
    openDatabase(m_session.fileName, false);
}

void MainWindow::on_actionOpenLastUsed_triggered() {
    const QStringList recent = common::RecentFiles::list();
    if (!recent.isEmpty())
        openDatabase(recent.first(), true);
}

void MainWindow::on_actionOpenClipboard_triggered() {
    const QString name = localFileIn(QApplication::clipboard()->mimeData());
    if (!name.isEmpty() && isDatabaseFile(name)) {
        openDatabase(name, true);
        return;
    }
    common::showUnbrokenInformation(this,
                                    "No database file name found in the clipboard.\n"
                                    "Please copy a file or a file name to the clipboard.");
}

void MainWindow::on_actionReload_triggered() {
    const auto shown = m_session.database;
    checkFile();
    if (m_session.database != shown)
        return;
    const bool running = m_pointData->isQueryRunning();
    if (running)
        m_pointData->cancelAction()->trigger();
    refreshPanels();
    if (running)
        m_pointData->runAction()->trigger();
}

void MainWindow::on_actionValidate_triggered() {
    if (m_session.database)
        DialogValidate(m_session.fileName, *m_session.database, this).exec();
}

void MainWindow::on_actionClose_triggered() {
    common::guarded(this, [this] {
        if (!mayDropDatabase())
            return;
        dropDatabase();
        refreshPanels();
    });
}

void MainWindow::on_actionQuit_triggered() {
    // All are asked before the first one closes: a refusal leaves everything as it is.
    const QList<MainWindow*> windows = openWindows();
    for (MainWindow* window : windows) {
        if (!window->mayClose())
            return;
    }
    libraryChoice().takeBack();
    for (MainWindow* window : windows)
        window->closeUnasked();
}

void MainWindow::on_actionAbout_triggered() {
    common::guarded(this, [this] { showAboutBox(this, m_session.context); });
}

void MainWindow::on_actionWindowNew_triggered() {
    common::guarded(this, [] {
        auto* window = new MainWindow;
        window->setAttribute(Qt::WA_DeleteOnClose);
        window->show();
    });
}

void MainWindow::switchLibrary(const QString& fileName) {
    if (!mayClose())
        return;
    libraryChoice().ask(fileName);
    if (openWindows().size() > 1)
        common::showInformation(this,
                                "The library is switched as soon as all other windows are closed.");
    closeUnasked();
}

void MainWindow::changeEvent(QEvent* event) {
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::ApplicationPaletteChange)
        common::adaptToolTips(this);
    // The user comes back from where files are replaced.
    if (event->type() == QEvent::ActivationChange && isActiveWindow())
        updateStatus();
}

void MainWindow::showEvent(QShowEvent* event) {
    QMainWindow::showEvent(event);
    m_closed = false;
}

bool MainWindow::mayClose() {
    bool may = !isBusy();
    if (may)
        common::guarded(this, [&] { may = mayDropDatabase(); });
    return may;
}

void MainWindow::closeUnasked() {
    m_closeAgreed = true;
    close();
    m_closeAgreed = false;
}

void MainWindow::closeEvent(QCloseEvent* event) {
    if (!m_closeAgreed && !mayClose()) {
        event->ignore();
        if (libraryChoice().restart && !isBusy() &&
            !common::confirmed(this,
                               "The library is to be switched as soon as this window and all "
                               "others are closed.\nGo on waiting for that?"))
            libraryChoice().takeBack();
        return;
    }
    common::ProgramSettings().setValue("Geometry", saveGeometry());
    // The window itself may live on, unseen, until all are closed.
    m_closed = true;
    common::guarded(this, [this] {
        dropDatabase();
        refreshPanels();
    });
    QMainWindow::closeEvent(event);
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event) {
    const QString name = localFileIn(event->mimeData());
    if (!name.isEmpty() && isOpenable(name))
        event->acceptProposedAction();
}

void MainWindow::dropEvent(QDropEvent* event) {
    const QString name = localFileIn(event->mimeData());
    event->acceptProposedAction();
    // Later: the program that the file comes from waits for the end of this event.
    QMetaObject::invokeMethod(
        this, [this, name] { openFile(name); }, Qt::QueuedConnection);
}
