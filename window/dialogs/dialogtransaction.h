// Shows a transaction's record, or lets the user fill in that of a new one.
#pragma once

#include "qrb/context.h"
#include "qrb/transactions.h"
#include "window/common/programsettings.h"

#include <QDialog>
#include <memory>

class QAction;

namespace tarvo::window {

namespace Ui {
class DialogTransaction;
}

class DialogTransaction : public QDialog {
    Q_OBJECT

public:
    // Runs the dialog on the record, which is changed only when it is accepted; that is what the
    // result tells. newTransaction: what the database assigns can't be filled in.
    static bool edit(const qrb::Context& context, qrb::pointcloud::Transaction& transaction,
                     QWidget* parent, bool readOnly, bool newTransaction);

    ~DialogTransaction() override;

private slots:
    void on_actionLoadComments_triggered();
    void on_actionSaveComments_triggered();
    void on_actionClearComments_triggered();
    void on_actionLoadSettings_triggered();
    void on_actionSaveSettings_triggered();
    void on_actionClearSettings_triggered();
    void on_tabWidgetSettings_currentChanged(int index);

private:
    explicit DialogTransaction(QWidget* parent);
    void buildMenu();
    void setReadOnly();
    void setNewTransaction();
    void fill(const qrb::pointcloud::Transaction& transaction);
    void read(qrb::pointcloud::Transaction& transaction) const;
    void formatSettings();
    // Empty where none was chosen or it could not be read.
    std::unique_ptr<QString> loadText(const QString& caption);
    void saveText(const QString& caption, const QString& kind, const QString& text);

    std::unique_ptr<Ui::DialogTransaction> m_ui;
    DialogSettings m_settings;
};

}  // namespace tarvo::window
