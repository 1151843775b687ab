// Reads points page by page into texts for display.
#pragma once

#include "core/pointpages.h"

#include <QString>
#include <QStringList>
#include <cstdint>

namespace tarvo::window {

class PointReader {
public:
    static constexpr std::uint32_t pageSize = 100;

    // Reads every shown element of every attribute. Throws qrb::Error, as next() does.
    PointReader(const qrb::Pointcloud& database, const core::PointSelection& selection);

    // The element names, in the order of the database's attributes.
    const QStringList& columns() const { return m_columns; }
    // Reads the next page and returns its number of points; 0: none left.
    std::uint32_t next() { return m_pages.next(); }
    // A value of the page read last; row < next(), column is an index of columns().
    QString text(std::uint32_t row, int column) const;
    // Per cent of the work done.
    std::uint32_t progress() const { return m_pages.progress(); }
    // What the way there has cost; none from a library that does not tell.
    auto nodesPassed() const { return m_pages.nodesPassed(); }

private:
    core::PointPages m_pages;
    QStringList m_columns;
};

}  // namespace tarvo::window
