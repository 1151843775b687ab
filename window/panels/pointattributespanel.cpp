#include "window/panels/pointattributespanel.h"

#include "core/redefinition.h"
#include "ui_pointattributespanel.h"
#include "window/common/attributewords.h"
#include "window/common/guard.h"
#include "window/common/messageboxes.h"
#include "window/common/messages.h"
#include "window/common/programsettings.h"
#include "window/common/textformat.h"
#include "window/dialogs/attribute/dialogpointattribute.h"
#include "window/panels/listfindbar.h"
#include "window/widgets/headermemory.h"
#include "window/widgets/listkeys.h"
#include "window/widgets/numerictreewidgetitem.h"

#include <QBoxLayout>
#include <QHeaderView>
#include <algorithm>
#include <tuple>
#include <vector>

namespace tarvo::window {

namespace {

enum AttributeColumn {
    ATTRIBUTE_NAME,
    ATTRIBUTE_TITLE,
    ATTRIBUTE_DATA_TYPE,
    ATTRIBUTE_STORAGE,
    ATTRIBUTE_COMPRESSION,
    ATTRIBUTE_LOD_SETTINGS,
    ATTRIBUTE_TAGS,
    ATTRIBUTE_DESCRIPTION,
    ATTRIBUTE_RANK,
    ATTRIBUTE_COLUMNS
};

using qrb::pointcloud::PointAttribute;

constexpr int longestTags = 30;
constexpr int longestDescription = 150;

void setShortened(QTreeWidgetItem* row, int column, const std::string& text, int longest) {
    const QString whole = QString::fromStdString(text);
    row->setText(column, shortened(whole, longest).simplified());
    row->setToolTip(column, plainToolTip(whole));
}

void fillAttributeRow(QTreeWidgetItem* row, const PointAttribute& attribute, bool primary,
                      std::uint32_t rank) {
    QString name = QString::fromStdString(attribute.name);
    row->setData(ATTRIBUTE_NAME, Qt::UserRole, name);
    if (attribute.length != 1)
        name += QString("[%0]").arg(attribute.length);
    if (primary)
        name += '*';
    row->setText(ATTRIBUTE_NAME, oneLine(name));
    row->setText(ATTRIBUTE_TITLE, firstLine(QString::fromStdString(attribute.title)));
    row->setText(ATTRIBUTE_DATA_TYPE, qrb::pointcloud::dataTypeName(attribute.dataType()));
    row->setText(ATTRIBUTE_STORAGE, storageClassText(attribute.storageClass));
    row->setText(ATTRIBUTE_COMPRESSION, compressionText(attribute.compressionOptions));
    row->setText(ATTRIBUTE_LOD_SETTINGS,
                 QString::fromStdString(attribute.lodSettings).simplified());
    setShortened(row, ATTRIBUTE_TAGS, attribute.tags, longestTags);
    setShortened(row, ATTRIBUTE_DESCRIPTION, attribute.description, longestDescription);
    row->setText(ATTRIBUTE_RANK, QString::number(rank));
    row->setTextAlignment(ATTRIBUTE_RANK, Qt::AlignRight | Qt::AlignVCenter);
}

// What the user begins with: one number of a byte per point.
PointAttribute newAttribute() {
    PointAttribute attribute;
    attribute.name.clear();
    attribute.title.clear();
    attribute.length = 1;
    attribute.maximumValue = 255;
    attribute.storageClass = PointAttribute::VARIABLE;
    return attribute;
}

}  // namespace

PointAttributesPanel::PointAttributesPanel(const DatabaseSession& session, QWidget* parent)
    : Panel(session, parent), m_ui(std::make_unique<Ui::PointAttributesPanel>()) {
    m_ui->setupUi(this);
    useListKeys(m_ui->treePointAttributes, m_ui->actionPointAttributeEdit,
                m_ui->actionPointAttributeRemove);
    alignNumberHeaders(m_ui->treePointAttributes, {ATTRIBUTE_RANK});
    readGroupStates();
    m_headerMemory =
        new HeaderMemory(m_ui->treePointAttributes, m_ui->treePointAttributes->objectName());
    m_headerMemory->keepColumnOrder();
    m_ui->treePointAttributes->header()->setSectionsClickable(true);
    connect(m_ui->treePointAttributes->header(), &QHeaderView::sectionClicked, this,
            &PointAttributesPanel::onTreePointAttributesColumnClicked);
    m_findBar = new ListFindBar(m_ui->treePointAttributes, tr("find in the point attributes"), this,
                                "PointAttributes");
    m_findBar->servePanel();
    m_ui->layoutPanel->insertWidget(m_ui->layoutPanel->indexOf(m_ui->treePointAttributes) + 1,
                                    m_findBar);
    on_treePointAttributes_itemSelectionChanged();
}

PointAttributesPanel::~PointAttributesPanel() = default;

QAction* PointAttributesPanel::findAction() const {
    return m_ui->actionPointAttributeFind;
}

void PointAttributesPanel::on_actionPointAttributeFind_triggered() {
    m_findBar->open();
}

void PointAttributesPanel::refresh() {
    auto* tree = m_ui->treePointAttributes;
    const auto selected = selectedAttributes();
    tree->clear();
    m_ui->labelPointAttributes->clear();
    m_findBar->refresh();
    on_treePointAttributes_itemSelectionChanged();
    if (!database())
        return;

    const auto& attributes = database()->pointAttributes();
    const std::string primary = attributes.primaryAttributeName();
    const auto names = attributes.list();
    std::vector<std::tuple<QString, std::uint32_t, std::string>> sorted;
    for (const std::string& name : names) {
        const auto group = attributes.group(name);
        sorted.emplace_back(QString::fromStdString(group.name), group.rank, name);
    }
    std::sort(sorted.begin(), sorted.end());
    for (const auto& [group, rank, name] : sorted) {
        auto* row = new NumericTreeWidgetItem(groupRow(group));
        fillAttributeRow(row, attributes.get(name), name == primary, rank);
    }
    for (int i = 0; i < tree->topLevelItemCount(); ++i) {
        QTreeWidgetItem* row = tree->topLevelItem(i);
        row->sortChildren(ATTRIBUTE_RANK, Qt::AscendingOrder);
        row->setExpanded(m_groupExpanded.value(row->text(ATTRIBUTE_NAME), true));
    }
    tree->header()->setSortIndicatorShown(true);
    tree->header()->setSortIndicator(ATTRIBUTE_RANK, Qt::AscendingOrder);
    if (m_headerMemory->restoreSort())
        onTreePointAttributesColumnClicked(tree->header()->sortIndicatorSection());
    for (int column = 0; column < ATTRIBUTE_COLUMNS; ++column)
        tree->resizeColumnToContents(column);
    m_ui->labelPointAttributes->setText(
        tr("Point attributes: %1, Primary point attribute: %2")
            .arg(QString::number(names.size()), QString::fromStdString(primary)));
    selectAttributes(selected);
    m_findBar->refresh();
}

QTreeWidgetItem* PointAttributesPanel::groupRow(const QString& name) {
    auto* tree = m_ui->treePointAttributes;
    for (int i = 0; i < tree->topLevelItemCount(); ++i) {
        if (tree->topLevelItem(i)->text(ATTRIBUTE_NAME) == name)
            return tree->topLevelItem(i);
    }
    auto* row = new NumericTreeWidgetItem(tree);
    row->setText(ATTRIBUTE_NAME, name);
    row->setFirstColumnSpanned(true);
    QFont font = tree->font();
    font.setBold(true);
    row->setFont(ATTRIBUTE_NAME, font);
    return row;
}

void PointAttributesPanel::readGroupStates() {
    const auto entries = ProgramSettings().value("AttributeGroups").toStringList();
    for (const QString& entry : entries) {
        const qsizetype separator = entry.lastIndexOf('=');
        bool ok = false;
        const int value = entry.mid(separator + 1).toInt(&ok, 10);
        if (separator > 0 && ok)
            m_groupExpanded[entry.left(separator)] = value != 0;
    }
}

void PointAttributesPanel::keepGroupState(const QTreeWidgetItem* item, bool expanded) {
    if (item->parent())
        return;
    const QString name = item->text(ATTRIBUTE_NAME);
    if (m_groupExpanded.contains(name) && m_groupExpanded[name] == expanded)
        return;
    m_groupExpanded[name] = expanded;
    QStringList entries;
    for (auto it = m_groupExpanded.cbegin(); it != m_groupExpanded.cend(); ++it)
        entries += QString("%0=%1").arg(it.key()).arg(it.value() ? 1 : 0);
    ProgramSettings().setValue("AttributeGroups", entries);
}

void PointAttributesPanel::on_treePointAttributes_itemExpanded(QTreeWidgetItem* item) {
    keepGroupState(item, true);
}

void PointAttributesPanel::on_treePointAttributes_itemCollapsed(QTreeWidgetItem* item) {
    keepGroupState(item, false);
}

// Sorts inside the groups; a second click on the same header reverses the order.
void PointAttributesPanel::onTreePointAttributesColumnClicked(int column) {
    auto* tree = m_ui->treePointAttributes;
    const Qt::SortOrder order = tree->header()->sortIndicatorOrder();
    for (int i = 0; i < tree->topLevelItemCount(); ++i)
        tree->topLevelItem(i)->sortChildren(column, order);
}

std::vector<std::string> PointAttributesPanel::selectedAttributes() const {
    std::vector<std::string> names;
    for (const QTreeWidgetItem* item : m_ui->treePointAttributes->selectedItems())
        if (item->parent())
            names.push_back(item->data(ATTRIBUTE_NAME, Qt::UserRole).toString().toStdString());
    return names;
}

void PointAttributesPanel::selectAttribute(const std::string& name) {
    for (QTreeWidgetItemIterator it(m_ui->treePointAttributes); *it; ++it)
        if ((*it)->parent() &&
            (*it)->data(ATTRIBUTE_NAME, Qt::UserRole).toString() == QString::fromStdString(name))
            m_ui->treePointAttributes->setCurrentItem(*it);
}

void PointAttributesPanel::selectAttributes(const std::vector<std::string>& names) {
    for (QTreeWidgetItemIterator it(m_ui->treePointAttributes); *it; ++it)
        if ((*it)->parent() &&
            std::find(names.begin(), names.end(),
                      (*it)->data(ATTRIBUTE_NAME, Qt::UserRole).toString().toStdString()) !=
                names.end())
            (*it)->setSelected(true);
}

void PointAttributesPanel::on_treePointAttributes_itemSelectionChanged() {
    const auto names = selectedAttributes();
    m_ui->actionPointAttributeAdd->setEnabled(isChangeable());
    m_ui->actionPointAttributeEdit->setEnabled(names.size() == 1);
    m_ui->actionPointAttributeRemove->setEnabled(!names.empty() && isChangeable());
    m_ui->actionPointAttributeFind->setEnabled(database() != nullptr);
}

// On a group the double click has its usual meaning, to expand or collapse it.
void PointAttributesPanel::on_treePointAttributes_itemDoubleClicked(QTreeWidgetItem* item, int) {
    if (item->parent())
        guarded([&] {
            editAttribute(item->data(ATTRIBUTE_NAME, Qt::UserRole).toString().toStdString());
        });
}

void PointAttributesPanel::on_actionPointAttributeAdd_triggered() {
    guarded([this] { addAttribute(); });
}

void PointAttributesPanel::on_actionPointAttributeEdit_triggered() {
    const auto names = selectedAttributes();
    if (names.size() == 1)
        guarded([&] { editAttribute(names[0]); });
}

void PointAttributesPanel::addAttribute() {
    QStringList takenNames;
    for (const std::string& name : database()->pointAttributes().list())
        takenNames += QString::fromStdString(name);
    PointAttribute attribute = newAttribute();
    while (DialogPointAttribute::edit(attribute, DialogPointAttribute::Purpose::ADD, takenNames,
                                      this)) {
        if (inTransaction("Add point attribute " + QString::fromStdString(attribute.name)) &&
            write(attribute, true))
            return;
    }
}

void PointAttributesPanel::editAttribute(const std::string& name) {
    const auto& attributes = database()->pointAttributes();
    const bool key = name == attributes.primaryAttributeName() || name == attributes.pointIdName();
    const PointAttribute stored = attributes.get(name);
    PointAttribute attribute = stored;
    const PointAttribute* began = nullptr;
    while (DialogPointAttribute::edit(
        attribute,
        key ? DialogPointAttribute::Purpose::EDIT_KEY : DialogPointAttribute::Purpose::EDIT, {},
        this, began, m_session.readOnly)) {
        if (core::sameAttribute(attribute, stored) ||
            (inTransaction("Edit point attribute " + QString::fromStdString(name)) &&
             mayWriteOver(stored) && conversionAgreed(stored, attribute) &&
             write(attribute, false)))
            return;
        began = &stored;
    }
}

// Asks where the definition is not as it was read, because others may have written before the
// transaction began.
bool PointAttributesPanel::mayWriteOver(const PointAttribute& read) {
    return core::sameAttribute(database()->pointAttributes().get(read.name), read) ||
           lossConfirmed(this, tr("\"%0\" was changed elsewhere since it was read.\nWrite over "
                                  "what is there now?")
                                   .arg(QString::fromStdString(read.name)));
}

bool PointAttributesPanel::conversionAgreed(const PointAttribute& stored,
                                            const PointAttribute& attribute) {
    QString question;
    const bool counted = aside(tr("Comparing values..."), [&](const StepProgress& progress) {
        const auto changes =
            core::countChanges(*database(), stored, attribute, percentOf(progress));
        if (changes)
            question = translatedMessage(core::describe(*changes, stored, attribute));
    });
    return counted && (question.isEmpty() || lossConfirmed(this, question, tr("Convert")));
}

bool PointAttributesPanel::write(const PointAttribute& attribute, bool isNew) {
    const bool written = aside(tr("Writing the attribute..."), [&](const StepProgress&) {
        if (isNew)
            database()->pointAttributes().add(attribute);
        else
            database()->pointAttributes().put(attribute);
    });
    if (written) {
        emit databaseChanged();
        selectAttribute(attribute.name);
    }
    return written;
}

void PointAttributesPanel::on_actionPointAttributeRemove_triggered() {
    const auto names = selectedAttributes();
    if (names.empty()) {
        showWarning(this, tr("Nothing selected!"));
        return;
    }
    const QString question =
        names.size() == 1 ? tr("Remove attribute \"%0\"?").arg(QString::fromStdString(names[0]))
                          : tr("Remove %0 attributes?").arg(names.size());
    if (!confirmed(this, question) || !inTransaction("Remove point attributes"))
        return;
    aside(tr("Removing attributes..."), [&](const StepProgress&) {
        for (const std::string& name : names)
            database()->pointAttributes().remove(name);
    });
    emit databaseChanged();
}

}  // namespace tarvo::window
