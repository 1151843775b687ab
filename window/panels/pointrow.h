// A row of the points table: the number of the point and its values. What else belongs to a cell is
// made when somebody asks for it: most cells are never pointed at.
#pragma once

#include "window/widgets/numerictreewidgetitem.h"

#include <QStringList>

namespace tarvo::window {

class PointRow : public NumericTreeWidgetItem {
public:
    // texts: of all columns. headers: theirs; lists that all rows share.
    PointRow(const QStringList& texts, const QStringList& headers)
        : NumericTreeWidgetItem(texts), m_headers(headers) {}

    // Of the cells of a column and of its title.
    static Qt::Alignment alignmentOf(int column) {
        return column == 0 ? Qt::Alignment(Qt::AlignCenter) : Qt::AlignRight | Qt::AlignVCenter;
    }

    QVariant data(int column, int role) const override;

private:
    QString cell(int column) const;

    QStringList m_headers;
};

}  // namespace tarvo::window
