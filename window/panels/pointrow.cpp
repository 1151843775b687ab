#include "window/panels/pointrow.h"

#include "window/common/textformat.h"

namespace tarvo::window {

QVariant PointRow::data(int column, int role) const {
    if (role == Qt::TextAlignmentRole)
        return QVariant::fromValue(alignmentOf(column));
    if (column > 0 && column < m_headers.size()) {
        if (role == Qt::UserRole)
            return cell(column);
        if (role == Qt::ToolTipRole)
            return plainToolTip(cell(column) + '\n' +
                                QObject::tr("double click to copy to clipboard"));
        if (m_names->isShown() && m_names->any(column)) {
            if (role == Qt::DisplayRole)
                return m_names->with(column, value(column));
            bool isNumber = false;
            const double number = value(column).toDouble(&isNumber);
            if (role == sortValueRole && isNumber)
                return number;
        }
    }
    return NumericTreeWidgetItem::data(column, role);
}

QString PointRow::value(int column) const {
    return NumericTreeWidgetItem::data(column, Qt::DisplayRole).toString();
}

QString PointRow::cell(int column) const {
    return QString("%1 = %2").arg(m_headers[column], value(column));
}

}  // namespace tarvo::window
