#include "window/widgets/checklist.h"

#include "window/common/textformat.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSignalBlocker>

namespace tarvo::window {

CheckList::CheckList(QWidget* parent)
    : QWidget(parent),
      m_search(new QLineEdit(this)),
      m_list(new QListWidget(this)),
      m_count(new QLabel(this)) {
    m_search->setObjectName("editSearch");
    m_search->setPlaceholderText(tr("Search"));
    m_search->setClearButtonEnabled(true);
    m_list->setObjectName("listEntries");
    m_list->setAlternatingRowColors(true);
    m_count->setObjectName("labelCount");

    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->addWidget(m_search);
    rows->addWidget(m_list, 1);
    auto* buttons = new QHBoxLayout;
    rows->addLayout(buttons);
    buttons->addWidget(m_count, 1);
    for (const bool checked : {true, false}) {
        auto* button = new QPushButton(checked ? tr("All") : tr("None"), this);
        button->setObjectName(checked ? "buttonAll" : "buttonNone");
        button->setToolTip(checked ? tr("Check all entries shown")
                                   : tr("Uncheck all entries shown"));
        button->setAutoDefault(false);
        buttons->addWidget(button);
        connect(button, &QPushButton::clicked, this, [this, checked] { check(checked); });
    }
    connect(m_search, &QLineEdit::textChanged, this, &CheckList::showMatches);
    connect(m_list, &QListWidget::itemChanged, this, &CheckList::updateCount);
}

void CheckList::setEntries(const QString& title, const QString& searchTitle,
                           const QStringList& entries) {
    const QSignalBlocker filling(m_list);
    m_list->clear();
    for (const QString& entry : entries) {
        auto* item = new QListWidgetItem(oneLine(entry), m_list);
        item->setData(Qt::UserRole, entry);
        item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
        item->setCheckState(Qt::Checked);
    }
    m_list->setAccessibleName(title);
    m_search->setAccessibleName(searchTitle);
    m_search->setVisible(!entries.isEmpty());
    updateCount();
}

QStringList CheckList::checked() const {
    QStringList result;
    for (int i = 0; i < m_list->count(); ++i)
        if (m_list->item(i)->checkState() == Qt::Checked)
            result += m_list->item(i)->data(Qt::UserRole).toString();
    return result;
}

void CheckList::check(bool checked) {
    const QSignalBlocker filling(m_list);
    for (int i = 0; i < m_list->count(); ++i)
        if (!m_list->item(i)->isHidden())
            m_list->item(i)->setCheckState(checked ? Qt::Checked : Qt::Unchecked);
    updateCount();
}

void CheckList::showMatches(const QString& text) {
    for (int i = 0; i < m_list->count(); ++i)
        m_list->item(i)->setHidden(
            !m_list->item(i)->text().contains(text.trimmed(), Qt::CaseInsensitive));
}

void CheckList::updateCount() {
    m_count->setText(tr("%0 of %1").arg(checked().size()).arg(m_list->count()));
}

}  // namespace tarvo::window
