// The names that attributes give to their values, by the texts of the values.
#pragma once

#include "qrb/pointattribute.h"

#include <QHash>
#include <QString>
#include <QStringList>
#include <vector>

namespace tarvo::window {

class ValueNames {
public:
    // columns: element names, with a title that is none in front.
    ValueNames(const QStringList& columns,
               const std::vector<qrb::pointcloud::PointAttribute>& attributes);

    bool any(int column) const;
    // Empty: the value has none.
    QString of(int column, const QString& value) const;
    // "2 ground", or the value alone.
    QString with(int column, const QString& value) const;

    // Whether the table shows them.
    bool isShown() const { return m_isShown; }
    void setShown(bool shown) { m_isShown = shown; }

private:
    std::vector<QHash<QString, QString>> m_names;  // by column
    bool m_isShown = false;
};

}  // namespace tarvo::window
