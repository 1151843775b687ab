#include "window/widgets/numerictreewidgetitem.h"

#include <QTreeWidget>
#include <optional>

namespace tarvo::window {

namespace {

constexpr int sortValueRole = Qt::UserRole + 1000;

// The column's number; a trailing "*" is a mark, not part of it.
std::optional<double> numberOf(const QTreeWidgetItem& item, int column) {
    const QVariant value = item.data(column, sortValueRole);
    if (value.isValid())
        return value.toDouble();
    QString text = item.text(column).trimmed();
    if (text.endsWith('*'))
        text.chop(1);
    bool ok = false;
    const double number = text.toDouble(&ok);
    return ok ? std::optional(number) : std::nullopt;
}

}  // namespace

void NumericTreeWidgetItem::setSortValue(int column, double value) {
    setData(column, sortValueRole, value);
}

bool NumericTreeWidgetItem::operator<(const QTreeWidgetItem& other) const {
    const int column = treeWidget() ? treeWidget()->sortColumn() : 0;
    const auto left = numberOf(*this, column);
    const auto right = numberOf(other, column);
    if (left && right)
        return *left < *right;
    // Numbers before texts: without a rule for the mixed case the order would not be transitive.
    if (left || right)
        return left.has_value();
    return QString::compare(text(column), other.text(column), Qt::CaseInsensitive) < 0;
}

}  // namespace tarvo::window
