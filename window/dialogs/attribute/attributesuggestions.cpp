#include "window/dialogs/attribute/attributesuggestions.h"

#include "core/defaultattribute.h"

#include <QHeaderView>
#include <QTreeWidget>
#include <algorithm>

namespace tarvo::window {

namespace {

enum SuggestionColumn {
    SUGGESTION_NAME,
    SUGGESTION_TITLE,
    SUGGESTION_GROUP,
    SUGGESTION_UNIT,
    SUGGESTION_TYPE,
    SUGGESTION_COLUMNS
};

constexpr int entryRole = Qt::UserRole;  // the catalogue's name

bool holdsWords(const catalogue::AttributeEntry& entry, const QStringList& words) {
    const QString text = QString::fromStdString(entry.name + '\n' + entry.title + '\n' +
                                                entry.tags + '\n' + entry.description);
    return std::all_of(words.begin(), words.end(), [&](const QString& word) {
        return text.contains(word, Qt::CaseInsensitive);
    });
}

template <typename Texts>
QStringList distinct(Texts texts) {
    QStringList result;
    for (const catalogue::AttributeEntry& entry : catalogue::attributes())
        for (const QString& text : texts(entry))
            if (!text.isEmpty() && !result.contains(text))
                result += text;
    return result;
}

}  // namespace

void fillSuggestions(QTreeWidget* tree, const QStringList& takenNames) {
    tree->clear();
    for (const catalogue::AttributeEntry& entry : catalogue::attributes()) {
        auto* row = new QTreeWidgetItem(tree);
        const QString name = QString::fromStdString(entry.name);
        const auto attribute = core::defaultAttribute(entry);
        QString type = dataTypeName(attribute.dataType());
        if (entry.length != 1)
            type += QString("[%0]").arg(entry.length);
        row->setData(SUGGESTION_NAME, entryRole, name);
        row->setText(SUGGESTION_NAME, name);
        row->setText(SUGGESTION_TITLE, QString::fromStdString(entry.title));
        row->setText(SUGGESTION_GROUP, QString::fromStdString(entry.group));
        row->setText(SUGGESTION_UNIT, QString::fromStdString(entry.unitSymbol));
        row->setText(SUGGESTION_TYPE, type);
        const bool taken = takenNames.contains(name);
        if (taken) {
            row->setText(SUGGESTION_NAME, QObject::tr("%0 (exists already)").arg(name));
            row->setFlags(row->flags() & ~(Qt::ItemIsEnabled | Qt::ItemIsSelectable));
        }
        const QString toolTip =
            taken ? QObject::tr("There is a point attribute of this name already.")
                  : QString::fromStdString(entry.description);
        for (int column = 0; column < SUGGESTION_COLUMNS; ++column)
            row->setToolTip(column, toolTip);
    }
    // A few long texts are not to push the other columns out of sight.
    constexpr int widest[SUGGESTION_COLUMNS] = {190, 140, 130, 50, 90};
    for (int column = 0; column < SUGGESTION_COLUMNS; ++column) {
        tree->resizeColumnToContents(column);
        tree->header()->resizeSection(
            column, std::min(tree->header()->sectionSize(column), widest[column]));
    }
}

int filterSuggestions(QTreeWidget* tree, const QString& text) {
    const QStringList words = text.simplified().split(' ', Qt::SkipEmptyParts);
    QTreeWidgetItem* first = nullptr;
    int shown = 0;
    for (int i = 0; i < tree->topLevelItemCount(); ++i) {
        QTreeWidgetItem* row = tree->topLevelItem(i);
        const std::string name = row->data(SUGGESTION_NAME, entryRole).toString().toStdString();
        const bool holds = holdsWords(*catalogue::findAttribute(name), words);
        row->setHidden(!holds);
        shown += holds;
        if (holds && !first && !words.isEmpty() && !row->isDisabled())
            first = row;
    }
    tree->setCurrentItem(first);
    tree->scrollToTop();
    if (first)
        tree->scrollToItem(first);
    return shown;
}

const catalogue::AttributeEntry* suggestionOf(const QTreeWidgetItem* row) {
    if (!row || row->isDisabled() || row->isHidden())
        return nullptr;
    return catalogue::findAttribute(row->data(SUGGESTION_NAME, entryRole).toString().toStdString());
}

QStringList suggestedUnits() {
    return distinct([](const catalogue::AttributeEntry& entry) {
        return QStringList(QString::fromStdString(entry.unitSymbol));
    });
}

QStringList suggestedTags() {
    return distinct([](const catalogue::AttributeEntry& entry) {
        QStringList tags = QString::fromStdString(entry.tags).split(',');
        for (QString& tag : tags)
            tag = tag.trimmed();
        return tags;
    });
}

}  // namespace tarvo::window
