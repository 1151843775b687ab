// Exports a copy of the open database, or of what a filter picks from it, into a new database file.
#pragma once

#include "core/databasecopy.h"
#include "files/identity.h"
#include "qrb/pointcloud.h"
#include "window/common/programsettings.h"
#include "window/dialogs/workingdialog.h"

#include <functional>
#include <memory>
#include <optional>

namespace tarvo::window {

namespace Ui {
class DialogExportAsQRB;
}

class DialogExportAsQRB : public WorkingDialog {
    Q_OBJECT

public:
    struct Source {
        const qrb::Pointcloud& database;  // stays open while the dialog runs
        QString fileName;
        std::optional<files::Identity> identity;  // of the file that was opened
    };
    // Throws for a place that the copy must not take.
    using PlaceCheck = std::function<void(const QString& fileName)>;

    // Runs the dialog. filter and nodes: what it proposes. Returns the name of the new file if the
    // user wants to see it.
    static QString run(const Source& source, const QString& filter, const QString& nodes,
                       const PlaceCheck& checkPlace, QWidget* parent);

    ~DialogExportAsQRB() override;

private slots:
    void on_buttonSettings_clicked();
    void on_pushButtonExport_clicked();
    void on_pushButtonClose_clicked();

private:
    DialogExportAsQRB(const Source& source, const PlaceCheck& checkPlace, QWidget* parent);
    void fillLists();
    core::Selection selection() const;
    std::string transactionSettings() const;
    // Whether the target is no file yet or may be replaced. Throws for one that can't be written.
    bool mayWriteTarget();
    void exportDatabase();

    std::unique_ptr<Ui::DialogExportAsQRB> m_ui;
    const qrb::Pointcloud& m_database;
    const QString m_fileName;
    const std::optional<files::Identity> m_identity;
    const PlaceCheck m_checkPlace;
    qrb::pointcloud::CreateSettings m_target;
    std::uint64_t m_points = 0;  // exported
    DialogSettings m_settings;
};

}  // namespace tarvo::window
