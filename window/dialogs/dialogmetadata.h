// Edits a metadata item: its name, and its value with what the default definitions say about it. A
// value may be any text; one that is JSON is checked against the item's JSON schema while one
// types.
#pragma once

#include "qrb/pointcloud.h"
#include "window/common/programsettings.h"
#include "window/widgets/jsonpositions.h"

#include <QDialog>
#include <QStringList>
#include <QTimer>
#include <memory>
#include <optional>
#include <string>
#include <vector>

class QTreeWidgetItem;

namespace tarvo::window {

namespace Ui {
class DialogMetaData;
}

class DialogMetaData : public QDialog {
    Q_OBJECT

public:
    // Runs the editor for a new item, or for one of the database, whose name is fixed. Name and
    // value (UTF-8 as a rule) change only when it is accepted; that is what the result tells.
    // Nothing is written to the database. readOnly: it can't be, which the dialog tells.
    static bool edit(const qrb::Pointcloud& database, QString& name, std::string& value, bool isNew,
                     QWidget* parent, bool readOnly = false);

    ~DialogMetaData() override;

public slots:
    void accept() override;
    void reject() override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private slots:
    void on_editName_editTextChanged(const QString& name);
    void on_editValue_textChanged();
    void on_editSchema_textChanged();
    void on_buttonFormat_clicked();
    void on_buttonCompact_clicked();
    void on_buttonCheck_clicked();
    void on_buttonFault_clicked();
    void on_buttonUseExample_clicked();
    void on_editValue_tooLongToPaste();
    void on_editSchema_tooLongToPaste();
    void on_treeFindings_itemActivated(QTreeWidgetItem* item, int column);
    void on_treeFindings_itemClicked(QTreeWidgetItem* item, int column);
    void on_actionLoad_triggered();
    void on_actionSave_triggered();
    void onCopyToClipboard();

private:
    using Findings = tarvo::qrb::pointcloud::Findings;

    DialogMetaData(const qrb::Pointcloud& database, bool isNew, QWidget* parent);
    void buildMenu();
    void fillNames();
    void write(const QString& name, const std::string& value);
    // Shows another text, as one step that can be undone where that is possible.
    void putText(const QString& text);
    void putFormat(const std::string& text);

    QString name() const;
    QString text() const;
    std::string value() const;
    bool isChanged() const;
    QString faultOfName() const;
    void showName();
    void showDefinition();

    void checkLater();
    void check();
    void showNoJson(const QString& text, const JsonFault& fault);
    // Sets refusal to what keeps the text from being checked, if anything does.
    Findings findings(const QString& text, QString& refusal) const;
    void showAnswer(const Findings& findings);
    void showFindings(const Findings& findings, const QString& text);
    enum class State { RIGHT, NEUTRAL, WRONG };
    void showState(const QString& text, State state);

    std::unique_ptr<Ui::DialogMetaData> m_ui;
    const qrb::Pointcloud& m_database;
    const bool m_isNew;
    QStringList m_taken;  // names of the database's items
    QString m_initialName;
    std::string m_initialValue;  // as it was given
    std::string m_storedValue;   // as the database has it
    QString m_initialText;       // as it is shown
    // A value that is too long for the pane, which shows the beginning only.
    std::optional<QString> m_held;
    QString m_objection;        // what to ask before the value is accepted; empty: nothing
    QString m_shownDefinition;  // the default item that the panes beside tell about; else empty
    QTimer m_checking;
    TextSpan m_faultPlace;
    std::vector<TextSpan> m_places;  // of the findings, by row
    DialogSettings m_settings;
};

}  // namespace tarvo::window
