#include "window/panels/pointvalues.h"

#include "window/common/textformat.h"
#include "window/panels/pointrow.h"

#include <QHeaderView>

namespace tarvo::window {

namespace {

enum Column { NAME, VALUE, UNIT };

}  // namespace

PointValues::PointValues(QWidget* parent) : QTreeWidget(parent) {
    setHeaderLabels({tr("Attribute"), tr("Value"), tr("Unit")});
    setIndentation(indentation() / 2);
    setUniformRowHeights(true);
    setAlternatingRowColors(true);
}

void PointValues::setColumns(const QStringList& columns,
                             const std::vector<qrb::pointcloud::PointAttribute>& attributes) {
    QHash<QString, QString> units;
    for (const auto& attribute : attributes)
        units[QString::fromStdString(attribute.name)] =
            oneLine(QString::fromStdString(attribute.unitSymbol));
    clear();
    m_rows.assign(static_cast<std::size_t>(columns.size()), nullptr);
    for (qsizetype column = 1; column < columns.size(); ++column) {
        const QString& name = columns[column];
        auto* row = new QTreeWidgetItem({name, QString(), units.value(name.section('[', 0, 0))});
        m_rows[static_cast<std::size_t>(column)] = row;
        if (name.contains('.'))
            group(name.section('.', 0, 0))->addChild(row);
        else
            addTopLevelItem(row);
    }
    expandAll();
    resizeColumnToContents(NAME);
}

QTreeWidgetItem* PointValues::group(const QString& name) {
    for (int i = 0; i < topLevelItemCount(); ++i)
        if (topLevelItem(i)->text(NAME) == name && topLevelItem(i)->childCount() > 0)
            return topLevelItem(i);
    auto* row = new QTreeWidgetItem(this, {name});
    QFont bold = font();
    bold.setBold(true);
    row->setFont(NAME, bold);
    return row;
}

void PointValues::show(const PointRow* point, const ValueNames& names) {
    for (std::size_t column = 1; column < m_rows.size(); ++column) {
        const int number = static_cast<int>(column);
        m_rows[column]->setText(VALUE,
                                point ? names.with(number, point->value(number)) : QString());
    }
    resizeColumnToContents(VALUE);
}

}  // namespace tarvo::window
