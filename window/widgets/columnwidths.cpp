#include "window/widgets/columnwidths.h"

#include <QFontMetricsF>
#include <QHeaderView>
#include <QTreeWidget>
#include <algorithm>
#include <cmath>

namespace tarvo::window {

void ColumnWidths::restart() {
    m_contents.clear();
}

void ColumnWidths::add(const QList<QTreeWidgetItem*>& rows) {
    if (rows.isEmpty())
        return;
    if (readFont() && !m_contents.empty()) {
        // What was measured in another font means nothing now.
        restart();
        add(allRows());
        return;
    }
    QHeaderView* header = m_tree->header();
    const bool first = m_contents.empty();
    m_contents.resize(static_cast<std::size_t>(m_tree->columnCount()), 0);
    for (int column = 0; column < m_tree->columnCount(); ++column) {
        int& contents = m_contents[static_cast<std::size_t>(column)];
        const int width = widest(rows, column);
        const bool wider = width > contents;
        contents = std::max(contents, width);
        // The last column has the rest of the view, which is no width of its own.
        const bool tooNarrow = header->sectionSize(column) < width ||
                               header->visualIndex(column) == header->count() - 1;
        if (first || (wider && tooNarrow))
            fit(column);
    }
}

void ColumnWidths::fit(int column) const {
    const auto index = static_cast<std::size_t>(column);
    QHeaderView* header = m_tree->header();
    const int title = header->isSectionHidden(column) ? 0 : header->sectionSizeHint(column);
    header->resizeSection(column,
                          std::max(title, index < m_contents.size() ? m_contents[index] : 0));
}

QList<QTreeWidgetItem*> ColumnWidths::allRows() const {
    QList<QTreeWidgetItem*> rows;
    for (int row = 0; row < m_tree->topLevelItemCount(); ++row)
        rows += m_tree->topLevelItem(row);
    return rows;
}

int ColumnWidths::widest(const QList<QTreeWidgetItem*>& rows, int column) {
    const QTreeWidgetItem* widest = rows.front();
    QString text;
    qreal most = -1;
    for (const QTreeWidgetItem* row : rows) {
        const QString candidate = row->text(column);
        const qreal width = estimate(candidate);
        if (width > most) {
            most = width;
            widest = row;
            text = candidate;
        }
    }
    // Where kerning brings the characters of this one nearer to each other than those of the rest,
    // another may be as wide as all characters are together.
    const qreal kerning = most - QFontMetricsF(m_font).horizontalAdvance(text);
    const int indentation = column == 0 && m_tree->rootIsDecorated() ? m_tree->indentation() : 0;
    return m_tree->sizeHintForIndex(m_tree->indexFromItem(widest, column)).width() + indentation +
           static_cast<int>(std::ceil(std::max(kerning, 0.0)));
}

// Of the characters alone.
qreal ColumnWidths::estimate(const QString& text) const {
    qreal width = 0;
    for (const QChar c : text)
        width += c.unicode() < m_advances.size() ? m_advances[c.unicode()] : m_advances['W'];
    return width;
}

bool ColumnWidths::readFont() {
    if (m_advances['W'] > 0 && m_font == m_tree->font())
        return false;
    m_font = m_tree->font();
    const QFontMetricsF metrics(m_font);
    for (std::size_t c = 0; c < m_advances.size(); ++c)
        m_advances[c] = metrics.horizontalAdvance(QChar(static_cast<char16_t>(c)));
    return true;
}

}  // namespace tarvo::window
