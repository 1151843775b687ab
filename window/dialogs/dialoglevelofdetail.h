// Changes mode and size of the level of detail in a transaction of its own.
#pragma once

#include "window/common/programsettings.h"
#include "window/dialogs/workingdialog.h"
#include "qrb/pointcloud.h"

#include <memory>

namespace Ui {
class DialogLevelOfDetail;
}

class DialogLevelOfDetail : public WorkingDialog {
    Q_OBJECT

public:
    // Runs the dialog; the database must stay open meanwhile.
    static void edit(const tarvo::qrb::Pointcloud& database, QWidget* parent);

    ~DialogLevelOfDetail() override;

private slots:
    void on_editLodMode_currentIndexChanged(int index);
    void on_pushButtonApply_clicked();
    void on_pushButtonClose_clicked();

private:
    DialogLevelOfDetail(const tarvo::qrb::Pointcloud& database, QWidget* parent);
    void fillSizes();
    void showSettings();
    double update();  // the milliseconds that it took

    std::unique_ptr<Ui::DialogLevelOfDetail> m_ui;
    const tarvo::qrb::Pointcloud& m_database;
    tarvo::common::DialogSettings m_settings;
};
