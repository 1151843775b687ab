// Shows what was found in files of other formats, and asks what of it goes where. Imports nothing
// itself.
#pragma once

#include "exchange/import/importplan.h"
#include "window/common/programsettings.h"

#include <QDialog>
#include <QString>
#include <QStringList>
#include <memory>

namespace tarvo::window {

namespace Ui {
class DialogImportPoints;
}

// What the files hold, as it is shown.
struct ImportFindings {
    QStringList fileNames;
    exchange::ImportPlan plan;
    QString system;     // empty: none is told
    QStringList notes;  // lines for the user, besides those of the plan
};

// Where an import can go besides a new database.
struct ImportTarget {
    QString fileName;  // of the open database; empty: none is open
    QString refusal;   // why it takes no points; empty: it does
};

// What the user wants.
struct ImportWish {
    bool intoOpen = false;
    QString location;  // of the new database
    QStringList leftOut;
    bool round = false;
    bool asTheyAre = false;
    bool newIds = false;
};

class DialogImportPoints : public QDialog {
    Q_OBJECT

public:
    // Runs the dialog on the wish, which is changed only when it is accepted; that is what the
    // result tells.
    static bool edit(const ImportFindings& findings, const ImportTarget& target, ImportWish& wish,
                     QWidget* parent);

    ~DialogImportPoints() override;

public slots:
    void accept() override;

private slots:
    void on_buttonLocation_clicked();
    void on_editLocation_textEdited();
    void on_radioOpen_toggled(bool checked);

private:
    DialogImportPoints(const ImportFindings& findings, const ImportTarget& target, QWidget* parent);
    void showFindings(const ImportFindings& findings);
    void addAttribute(const std::string& name, const exchange::ImportPlan::Attribute& attribute);
    void showTarget(const ImportTarget& target);
    void show(const ImportWish& wish);
    void read(ImportWish& wish) const;

    std::unique_ptr<Ui::DialogImportPoints> m_ui;
    DialogSettings m_settings;
};

}  // namespace tarvo::window
