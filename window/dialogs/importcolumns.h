// The table of an import's columns: each under its name in the files, with a check mark where it
// comes in, and with the attribute that it goes to, which can be changed.
#pragma once

#include "exchange/import/importplan.h"
#include "exchange/table/columnmap.h"

#include <QObject>
#include <QString>
#include <QStringList>
#include <vector>

class QTreeWidget;
class QTreeWidgetItem;

namespace tarvo::window {

// What is known of a column of the files.
struct ImportColumn {
    QString name;  // in its file
    QString
        target;  // the attribute, or its element, that it goes to by itself; tells it from others
    QString range;  // of its values
    QString first;  // values of the first points
};

class ImportColumns : public QObject {
    Q_OBJECT

public:
    // The tree must outlive it. attributes: names that are proposed, with elements "NAME[I]".
    ImportColumns(QTreeWidget* tree, const std::vector<ImportColumn>& columns,
                  const QStringList& attributes, QObject* parent);

    // What differs from where the columns go by themselves.
    exchange::ColumnMap map() const;
    // Shows another map.
    void choose(const exchange::ColumnMap& map);
    // Shows what becomes of the columns; null: nothing can.
    void showPlan(const exchange::ImportPlan* plan);

signals:
    void changed();

private:
    void addRow(const ImportColumn& column);
    void onItemChanged(QTreeWidgetItem* row, int column);
    // Points without coordinates are none.
    void holdCoordinates();

    QTreeWidget* m_tree;
};

}  // namespace tarvo::window
