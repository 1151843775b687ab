// A row of the points table: the number of the point and its values. What else belongs to a cell is
// made when somebody asks for it: most cells are never pointed at.
#pragma once

#include "window/panels/valuenames.h"
#include "window/widgets/numerictreewidgetitem.h"

#include <QStringList>
#include <memory>

namespace tarvo::window {

class PointRow : public NumericTreeWidgetItem {
public:
    // texts: of all columns. headers, names: theirs; all rows share them.
    PointRow(const QStringList& texts, const QStringList& headers,
             std::shared_ptr<const ValueNames> names)
        : NumericTreeWidgetItem(texts), m_headers(headers), m_names(std::move(names)) {}

    // Of the cells of a column and of its title.
    static Qt::Alignment alignmentOf(int column) {
        return column == 0 ? Qt::Alignment(Qt::AlignCenter) : Qt::AlignRight | Qt::AlignVCenter;
    }

    QVariant data(int column, int role) const override;
    // The text of the value alone, whether or not its name is shown.
    QString value(int column) const;

private:
    QString cell(int column) const;

    QStringList m_headers;
    std::shared_ptr<const ValueNames> m_names;
};

}  // namespace tarvo::window
