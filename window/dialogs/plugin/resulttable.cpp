#include "window/dialogs/plugin/resulttable.h"

#include "numbers/numbertext.h"
#include "window/common/clipboard.h"
#include "window/common/guard.h"
#include "window/common/textformat.h"

#include <QAction>
#include <QHeaderView>
#include <QKeyEvent>
#include <algorithm>
#include <numeric>
#include <optional>
#include <set>
#include <utility>

namespace tarvo::window {

namespace {

constexpr int shownCharacters = 500;  // of a cell
constexpr int widestColumn = 400;     // to begin with, pixels

struct SortKey {
    std::optional<double> number;
    QString text;
};

// Numbers before texts, as in the other lists of the window.
bool isBefore(const SortKey& a, const SortKey& b) {
    if (a.number && b.number)
        return *a.number < *b.number;
    if (a.number || b.number)
        return a.number.has_value();
    return QString::compare(a.text, b.text, Qt::CaseInsensitive) < 0;
}

// As a field of a text whose columns are separated by tabs.
QString field(QString text) {
    return text.replace('\t', ' ').replace('\n', ' ').remove('\r');
}

}  // namespace

ResultTableModel::ResultTableModel(std::shared_ptr<const plugin::Table> table, QObject* parent)
    : QAbstractTableModel(parent), m_table(std::move(table)), m_rows(m_table->rows.size()) {
    std::iota(m_rows.begin(), m_rows.end(), std::size_t{0});
}

int ResultTableModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

int ResultTableModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_table->columns.size());
}

QString ResultTableModel::cell(int row, int column) const {
    return QString::fromStdString(
        m_table->rows[m_rows[static_cast<std::size_t>(row)]][static_cast<std::size_t>(column)]);
}

QString ResultTableModel::title(int column) const {
    return QString::fromStdString(m_table->columns[static_cast<std::size_t>(column)].title);
}

QVariant ResultTableModel::data(const QModelIndex& index, int role) const {
    if (role == Qt::DisplayRole)
        return shortened(cell(index.row(), index.column()), shownCharacters);
    if (role == Qt::TextAlignmentRole)
        return QVariant::fromValue((m_table->columns[static_cast<std::size_t>(index.column())].right
                                        ? Qt::AlignRight
                                        : Qt::AlignLeft) |
                                   Qt::AlignVCenter);
    return {};
}

QVariant ResultTableModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (role != Qt::DisplayRole)
        return {};
    return orientation == Qt::Horizontal
               ? shortened(title(section), shownCharacters)
               : QString::number(m_rows[static_cast<std::size_t>(section)] + 1);
}

void ResultTableModel::sort(int column, Qt::SortOrder order) {
    const WaitCursor waiting;
    emit layoutAboutToBeChanged({}, QAbstractItemModel::VerticalSortHint);
    std::iota(m_rows.begin(), m_rows.end(), std::size_t{0});
    if (column >= 0) {
        std::vector<SortKey> keys(m_rows.size());
        for (std::size_t row = 0; row < keys.size(); ++row) {
            const std::string& text = m_table->rows[row][static_cast<std::size_t>(column)];
            keys[row].number = numbers::readNumber(text);
            if (!keys[row].number)
                keys[row].text = QString::fromStdString(text);
        }
        std::stable_sort(m_rows.begin(), m_rows.end(), [&](std::size_t a, std::size_t b) {
            return order == Qt::AscendingOrder ? isBefore(keys[a], keys[b])
                                               : isBefore(keys[b], keys[a]);
        });
    }
    emit layoutChanged({}, QAbstractItemModel::VerticalSortHint);
}

ResultTable::ResultTable(std::shared_ptr<const plugin::Table> table, QWidget* parent)
    : QTableView(parent), m_model(new ResultTableModel(std::move(table), this)) {
    setModel(m_model);
    setAlternatingRowColors(true);
    setWordWrap(false);
    setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setMaximumSectionSize(widestColumn);
    resizeColumnsToContents();
    horizontalHeader()->setMaximumSectionSize(-1);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 6);
    // In the order given until a title is clicked; a third click leads back to it.
    horizontalHeader()->setSortIndicatorClearable(true);
    horizontalHeader()->setSortIndicator(-1, Qt::AscendingOrder);
    setSortingEnabled(true);

    auto* copying = new QAction(tr("Copy"), this);
    connect(copying, &QAction::triggered, this, &ResultTable::copy);
    addAction(copying);
    setContextMenuPolicy(Qt::ActionsContextMenu);
}

void ResultTable::keyPressEvent(QKeyEvent* event) {
    // The base class would copy one cell.
    if (event == QKeySequence::Copy)
        copy();
    else
        QTableView::keyPressEvent(event);
}

void ResultTable::copy() {
    const WaitCursor waiting;
    std::set<int> rows, columns;
    for (const QItemSelectionRange& range : selectionModel()->selection()) {
        for (int row = range.top(); row <= range.bottom(); ++row)
            rows.insert(row);
        for (int column = range.left(); column <= range.right(); ++column)
            columns.insert(column);
    }
    if (rows.empty()) {
        for (int row = 0; row < m_model->rowCount(); ++row)
            rows.insert(rows.end(), row);
        for (int column = 0; column < m_model->columnCount(); ++column)
            columns.insert(column);
    }
    const bool whole = selectionModel()->selection().isEmpty();
    QString text;
    const auto addLine = [&](const auto& textOf) {
        QStringList fields;
        for (const int column : columns)
            fields += field(textOf(column));
        text += fields.join('\t') + '\n';
    };
    addLine([&](int column) { return m_model->title(column); });
    for (const int row : rows)
        addLine([&](int column) {
            return whole || selectionModel()->isSelected(m_model->index(row, column))
                       ? m_model->cell(row, column)
                       : QString();
        });
    copyToClipboard(text);
}

}  // namespace tarvo::window
