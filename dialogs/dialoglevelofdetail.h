// Changes mode and size of the level of detail in a transaction of its own. The library works on
// another thread meanwhile; closing the dialog then asks it to stop.
#pragma once

#include "common/programsettings.h"
#include "qrb/pointcloud.h"

#include <QDialog>
#include <atomic>
#include <cstdint>
#include <memory>

namespace Ui {
class DialogLevelOfDetail;
}

class DialogLevelOfDetail : public QDialog {
    Q_OBJECT

public:
    // Runs the dialog; the database must stay open meanwhile.
    static void edit(const tarvo::qrb::Pointcloud& database, QWidget* parent);

    ~DialogLevelOfDetail() override;

public slots:
    void done(int result) override;

signals:
    void update_progress(int percent);

private slots:
    void on_editLodMode_currentIndexChanged(int index);
    void on_pushButtonApply_clicked();
    void on_pushButtonClose_clicked();

private:
    class Busy;

    DialogLevelOfDetail(const tarvo::qrb::Pointcloud& database, QWidget* parent);
    void fillSizes();
    void showSettings();
    double update();  // the milliseconds that it took

    std::unique_ptr<Ui::DialogLevelOfDetail> m_ui;
    const tarvo::qrb::Pointcloud& m_database;
    tarvo::common::DialogSettings m_settings;
    bool m_busy = false;
    std::atomic<bool> m_cancel = false;  // read by the working thread
};
