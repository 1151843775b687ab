// Exports a copy of the open database, or of what a filter picks from it, into a new database file.
#pragma once

#include "common/programsettings.h"
#include "copy/databasecopy.h"
#include "dialogs/workingdialog.h"
#include "qrb/pointcloud.h"

#include <memory>

namespace Ui {
class DialogExportAsQRB;
}

class DialogExportAsQRB : public WorkingDialog {
    Q_OBJECT

public:
    // Runs the dialog. fileName: of the open database, which must stay open meanwhile; filter and
    // nodes: what it proposes. Returns the name of the new file if the user wants to see it.
    static QString run(const tarvo::qrb::Pointcloud& database, const QString& fileName,
                       const QString& filter, const QString& nodes, QWidget* parent);

    ~DialogExportAsQRB() override;

private slots:
    void on_buttonSettings_clicked();
    void on_pushButtonExport_clicked();
    void on_pushButtonClose_clicked();

private:
    DialogExportAsQRB(const tarvo::qrb::Pointcloud& database, const QString& fileName,
                      QWidget* parent);
    void fillLists();
    tarvo::copy::Selection selection() const;
    std::string transactionSettings() const;
    // Whether the target is no file yet or may be replaced. Throws for one that can't be written.
    bool mayWriteTarget();
    void exportDatabase();

    std::unique_ptr<Ui::DialogExportAsQRB> m_ui;
    const tarvo::qrb::Pointcloud& m_database;
    const QString m_fileName;
    tarvo::qrb::pointcloud::CreateSettings m_target;
    std::uint64_t m_points = 0;  // exported
    tarvo::common::DialogSettings m_settings;
};
