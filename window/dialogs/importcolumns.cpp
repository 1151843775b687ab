#include "window/dialogs/importcolumns.h"

#include "window/common/localnumbers.h"
#include "window/common/messages.h"
#include "window/common/textformat.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QCompleter>
#include <QLineEdit>
#include <QSignalBlocker>
#include <QStyledItemDelegate>
#include <QTreeWidget>

namespace tarvo::window {

namespace {

enum ImportField { COLUMN, ATTRIBUTE, RANGE, RESOLUTION, REMARK, FIRST };

constexpr int ownTarget = Qt::UserRole;  // of COLUMN: where the column goes by itself

// An editable list of attributes for the one field that can be edited.
class TargetDelegate : public QStyledItemDelegate {
public:
    TargetDelegate(QStringList attributes, QObject* parent)
        : QStyledItemDelegate(parent), m_attributes(std::move(attributes)) {}

    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem&,
                          const QModelIndex& index) const override {
        if (index.column() != ATTRIBUTE)
            return nullptr;
        auto* box = new QComboBox(parent);
        box->setObjectName("editTarget");
        box->setAccessibleName(QObject::tr("Attribute that the column goes to"));
        box->setEditable(true);
        box->setInsertPolicy(QComboBox::NoInsert);
        box->addItems(m_attributes);
        box->completer()->setFilterMode(Qt::MatchContains);
        box->completer()->setCompletionMode(QCompleter::PopupCompletion);
        return box;
    }
    void setEditorData(QWidget* editor, const QModelIndex& index) const override {
        auto* box = static_cast<QComboBox*>(editor);
        box->setEditText(index.data(Qt::EditRole).toString());
        box->lineEdit()->selectAll();
    }
    void setModelData(QWidget* editor, QAbstractItemModel* model,
                      const QModelIndex& index) const override {
        const QString typed = static_cast<QComboBox*>(editor)->currentText().trimmed();
        // Nothing: where it goes by itself.
        model->setData(index,
                       typed.isEmpty()
                           ? index.siblingAtColumn(COLUMN).data(ownTarget).toString()
                           : QString::fromStdString(exchange::fullTarget(typed.toStdString())));
    }

private:
    QStringList m_attributes;
};

bool isCoordinate(const QTreeWidgetItem* row) {
    return row->text(ATTRIBUTE).section('[', 0, 0) == "tarvo.xyz";
}

}  // namespace

ImportColumns::ImportColumns(QTreeWidget* tree, const std::vector<ImportColumn>& columns,
                             const QStringList& attributes, QObject* parent)
    : QObject(parent), m_tree(tree) {
    m_tree->setItemDelegate(new TargetDelegate(attributes, m_tree));
    m_tree->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::SelectedClicked |
                            QAbstractItemView::EditKeyPressed);
    for (const ImportColumn& column : columns)
        addRow(column);
    holdCoordinates();
    connect(m_tree, &QTreeWidget::itemChanged, this, &ImportColumns::onItemChanged);
}

void ImportColumns::addRow(const ImportColumn& column) {
    auto* row = new QTreeWidgetItem(m_tree);
    row->setFlags(row->flags() | Qt::ItemIsEditable | Qt::ItemIsUserCheckable);
    row->setText(COLUMN, column.name);
    row->setData(COLUMN, ownTarget, column.target);
    row->setText(ATTRIBUTE, column.target);
    row->setText(RANGE, column.range);
    row->setText(FIRST, column.first);
    row->setToolTip(FIRST, plainToolTip(column.first));
    row->setToolTip(ATTRIBUTE, tr("Double-click to choose another attribute, or type a name"));
    row->setCheckState(COLUMN, Qt::Checked);
}

void ImportColumns::onItemChanged(QTreeWidgetItem*, int column) {
    if (column != COLUMN && column != ATTRIBUTE)
        return;
    holdCoordinates();
    emit changed();
}

void ImportColumns::holdCoordinates() {
    const QSignalBlocker blocker(m_tree);
    for (int i = 0; i < m_tree->topLevelItemCount(); ++i) {
        QTreeWidgetItem* row = m_tree->topLevelItem(i);
        const Qt::ItemFlags flags = row->flags() | Qt::ItemIsUserCheckable;
        row->setFlags(isCoordinate(row) ? flags & ~Qt::ItemIsUserCheckable : flags);
        if (isCoordinate(row))
            row->setCheckState(COLUMN, Qt::Checked);
    }
}

exchange::ColumnMap ImportColumns::map() const {
    exchange::ColumnMap map;
    for (int i = 0; i < m_tree->topLevelItemCount(); ++i) {
        const QTreeWidgetItem* row = m_tree->topLevelItem(i);
        const QString own = row->data(COLUMN, ownTarget).toString();
        if (row->checkState(COLUMN) != Qt::Checked)
            map.push_back({own.toStdString(), {}});
        else if (row->text(ATTRIBUTE) != own)
            map.push_back({own.toStdString(), row->text(ATTRIBUTE).toStdString()});
    }
    return map;
}

void ImportColumns::choose(const exchange::ColumnMap& map) {
    {
        const QSignalBlocker blocker(m_tree);
        for (int i = 0; i < m_tree->topLevelItemCount(); ++i) {
            QTreeWidgetItem* row = m_tree->topLevelItem(i);
            const QString own = row->data(COLUMN, ownTarget).toString();
            row->setCheckState(COLUMN, Qt::Checked);
            row->setText(ATTRIBUTE, own);
            for (const exchange::ColumnChoice& choice : map) {
                if (own.toStdString() != choice.column)
                    continue;
                if (choice.attribute.empty())
                    row->setCheckState(COLUMN, Qt::Unchecked);
                else
                    row->setText(ATTRIBUTE, QString::fromStdString(choice.attribute));
            }
        }
    }
    holdCoordinates();
    emit changed();
}

void ImportColumns::showPlan(const exchange::ImportPlan* plan) {
    const QSignalBlocker blocker(m_tree);
    for (int i = 0; i < m_tree->topLevelItemCount(); ++i) {
        QTreeWidgetItem* row = m_tree->topLevelItem(i);
        QString resolution;
        QString remark;
        const std::string name = row->text(ATTRIBUTE).section('[', 0, 0).toStdString();
        if (row->checkState(COLUMN) != Qt::Checked) {
            remark = tr("left out");
        } else if (plan && plan->attributes.contains(name)) {
            const exchange::ImportPlan::Attribute& attribute = plan->attributes.at(name);
            resolution = localNumber(attribute.definition.resolution);
            if (attribute.fault)
                remark = translatedMessage(attribute.fault->what());
            else if (attribute.constant)
                remark =
                    tr("all points have %1").arg(localNumber(attribute.definition.defaultValue));
        }
        row->setText(RESOLUTION, resolution);
        row->setText(REMARK, remark);
        row->setToolTip(REMARK, plainToolTip(remark));
    }
}

}  // namespace tarvo::window
