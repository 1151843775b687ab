#include "window/panels/pointcolumns.h"

#include "window/common/programsettings.h"
#include "window/common/textformat.h"

#include <QHash>
#include <QHeaderView>
#include <QListWidget>
#include <QMap>
#include <QScopedValueRollback>
#include <QSet>
#include <QTreeWidget>
#include <algorithm>

namespace tarvo::window {

namespace {

const char* const attributesKey = "Attributes";

struct KeptEntry {
    QString name;
    bool shown;
};

QList<KeptEntry> keptEntries() {
    QList<KeptEntry> entries;
    for (const QString& entry : ProgramSettings().value(attributesKey).toStringList()) {
        const qsizetype separator = entry.lastIndexOf('=');
        if (separator > 0)
            entries.append({entry.left(separator), entry.mid(separator + 1) != "hidden"});
    }
    return entries;
}

QString baseName(const QString& element) {
    return element.section('[', 0, 0);
}

}  // namespace

void PointColumns::fill(const std::vector<qrb::pointcloud::PointAttribute>& attributes) {
    const QScopedValueRollback busy(m_busy, true);
    QMap<QString, std::uint32_t> lengths;
    for (const auto& attribute : attributes)
        lengths[QString::fromStdString(attribute.name)] = attribute.length;

    m_chooser->clear();
    for (const KeptEntry& entry : keptEntries()) {
        if (lengths.contains(entry.name))
            addEntry(entry.name, lengths.take(entry.name), entry.shown);
    }
    for (const auto& attribute : attributes) {
        const QString name = QString::fromStdString(attribute.name);
        if (lengths.contains(name))
            addEntry(name, attribute.length, true);
    }
    search(m_search);
}

void PointColumns::addEntry(const QString& name, std::uint32_t length, bool shown) {
    auto* item = new QListWidgetItem(name, m_chooser);
    item->setData(Qt::UserRole, length);
    item->setFlags(Qt::ItemIsSelectable | Qt::ItemIsEnabled | Qt::ItemIsUserCheckable |
                   Qt::ItemIsDragEnabled);
    item->setCheckState(shown ? Qt::Checked : Qt::Unchecked);
}

// Attributes that this database lacks keep their entries for others that have them.
void PointColumns::save() const {
    QStringList entries;
    for (int i = 0; i < m_chooser->count(); ++i) {
        const auto* item = m_chooser->item(i);
        entries += item->text() + '=' + (item->checkState() == Qt::Checked ? "visible" : "hidden");
    }
    const QStringList present = names();
    for (const KeptEntry& entry : keptEntries()) {
        if (!present.contains(entry.name))
            entries += entry.name + '=' + (entry.shown ? "visible" : "hidden");
    }
    ProgramSettings().setValue(attributesKey, entries);
}

QStringList PointColumns::names() const {
    QStringList result;
    for (int i = 0; i < m_chooser->count(); ++i)
        result += m_chooser->item(i)->text();
    return result;
}

QStringList PointColumns::shownAttributes() const {
    QStringList result;
    for (int i = 0; i < m_chooser->count(); ++i) {
        if (m_chooser->item(i)->checkState() == Qt::Checked)
            result += m_chooser->item(i)->text();
    }
    return result;
}

void PointColumns::apply(QTreeWidget* tree) const {
    const QStringList shown = shownAttributes();
    const QSet<QString> visible(shown.begin(), shown.end());
    QHash<QString, int> columns;
    for (int column = 1; column < tree->columnCount(); ++column) {
        const QString element = tree->headerItem()->text(column);
        columns[element] = column;
        tree->setColumnHidden(column, !visible.contains(baseName(element)));
    }

    int position = 1;
    for (int i = 0; i < m_chooser->count(); ++i) {
        const auto* item = m_chooser->item(i);
        for (const QString& element :
             shownElements(item->text(), item->data(Qt::UserRole).toUInt())) {
            if (!columns.contains(element))
                continue;
            QHeaderView* header = tree->header();
            header->moveSection(header->visualIndex(columns[element]), position++);
        }
    }
}

void PointColumns::takeOrder(const QTreeWidget* tree, int movedColumn) {
    const QHeaderView* header = tree->header();
    const QString moved = baseName(tree->headerItem()->text(movedColumn));
    QStringList order;
    for (int visual = 0; visual < header->count(); ++visual) {
        const int column = header->logicalIndex(visual);
        const QString name = baseName(tree->headerItem()->text(column));
        if (column > 0 && (name != moved || column == movedColumn) && !order.contains(name))
            order += name;
    }
    sort(order);
}

void PointColumns::search(const QString& text) {
    m_search = text;
    for (int i = 0; i < m_chooser->count(); ++i)
        m_chooser->item(i)->setHidden(
            !m_chooser->item(i)->text().contains(text.trimmed(), Qt::CaseInsensitive));
}

void PointColumns::setAllShown(bool shown) {
    setShown(shown ? names() : QStringList());
}

void PointColumns::setSelectedShown(bool shown) {
    const QScopedValueRollback busy(m_busy, true);
    for (QListWidgetItem* item : m_chooser->selectedItems())
        item->setCheckState(shown ? Qt::Checked : Qt::Unchecked);
}

void PointColumns::setShown(const QStringList& shown) {
    const QScopedValueRollback busy(m_busy, true);
    for (int i = 0; i < m_chooser->count(); ++i) {
        auto* item = m_chooser->item(i);
        item->setCheckState(shown.contains(item->text()) ? Qt::Checked : Qt::Unchecked);
    }
}

void PointColumns::sort(const QStringList& order) {
    const QScopedValueRollback busy(m_busy, true);
    QList<QListWidgetItem*> items;
    while (m_chooser->count() > 0)
        items += m_chooser->takeItem(0);
    const auto rank = [&](const QListWidgetItem* item) {
        const qsizetype index = order.indexOf(item->text());
        return index < 0 ? order.size() : index;
    };
    std::stable_sort(items.begin(), items.end(),
                     [&](const auto* a, const auto* b) { return rank(a) < rank(b); });
    for (QListWidgetItem* item : items)
        m_chooser->addItem(item);
    search(m_search);
}

void PointColumns::sortByName() {
    QStringList order = names();
    order.sort();
    sort(order);
}

}  // namespace tarvo::window
