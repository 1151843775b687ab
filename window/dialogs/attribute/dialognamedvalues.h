// Edits the named values of a point attribute as a table.
#pragma once

#include "core/namedvalues.h"
#include "window/common/programsettings.h"

#include <QDialog>
#include <memory>
#include <string>
#include <vector>

class QTableWidgetItem;

namespace tarvo::window {

namespace Ui {
class DialogNamedValues;
}

class DialogNamedValues : public QDialog {
    Q_OBJECT

public:
    // Runs the dialog on the text of named values, which is changed only when the dialog is
    // accepted with other values; the result is true when it is accepted. attribute: by whose range
    // and resolution the values are judged; null: by none. Valid.
    static bool edit(std::string& namedValues, const qrb::pointcloud::PointAttribute* attribute,
                     QWidget* parent);

    ~DialogNamedValues() override;

private slots:
    void on_actionAdd_triggered();
    void on_actionRemove_triggered();
    void on_actionMoveUp_triggered();
    void on_actionMoveDown_triggered();
    void on_actionSort_triggered();
    void on_actionImport_triggered();
    void on_actionExport_triggered();
    void on_tableNamedValues_itemChanged(QTableWidgetItem* item);
    void on_tableNamedValues_itemSelectionChanged();
    // The selection is told before the current row has changed.
    void on_tableNamedValues_currentCellChanged(int row, int column, int rowBefore,
                                                int columnBefore);

private:
    DialogNamedValues(const qrb::pointcloud::PointAttribute* attribute, QWidget* parent);
    void buildMenu();
    // Shows the values with the given row as the current one.
    void showValues(int current);
    void move(int by);
    // Colours what the checks found, and enables what is possible.
    void updateChecks();

    std::unique_ptr<Ui::DialogNamedValues> m_ui;
    DialogSettings m_settings;
    const qrb::pointcloud::PointAttribute* m_attribute;  // not owned
    std::vector<core::NamedValue> m_values;              // as the rows show them
    bool m_changed = false;
};

}  // namespace tarvo::window
