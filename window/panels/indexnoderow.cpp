#include "window/panels/indexnoderow.h"

#include "window/common/textformat.h"

namespace tarvo::window {

IndexIcons::IndexIcons()
    : node(":/resources/gui/tree-node.png"), leaf(":/resources/gui/tree-leaf.png") {}

IndexNodeRow::IndexNodeRow(const qrb::pointcloud::IndexNode& node, int level,
                           const IndexIcons& icons)
    : NumericTreeWidgetItem({QString::number(node.id),
                             node.children.empty() ? QObject::tr("leaf") : QObject::tr("node"),
                             QString::number(level),
                             grouped(static_cast<std::uint64_t>(node.pointCountNode)),
                             grouped(static_cast<std::uint64_t>(node.pointCountTotal)),
                             QString::number(node.revision)}),
      m_id(node.id),
      m_ownPoints(node.pointCountNode),
      m_totalPoints(node.pointCountTotal),
      m_icon(node.children.empty() ? icons.leaf : icons.node) {}

QVariant IndexNodeRow::data(int column, int role) const {
    if (column == NODE_ID && role == Qt::UserRole)
        return m_id;
    if (column == NODE_ID && role == Qt::ToolTipRole)
        return QObject::tr("click to show node details\ndouble click to load point data");
    if (column == NODE_TYPE && role == Qt::DecorationRole)
        return m_icon;
    if (role == sortValueRole && (column == NODE_POINTS || column == NODE_TOTAL))
        return static_cast<double>(column == NODE_POINTS ? m_ownPoints : m_totalPoints);
    if (role == Qt::TextAlignmentRole && column == NODE_TYPE)
        return QVariant::fromValue(Qt::Alignment(Qt::AlignCenter));
    if (role == Qt::TextAlignmentRole && column >= NODE_LEVEL)
        return QVariant::fromValue(Qt::AlignRight | Qt::AlignVCenter);
    return NumericTreeWidgetItem::data(column, role);
}

}  // namespace tarvo::window
