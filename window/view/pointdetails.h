// The values of the point that was clicked.
#pragma once

#include "qrb/pointcloud.h"

#include <QWidget>
#include <cstdint>

class QLabel;
class QTreeWidget;

namespace tarvo::window {

class PointDetails : public QWidget {
    Q_OBJECT

public:
    // Hidden until there is a point.
    explicit PointDetails(QWidget* parent);

    // Reads the point, aside. Where the database has none of this id, it is one of the level of
    // detail; that is told. Throws qrb::Error, and Cancelled.
    void show(const qrb::Pointcloud& database, std::uint64_t id);
    void clear();

private:
    QLabel* m_title;
    QTreeWidget* m_values;
};

}  // namespace tarvo::window
