#include "window/widgets/numerictreewidgetitem.h"

#include <QTreeWidget>

namespace tarvo::window {

void NumericTreeWidgetItem::setSortValue(int column, double value) {
    setData(column, sortValueRole, value);
}

void NumericTreeWidgetItem::setData(int column, int role, const QVariant& value) {
    m_readColumn = -1;
    QTreeWidgetItem::setData(column, role, value);
}

// A trailing "*" is a mark, not part of the number.
std::optional<double> NumericTreeWidgetItem::numberOf(int column) const {
    if (column == m_readColumn)
        return m_number;
    m_readColumn = column;
    const QVariant value = data(column, sortValueRole);
    if (value.isValid())
        return m_number = value.toDouble();
    QString text = this->text(column).trimmed();
    if (text.endsWith('*'))
        text.chop(1);
    bool ok = false;
    const double number = text.toDouble(&ok);
    return m_number = ok ? std::optional(number) : std::nullopt;
}

bool NumericTreeWidgetItem::operator<(const QTreeWidgetItem& other) const {
    const int column = treeWidget() ? treeWidget()->sortColumn() : 0;
    const auto* const numeric =
        other.type() == kind ? static_cast<const NumericTreeWidgetItem*>(&other) : nullptr;
    const auto left = numberOf(column);
    const auto right = numeric ? numeric->numberOf(column) : std::nullopt;
    if (left && right)
        return *left < *right;
    // Numbers before texts: without a rule for the mixed case the order would not be transitive.
    if (left || right)
        return left.has_value();
    return QString::compare(text(column), other.text(column), Qt::CaseInsensitive) < 0;
}

void alignNumberHeaders(QTreeWidget* tree, const QList<int>& columns) {
    for (const int column : columns)
        tree->headerItem()->setTextAlignment(column, Qt::AlignRight | Qt::AlignVCenter);
}

}  // namespace tarvo::window
