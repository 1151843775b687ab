// The "Changelog" tab: the changelog of the database, or of a text file while no database is open.
#pragma once

#include "window/panels/changelogentries.h"
#include "window/panels/panel.h"

#include <QStringList>
#include <memory>
#include <optional>

namespace tarvo::window {

namespace Ui {
class ChangelogPanel;
}

class ChangelogSyntaxHighlighter;

class ChangelogPanel : public Panel {
    Q_OBJECT

public:
    ChangelogPanel(const DatabaseSession& session, QWidget* parent = nullptr);
    ~ChangelogPanel() override;

    void refresh() override;
    void clear();
    // Shows a changelog text file. Throws qrb::Error where it can't be read.
    void loadTextFile(const QString& fileName);
    // The text file that is shown; empty: none.
    const QString& textFileName() const { return m_textFileName; }
    QAction* findAction() const override { return m_findAction; }

signals:
    void textFileLoaded();

private slots:
    void on_actionChangelogLoadFromTextfile_triggered();
    void on_actionChangelogExportToTextfile_triggered();
    void on_actionChangelogVerifyLogEntry_triggered();
    void on_actionChangelogAppendMessage_triggered();
    void on_actionChangelogImportFromDatabase_triggered();
    void on_actionChangelogNext_triggered();
    void on_actionChangelogPrevious_triggered();
    void on_editChangelog_textChanged();

protected:
    void changeEvent(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    // Selects what was found; tells what is wrong with the expression, or that nothing stands
    // there.
    void showFound(const std::optional<TextRange>& found, bool isForward);
    void updateActions();
    void showText(const QString& text);
    QString announcement() const;

    std::unique_ptr<Ui::ChangelogPanel> m_ui;
    ChangelogSyntaxHighlighter* m_highlighter;  // owned by the document
    QAction* m_findAction;
    QString m_textFileName;
    QString m_text;           // that is stored, with line feeds
    QStringList m_announced;  // messages that the pending transaction will add
};

}  // namespace tarvo::window
