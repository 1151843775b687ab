// The window of the program: menus, toolbar, the tabs with their panels, and the life of the open
// database. Owns the session; the panels read it.
#pragma once

#include "window/panels/databasesession.h"

#include <QMainWindow>
#include <QString>
#include <memory>
#include <vector>

class QLabel;

namespace tarvo::window {

class ChangelogPanel;
class CloudView;
class DatabasePanel;
class Panel;
class PendingBar;
class StartPage;
class PluginMenu;
class PointDataPanel;
class PointIndexPanel;
class TransactionsPanel;
struct GivenFiles;

namespace Ui {
class MainWindow;
}

class MainWindow : public QMainWindow {
    Q_OBJECT

public:
    // Takes the place that the command line names; shows the text file, if one is given. The
    // library must be loaded. Throws qrb::Error where it gives no context.
    explicit MainWindow(const QString& textFileName = {});
    ~MainWindow() override;

    // Opens the file in place of the open one; asks for the settings before, unless told not to.
    // Shows its errors; after a failed open no database is open, but where that would lose a
    // pending transaction, which stays then.
    void openDatabase(QString fileName, bool skipDialog);
    // Opens a database file, offers to import points of other formats, or shows a changelog text
    // file, in a new window if the user wants that where a database is open; as soon as no dialog
    // is open. Other names are ignored.
    void openFile(const QString& fileName);
    // The same for files that come together: those with points are imported as one, into the
    // database among them or a new one; of several databases the first is opened.
    void openFiles(const QStringList& fileNames);

    // Opens the files that the command line names, as openFiles does; the window must be shown. The
    // program's first window offers to import points and tells what can't be opened, others show
    // the database or the text alone.
    void openArguments(const QStringList& arguments, bool isFirst);

    const DatabaseSession& session() const { return m_session; }
    // A closed window has let go of everything and takes nothing any more.
    bool wasClosed() const { return m_closed; }

public slots:
    // Shows the session anew in every panel, in their fixed order.
    void refreshPanels();

protected:
    void changeEvent(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void showEvent(QShowEvent* event) override;

private slots:
    void on_actionNew_triggered();
    void on_actionOpen_triggered();
    void on_actionOpenLastUsed_triggered();
    void on_actionOpenClipboard_triggered();
    void on_actionExportAsQRB_triggered();
    void on_actionImportPoints_triggered();
    void on_actionSample_triggered();
    void on_actionReload_triggered();
    void on_actionValidate_triggered();
    void on_actionClose_triggered();
    void on_actionQuit_triggered();
    void on_actionAbout_triggered();
    void on_actionWindowNew_triggered();

private:
    class Host;

    void createPanels();
    void addPanel(QWidget* tab, Panel* panel);
    void createStatusLabel();
    void createPluginMenu();
    void createView();
    void refreshView();
    void restoreWindowGeometry();
    void restoreTab();
    void giveFindKey();

    void replaceDatabase(const QString& fileName, const qrb::pointcloud::OpenSettings& settings);
    void tryToOpen(const QString& fileName, const qrb::pointcloud::OpenSettings& settings);
    void openTextFile(const QString& fileName);
    void checkFile();
    bool isPending() const;
    bool isBusy() const;
    bool mayClose();
    void closeUnasked();
    bool mayDropDatabase();
    void dropDatabase();
    void refreshHistories();
    void updateTabs();
    void updateStatus();
    void lookAtFile();
    void updateActions();
    void updatePending();
    // Shows a further window, as large as this one, beside it. It is deleted when it is closed.
    void showBeside(MainWindow* window);
    bool isAsOpened() const;
    void runPlugin(const QString& place);
    void switchLibrary(const QString& fileName);
    bool isDatabaseFile(const QString& fileName) const;
    bool isImportable(const QString& fileName) const;
    bool isOpenable(const QString& fileName) const;
    // intoOpen: into the open database, unless the user decides otherwise.
    void importPoints(const QStringList& fileNames, bool intoOpen);
    void openGiven(const GivenFiles& given);

    // Declared first: the panels refer to it until they are gone.
    DatabaseSession m_session;
    std::unique_ptr<Ui::MainWindow> m_ui;
    std::vector<Panel*> m_panels;  // in the order of refreshing; owned by their tabs
    TransactionsPanel* m_transactions = nullptr;
    ChangelogPanel* m_changelog = nullptr;
    PointDataPanel* m_pointData = nullptr;
    PointIndexPanel* m_pointIndex = nullptr;
    CloudView* m_view = nullptr;
    PluginMenu* m_plugins = nullptr;
    QLabel* m_statusLabel = nullptr;
    PendingBar* m_pendingBar = nullptr;
    StartPage* m_startPage = nullptr;
    bool m_closed = false;
    bool m_isTabRestored = false;  // with the first database
    bool m_closeAgreed = false;    // the user was asked already
};

}  // namespace tarvo::window
