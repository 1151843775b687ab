// A table that a plugin gave: sorted by a click on a column's title, numbers as numbers.
#pragma once

#include "plugin/run.h"

#include <QAbstractTableModel>
#include <QTableView>
#include <memory>
#include <vector>

namespace tarvo::window {

class ResultTableModel : public QAbstractTableModel {
    Q_OBJECT

public:
    ResultTableModel(std::shared_ptr<const plugin::Table> table, QObject* parent);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    // column -1: as the plugin gave it.
    void sort(int column, Qt::SortOrder order) override;

    QString cell(int row, int column) const;
    QString title(int column) const;

private:
    const std::shared_ptr<const plugin::Table> m_table;
    std::vector<std::size_t> m_rows;  // the table's in the order shown
};

class ResultTable : public QTableView {
    Q_OBJECT

public:
    ResultTable(std::shared_ptr<const plugin::Table> table, QWidget* parent);

    // Puts the cells selected, or all, on the clipboard, with the titles in front; tabs between
    // columns.
    void copy();

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    ResultTableModel* m_model;
};

}  // namespace tarvo::window
