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
            return plainToolTip(cell(column) + "\ndouble click to copy to clipboard");
    }
    return NumericTreeWidgetItem::data(column, role);
}

QString PointRow::cell(int column) const {
    return QString("%1 = %2").arg(m_headers[column], text(column));
}

}  // namespace tarvo::window
