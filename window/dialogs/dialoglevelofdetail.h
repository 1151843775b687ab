// Changes mode and size of the level of detail in a transaction of its own.
#pragma once

#include "qrb/pointcloud.h"
#include "window/common/programsettings.h"
#include "window/dialogs/workingdialog.h"

#include <memory>

namespace tarvo::window {

namespace Ui {
class DialogLevelOfDetail;
}

class DialogLevelOfDetail : public WorkingDialog {
    Q_OBJECT

public:
    // Runs the dialog; the database must stay open meanwhile.
    static void edit(const qrb::Pointcloud& database, QWidget* parent);

    ~DialogLevelOfDetail() override;

private slots:
    void on_editLodMode_currentIndexChanged(int index);
    void on_pushButtonApply_clicked();
    void on_pushButtonClose_clicked();

private:
    DialogLevelOfDetail(const qrb::Pointcloud& database, QWidget* parent);
    void fillSizes();
    void showSettings();
    double update();  // the milliseconds that it took

    std::unique_ptr<Ui::DialogLevelOfDetail> m_ui;
    const qrb::Pointcloud& m_database;
    DialogSettings m_settings;
};

}  // namespace tarvo::window
