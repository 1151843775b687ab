// The "Changelog" tab: the changelog of the database, or of a text file while no database is open.
#pragma once

#include "mainwindow/panel.h"

#include <memory>

namespace Ui {
class ChangelogPanel;
}

class ChangelogPanel : public Panel {
    Q_OBJECT

public:
    ChangelogPanel(const DatabaseSession& session, QWidget* parent = nullptr);
    ~ChangelogPanel() override;

    void refresh() override;
    void clear();
    // Shows a changelog text file. Throws std::runtime_error where it can't be read.
    void loadTextFile(const QString& fileName);
    // The text file that is shown; empty: none.
    const QString& textFileName() const { return m_textFileName; }

signals:
    void textFileLoaded();

private slots:
    void on_actionChangelogLoadFromTextfile_triggered();
    void on_editChangelog_textChanged();

private:
    QString readChangelog() const;

    std::unique_ptr<Ui::ChangelogPanel> m_ui;
    QString m_textFileName;
};
