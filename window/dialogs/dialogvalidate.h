// Checks the open database against a file schema, one of the default definitions or one that the
// user edited, and shows the result.
#pragma once

#include "qrb/pointcloud.h"
#include "window/common/programsettings.h"

#include <QDialog>
#include <QMap>
#include <QString>
#include <memory>

namespace tarvo::window {

namespace Ui {
class DialogValidate;
}

class DialogValidate : public QDialog {
    Q_OBJECT

public:
    // location: file name of the database, which must stay open as long as the dialog lives.
    DialogValidate(const QString& location, const qrb::Pointcloud& database, QWidget* parent);
    ~DialogValidate() override;

private slots:
    void on_listSchema_currentIndexChanged(int index);
    void on_buttonValidate_clicked();
    void on_buttonClose_clicked();

private:
    std::unique_ptr<Ui::DialogValidate> m_ui;
    const qrb::Pointcloud& m_database;
    QMap<QString, QString> m_schemas;
    DialogSettings m_settings;  // at the top level, unlike those of other dialogs
};

}  // namespace tarvo::window
