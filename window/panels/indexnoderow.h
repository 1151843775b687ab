// A row of the index tree. What is the same for all nodes is made when somebody asks for it: most
// rows are never seen.
#pragma once

#include "qrb/queries.h"
#include "window/widgets/numerictreewidgetitem.h"

#include <QIcon>

namespace tarvo::window {

enum IndexColumn { NODE_ID, NODE_TYPE, NODE_LEVEL, NODE_POINTS, NODE_TOTAL, NODE_REVISION };

// Read once, for all rows of a tree.
struct IndexIcons {
    IndexIcons();
    QIcon node, leaf;
};

class IndexNodeRow : public NumericTreeWidgetItem {
public:
    IndexNodeRow(const qrb::pointcloud::IndexNode& node, int level, const IndexIcons& icons);

    QVariant data(int column, int role) const override;
    std::int64_t ownPoints() const { return m_ownPoints; }

private:
    std::uint32_t m_id;
    std::int64_t m_ownPoints, m_totalPoints;
    QIcon m_icon;
};

}  // namespace tarvo::window
