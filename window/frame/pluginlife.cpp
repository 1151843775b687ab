// MainWindow: plugins that run on the open database.
#include "ui_mainwindow.h"
#include "window/common/guard.h"
#include "window/common/messageboxes.h"
#include "window/dialogs/plugin/dialogplugin.h"
#include "window/dialogs/plugin/dialogpluginsettings.h"
#include "window/dialogs/plugin/pluginhost.h"
#include "window/frame/mainwindow.h"
#include "window/frame/pluginmenu.h"
#include "window/panels/pointdatapanel.h"

#include <QFileInfo>
#include <optional>
#include <utility>

namespace tarvo::window {

// The window's database as a plugin's dialog needs it.
class MainWindow::Host : public PluginHost {
public:
    explicit Host(MainWindow& window)
        : m_window(window), m_fileName(QFileInfo(window.m_session.fileName).absoluteFilePath()) {}

    bool isOpen() const override { return m_window.m_session.database != nullptr; }
    bool isPending() const override { return m_window.isPending(); }
    QString fileName() const override { return m_fileName; }
    std::string library() const override { return m_window.m_session.context.libraryFilename(); }
    std::vector<qrb::pointcloud::PointAttribute> attributes() const override;
    bool giveUp() override;
    void takeBack() override;

private:
    MainWindow& m_window;
    const QString m_fileName;
    std::optional<files::Identity> m_identity;  // of the file that was given up
    QWidget* m_tab = nullptr;                   // that was shown
};

std::vector<qrb::pointcloud::PointAttribute> MainWindow::Host::attributes() const {
    std::vector<qrb::pointcloud::PointAttribute> result;
    if (!isOpen())
        return result;
    const auto& attributes = m_window.m_session.database->pointAttributes();
    for (const std::string& name : attributes.list())
        result.push_back(attributes.get(name));
    return result;
}

bool MainWindow::Host::giveUp() {
    // The plugin would get what is there now.
    const auto shown = m_window.m_session.database;
    m_window.checkFile();
    if (m_window.m_session.database != shown || !m_window.isAsOpened() ||
        !m_window.mayDropDatabase())
        return false;
    m_identity = m_window.m_session.identity;
    m_tab = m_window.m_ui->tabWidget->currentWidget();
    m_window.dropDatabase();
    m_window.refreshPanels();
    return true;
}

void MainWindow::Host::takeBack() {
    guarded(&m_window, [this] {
        const auto there = files::identityOf(m_fileName.toStdString());
        if (there && there != m_identity &&
            !lossConfirmed(&m_window,
                           QObject::tr("\"%0\" was replaced by another file since it was opened.")
                                   .arg(m_fileName) +
                               "\n\n" + QObject::tr("Open the file that is there now?")))
            return;
        m_window.replaceDatabase(m_fileName,
                                 qrb::pointcloud::OpenSettings(m_window.m_session.context));
        m_window.m_ui->tabWidget->setCurrentWidget(m_tab);
    });
}

void MainWindow::createPluginMenu() {
    m_plugins = new PluginMenu(this);
    connect(m_plugins, &PluginMenu::chosen, this, &MainWindow::runPlugin);
    connect(m_plugins, &PluginMenu::settingsWanted, this,
            [this] { DialogPluginSettings(this).exec(); });
    m_ui->menuBar->insertMenu(m_ui->menuHelp->menuAction(), m_plugins);
}

// Whether the file under the open database's name is the one that was opened.
bool MainWindow::isAsOpened() const {
    return m_session.database && m_session.fileState() == DatabaseSession::FileState::AS_OPENED &&
           !m_session.isOverwritten();
}

void MainWindow::runPlugin(const QString& place) {
    guarded(this, [&] {
        checkFile();
        if (!isAsOpened())
            return;
        Host host(*this);
        DialogPlugin dialog(plugin::readPackage(place.toStdString()), host,
                            {m_pointData->filterText(), m_pointData->nodesText()}, this);
        dialog.exec();
        refreshHistories();
    });
}

}  // namespace tarvo::window
