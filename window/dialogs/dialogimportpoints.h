// Shows what was found in files of other formats, and asks what of it goes where. Imports nothing
// itself.
#pragma once

#include "core/shape.h"
#include "exchange/import/importplan.h"
#include "exchange/table/columnmap.h"
#include "window/common/programsettings.h"
#include "window/dialogs/importcolumns.h"

#include <QDialog>
#include <QString>
#include <QStringList>
#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

namespace tarvo::window {

namespace Ui {
class DialogImportPoints;
}

// What the files hold, as it is shown.
struct ImportFindings {
    QStringList fileNames;
    std::uint64_t pointCount = 0;
    std::vector<ImportColumn> columns;
    QString system;     // empty: none is told
    QStringList notes;  // lines for the user, besides those of the plan
    // What becomes of the files under a map. Throws core::Failure where nothing can.
    std::function<exchange::ImportPlan(const exchange::ColumnMap&)> plan;
};

// Where an import can go besides a new database.
struct ImportTarget {
    QString fileName;        // of the open database; empty: none is open
    QString refusal;         // why it takes no points; empty: it does
    QStringList attributes;  // of the open database, with elements "NAME[I]"
    bool isMeant = false;    // it was named together with the files
};

// Which points come in, as it was typed.
struct ImportShape {
    int every = 1;
    QString distance;  // the least between two points; empty: any
    QString bounds;    // as core::boundsFromText reads them; empty: none

    // Throws core::Failure for what can't be read.
    core::Shape shape() const;
};

// What the user wants.
struct ImportWish {
    bool intoOpen = false;
    QString location;  // of the new database
    exchange::ColumnMap map;
    ImportShape shape;
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
    void on_buttonShape_toggled(bool checked);
    void on_editLocation_textEdited();
    void on_radioOpen_toggled(bool checked);

private:
    DialogImportPoints(const ImportFindings& findings, const ImportTarget& target, QWidget* parent);
    void showFindings();
    void showPlan();
    void showTarget(const ImportTarget& target);
    void show(const ImportWish& wish);
    void read(ImportWish& wish) const;
    ImportShape shape() const;

    std::unique_ptr<Ui::DialogImportPoints> m_ui;
    const ImportFindings& m_findings;
    ImportColumns* m_columns;
    DialogSettings m_settings;
};

}  // namespace tarvo::window
