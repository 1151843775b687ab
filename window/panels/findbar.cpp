#include "window/panels/findbar.h"

#include <QHBoxLayout>
#include <QIcon>
#include <QItemSelectionModel>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPersistentModelIndex>
#include <QShortcut>
#include <QStyledItemDelegate>
#include <QToolButton>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>
#include <algorithm>

namespace tarvo::window {

// Draws the cell that was found as what is selected, and not its whole row.
class FoundCell : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QPersistentModelIndex cell;

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
        QStyledItemDelegate::initStyleOption(option, index);
        if (cell.isValid() && index == cell)
            option->state |= QStyle::State_Selected;
    }
};

namespace {

// Those of collapsed groups, too.
std::vector<QTreeWidgetItem*> rowsOf(QTreeWidget* tree) {
    std::vector<QTreeWidgetItem*> rows;
    for (QTreeWidgetItemIterator row(tree); *row; ++row)
        rows.push_back(*row);
    return rows;
}

}  // namespace

FindBar::FindBar(QTreeWidget* tree, const QString& hint, QWidget* parent, const QString& suffix)
    : QWidget(parent),
      m_tree(tree),
      m_suffix(suffix),
      m_mark(new FoundCell(tree)),
      m_text(new QLineEdit(this)),
      m_count(new QLabel(this)) {
    m_tree->setItemDelegate(m_mark);
    // What the user selects himself is marked as ever.
    connect(m_tree->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            [this](const QItemSelection& selected) {
                if (!selected.isEmpty())
                    mark({});
            });
    setObjectName("findBar" + suffix);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(4);
    m_text->setObjectName("editFind" + suffix);
    m_text->setPlaceholderText(hint);
    m_text->setAccessibleName(tr("Text to find"));
    m_text->setClearButtonEnabled(true);
    m_text->installEventFilter(this);
    layout->addWidget(m_text, 1);
    m_count->setObjectName("labelFind" + suffix);
    m_count->setMinimumWidth(m_count->fontMetrics().horizontalAdvance(tr("0000 of 0000")));
    layout->addWidget(m_count);
    connect(addButton("buttonFindPrevious", "go-up", tr("Previous hit [Shift+F3]")),
            &QToolButton::clicked, this, &FindBar::previous);
    connect(addButton("buttonFindNext", "go-down", tr("Next hit [F3]")), &QToolButton::clicked,
            this, &FindBar::next);
    connect(addButton("buttonFindClose", "cancel", tr("Close [Esc]")), &QToolButton::clicked, this,
            &FindBar::dismiss);
    connect(m_text, &QLineEdit::textChanged, this, [this] {
        search();
        if (m_hits.empty())
            return;
        const auto hit = std::lower_bound(m_hits.begin(), m_hits.end(), current());
        show(hit == m_hits.end() ? 0 : static_cast<std::size_t>(hit - m_hits.begin()));
    });
    hide();
}

QToolButton* FindBar::addButton(const QString& name, const QString& icon, const QString& toolTip) {
    auto* button = new QToolButton(this);
    button->setObjectName(name + m_suffix);
    button->setIcon(QIcon(":/resources/gui/" + icon + ".png"));
    button->setToolTip(toolTip);
    button->setAccessibleName(toolTip);
    button->setAutoRaise(true);
    layout()->addWidget(button);
    return button;
}

void FindBar::serveList() {
    const auto use = [this](const QKeySequence& key, void (FindBar::*step)()) {
        auto* shortcut = new QShortcut(key, parentWidget());
        shortcut->setContext(Qt::WidgetWithChildrenShortcut);
        shortcut->setEnabled(false);
        connect(shortcut, &QShortcut::activated, this, step);
        m_listKeys.push_back(shortcut);
    };
    use(QKeySequence("F3"), &FindBar::next);
    use(QKeySequence("Shift+F3"), &FindBar::previous);
    use(QKeySequence("Esc"), &FindBar::dismiss);
}

void FindBar::open() {
    setVisible(true);
    for (QShortcut* key : m_listKeys)
        key->setEnabled(true);
    m_text->selectAll();
    m_text->setFocus();
    search();
}

void FindBar::mark(const QModelIndex& hit) {
    m_mark->cell = hit;
    m_tree->viewport()->update();
}

void FindBar::dismiss() {
    hide();
    for (QShortcut* key : m_listKeys)
        key->setEnabled(false);
    if (m_mark->cell.isValid() && !m_listKeys.empty())
        m_tree->setCurrentIndex(m_mark->cell);
    mark({});
    m_tree->setFocus();
}

void FindBar::refresh() {
    if (isVisible())
        search();
}

void FindBar::search() {
    mark({});
    m_hits.clear();
    const QString text = m_text->text();
    if (!text.isEmpty()) {
        int number = 0;
        for (const QTreeWidgetItem* row : rowsOf(m_tree)) {
            for (int column = 0; column < m_tree->columnCount(); ++column)
                if (!m_tree->isColumnHidden(column) &&
                    row->text(column).contains(text, Qt::CaseInsensitive))
                    m_hits.push_back({number, column});
            ++number;
        }
    }
    updateCount();
}

FindBar::Hit FindBar::current() const {
    const QTreeWidgetItem* item = m_tree->currentItem();
    if (!item)
        return {-1, 0};
    const auto rows = rowsOf(m_tree);
    const auto at = std::find(rows.begin(), rows.end(), item);
    return {static_cast<int>(at - rows.begin()), std::max(m_tree->currentColumn(), 0)};
}

void FindBar::show(std::size_t hit) {
    m_tree->clearSelection();
    const auto row = static_cast<std::size_t>(m_hits[hit].row);
    m_tree->setCurrentItem(rowsOf(m_tree).at(row), m_hits[hit].column,
                           QItemSelectionModel::NoUpdate);
    m_tree->scrollTo(m_tree->currentIndex());
    mark(m_tree->currentIndex());
    updateCount();
}

void FindBar::updateCount() {
    if (m_text->text().isEmpty()) {
        m_count->clear();
        return;
    }
    const Hit now = current();
    const auto at = std::lower_bound(m_hits.begin(), m_hits.end(), now);
    const bool onHit = at != m_hits.end() && !(now < *at);
    m_count->setText(m_hits.empty() ? tr("no hits")
                     : onHit        ? tr("%0 of %1").arg(at - m_hits.begin() + 1).arg(m_hits.size())
                                    : tr("%0 hits").arg(m_hits.size()));
}

void FindBar::next() {
    search();
    if (m_hits.empty())
        return;
    const auto hit = std::upper_bound(m_hits.begin(), m_hits.end(), current());
    show(hit == m_hits.end() ? 0 : static_cast<std::size_t>(hit - m_hits.begin()));
}

void FindBar::previous() {
    search();
    if (m_hits.empty())
        return;
    const auto hit = std::lower_bound(m_hits.begin(), m_hits.end(), current());
    show(hit == m_hits.begin() ? m_hits.size() - 1
                               : static_cast<std::size_t>(hit - m_hits.begin()) - 1);
}

bool FindBar::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::ShortcutOverride || event->type() == QEvent::KeyPress) {
        const auto* key = static_cast<QKeyEvent*>(event);
        const bool enter = key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter;
        const bool step = enter || key->key() == Qt::Key_F3;
        if (key->key() == Qt::Key_Escape || step) {
            // Taken before the shortcuts of the window see it.
            event->accept();
            if (event->type() == QEvent::KeyPress) {
                if (!step)
                    dismiss();
                else
                    key->modifiers() & Qt::ShiftModifier ? previous() : next();
            }
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

}  // namespace tarvo::window
