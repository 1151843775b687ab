// The values of one point from top to bottom, in groups by what stands before the first dot of the
// attributes' names.
#pragma once

#include "qrb/pointattribute.h"

#include <QHash>
#include <QTreeWidget>
#include <vector>

namespace tarvo::window {

class PointRow;
class ValueNames;

class PointValues : public QTreeWidget {
    Q_OBJECT

public:
    explicit PointValues(QWidget* parent = nullptr);

    // columns: element names, with a title that is none in front.
    void setColumns(const QStringList& columns,
                    const std::vector<qrb::pointcloud::PointAttribute>& attributes);
    // Null: none. Values that have a name are shown with it.
    void show(const PointRow* point, const ValueNames& names);

private:
    QTreeWidgetItem* group(const QString& name);

    std::vector<QTreeWidgetItem*> m_rows;  // of the columns; the first is null
};

}  // namespace tarvo::window
