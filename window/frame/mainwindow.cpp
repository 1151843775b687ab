#include "window/frame/mainwindow.h"

#include "ui_mainwindow.h"
#include "window/common/guard.h"
#include "window/common/messageboxes.h"
#include "window/common/programsettings.h"
#include "window/common/recentfiles.h"
#include "window/common/textformat.h"
#include "window/common/theme.h"
#include "window/dialogs/dialogexportasqrb.h"
#include "window/dialogs/dialogvalidate.h"
#include "window/frame/aboutbox.h"
#include "window/frame/commandline.h"
#include "window/frame/databasecreation.h"
#include "window/frame/librarychoice.h"
#include "window/frame/mimefile.h"
#include "window/frame/openwindows.h"
#include "window/frame/pendingbar.h"
#include "window/frame/pluginmenu.h"
#include "window/frame/recentmenu.h"
#include "window/frame/startpage.h"
#include "window/frame/viewmenu.h"
#include "window/panels/changelogpanel.h"
#include "window/panels/databasepanel.h"
#include "window/panels/inspectionpanel.h"
#include "window/panels/metadatapanel.h"
#include "window/panels/pointattributespanel.h"
#include "window/panels/pointdatapanel.h"
#include "window/panels/pointindexpanel.h"
#include "window/panels/transactionspanel.h"
#include "window/view/cloudview.h"
#include "window/widgets/elided.h"

#include <QApplication>
#include <QClipboard>
#include <QCloseEvent>
#include <QDragEnterEvent>
#include <QFileInfo>
#include <QLabel>
#include <QMimeData>
#include <QScreen>
#include <QTimer>
#include <QToolBar>
#include <QToolButton>
#include <exception>

namespace tarvo::window {

namespace {

// Milliseconds for which the status line tells what was done.
constexpr int toldFor = 5000;

// Pixels from a window to the next one, so that the frames of both are seen.
constexpr int besideBy = 40;

// Milliseconds between two looks at the file while the window is active.
constexpr int lookEvery = 3000;

// The file's name as the status line shows it.
QString withRemark(const QString& name, DatabaseSession::FileState state, bool isOutdated) {
    switch (state) {
        case DatabaseSession::FileState::REPLACED:
            return QObject::tr("%1 (replaced by another file since it was opened)").arg(name);
        case DatabaseSession::FileState::GONE:
            return QObject::tr("%1 (deleted or renamed since it was opened)").arg(name);
        default:
            return isOutdated
                       ? QObject::tr("%1 (written elsewhere since it was read; F5 reads it anew)")
                             .arg(name)
                       : name;
    }
}

}  // namespace

MainWindow::MainWindow(const QString& textFileName) : m_ui(std::make_unique<Ui::MainWindow>()) {
    m_ui->setupUi(this);
    // After the form, whose automatic connection would reach into the panels.
    createPanels();
    createStatusLabel();
    m_ui->menuBar->insertMenu(m_ui->menuWindow->menuAction(), createViewMenu(this));
    createView();
    m_ui->menuDatabase->insertMenu(
        m_ui->actionOpenClipboard,
        createRecentMenu(this, [this](const QString& name) { openDatabase(name, true); }));
    createPluginMenu();
    m_ui->tabWidget->setCurrentWidget(m_ui->tabDatabase);
    addAction(m_pointData->findAction());
    connect(m_ui->tabWidget, &QTabWidget::currentChanged, this, &MainWindow::giveFindKey);
    giveFindKey();
    refreshPanels();
    restoreWindowGeometry();
    auto* look = new QTimer(this);
    connect(look, &QTimer::timeout, this, &MainWindow::lookAtFile);
    look->start(lookEvery);

    m_ui->actionProgramSettings->setEnabled(false);
    m_ui->actionProgramSettings->setVisible(false);
    m_ui->actionFactoryMode->setEnabled(false);
    m_ui->actionFactoryMode->setVisible(false);
    adaptToolTips(this);
    if (const auto rectangle = windowRectangle(QCoreApplication::arguments()))
        setGeometry(*rectangle);
    if (!textFileName.isEmpty())
        guarded(this, [&] { m_changelog->loadTextFile(textFileName); });
}

MainWindow::~MainWindow() {
    // What reads the database must be gone before the context.
    delete m_view;
    for (Panel* panel : m_panels)
        delete panel;
}

void MainWindow::createPanels() {
    auto* database = new DatabasePanel(m_session, m_ui->tabDatabase);
    connect(database, &DatabasePanel::libraryChosen, this, &MainWindow::switchLibrary);
    m_startPage = new StartPage(
        {m_ui->actionNew, m_ui->actionOpen, m_ui->actionImportPoints, m_ui->actionSample},
        m_ui->tabDatabase);
    connect(m_startPage, &StartPage::chosen, this,
            [this](const QString& name) { openDatabase(name, true); });
    m_ui->tabDatabase->layout()->addWidget(m_startPage);
    addPanel(m_ui->tabDatabase, database);

    m_transactions = new TransactionsPanel(m_session, m_ui->tabTransactions);
    connect(m_transactions, &TransactionsPanel::fileLost, this, &MainWindow::checkFile);
    addPanel(m_ui->tabTransactions, m_transactions);

    m_changelog = new ChangelogPanel(m_session, m_ui->tabChangelog);
    connect(m_changelog, &ChangelogPanel::textFileLoaded, this, [this] {
        updateTabs();
        updateActions();
    });
    addPanel(m_ui->tabChangelog, m_changelog);

    addPanel(m_ui->tabMetaData, new MetaDataPanel(m_session, m_ui->tabMetaData));
    addPanel(m_ui->tabPointAttributes,
             new PointAttributesPanel(m_session, m_ui->tabPointAttributes));
    m_pointIndex = new PointIndexPanel(m_session, m_ui->tabPointIndex);
    addPanel(m_ui->tabPointIndex, m_pointIndex);

    m_pointData = new PointDataPanel(m_session, m_ui->tabPointData);
    connect(m_pointData, &PointDataPanel::shown, this,
            [this] { m_ui->tabWidget->setCurrentWidget(m_ui->tabPointData); });
    connect(m_pointIndex, &PointIndexPanel::nodesChosen, m_pointData, &PointDataPanel::showNodes);
    connect(m_pointIndex, &PointIndexPanel::historyChanged, m_pointData, &PointDataPanel::refreshHistory);
    connect(m_pointData, &PointDataPanel::historyChanged, m_pointIndex, &PointIndexPanel::refreshHistory);
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
    connect(panel, &Panel::transactionBegan, this, [this] {
        guarded(this, [this] { m_transactions->refresh(); });
        updatePending();
    });
    connect(panel, &Panel::told, this,
            [this](const QString& text) { m_ui->statusBar->showMessage(text, toldFor); });
    m_panels.push_back(panel);
}

void MainWindow::createStatusLabel() {
    m_statusLabel = new ElidedLabel(this);
    m_statusLabel->setObjectName("labelStatus");
    m_statusLabel->setTextFormat(Qt::PlainText);
    m_statusLabel->setTextInteractionFlags(Qt::TextSelectableByMouse);
    // A long file name must not widen the window.
    m_statusLabel->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    m_ui->statusBar->addWidget(m_statusLabel, 1);
    m_pendingBar = new PendingBar(m_transactions->pendingActions(), this);
    m_ui->statusBar->addPermanentWidget(m_pendingBar);
}

void MainWindow::restoreWindowGeometry() {
    const ProgramSettings settings;
    if (settings.contains("Geometry"))
        restoreGeometry(settings.value("Geometry").toByteArray());
    else
        resize(size().boundedTo(screen()->availableSize()));
    if (settings.contains("State"))
        restoreState(settings.value("State").toByteArray());
}

// The tab that a window showed last when it was closed; at the first database, as the others show
// nothing before.
void MainWindow::restoreTab() {
    if (m_isTabRestored || !m_session.database)
        return;
    m_isTabRestored = true;
    const QString name = ProgramSettings().value("Tab").toString();
    for (int i = 0; i < m_ui->tabWidget->count(); ++i)
        if (m_ui->tabWidget->currentWidget() == m_ui->tabDatabase &&
            m_ui->tabWidget->widget(i)->objectName() == name)
            m_ui->tabWidget->setCurrentIndex(i);
}

// Finds in the tab that is shown, where that can find, else in the points.
void MainWindow::giveFindKey() {
    QAction* finding = m_pointData->findAction();
    for (const Panel* panel : m_panels)
        if (panel->parentWidget() == m_ui->tabWidget->currentWidget() && panel->findAction())
            finding = panel->findAction();
    // Two actions with one key would both be dead.
    for (const Panel* panel : m_panels)
        if (QAction* action = panel->findAction())
            action->setShortcut(action == finding ? QKeySequence("Ctrl+F") : QKeySequence());
}

void MainWindow::refreshPanels() {
    m_session.noteReading();
    updateTabs();
    QStringList unread;
    QStringList reasons;
    for (Panel* panel : m_panels) {
        // Each on its own: what one can't read keeps nothing from the others.
        try {
            const WaitCursor waiting;
            panel->refresh();
        } catch (...) {
            const auto [text, details] = describe(std::current_exception());
            unread += m_ui->tabWidget->tabText(m_ui->tabWidget->indexOf(panel->parentWidget()));
            reasons += details.isEmpty() ? text : text + '\n' + details;
        }
    }
    updateActions();
    reasons.removeDuplicates();
    if (!unread.isEmpty())
        showError(this, tr("What could not be read: %1.").arg(unread.join(", ")),
                  reasons.join("\n\n"));
}

// The lists of filters used last, after a dialog has used one.
void MainWindow::refreshHistories() {
    m_pointData->refreshHistory();
    emit m_pointData->historyChanged();
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
    restoreTab();
    updateStatus();
}

void MainWindow::updateStatus() {
    QString status = tr("no database opened");
    if (m_session.database)
        status = withRemark(m_session.readOnly ? tr("%1 (for reading only)").arg(m_session.fileName)
                                               : m_session.fileName,
                            m_session.fileState(), m_session.isOutdated(!m_pendingBar->isHidden()));
    else if (!m_changelog->textFileName().isEmpty())
        status = m_changelog->textFileName();
    m_statusLabel->setText(status);
    const QString shown = m_session.database ? m_session.fileName : m_changelog->textFileName();
    const QString program = programName();
    setWindowTitle(shown.isEmpty()
                       ? program
                       : QString("%1 - %2").arg(oneLine(QFileInfo(shown).fileName()), program));
}

void MainWindow::updateActions() {
    const bool open = m_session.database != nullptr;
    m_ui->actionReload->setEnabled(open);
    m_ui->actionValidate->setEnabled(open);
    m_ui->actionExportAsQRB->setEnabled(open);
    m_ui->actionClose->setEnabled(open || !m_changelog->textFileName().isEmpty());
    m_plugins->setRunnable(open);
    m_ui->actionOpenLastUsed->setEnabled(!RecentFiles::list().isEmpty());
    m_startPage->setVisible(!open);
    if (!open)
        m_startPage->refresh();
    updatePending();
}

void MainWindow::updatePending() {
    guarded(this, [this] {
        m_pendingBar->setVisible(isPending());
        refreshView();
    });
}

void MainWindow::on_actionNew_triggered() {
    guarded(this, [this] {
        // Asked before there is a new file.
        if (!mayDropDatabase())
            return;
        const QString fileName = createDatabase(m_session, this);
        if (!fileName.isEmpty())
            replaceDatabase(fileName, qrb::pointcloud::OpenSettings(m_session.context));
    });
}

void MainWindow::on_actionExportAsQRB_triggered() {
    guarded(this, [this] {
        if (!m_session.database)
            return;
        const QString fileName = DialogExportAsQRB::run(
            {*m_session.database, m_session.fileName, m_session.identity},
            m_pointData->filterText(), m_pointData->nodesText(),
            [this](const QString& place) { refuseOpenDatabase(place, m_session); }, this);
        refreshHistories();
        if (!fileName.isEmpty())
            openDatabase(fileName, true);
    });
}

void MainWindow::on_actionOpen_triggered() {
    openDatabase(m_session.fileName, false);
}

void MainWindow::on_actionOpenLastUsed_triggered() {
    const QStringList recent = RecentFiles::list();
    if (!recent.isEmpty())
        openDatabase(recent.first(), true);
}

void MainWindow::on_actionOpenClipboard_triggered() {
    const QString name = localFileIn(QApplication::clipboard()->mimeData());
    if (!name.isEmpty() && isDatabaseFile(name)) {
        openDatabase(name, true);
        return;
    }
    showUnbrokenInformation(this, tr("No database file name found in the clipboard.\n"
                                     "Please copy a file or a file name to the clipboard."));
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
    guarded(this, [this] {
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
    guarded(this, [this] { showAboutBox(this, m_session.context); });
}

void MainWindow::on_actionWindowNew_triggered() {
    guarded(this, [this] {
        auto* window = new MainWindow;
        showBeside(window);
        window->openArguments(QCoreApplication::arguments().mid(1), false);
    });
}

void MainWindow::showBeside(MainWindow* window) {
    const QRect room = screen()->availableGeometry();
    QRect place = geometry().translated(besideBy, besideBy);
    if (place.right() > room.right() || place.bottom() > room.bottom())
        place.moveTopLeft(room.topLeft() + QPoint(besideBy, besideBy));
    window->setAttribute(Qt::WA_DeleteOnClose);
    window->setGeometry(place);
    window->show();
}

void MainWindow::switchLibrary(const QString& fileName) {
    if (!mayClose())
        return;
    libraryChoice().ask(fileName);
    if (openWindows().size() > 1)
        showInformation(this,
                        tr("The library is switched as soon as all other windows are closed."));
    closeUnasked();
}

void MainWindow::changeEvent(QEvent* event) {
    QMainWindow::changeEvent(event);
    // Menus ask their actions themselves.
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::ApplicationPaletteChange)
        adaptToolTips(this);
    // The user comes back from where files are replaced.
    if (event->type() == QEvent::ActivationChange)
        lookAtFile();
}

// Others may write to the file, or replace it, meanwhile.
void MainWindow::lookAtFile() {
    if (isActiveWindow() && !isBusy())
        updateStatus();
}

void MainWindow::showEvent(QShowEvent* event) {
    QMainWindow::showEvent(event);
    m_closed = false;
}

bool MainWindow::mayClose() {
    bool may = !isBusy();
    if (may)
        guarded(this, [&] { may = mayDropDatabase(); });
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
            !confirmed(this, tr("The library is to be switched as soon as this window and all "
                                "others are closed.\nGo on waiting for that?")))
            libraryChoice().takeBack();
        return;
    }
    // What it has of the whole screen is nothing to begin with.
    if (!isFullScreen()) {
        ProgramSettings().setValue("Geometry", saveGeometry());
        ProgramSettings().setValue("State", saveState());
    }
    if (m_session.database)
        ProgramSettings().setValue("Tab", m_ui->tabWidget->currentWidget()->objectName());
    // The window itself may live on, unseen, until all are closed.
    m_closed = true;
    guarded(this, [this] {
        dropDatabase();
        refreshPanels();
    });
    QMainWindow::closeEvent(event);
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event) {
    const QString name = localFileIn(event->mimeData());
    if (!name.isEmpty() && !isBusy() && isOpenable(name))
        event->acceptProposedAction();
}

void MainWindow::dropEvent(QDropEvent* event) {
    const QStringList names = localFilesIn(event->mimeData());
    event->acceptProposedAction();
    // Later: the program that the files come from waits for the end of this event.
    QMetaObject::invokeMethod(
        this, [this, names] { openFiles(names); }, Qt::QueuedConnection);
}

}  // namespace tarvo::window
