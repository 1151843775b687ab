// The "Database" tab: a summary of the open file and the library in use.
#pragma once

#include "window/panels/panel.h"

#include <memory>

namespace tarvo::window {

namespace Ui {
class DatabasePanel;
}

class DatabasePanel : public Panel {
    Q_OBJECT

public:
    DatabasePanel(const DatabaseSession& session, QWidget* parent = nullptr);
    ~DatabasePanel() override;

    void refresh() override;

signals:
    void libraryChosen(const QString& fileName);

private slots:
    void on_actionDatabaseFileCopyPath_triggered();
    void on_actionDatabaseFileCopyName_triggered();
    void on_actionDatabaseFileCopyFolder_triggered();
    void on_actionDatabaseFileLocateFile_triggered();
    void on_actionSwitchLibrary_triggered();

private:
    void clear();
    void showLibrary();
    void showDatabase();
    QString sizeText() const;
    void updateActions();

    std::unique_ptr<Ui::DatabasePanel> m_ui;
};

}  // namespace tarvo::window
