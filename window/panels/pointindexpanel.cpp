#include "window/panels/pointindexpanel.h"

#include "core/nodelist.h"
#include "core/valueformat.h"
#include "qrb/error.h"
#include "ui_pointindexpanel.h"
#include "window/common/clipboard.h"
#include "window/common/filterhistory.h"
#include "window/common/textformat.h"
#include "window/dialogs/dialogindexstatistics.h"
#include "window/panels/filterhelp.h"
#include "window/panels/indexnoderow.h"
#include "window/panels/indexrows.h"
#include "window/panels/indexsearch.h"
#include "window/widgets/headermemory.h"
#include "window/widgets/splittermemory.h"

#include <QComboBox>
#include <QHeaderView>
#include <QLineEdit>
#include <QLocale>
#include <QSignalBlocker>
#include <algorithm>
#include <vector>

namespace tarvo::window {

namespace pointcloud = qrb::pointcloud;

namespace {

// Indexes of up to this many nodes are shown with all branches open.
constexpr int expandedItems = 100;

// Without the signals, whose slots would measure a tree that is still being laid out.
void expandQuietly(QTreeWidget* tree) {
    const QSignalBlocker blocker(tree);
    tree->expandAll();
}

// Collapsing tells of every branch, too; the slots would measure the tree once for each.
void collapseQuietly(QTreeWidget* tree) {
    const QSignalBlocker blocker(tree);
    tree->collapseAll();
}

// The extreme values of a node; empty where it holds none.
std::vector<std::uint64_t> extremes(const pointcloud::QueryStat& stat, std::uint32_t node,
                                    const pointcloud::PointAttribute& attribute,
                                    pointcloud::DataType type, bool cleaned, bool maximum) {
    std::vector<std::uint64_t> values(attribute.length);
    try {
        if (maximum)
            stat.maximum(node, attribute.name, type, values.data(), cleaned);
        else
            stat.minimum(node, attribute.name, type, values.data(), cleaned);
    } catch (const qrb::Error& error) {
        if (error.code() != QRB_ERROR_NOT_FOUND)
            throw;
        values.clear();
    }
    return values;
}

// What the details show of an attribute in a node.
struct AttributeDetails {
    pointcloud::PointAttribute attribute;
    std::vector<std::uint64_t> minimum, maximum;  // of the elements; empty where there are none
    std::uint32_t revision = 0;
};

AttributeDetails detailsOf(const pointcloud::QueryStat& stat, std::uint32_t node,
                           const pointcloud::PointAttribute& attribute, bool cleaned) {
    const pointcloud::DataType type = core::ValueFormat(attribute).type();
    return {attribute, extremes(stat, node, attribute, type, cleaned, false),
            extremes(stat, node, attribute, type, cleaned, true),
            stat.revision(node, attribute.name)};
}

void addDetails(const AttributeDetails& details, QTreeWidget* tree) {
    const auto& [attribute, minimum, maximum, revision] = details;
    const core::ValueFormat format(attribute);
    const auto names = core::elementNames(attribute.name, attribute.length);
    QList<QTreeWidgetItem*> rows;
    for (std::size_t i = 0; i < names.size(); ++i) {
        auto* row = new QTreeWidgetItem({oneLine(QString::fromStdString(names[i])),
                                         QObject::tr("(revision %0)").arg(revision)});
        const bool known = i < minimum.size() && i < maximum.size();
        const auto addValue = [row](const QString& label, const std::string& value) {
            new QTreeWidgetItem(row, {label, QString::fromStdString(value)});
        };
        addValue(QObject::tr("Minimum:"), known ? format.text(minimum[i]) : "-");
        addValue(QObject::tr("Maximum:"), known ? format.text(maximum[i]) : "-");
        addValue(QObject::tr("Max-Min:"),
                 known ? format.differenceText(minimum[i], maximum[i]) : "-");
        rows += row;
    }
    tree->addTopLevelItems(rows);
}

// The node itself, or those below that are shown where it stores no point.
QStringList nodesWithPoints(const QTreeWidgetItem& row) {
    if (row.childCount() == 0 || static_cast<const IndexNodeRow&>(row).ownPoints() > 0)
        return {QString::number(row.data(NODE_ID, Qt::UserRole).toUInt())};
    QStringList nodes;
    for (int i = 0; i < row.childCount(); ++i)
        nodes += nodesWithPoints(*row.child(i));
    return nodes;
}

}  // namespace

PointIndexPanel::PointIndexPanel(const DatabaseSession& session, QWidget* parent)
    : Panel(session, parent), m_ui(std::make_unique<Ui::PointIndexPanel>()) {
    m_ui->setupUi(this);
    auto* filter = m_ui->PointIndexFilter;
    m_filterHelp = new FilterHelp(m_session, FilterHelp::Kind::NODES, filter,
                                  m_ui->buttonPointIndexFilterMenu, m_ui->labelPointIndexFilter);
    connect(m_filterHelp, &FilterHelp::historyCleared, this, [this] {
        refreshHistory();
        emit historyChanged();
    });
    connect(filter->lineEdit(), &QLineEdit::returnPressed, m_ui->actionPointIndexFilterNodes,
            &QAction::trigger);
    connect(filter, qOverload<int>(&QComboBox::activated), m_ui->actionPointIndexFilterNodes,
            &QAction::trigger);

    m_findAction = addFindAction("actionPointIndexFind",
                                 tr("Go to the filter of the nodes [Ctrl+F]"), [filter] {
                                     filter->setFocus();
                                     filter->lineEdit()->selectAll();
                                 });
    m_ui->treePointIndexNodes->addAction(m_findAction);

    auto* header = m_ui->treePointIndexDetails->header();
    header->setSectionsClickable(true);
    connect(header, &QHeaderView::sectionClicked, this,
            &PointIndexPanel::onTreePointIndexDetailsSectionClicked);
    m_ui->treePointIndexDetails->headerItem()->setToolTip(
        1, tr("Click here to toggle between \"full\" and \"cleaned\""));
    m_ui->treePointIndexNodes->setSelectionMode(QAbstractItemView::SingleSelection);
    alignNumberHeaders(m_ui->treePointIndexNodes,
                       {NODE_LEVEL, NODE_POINTS, NODE_TOTAL, NODE_REVISION});
    // Or the last number would stand far from the others.
    m_ui->treePointIndexNodes->header()->setStretchLastSection(false);
    // In the order of the index until a header is clicked.
    m_ui->treePointIndexNodes->sortByColumn(-1, Qt::AscendingOrder);
    m_ui->treePointIndexNodes->setSortingEnabled(true);
    m_ui->splitterPointIndex->setStretchFactor(0, 3);
    m_ui->splitterPointIndex->setStretchFactor(1, 2);
    rememberSplitter(m_ui->splitterPointIndex);
    auto* memory =
        new HeaderMemory(m_ui->treePointIndexNodes, m_ui->treePointIndexNodes->objectName());
    memory->restoreSort();
    new HeaderMemory(m_ui->treePointIndexDetails, m_ui->treePointIndexDetails->objectName());
    updateActions();
}

PointIndexPanel::~PointIndexPanel() = default;

void PointIndexPanel::refresh() {
    if (m_shownDatabase.lock() != m_session.database) {
        m_ui->PointIndexFilter->clearEditText();
        m_appliedFilter.clear();
    }
    // A tree that was not built anew since then has no row.
    if (const auto* current = m_ui->treePointIndexNodes->currentItem())
        m_keptNode = current->data(NODE_ID, Qt::UserRole).toUInt();
    m_shownDatabase = m_session.database;
    m_ui->treePointIndexNodes->clear();
    m_ui->treePointIndexDetails->clear();
    m_ui->labelPointIndex->clear();
    refreshHistory();
    refreshFilterHelp();
    updateActions();
    m_stale = database() != nullptr;
    if (m_stale && isVisible())
        buildTree(m_appliedFilter);
}

void PointIndexPanel::showEvent(QShowEvent* event) {
    Panel::showEvent(event);
    if (m_stale && database())
        guarded([this] { buildTree(m_appliedFilter); });
}

void PointIndexPanel::refreshHistory() {
    FilterHistory::show(m_ui->PointIndexFilter);
}

void PointIndexPanel::refreshFilterHelp() {
    std::vector<pointcloud::PointAttribute> definitions;
    if (database()) {
        const auto& attributes = database()->pointAttributes();
        for (const std::string& name : attributes.list())
            definitions.push_back(attributes.get(name));
    }
    m_filterHelp->setAttributes(definitions);
}

void PointIndexPanel::updateActions() {
    for (QAction* action : {m_ui->actionPointIndexFilterNodes, m_ui->actionPointIndexNodeExpand,
                            m_ui->actionPointIndexNodeCollapse, m_ui->actionPointIndexStats})
        action->setEnabled(database() != nullptr);
}

void PointIndexPanel::on_actionPointIndexFilterNodes_triggered() {
    if (!database())
        return;
    guarded([this] {
        const QString filter = m_ui->PointIndexFilter->currentText().trimmed();
        if (!filter.isEmpty()) {
            FilterHistory::add(filter);
            refreshHistory();
            emit historyChanged();
        }
        buildTree(filter);
        m_appliedFilter = filter;
    });
}

// What is shown stays when the user cancels.
void PointIndexPanel::buildTree(const QString& filter) {
    pointcloud::IndexNode root;
    WantedNodes wanted;
    IndexRows shown;
    workAside(this, tr("Reading the point index..."), m_session.context,
              [&](const StepProgress& progress) {
                  database()->stat().index(root);
                  progress({}, 0.5);
                  wanted = wantedNodes(filter, root);
                  progress({}, 0.8);
                  shown = indexRows(root, wanted, maximumItems);
              });
    auto* tree = m_ui->treePointIndexNodes;
    if (const auto* current = tree->currentItem())
        m_keptNode = current->data(NODE_ID, Qt::UserRole).toUInt();
    tree->clear();
    tree->setSortingEnabled(false);
    tree->addTopLevelItems(rowsOf(shown));
    tree->setSortingEnabled(true);
    m_stale = false;
    if (wanted.all && shown.items() > expandedItems)
        tree->topLevelItem(0)->setExpanded(true);
    else
        expandQuietly(tree);
    resizeNodeColumns();
    m_ui->labelPointIndex->setText(shown.truncated || shown.items() > maximumItems
                                       ? tr("Index too large,\nView truncated!")
                                       : tr("Nodes: %1, Leaves: %2, Total: %3, Depth: %4")
                                             .arg(QLocale().toString(shown.nodes))
                                             .arg(QLocale().toString(shown.leaves))
                                             .arg(QLocale().toString(shown.items()))
                                             .arg(shown.depth));
    const auto kept = tree->findItems(QString::number(m_keptNode),
                                      Qt::MatchExactly | Qt::MatchRecursive, NODE_ID);
    if (tree->topLevelItemCount() > 0)
        tree->setCurrentItem(kept.isEmpty() ? tree->topLevelItem(0) : kept.first());
    else
        showDetails();
}

QList<QTreeWidgetItem*> PointIndexPanel::rowsOf(const IndexRows& shown) const {
    const IndexIcons icons;
    QFont bold = m_ui->treePointIndexNodes->font();
    bold.setBold(true);
    QList<QTreeWidgetItem*> top;
    std::vector<IndexNodeRow*> rows;
    rows.reserve(shown.rows.size());
    for (const IndexRow& row : shown.rows) {
        auto* item = new IndexNodeRow(*row.node, row.level, icons);
        rows.push_back(item);
        if (row.parent < 0)
            top += item;
        else
            rows[static_cast<std::size_t>(row.parent)]->addChild(item);
        if (row.isMatch)
            for (int column = NODE_ID; column <= NODE_REVISION; ++column)
                item->setFont(column, bold);
    }
    return top;
}

WantedNodes PointIndexPanel::wantedNodes(const QString& filter,
                                         const pointcloud::IndexNode& root) const {
    if (filter.isEmpty())
        return {};
    if (isNodeList(filter)) {
        const auto ids = core::parseNodeList(filter.toStdString());
        return {false, {ids.begin(), ids.end()}};
    }
    pointcloud::IndexNode narrowed;
    database()->stat().index(narrowed, filter.toStdString());
    // Where nothing matches the library tells the bare root; a command always finds a node.
    if (narrowed.children.empty() && !root.children.empty() && !isIndexCommand(filter))
        return {false, {}};
    return {false, leavesOf(narrowed)};
}

void PointIndexPanel::showDetails() {
    m_ui->treePointIndexDetails->clear();
    const auto* current = m_ui->treePointIndexNodes->currentItem();
    if (!database() || !current || !current->isSelected())
        return;
    const std::uint32_t node = current->data(NODE_ID, Qt::UserRole).toUInt();
    std::vector<AttributeDetails> details;
    workAside(this, tr("Reading values of the node..."), m_session.context,
              [&](const StepProgress& progress) {
                  const auto& attributes = database()->pointAttributes();
                  const auto names = attributes.list();
                  for (const std::string& name : names) {
                      details.push_back(
                          detailsOf(database()->stat(), node, attributes.get(name), m_cleaned));
                      progress({}, static_cast<double>(details.size()) /
                                       static_cast<double>(names.size()));
                  }
              });
    for (const AttributeDetails& attribute : details)
        addDetails(attribute, m_ui->treePointIndexDetails);
    expandQuietly(m_ui->treePointIndexDetails);
    resizeDetailColumns();
}

void PointIndexPanel::resizeNodeColumns() {
    for (int column = NODE_ID; column <= NODE_REVISION; ++column)
        m_ui->treePointIndexNodes->resizeColumnToContents(column);
}

void PointIndexPanel::resizeDetailColumns() {
    m_ui->treePointIndexDetails->resizeColumnToContents(0);
    m_ui->treePointIndexDetails->resizeColumnToContents(1);
}

void PointIndexPanel::on_actionPointIndexStats_triggered() {
    if (!database())
        return;
    pointcloud::IndexNode root;
    if (aside(tr("Reading the point index..."),
              [&](const StepProgress&) { database()->stat().index(root); }))
        DialogIndexStatistics(root, this).exec();
}

void PointIndexPanel::on_actionPointIndexNodeExpand_triggered() {
    expandQuietly(m_ui->treePointIndexNodes);
    resizeNodeColumns();
}

void PointIndexPanel::on_actionPointIndexNodeCollapse_triggered() {
    collapseQuietly(m_ui->treePointIndexNodes);
    resizeNodeColumns();
}

void PointIndexPanel::on_treePointIndexNodes_itemSelectionChanged() {
    const auto* current = m_ui->treePointIndexNodes->currentItem();
    emit nodeSelected(
        current && current->isSelected() ? current->data(NODE_ID, Qt::UserRole).toUInt() : 0);
    guarded([this] { showDetails(); });
}

void PointIndexPanel::on_treePointIndexNodes_itemDoubleClicked(QTreeWidgetItem* item, int) {
    emit nodesChosen(nodesWithPoints(*item).join(','));
}

void PointIndexPanel::on_treePointIndexNodes_itemExpanded(QTreeWidgetItem*) {
    resizeNodeColumns();
}

void PointIndexPanel::on_treePointIndexNodes_itemCollapsed(QTreeWidgetItem*) {
    resizeNodeColumns();
}

void PointIndexPanel::on_treePointIndexDetails_itemDoubleClicked(QTreeWidgetItem* item,
                                                                 int column) {
    copyToClipboard(item->text(column));
    emit told(tr("Copied: %1").arg(item->text(column)));
}

void PointIndexPanel::on_treePointIndexDetails_itemExpanded(QTreeWidgetItem*) {
    resizeDetailColumns();
}

void PointIndexPanel::on_treePointIndexDetails_itemCollapsed(QTreeWidgetItem*) {
    resizeDetailColumns();
}

void PointIndexPanel::onTreePointIndexDetailsSectionClicked(int section) {
    if (section != 1)
        return;
    m_cleaned = !m_cleaned;
    m_ui->treePointIndexDetails->headerItem()->setText(
        1, m_cleaned ? tr("Value (cleaned)") : tr("Value (full)"));
    guarded([this] { showDetails(); });
}

}  // namespace tarvo::window
