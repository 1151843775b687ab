#include "window/dialogs/dialogindexstatistics.h"

#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLocale>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace tarvo::window {

namespace {

using qrb::pointcloud::IndexNode;
using Level = DialogIndexStatistics::Level;

void addUp(const IndexNode& node, std::size_t level, std::vector<Level>& levels) {
    if (levels.size() <= level)
        levels.resize(level + 1);
    const bool leaf = node.children.empty();
    (leaf ? levels[level].leafPoints : levels[level].nodePoints) += node.pointCountNode;
    ++(leaf ? levels[level].leaves : levels[level].nodes);
    for (const IndexNode& child : node.children)
        addUp(child, level + 1, levels);
}

QTreeWidgetItem* addRow(QTreeWidget* tree, const QString& name, const Level& level) {
    auto* row = new QTreeWidgetItem(tree, {name});
    int column = 1;
    for (const std::int64_t number :
         {level.leafPoints, level.nodePoints, level.leaves, level.nodes}) {
        row->setText(column, QLocale().toString(static_cast<qlonglong>(number)));
        row->setTextAlignment(column++, Qt::AlignRight | Qt::AlignVCenter);
    }
    return row;
}

}  // namespace

std::vector<Level> DialogIndexStatistics::levels(const IndexNode& root) {
    std::vector<Level> result;
    if (root.id != 0)
        addUp(root, 0, result);
    return result;
}

DialogIndexStatistics::DialogIndexStatistics(const IndexNode& root, QWidget* parent)
    : QDialog(parent), m_settings("DialogIndexStatistics") {
    setWindowTitle(tr("Point Index Tree Statistics"));
    auto* layout = new QVBoxLayout(this);
    auto* tree = new QTreeWidget(this);
    tree->setObjectName("treeStatistics");
    tree->setAccessibleName(tr("Statistics by level"));
    tree->setRootIsDecorated(false);
    tree->setAlternatingRowColors(true);
    tree->setHeaderLabels(
        {tr("Level"), tr("Leaf Points"), tr("Node Points"), tr("Leaf Count"), tr("Node Count")});
    tree->setUniformRowHeights(true);
    for (int column = 1; column < tree->columnCount(); ++column)
        tree->headerItem()->setTextAlignment(column, Qt::AlignRight | Qt::AlignVCenter);
    tree->header()->setStretchLastSection(false);
    layout->addWidget(tree);

    Level total;
    const auto all = levels(root);
    for (std::size_t i = 0; i < all.size(); ++i) {
        addRow(tree, QString::number(i), all[i]);
        total.leafPoints += all[i].leafPoints;
        total.nodePoints += all[i].nodePoints;
        total.leaves += all[i].leaves;
        total.nodes += all[i].nodes;
    }
    QTreeWidgetItem* sum = addRow(tree, tr("Total"), total);
    QFont bold = tree->font();
    bold.setBold(true);
    for (int column = 0; column < tree->columnCount(); ++column) {
        sum->setFont(column, bold);
        sum->setBackground(column, QColor("#daf7a6"));
        // Dark on the light green, whatever the palette.
        sum->setForeground(column, QColor(Qt::black));
    }
    for (int column = 0; column < tree->columnCount(); ++column)
        tree->resizeColumnToContents(column);

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    layout->addWidget(buttons);
    setMinimumSize(420, 240);
    resize(std::max(460, tree->header()->length() + 40), 320);
    m_settings.restoreGeometryOf(this);
}

DialogIndexStatistics::~DialogIndexStatistics() {
    m_settings.saveGeometryOf(this);
}

}  // namespace tarvo::window
